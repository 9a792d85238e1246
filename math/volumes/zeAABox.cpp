#include "math/volumes/zeAABox.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>

#include "core/zeResult.h"
#include "math/meta/zeVec3fMetaField.h"
#include "math/volumes/zePlane.h"
#include "math/volumes/zeRay.h"
#include "math/volumes/zeSphere.h"
#include "math/zeMathThreshold.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

ZE_DEFINE_FIELD_SLOT(zeAABox, _min)
ZE_DEFINE_FIELD_SLOT(zeAABox, _max)
ZE_MATH_IMPLEMENT_CLASS(zeAABox, zeVolume, &zeAABox::bayRegisterInitialize, &zeAABox::bayRegisterUser)

namespace {

const zeVec3f kEmptyMin(FLT_MAX, FLT_MAX, FLT_MAX);
const zeVec3f kEmptyMax(-FLT_MAX, -FLT_MAX, -FLT_MAX);

const zeAABox& boxOf(const zeVolume* volume) { return *static_cast<const zeAABox*>(volume); }
zeAABox& boxOf(zeVolume* volume) { return *static_cast<zeAABox*>(volume); }

// Emptiness is read from the x axis alone, on purpose: a box whose y or z
// range is inverted still counts as holding something.
bool hasNoExtent(const zeAABox& box) { return box._min.x > box._max.x; }

}  // namespace

// --- members ------------------------------------------------------------------

void zeAABox::getCorner(ZE_MATH_SPATIAL_REGION region, zeVec3f& out) const {
  const unsigned int octant = static_cast<unsigned int>(region);
  if (octant > 7u) return;
  // An axis marked N (its bit set) takes the lowest value.
  out.x = (octant & 4u) ? _min.x : _max.x;
  out.y = (octant & 2u) ? _min.y : _max.y;
  out.z = (octant & 1u) ? _min.z : _max.z;
}

void zeAABox::getCorners(zeVec3f* out) const {
  // Here a set bit takes the highest value: corner i is getCorner(~i & 7).
  for (unsigned int i = 0; i < 8u; ++i) {
    out[i].x = (i & 4u) ? _max.x : _min.x;
    out[i].y = (i & 2u) ? _max.y : _min.y;
    out[i].z = (i & 1u) ? _max.z : _min.z;
  }
}

void zeAABox::transform(const zeMatrix44f& m) {
  if (hasNoExtent(*this)) return;
  zeVec3f lo, hi;
  for (int j = 0; j < 3; ++j) {
    lo[j] = m(3, j);
    hi[j] = m(3, j);
    for (int i = 0; i < 3; ++i) {
      const float a = m(i, j) * _min[i];
      const float b = m(i, j) * _max[i];
      hi[j] += std::max(a, b);
      lo[j] += std::min(a, b);
    }
  }
  _min = lo;
  _max = hi;
  // Only m[3][3] serves as w; a w of at most the small threshold (or NaN)
  // leaves the bounds undivided.
  const float w = m(3, 3);
  if (w == 1.0f) return;
  if (w > zeSmallThreshold<float>) {
    const float inverse = 1.0f / w;
    _min = _min * inverse;
    _max = _max * inverse;
  }
}

// --- intersection -------------------------------------------------------------

bool zeAABox::zeAABoxIntersectAABox(const zeVolume* box, const zeVolume* other) {
  // No emptiness test: an empty box fails by its values.
  const zeAABox& a = boxOf(box);
  const zeAABox& b = boxOf(other);
  for (int i = 0; i < 3; ++i) {
    if (!(a._max[i] >= b._min[i] && b._max[i] >= a._min[i])) return false;
  }
  return true;
}

bool zeAABox::zeAABoxIntersectPlane(const zeVolume* box, const zeVolume* plane) {
  const zeAABox& b = boxOf(box);
  if (hasNoExtent(b)) return false;
  const zePlane& p = *static_cast<const zePlane*>(plane);
  // The corner farthest against the normal: the complement of its octant.
  zeVec3f corner;
  b.getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(~static_cast<unsigned int>(p._octant) & 7u), corner);
  return zePlane::zePlaneContainsVec(plane, corner) == ZE_MATH_CONTAINMENT_RESULTS_ALL;
}

bool zeAABox::zeAABoxIntersectSphere(const zeVolume* box, const zeVolume* sphere) {
  const zeAABox& b = boxOf(box);
  if (hasNoExtent(b)) return false;
  const zeSphere& s = *static_cast<const zeSphere*>(sphere);
  if (s._radius < 0.0f) return false;
  // Squared distance from the centre to the box, axis by axis.
  float d = 0.0f;
  for (int i = 0; i < 3; ++i) {
    if (s._center[i] < b._min[i]) {
      const float below = s._center[i] - b._min[i];
      d = d + below * below;
    } else if (s._center[i] > b._max[i]) {
      const float above = s._center[i] - b._max[i];
      d = d + above * above;
    }
  }
  return s._radius * s._radius >= d;
}

// --- containment --------------------------------------------------------------

ZE_MATH_CONTAINMENT_RESULTS zeAABox::zeAABoxContainsAABox(const zeVolume* box, const zeVolume* other) {
  const zeAABox& a = boxOf(box);
  const zeAABox& b = boxOf(other);
  if (hasNoExtent(a) || hasNoExtent(b)) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // Through the tables: whatever (box, box) intersection is installed decides.
  if (!a.intersect(&b)) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  for (int i = 0; i < 3; ++i) {
    if (!(b._min[i] >= a._min[i] && a._max[i] >= b._max[i])) return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  }
  return ZE_MATH_CONTAINMENT_RESULTS_ALL;
}

ZE_MATH_CONTAINMENT_RESULTS zeAABox::zeAABoxContainsPlane(const zeVolume* box, const zeVolume* plane) {
  if (hasNoExtent(boxOf(box))) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // A plane reaches beyond any box: PARTIAL at most.
  return zePlane::zePlaneIntersectAABox(plane, box) ? ZE_MATH_CONTAINMENT_RESULTS_PARTIAL
                                                    : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

ZE_MATH_CONTAINMENT_RESULTS zeAABox::zeAABoxContainsSphere(const zeVolume* box, const zeVolume* sphere) {
  if (!zeAABoxIntersectSphere(box, sphere)) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const zeAABox& b = boxOf(box);
  const zeSphere& s = *static_cast<const zeSphere*>(sphere);
  const float r2 = s._radius * s._radius;
  // Only the distances to the six face planes are asked, not whether the
  // centre lies inside: a sphere touching a face from outside can be ALL.
  const float faces[6] = {s._center.x - b._min.x, s._center.y - b._min.y, s._center.z - b._min.z,
                          s._center.x - b._max.x, s._center.y - b._max.y, s._center.z - b._max.z};
  for (float f : faces) {
    if (r2 > f * f) return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  }
  return ZE_MATH_CONTAINMENT_RESULTS_ALL;
}

// --- extension ----------------------------------------------------------------

void zeAABox::zeAABoxExtendByAABox(zeVolume* box, const zeVolume* other) {
  // An empty other box changes nothing by its values alone.
  zeAABox& a = boxOf(box);
  const zeAABox& b = boxOf(other);
  for (int i = 0; i < 3; ++i) {
    if (a._min[i] > b._min[i]) a._min[i] = b._min[i];
    if (b._max[i] > a._max[i]) a._max[i] = b._max[i];
  }
}

void zeAABox::zeAABoxExtendBySphere(zeVolume* box, const zeVolume* sphere) {
  const zeSphere& s = *static_cast<const zeSphere*>(sphere);
  if (s._radius < 0.0f) return;
  zeAABox& b = boxOf(box);
  for (int i = 0; i < 3; ++i) {
    const float lo = s._center[i] - s._radius;
    const float hi = s._center[i] + s._radius;
    if (b._min[i] > lo) b._min[i] = lo;
    if (hi > b._max[i]) b._max[i] = hi;
  }
}

// --- rays and points ----------------------------------------------------------

bool zeAABox::zeAABoxIntersectRay(const zeVolume* box, const zeRay* ray) {
  // A ray starting inside meets the box whatever its length, 0 included.
  if (zeAABoxContainsVec(box, ray->_pos) == ZE_MATH_CONTAINMENT_RESULTS_ALL) return true;
  const zeAABox& b = boxOf(box);
  float tNear = -FLT_MAX;
  float tFar = FLT_MAX;
  for (int i = 0; i < 3; ++i) {
    const float pos = ray->_pos[i];
    const float dir = ray->_dir[i];
    if (zeSmallThreshold < float >> std::fabs(dir)) {
      // Parallel to this pair of slabs: it must run between them.
      if (pos > b._max[i] || b._min[i] > pos) return false;
      continue;
    }
    float t1 = (b._min[i] - pos) / dir;
    float t2 = (b._max[i] - pos) / dir;
    if (t1 > t2) std::swap(t1, t2);
    tNear = std::max(t1, tNear);
    tFar = std::min(t2, tFar);
    if (tNear > tFar) return false;
    if (0.0f > tFar) return false;
  }
  return ray->_len >= std::fabs(tNear);
}

ZE_MATH_CONTAINMENT_RESULTS zeAABox::zeAABoxContainsRay(const zeVolume* box, const zeRay* ray) {
  if (hasNoExtent(boxOf(box))) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const zeVec3f end(ray->_dir.x * ray->_len + ray->_pos.x, ray->_dir.y * ray->_len + ray->_pos.y,
                    ray->_dir.z * ray->_len + ray->_pos.z);
  const bool startInside = zeAABoxContainsVec(box, ray->_pos) == ZE_MATH_CONTAINMENT_RESULTS_ALL;
  const bool endInside = zeAABoxContainsVec(box, end) == ZE_MATH_CONTAINMENT_RESULTS_ALL;
  if (startInside && endInside) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  if (startInside || endInside) return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  // Both ends outside: PARTIAL when the ray crosses the box on the way.
  return zeAABoxIntersectRay(box, ray) ? ZE_MATH_CONTAINMENT_RESULTS_PARTIAL : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

void zeAABox::zeAABoxExtendByRay(zeVolume* box, const zeRay* ray) {
  zeAABoxExtendByVec(box, ray->_pos);
  zeAABoxExtendByVec(box, ray->_pos + ray->_dir * ray->_len);
}

ZE_MATH_CONTAINMENT_RESULTS zeAABox::zeAABoxContainsVec(const zeVolume* box, const zeVec3f& point) {
  // The faces count as inside; there is no partial answer for a point.
  const zeAABox& b = boxOf(box);
  for (int i = 0; i < 3; ++i) {
    if (!(point[i] >= b._min[i] && b._max[i] >= point[i])) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  }
  return ZE_MATH_CONTAINMENT_RESULTS_ALL;
}

void zeAABox::zeAABoxExtendByVec(zeVolume* box, const zeVec3f& point) {
  zeAABox& b = boxOf(box);
  for (int i = 0; i < 3; ++i) {
    if (b._min[i] > point[i]) b._min[i] = point[i];
    if (point[i] > b._max[i]) b._max[i] = point[i];
  }
}

// --- single-type entries ------------------------------------------------------

void zeAABox::zeAABoxTransform(zeVolume* box, const zeMatrix44f& m) { boxOf(box).transform(m); }

void zeAABox::zeAABoxEmpty(zeVolume* box) {
  boxOf(box)._min = kEmptyMin;
  boxOf(box)._max = kEmptyMax;
}

bool zeAABox::zeAABoxIsEmpty(const zeVolume* box) { return hasNoExtent(boxOf(box)); }

void zeAABox::zeAABoxGetCenter(const zeVolume* box, zeVec3f& out) {
  // Each half is taken before the sum, so huge bounds do not overflow.
  const zeAABox& b = boxOf(box);
  out.x = b._min.x * 0.5f + b._max.x * 0.5f;
  out.y = b._min.y * 0.5f + b._max.y * 0.5f;
  out.z = b._min.z * 0.5f + b._max.z * 0.5f;
}

// --- registration -------------------------------------------------------------

void zeAABox::bayRegisterInitialize() {
  const int first = _Meta->getMetaFieldCount();
  zeMetaObject::FieldInstantiateFunction make[] = {&zeVec3fMetaField::_instantiateFromPool,
                                                   &zeVec3fMetaField::_instantiateFromPool};
  if (_Meta->instantiateAndAppendFields(make, 2) != kSuccess) return;
  // The defaults are the empty box.
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first))->setDefault(kEmptyMin);
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first + 1))->setDefault(kEmptyMax);
  static const char* const names[] = {"_min", "_max"};
  zeMetaField** slots[] = {&k_min, &k_max};
  int offsets[] = {static_cast<int>(offsetof(zeAABox, _min)), static_cast<int>(offsetof(zeAABox, _max))};
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

void zeAABox::bayRegisterUser() { userRegister(); }

void zeAABox::userRegister() {
  const zeMetaObject* box = _Meta;
  if (!box) return;
  // A partner registers here when it has no descriptor yet or is still under
  // way, so that it holds a type index before its pair entries are written.
  setIntersectionFunction(box, box, &zeAABoxIntersectAABox);
  const zeMetaObject* plane = zePlane::getClassMetaSafe();
  if (plane) setIntersectionFunction(box, plane, &zeAABoxIntersectPlane);
  const zeMetaObject* sphere = zeSphere::getClassMetaSafe();
  if (sphere) setIntersectionFunction(box, sphere, &zeAABoxIntersectSphere);
  setContainsFunction(box, box, &zeAABoxContainsAABox);
  if (plane) setContainsFunction(box, plane, &zeAABoxContainsPlane);
  if (sphere) setContainsFunction(box, sphere, &zeAABoxContainsSphere);
  setExtendByFunction(box, box, &zeAABoxExtendByAABox);
  // (box, plane) stays at the default on purpose: a plane adds nothing to a box.
  if (sphere) setExtendByFunction(box, sphere, &zeAABoxExtendBySphere);
  setRayIntersectionFunction(box, &zeAABoxIntersectRay);
  setContainsRayFunction(box, &zeAABoxContainsRay);
  setExtendByRayFunction(box, &zeAABoxExtendByRay);
  setContainsVecFunction(box, &zeAABoxContainsVec);
  setExtendByVecFunction(box, &zeAABoxExtendByVec);
  setTransformFunction(box, &zeAABoxTransform);
  setEmptyFunction(box, &zeAABoxEmpty);
  setIsEmptyFunction(box, &zeAABoxIsEmpty);
  setGetCenterFunction(box, &zeAABoxGetCenter);
}

}  // namespace Math
}  // namespace Lux
