#pragma once

// Sampling an animation: each animated node's keys are interpolated at the
// frame's time (positions and scales linearly, rotations by the library's
// quaternion slerp) and turned into the node's local matrix.

#include <vector>

#include <math/ZEMath.h>

#include "DemoModel.h"

namespace zedemo {

/// The local matrix of a node: scale first, then the rotation `rotation`
/// (normalised here), then the translation, in the library's row-vector
/// order S·R·T.
Lux::Math::zeMatrix44f localMatrix(const Lux::Math::zeVec3f& translation, const Lux::Math::zeQuaternionf& rotation,
                                   const Lux::Math::zeVec3f& scale);

/// Writes the local matrix at `time` (in ticks) of every node the animation
/// moves into `locals`, one per node of the model; the others keep what they
/// hold (their rest transforms, filled once). Before the first key a channel
/// holds its first key, after the last its last. Allocates nothing.
void sampleAnimation(const Animation& animation, double time, std::vector<Lux::Math::zeMatrix44f>& locals);

/// The rest transform of every node: what sampleAnimation leaves in place
/// for the nodes it does not move.
std::vector<Lux::Math::zeMatrix44f> restLocals(const Model& model);

/// The time in ticks of frame `frame` of `frames`, spread evenly from the
/// start to the end of the animation (both included).
double frameTime(const Animation& animation, unsigned int frame, unsigned int frames);

}  // namespace zedemo
