#pragma once

// The skinning stage: each mesh's batches through the kernel, with the
// palette of the frame.

#include <math/ZEMath.h>

#include "DemoModel.h"

namespace zedemo {

/// Skins `mesh` into `out` (one position per vertex, 12 bytes apart) with its
/// palette of the frame (buildPalette), one kernel call per batch: `weighted`
/// (four influences per vertex) in general, `oneInfluence` for batches whose
/// vertices each follow a single bone. An engine passes the published
/// pointers, zeVectorBlending::_vectorBlendingFunction and
/// _vectorBlendingOneWeightFunction. Allocates nothing.
void skinMesh(const SkinnedMesh& mesh, const Lux::Math::zeMatrix44f* palette, Lux::Math::zeVec3f* out,
              Lux::Math::zeVectorBlending::BlendingFunction weighted,
              Lux::Math::zeVectorBlending::BlendingFunction oneInfluence);

}  // namespace zedemo
