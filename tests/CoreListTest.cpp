// Lists: data lists growing and cleaning, their retyped "_data", object lists
// counting and releasing their elements, lists of lists, and their records.

#include <cstddef>
#include <cstring>
#include <vector>

#include "support/CoreFixture.h"
#include "support/CoreTestLists.h"

using namespace Lux;
using testlists::FloatList;
using testlists::IntList;
using testlists::make;

namespace lists {

int destroyed = 0;

class Item : public zeObject {
  ZE_DECLARE_CLASS(, Item)
  ZE_DECLARE_FIELD_SLOT(, _id)

 public:
  int _id;

  static void bayRegisterInitialize() {
    const int first = _Meta->getMetaFieldCount();
    zeMetaObject::FieldInstantiateFunction make[] = {&zeIntMetaField::_instantiateFromPool};
    _Meta->instantiateAndAppendFields(make, 1);
    static const char* const names[] = {"_id"};
    zeMetaField** slots[] = {&k_id};
    int offsets[] = {offsetof(Item, _id)};
    _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
  }
  void userDestruct() override { ++destroyed; }
};
ZE_DEFINE_FIELD_SLOT(Item, _id)
ZE_IMPLEMENT_CLASS(Item, zeObject, zeNoLibraryInit, &Item::bayRegisterInitialize, nullptr)

class ItemList : public zeTObjectList<Item> {
  ZE_DECLARE_CLASS(, ItemList)
};
ZE_IMPLEMENT_CLASS(ItemList, zeObjectList, zeNoLibraryInit, nullptr, nullptr)

class FloatListList : public zeTObjectList<FloatList> {
  ZE_DECLARE_CLASS(, FloatListList)
};
ZE_IMPLEMENT_CLASS_WITH_FURTHER(FloatListList, zeObjectList, zeNoLibraryInit, nullptr, nullptr, &FloatList::bayRegister)

}  // namespace lists

using namespace lists;

namespace {

class CoreList : public zetest::CoreTest {
 protected:
  void SetUp() override {
    zetest::CoreTest::SetUp();
    destroyed = 0;
  }
};

zeSmartPointer<Item> newItem(int id) {
  zeSmartPointer<Item> item = make<Item>();
  item->_id = id;
  return item;
}

std::vector<unsigned char> recordOf(zeObject* object) {
  std::vector<unsigned char> bytes(object->getRecordSize());
  EXPECT_EQ(object->writeRecord(bytes.data(), static_cast<unsigned int>(bytes.size()), true), kSuccess);
  return bytes;
}

template <class M>
std::ptrdiff_t slotOf(M member) {
  std::ptrdiff_t words[2];
  std::memcpy(words, &member, sizeof words);
  return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

}  // namespace

static_assert(offsetof(zeDataList, _count) == 20 && offsetof(zeDataList, _capacity) == 24 &&
                  offsetof(zeDataList, _data) == 32,
              "count, capacity and storage follow the object header");

TEST(CoreListLayout, ListOperationsFollowTheObjectsSlots) {
  EXPECT_EQ(slotOf(&zeDataList::getElementSize), 17);
  EXPECT_EQ(slotOf(&zeObjectList::getElementType), 18);
  EXPECT_EQ(slotOf(&zeNonRefCountedObjectList::getElementType), 18);
  EXPECT_EQ(slotOf(&zeObjectList::preWrite), 11);
}

TEST_F(CoreList, DataListsGrowCleanAndStayInTheirPool) {
  zeMemoryPool pool("lists");
  {
    zeSmartPointer<FloatList> list = make<FloatList>(&pool);
    EXPECT_EQ(list->getElementSize(), 4u);
    std::vector<int> capacities;
    for (int i = 0; i < 5; ++i) {
      ASSERT_EQ(list->appendElement(static_cast<float>(i)), kSuccess);
      capacities.push_back(list->getCapacity());
    }
    EXPECT_EQ(capacities, (std::vector<int>{1, 2, 4, 4, 8})) << "doubling";
    EXPECT_EQ(pool.getAllocationCount(), 2u) << "the list and its storage";
    EXPECT_EQ(list->setCapacity(4, 4), kFailure) << "below the count";
    EXPECT_EQ(list->resize(-1), kFailure);
    EXPECT_EQ(list->resizeAndSetCount(1, 0), kFailure);
    EXPECT_EQ(list->getCount(), 5);

    // Count 3, capacity 8: clean() reallocates to 3 and keeps the elements.
    ASSERT_EQ(list->resize(3), kSuccess);
    list->clean();
    EXPECT_EQ(list->getCapacity(), 3);
    EXPECT_EQ(list->data()[2], 2.0f);
    const void* storage = list->getData();
    list->clean();
    EXPECT_EQ(list->getData(), storage) << "count equal to capacity: nothing to do";
    list->data()[2] = 9.0f;
    ASSERT_EQ(list->resize(2), kSuccess);
    ASSERT_EQ(list->resize(4), kSuccess);
    EXPECT_EQ(list->data()[2], 0.0f) << "elements gained are zeroed";
    EXPECT_EQ(list->setCapacity(4, 4), kSuccess);
    ASSERT_EQ(list->resize(0), kSuccess);
    list->clean();
    EXPECT_EQ(list->getData(), nullptr);
  }
  EXPECT_EQ(pool.getAllocationCount(), 0u);
}

TEST_F(CoreList, DataRetypedPerListClassPrintsAndParsesElements) {
  zeSmartPointer<IntList> list = make<IntList>();
  auto* data = static_cast<zeElementArrayMetaField*>(IntList::k_data);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(IntList::_Meta->getMetaField("_data"), data);
  EXPECT_NE(data, zeDataList::k_data) << "the list class has its own copy";
  EXPECT_EQ(zeDataList::_Meta->getMetaField("_data"), zeDataList::k_data);
  EXPECT_EQ(zeDataList::k_data->getOffset(), 20);
  EXPECT_EQ(data->getElementFieldType(), zeIntMetaField::_MetaField);
  EXPECT_EQ(data->getProperties(), 0u);

  list->append(1);
  list->append(20);
  list->append(-3);
  EXPECT_EQ((*list)[1], 20);
  EXPECT_EQ(list->indexOf(-3), 2);
  EXPECT_EQ(list->indexOf(4), -1);
  const char* text = data->getByString(list.get(), nullptr);
  EXPECT_STREQ(text, "1 20 -3");
  zeInternalStringPool::releaseString(text);

  EXPECT_EQ(list->setFieldByString("_data", " 4 5 "), kSuccess);
  ASSERT_EQ(list->getCount(), 2);
  EXPECT_EQ((*list)[1], 5);
  EXPECT_EQ(data->setByString(list.get(), "7 x", nullptr), 0);
  EXPECT_EQ(data->setByString(list.get(), "  ", nullptr), 0);
  EXPECT_EQ(list->getCount(), 2) << "a text that fails leaves the list as it was";
  EXPECT_EQ((*list)[0], 4);
}

TEST_F(CoreList, ObjectListsAddToTheNewElementAndReleaseTheOld) {
  zeSmartPointer<Item> a = newItem(1);
  zeSmartPointer<Item> b = newItem(2);
  {
    zeSmartPointer<ItemList> list = make<ItemList>();
    EXPECT_EQ(list->getElementType(), Item::_Meta);
    EXPECT_EQ(list->getElementSize(), 8u);
    ASSERT_EQ(list->append(a.get()), kSuccess);
    EXPECT_EQ(a->getReferenceCount(), 2u);
    ASSERT_EQ(list->set(0, b.get()), kSuccess);
    EXPECT_EQ(a->getReferenceCount(), 1u);
    EXPECT_EQ(b->getReferenceCount(), 2u);
    EXPECT_EQ(list->set(1, a.get()), kFailure) << "out of range";
    ASSERT_EQ(list->setCount(4), kSuccess);
    EXPECT_EQ(list->get(3), nullptr);
    EXPECT_EQ(list->get(4), nullptr);
    list->set(2, a.get());
    list->set(3, newItem(3).get());
    EXPECT_EQ((*list)[0], b.get());
    EXPECT_EQ(list->get(0)->_id, 2);
    ASSERT_EQ(list->setCount(3), kSuccess);
    EXPECT_EQ(destroyed, 1) << "the dropped element was the last holder of item 3";

    list->preWrite();
    EXPECT_EQ(list->getCapacity(), 3) << "written lists are cleaned first";
    zeSmartPointer<zeObjectList> plain = make<zeObjectList>();
    EXPECT_EQ(plain->getElementType(), zeObject::_Meta);
  }
  EXPECT_EQ(a->getReferenceCount(), 1u) << "a dying list releases its elements";
  EXPECT_EQ(b->getReferenceCount(), 1u);

  zeSmartPointer<zeNonRefCountedObjectList> pointers = make<zeNonRefCountedObjectList>();
  ASSERT_EQ(pointers->setCount(2), kSuccess);
  EXPECT_EQ(pointers->set(0, a.get()), kSuccess);
  EXPECT_EQ(a->getReferenceCount(), 1u) << "plain pointers count nothing";
  EXPECT_EQ(pointers->get(0), a.get());
  EXPECT_EQ(pointers->getElementType(), zeObject::_Meta);
  const std::vector<unsigned char> record = recordOf(pointers.get());
  zeSmartPointer<zeNonRefCountedObjectList> back = make<zeNonRefCountedObjectList>();
  EXPECT_EQ(back->readRecord(record.data(), static_cast<unsigned int>(record.size()), true), kSuccess);
  EXPECT_EQ(back->getCount(), 0) << "pointers are not stored";
}

TEST_F(CoreList, ListsOfListsRegisterCopyCompareAndStoreTheirLists) {
  EXPECT_EQ(FloatList::getClassMeta(), nullptr);
  FloatListList::bayRegister();
  EXPECT_NE(FloatList::getClassMeta(), nullptr) << "the element list registers with its list of lists";
  EXPECT_EQ(FloatListList::_Meta->getMetaField("_data"), zeObjectList::k_data) << "no fields of its own";

  zeSmartPointer<FloatListList> lists = make<FloatListList>();
  zeSmartPointer<FloatList> first = make<FloatList>();
  first->appendElement(1.5f);
  first->appendElement(-4.0f);
  lists->append(first.get());
  lists->append(nullptr);
  const char* text = zeObjectList::k_data->getByString(lists.get(), nullptr);
  EXPECT_STREQ(text, "FloatList null");
  zeInternalStringPool::releaseString(text);

  zeSmartPointer<zeObject> deep = zeSmartPointer<zeObject>::adopt(lists->createCopy(zeObject::kCopyDeep));
  const FloatListList* copy = static_cast<FloatListList*>(deep.get());
  ASSERT_EQ(copy->getCount(), 2);
  EXPECT_NE(copy->get(0), first.get()) << "a deep copy copies the lists";
  EXPECT_TRUE(copy->get(0)->isAlikeTo(first.get(), zeObject::kCopyDeep));
  EXPECT_TRUE(zeObjectList::k_data->isAlikeCompareDeep(copy, lists.get()));
  EXPECT_FALSE(zeObjectList::k_data->isAlikeCompareExactly(copy, lists.get()));
  zeSmartPointer<zeObject> shallow = zeSmartPointer<zeObject>::adopt(lists->createCopy(zeObject::kCopyShallow));
  EXPECT_EQ(static_cast<FloatListList*>(shallow.get())->get(0), first.get());
  EXPECT_EQ(first->getReferenceCount(), 3u);

  const std::vector<unsigned char> record = recordOf(lists.get());
  zeSmartPointer<FloatListList> back = make<FloatListList>();
  back->append(first.get());
  EXPECT_EQ(back->readRecord(record.data(), static_cast<unsigned int>(record.size()), true), kSuccess);
  ASSERT_EQ(back->getCount(), 2);
  EXPECT_EQ(back->get(1), nullptr);
  EXPECT_TRUE(back->get(0)->isAlikeTo(first.get(), zeObject::kCopyDeep));
  EXPECT_EQ(first->getReferenceCount(), 3u) << "the list read released what it held";
  EXPECT_EQ(recordOf(back.get()), record);
}
