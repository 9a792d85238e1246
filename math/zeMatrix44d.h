#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/Matrix44Construction.h"
#include "math/impl/Matrix44Decomposition.h"
#include "math/impl/Matrix44Inversion.h"
#include "math/impl/Matrix44Ops.h"
#include "math/impl/Matrix44Projection.h"
#include "math/impl/Matrix44QuaternionOps.h"
#include "math/zeVec3d.h"
#include "math/zeVec4d.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zePlane;
class zeQuaterniond;

/// Double-precision 4x4 transform, the twin of zeMatrix44f: same layout and
/// conventions, with the differences marked below.
class ZEMATH_API zeMatrix44d : public impl::Matrix44Ops<zeMatrix44d, double, zeVec3d, zeVec4d>,
                               public impl::Matrix44Inversion<zeMatrix44d, double, zeVec3d, zeVec4d>,
                               public impl::Matrix44Construction<zeMatrix44d, double, zeVec3d, zeVec4d>,
                               public impl::Matrix44Decomposition<zeMatrix44d, double, zeVec3d, zeVec4d>,
                               public impl::Matrix44Projection<zeMatrix44d, double, zeVec3d, zeVec4d>,
                               public impl::Matrix44QuaternionOps<zeMatrix44d, double, zeQuaterniond> {
  using Ops = impl::Matrix44Ops<zeMatrix44d, double, zeVec3d, zeVec4d>;

 public:
  /// Leaves the elements uninitialised, as for the built-in types (a trivial constructor).
  zeMatrix44d() = default;
  zeMatrix44d(const zeMatrix44d&) = default;  ///< Copies all sixteen elements.
  /// The matrix with elements m0..m15 in storage order.
  constexpr zeMatrix44d(double m0, double m1, double m2, double m3, double m4, double m5, double m6, double m7,
                        double m8, double m9, double m10, double m11, double m12, double m13, double m14,
                        double m15) noexcept
      : elements_{m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15} {}

  /// Copies m with copyMatrix; assigning a matrix to itself does nothing.
  /// (The float twin assigns by plain element copy.)
  zeMatrix44d& operator=(const zeMatrix44d& m) noexcept {
    if (&m != this) copyMatrix(data(), m.data());
    return *this;
  }

  /// this = a·b (a applied first); this may be a or b.
  void multiply(const zeMatrix44d& a, const zeMatrix44d& b) noexcept { multiplyInto(data(), a.data(), b.data()); }
  /// this = m·this: the pre-multiply, m applies before the old transform.
  void multiply(const zeMatrix44d& m) noexcept { multiplyInto(data(), m.data(), data()); }

  /// this = m⁻¹ (adjoint times 1/determinant); m may be this matrix. Returns
  /// kFailure with this untouched when |determinant| < 5e-7 (the widened
  /// single-precision threshold). Deliberately stricter than the float twin,
  /// which inverts anything down to the smallest normal float.
  int invert(const zeMatrix44d& m) noexcept { return invertAboveThreshold(m, zeSmallThreshold<double>); }

  // The double class's four array transforms deliberately carry no const
  // qualifier (the float twin's do); they still leave the matrix unchanged.
  /// dst[i] = src[i] transformed as a direction by the 3x3 block; src may be dst.
  void transformVectors(zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
    Ops::transformVectors(src, dst, count);
  }
  /// dst[i] = src[i] transformed as a point with the projective divide; src may be dst.
  void transformPoints(zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
    Ops::transformPoints(src, dst, count);
  }
  /// dst[i] = x, y, z of src[i] by the 3x3 block, w copied; src may be dst.
  void transformVectors(zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
    Ops::transformVectors(src, dst, count);
  }
  /// dst[i] = src[i] times this matrix in full, no divide; src may be dst.
  void transformPoints(zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
    Ops::transformPoints(src, dst, count);
  }
  /// transformVectors of a source that is not to be written.
  void transformVectors(const zeVec3d* src, zeVec3d* dst, unsigned int count) const noexcept {
    Ops::transformVectors(src, dst, count);
  }
  /// transformPoints of a source that is not to be written.
  void transformPoints(const zeVec3d* src, zeVec3d* dst, unsigned int count) const noexcept {
    Ops::transformPoints(src, dst, count);
  }
  /// transformVectors of a source that is not to be written.
  void transformVectors(const zeVec4d* src, zeVec4d* dst, unsigned int count) const noexcept {
    Ops::transformVectors(src, dst, count);
  }
  /// transformPoints of a source that is not to be written.
  void transformPoints(const zeVec4d* src, zeVec4d* dst, unsigned int count) const noexcept {
    Ops::transformPoints(src, dst, count);
  }

  /// Splits m into the twelve ZE_MATH_MATRIX_DECOMPOSITION parts (translation,
  /// Euler angles in radians, scale, shear), all taken from m divided by its
  /// m33. Returns kSuccess; kFailure for a singular matrix; the plain 0 when
  /// m33 is 0 (neither writes parts). Unlike the float twin, this matrix is
  /// neither read nor changed.
  int decomposeMatrixRadians(zeMatrix44d& m, double* parts) noexcept;
  /// composeMatrixRadians with the angles in degrees, turned into radians by
  /// 0.0174532925199433: deliberately this truncated decimal, not the double
  /// nearest pi/180. parts is not changed.
  void composeMatrixDegrees(zeMatrix44d& m, double* parts) noexcept {
    const double k = 0.0174532925199433;
    compose(m, parts, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X] * k,
            parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y] * k, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z] * k);
  }

  using impl::Matrix44Projection<zeMatrix44d, double, zeVec3d, zeVec4d>::makeOrthographicProjection;
  /// The parallel projection along `direction` onto the plane (its _norm and
  /// _offset, widened exactly to double); the w of a projected point is
  /// dot(_norm, direction).
  void makeOrthographicProjection(const zePlane* plane, const zeVec3d& direction) noexcept;
  /// The projection onto the plane (its _norm and _offset, widened exactly to
  /// double) from a point light at `light`.
  void makeShadowMatrix(const zePlane* plane, const zeVec3d& light) noexcept;

  static zeMatrix44d identityMatrix;  ///< the identity
  static zeMatrix44d zeroMatrix;      ///< all sixteen elements 0

 private:
  double elements_[16];
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
