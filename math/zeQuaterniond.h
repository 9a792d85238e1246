#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/QuaternionOps.h"
#include "math/zeMatrix44d.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Double-precision rotation quaternion, the twin of zeQuaternionf: x, y, z
/// the vector part, w the scalar part, with the differences marked below.
class ZEMATH_API zeQuaterniond : public impl::QuaternionOps<zeQuaterniond, double, zeMatrix44d> {
 public:
  ///@{ The components.
  double x, y, z, w;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeQuaterniond() = default;
  /// The quaternion (x, y, z, w).
  constexpr zeQuaterniond(double x_, double y_, double z_, double w_) noexcept : x(x_), y(y_), z(z_), w(w_) {}

  /// this = a b by the eight-product scheme with y = (P5 - P6 + P7 - P8) / 2 - P3
  /// and z = (P5 - P6 - P7 + P8) / 2 - P4. The double class deliberately keeps
  /// this form, which is not the Hamilton product in y and z
  /// ((1, 0, 0, 0) times (0, 1, 0, 0) gives (0, 2, 1, 0)); x and w are as in
  /// the float twin.
  void multiply(const zeQuaterniond& a, const zeQuaterniond& b) noexcept {
    const Products p(a, b);
    set(p.p1 - 0.5 * (p.p5 + p.p6 + p.p7 + p.p8), 0.5 * (p.p5 - p.p6 + p.p7 - p.p8) - p.p3,
        0.5 * (p.p5 - p.p6 - p.p7 + p.p8) - p.p4, p.p2 + 0.5 * (p.p7 + p.p8 - p.p5 - p.p6));
  }

  using QuaternionOps::getMatrix;
  /// Writes the whole rotation matrix into m. Unlike the float twin, the
  /// double class scales by 2 / (x x + y y + z z + w w) instead of 2, so any
  /// non-zero quaternion gives a pure rotation; a norm that is not above 0
  /// scales by 0, which makes the zero quaternion the identity.
  void getMatrix(zeMatrix44d& m) const noexcept;

  /// Quaternion of the Euler angles (radians) from the negated half-angles.
  /// The double class deliberately flips the sign of the second term of x and
  /// y against the float twin: x = sx cy cz - cx sy sz, y = cx sy cz + sx cy sz.
  /// A rotation about one axis comes out the same in both.
  void setRotationRadians(double rx, double ry, double rz) noexcept;
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
