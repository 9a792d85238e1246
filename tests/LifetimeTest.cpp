// Lifetimes: a million objects of every class the library registers, made
// and released through a pool of their own and through object lists; and a
// class registered, unregistered and registered again.

#include <cstddef>
#include <vector>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"
#include "support/CoreTestLists.h"

using namespace Lux;

namespace {

using Lifetime = zetest::CoreTest;

// Objects made of each class. Sanitizer builds run many times slower; they
// make a hundredth as many.
#if defined(__SANITIZE_ADDRESS__)
constexpr int kObjectsPerClass = 10000;
#else
constexpr int kObjectsPerClass = 1000000;
#endif
// Objects held by one list at a time.
constexpr int kBatch = 1000;

/// Every registered class that can have instances.
std::vector<zeMetaObject*> concreteClasses() {
  std::vector<zeMetaObject*> classes;
  for (int i = 0; i < zeMetaObject::getClassCount(); ++i) {
    zeMetaObject* meta = zeMetaObject::getClass(i);
    if (meta && !meta->isAbstract()) classes.push_back(meta);
  }
  return classes;
}

}  // namespace

TEST_F(Lifetime, AMillionObjectsOfEveryClassGoBackToTheirPool) {
  libZEMath_bayRegister();
  const std::vector<zeMetaObject*> classes = concreteClasses();
  ASSERT_GT(classes.size(), 50u);
  const int perClass = kObjectsPerClass;

  zeMemoryPool pool("lifetime");
  zeMemoryPool* defaultPool = BayCore::getDefaultPool();
  const std::size_t defaultAtStart = defaultPool->getAllocationCount();
  zeObjectList* list = static_cast<zeObjectList*>(zeObjectList::_instantiateFromPool(&pool));
  ASSERT_NE(list, nullptr);
  // The list keeps its storage when emptied; it is made once, before the start.
  ASSERT_EQ(list->setCount(kBatch), kSuccess);
  ASSERT_EQ(list->setCount(0), kSuccess);
  const std::size_t atStart = pool.getAllocationCount();

  long long made = 0;
  for (zeMetaObject* meta : classes) {
    SCOPED_TRACE(meta->getName());
    for (int done = 0; done < perClass; done += kBatch) {
      for (int i = 0; i < kBatch && done + i < perClass; ++i) {
        zeObject* object = meta->createInstance(&pool);
        ASSERT_NE(object, nullptr);
        ASSERT_EQ(list->append(object), kSuccess);
        object->release();  // the list holds the only reference now
        ++made;
      }
      EXPECT_GT(pool.getAllocationCount(), atStart);
      ASSERT_EQ(list->setCount(0), kSuccess);
      ASSERT_EQ(pool.getAllocationCount(), atStart) << "objects of the batch still live";
    }
  }
  EXPECT_EQ(made, static_cast<long long>(perClass) * static_cast<long long>(classes.size()));
  list->release();
  EXPECT_EQ(pool.getAllocationCount(), 0u);
  EXPECT_EQ(defaultPool->getAllocationCount(), defaultAtStart) << "the objects took nothing from the default pool";
}

TEST_F(Lifetime, ATestClassRegistersUnregistersAndRegistersAgain) {
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    testlists::IntList::bayRegister();
    ASSERT_NE(testlists::IntList::getClassMeta(), nullptr);
    zeMetaObject* meta = zeMetaObject::find("IntList");
    ASSERT_EQ(meta, testlists::IntList::getClassMeta());
    zeSmartPointer<zeObject> list = meta->createInstanceRef(nullptr);
    ASSERT_TRUE(list);
    auto* ints = static_cast<testlists::IntList*>(list.get());
    ASSERT_EQ(ints->append(7), kSuccess);
    EXPECT_EQ(ints->getCount(), 1);
    list = nullptr;

    BayCore::unregisterAllClasses();
    EXPECT_EQ(testlists::IntList::getClassMeta(), nullptr);
    EXPECT_EQ(zeMetaObject::find("IntList"), nullptr);
    EXPECT_EQ(zeMetaObject::getClassCount(), 0);
    EXPECT_EQ(BayCore::getDefaultPool()->getAllocationCount(), 0u);
  }
}
