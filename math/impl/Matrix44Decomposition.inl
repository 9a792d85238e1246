// The out-of-line members of impl::Matrix44Decomposition. Included by the
// matrix sources, which instantiate the mixin for their own class; V3 and V4
// must be complete there.

#include <cmath>

#include "math/impl/Matrix44Decomposition.h"
#include "math/impl/Trig.h"

namespace Lux {
namespace Math {
namespace impl {

template <class M, class T, class V3, class V4>
struct Matrix44Decomposition<M, T, V3, V4>::Frame {
  V3 r0, r1, r2;    ///< orthonormal rows, negated on a reflection
  T length[3];      ///< lengths of the three rows after removing the projections
  T hxy, hxz, hyz;  ///< the projections removed: r0·r1, r0·r2, r1·r2
  bool reflection;  ///< r0·(r1 x r2) < 0: the scales are the negated lengths

  /// Scale i (0 = x): the length, negated on a reflection.
  T scale(int i) const noexcept { return reflection ? -length[i] : length[i]; }
};

template <class M, class T, class V3, class V4>
typename Matrix44Decomposition<M, T, V3, V4>::Frame Matrix44Decomposition<M, T, V3, V4>::orthonormalise(
    V3 r0, V3 r1, V3 r2) noexcept {
  Frame f;
  f.length[0] = std::sqrt(r0.dot(r0));
  r0 = r0 * (T(1) / f.length[0]);

  f.hxy = r0.dot(r1);
  r1 = r1 - r0 * f.hxy;
  f.length[1] = std::sqrt(r1.dot(r1));
  r1 = r1 * (T(1) / f.length[1]);

  f.hxz = r0.dot(r2);
  r2 = r2 - r0 * f.hxz;
  f.hyz = r1.dot(r2);
  r2 = r2 - r1 * f.hyz;
  f.length[2] = std::sqrt(r2.dot(r2));
  r2 = r2 * (T(1) / f.length[2]);

  V3 c;
  c.cross(r1, r2);
  f.reflection = r0.dot(c) < T(0);
  if (f.reflection) {
    r0 = -r0;
    r1 = -r1;
    r2 = -r2;
  }
  f.r0 = r0;
  f.r1 = r1;
  f.r2 = r2;
  return f;
}

template <class M, class T, class V3, class V4>
typename Matrix44Decomposition<M, T, V3, V4>::Frame Matrix44Decomposition<M, T, V3, V4>::frame() const noexcept {
  const M& m = self();
  V3 r0(m(0, 0), m(0, 1), m(0, 2));
  V3 r1(m(1, 0), m(1, 1), m(1, 2));
  V3 r2(m(2, 0), m(2, 1), m(2, 2));
  if (m(3, 3) != T(1)) {
    const T k = T(1) / m(3, 3);  // no test for m33 = 0
    r0 = r0 * k;
    r1 = r1 * k;
    r2 = r2 * k;
  }
  return orthonormalise(r0, r1, r2);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::eulerAngles(const Frame& f, T& x, T& y, T& z) noexcept {
  const T s = -f.r0.z;
  T angleY;
  if (T(-1) < s && s < T(1)) {
    angleY = impl::asin(s);
    if (impl::cos(angleY) == T(0)) {  // gimbal lock: all of the turn about x
      x = impl::atan2(f.r1.x, f.r1.y);
      y = angleY;
      z = T(0);
      return;
    }
  } else {
    // Clamped; a NaN s gives asin(-1). No gimbal-lock branch here.
    angleY = s > T(-1) ? impl::asin(T(1)) : impl::asin(T(-1));
  }
  x = impl::atan2(f.r1.z, f.r2.z);
  y = angleY;
  z = impl::atan2(f.r0.y, f.r0.x);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::getRotation(M& out, bool make) const noexcept {
  const Frame f = frame();
  for (int c = 0; c < 3; ++c) {
    out(0, c) = f.r0[c];
    out(1, c) = f.r1[c];
    out(2, c) = f.r2[c];
  }
  if (make) {
    for (int i = 0; i < 3; ++i) {
      out(i, 3) = T(0);
      out(3, i) = T(0);
    }
    out(3, 3) = T(1);
  }
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::getScale(M& out, bool make) const noexcept {
  const Frame f = frame();
  if (make) out.makeIdentity();
  out(0, 0) = f.scale(0);
  out(1, 0) = f.hxy;
  out(1, 1) = f.scale(1);
  out(2, 0) = f.hxz;
  out(2, 1) = f.hyz;
  out(2, 2) = f.scale(2);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::getRotationRadians(T& x, T& y, T& z) const noexcept {
  eulerAngles(frame(), x, y, z);
}

template <class M, class T, class V3, class V4>
bool Matrix44Decomposition<M, T, V3, V4>::divideByM33(M& m) noexcept {
  const T w = m(3, 3);
  if (w == T(0)) return false;
  if (w != T(1)) {
    for (int i = 0; i < 16; ++i) m[i] = m[i] / w;
  }
  return true;
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::setAffineColumn(M& m) noexcept {
  m(0, 3) = T(0);
  m(1, 3) = T(0);
  m(2, 3) = T(0);
  m(3, 3) = T(1);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::writeParts(const M& local, const M& rows, T* parts) noexcept {
  parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X] = local(3, 0);
  parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Y] = local(3, 1);
  parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Z] = local(3, 2);

  const Frame f = orthonormalise(V3(rows(0, 0), rows(0, 1), rows(0, 2)), V3(rows(1, 0), rows(1, 1), rows(1, 2)),
                                 V3(rows(2, 0), rows(2, 1), rows(2, 2)));
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X] = f.scale(0);
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Y] = f.scale(1);
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Z] = f.scale(2);
  // The shears are divided by the lengths, before any reflection sign.
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XY] = f.hxy / f.length[1];
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XZ] = f.hxz / f.length[2];
  parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ] = f.hyz / f.length[2];

  eulerAngles(f, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y],
              parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z]);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::composeMatrixRadians(M& m, T* parts) noexcept {
  compose(m, parts, parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y],
          parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z]);
}

template <class M, class T, class V3, class V4>
void Matrix44Decomposition<M, T, V3, V4>::compose(M& m, const T* parts, T x, T y, T z) noexcept {
  M scaleShear;
  scaleShear.makeScale(V3(parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Y],
                          parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Z]),
                       V3(parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XY], parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XZ],
                          parts[ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ]));
  m.makeRotationRadians(x, y, z);
  concatenate(m, scaleShear, m);  // scale and shear apply first, then the rotation
  m.setTranslation(V3(parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Y],
                      parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Z]));
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
