#pragma once

#include <limits>

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/Matrix44Construction.h"
#include "math/impl/Matrix44Decomposition.h"
#include "math/impl/Matrix44Inversion.h"
#include "math/impl/Matrix44Ops.h"
#include "math/impl/Matrix44Projection.h"
#include "math/impl/Matrix44QuaternionOps.h"
#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zePlane;
class zeQuaternionf;

/// Single-precision 4x4 transform, stored row by row, row vectors on the left:
/// rows 0-2 are the images of the axes, row 3 the translation (12, 13, 14),
/// element 15 the homogeneous scale.
class ZEMATH_API zeMatrix44f : public impl::Matrix44Ops<zeMatrix44f, float, zeVec3f, zeVec4f>,
                               public impl::Matrix44Inversion<zeMatrix44f, float, zeVec3f, zeVec4f>,
                               public impl::Matrix44Construction<zeMatrix44f, float, zeVec3f, zeVec4f>,
                               public impl::Matrix44Decomposition<zeMatrix44f, float, zeVec3f, zeVec4f>,
                               public impl::Matrix44Projection<zeMatrix44f, float, zeVec3f, zeVec4f>,
                               public impl::Matrix44QuaternionOps<zeMatrix44f, float, zeQuaternionf> {
 public:
  /// Leaves the elements uninitialised, as for the built-in types (a trivial constructor).
  zeMatrix44f() = default;
  /// The matrix with elements m0..m15 in storage order.
  constexpr zeMatrix44f(float m0, float m1, float m2, float m3, float m4, float m5, float m6, float m7, float m8,
                        float m9, float m10, float m11, float m12, float m13, float m14, float m15) noexcept
      : elements_{m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15} {}

  /// *dst = a·b (a applied first). dst may be a or b or both. The float class
  /// has no member multiply; its products all go through here.
  static void matrixMultiply(zeMatrix44f* dst, const zeMatrix44f* a, const zeMatrix44f* b) noexcept {
    multiplyInto(dst->data(), a->data(), b->data());
  }

  /// this = m⁻¹ (adjoint times 1/determinant); m may be this matrix. Returns
  /// kFailure with this untouched when |determinant| is below the smallest
  /// normal float. The double twin refuses far larger determinants on purpose.
  int invert(const zeMatrix44f& m) noexcept { return invertAboveThreshold(m, std::numeric_limits<float>::min()); }

  /// setQuaternion(q), then m3, m7, m11 copied from zeVec3f::ZeroVector and
  /// row 3 from zeVec4f::TVector, as those constants hold at the call. (The
  /// double twin writes the literal zeros and one.)
  void makeQuaternion(const zeQuaternionf& q) noexcept;

  /// The rotation that turns the unit direction from into the unit direction
  /// to (neither is normalised): the identity when they agree, a half turn
  /// about an axis perpendicular to to when they are opposite. Only the float
  /// class has it.
  void makeRotation(const zeVec3f& from, const zeVec3f& to) noexcept;

  using impl::Matrix44Projection<zeMatrix44f, float, zeVec3f, zeVec4f>::makeOrthographicProjection;
  /// The parallel projection along `direction` onto the plane (its _norm and
  /// _offset); the w of a projected point is dot(_norm, direction).
  void makeOrthographicProjection(const zePlane* plane, const zeVec3f& direction) noexcept;
  /// The projection onto the plane (its _norm and _offset) from a point light
  /// at `light`.
  void makeShadowMatrix(const zePlane* plane, const zeVec3f& light) noexcept;

  /// Splits m into the twelve ZE_MATH_MATRIX_DECOMPOSITION parts (translation,
  /// Euler angles in radians, scale, shear). Returns kSuccess; kFailure for a
  /// singular matrix; the plain 0 when m33 is 0 (neither writes parts). Unlike
  /// the double twin, it sets column 3 of this matrix (not of m) to
  /// (0, 0, 0, 1) and takes rotation, scale and shear from this matrix's rows
  /// as they stand, so the usual call passes this matrix as m.
  int decomposeMatrixRadians(zeMatrix44f& m, float* parts) noexcept;
  /// composeMatrixRadians with the angles in degrees, turned into radians by
  /// the float nearest pi/180 (0.017453292f); parts is not changed.
  void composeMatrixDegrees(zeMatrix44f& m, float* parts) noexcept {
    const float k = 0.017453292f;
    compose(m, parts, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X] * k,
            parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y] * k, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z] * k);
  }

  static zeMatrix44f identityMatrix;  ///< the identity
  static zeMatrix44f zeroMatrix;      ///< all sixteen elements 0

 private:
  float elements_[16];
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
