// The object model's objects: header and reference word, smart pointers,
// memory pools, instance creation and copies, pooled strings.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "support/CoreFixture.h"

using namespace Lux;

// The classes are not in an anonymous namespace: their registration statics
// are defined whether a test uses each of them or not.
namespace objects {

int destroyed = 0;

// A program's own class: a float with a default, an int, and hooks that count.
class Probe : public zeObject {
  ZE_DECLARE_CLASS(, Probe)

 public:
  float _weight;
  int _tag;
  int constructedFlag;  // not reflected: set by userConstruct

  static void bayRegisterInitialize() {
    const int first = _Meta->getMetaFieldCount();
    zeMetaObject::FieldInstantiateFunction make[] = {&zeFloatMetaField::_instantiateFromPool,
                                                     &zeIntMetaField::_instantiateFromPool};
    _Meta->instantiateAndAppendFields(make, 2);
    static_cast<zeFloatMetaField*>(_Meta->getIndexedMetaField(first))->setDefault(2.5f);
    static const char* const names[] = {"_weight", "_tag"};
    zeMetaField** slots[] = {&k_weight, &k_tag};
    int offsets[] = {offsetof(Probe, _weight), offsetof(Probe, _tag)};
    _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
  }
  ZE_DECLARE_FIELD_SLOT(, _weight)
  ZE_DECLARE_FIELD_SLOT(, _tag)

  void userConstruct() override { constructedFlag = 1; }
  void userDestruct() override { ++destroyed; }
};

ZE_DEFINE_FIELD_SLOT(Probe, _weight)
ZE_DEFINE_FIELD_SLOT(Probe, _tag)
ZE_IMPLEMENT_CLASS(Probe, zeObject, zeNoLibraryInit, &Probe::bayRegisterInitialize, nullptr)

// A class of which no instances are made.
class Shape : public zeObject {
  ZE_DECLARE_CLASS(, Shape)
};
ZE_IMPLEMENT_ABSTRACT_CLASS(Shape, zeObject, zeNoLibraryInit, nullptr, nullptr)

}  // namespace objects

using namespace objects;

namespace {

Probe* newProbe(zeMemoryPool* pool = nullptr) { return static_cast<Probe*>(Probe::_instantiateFromPool(pool)); }

using CoreObject = zetest::CoreTest;

}  // namespace

// The header is the virtual table, the core word, then the 32-bit reference
// word; a derived class's first field follows it at byte 20.
struct HeaderProbe : zeObject {
  int first;
};
static_assert(offsetof(HeaderProbe, first) == 20, "derived fields follow the 20-byte header");
static_assert(sizeof(zeMetaField) == 88, "a field class's own data starts at byte 88");

namespace {

// The virtual-table slot a pointer to a virtual member names (on this ABI the
// pointer holds 1 + the slot's byte offset in the table).
template <class M>
std::ptrdiff_t slotOf(M member) {
  static_assert(sizeof(M) == 2 * sizeof(std::ptrdiff_t), "a pointer to member is two words");
  std::ptrdiff_t words[2];
  std::memcpy(words, &member, sizeof words);
  return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

template <class... M>
void expectSlotsFrom(std::ptrdiff_t first, M... members) {
  const std::ptrdiff_t slots[] = {slotOf(members)...};
  for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(sizeof...(M)); ++i) {
    EXPECT_EQ(slots[i], first + i) << "operation " << i << " after slot " << first;
  }
}

}  // namespace

TEST(CoreLayout, VirtualOperationsKeepTheirSlotOrder) {
  expectSlotsFrom(0, &zeObject::userAllocateFields, &zeObject::userDeallocateFields, &zeObject::userCopyDeep,
                  &zeObject::userCopyShallow, &zeObject::userIsAlikeDeep, &zeObject::userIsAlikeShallow,
                  &zeObject::userInstantiate, &zeObject::userRelease, &zeObject::userConstruct, &zeObject::userDestruct,
                  &zeObject::userResetFields, &zeObject::preWrite, &zeObject::postRead, &zeObject::postFileRead,
                  &zeObject::clean, &zeObject::makeAbstract, &zeObject::makeConcrete);
  expectSlotsFrom(
      17, &zeMetaField::getGenericMetaField, &zeMetaField::setFromMemory, &zeMetaField::computeSize,
      &zeMetaField::computeTypeSize, &zeMetaField::computeRequiredAlignment, &zeMetaField::resetByValue,
      &zeMetaField::resetByNoReset, &zeMetaField::resetByReference, &zeMetaField::construct, &zeMetaField::destruct,
      &zeMetaField::commission, &zeMetaField::decommission, &zeMetaField::setDefaultMemory, &zeMetaField::copyByValue,
      &zeMetaField::copyByReference, &zeMetaField::copyByValueShallow, &zeMetaField::copyByReset,
      &zeMetaField::copyByNoCopy, &zeMetaField::print, &zeMetaField::traverse, &zeMetaField::addToDirectory,
      &zeMetaField::compare, &zeMetaField::isAlikeCompareExactly, &zeMetaField::isAlikeCompareDeep,
      &zeMetaField::isAlikeCompareShallow, &zeMetaField::isAlikeCompareNoCompare, &zeMetaField::getIoSize,
      &zeMetaField::writeRawFieldMemory, &zeMetaField::readRawFieldMemory, &zeMetaField::endianSwapMemory,
      &zeMetaField::endianSwap, &zeMetaField::setByString, &zeMetaField::getByString, &zeMetaField::setMemoryByString,
      &zeMetaField::getStringFromMemory, &zeMetaField::convertMemoryToString, &zeMetaField::convertStringToMemory);
  EXPECT_EQ(slotOf(&zeMetaField::postRead), 12) << "the field's own postRead takes the object's slot";
}

TEST_F(CoreObject, ReleaseDestroysWhenTheLowBitsReachZeroWhateverTheFlags) {
  destroyed = 0;
  Probe* probe = newProbe();
  ASSERT_NE(probe, nullptr);
  EXPECT_EQ(probe->getReferenceCount(), 1u);
  std::uint32_t word;
  std::memcpy(&word, reinterpret_cast<const char*>(probe) + 16, sizeof word);
  EXPECT_EQ(word, 1u) << "the count sits in the word at byte 16";

  probe->setObjectFlags(0x1ff);
  probe->addReference();
  EXPECT_EQ(probe->getReferenceCount(), 2u);
  probe->release();
  EXPECT_EQ(probe->getReferenceCount(), 1u);
  EXPECT_EQ(probe->getObjectFlags(), 0x1ffu);
  EXPECT_EQ(destroyed, 0);
  probe->release();
  EXPECT_EQ(destroyed, 1);
}

TEST_F(CoreObject, InstancesAreZeroedResetFromDefaultsAndConstructed) {
  zeMemoryPool pool("probes");
  Probe* probe = newProbe(&pool);
  ASSERT_NE(probe, nullptr);
  EXPECT_EQ(pool.getAllocationCount(), 1u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(probe) % 16, 0u);
  EXPECT_EQ(probe->_weight, 2.5f);
  EXPECT_EQ(probe->_tag, 0);
  EXPECT_EQ(probe->constructedFlag, 1);
  EXPECT_EQ(probe->getMetaObject(), Probe::_Meta);
  EXPECT_TRUE(probe->isOfType(zeObject::_Meta));
  probe->release();
  EXPECT_EQ(pool.getAllocationCount(), 0u);
  EXPECT_EQ(pool.getAllocatedBytes(), 0u);

  EXPECT_EQ(Shape::_instantiateFromPool(nullptr), nullptr);
  ASSERT_NE(Shape::_Meta, nullptr);
  EXPECT_TRUE(Shape::_Meta->isAbstract());
  EXPECT_EQ(Shape::_Meta->createInstance(), nullptr);
}

TEST_F(CoreObject, SmartPointersCountEveryHolderAndAdoptOnRequest) {
  destroyed = 0;
  {
    zeSmartPointer<Probe> held = zeSmartPointer<Probe>::adopt(newProbe());
    EXPECT_EQ(held->getReferenceCount(), 1u);
    zeSmartPointer<Probe> copy = held;
    EXPECT_EQ(held->getReferenceCount(), 2u);
    copy = held.get();  // assigning the held object: adds first, so it survives
    EXPECT_EQ(held->getReferenceCount(), 2u);
    zeSmartPointer<Probe> moved = std::move(copy);
    EXPECT_FALSE(copy);
    EXPECT_EQ(held->getReferenceCount(), 2u);
    moved = newProbe();  // a raw pointer gains a reference: the fresh one now has 2
    EXPECT_EQ(held->getReferenceCount(), 1u);
    EXPECT_EQ(moved->getReferenceCount(), 2u);
    moved->release();
    zeSmartPointer<zeObject> base = Probe::_Meta->createInstanceRef(nullptr);
    EXPECT_EQ(base->getReferenceCount(), 1u) << "the creation reference is adopted";
    zeSmartPointer<zeObject> same(base.get());
    EXPECT_EQ(base->getReferenceCount(), 2u);
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 3);
}

TEST_F(CoreObject, CopiesTakeTheFieldsOfTheOriginal) {
  zeSmartPointer<Probe> original = zeSmartPointer<Probe>::adopt(newProbe());
  original->_weight = -7.0f;
  original->_tag = 42;
  zeSmartPointer<zeObject> copy = zeSmartPointer<zeObject>::adopt(original->createCopy(zeObject::kCopyDeep));
  ASSERT_TRUE(copy);
  EXPECT_NE(copy.get(), original.get());
  EXPECT_EQ(static_cast<Probe*>(copy.get())->_weight, -7.0f);
  EXPECT_EQ(static_cast<Probe*>(copy.get())->_tag, 42);
  EXPECT_TRUE(Probe::k_tag->isAlike(copy.get(), original.get()));

  zeSmartPointer<Probe> other = zeSmartPointer<Probe>::adopt(newProbe());
  EXPECT_FALSE(Probe::k_tag->isAlike(other.get(), original.get()));
  zeSmartPointer<zeLibrary> library =
      zeSmartPointer<zeLibrary>::adopt(static_cast<zeLibrary*>(zeLibrary::_instantiateFromPool(nullptr)));
  EXPECT_FALSE(other->copyFrom(library.get(), zeObject::kCopyDeep)) << "classes differ";
}

TEST_F(CoreObject, PooledStringsAreSharedCountedAndFreedAtZero) {
  zeInternalStringPool* pool = zeInternalStringPool::getDefault();
  ASSERT_EQ(pool, zeInternalStringPool::_defaultStringPool);
  const int before = pool->getStringCount();
  char text[] = "lamp";
  const char* a = pool->setString(text);
  const char* b = pool->setString("lamp");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a, b);
  EXPECT_NE(a, text);
  EXPECT_STREQ(a, "lamp");
  EXPECT_EQ(pool->getStringCount(), before + 1);

  // The item header: the owning container, then the 32-bit count.
  const zeStringPoolItem* item = zeStringPoolItem::fromText(a);
  EXPECT_EQ(reinterpret_cast<const char*>(item) + 16, a);
  EXPECT_NE(item->_container, nullptr);
  EXPECT_EQ(item->_count, 2u);

  zeInternalStringPool::releaseString(b);
  EXPECT_EQ(zeInternalStringPool::getReferenceCount(a), 1u);
  zeInternalStringPool::releaseString(a);
  EXPECT_EQ(pool->getStringCount(), before);
  zeInternalStringPool::releaseString(nullptr);
  EXPECT_EQ(pool->setString(nullptr), nullptr);
}

TEST_F(CoreObject, ObjectMemoryComesFromTheDefaultPoolWithItsTag) {
  zeMemoryPool* pool = BayCore::getDefaultPool();
  void* memory = zeObject::operator new(40, 7);
  ASSERT_NE(memory, nullptr);
  EXPECT_EQ(zeMemoryPool::getPoolOf(memory), pool);
  EXPECT_EQ(zeMemoryPool::getTagOf(memory), 7u);
  EXPECT_EQ(pool->getAllocationCount(), 1u);
  zeObject::operator delete(memory);
  EXPECT_EQ(pool->getAllocationCount(), 0u);
  zeMemoryPool::deallocate(nullptr);
}
