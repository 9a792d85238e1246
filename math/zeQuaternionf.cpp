// The out-of-line members of zeQuaternionf: the shared quaternion algorithms
// instantiated for single precision, and the float class's own slerp.

#include "math/zeQuaternionf.h"

#include "math/impl/QuaternionOps.inl"

namespace Lux {
namespace Math {

template class impl::QuaternionOps<zeQuaternionf, float, zeMatrix44f>;

void zeQuaternionf::slerp(float t, const zeQuaternionf& a, const zeQuaternionf& b) noexcept {
  float d = dot(a, b);
  zeQuaternionf end = b;
  if (d < 0.0f) {
    end = negated(b);
    // Nearly opposite: tested on d before it is negated.
    if (d + 1.0f < zeSmallThreshold<float>) {
      perpendicular(t, a, end);
      return;
    }
    d = -d;
  }
  if (!(1.0f - d > 0.08f)) {
    blend(t, a, end);
    return;
  }
  // The weights of the spherical blend, fitted as cubics in d and in t in
  // place of acos and sin; evaluated term by term in single precision.
  const float d2 = d * d;
  const float d3 = d2 * d;
  const float t2 = t * t;
  const float t3 = t2 * t;
  const float s0 = (0.99863404f + 0.0039327261f * d - 0.00403263187f * d2 + 0.00146585365f * d3) +
                   t * (0.0465055406f - 1.67769766f * d + 0.932855904f * d2 - 0.301663756f * d3) +
                   t2 * (-1.48254812f + 2.26251626f * d - 1.13500059f * d2 + 0.355032355f * d3) +
                   t3 * (0.436042517f - 0.584818542f * d + 0.202144668f * d2 - 0.0533686206f * d3);
  const float s1 = (-0.00136594765f + 0.00393273169f * d - 0.0040326342f * d2 + 0.00146585039f * d3) +
                   t * (1.61046302f - 1.09287894f * d + 0.730710685f * d2 - 0.248294786f * d3) +
                   t2 * (-0.17442055f + 0.508060098f * d - 0.528565109f * d2 + 0.194925562f * d3) +
                   t3 * (-0.436042488f + 0.58481884f * d - 0.202145636f * d2 + 0.0533692576f * d3);
  weigh(a, s0, end, s1);
}

}  // namespace Math
}  // namespace Lux
