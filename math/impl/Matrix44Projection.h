#pragma once

/// \file
/// Projection matrices shared by the float and double 4x4 matrices (CRTP
/// mixin: M is the concrete matrix, T its scalar, V3 and V4 its vectors).
/// They are the usual right-handed clip-space matrices of a camera looking
/// down -z, depth mapped to [-1, 1], written for row vectors (the transpose of
/// the column-vector textbook form). Every make operation writes all sixteen
/// elements.
///
/// The two projections onto a plane are free templates taking the plane as
/// its unit normal and offset (the plane of a volume is every p with
/// dot(normal, p) = offset), so that the members taking a plane object only
/// read its fields and pass them on.

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// Orthographic and perspective projections of the float and double 4x4
/// matrices, the frustum read back, and the planes of the view volume.
template <class M, class T, class V3, class V4>
class ZEMATH_API Matrix44Projection {
 public:
  /// Orthographic box: maps [l, r] x [b, t] x [-n, -f] onto the clip cube.
  /// l = r, b = t or n = f divide by zero.
  void makeOrthographicProjection(T l, T r, T b, T t, T n, T f) noexcept;

  /// Perspective frustum with the near rectangle [l, r] x [b, t] at distance
  /// n and the far plane at f; w of a projected point is -z. m33 is 0.
  void makePerspectiveProjection(T l, T r, T b, T t, T n, T f) noexcept;

  /// Symmetric perspective frustum from full field-of-view angles in
  /// radians; aspect is width over height. fovX >= 0 gives the horizontal
  /// angle (fovY ignored); a negative or NaN fovX selects the vertical fovY.
  void makePerspectiveProjectionRadians(T fovX, T fovY, T aspect, T n, T f) noexcept;

  /// The frustum of a matrix made by makePerspectiveProjection. Writes
  /// nothing when m22 is 1 or -1 or m00 is 0. Bottom and top are scaled by
  /// n/m00 like left and right, so they come back exactly only for frusta as
  /// wide as they are high.
  void getFrustumParameters(T& l, T& r, T& b, T& t, T& n, T& f) const noexcept;

  /// The six planes of the view volume of this matrix, a view-projection in
  /// the row-vector convention (clip = (p, 1)·this, depth in [-w, w]), in the
  /// order left, right, bottom, top, near, far. Each is (x, y, z) = the unit
  /// normal and w = the offset of a zePlane: a point p is inside the plane
  /// when dot(normal, p) - offset <= 0, so the normals point out of the view
  /// volume and every plane's inside holds it. Plane k is the clip condition
  /// s·clip[k / 2] <= clip.w (s = -1 for even k, +1 for odd k), written
  /// c·p + d <= 0 with c = s·column(k / 2) - column 3 (rows 0-2) and
  /// d = s·m[3][k / 2] - m33: normal = c normalized, offset = -d / |c|.
  void getFrustumPlanes(V4 planes[6]) const noexcept {
    const M& m = self();
    for (int k = 0; k < 6; ++k) {
      const int j = k / 2;
      const T s = k % 2 == 0 ? T(-1) : T(1);
      const V3 c(s * m(0, j) - m(0, 3), s * m(1, j) - m(1, 3), s * m(2, j) - m(2, 3));
      const T d = s * m(3, j) - m(3, 3);
      const V3 normal = c.normalized();
      planes[k] = V4(normal.x, normal.y, normal.z, -d / c.length());
    }
  }

 private:
  M& self() noexcept { return *static_cast<M*>(this); }
  const M& self() const noexcept { return *static_cast<const M*>(this); }
};

/// m = the parallel projection along direction onto a plane of the given
/// normal; the w of a projected point is e = dot(normal, direction). Row 3
/// holds -offset·direction, so points land on dot(normal, p) = -offset, the
/// plane mirrored through the origin: the opposite sign of shadowOntoPlane's
/// row 3, kept that way on purpose.
template <class M, class V3>
inline void projectAlongOntoPlane(M& m, const V3& normal, typename M::Scalar offset, const V3& direction) noexcept {
  using T = typename M::Scalar;
  const T a = normal.x, b = normal.y, c = normal.z, d = offset;
  const T dx = direction.x, dy = direction.y, dz = direction.z;
  const T e = a * dx + b * dy + c * dz;
  m = M(dy * b + dz * c, -a * dy, -a * dz, T(0), -b * dx, dx * a + dz * c, -b * dz, T(0), -c * dx, -c * dy,
        dx * a + dy * b, T(0), -d * dx, -d * dy, -d * dz, e);
}

/// m = the projection onto the plane dot(normal, p) = offset from the point
/// light at light: k·I - P·L with P = (a, b, c, -offset), L = (light, 1) and
/// k = dot(P, L). Row 3 holds +offset·light, so points land on
/// dot(normal, p) = offset.
template <class M, class V3>
inline void shadowOntoPlane(M& m, const V3& normal, typename M::Scalar offset, const V3& light) noexcept {
  using T = typename M::Scalar;
  const T a = normal.x, b = normal.y, c = normal.z, d = offset;
  const T lx = light.x, ly = light.y, lz = light.z;
  const T k = ((b * ly + a * lx) + c * lz) + (-d);  // y term first
  m = M(k - a * lx, -a * ly, -a * lz, -a, -b * lx, k - b * ly, -b * lz, -b, -c * lx, -c * ly, k - c * lz, -c, d * lx,
        d * ly, d * lz, k + d);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
