#pragma once

// Bounds and framing for the model run: the box around a skinned mesh, and a
// camera that keeps a box in view.

#include <math/ZEMath.h>

#include "DemoScene.h"

namespace zedemo {

/// Makes `box` the smallest box around the `count` points, through the
/// volume's extend-by-point routine.
void meshBounds(const Lux::Math::zeVec3f* points, unsigned int count, Lux::Math::zeAABox& box);

/// A camera for a width x height view that sees all of the box from `lo` to
/// `hi`: looking at its centre from a three-quarter view above the front,
/// `up` being axis `upAxis` (0, 1, 2) with sign `upSign`; the frustum planes
/// included.
Camera frameCamera(const Lux::Math::zeVec3f& lo, const Lux::Math::zeVec3f& hi, int upAxis, float upSign, int width,
                   int height);

}  // namespace zedemo
