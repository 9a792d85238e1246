#pragma once

#include "core/zeObject.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

class zeRay;

/// Home of the ray/triangle intersection test; a registered class without fields.
class ZEMATH_API zeIntersect : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeIntersect)

 public:
  /// Result of intersectRay: the triangle faces away for `sides`, or the ray is parallel to it.
  static constexpr float kCulled = -2.0f;
  /// Result of intersectRay: the triangle's plane lies behind the start (t < 0, or -0) or beyond `_len`.
  static constexpr float kOutOfReach = -3.0f;
  /// Result of intersectRay: the ray meets the plane outside the triangle.
  static constexpr float kMissed = -4.0f;

  /// Distance t >= 0 along the ray at which it meets triangle (vert0, vert1,
  /// vert2), or kCulled, kOutOfReach or kMissed. `sides` is a
  /// zeRay::ISET_SIDES value. The unit normal (vert1 - vert0) x (vert2 - vert0)
  /// is written to `normal` in every case; `hitPoint` is written once the
  /// plane is within reach, so also when kMissed is returned. A hit point on
  /// an edge counts as inside (a zero edge test counts as positive).
  static float intersectRay(const zeRay* ray, const zeVec3f& vert0, const zeVec3f& vert1, const zeVec3f& vert2,
                            zeVec3f& hitPoint, zeVec3f& normal, unsigned int sides);
};

}  // namespace Math
}  // namespace Lux
