// Loading libraries of classes: a library built beside the tests registers a
// class with the core this program uses.

#include <dlfcn.h>

#include "support/CoreFixture.h"

using namespace Lux;

namespace {

using CoreLibrary = zetest::CoreTest;

int widgetSize(const zeMetaObject* widget) {
  zeSmartPointer<zeObject> object = widget->createInstanceRef(nullptr);
  const zeMetaField* size = widget->getMetaField("_size");
  return object && size ? *static_cast<const int*>(size->fieldMemory(object.get())) : -1;
}

}  // namespace

TEST_F(CoreLibrary, ALoadedLibraryRegistersItsClassesWithTheSameCore) {
  zeSmartPointer<zeLibrary> library = zeLibrary::load(ZE_TEST_LIBRARY_PATH);
  ASSERT_TRUE(library);
  EXPECT_EQ(library->getReferenceCount(), 1u) << "the caller holds the only reference";
  EXPECT_EQ(zeMetaObject::find("Widget"), nullptr) << "loading registers nothing";
  EXPECT_EQ(library->registerClasses(), kSuccess);
  library = nullptr;  // the library stays open while its class is registered

  const zeMetaObject* widget = zeMetaObject::find("Widget");
  ASSERT_NE(widget, nullptr);
  EXPECT_TRUE(widget->isRegistered());
  EXPECT_EQ(widget->getParent(), zeObject::_Meta) << "one root for the program and the library";
  EXPECT_EQ(widgetSize(widget), 3);
  EXPECT_EQ(widget->getChildCount(), 0);

  // The class's _Meta is one exported symbol of the library, seen from here too.
  void* handle = dlopen(ZE_TEST_LIBRARY_PATH, RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(handle, nullptr) << "still open";
  auto* exportedMeta = static_cast<zeMetaObject**>(dlsym(handle, "_ZN7widgets6Widget5_MetaE"));
  ASSERT_NE(exportedMeta, nullptr);
  EXPECT_EQ(*exportedMeta, widget);
  dlclose(handle);
}

TEST_F(CoreLibrary, ALibraryOpensAgainAfterItsClassesWereUnregistered) {
  for (int round = 0; round < 2; ++round) {
    zeSmartPointer<zeLibrary> library = zeLibrary::load(ZE_TEST_LIBRARY_PATH);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->registerClasses(), kSuccess);
    library = nullptr;
    EXPECT_EQ(widgetSize(zeMetaObject::find("Widget")), 3);
    BayCore::unregisterAllClasses();
  }
}

TEST_F(CoreLibrary, WhatCannotBeLoadedGivesNull) {
  EXPECT_FALSE(zeLibrary::load(nullptr));
  EXPECT_FALSE(zeLibrary::load("/nonexistent/libNothing.so"));
  EXPECT_FALSE(zeLibrary::load(ZE_CORE_LIBRARY_PATH)) << "a library without createLibraryObject";

  zeSmartPointer<zeLibrary> empty =
      zeSmartPointer<zeLibrary>::adopt(static_cast<zeLibrary*>(zeLibrary::_instantiateFromPool(nullptr)));
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->getRegisterFunction(), nullptr);
  EXPECT_EQ(empty->registerClasses(), kFailure);
}
