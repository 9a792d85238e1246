#pragma once

/// \file
/// The members of the float and double matrices that build a rotation from a
/// quaternion. The concrete matrix derives from this mixin, naming itself as M
/// and its quaternion as Q (CRTP).

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// The rotation of a quaternion written into the float and double 4x4
/// matrices.
template <class M, class T, class Q>
class ZEMATH_API Matrix44QuaternionOps {
 public:
  /// Writes the 3x3 block of the rotation of q, q first scaled by
  /// 1 / sqrt(x x + y y + z z + w w); the other seven elements are left as
  /// they were. A zero q gives NaN.
  void setQuaternion(const Q& q) noexcept;

  /// setQuaternion(q), then m3 = m7 = m11 = 0 and row 3 = (0, 0, 0, 1).
  void makeQuaternion(const Q& q) noexcept;

 private:
  M& self() noexcept { return *static_cast<M*>(this); }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
