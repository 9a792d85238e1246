// The typed lists: registration with a retyped "_data", lists of lists
// registering their element lists, cleaning, and elements printed by their
// field type.

#include <cstring>
#include <string>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using MathList = zetest::CoreTest;

struct DataListType {
  const char* name;
  void (*bayRegister)();
  zeMetaObject* (*getClassMeta)();
  zeMetaField** dataSlot;
  zeObject* (*instantiate)(zeMemoryPool*);
  zeMetaField** elementField;
  unsigned int elementSize;
};

#define ZE_DATA_LIST(C, FIELD, SIZE) \
  { #C, &C::bayRegister, &C::getClassMeta, &C::k_data, &C::_instantiateFromPool, &FIELD::_MetaField, SIZE }
const DataListType kDataLists[] = {
    ZE_DATA_LIST(zeVec2fList, zeVec2fMetaField, 8),          ZE_DATA_LIST(zeVec3fList, zeVec3fMetaField, 12),
    ZE_DATA_LIST(zeVec3ucList, zeVec3ucMetaField, 3),        ZE_DATA_LIST(zeVec4fList, zeVec4fMetaField, 16),
    ZE_DATA_LIST(zeVec4ucList, zeVec4ucMetaField, 4),        ZE_DATA_LIST(zeQuaternionfList, zeVec4fMetaField, 16),
    ZE_DATA_LIST(zeMatrix44fList, zeMatrix44fMetaField, 64),
};
#undef ZE_DATA_LIST

struct ListListType {
  const char* name;
  void (*bayRegister)();
  zeMetaObject* (*getClassMeta)();
  zeObject* (*instantiate)(zeMemoryPool*);
  zeMetaObject* (*elementClassMeta)();
};

#define ZE_LIST_LIST(C, L) \
  { #C, &C::bayRegister, &C::getClassMeta, &C::_instantiateFromPool, &L::getClassMeta }
const ListListType kListLists[] = {
    ZE_LIST_LIST(zeVec2fListList, zeVec2fList),         ZE_LIST_LIST(zeVec3fListList, zeVec3fList),
    ZE_LIST_LIST(zeVec4fListList, zeVec4fList),         ZE_LIST_LIST(zeQuaternionfListList, zeQuaternionfList),
    ZE_LIST_LIST(zeMatrix44fListList, zeMatrix44fList),
};
#undef ZE_LIST_LIST

}  // namespace

TEST_F(MathList, DataListsRetypeDataWithTheirElementFieldType) {
  for (const DataListType& type : kDataLists) {
    SCOPED_TRACE(type.name);
    EXPECT_EQ(type.getClassMeta(), nullptr);
    type.bayRegister();
    const int classes = zeMetaObject::getClassCount();
    type.bayRegister();
    EXPECT_EQ(zeMetaObject::getClassCount(), classes);
    zeMetaObject* meta = type.getClassMeta();
    ASSERT_NE(meta, nullptr);
    EXPECT_STREQ(meta->getName(), type.name);
    EXPECT_EQ(meta->getParent(), zeDataList::getClassMeta());
    EXPECT_EQ(meta->getInstanceSize(), sizeof(zeDataList));

    zeMetaField* data = meta->getMetaField("_data");
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(*type.dataSlot, data);
    EXPECT_NE(data, zeDataList::getClassMeta()->getMetaField("_data")) << "a copy of the inherited field";
    ASSERT_TRUE(data->isOfType(zeElementArrayMetaField::getClassMeta()));
    const auto* elements = static_cast<const zeElementArrayMetaField*>(data);
    EXPECT_EQ(elements->getElementFieldType(), *type.elementField);
    EXPECT_EQ(elements->getProperties(), 0u);

    auto* list = static_cast<zeDataList*>(type.instantiate(nullptr));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->getElementSize(), type.elementSize);
    list->release();
  }
}

TEST_F(MathList, ListsOfListsRegisterTheirElementListAndTypeTheirElements) {
  for (const ListListType& type : kListLists) {
    SCOPED_TRACE(type.name);
    EXPECT_EQ(type.elementClassMeta(), nullptr);
    type.bayRegister();
    zeMetaObject* meta = type.getClassMeta();
    ASSERT_NE(meta, nullptr);
    ASSERT_NE(type.elementClassMeta(), nullptr) << "registered along";
    EXPECT_TRUE(type.elementClassMeta()->isRegistered());
    EXPECT_STREQ(meta->getName(), type.name);
    EXPECT_EQ(meta->getParent(), zeObjectList::getClassMeta());
    auto* lists = static_cast<zeObjectList*>(type.instantiate(nullptr));
    ASSERT_NE(lists, nullptr);
    EXPECT_EQ(lists->getElementType(), type.elementClassMeta());
    EXPECT_EQ(lists->getElementSize(), sizeof(void*));
    lists->release();
  }
}

TEST_F(MathList, CleanShrinksTheCapacityToTheCount) {
  auto* list = static_cast<zeVec3fList*>(zeVec3fList::_instantiateFromPool(nullptr));
  ASSERT_EQ(list->setCapacity(8, sizeof(zeVec3f)), kSuccess);
  ASSERT_EQ(list->resize(3), kSuccess);
  list->setElement(2, zeVec3f(7, 8, 9));
  list->clean();
  EXPECT_EQ(list->getCapacity(), 3);
  zeVec3f last;
  list->getElement(2, last);
  EXPECT_EQ(last, zeVec3f(7, 8, 9));
  const void* storage = list->getData();
  list->clean();
  EXPECT_EQ(list->getData(), storage) << "nothing to do when count and capacity agree";
  list->release();
}

TEST_F(MathList, ElementsPrintWithTheirFieldTypeQuaternionsAsFourFloats) {
  auto* quaternions = static_cast<zeQuaternionfList*>(zeQuaternionfList::_instantiateFromPool(nullptr));
  quaternions->appendElement(zeQuaternionf(0, 0, 0, 1));
  quaternions->appendElement(zeQuaternionf(0.5f, -0.5f, 0.5f, -0.5f));
  const char* text = zeQuaternionfList::k_data->getByString(quaternions, nullptr);
  EXPECT_STREQ(text, "0.000000,0.000000,0.000000,1.000000 0.500000,-0.500000,0.500000,-0.500000");
  zeInternalStringPool::releaseString(text);

  auto* colours = static_cast<zeVec3ucList*>(zeVec3ucList::_instantiateFromPool(nullptr));
  colours->appendElement(zeVec3uc(255, 0, 128));
  text = zeVec3ucList::k_data->getByString(colours, nullptr);
  EXPECT_STREQ(text, "255c,0c,128c");
  zeInternalStringPool::releaseString(text);
  quaternions->release();
  colours->release();
}
