#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/VecOps.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

/// Four-component single-precision vector (x, y, z, w); w is the homogeneous
/// coordinate, 1 for a point and 0 for a direction.
class ZEMATH_API zeVec4f : public impl::Vec4Ops<zeVec4f, float, zeMatrix44f> {
 public:
  float x, y, z, w;

  zeVec4f() = default;
  /// The vector (x, y, z, w).
  constexpr zeVec4f(float x_, float y_, float z_, float w_) noexcept : x(x_), y(y_), z(z_), w(w_) {}

  using Vec4Ops::transformPoint;
  /// this = (v.x, v.y, v.z, 1) times m, all four components kept, no division.
  /// Only the float class has this form.
  void transformPoint(const zeVec3f& v, const zeMatrix44f& m) noexcept {
    x = v.x * m[0] + v.y * m[4] + v.z * m[8] + m[12];
    y = v.x * m[1] + v.y * m[5] + v.z * m[9] + m[13];
    z = v.x * m[2] + v.y * m[6] + v.z * m[10] + m[14];
    w = v.x * m[3] + v.y * m[7] + v.z * m[11] + m[15];
  }

  /// Point at parameter t of the cubic Bezier curve p0..p3, w included
  /// (de Casteljau; the points are not modified).
  void bezierInterpolate(float t, zeVec4f& p0, zeVec4f& p1, zeVec4f& p2, zeVec4f& p3) noexcept {
    *this = impl::bezier(t, p0, p1, p2, p3);
  }

  static zeVec4f ZeroVector;  ///< (0, 0, 0, 0)
  static zeVec4f OneVector;   ///< (1, 1, 1, 1)
  static zeVec4f XVector;     ///< (1, 0, 0, 0)
  static zeVec4f YVector;     ///< (0, 1, 0, 0)
  static zeVec4f ZVector;     ///< (0, 0, 1, 0)
  static zeVec4f TVector;     ///< (0, 0, 0, 1)
};

}  // namespace Math
}  // namespace Lux
