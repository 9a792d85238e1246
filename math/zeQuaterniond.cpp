// The out-of-line members of zeQuaterniond: the shared quaternion algorithms
// instantiated for double precision, and the members where the double class
// deliberately differs from its float twin.

#include "math/zeQuaterniond.h"

#include "math/impl/QuaternionOps.inl"
#include "math/impl/Trig.h"

namespace Lux {
namespace Math {

template class impl::QuaternionOps<zeQuaterniond, double, zeMatrix44d>;

void zeQuaterniond::getMatrix(zeMatrix44d& m) const noexcept {
  const double n = norm(*this);
  const double s = n > 0.0 ? 2.0 / n : 0.0;
  impl::writeRotationBlock(m.data(), x, y, z, w, x * s, y * s, z * s);
  impl::writeIdentityBorder(m.data());
}

void zeQuaterniond::setRotationRadians(double rx, double ry, double rz) noexcept {
  const double a = -rx / 2.0;
  const double b = -ry / 2.0;
  const double c = -rz / 2.0;
  const double cx = impl::cos(a), sx = impl::sin(a);
  const double cy = impl::cos(b), sy = impl::sin(b);
  const double cz = impl::cos(c), sz = impl::sin(c);
  set(sx * cy * cz - cx * sy * sz, cx * sy * cz + sx * cy * sz, cx * cy * sz + sx * sy * cz,
      cx * cy * cz - sx * sy * sz);
}

}  // namespace Math
}  // namespace Lux
