#pragma once

/// \file
/// The signed distance of a point from a plane, shared by zePlane and the
/// exactness check, which has no plane object to call it on.

#include "math/impl/ExactOrder.h"
#include "math/zeVec3f.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// e(p) = n.x p.x + n.y p.y + n.z p.z - offset, left to right: positive on
/// the side the normal n points to, 0 on the plane.
inline float signedPlaneDistance(const zeVec3f& n, float offset, const zeVec3f& p) noexcept {
  return n.x * p.x + n.y * p.y + n.z * p.z - offset;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
