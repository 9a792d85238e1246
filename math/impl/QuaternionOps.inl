#pragma once

/// \file
/// The larger shared quaternion members. Included only by the sources of the
/// concrete quaternions, which instantiate QuaternionOps explicitly.

#include "math/impl/QuaternionOps.h"

namespace Lux {
namespace Math {
namespace impl {

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::getMatrix(M& m) const noexcept {
  const Q& q = this->self();
  T* e = m.data();
  writeRotationBlock(e, q.x, q.y, q.z, q.w, T(2) * q.x, T(2) * q.y, T(2) * q.z);
  writeIdentityBorder(e);
}

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::setMatrix(const M& m) noexcept {
  const T trace = m[0] + m[5] + m[10];
  if (trace >= T(0)) {
    const T r = std::sqrt(trace + T(1));
    const T s = T(0.5) / r;
    set((m[9] - m[6]) * s, (m[2] - m[8]) * s, (m[4] - m[1]) * s, T(0.5) * r);
    return;
  }
  // The three diagonal branches add m15 where the trace branch adds 1; this
  // is deliberate. Ties go to the earlier branch.
  const T largest = m[5] > m[0] ? m[5] : m[0];
  if (m[10] > largest) {
    const T r = std::sqrt(m[10] - (m[0] + m[5]) + m[15]);
    const T s = T(0.5) / r;
    set((m[8] + m[2]) * s, (m[6] + m[9]) * s, T(0.5) * r, (m[4] - m[1]) * s);
  } else if (m[5] > m[0]) {
    const T r = std::sqrt(m[5] - (m[10] + m[0]) + m[15]);
    const T s = T(0.5) / r;
    set((m[1] + m[4]) * s, T(0.5) * r, (m[6] + m[9]) * s, (m[2] - m[8]) * s);
  } else {
    const T r = std::sqrt(m[0] - (m[5] + m[10]) + m[15]);
    const T s = T(0.5) / r;
    set(T(0.5) * r, (m[1] + m[4]) * s, (m[8] + m[2]) * s, (m[9] - m[6]) * s);
  }
}

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::setRotationRadians(T rx, T ry, T rz) noexcept {
  const T a = -rx / T(2);
  const T b = -ry / T(2);
  const T c = -rz / T(2);
  const T cx = impl::cos(a), sx = impl::sin(a);
  const T cy = impl::cos(b), sy = impl::sin(b);
  const T cz = impl::cos(c), sz = impl::sin(c);
  set(sx * cy * cz + cx * sy * sz, cx * sy * cz - sx * cy * sz, cx * cy * sz + sx * sy * cz,
      cx * cy * cz - sx * sy * sz);
}

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::getRotationRadians(T& rx, T& ry, T& rz) const noexcept {
  M m;
  m.makeIdentity();
  m.makeQuaternion(this->self());
  const T v = -m[2];
  if (v > T(-1) && v < T(1)) {
    ry = impl::asin(v);
    if (impl::cos(ry) == T(0)) {
      Q::getPoleRotationRadians(m, rx, ry, rz);
      return;
    }
  } else {
    // Beyond the poles (or NaN) the pitch is pinned to -pi/2 or +pi/2.
    ry = v >= T(1) ? impl::asin(T(1)) : impl::asin(T(-1));
  }
  rx = impl::atan2(m[6], m[10]);
  rz = impl::atan2(m[1], m[0]);
}

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::getPoleRotationRadians(const M& m, T& rx, T& /*ry*/, T& rz) noexcept {
  rx = impl::atan2(m[4], m[5]);
  rz = T(0);
}

template <class Q, class T, class M>
void QuaternionOps<Q, T, M>::slerp(T t, const Q& a, const Q& b) noexcept {
  T d = dot(a, b);
  Q end = b;
  if (d < T(0)) {
    end = negated(b);
    d = -d;
  }
  if (!(T(1) + d > zeSmallThreshold<T>)) {
    perpendicular(t, a, end);
  } else if (T(1) - d > zeSmallThreshold<T>) {
    const T theta = impl::acos(d);
    const T s0 = impl::sin((T(1) - t) * theta) / impl::sin(theta);
    const T s1 = impl::sin(t * theta) / impl::sin(theta);
    weigh(a, s0, end, s1);
  } else {
    weigh(a, T(1) - t, end, t);
  }
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
