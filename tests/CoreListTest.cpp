// Lists: data lists growing and cleaning, their retyped "_data", object lists
// counting and releasing their elements, lists of lists, and their records.

#include <vector>

#include "support/CoreFixture.h"
#include "support/CoreHelpers.h"
#include "support/CoreTestLists.h"

using namespace Lux;
using testlists::FloatList;
using testlists::IntList;
using zetest::make;

namespace lists {

int destroyed = 0;

// An element that counts its deaths.
class Item : public zeObject {
  ZE_DECLARE_CLASS(, Item)

 public:
  void userDestruct() override { ++destroyed; }
};
ZE_IMPLEMENT_CLASS(Item, zeObject, zeNoLibraryInit, nullptr, nullptr)

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

}  // namespace

TEST_F(CoreList, DataListsGrowCleanAndStayInTheirPool) {
  zeMemoryPool pool("lists");
  {
    zeSmartPointer<FloatList> list = make<FloatList>(&pool);
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
  EXPECT_EQ(zeDataList::k_data->getOffset(), 20);
  EXPECT_EQ(data->getElementFieldType(), zeIntMetaField::_MetaField);
  EXPECT_EQ(data->getProperties(), 0u);

  list->append(1);
  list->append(20);
  list->append(-3);
  EXPECT_EQ((*list)[1], 20);
  EXPECT_EQ(list->indexOf(-3), 2);
  EXPECT_EQ(list->indexOf(4), -1);
  EXPECT_EQ(zetest::textOf(data, list.get()), "1 20 -3");

  EXPECT_EQ(list->setFieldByString("_data", " 4 5 "), kSuccess);
  ASSERT_EQ(list->getCount(), 2);
  EXPECT_EQ((*list)[1], 5);
  EXPECT_EQ(data->setByString(list.get(), "7 x", nullptr), 0);
  EXPECT_EQ(data->setByString(list.get(), "  ", nullptr), 0);
  EXPECT_EQ(list->getCount(), 2) << "a text that fails leaves the list as it was";
  EXPECT_EQ((*list)[0], 4);
}

TEST_F(CoreList, ObjectListsAddToTheNewElementAndReleaseTheOld) {
  zeSmartPointer<Item> a = make<Item>();
  zeSmartPointer<Item> b = make<Item>();
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
    list->set(3, make<Item>().get());
    EXPECT_EQ((*list)[0], b.get());
    ASSERT_EQ(list->setCount(3), kSuccess);
    EXPECT_EQ(destroyed, 1) << "the dropped element was the last holder of the third item";

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
  zeSmartPointer<zeNonRefCountedObjectList> back = make<zeNonRefCountedObjectList>();
  EXPECT_EQ(zetest::readRecord(back.get(), zetest::recordOf(pointers.get(), true), true), kSuccess);
  EXPECT_EQ(back->getCount(), 0) << "pointers are not stored";
}

TEST_F(CoreList, ListsOfListsRegisterCopyCompareAndStoreTheirLists) {
  FloatListList::bayRegister();
  EXPECT_EQ(FloatListList::_Meta->getMetaField("_data"), zeObjectList::k_data) << "no fields of its own";

  zeSmartPointer<FloatListList> lists = make<FloatListList>();
  zeSmartPointer<FloatList> first = make<FloatList>();
  first->appendElement(1.5f);
  first->appendElement(-4.0f);
  lists->append(first.get());
  lists->append(nullptr);
  EXPECT_EQ(zetest::textOf(zeObjectList::k_data, lists.get()), "FloatList null");

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

  const std::vector<unsigned char> record = zetest::recordOf(lists.get(), true);
  zeSmartPointer<FloatListList> back = make<FloatListList>();
  back->append(first.get());
  EXPECT_EQ(zetest::readRecord(back.get(), record, true), kSuccess);
  ASSERT_EQ(back->getCount(), 2);
  EXPECT_EQ(back->get(1), nullptr);
  EXPECT_TRUE(back->get(0)->isAlikeTo(first.get(), zeObject::kCopyDeep));
  EXPECT_EQ(first->getReferenceCount(), 3u) << "the list read released what it held";
  EXPECT_EQ(zetest::recordOf(back.get(), true), record);
}
