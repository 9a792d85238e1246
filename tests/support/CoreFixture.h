#pragma once

// A fixture for tests of the object model: every test starts with no class
// registered and must leave nothing behind. After the test, all classes are
// unregistered and the default pool must have every block back.

#include <gtest/gtest.h>

#include "core/LuxCore.h"

namespace zetest {

class CoreTest : public ::testing::Test {
 protected:
  void SetUp() override { Lux::BayCore::unregisterAllClasses(); }

  void TearDown() override {
    Lux::BayCore::unregisterAllClasses();
    EXPECT_EQ(Lux::zeMetaObject::getClassCount(), 0);
    EXPECT_EQ(Lux::BayCore::getDefaultPool()->getAllocationCount(), 0u) << "blocks of the default pool still live";
    EXPECT_EQ(Lux::zeInternalStringPool::_defaultStringPool, nullptr) << "pooled texts still live";
  }
};

}  // namespace zetest
