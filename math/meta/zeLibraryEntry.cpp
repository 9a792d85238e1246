#include "math/meta/zeLibraryEntry.h"

#include "math/ZEMath.h"

namespace Lux {

namespace {

using RegisterFunction = void (*)();

// The order in which libZEMath_bayRegister registers the classes. Scene files
// and engines that inspect type indices rely on it: the sphere registers the
// box for its box routines, and the box the plane, so the volume type indices
// come out sphere 0, box 1, plane 2.
const RegisterFunction kLibraryRegistrationOrder[] = {
    &Math::zeVolumeList::bayRegister,
    &Math::zeVolume::bayRegister,
    &Math::zeVectorMorphing::bayRegister,
    &Math::zeVectorBlending::bayRegister,
    &Math::zeVec4ucMetaField::bayRegister,
    &Math::zeVec4ucArrayMetaField::bayRegister,
    &Math::zeVec4fMetaField::bayRegister,
    &Math::zeVec4fArrayMetaField::bayRegister,
    &Math::zeVec4dMetaField::bayRegister,
    &Math::zeVec4dArrayMetaField::bayRegister,
    &Math::zeVec3ucMetaField::bayRegister,
    &Math::zeVec3ucArrayMetaField::bayRegister,
    &Math::zeVec3fMetaField::bayRegister,
    &Math::zeVec3fArrayMetaField::bayRegister,
    &Math::zeVec3dMetaField::bayRegister,
    &Math::zeVec3dArrayMetaField::bayRegister,
    &Math::zeVec2fMetaField::bayRegister,
    &Math::zeVec2fArrayMetaField::bayRegister,
    &Math::zeVec2dMetaField::bayRegister,
    &Math::zeVec2dArrayMetaField::bayRegister,
    &Math::zeSphere::bayRegister,
    &Math::zeRay::bayRegister,
    &Math::zeRayList::bayRegister,
    &Math::zePlane::bayRegister,
    &Math::zeMatrix44fMetaField::bayRegister,
    &Math::zeMatrix44fArrayMetaField::bayRegister,
    &Math::zeMatrix44dMetaField::bayRegister,
    &Math::zeMatrix44dArrayMetaField::bayRegister,
    &Math::zeVec2fList::bayRegister,
    &Math::zeVec2fListList::bayRegister,
    &Math::zeVec3fList::bayRegister,
    &Math::zeVec3ucList::bayRegister,
    &Math::zeVec3fListList::bayRegister,
    &Math::zeVec4fList::bayRegister,
    &Math::zeVec4fListList::bayRegister,
    &Math::zeVec4ucList::bayRegister,
    &Math::zeQuaternionfList::bayRegister,
    &Math::zeQuaternionfListList::bayRegister,
    &Math::zeMatrix44fList::bayRegister,
    &Math::zeMatrix44fListList::bayRegister,
    &Math::zeIntersectionFunctionList::bayRegister,
    &Math::zeExtendByFunctionList::bayRegister,
    &Math::zeContainsFunctionList::bayRegister,
    &Math::zeRayIntersectionFunctionList::bayRegister,
    &Math::zeExtendByRayFunctionList::bayRegister,
    &Math::zeContainsRayFunctionList::bayRegister,
    &Math::zeExtendByVecFunctionList::bayRegister,
    &Math::zeContainsVecFunctionList::bayRegister,
    &Math::zeTransformFunctionList::bayRegister,
    &Math::zeEmptyFunctionList::bayRegister,
    &Math::zeIsEmptyFunctionList::bayRegister,
    &Math::zeGetCenterFunctionList::bayRegister,
    &Math::zeIntersect::bayRegister,
    &Math::zeAABox::bayRegister,
    &Math::zeAABoxList::bayRegister,
    &Math::zeNonRefCountedAABoxList::bayRegister,
};

const RegisterFunction kSceneFileRegistrationOrder[] = {
    &Math::zeVolume::bayRegister, &Math::zePlane::bayRegister, &Math::zeAABox::bayRegister,
    &Math::zeSphere::bayRegister, &Math::zeRay::bayRegister,
};

template <std::size_t N>
void registerInOrder(const RegisterFunction (&order)[N]) {
  for (RegisterFunction registerClass : order) registerClass();
}

}  // namespace

void libZEMath_bayRegister() { registerInOrder(kLibraryRegistrationOrder); }

namespace Math {

void zeBayRegisterForZEBFiles() { registerInOrder(kSceneFileRegistrationOrder); }

const char* const zeMemoryTrackingGroup = "Math";
const unsigned int zeMemoryTrackingTargetFlags = 64;

}  // namespace Math
}  // namespace Lux

extern "C" void createLibraryObject(Lux::zeSmartPointer<Lux::zeLibrary>& result) {
  Lux::zeLibrary* library = static_cast<Lux::zeLibrary*>(Lux::zeLibrary::_instantiateFromPool(nullptr));
  if (!library) return;
  library->setRegisterFunction(&Lux::libZEMath_bayRegister);
  result = library;    // adds the reference result keeps and releases what it held
  library->release();  // drops the creation reference
}
