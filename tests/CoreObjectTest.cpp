// The object model's objects: header and reference word, virtual slot orders,
// smart pointers, memory pools, instance creation and pooled strings.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "support/CoreFixture.h"
#include "support/CoreHelpers.h"

using namespace Lux;
using zetest::make;

// The classes are not in an anonymous namespace: their registration statics
// are defined whether a test uses each of them or not.
namespace objects {

int destroyed = 0;

// A program's own class: a float with a default, two plain members, and hooks
// that count.
class Probe : public zeObject {
  ZE_DECLARE_CLASS(, Probe)
  ZE_DECLARE_FIELD_SLOT(, _weight)

 public:
  float _weight;
  int spare;            // not reflected: zero in a new instance
  int constructedFlag;  // not reflected: set by userConstruct

  static void bayRegisterInitialize() {
    zetest::declareFields(_Meta,
                          {{&zeFloatMetaField::_instantiateFromPool, "_weight", &k_weight, offsetof(Probe, _weight)}});
    static_cast<zeFloatMetaField*>(k_weight)->setDefault(2.5f);
  }
  void userConstruct() override { constructedFlag = 1; }
  void userDestruct() override { ++destroyed; }
};
ZE_DEFINE_FIELD_SLOT(Probe, _weight)
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

// The header is the virtual table, the core word, then the 32-bit reference
// word; a derived class's first field follows it at byte 20.
struct HeaderProbe : zeObject {
  int first;
};
static_assert(offsetof(HeaderProbe, first) == 20, "derived fields follow the 20-byte header");
static_assert(sizeof(zeMetaField) == 88, "a field class's own data starts at byte 88");
static_assert(offsetof(zeDataList, _count) == 20 && offsetof(zeDataList, _capacity) == 24 &&
                  offsetof(zeDataList, _data) == 32,
              "count, capacity and storage follow the object header");

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

std::uint32_t referenceWordOf(const zeObject* object) {
  std::uint32_t word;
  std::memcpy(&word, reinterpret_cast<const char*>(object) + 16, sizeof word);
  return word;
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
  expectSlotsFrom(17, &zeDataList::getElementSize, &zeObjectList::getElementType);
  EXPECT_EQ(slotOf(&zeNonRefCountedObjectList::getElementType), 18);
}

TEST_F(CoreObject, ReleaseDestroysWhenTheLowBitsReachZeroWhateverTheFlags) {
  destroyed = 0;
  Probe* probe = newProbe();
  ASSERT_NE(probe, nullptr);
  EXPECT_EQ(referenceWordOf(probe), 1u) << "the count sits in the word at byte 16";
  probe->setObjectFlags(0x1ff);
  probe->addReference();
  EXPECT_EQ(referenceWordOf(probe), 0xff800002u) << "flags in the upper 9 bits, the count in the low 23";
  EXPECT_EQ(probe->getReferenceCount(), 2u);
  probe->release();
  EXPECT_EQ(probe->getReferenceCount(), 1u);
  EXPECT_EQ(probe->getObjectFlags(), 0x1ffu);
  EXPECT_EQ(destroyed, 0);
  probe->release();
  EXPECT_EQ(destroyed, 1);
}

TEST_F(CoreObject, InstancesAreZeroedResetFromDefaultsAndConstructedInTheirPool) {
  zeMemoryPool pool("probes");
  for (int round = 0; round < 2; ++round) {  // the second instance may get the memory the first one left dirty
    Probe* probe = newProbe(&pool);
    ASSERT_NE(probe, nullptr);
    EXPECT_EQ(pool.getAllocationCount(), 1u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(probe) % 16, 0u);
    EXPECT_EQ(probe->_weight, 2.5f);
    EXPECT_EQ(probe->spare, 0);
    EXPECT_EQ(probe->constructedFlag, 1);
    EXPECT_TRUE(probe->isOfType(zeObject::_Meta));
    EXPECT_FALSE(probe->copyFrom(make<zeLibrary>().get(), zeObject::kCopyDeep)) << "classes differ";
    probe->spare = 77;
    probe->release();
  }
  EXPECT_EQ(pool.getAllocationCount(), 0u);
  EXPECT_EQ(pool.getAllocatedBytes(), 0u);

  EXPECT_EQ(Shape::_instantiateFromPool(nullptr), nullptr);
  ASSERT_NE(Shape::_Meta, nullptr);
  EXPECT_TRUE(Shape::_Meta->isAbstract());

  // Object memory comes from the default pool.
  const std::size_t blocks = BayCore::getDefaultPool()->getAllocationCount();
  void* memory = zeObject::operator new(40, 0);
  EXPECT_EQ(zeMemoryPool::getPoolOf(memory), BayCore::getDefaultPool());
  EXPECT_EQ(BayCore::getDefaultPool()->getAllocationCount(), blocks + 1);
  zeObject::operator delete(memory);
}

TEST_F(CoreObject, SmartPointersCountEveryHolderAndAdoptOnRequest) {
  destroyed = 0;
  {
    zeSmartPointer<Probe> held = zeSmartPointer<Probe>::adopt(newProbe());
    held = held.get();  // its only reference assigned again: added first, so the object survives
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(held->getReferenceCount(), 1u);
    zeSmartPointer<Probe> copy = held;
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
