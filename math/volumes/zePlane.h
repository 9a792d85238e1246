#pragma once

#include "math/impl/PlaneDistance.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/volumes/zeVolume.h"
#include "math/zeMathEnums.h"
#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

class zeMatrix44f;
class zeRay;

/// A plane as a volume: the closed half-space on the side opposite its unit
/// normal `_norm`, bounded by the points p with dot(_norm, p) = _offset. The
/// plane itself counts as inside: a point p is inside when 0 >= e(p), with
/// the signed distance e(p) = _norm.x*p.x + _norm.y*p.y + _norm.z*p.z - _offset.
///
/// `_octant` caches the octant of `_norm`; every member that writes `_norm`
/// refreshes it, a direct write to the field leaves it stale. A plane is never
/// empty and has no size.
class ZEMATH_API zePlane : public zeVolume {
  ZE_MATH_DECLARE_CLASS(zePlane)
  ZE_MATH_DECLARE_FIELD_SLOT(_norm)
  ZE_MATH_DECLARE_FIELD_SLOT(_offset)
  ZE_MATH_DECLARE_FIELD_SLOT(_octant)

 public:
  zeVec3f _norm;                   ///< unit normal; (0, 0, 0) by default
  float _offset;                   ///< dot(_norm, p) of the plane's points; 0 by default
  ZE_MATH_SPATIAL_REGION _octant;  ///< octant of _norm, cached; 0 by default

  // --- construction ---------------------------------------------------------

  /// The plane through a, b and c: _norm = the unit normal of triangle
  /// (a, b, c), _offset = dot(_norm, a). A degenerate triangle gives NaN.
  void create(const zeVec3f& a, const zeVec3f& b, const zeVec3f& c);
  /// The plane of normal `normal` (normalised here) at distance `offset`.
  void create(const zeVec3f& normal, float offset);
  /// The plane through `point` with normal `normal` (normalised here).
  void create(const zeVec3f& point, const zeVec3f& normal);
  /// Makes `normal`, normalised, the plane's normal; _offset is kept.
  void setNormal(const zeVec3f& normal);
  /// Makes (x, y, z), normalised, the plane's normal; _offset is kept.
  void setNormal(float x, float y, float z);
  /// The plane (plane.x, plane.y, plane.z) as the normal, taken as it is (a
  /// unit vector, such as those of zeMatrix44f::getFrustumPlanes), and
  /// plane.w as the offset; _octant refreshed.
  void setPlane(const zeVec4f& plane) {
    _norm = zeVec3f(plane.x, plane.y, plane.z);
    _offset = plane.w;
    _octant = _norm.getOctant();
  }

  // --- queries --------------------------------------------------------------

  /// The signed distance of p: positive outside, 0 on the plane.
  float signedDistance(const zeVec3f& p) const { return impl::signedPlaneDistance(_norm, _offset, p); }
  /// The foot of p on the plane: p - _norm * e(p), written to `out`.
  void findClosestPoint(const zeVec3f& p, zeVec3f& out) const;
  /// Where the ray's line meets the plane. False, with `out` untouched, when
  /// the ray runs parallel to the plane; otherwise `out` receives the point
  /// and the result says whether it lies on the ray (t >= 0, and t <= _len
  /// unless _len is negative, which means unbounded).
  bool findIntersectionPoint(const zeRay* ray, zeVec3f& out) const;
  /// Maps the plane through m: a point of it as a point, the normal by the
  /// 3x3 part of m itself (exact for rotations, translations and uniform
  /// scales), then renormalised.
  void transform(const zeMatrix44f& m);

  // --- table routines (the plane is the first operand) ----------------------

  /// Whether any of the box lies inside the plane: its corner farthest against
  /// the normal does. False for an empty box.
  static bool zePlaneIntersectAABox(const zeVolume* plane, const zeVolume* box);
  /// Whether two half-spaces meet: always, unless the normals are opposite and
  /// the offsets sum below 0.
  static bool zePlaneIntersectPlane(const zeVolume* a, const zeVolume* b);
  /// Whether the sphere reaches into the plane. False for an empty sphere.
  static bool zePlaneIntersectSphere(const zeVolume* plane, const zeVolume* sphere);
  /// How much of the box lies inside the plane, judged by its two corners
  /// along the normal.
  static ZE_MATH_CONTAINMENT_RESULTS zePlaneContainsAABox(const zeVolume* plane, const zeVolume* box);
  /// How much of half-space b lies inside half-space a.
  static ZE_MATH_CONTAINMENT_RESULTS zePlaneContainsPlane(const zeVolume* a, const zeVolume* b);
  /// How much of the sphere lies inside the plane.
  static ZE_MATH_CONTAINMENT_RESULTS zePlaneContainsSphere(const zeVolume* plane, const zeVolume* sphere);
  /// Does nothing: a plane is not grown by another plane.
  static void zePlaneExtendByAnyVolume(zeVolume* plane, const zeVolume* other);
  /// Moves the plane outward until every corner of the box is inside.
  static void zePlaneExtendByAABox(zeVolume* plane, const zeVolume* box);
  /// Moves the plane outward until the sphere is inside.
  static void zePlaneExtendBySphere(zeVolume* plane, const zeVolume* sphere);
  /// Whether the ray starts inside the plane or ends inside it.
  static bool zePlaneIntersectRay(const zeVolume* plane, const zeRay* ray);
  /// How much of the ray lies inside the plane, judged by _pos and _pos + _dir.
  static ZE_MATH_CONTAINMENT_RESULTS zePlaneContainsRay(const zeVolume* plane, const zeRay* ray);
  /// Moves the plane outward until both ends of the ray are inside.
  static void zePlaneExtendByRay(zeVolume* plane, const zeRay* ray);
  /// ALL when the point is inside (0 >= e(p)), NONE otherwise.
  static ZE_MATH_CONTAINMENT_RESULTS zePlaneContainsVec(const zeVolume* plane, const zeVec3f& point);
  /// Moves the plane outward along its normal until the point is inside.
  static void zePlaneExtendByVec(zeVolume* plane, const zeVec3f& point);
  /// Calls transform().
  static void zePlaneTransform(zeVolume* plane, const zeMatrix44f& m);
  /// Does nothing: a plane cannot be emptied.
  static void zePlaneEmpty(zeVolume* plane);
  /// False: a plane is never empty.
  static bool zePlaneIsEmpty(const zeVolume* plane);
  /// The point of the plane nearest the origin, _norm * _offset.
  static void zePlaneGetCenter(const zeVolume* plane, zeVec3f& out);

  // --- registration ---------------------------------------------------------

  /// Installs the plane's routines, registering zeAABox and zeSphere first
  /// where their descriptors are not yet registered.
  static void userRegister();
  /// Registration: declares "_norm", "_offset" and "_octant".
  static void bayRegisterInitialize();
  /// Registration: runs userRegister().
  static void bayRegisterUser();

 private:
  /// _norm = v scaled by 1 / |v|, and _octant refreshed.
  void assignNormal(const zeVec3f& v);
};

}  // namespace Math
}  // namespace Lux
