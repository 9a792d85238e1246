#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/Matrix44Ops.h"
#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

/// Single-precision 4x4 transform, stored row by row, row vectors on the left:
/// rows 0-2 are the images of the axes, row 3 the translation (12, 13, 14),
/// element 15 the homogeneous scale.
class ZEMATH_API zeMatrix44f : public impl::Matrix44Ops<zeMatrix44f, float, zeVec3f, zeVec4f> {
 public:
  zeMatrix44f() = default;
  /// The matrix with elements m0..m15 in storage order.
  constexpr zeMatrix44f(float m0, float m1, float m2, float m3, float m4, float m5, float m6, float m7,
                        float m8, float m9, float m10, float m11, float m12, float m13, float m14,
                        float m15) noexcept
      : elements_{m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15} {}

  /// *dst = a·b (a applied first). dst may be a or b or both. The float class
  /// has no member multiply; its products all go through here.
  static void matrixMultiply(zeMatrix44f* dst, const zeMatrix44f* a, const zeMatrix44f* b) noexcept {
    multiplyInto(dst->data(), a->data(), b->data());
  }

  static zeMatrix44f identityMatrix;  ///< the identity
  static zeMatrix44f zeroMatrix;      ///< all sixteen elements 0

 private:
  float elements_[16];
};

}  // namespace Math
}  // namespace Lux
