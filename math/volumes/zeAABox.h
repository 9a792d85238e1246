#pragma once

#include "math/meta/zeMathClassRegistration.h"
#include "math/volumes/zeVolume.h"
#include "math/zeMathEnums.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

class zeMatrix44f;
class zeRay;

/// The axis-aligned bounding box volume, from `_min` to `_max`.
///
/// A box is empty when `_min.x > _max.x`: emptiness is decided on the x axis
/// alone, on purpose, by every routine that checks for it. The empty
/// representation (`_min` all FLT_MAX, `_max` all -FLT_MAX) is also the
/// default, so extending a new box by anything gives exactly that thing's
/// bounds.
///
/// The static routines below are what the box installs in the dispatch
/// tables, the box always the first operand.
class ZEMATH_API zeAABox : public zeVolume {
  ZE_MATH_DECLARE_CLASS(zeAABox)
  ZE_MATH_DECLARE_FIELD_SLOT(_min)
  ZE_MATH_DECLARE_FIELD_SLOT(_max)

 public:
  zeVec3f _min;  ///< lowest corner; (FLT_MAX, FLT_MAX, FLT_MAX) by default
  zeVec3f _max;  ///< highest corner; (-FLT_MAX, -FLT_MAX, -FLT_MAX) by default

  /// The corner in octant `region`: `_max` on each axis marked P, `_min` on
  /// each axis marked N. A value outside 0 to 7 leaves `out` untouched.
  void getCorner(ZE_MATH_SPATIAL_REGION region, zeVec3f& out) const;
  /// The eight corners: corner i takes x from `_max` when bit 2 of i is set,
  /// y when bit 1 is, z when bit 0 is (not the octant order of getCorner).
  void getCorners(zeVec3f* out) const;
  /// Bounds of the box mapped by m (row vectors, translation in row 3),
  /// divided by m[3][3] when that is neither 1 nor at most the small
  /// threshold. An empty box is left as it is.
  void transform(const zeMatrix44f& m);

  // --- intersection -------------------------------------------------------

  /// Whether the boxes overlap on all three axes; touching faces count.
  static bool zeAABoxIntersectAABox(const zeVolume* box, const zeVolume* other);
  /// Whether the plane's inside holds the box corner farthest against its normal.
  static bool zeAABoxIntersectPlane(const zeVolume* box, const zeVolume* plane);
  /// Whether the sphere's squared distance to the box is at most its squared radius.
  static bool zeAABoxIntersectSphere(const zeVolume* box, const zeVolume* sphere);

  // --- containment --------------------------------------------------------

  /// How much of the other box lies inside this one.
  static ZE_MATH_CONTAINMENT_RESULTS zeAABoxContainsAABox(const zeVolume* box, const zeVolume* other);
  /// NONE or PARTIAL: a box never holds a whole plane.
  static ZE_MATH_CONTAINMENT_RESULTS zeAABoxContainsPlane(const zeVolume* box, const zeVolume* plane);
  /// How much of the sphere lies inside the box, judged by its face distances.
  static ZE_MATH_CONTAINMENT_RESULTS zeAABoxContainsSphere(const zeVolume* box, const zeVolume* sphere);

  // --- extension ----------------------------------------------------------

  /// Grows the box to enclose the other box.
  static void zeAABoxExtendByAABox(zeVolume* box, const zeVolume* other);
  /// Grows the box to enclose the sphere's bounds; an empty sphere adds nothing.
  static void zeAABoxExtendBySphere(zeVolume* box, const zeVolume* sphere);

  // --- rays, points and the single-type entries ---------------------------

  /// Whether the ray starts inside the box or reaches it within `_len`.
  static bool zeAABoxIntersectRay(const zeVolume* box, const zeRay* ray);
  /// ALL when both ends lie inside, PARTIAL when one does or the ray crosses the box.
  static ZE_MATH_CONTAINMENT_RESULTS zeAABoxContainsRay(const zeVolume* box, const zeRay* ray);
  /// Grows the box to enclose both ends of the ray.
  static void zeAABoxExtendByRay(zeVolume* box, const zeRay* ray);
  /// ALL when the point lies inside or on a face, NONE otherwise.
  static ZE_MATH_CONTAINMENT_RESULTS zeAABoxContainsVec(const zeVolume* box, const zeVec3f& point);
  /// Grows the box to enclose the point.
  static void zeAABoxExtendByVec(zeVolume* box, const zeVec3f& point);
  /// Runs transform(m) on the box.
  static void zeAABoxTransform(zeVolume* box, const zeMatrix44f& m);
  /// Sets the empty representation.
  static void zeAABoxEmpty(zeVolume* box);
  /// Whether `_min.x > _max.x`.
  static bool zeAABoxIsEmpty(const zeVolume* box);
  /// The middle of the box, each half taken before the sum.
  static void zeAABoxGetCenter(const zeVolume* box, zeVec3f& out);

  // --- registration -------------------------------------------------------

  /// Registration: declares "_min" and "_max" with their empty defaults.
  static void bayRegisterInitialize();
  /// Registration: installs the routines above, registering zePlane and
  /// zeSphere first where they lack a type index.
  static void bayRegisterUser();
  /// Installs the box's routines in the dispatch tables, in table order.
  static void userRegister();
};

}  // namespace Math
}  // namespace Lux
