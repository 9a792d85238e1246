#pragma once

#include "core/zeMetaObject.h"
#include "core/zeObject.h"
#include "core/zeSmartPointer.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/volumes/zeContainsFunctionList.h"
#include "math/volumes/zeContainsRayFunctionList.h"
#include "math/volumes/zeContainsVecFunctionList.h"
#include "math/volumes/zeEmptyFunctionList.h"
#include "math/volumes/zeExtendByFunctionList.h"
#include "math/volumes/zeExtendByRayFunctionList.h"
#include "math/volumes/zeExtendByVecFunctionList.h"
#include "math/volumes/zeGetCenterFunctionList.h"
#include "math/volumes/zeIntersectionFunctionList.h"
#include "math/volumes/zeIsEmptyFunctionList.h"
#include "math/volumes/zeRayIntersectionFunctionList.h"
#include "math/volumes/zeTransformFunctionList.h"
#include "math/zeMathEnums.h"
#include "math/zeVec3f.h"

namespace Lux {

class zeMemoryPool;

namespace Math {

class zeMatrix44f;
class zeRay;
class zeVolumeList;

/// Abstract base of the bounding volumes; holds no data of its own.
///
/// Every operation runs through one of twelve dispatch tables indexed by the
/// volume type index of the operands' classes, so each type, and each ordered
/// pair of types, has its own routine. A class derived (directly or not) from
/// zeVolume receives the next type index when it registers, and default
/// entries in every table; its user registration step then installs its own
/// routines with the setters below. Type indices live in the owner slot of
/// the class descriptor, read from the class an object itself belongs to, so
/// entries are never inherited from a parent class.
///
/// Single-type tables hold the entry of type a at element a. Pair tables hold
/// the entry of (a, b) at element getPairIndex(a, b): all pairs whose larger
/// index is m fill the square shell m*m .. m*m + 2m, so a new type appends a
/// shell and nothing moves.
///
/// Dispatch checks nothing: a volume whose class has no type index is the
/// caller's error.
class ZEMATH_API zeVolume : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeVolume)

 public:
  // --- dispatching operations ---------------------------------------------

  /// Whether this volume intersects `other`: entry (this, other).
  bool intersect(const zeVolume* other) const { return pairEntry(_intersectionFunctions, this, other)(this, other); }
  /// Whether the ray meets this volume.
  bool intersect(const zeRay* ray) const { return entry(_rayIntersectionFunctions, this)(this, ray); }
  /// How much of `other` lies inside this volume: entry (this, other).
  ZE_MATH_CONTAINMENT_RESULTS contains(const zeVolume* other) const {
    return pairEntry(_containsFunctions, this, other)(this, other);
  }
  /// How much of the ray lies inside this volume.
  ZE_MATH_CONTAINMENT_RESULTS contains(const zeRay* ray) const { return entry(_containsRayFunctions, this)(this, ray); }
  /// Whether the point lies inside this volume.
  ZE_MATH_CONTAINMENT_RESULTS contains(const zeVec3f& point) const {
    return entry(_containsVecFunctions, this)(this, point);
  }
  /// Grows this volume to enclose `other`: entry (this, other).
  void extendBy(const zeVolume* other) { pairEntry(_extendByFunctions, this, other)(this, other); }
  /// Grows this volume to enclose the ray.
  void extendBy(const zeRay* ray) { entry(_extendByRayFunctions, this)(this, ray); }
  /// Grows this volume to enclose the point.
  void extendBy(const zeVec3f& point) { entry(_extendByVecFunctions, this)(this, point); }
  /// Grows this volume to enclose points[0] to points[count - 1], in that
  /// order, through one lookup of the extend-by-point entry; a count below 1
  /// does nothing.
  void extendBy(const zeVec3f* points, int count) {
    const zeExtendByVecFunction extend = entry(_extendByVecFunctions, this);
    for (int i = 0; i < count; ++i) extend(this, points[i]);
  }
  /// Transforms this volume by m.
  void transform(const zeMatrix44f& m) { entry(_transformFunctions, this)(this, m); }
  /// Makes this volume enclose nothing.
  void empty() { entry(_emptyFunctions, this)(this); }
  /// Whether this volume encloses nothing.
  bool isEmpty() const { return entry(_isEmptyFunctions, this)(this); }
  /// Writes the centre of this volume to `out`.
  void getCenter(zeVec3f& out) const { entry(_getCenterFunctions, this)(this, out); }

  // --- numbering ----------------------------------------------------------

  /// The volume type index of class `meta`.
  static unsigned int getTypeIndex(const zeMetaObject* meta) { return meta->getOwnerSlot(); }
  /// The pair-table element of first operand type a and second operand type
  /// b: a*a + b when a >= b, (b + 2)*b - a otherwise.
  static unsigned int getPairIndex(unsigned int a, unsigned int b) { return a >= b ? a * a + b : (b + 2) * b - a; }

  // --- table access by class (no bounds check) ----------------------------

  /// Entry (a, b) of the intersection table.
  static zeIntersectionFunction getIntersectionFunction(const zeMetaObject* a, const zeMetaObject* b) {
    return pairSlot(_intersectionFunctions, a, b);
  }
  /// Entry (a, b) of the extend-by table.
  static zeExtendByFunction getExtendByFunction(const zeMetaObject* a, const zeMetaObject* b) {
    return pairSlot(_extendByFunctions, a, b);
  }
  /// Entry (a, b) of the contains table.
  static zeContainsFunction getContainsFunction(const zeMetaObject* a, const zeMetaObject* b) {
    return pairSlot(_containsFunctions, a, b);
  }
  /// Entry of `meta` in the ray intersection table.
  static zeRayIntersectionFunction getRayIntersectionFunction(const zeMetaObject* meta) {
    return slot(_rayIntersectionFunctions, meta);
  }
  /// Entry of `meta` in the ray containment table.
  static zeContainsRayFunction getContainsRayFunction(const zeMetaObject* meta) {
    return slot(_containsRayFunctions, meta);
  }
  /// Entry of `meta` in the extend-by-ray table.
  static zeExtendByRayFunction getExtendByRayFunction(const zeMetaObject* meta) {
    return slot(_extendByRayFunctions, meta);
  }
  /// Entry of `meta` in the point containment table.
  static zeContainsVecFunction getContainsVecFunction(const zeMetaObject* meta) {
    return slot(_containsVecFunctions, meta);
  }
  /// Entry of `meta` in the extend-by-point table.
  static zeExtendByVecFunction getExtendByVecFunction(const zeMetaObject* meta) {
    return slot(_extendByVecFunctions, meta);
  }
  /// Entry of `meta` in the transform table.
  static zeTransformFunction getTransformFunction(const zeMetaObject* meta) { return slot(_transformFunctions, meta); }
  /// Entry of `meta` in the empty table.
  static zeEmptyFunction getEmptyFunction(const zeMetaObject* meta) { return slot(_emptyFunctions, meta); }
  /// Entry of `meta` in the is-empty table.
  static zeIsEmptyFunction getIsEmptyFunction(const zeMetaObject* meta) { return slot(_isEmptyFunctions, meta); }
  /// Entry of `meta` in the get-centre table.
  static zeGetCenterFunction getGetCenterFunction(const zeMetaObject* meta) { return slot(_getCenterFunctions, meta); }

  /// Installs `fn` as entry (a, b) of the intersection table.
  static void setIntersectionFunction(const zeMetaObject* a, const zeMetaObject* b, zeIntersectionFunction fn) {
    pairSlot(_intersectionFunctions, a, b) = fn;
  }
  /// Installs `fn` as entry (a, b) of the extend-by table.
  static void setExtendByFunction(const zeMetaObject* a, const zeMetaObject* b, zeExtendByFunction fn) {
    pairSlot(_extendByFunctions, a, b) = fn;
  }
  /// Installs `fn` as entry (a, b) of the contains table.
  static void setContainsFunction(const zeMetaObject* a, const zeMetaObject* b, zeContainsFunction fn) {
    pairSlot(_containsFunctions, a, b) = fn;
  }
  /// Installs `fn` as the ray intersection entry of `meta`.
  static void setRayIntersectionFunction(const zeMetaObject* meta, zeRayIntersectionFunction fn) {
    slot(_rayIntersectionFunctions, meta) = fn;
  }
  /// Installs `fn` as the ray containment entry of `meta`.
  static void setContainsRayFunction(const zeMetaObject* meta, zeContainsRayFunction fn) {
    slot(_containsRayFunctions, meta) = fn;
  }
  /// Installs `fn` as the extend-by-ray entry of `meta`.
  static void setExtendByRayFunction(const zeMetaObject* meta, zeExtendByRayFunction fn) {
    slot(_extendByRayFunctions, meta) = fn;
  }
  /// Installs `fn` as the point containment entry of `meta`.
  static void setContainsVecFunction(const zeMetaObject* meta, zeContainsVecFunction fn) {
    slot(_containsVecFunctions, meta) = fn;
  }
  /// Installs `fn` as the extend-by-point entry of `meta`.
  static void setExtendByVecFunction(const zeMetaObject* meta, zeExtendByVecFunction fn) {
    slot(_extendByVecFunctions, meta) = fn;
  }
  /// Installs `fn` as the transform entry of `meta`.
  static void setTransformFunction(const zeMetaObject* meta, zeTransformFunction fn) {
    slot(_transformFunctions, meta) = fn;
  }
  /// Installs `fn` as the empty entry of `meta`.
  static void setEmptyFunction(const zeMetaObject* meta, zeEmptyFunction fn) { slot(_emptyFunctions, meta) = fn; }
  /// Installs `fn` as the is-empty entry of `meta`.
  static void setIsEmptyFunction(const zeMetaObject* meta, zeIsEmptyFunction fn) { slot(_isEmptyFunctions, meta) = fn; }
  /// Installs `fn` as the get-centre entry of `meta`.
  static void setGetCenterFunction(const zeMetaObject* meta, zeGetCenterFunction fn) {
    slot(_getCenterFunctions, meta) = fn;
  }

  // --- defaults, the entries of a type until its class installs its own ----

  /// Intersects nothing: false.
  static bool zeVolumeIntersectVolume(const zeVolume* a, const zeVolume* b);
  /// Meets no ray: false.
  static bool zeVolumeIntersectRay(const zeVolume* volume, const zeRay* ray);
  /// Contains nothing of the other volume: ZE_MATH_CONTAINMENT_RESULTS_NONE.
  static ZE_MATH_CONTAINMENT_RESULTS zeVolumeContainsVolume(const zeVolume* a, const zeVolume* b);
  /// Contains nothing of the ray: ZE_MATH_CONTAINMENT_RESULTS_NONE.
  static ZE_MATH_CONTAINMENT_RESULTS zeVolumeContainsRay(const zeVolume* volume, const zeRay* ray);
  /// Contains no point: ZE_MATH_CONTAINMENT_RESULTS_NONE.
  static ZE_MATH_CONTAINMENT_RESULTS zeVolumeContainsVec(const zeVolume* volume, const zeVec3f& point);
  /// Does nothing.
  static void zeVolumeExtendByVolume(zeVolume* a, const zeVolume* b);
  /// Does nothing.
  static void zeVolumeExtendByRay(zeVolume* volume, const zeRay* ray);
  /// Does nothing.
  static void zeVolumeExtendByVec(zeVolume* volume, const zeVec3f& point);
  /// Does nothing.
  static void zeVolumeTransform(zeVolume* volume, const zeMatrix44f& m);
  /// Does nothing.
  static void zeVolumeEmpty(zeVolume* volume);
  /// Always empty: true.
  static bool zeVolumeIsEmpty(const zeVolume* volume);
  /// Leaves `out` as it was.
  static void zeVolumeGetCenter(const zeVolume* volume, zeVec3f& out);

  // --- the tables ---------------------------------------------------------

  /// Made by userRegister() from the default pool, dropped by userUnregister().
  static zeIntersectionFunctionList* _intersectionFunctions;
  static zeExtendByFunctionList* _extendByFunctions;                ///< The extend-by table.
  static zeContainsFunctionList* _containsFunctions;                ///< The contains table.
  static zeRayIntersectionFunctionList* _rayIntersectionFunctions;  ///< The ray intersection table.
  static zeExtendByRayFunctionList* _extendByRayFunctions;          ///< The extend-by-ray table.
  static zeContainsRayFunctionList* _containsRayFunctions;          ///< The ray containment table.
  static zeExtendByVecFunctionList* _extendByVecFunctions;          ///< The extend-by-point table.
  static zeContainsVecFunctionList* _containsVecFunctions;          ///< The point containment table.
  static zeTransformFunctionList* _transformFunctions;              ///< The transform table.
  static zeEmptyFunctionList* _emptyFunctions;                      ///< The empty table.
  static zeIsEmptyFunctionList* _isEmptyFunctions;                  ///< The is-empty table.
  static zeGetCenterFunctionList* _getCenterFunctions;              ///< The get-centre table.

  // --- registration -------------------------------------------------------

  /// A new list from `pool` holding a new instance (from `pool`) of every
  /// class derived from zeVolume, in type-index order; null elements for
  /// classes of which no instance can be made.
  static zeSmartPointer<zeVolumeList> getRegisteredVolumesCopy(zeMemoryPool* pool);

  /// The class-registration callback: gives a newly registered volume class
  /// the next type index and the default entry in every table (single tables
  /// grow by one element, pair tables by one square shell). Does nothing for
  /// other classes, for zeVolume itself and for a class that has its entries.
  static void registerClass(zeMetaObject* meta);
  /// Makes the twelve tables, empty.
  static void userRegister();
  /// Drops the twelve tables. The statics keep their (then stale) values.
  static void userUnregister();
  /// Registration: installs _classDestructor.
  static void bayRegisterInitialize();
  /// Registration: userRegister(), then registerClass() as the callback.
  static void bayRegisterUser();
  /// Runs userUnregister() when the class is unregistered.
  static void _classDestructor();

 private:
  /// The entry of `meta` in single-type table `table`.
  template <class L>
  static typename L::Function& slot(L* table, const zeMetaObject* meta) {
    return table->data()[getTypeIndex(meta)];
  }
  /// Entry (a, b) of pair table `table`.
  template <class L>
  static typename L::Function& pairSlot(L* table, const zeMetaObject* a, const zeMetaObject* b) {
    return table->data()[getPairIndex(getTypeIndex(a), getTypeIndex(b))];
  }
  /// The entry of `volume`'s class in single-type table `table`.
  template <class L>
  static typename L::Function entry(const L* table, const zeVolume* volume) {
    return table->data()[getTypeIndex(volume->getMetaObject())];
  }
  /// Entry (a, b) of pair table `table` for the classes of a and b.
  template <class L>
  static typename L::Function pairEntry(const L* table, const zeVolume* a, const zeVolume* b) {
    return table->data()[getPairIndex(getTypeIndex(a->getMetaObject()), getTypeIndex(b->getMetaObject()))];
  }
};

}  // namespace Math
}  // namespace Lux

// The list type getRegisteredVolumesCopy() returns; it needs zeVolume complete.
#include "math/volumes/zeVolumeList.h"
