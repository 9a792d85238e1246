#pragma once

// The skeleton at a frame: local matrices composed down the hierarchy into
// world matrices, and each mesh's palette, the matrices that carry its
// vertices from the bind pose to the frame.

#include <vector>

#include <math/ZEMath.h>

#include "DemoModel.h"

namespace zedemo {

/// world[i] = locals[i]·world[parent of i] (row vectors: the node's own
/// transform applies first, then its parent's); a root's world is its local.
/// Parents come before their children in `nodes`. Allocates nothing.
void composeWorlds(const std::vector<Node>& nodes, const std::vector<Lux::Math::zeMatrix44f>& locals,
                   std::vector<Lux::Math::zeMatrix44f>& worlds);

/// The mesh's palette, batch after batch (mesh.paletteSize() entries from
/// `palette`): entry = the bone's inverse bind matrix·the world matrix of its
/// node, which takes a vertex from the mesh's space at the bind pose to the
/// world at this frame.
void buildPalette(const SkinnedMesh& mesh, const std::vector<Lux::Math::zeMatrix44f>& worlds,
                  Lux::Math::zeMatrix44f* palette);

}  // namespace zedemo
