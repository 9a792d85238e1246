#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zeMatrix44f;

/// Three-component single-precision vector (x, y, z): positions, directions, normals.
class ZEMATH_API zeVec3f : public impl::Vec3Ops<zeVec3f, float, zeMatrix44f>, public impl::Colour3Ops<zeVec3f, float> {
 public:
  ///@{ The components.
  float x, y, z;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec3f() = default;
  /// The vector (x, y, z).
  constexpr zeVec3f(float x_, float y_, float z_) noexcept : x(x_), y(y_), z(z_) {}

  /// Point at parameter t of the cubic Bezier curve with end points p0, p3 and
  /// inner control points p1, p2 (de Casteljau; the points are not modified).
  void bezierInterpolate(float t, zeVec3f& p0, zeVec3f& p1, zeVec3f& p2, zeVec3f& p3) noexcept {
    *this = impl::bezier(t, p0, p1, p2, p3);
  }

  static zeVec3f ZeroVector;  ///< (0, 0, 0)
  static zeVec3f OneVector;   ///< (1, 1, 1)
  static zeVec3f XVector;     ///< (1, 0, 0)
  static zeVec3f YVector;     ///< (0, 1, 0)
  static zeVec3f ZVector;     ///< (0, 0, 1)
};

/// The dot product a.dot(b): every component, summed left to right.
inline float dot(const zeVec3f& a, const zeVec3f& b) noexcept { return a.dot(b); }
/// The cross product a x b over x, y, z (zeVec3f::cross(a, b)).
inline zeVec3f cross(const zeVec3f& a, const zeVec3f& b) noexcept {
  zeVec3f r;
  r.cross(a, b);
  return r;
}
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec3f normalized(const zeVec3f& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
