#include "math/volumes/zeVolume.h"

#include "core/BayCore.h"
#include "core/zeResult.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ABSTRACT_CLASS(zeVolume, ::Lux::zeObject, &zeVolume::bayRegisterInitialize,
                                 &zeVolume::bayRegisterUser)

zeIntersectionFunctionList* zeVolume::_intersectionFunctions = nullptr;
zeExtendByFunctionList* zeVolume::_extendByFunctions = nullptr;
zeContainsFunctionList* zeVolume::_containsFunctions = nullptr;
zeRayIntersectionFunctionList* zeVolume::_rayIntersectionFunctions = nullptr;
zeExtendByRayFunctionList* zeVolume::_extendByRayFunctions = nullptr;
zeContainsRayFunctionList* zeVolume::_containsRayFunctions = nullptr;
zeExtendByVecFunctionList* zeVolume::_extendByVecFunctions = nullptr;
zeContainsVecFunctionList* zeVolume::_containsVecFunctions = nullptr;
zeTransformFunctionList* zeVolume::_transformFunctions = nullptr;
zeEmptyFunctionList* zeVolume::_emptyFunctions = nullptr;
zeIsEmptyFunctionList* zeVolume::_isEmptyFunctions = nullptr;
zeGetCenterFunctionList* zeVolume::_getCenterFunctions = nullptr;

// --- defaults -----------------------------------------------------------------

bool zeVolume::zeVolumeIntersectVolume(const zeVolume*, const zeVolume*) { return false; }
bool zeVolume::zeVolumeIntersectRay(const zeVolume*, const zeRay*) { return false; }
ZE_MATH_CONTAINMENT_RESULTS zeVolume::zeVolumeContainsVolume(const zeVolume*, const zeVolume*) {
  return ZE_MATH_CONTAINMENT_RESULTS_NONE;
}
ZE_MATH_CONTAINMENT_RESULTS zeVolume::zeVolumeContainsRay(const zeVolume*, const zeRay*) {
  return ZE_MATH_CONTAINMENT_RESULTS_NONE;
}
ZE_MATH_CONTAINMENT_RESULTS zeVolume::zeVolumeContainsVec(const zeVolume*, const zeVec3f&) {
  return ZE_MATH_CONTAINMENT_RESULTS_NONE;
}
void zeVolume::zeVolumeExtendByVolume(zeVolume*, const zeVolume*) {}
void zeVolume::zeVolumeExtendByRay(zeVolume*, const zeRay*) {}
void zeVolume::zeVolumeExtendByVec(zeVolume*, const zeVec3f&) {}
void zeVolume::zeVolumeTransform(zeVolume*, const zeMatrix44f&) {}
void zeVolume::zeVolumeEmpty(zeVolume*) {}
bool zeVolume::zeVolumeIsEmpty(const zeVolume*) { return true; }
void zeVolume::zeVolumeGetCenter(const zeVolume*, zeVec3f&) {}

// --- registration -------------------------------------------------------------

namespace {

// A new, empty table from the default pool.
template <class L>
L* newTable() {
  return static_cast<L*>(L::_instantiateFromPool(BayCore::getDefaultPool()));
}

template <class L>
void dropTable(L* table) {
  if (table) table->release();
}

// Single-type table: n entries, type m's the default.
template <class L>
void appendEntry(L* table, int n, int m, typename L::Function fallback) {
  if (table && table->resize(n) == kSuccess) table->data()[m] = fallback;
}

// Pair table: n*n entries, the new shells m*m .. n*n - 1 the default; the
// entries of the types before m keep their elements.
template <class L>
void appendShells(L* table, int n, int m, typename L::Function fallback) {
  if (!table || table->resize(n * n) != kSuccess) return;
  for (int i = m * m; i < n * n; ++i) table->data()[i] = fallback;
}

}  // namespace

void zeVolume::bayRegisterInitialize() { _Meta->registerClassDestructor(&_classDestructor); }

void zeVolume::bayRegisterUser() {
  userRegister();
  _Meta->registerClassRegistrationCallback(&registerClass);
}

void zeVolume::_classDestructor() { userUnregister(); }

void zeVolume::userRegister() {
  _rayIntersectionFunctions = newTable<zeRayIntersectionFunctionList>();
  _extendByRayFunctions = newTable<zeExtendByRayFunctionList>();
  _containsRayFunctions = newTable<zeContainsRayFunctionList>();
  _extendByVecFunctions = newTable<zeExtendByVecFunctionList>();
  _containsVecFunctions = newTable<zeContainsVecFunctionList>();
  _emptyFunctions = newTable<zeEmptyFunctionList>();
  _isEmptyFunctions = newTable<zeIsEmptyFunctionList>();
  _transformFunctions = newTable<zeTransformFunctionList>();
  _getCenterFunctions = newTable<zeGetCenterFunctionList>();
  _intersectionFunctions = newTable<zeIntersectionFunctionList>();
  _extendByFunctions = newTable<zeExtendByFunctionList>();
  _containsFunctions = newTable<zeContainsFunctionList>();
}

void zeVolume::userUnregister() {
  dropTable(_intersectionFunctions);
  dropTable(_extendByFunctions);
  dropTable(_containsFunctions);
  dropTable(_rayIntersectionFunctions);
  dropTable(_extendByRayFunctions);
  dropTable(_containsRayFunctions);
  dropTable(_extendByVecFunctions);
  dropTable(_containsVecFunctions);
  dropTable(_transformFunctions);
  dropTable(_emptyFunctions);
  dropTable(_isEmptyFunctions);
  dropTable(_getCenterFunctions);
}

void zeVolume::registerClass(zeMetaObject* meta) {
  zeMetaObject* volume = _Meta;
  if (!meta || !volume || meta == volume || !meta->isOfType(volume) || !_emptyFunctions) return;
  // Type indices go by registration order: the class just registered is the
  // first child without entries.
  const unsigned int n = static_cast<unsigned int>(volume->getChildCount());
  const unsigned int m = static_cast<unsigned int>(_emptyFunctions->getCount());
  if (n <= m) return;
  volume->getChild(static_cast<int>(m))->setOwnerSlot(m);

  const int count = static_cast<int>(n), type = static_cast<int>(m);
  appendEntry(_rayIntersectionFunctions, count, type, &zeVolumeIntersectRay);
  appendEntry(_extendByRayFunctions, count, type, &zeVolumeExtendByRay);
  appendEntry(_containsRayFunctions, count, type, &zeVolumeContainsRay);
  appendEntry(_extendByVecFunctions, count, type, &zeVolumeExtendByVec);
  appendEntry(_containsVecFunctions, count, type, &zeVolumeContainsVec);
  appendEntry(_transformFunctions, count, type, &zeVolumeTransform);
  appendEntry(_emptyFunctions, count, type, &zeVolumeEmpty);
  appendEntry(_isEmptyFunctions, count, type, &zeVolumeIsEmpty);
  appendEntry(_getCenterFunctions, count, type, &zeVolumeGetCenter);
  appendShells(_intersectionFunctions, count, type, &zeVolumeIntersectVolume);
  appendShells(_extendByFunctions, count, type, &zeVolumeExtendByVolume);
  appendShells(_containsFunctions, count, type, &zeVolumeContainsVolume);
}

zeSmartPointer<zeVolumeList> zeVolume::getRegisteredVolumesCopy(zeMemoryPool* pool) {
  // Registering the list registers zeVolume along.
  auto list = zeSmartPointer<zeVolumeList>::adopt(static_cast<zeVolumeList*>(zeVolumeList::_instantiateFromPool(pool)));
  zeMetaObject* volume = getClassMetaSafe();
  if (!list || !volume) return list;
  const int n = volume->getChildCount();
  if (list->setCount(n) != kSuccess) return list;
  for (int i = 0; i < n; ++i) {
    // The list adds its own reference; the creation reference goes with `instance`.
    zeSmartPointer<zeObject> instance = volume->getChild(i)->createInstanceRef(pool);
    list->set(i, static_cast<zeVolume*>(instance.get()));
  }
  return list;
}

}  // namespace Math
}  // namespace Lux
