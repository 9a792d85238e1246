// The out-of-line members of impl::Matrix44Projection. Included by the matrix
// sources, which instantiate the mixin for their own class. Each reciprocal is
// formed once and multiplied; sums run left to right as written.

#include <cmath>

#include "math/impl/Matrix44Projection.h"
#include "math/impl/Trig.h"

namespace Lux {
namespace Math {
namespace impl {

template <class M, class T, class V3, class V4>
void Matrix44Projection<M, T, V3, V4>::makeOrthographicProjection(T l, T r, T b, T t, T n, T f) noexcept {
  const T x = T(1) / (r - l);
  const T y = T(1) / (t - b);
  const T z = T(1) / (f - n);
  // The factors 2 are formed as reciprocal + reciprocal.
  self() = M(x + x, T(0), T(0), T(0), T(0), y + y, T(0), T(0), T(0), T(0), -(z + z), T(0), -(l + r) * x, -(b + t) * y,
             -(n + f) * z, T(1));
}

template <class M, class T, class V3, class V4>
void Matrix44Projection<M, T, V3, V4>::makePerspectiveProjection(T l, T r, T b, T t, T n, T f) noexcept {
  const T x = T(1) / (r - l);
  const T y = T(1) / (t - b);
  const T z = T(1) / (f - n);
  self() = M((n + n) * x, T(0), T(0), T(0), T(0), (n + n) * y, T(0), T(0), (l + r) * x, (b + t) * y, -(f + n) * z,
             T(-1), T(0), T(0), ((f * T(-2)) * n) * z, T(0));
}

template <class M, class T, class V3, class V4>
void Matrix44Projection<M, T, V3, V4>::makePerspectiveProjectionRadians(T fovX, T fovY, T aspect, T n, T f) noexcept {
  // The second half tangent goes through atan and tan of a doubled half
  // angle instead of a plain product or quotient by aspect; the results
  // differ from tx = ty·aspect by rounding only, and are kept as they are.
  T tx, ty;
  if (fovX >= T(0)) {
    tx = impl::tan(fovX * T(0.5));
    const T h = impl::atan(((n * tx) / aspect) / n);
    ty = impl::tan((h + h) * T(0.5));
  } else {  // negative or NaN: the vertical angle decides
    ty = impl::tan(fovY * T(0.5));
    const T h = impl::atan(((n * ty) * aspect) / n);
    tx = impl::tan((h + h) * T(0.5));
  }
  self().makePerspectiveProjection(-tx * n, tx * n, -ty * n, ty * n, n, f);
}

template <class M, class T, class V3, class V4>
void Matrix44Projection<M, T, V3, V4>::getFrustumParameters(T& l, T& r, T& b, T& t, T& n, T& f) const noexcept {
  const M& m = self();
  const T p = T(1) - m(2, 2);
  const T q = m(2, 2) + T(1);
  if (p == T(0) || q == T(0) || m(0, 0) == T(0)) return;  // nothing written
  const T h = m(3, 2) * T(0.5);
  n = -h * (q / p + T(1));
  f = (p / q + T(1)) * h;
  // n is read back from its output, after f was written.
  const T w = n / m(0, 0);
  const T left = -((T(1) - m(2, 0)) * w);
  l = left;
  r = left + (w + w);
  // The vertical pair is scaled by n/m00 as well, not by n/m11, on purpose.
  const T bottom = -((T(1) - m(2, 1)) * w);
  b = bottom;
  t = bottom + (w + w);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
