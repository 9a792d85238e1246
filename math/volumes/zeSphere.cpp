#include "math/volumes/zeSphere.h"

#include <cmath>
#include <cstddef>

#include "core/zeFloatMetaField.h"
#include "core/zeResult.h"
#include "math/meta/zeVec3fMetaField.h"
#include "math/volumes/zeAABox.h"
#include "math/volumes/zePlane.h"
#include "math/volumes/zeRay.h"
#include "math/zeMathThreshold.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

ZE_DEFINE_FIELD_SLOT(zeSphere, _center)
ZE_DEFINE_FIELD_SLOT(zeSphere, _radius)
ZE_MATH_IMPLEMENT_CLASS(zeSphere, zeVolume, &zeSphere::bayRegisterInitialize, &zeSphere::bayRegisterUser)

namespace {

const zeSphere* asSphere(const zeVolume* v) { return static_cast<const zeSphere*>(v); }
zeSphere* asSphere(zeVolume* v) { return static_cast<zeSphere*>(v); }
const zeAABox* asBox(const zeVolume* v) { return static_cast<const zeAABox*>(v); }
const zePlane* asPlane(const zeVolume* v) { return static_cast<const zePlane*>(v); }

// |a - b|^2: the squared component differences summed in x, y, z order.
float squaredDistance(const zeVec3f& a, const zeVec3f& b) {
  const float dx = a.x - b.x, dy = a.y - b.y, dz = a.z - b.z;
  return dx * dx + dy * dy + dz * dz;
}

ZE_MATH_CONTAINMENT_RESULTS partialIf(bool condition) {
  return condition ? ZE_MATH_CONTAINMENT_RESULTS_PARTIAL : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

}  // namespace

// --- registration -------------------------------------------------------------

void zeSphere::bayRegisterInitialize() {
  const int first = _Meta->getMetaFieldCount();
  zeMetaObject::FieldInstantiateFunction make[] = {&zeVec3fMetaField::_instantiateFromPool,
                                                   &zeFloatMetaField::_instantiateFromPool};
  if (_Meta->instantiateAndAppendFields(make, 2) != kSuccess) return;
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first))->setDefault(zeVec3f(0.0f, 0.0f, 0.0f));
  // A new sphere is empty.
  static_cast<zeFloatMetaField*>(_Meta->getIndexedMetaField(first + 1))->setDefault(-1.0f);
  static const char* const names[] = {"_center", "_radius"};
  zeMetaField** slots[] = {&k_center, &k_radius};
  int offsets[] = {static_cast<int>(offsetof(zeSphere, _center)), static_cast<int>(offsetof(zeSphere, _radius))};
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

void zeSphere::bayRegisterUser() { userRegister(); }

void zeSphere::userRegister() {
  const zeMetaObject* sphere = _Meta;
  // getClassMetaSafe() registers a partner whose descriptor is missing or not
  // yet marked registered, so that it has its type index. A partner whose
  // registration failed gets no pairs.
  const zeMetaObject* box = zeAABox::getClassMetaSafe();
  if (box) setIntersectionFunction(sphere, box, &zeSphereIntersectAABox);
  const zeMetaObject* plane = zePlane::getClassMetaSafe();
  if (plane) setIntersectionFunction(sphere, plane, &zeSphereIntersectPlane);
  setIntersectionFunction(sphere, sphere, &zeSphereIntersectSphere);

  if (box) setContainsFunction(sphere, box, &zeSphereContainsAABox);
  if (plane) setContainsFunction(sphere, plane, &zeSphereContainsPlane);
  setContainsFunction(sphere, sphere, &zeSphereContainsSphere);

  // (sphere, plane) stays at the default: extending a sphere by a plane does nothing.
  if (box) setExtendByFunction(sphere, box, &zeSphereExtendByAABox);
  setExtendByFunction(sphere, sphere, &zeSphereExtendBySphere);

  setRayIntersectionFunction(sphere, &zeSphereIntersectRay);
  setContainsRayFunction(sphere, &zeSphereContainsRay);
  setExtendByRayFunction(sphere, &zeSphereExtendByRay);
  setContainsVecFunction(sphere, &zeSphereContainsVec);
  setExtendByVecFunction(sphere, &zeSphereExtendByVec);
  setTransformFunction(sphere, &zeSphereTransform);
  setEmptyFunction(sphere, &zeSphereEmpty);
  setIsEmptyFunction(sphere, &zeSphereIsEmpty);
  setGetCenterFunction(sphere, &zeSphereGetCenter);
}

// --- transform ----------------------------------------------------------------

void zeSphere::transform(const zeMatrix44f& m) {
  if (_radius < 0.0f) return;
  // The radius grows by the longest of the three axis images.
  const float s0 = m(0, 0) * m(0, 0) + m(0, 1) * m(0, 1) + m(0, 2) * m(0, 2);
  const float s1 = m(1, 0) * m(1, 0) + m(1, 1) * m(1, 1) + m(1, 2) * m(1, 2);
  const float s2 = m(2, 0) * m(2, 0) + m(2, 1) * m(2, 1) + m(2, 2) * m(2, 2);
  float largest = s0;
  if (s1 > largest) largest = s1;
  if (s2 > largest) largest = s2;
  _radius = _radius * std::sqrt(largest);
  _center.transformPoint(_center, m);
}

// --- intersection -------------------------------------------------------------

bool zeSphere::zeSphereIntersectAABox(const zeVolume* sphere, const zeVolume* box) {
  // The very test the box runs against a sphere; only the operands swap.
  return zeAABox::zeAABoxIntersectSphere(box, sphere);
}

bool zeSphere::zeSphereIntersectPlane(const zeVolume* sphere, const zeVolume* plane) {
  const zeSphere* s = asSphere(sphere);
  const zePlane* p = asPlane(plane);
  const float r = s->_radius;
  if (r < 0.0f) return false;
  // The sphere reaches into the plane's inside half-space.
  return p->_offset + r - s->_center.dot(p->_norm) >= 0.0f;
}

bool zeSphere::zeSphereIntersectSphere(const zeVolume* a, const zeVolume* b) {
  const float ra = asSphere(a)->_radius, rb = asSphere(b)->_radius;
  if (ra < 0.0f) return false;
  if (0.0f > rb) return false;
  const float sum = ra + rb;
  return sum * sum >= squaredDistance(asSphere(a)->_center, asSphere(b)->_center);
}

// --- containment --------------------------------------------------------------

ZE_MATH_CONTAINMENT_RESULTS zeSphere::zeSphereContainsAABox(const zeVolume* sphere, const zeVolume* box) {
  const zeSphere* s = asSphere(sphere);
  const zeAABox* b = asBox(box);
  const float r = s->_radius;
  if (r < 0.0f) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // The box's emptiness is not tested.
  float nearest[3], farthest[3];
  for (int i = 0; i < 3; ++i) {
    const float toMin = s->_center[i] - b->_min[i], toMax = s->_center[i] - b->_max[i];
    const float dMin = toMin * toMin, dMax = toMax * toMax;
    farthest[i] = dMin > dMax ? dMin : dMax;
    nearest[i] = dMin < dMax ? dMin : dMax;
  }
  const float r2 = r * r;
  const float far = farthest[0] + farthest[1] + farthest[2];
  if (r2 >= far) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  // The nearest corner, not the nearest point of the box, on purpose: a small
  // sphere deep inside a large box reports NONE.
  const float near = nearest[0] + nearest[1] + nearest[2];
  return partialIf(near <= r2);
}

ZE_MATH_CONTAINMENT_RESULTS zeSphere::zeSphereContainsPlane(const zeVolume* sphere, const zeVolume* plane) {
  if (0.0f > asSphere(sphere)->_radius) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // A sphere never holds a whole plane: at most the plane meets it.
  return partialIf(plane->intersect(sphere));
}

ZE_MATH_CONTAINMENT_RESULTS zeSphere::zeSphereContainsSphere(const zeVolume* a, const zeVolume* b) {
  const float ra = asSphere(a)->_radius, rb = asSphere(b)->_radius;
  if (ra < 0.0f) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // b's emptiness is not tested.
  const float d2 = squaredDistance(asSphere(a)->_center, asSphere(b)->_center);
  const float sum = ra + rb;
  if (ra >= rb) {
    const float difference = ra - rb;
    if (difference * difference >= d2) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  }
  return partialIf(sum * sum >= d2);
}

// --- extension ----------------------------------------------------------------

void zeSphere::zeSphereExtendByAABox(zeVolume* sphere, const zeVolume* box) {
  zeSphere* s = asSphere(sphere);
  const zeAABox* b = asBox(box);
  if (b->_min.x > b->_max.x) return;
  if (s->_radius < 0.0f) {
    // The box's own bounding sphere: its middle, out to the _max corner.
    for (int i = 0; i < 3; ++i) s->_center[i] = b->_min[i] * 0.5f + b->_max[i] * 0.5f;
    s->_radius = std::sqrt(squaredDistance(s->_center, b->_max));
    return;
  }
  // Corner after corner in getCorners order, through the sphere's own
  // extend-by-point entry; the result depends on that order.
  zeVec3f corners[8];
  b->getCorners(corners);
  s->extendBy(corners, 8);
}

void zeSphere::zeSphereExtendBySphere(zeVolume* a, const zeVolume* b) {
  zeSphere* s = asSphere(a);
  const zeSphere* t = asSphere(b);
  const float ra = s->_radius, rb = t->_radius;
  if (rb < 0.0f) return;
  if (ra < 0.0f) {
    s->_center = t->_center;
    s->_radius = rb;
    return;
  }
  const zeVec3f d = s->_center - t->_center;
  const float x = d.x * d.x + d.y * d.y + d.z * d.z;
  if (x <= zeSmallThreshold<float>) {
    // Concentric: the larger radius, b's on a tie.
    s->_radius = rb < ra ? ra : rb;
    return;
  }
  const float difference = ra - rb;
  if (difference * difference > x) {
    // One sphere lies inside the other.
    if (rb > ra) {
      s->_center = t->_center;
      s->_radius = rb;
    }
    return;
  }
  // Span the two far points: a's away from b and b's away from a.
  const float len = std::sqrt(x);
  const zeVec3f u = d * (1.0f / len);
  const zeVec3f farA = s->_center + u * ra;
  const zeVec3f farB = t->_center - u * rb;
  s->_center = farA * 0.5f + farB * 0.5f;
  s->_radius = ((ra + len) + rb) * 0.5f;
}

// --- rays, points and the single-type entries ---------------------------------

bool zeSphere::zeSphereIntersectRay(const zeVolume* sphere, const zeRay* ray) {
  const zeSphere* s = asSphere(sphere);
  const float r = s->_radius;
  if (0.0f > r) return false;
  // _dir is taken to be of unit length.
  const zeVec3f l = s->_center - ray->_pos;
  const float b = ray->_dir.dot(l);
  const float disc = r * r + b * b - l.x * l.x - l.y * l.y - l.z * l.z;
  if (0.0f > disc) return false;
  const float root = std::sqrt(disc);
  const float t1 = b - root;
  if (t1 >= 0.0f && ray->_len >= t1) return true;
  // A ray starting inside meets the sphere only if it reaches the far side,
  // on purpose.
  const float t2 = b + root;
  if (!(t2 >= 0.0f)) return false;
  return ray->_len >= t2;
}

ZE_MATH_CONTAINMENT_RESULTS zeSphere::zeSphereContainsRay(const zeVolume* sphere, const zeRay* ray) {
  if (0.0f > asSphere(sphere)->_radius) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const bool start = sphere->contains(ray->_pos) != ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const bool end = sphere->contains(ray->_pos + ray->_dir * ray->_len) != ZE_MATH_CONTAINMENT_RESULTS_NONE;
  if (start && end) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  if (!start && !end) return partialIf(sphere->intersect(ray));
  return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
}

void zeSphere::zeSphereExtendByRay(zeVolume* sphere, const zeRay* ray) {
  sphere->extendBy(ray->_pos);
  sphere->extendBy(ray->_pos + ray->_dir * ray->_len);
}

ZE_MATH_CONTAINMENT_RESULTS zeSphere::zeSphereContainsVec(const zeVolume* sphere, const zeVec3f& point) {
  const zeSphere* s = asSphere(sphere);
  const float r = s->_radius;
  if (r < 0.0f) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  return r * r >= squaredDistance(s->_center, point) ? ZE_MATH_CONTAINMENT_RESULTS_ALL
                                                     : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

void zeSphere::zeSphereExtendByVec(zeVolume* sphere, const zeVec3f& point) {
  zeSphere* s = asSphere(sphere);
  const float r = s->_radius;
  if (r < 0.0f) {
    s->_center = point;
    s->_radius = 0.0f;
    return;
  }
  const zeVec3f d = s->_center - point;
  const float x = d.x * d.x + d.y * d.y + d.z * d.z;
  if (r * r >= x) return;
  // Span from the point to the sphere's point farthest from it.
  const float len = std::sqrt(x);
  const float k = r / len;
  const zeVec3f far = s->_center + d * k;
  s->_center = far * 0.5f + point * 0.5f;
  s->_radius = (len + r) * 0.5f;
}

void zeSphere::zeSphereTransform(zeVolume* sphere, const zeMatrix44f& m) { asSphere(sphere)->transform(m); }

void zeSphere::zeSphereEmpty(zeVolume* sphere) { asSphere(sphere)->_radius = -1.0f; }

bool zeSphere::zeSphereIsEmpty(const zeVolume* sphere) { return 0.0f > asSphere(sphere)->_radius; }

void zeSphere::zeSphereGetCenter(const zeVolume* sphere, zeVec3f& out) { out = asSphere(sphere)->_center; }

}  // namespace Math
}  // namespace Lux
