// The out-of-line members of impl::Matrix44Construction. Included by the
// matrix sources, which instantiate the mixin for their own class; V3 and V4
// must be complete there.

#include <limits>

#include "math/impl/Matrix44Construction.h"
#include "math/zeMathThreshold.h"

namespace Lux {
namespace Math {
namespace impl {

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::setRotationRadians(T angle, const V3& axis) noexcept {
  M& m = self();
  if (std::fabs(angle) < zeSmallThreshold<T>) {
    for (int r = 0; r < 3; ++r)
      for (int c = 0; c < 3; ++c) m(r, c) = (r == c) ? T(1) : T(0);
    return;
  }
  T s, c;
  sinCos(angle, s, c);
  const T t = T(1) - c;
  const T x = axis.x, y = axis.y, z = axis.z;
  const T tx = t * x, ty = t * y, tz = t * z;
  m(0, 0) = x * tx + c;
  m(0, 1) = y * tx + z * s;
  m(0, 2) = tx * z - y * s;
  m(1, 0) = x * ty - z * s;
  m(1, 1) = y * ty + c;
  m(1, 2) = ty * z + x * s;
  m(2, 0) = x * tz + y * s;
  m(2, 1) = y * tz - x * s;
  m(2, 2) = tz * z + c;
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::setRotationRadians(T x, T y, T z) noexcept {
  // An angle of exactly 0 (either sign) skips the sine and cosine: sin 0, cos 1.
  T sx = T(0), cx = T(1), sy = T(0), cy = T(1), sz = T(0), cz = T(1);
  if (x != T(0)) sinCos(x, sx, cx);
  if (y != T(0)) sinCos(y, sy, cy);
  if (z != T(0)) sinCos(z, sz, cz);
  // Products used by two elements are formed once: sx·sy in m10 and m11,
  // cx·cz in m11 and m20, cx·sz in m10 and m21.
  const T sxsy = sx * sy;
  const T cxcz = cx * cz;
  const T cxsz = cx * sz;
  M& m = self();
  m(0, 0) = cy * cz;
  m(0, 1) = cy * sz;
  m(0, 2) = -sy;
  m(1, 0) = sxsy * cz - cxsz;
  m(1, 1) = sxsy * sz + cxcz;
  m(1, 2) = sx * cy;
  m(2, 0) = cxcz * sy + sx * sz;
  m(2, 1) = cxsz * sy - sx * cz;
  m(2, 2) = cx * cy;
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::makeRotationRadians(T angle, const V3& axis) noexcept {
  setRotationRadians(angle, axis);
  clearAffineBorder();
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::makeRotationRadians(T x, T y, T z) noexcept {
  setRotationRadians(x, y, z);
  clearAffineBorder();
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::postRotationRadians(T angle, const V3& axis) noexcept {
  M rotation;
  rotation.makeRotationRadians(angle, axis);
  concatenate(self(), self(), rotation);
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::preRotationRadians(T angle, const V3& axis) noexcept {
  M rotation;
  rotation.makeRotationRadians(angle, axis);
  concatenate(self(), rotation, self());
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::makeLookAt(const V3& eye, const V3& center, const V3& up) noexcept {
  lookAlong(eye, eye - center, up);
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::makeLookAtDirection(const V3& eye, const V3& direction,
                                                             const V3& up) noexcept {
  lookAlong(eye, -direction, up);
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::lookAlong(const V3& eye, const V3& towardsEye, const V3& up) noexcept {
  const V3 f = guardedUnit(towardsEye);
  const V3 u = guardedUnit(up);
  V3 s;
  s.cross(u, f);
  s = guardedUnit(s);
  V3 v;
  v.cross(f, s);  // unit already for unit f and s; not normalised again

  M& m = self();
  for (int r = 0; r < 3; ++r) {
    m(r, 0) = s[r];
    m(r, 1) = v[r];
    m(r, 2) = f[r];
    m(r, 3) = T(0);
  }
  // Row 3 is minus eye times the four columns. Column 3 is (0, 0, 0) above, so
  // m33 is 1 for a finite eye and NaN when eye holds an infinity or a NaN.
  m(3, 0) = -s.dot(eye);
  m(3, 1) = -v.dot(eye);
  m(3, 2) = -f.dot(eye);
  m(3, 3) = T(1) - (T(0) * eye.x + T(0) * eye.y + T(0) * eye.z);
}

template <class M, class T, class V3, class V4>
V3 Matrix44Construction<M, T, V3, V4>::guardedUnit(const V3& v) noexcept {
  const T lengthSquared = v.dot(v);
  if (!(lengthSquared > std::numeric_limits<T>::min())) return v;
  const T length = std::sqrt(lengthSquared);
  return V3(v.x / length, v.y / length, v.z / length);
}

template <class M, class T, class V3, class V4>
void Matrix44Construction<M, T, V3, V4>::clearAffineBorder() noexcept {
  // Copied from the named vectors, as every caller sees them at this moment.
  const V3& zero = V3::ZeroVector;
  const V4& unitW = V4::TVector;
  M& m = self();
  m(0, 3) = zero.x;
  m(1, 3) = zero.y;
  m(2, 3) = zero.z;
  m(3, 0) = unitW.x;
  m(3, 1) = unitW.y;
  m(3, 2) = unitW.z;
  m(3, 3) = unitW.w;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
