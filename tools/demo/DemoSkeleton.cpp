#include "DemoSkeleton.h"

using namespace Lux::Math;

namespace zedemo {

void composeWorlds(const std::vector<Node>& nodes, const std::vector<zeMatrix44f>& locals,
                   std::vector<zeMatrix44f>& worlds) {
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (nodes[i].parent < 0)
      worlds[i] = locals[i];
    else
      zeMatrix44f::matrixMultiply(&worlds[i], &locals[i], &worlds[nodes[i].parent]);
  }
}

void buildPalette(const SkinnedMesh& mesh, const std::vector<zeMatrix44f>& worlds, zeMatrix44f* palette) {
  for (const Batch& batch : mesh.batches)
    for (std::size_t k = 0; k < batch.bones.size(); ++k) {
      const Bone& bone = mesh.bones[batch.bones[k]];
      zeMatrix44f::matrixMultiply(&palette[batch.paletteFirst + k], &bone.inverseBind, &worlds[bone.node]);
    }
}

}  // namespace zedemo
