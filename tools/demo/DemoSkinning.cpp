#include "DemoSkinning.h"

using namespace Lux::Math;

namespace zedemo {

void skinMesh(const SkinnedMesh& mesh, const zeMatrix44f* palette, zeVec3f* out,
              zeVectorBlending::BlendingFunction weighted, zeVectorBlending::BlendingFunction oneInfluence) {
  for (const Batch& batch : mesh.batches) {
    const std::size_t first = batch.first, influences = std::size_t(batch.first) * kInfluences;
    const zeVectorBlending::BlendingFunction kernel = batch.oneInfluence ? oneInfluence : weighted;
    kernel(mesh.positions.data() + first, batch.count, mesh.weights.data() + influences,
           mesh.indices.data() + influences, kInfluences, palette + batch.paletteFirst, out + first, sizeof(zeVec3f));
  }
}

}  // namespace zedemo
