#pragma once

#include <cmath>

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/QuaternionOps.h"
#include "math/impl/Trig.h"
#include "math/zeMatrix44f.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Single-precision rotation quaternion: x, y, z the vector part, w the scalar
/// part. There is no identity constant: (0, 0, 0, 1) is the identity rotation.
class ZEMATH_API zeQuaternionf : public impl::QuaternionOps<zeQuaternionf, float, zeMatrix44f> {
 public:
  ///@{ The components.
  float x, y, z, w;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeQuaternionf() = default;
  /// The quaternion (x, y, z, w).
  constexpr zeQuaternionf(float x_, float y_, float z_, float w_) noexcept : x(x_), y(y_), z(z_), w(w_) {}

  /// Writes only the 3x3 rotation block into m, with the plain factor 2 as in
  /// getMatrix; the other seven elements keep what m had. Float class only.
  void getRotationMatrix(zeMatrix44f& m) const noexcept {
    impl::writeRotationBlock(m.data(), x, y, z, w, 2.0f * x, 2.0f * y, 2.0f * z);
  }

  /// Spherical blend from a to b along the shorter arc, not normalised. Unlike
  /// the double twin's trigonometry, the float class weighs a and b with a
  /// fitted polynomial in a . b and t (cubic in each), and returns the
  /// perpendicular blend when a and b are nearly opposite.
  void slerp(float t, const zeQuaternionf& a, const zeQuaternionf& b) noexcept;

  /// Plain componentwise blend a (1 - t) + b t: no flip, no normalisation.
  /// b is not modified.
  void fastInterpolation(float t, const zeQuaternionf& a, zeQuaternionf& b) noexcept { blend(t, a, b); }

 protected:
  friend class impl::QuaternionOps<zeQuaternionf, float, zeMatrix44f>;

  /// The angles getRotationRadians stores when cos(ry) is exactly 0. Unlike
  /// the double twin, the float class deliberately puts atan2(m4, m5) into ry,
  /// overwriting the pitch, sets rz = 0 and leaves rx unwritten.
  static void getPoleRotationRadians(const zeMatrix44f& m, float& /*rx*/, float& ry, float& rz) noexcept {
    ry = impl::atan2(m[4], m[5]);
    rz = 0.0f;
  }
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
