// The library's entry: loading through the core, registering every class in
// its order, the scene-file registration, and the exported constants.

#include <cstring>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using LibraryEntry = zetest::CoreTest;

unsigned int typeIndexOf(const char* name) {
  const zeMetaObject* meta = zeMetaObject::find(name);
  return meta ? zeVolume::getTypeIndex(meta) : ~0u;
}

int registrationPosition(const char* name) {
  for (int i = 0; i < zeMetaObject::getClassCount(); ++i)
    if (std::strcmp(zeMetaObject::getClass(i)->getName(), name) == 0) return i;
  return -1;
}

}  // namespace

TEST_F(LibraryEntry, TheCoreLoadsTheLibraryAndRegistersEverythingOnce) {
  zeSmartPointer<zeLibrary> library = zeLibrary::load(ZE_MATH_LIBRARY_PATH);
  ASSERT_TRUE(library);
  // Loading registers nothing of the math library (the core registers its
  // own library class to make the library object).
  EXPECT_EQ(zeMetaObject::find("zeVolume"), nullptr);
  EXPECT_EQ(zeMetaObject::find("zeVectorMorphing"), nullptr);
  EXPECT_EQ(_libZEMath_InitFlag, 0);
  EXPECT_EQ(library->registerClasses(), kSuccess);
  library = nullptr;

  EXPECT_EQ(typeIndexOf("zeSphere"), 0u);
  EXPECT_EQ(typeIndexOf("zeAABox"), 1u);
  EXPECT_EQ(typeIndexOf("zePlane"), 2u);
  // The kernels come first, through the library's init; the lists before the volumes.
  EXPECT_LT(registrationPosition("zeVectorMorphing"), registrationPosition("zeVectorBlending"));
  EXPECT_LT(registrationPosition("zeVolumeList"), registrationPosition("zeVec4ucMetaField"));
  EXPECT_LT(registrationPosition("zeMatrix44dArrayMetaField"), registrationPosition("zeVec2fList"));
  EXPECT_LT(registrationPosition("zeGetCenterFunctionList"), registrationPosition("zeIntersect"));
  for (const char* name : {"zeNonRefCountedAABoxList", "zeQuaternionfListList", "zeRayList", "zeVec2dArrayMetaField"})
    EXPECT_GE(registrationPosition(name), 0) << name;

  const int classes = zeMetaObject::getClassCount();
  libZEMath_bayRegister();
  EXPECT_EQ(zeMetaObject::getClassCount(), classes) << "a second call registers nothing new";
}

TEST_F(LibraryEntry, SceneFileRegistrationGivesThePlaneTheFirstIndex) {
  zeBayRegisterForZEBFiles();
  EXPECT_EQ(typeIndexOf("zePlane"), 0u);
  EXPECT_EQ(typeIndexOf("zeAABox"), 1u);
  EXPECT_EQ(typeIndexOf("zeSphere"), 2u);
  EXPECT_GE(registrationPosition("zeRay"), 0);
}

TEST_F(LibraryEntry, CreateLibraryObjectReleasesWhatTheReferenceHeld) {
  zeSmartPointer<zeLibrary> result;
  createLibraryObject(result);
  ASSERT_TRUE(result);
  zeLibrary* first = result.get();
  first->addReference();  // keep it observable
  createLibraryObject(result);
  ASSERT_TRUE(result);
  EXPECT_NE(result.get(), first);
  EXPECT_EQ(first->getReferenceCount(), 1u) << "the old object lost the reference result held";
  EXPECT_EQ(result->getReferenceCount(), 1u) << "result holds the only reference";
  first->release();
  result = nullptr;
}

TEST(LibraryConstants, MemoryTracking) {
  EXPECT_STREQ("Math", zeMemoryTrackingGroup);
  EXPECT_EQ(64u, zeMemoryTrackingTargetFlags);
}
