#pragma once

/// \file
/// Determinant, adjoint and inverses shared by the float and double 4x4
/// matrices (CRTP mixin: M is the concrete matrix, T its scalar, V3 and V4 its
/// vectors). The general inverse refuses a matrix whose determinant is below a
/// threshold that differs between the two classes, so each concrete class
/// declares its own invert() on top of invertAboveThreshold(); the cheaper
/// inverses here fall back to that invert() through self().

#include "core/zeResult.h"
#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// Determinant, adjoint and the general, orthonormal, orthogonal and affine
/// inverses of the float and double 4x4 matrices.
template <class M, class T, class V3, class V4>
class ZEMATH_API Matrix44Inversion {
 public:
  /// The 4x4 determinant of m (Laplace expansion along row 0).
  static T determinant(const M& m) noexcept;

  /// adj = the classical adjoint of m (the transposed cofactor matrix).
  /// m is read completely before adj is written, so adj may be m.
  static void adjoint(const M& m, M& adj) noexcept;

  /// this = the inverse of a rotation plus translation: the transposed 3x3
  /// and the negated translation. Trusts m completely; always kSuccess.
  /// m must not be this matrix.
  int invertOrthonormal(const M& m) noexcept;

  /// this = the inverse of a uniformly scaled rotation plus translation, the
  /// scale taken from row 0 alone. Falls back to invert(m) when the squared
  /// scale is below the small threshold. m must not be this matrix.
  int invertOrthogonal(const M& m) noexcept;

  /// this = the inverse of an affine matrix; m's column 3 is taken as
  /// (0, 0, 0, 1) and never read. Falls back to invert(m), the full 4x4
  /// inverse, when the 3x3 determinant fails a relative precision test.
  /// m must not be this matrix.
  int invertAffine(const M& m) noexcept;

 protected:
  /// this = adjoint(m) / determinant(m), or kFailure with this untouched when
  /// |determinant| < smallest. m may be this matrix.
  int invertAboveThreshold(const M& m, T smallest) noexcept;

 private:
  M& self() noexcept { return *static_cast<M*>(this); }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
