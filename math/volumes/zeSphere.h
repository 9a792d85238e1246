#pragma once

#include "math/meta/zeMathClassRegistration.h"
#include "math/volumes/zeVolume.h"
#include "math/zeMathEnums.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

class zeMatrix44f;
class zeRay;

/// Bounding sphere: centre `_center`, radius `_radius`. A negative radius
/// means empty (a new sphere is empty); radius 0 is the single point
/// `_center`; a NaN radius counts as not empty.
///
/// The routines below are installed in zeVolume's tables by userRegister(),
/// the sphere being the first operand. Several of them dispatch back through
/// zeVolume, so they use whatever routine is installed for the sphere type at
/// the time. Extending a sphere by a plane is left at the default (no change).
class ZEMATH_API zeSphere : public zeVolume {
  ZE_MATH_DECLARE_CLASS(zeSphere)
  ZE_MATH_DECLARE_FIELD_SLOT(_center)
  ZE_MATH_DECLARE_FIELD_SLOT(_radius)

 public:
  zeVec3f _center;  ///< centre; (0, 0, 0) by default
  float _radius;    ///< radius; -1 (empty) by default

  /// Scales the radius by the largest length of the first three rows' 3x3
  /// parts, then maps the centre through m as a point. An empty sphere is
  /// left as it is.
  void transform(const zeMatrix44f& m);

  // --- intersection -------------------------------------------------------

  /// Whether the sphere reaches the box: squared distance from the centre to
  /// the box at most r*r. False for an empty box or sphere.
  static bool zeSphereIntersectAABox(const zeVolume* sphere, const zeVolume* box);
  /// Whether the sphere reaches into the plane's inside half-space.
  static bool zeSphereIntersectPlane(const zeVolume* sphere, const zeVolume* plane);
  /// Whether the spheres overlap or touch; false when either is empty.
  static bool zeSphereIntersectSphere(const zeVolume* a, const zeVolume* b);

  // --- containment --------------------------------------------------------

  /// ALL when the farthest corner of the box is inside, PARTIAL when the
  /// nearest corner is, NONE otherwise.
  static ZE_MATH_CONTAINMENT_RESULTS zeSphereContainsAABox(const zeVolume* sphere, const zeVolume* box);
  /// PARTIAL when the plane meets the sphere, NONE otherwise; never ALL.
  static ZE_MATH_CONTAINMENT_RESULTS zeSphereContainsPlane(const zeVolume* sphere, const zeVolume* plane);
  /// How much of sphere b lies inside sphere a.
  static ZE_MATH_CONTAINMENT_RESULTS zeSphereContainsSphere(const zeVolume* a, const zeVolume* b);

  // --- extension ----------------------------------------------------------

  /// Grows the sphere to enclose the box: an empty sphere takes the box's
  /// bounding sphere, otherwise the corners are added one after another.
  static void zeSphereExtendByAABox(zeVolume* sphere, const zeVolume* box);
  /// Grows sphere a to enclose sphere b.
  static void zeSphereExtendBySphere(zeVolume* a, const zeVolume* b);

  // --- rays, points and the single-type entries ---------------------------

  /// Whether the ray reaches the sphere's surface within its length.
  static bool zeSphereIntersectRay(const zeVolume* sphere, const zeRay* ray);
  /// How much of the ray's segment lies inside the sphere.
  static ZE_MATH_CONTAINMENT_RESULTS zeSphereContainsRay(const zeVolume* sphere, const zeRay* ray);
  /// Grows the sphere to enclose the ray's start and end points.
  static void zeSphereExtendByRay(zeVolume* sphere, const zeRay* ray);
  /// ALL when the point lies inside or on the sphere, NONE otherwise.
  static ZE_MATH_CONTAINMENT_RESULTS zeSphereContainsVec(const zeVolume* sphere, const zeVec3f& point);
  /// Grows the sphere to enclose the point.
  static void zeSphereExtendByVec(zeVolume* sphere, const zeVec3f& point);
  /// Calls transform(m).
  static void zeSphereTransform(zeVolume* sphere, const zeMatrix44f& m);
  /// Radius -1; the centre is kept.
  static void zeSphereEmpty(zeVolume* sphere);
  /// Whether the radius is negative.
  static bool zeSphereIsEmpty(const zeVolume* sphere);
  /// Writes the centre to `out`.
  static void zeSphereGetCenter(const zeVolume* sphere, zeVec3f& out);

  // --- registration -------------------------------------------------------

  /// Installs the routines above in zeVolume's tables, registering zeAABox and
  /// zePlane first where a pair with them is installed.
  static void userRegister();
  /// Registration: declares "_center" and "_radius".
  static void bayRegisterInitialize();
  /// Registration: calls userRegister().
  static void bayRegisterUser();
};

}  // namespace Math
}  // namespace Lux
