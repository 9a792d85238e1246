#include "math/volumes/zePlane.h"

#include <cmath>
#include <cstddef>

#include "core/zeEnumMetaField.h"
#include "core/zeFloatMetaField.h"
#include "core/zeResult.h"
#include "math/meta/zeMathMetaEnums.h"
#include "math/meta/zeVec3fMetaField.h"
#include "math/volumes/zeAABox.h"
#include "math/volumes/zeRay.h"
#include "math/volumes/zeSphere.h"
#include "math/zeMathThreshold.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

ZE_DEFINE_FIELD_SLOT(zePlane, _norm)
ZE_DEFINE_FIELD_SLOT(zePlane, _offset)
ZE_DEFINE_FIELD_SLOT(zePlane, _octant)
ZE_MATH_IMPLEMENT_CLASS(zePlane, zeVolume, &zePlane::bayRegisterInitialize, &zePlane::bayRegisterUser)

namespace {

const zePlane& asPlane(const zeVolume* volume) { return *static_cast<const zePlane*>(volume); }
zePlane& asPlane(zeVolume* volume) { return *static_cast<zePlane*>(volume); }
const zeAABox& asBox(const zeVolume* volume) { return *static_cast<const zeAABox*>(volume); }
const zeSphere& asSphere(const zeVolume* volume) { return *static_cast<const zeSphere*>(volume); }

// The octant whose three sign bits are the complement of `octant`'s: there
// lies the box corner farthest against a normal of octant `octant`.
ZE_MATH_SPATIAL_REGION oppositeOctant(int octant) { return static_cast<ZE_MATH_SPATIAL_REGION>(~octant & 7); }

// The single-axis emptiness test every volume routine shares.
bool isEmptyBox(const zeAABox& box) { return box._min.x > box._max.x; }

ZE_MATH_CONTAINMENT_RESULTS containmentOf(bool inside) {
  return inside ? ZE_MATH_CONTAINMENT_RESULTS_ALL : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

}  // namespace

// --- registration -------------------------------------------------------------

void zePlane::bayRegisterInitialize() {
  const int first = _Meta->getMetaFieldCount();
  zeMetaObject::FieldInstantiateFunction make[] = {&zeVec3fMetaField::_instantiateFromPool,
                                                   &zeFloatMetaField::_instantiateFromPool,
                                                   &zeEnumMetaField::_instantiateFromPool};
  if (_Meta->instantiateAndAppendFields(make, 3) != kSuccess) return;
  // All three keep their field types' own zero defaults.
  static_cast<zeEnumMetaField*>(_Meta->getIndexedMetaField(first + 2))
      ->setMetaEnum(getZE_MATH_SPATIAL_REGIONMetaEnum());
  static const char* const names[] = {"_norm", "_offset", "_octant"};
  zeMetaField** slots[] = {&k_norm, &k_offset, &k_octant};
  int offsets[] = {static_cast<int>(offsetof(zePlane, _norm)), static_cast<int>(offsetof(zePlane, _offset)),
                   static_cast<int>(offsetof(zePlane, _octant))};
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

void zePlane::bayRegisterUser() { userRegister(); }

void zePlane::userRegister() {
  zeMetaObject* plane = _Meta;
  // A partner class is registered just before the first entry that pairs
  // with it, so that it has its type index (it may be registering already,
  // when it is the class that registered the plane).
  zeMetaObject* box = zeAABox::getClassMetaSafe();
  setIntersectionFunction(plane, box, &zePlaneIntersectAABox);
  setIntersectionFunction(plane, plane, &zePlaneIntersectPlane);
  zeMetaObject* sphere = zeSphere::getClassMetaSafe();
  setIntersectionFunction(plane, sphere, &zePlaneIntersectSphere);
  setContainsFunction(plane, box, &zePlaneContainsAABox);
  setContainsFunction(plane, plane, &zePlaneContainsPlane);
  setContainsFunction(plane, sphere, &zePlaneContainsSphere);
  setExtendByFunction(plane, plane, &zePlaneExtendByAnyVolume);
  setExtendByFunction(plane, box, &zePlaneExtendByAABox);
  setExtendByFunction(plane, sphere, &zePlaneExtendBySphere);
  setRayIntersectionFunction(plane, &zePlaneIntersectRay);
  setContainsRayFunction(plane, &zePlaneContainsRay);
  setExtendByRayFunction(plane, &zePlaneExtendByRay);
  setContainsVecFunction(plane, &zePlaneContainsVec);
  setExtendByVecFunction(plane, &zePlaneExtendByVec);
  setTransformFunction(plane, &zePlaneTransform);
  setEmptyFunction(plane, &zePlaneEmpty);
  setIsEmptyFunction(plane, &zePlaneIsEmpty);
  setGetCenterFunction(plane, &zePlaneGetCenter);
}

// --- construction -------------------------------------------------------------

void zePlane::assignNormal(const zeVec3f& v) {
  const float scale = 1.0f / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  _norm = zeVec3f(v.x * scale, v.y * scale, v.z * scale);
  _octant = _norm.getOctant();
}

void zePlane::create(const zeVec3f& a, const zeVec3f& b, const zeVec3f& c) {
  const zeVec3f point = a;  // a may be _norm itself
  _norm.makeNormal(a, b, c);
  _offset = _norm.dot(point);
  _octant = _norm.getOctant();
}

void zePlane::create(const zeVec3f& normal, float offset) {
  assignNormal(normal);
  _offset = offset;
}

void zePlane::create(const zeVec3f& point, const zeVec3f& normal) {
  const zeVec3f p = point;  // point may be _norm itself
  assignNormal(normal);
  _offset = _norm.dot(p);
}

void zePlane::setNormal(const zeVec3f& normal) { assignNormal(normal); }

void zePlane::setNormal(float x, float y, float z) { assignNormal(zeVec3f(x, y, z)); }

// --- queries ------------------------------------------------------------------

void zePlane::findClosestPoint(const zeVec3f& p, zeVec3f& out) const {
  const float k = -signedDistance(p);
  out = p + _norm * k;
}

bool zePlane::findIntersectionPoint(const zeRay* ray, zeVec3f& out) const {
  const float denom = _norm.dot(ray->_dir);
  if (std::fabs(denom) < zeSmallThreshold<float>) return false;  // parallel: out untouched
  const float t = -signedDistance(ray->_pos) / denom;
  out = ray->_pos + ray->_dir * t;
  if (t < 0.0f) return false;
  if (ray->_len >= 0.0f) return t <= ray->_len;
  return true;  // a negative length means an unbounded ray
}

void zePlane::transform(const zeMatrix44f& m) {
  // The normal goes through m itself rather than its inverse transpose:
  // exact for rotations, translations and uniform scales, which is what
  // planes of bounding volumes meet.
  zeVec3f q = _norm * _offset;
  zeVec3f n;
  n.transformVector(_norm, m);
  q.transformPoint(q, m);
  const float scale = 1.0f / std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
  _norm = zeVec3f(n.x * scale, n.y * scale, n.z * scale);
  _offset = _norm.dot(q);
  _octant = _norm.getOctant();
}

// --- intersection ---------------------------------------------------------------

bool zePlane::zePlaneIntersectAABox(const zeVolume* plane, const zeVolume* box) {
  const zeAABox& b = asBox(box);
  if (isEmptyBox(b)) return false;
  zeVec3f corner;
  b.getCorner(oppositeOctant(asPlane(plane)._octant), corner);
  return zePlaneContainsVec(plane, corner) == ZE_MATH_CONTAINMENT_RESULTS_ALL;
}

bool zePlane::zePlaneIntersectPlane(const zeVolume* a, const zeVolume* b) {
  const zePlane& p = asPlane(a);
  const zePlane& q = asPlane(b);
  const zeVec3f s = p._norm + q._norm;
  const float sum = s.x * s.x + s.y * s.y + s.z * s.z;
  // Normals that are not opposite always let the half-spaces meet.
  if (sum >= zeSmallThreshold<float> || std::isnan(sum)) return true;
  return p._offset + q._offset >= 0.0f;
}

bool zePlane::zePlaneIntersectSphere(const zeVolume* plane, const zeVolume* sphere) {
  const zeSphere& s = asSphere(sphere);
  if (s._radius < 0.0f) return false;
  return s._radius >= asPlane(plane).signedDistance(s._center);
}

// --- containment ----------------------------------------------------------------

ZE_MATH_CONTAINMENT_RESULTS zePlane::zePlaneContainsAABox(const zeVolume* plane, const zeVolume* box) {
  const zeAABox& b = asBox(box);
  if (isEmptyBox(b)) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  // An octant outside 1 to 7 counts as 0: _max is tested first, then _min.
  const int cached = asPlane(plane)._octant;
  const int octant = cached >= 1 && cached <= 7 ? cached : 0;
  zeVec3f corner;
  b.getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(octant), corner);  // farthest along the normal
  if (zePlaneContainsVec(plane, corner) != ZE_MATH_CONTAINMENT_RESULTS_NONE) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  b.getCorner(oppositeOctant(octant), corner);  // farthest against it
  if (zePlaneContainsVec(plane, corner) != ZE_MATH_CONTAINMENT_RESULTS_NONE) {
    return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  }
  return ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

ZE_MATH_CONTAINMENT_RESULTS zePlane::zePlaneContainsPlane(const zeVolume* a, const zeVolume* b) {
  const zePlane& p = asPlane(a);
  const zePlane& q = asPlane(b);
  const float d = p._norm.dot(q._norm);
  if (std::fabs(d - 1.0f) < zeSmallThreshold<float>) {
    // Same direction. The comparison is the reverse of what the inside
    // convention of zePlaneContainsVec would give; it is kept that way.
    return q._offset > p._offset ? ZE_MATH_CONTAINMENT_RESULTS_ALL : ZE_MATH_CONTAINMENT_RESULTS_NONE;
  }
  if (std::fabs(d + 1.0f) < zeSmallThreshold<float>) {
    // Opposite directions: decided by one point of b.
    const zeVec3f onB = q._norm * q._offset;
    return zePlaneContainsVec(a, onB) == ZE_MATH_CONTAINMENT_RESULTS_NONE ? ZE_MATH_CONTAINMENT_RESULTS_NONE
                                                                          : ZE_MATH_CONTAINMENT_RESULTS_ALL;
  }
  return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
}

ZE_MATH_CONTAINMENT_RESULTS zePlane::zePlaneContainsSphere(const zeVolume* plane, const zeVolume* sphere) {
  const zeSphere& s = asSphere(sphere);
  const float r = s._radius;
  if (r < 0.0f) return ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const float e = asPlane(plane).signedDistance(s._center);
  if (-r >= e) return ZE_MATH_CONTAINMENT_RESULTS_ALL;
  if (r >= e) return ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  return ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

// --- extension ------------------------------------------------------------------

void zePlane::zePlaneExtendByAnyVolume(zeVolume*, const zeVolume*) {}

void zePlane::zePlaneExtendByAABox(zeVolume* plane, const zeVolume* box) {
  const zeAABox& b = asBox(box);
  if (isEmptyBox(b)) return;
  zeVec3f corners[8];
  b.getCorners(corners);
  plane->extendBy(corners, 8);  // through the table, corner by corner
}

void zePlane::zePlaneExtendBySphere(zeVolume* plane, const zeVolume* sphere) {
  const zeSphere& s = asSphere(sphere);
  const float r = s._radius;
  if (r < 0.0f) return;
  // The sphere's point farthest along the normal.
  const zeVec3f& n = asPlane(plane)._norm;
  zePlaneExtendByVec(plane, zeVec3f(n.x * r + s._center.x, n.y * r + s._center.y, n.z * r + s._center.z));
}

// --- rays, points and the single-type entries -----------------------------------

bool zePlane::zePlaneIntersectRay(const zeVolume* plane, const zeRay* ray) {
  const zePlane& p = asPlane(plane);
  const float e0 = p.signedDistance(ray->_pos);
  if (e0 <= 0.0f) return true;  // starts inside
  return 0.0f >= p._norm.dot(ray->_dir) * ray->_len + e0;
}

ZE_MATH_CONTAINMENT_RESULTS zePlane::zePlaneContainsRay(const zeVolume* plane, const zeRay* ray) {
  // The end point is _pos + _dir, without _len, on purpose.
  const bool startInside = zePlaneContainsVec(plane, ray->_pos) != ZE_MATH_CONTAINMENT_RESULTS_NONE;
  const bool endInside = zePlaneContainsVec(plane, ray->_pos + ray->_dir) != ZE_MATH_CONTAINMENT_RESULTS_NONE;
  if (startInside) return endInside ? ZE_MATH_CONTAINMENT_RESULTS_ALL : ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
  return endInside ? ZE_MATH_CONTAINMENT_RESULTS_PARTIAL : ZE_MATH_CONTAINMENT_RESULTS_NONE;
}

void zePlane::zePlaneExtendByRay(zeVolume* plane, const zeRay* ray) {
  zePlaneExtendByVec(plane, ray->_pos);
  zePlaneExtendByVec(plane, ray->_pos + ray->_dir * ray->_len);
}

ZE_MATH_CONTAINMENT_RESULTS zePlane::zePlaneContainsVec(const zeVolume* plane, const zeVec3f& point) {
  return containmentOf(0.0f >= asPlane(plane).signedDistance(point));
}

void zePlane::zePlaneExtendByVec(zeVolume* plane, const zeVec3f& point) {
  zePlane& p = asPlane(plane);
  const float t = point.x * p._norm.x + point.y * p._norm.y + point.z * p._norm.z;
  if (t > p._offset) p._offset = t;  // outward along the normal; the normal stays
}

void zePlane::zePlaneTransform(zeVolume* plane, const zeMatrix44f& m) { asPlane(plane).transform(m); }

void zePlane::zePlaneEmpty(zeVolume*) {}

bool zePlane::zePlaneIsEmpty(const zeVolume*) { return false; }

void zePlane::zePlaneGetCenter(const zeVolume* plane, zeVec3f& out) {
  const zePlane& p = asPlane(plane);
  out = p._norm * p._offset;
}

}  // namespace Math
}  // namespace Lux
