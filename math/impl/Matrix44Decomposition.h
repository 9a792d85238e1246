#pragma once

/// \file
/// Splitting a 4x4 matrix into translation, rotation, scale and shear, and
/// building it back, shared by the float and double matrices (CRTP mixin: M
/// is the concrete matrix, T its scalar, V3 and V4 its vectors). Rows 0, 1, 2
/// are orthonormalised by Gram-Schmidt in that order; their lengths are the
/// scales, the removed projections the shears, and a frame of negative
/// orientation negates all three scales. Euler angles follow
/// makeRotationRadians(x, y, z): M = Rx·Ry·Rz.
///
/// Each concrete class declares its own decomposeMatrixRadians and
/// composeMatrixDegrees on top of the protected steps below, because the two
/// classes differ there on purpose.

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/Matrix44Construction.h"
#include "math/zeMathEnums.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// Decomposition into translation, rotation, scale and shear, and composition
/// from them, of the float and double 4x4 matrices.
template <class M, class T, class V3, class V4>
class ZEMATH_API Matrix44Decomposition {
 public:
  /// out's 3x3 part = the orthonormal rotation of this matrix. make also sets
  /// out's column 3 to (0, 0, 0, 1) and m30 = m31 = m32 = 0; otherwise the
  /// rest of out is left as it was.
  void getRotation(M& out, bool make) const noexcept;
  /// out's m00, m11, m22 = the scales of this matrix and m10, m20, m21 = its
  /// raw shear projections xy, xz, yz (not divided by the scales). make first
  /// sets out to the identity; otherwise the rest of out is left as it was.
  void getScale(M& out, bool make) const noexcept;
  /// The Euler angles of this matrix, the inverse of makeRotationRadians(x, y, z).
  void getRotationRadians(T& x, T& y, T& z) const noexcept;
  /// The Euler angles (x, y, z) of this matrix, as a value.
  V3 getRotationRadians() const noexcept {
    V3 angles;
    getRotationRadians(angles.x, angles.y, angles.z);
    return angles;
  }
  /// m = makeScale(scale, shear), then rotated by the Euler angles, then
  /// translated, all read from the twelve parts (angles in radians). This
  /// matrix is not used.
  void composeMatrixRadians(M& m, T* parts) noexcept;

 protected:
  /// The orthonormalised rows with their lengths and projections (defined
  /// beside the algorithms).
  struct Frame;

  /// false when m33 is 0; otherwise every element is divided by m33 unless
  /// it is 1 (row by row, m33 itself last).
  static bool divideByM33(M& m) noexcept;
  /// Column 3 of m = (0, 0, 0, 1).
  static void setAffineColumn(M& m) noexcept;
  /// parts[0..2] = the translation of local; parts[3..11] = angles, scales
  /// and shears of the first three rows of rows.
  static void writeParts(const M& local, const M& rows, T* parts) noexcept;
  /// composeMatrixRadians with the angles x, y, z instead of parts[3..5].
  static void compose(M& m, const T* parts, T x, T y, T z) noexcept;

 private:
  const M& self() const noexcept { return *static_cast<const M*>(this); }

  /// The frame of this matrix: its rows 0-2 divided by m33 unless m33 is 1.
  Frame frame() const noexcept;
  /// Gram-Schmidt on r0, r1, r2 in that order, reflection folded into the signs.
  static Frame orthonormalise(V3 r0, V3 r1, V3 r2) noexcept;
  /// Euler angles of the orthonormal rows of f.
  static void eulerAngles(const Frame& f, T& x, T& y, T& z) noexcept;
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
