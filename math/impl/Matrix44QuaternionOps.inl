#pragma once

/// \file
/// Bodies of the matrix-from-quaternion members. Included only by the sources
/// of the concrete matrices, which instantiate the mixin explicitly.

#include <cmath>

#include "math/impl/Matrix44QuaternionOps.h"
#include "math/impl/QuaternionOps.h"

namespace Lux {
namespace Math {
namespace impl {

template <class M, class T, class Q>
void Matrix44QuaternionOps<M, T, Q>::setQuaternion(const Q& q) noexcept {
  const T scale = T(1) / std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
  const T x = q.x * scale;
  const T y = q.y * scale;
  const T z = q.z * scale;
  const T w = q.w * scale;
  writeRotationBlock(self().data(), x, y, z, w, T(2) * x, T(2) * y, T(2) * z);
}

template <class M, class T, class Q>
void Matrix44QuaternionOps<M, T, Q>::makeQuaternion(const Q& q) noexcept {
  setQuaternion(q);
  writeIdentityBorder(self().data());
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
