#include "math/volumes/zeIntersect.h"

#include <cmath>

#include "math/volumes/zeRay.h"
#include "math/zeMathThreshold.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_CLASS(zeIntersect, ::Lux::zeObject, nullptr, nullptr)

namespace {

// Whether the ray meets the triangle from a side that `sides` rejects, or
// runs (nearly) parallel to it. `d` is the dot product of the direction with
// the triangle's normal: its sign bit set means the ray meets the front.
bool culled(float d, unsigned int sides) {
  if (std::signbit(d)) {
    if (sides == zeRay::BACK_SIDE) return true;
  } else if (sides == zeRay::FRONT_SIDE) {
    return true;
  }
  const float threshold = zeSmallThreshold<float>;
  return (-threshold <= d && d <= threshold) || std::isnan(d);
}

}  // namespace

float zeIntersect::intersectRay(const zeRay* ray, const zeVec3f& vert0, const zeVec3f& vert1, const zeVec3f& vert2,
                                zeVec3f& hitPoint, zeVec3f& normal, unsigned int sides) {
  // Copies, so that the outputs may alias the inputs.
  const zeVec3f v0 = vert0, v1 = vert1, v2 = vert2;
  const zeVec3f pos = ray->_pos, dir = ray->_dir;
  const float len = ray->_len;

  zeVec3f n;
  n.cross(v1 - v0, v2 - v0);
  n = n * (1.0f / std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z));
  normal = n;

  const float d = dir.x * n.x + dir.y * n.y + dir.z * n.z;
  // Two-sided tests skip even the parallel test on purpose: a parallel ray
  // divides by zero below, and the infinite or NaN t fails what follows.
  if (sides != zeRay::BOTH_SIDES && culled(d, sides)) return kCulled;

  const float t = -((pos.x - v0.x) * n.x + (pos.y - v0.y) * n.y + (pos.z - v0.z) * n.z) / d;
  // -0 counts as behind; a NaN with a clear sign bit passes.
  if (std::signbit(t) || t > len) return kOutOfReach;

  const zeVec3f hit(pos.x + dir.x * t, pos.y + dir.y * t, pos.z + dir.z * t);
  hitPoint = hit;

  const zeVec3f a = v0 - hit, b = v1 - hit, c = v2 - hit;
  zeVec3f ab, bc, ca;
  ab.cross(a, b);
  bc.cross(b, c);
  ca.cross(c, a);
  // Inside (edges included) when the three signs agree, a zero counting as positive.
  const bool s1 = std::signbit(n.dot(ab));
  const bool s2 = std::signbit(n.dot(bc));
  const bool s3 = std::signbit(n.dot(ca));
  return s1 == s2 && s2 == s3 ? t : kMissed;
}

}  // namespace Math
}  // namespace Lux
