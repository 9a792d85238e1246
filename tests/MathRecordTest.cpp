// An object with a field of every math type, a two-element array field of
// every type and a list of every kind: written and read back byte-swapped
// through the object's record, and printed and parsed field by field.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

// Not in an anonymous namespace: the registration statics are defined whether
// a test uses the class or not.
namespace records {

// The value and array fields: value type, member, field type, elements.
#define ZE_ALL_MATH_FIELDS(X)                          \
  X(zeVec2f, _v2f, zeVec2fMetaField, 1)                \
  X(zeVec3f, _v3f, zeVec3fMetaField, 1)                \
  X(zeVec4f, _v4f, zeVec4fMetaField, 1)                \
  X(zeVec2d, _v2d, zeVec2dMetaField, 1)                \
  X(zeVec3d, _v3d, zeVec3dMetaField, 1)                \
  X(zeVec4d, _v4d, zeVec4dMetaField, 1)                \
  X(zeVec3uc, _v3uc, zeVec3ucMetaField, 1)             \
  X(zeVec4uc, _v4uc, zeVec4ucMetaField, 1)             \
  X(zeMatrix44f, _m44f, zeMatrix44fMetaField, 1)       \
  X(zeMatrix44d, _m44d, zeMatrix44dMetaField, 1)       \
  X(zeVec2f, _v2fs, zeVec2fArrayMetaField, 2)          \
  X(zeVec3f, _v3fs, zeVec3fArrayMetaField, 2)          \
  X(zeVec4f, _v4fs, zeVec4fArrayMetaField, 2)          \
  X(zeVec2d, _v2ds, zeVec2dArrayMetaField, 2)          \
  X(zeVec3d, _v3ds, zeVec3dArrayMetaField, 2)          \
  X(zeVec4d, _v4ds, zeVec4dArrayMetaField, 2)          \
  X(zeVec3uc, _v3ucs, zeVec3ucArrayMetaField, 2)       \
  X(zeVec4uc, _v4ucs, zeVec4ucArrayMetaField, 2)       \
  X(zeMatrix44f, _m44fs, zeMatrix44fArrayMetaField, 2) \
  X(zeMatrix44d, _m44ds, zeMatrix44dArrayMetaField, 2)

// The lists, held by counted references: list class, member.
#define ZE_ALL_MATH_LISTS(X)              \
  X(zeVec2fList, _v2fList)                \
  X(zeVec3fList, _v3fList)                \
  X(zeVec3ucList, _v3ucList)              \
  X(zeVec4fList, _v4fList)                \
  X(zeVec4ucList, _v4ucList)              \
  X(zeQuaternionfList, _quatList)         \
  X(zeMatrix44fList, _m44fList)           \
  X(zeVec2fListList, _v2fListList)        \
  X(zeVec3fListList, _v3fListList)        \
  X(zeVec4fListList, _v4fListList)        \
  X(zeQuaternionfListList, _quatListList) \
  X(zeMatrix44fListList, _m44fListList)

class AllMath : public zeObject {
  ZE_DECLARE_CLASS(, AllMath)

 public:
#define ZE_MEMBER(T, NAME, FIELD, N) T NAME[N];
  ZE_ALL_MATH_FIELDS(ZE_MEMBER)
#undef ZE_MEMBER
#define ZE_MEMBER(L, NAME) L* NAME;
  ZE_ALL_MATH_LISTS(ZE_MEMBER)
#undef ZE_MEMBER

  static constexpr int kValueFields = 20;
  static constexpr int kFields = 32;
  static void bayRegisterInitialize();
};

void AllMath::bayRegisterInitialize() {
#define ZE_MAKE(T, NAME, FIELD, N) &FIELD::_instantiateFromPool,
#define ZE_MAKE_REFERENCE(L, NAME) &zeObjectReferenceMetaField::_instantiateFromPool,
#define ZE_NAME(T, NAME, FIELD, N) #NAME,
#define ZE_LIST_NAME(L, NAME) #NAME,
#define ZE_OFFSET(T, NAME, FIELD, N) static_cast<int>(offsetof(AllMath, NAME)),
#define ZE_LIST_OFFSET(L, NAME) static_cast<int>(offsetof(AllMath, NAME)),
#define ZE_NUM(T, NAME, FIELD, N) N,
  zeMetaObject::FieldInstantiateFunction make[kFields] = {ZE_ALL_MATH_FIELDS(ZE_MAKE)
                                                              ZE_ALL_MATH_LISTS(ZE_MAKE_REFERENCE)};
  static const char* const names[kFields] = {ZE_ALL_MATH_FIELDS(ZE_NAME) ZE_ALL_MATH_LISTS(ZE_LIST_NAME)};
  int offsets[kFields] = {ZE_ALL_MATH_FIELDS(ZE_OFFSET) ZE_ALL_MATH_LISTS(ZE_LIST_OFFSET)};
  const int nums[kValueFields] = {ZE_ALL_MATH_FIELDS(ZE_NUM)};
#undef ZE_MAKE
#undef ZE_MAKE_REFERENCE
#undef ZE_NAME
#undef ZE_LIST_NAME
#undef ZE_OFFSET
#undef ZE_LIST_OFFSET
#undef ZE_NUM
  const int first = _Meta->getMetaFieldCount();
  _Meta->instantiateAndAppendFields(make, kFields);
  // The arrays' "_num" is set through its own descriptor; the lists are
  // compared by their elements, not by address.
  for (int i = 0; i < kFields; ++i) {
    zeMetaField* field = _Meta->getIndexedMetaField(first + i);
    if (i >= kValueFields) {
      field->setCompareMethod(zeMetaField::kCompareDeep);
    } else if (nums[i] > 1) {
      field->getMetaObject()->getMetaField("_num")->setFromMemory(field, &nums[i]);
    }
  }
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first + 1))->setDefault(zeVec3f(1, 2, 3));
  static_cast<zeVec3dArrayMetaField*>(_Meta->getIndexedMetaField(first + 14))->setDefault(1, zeVec3d(4, 5, 6));
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, nullptr, offsets, first);
}

ZE_IMPLEMENT_CLASS(AllMath, zeObject, zeNoLibraryInit, &AllMath::bayRegisterInitialize, nullptr)

}  // namespace records

using records::AllMath;

namespace {

using MathRecord = zetest::CoreTest;

/// Fills `n` components from `start` on in steps that are not powers of two.
template <class T>
void fill(T* components, int n, T start) {
  for (int i = 0; i < n; ++i) components[i] = start + static_cast<T>(i) * static_cast<T>(-7.375);
}
void fillBytes(unsigned char* components, int n, int start) {
  for (int i = 0; i < n; ++i) components[i] = static_cast<unsigned char>(start + 41 * i);
}

/// A new list of class L with three elements of `n` components each (byte
/// channels for an integer start).
template <class L, class C>
L* newList(int n, C start) {
  L* list = static_cast<L*>(L::_instantiateFromPool(nullptr));
  list->resize(3);
  if constexpr (std::is_integral_v<C>) {  // byte channels
    fillBytes(reinterpret_cast<unsigned char*>(list->data()), 3 * n, start);
  } else {
    fill(reinterpret_cast<C*>(list->data()), 3 * n, start);
  }
  return list;
}

/// A new list of lists of class LL holding two lists.
template <class LL, class C>
LL* newListList(int n, C start) {
  using L = std::remove_pointer_t<decltype(std::declval<LL>().get(0))>;
  LL* lists = static_cast<LL*>(LL::_instantiateFromPool(nullptr));
  for (int i = 0; i < 2; ++i) {
    L* list = newList<L>(n, start + static_cast<C>(i));
    lists->append(list);
    list->release();
  }
  return lists;
}

/// Hands the creation reference of `list` to the reference field at `member`.
template <class L>
void hold(L*& member, L* list) {
  zeObjectReferenceMetaField::setReferenced(&member, list);
  list->release();
}

/// Finite values in every field and list.
void fillAll(AllMath* o) {
  fill(&o->_v2f[0].x, 2, 1.0f / 3.0f);
  fill(&o->_v3f[0].x, 3, -1234.5678f);
  fill(&o->_v4f[0].x, 4, 1e-3f);
  fill(&o->_v2d[0].x, 2, 1.0 / 7.0);
  fill(&o->_v3d[0].x, 3, -2.5e10);
  fill(&o->_v4d[0].x, 4, 3.0);
  fillBytes(&o->_v3uc[0].r, 3, 5);
  fillBytes(&o->_v4uc[0].r, 4, 250);
  fill(o->_m44f[0].data(), 16, 100.125f);
  fill(o->_m44d[0].data(), 16, -0.001);
  fill(&o->_v2fs[0].x, 4, 0.5f);
  fill(&o->_v3fs[0].x, 6, 65536.25f);
  fill(&o->_v4fs[0].x, 8, -3.0f);
  fill(&o->_v2ds[0].x, 4, 1e-5);
  fill(&o->_v3ds[0].x, 6, 42.0);
  fill(&o->_v4ds[0].x, 8, -1.0 / 3.0);
  fillBytes(&o->_v3ucs[0].r, 6, 0);
  fillBytes(&o->_v4ucs[0].r, 8, 128);
  fill(o->_m44fs[0].data(), 32, 7.0f);
  fill(o->_m44ds[0].data(), 32, 1e6);
  hold(o->_v2fList, newList<zeVec2fList>(2, 0.25f));
  hold(o->_v3fList, newList<zeVec3fList>(3, -11.5f));
  hold(o->_v3ucList, newList<zeVec3ucList>(3, 17));
  hold(o->_v4fList, newList<zeVec4fList>(4, 1e5f));
  hold(o->_v4ucList, newList<zeVec4ucList>(4, 200));
  hold(o->_quatList, newList<zeQuaternionfList>(4, 0.125f));
  hold(o->_m44fList, newList<zeMatrix44fList>(16, -64.0f));
  hold(o->_v2fListList, newListList<zeVec2fListList>(2, 3.0f));
  hold(o->_v3fListList, newListList<zeVec3fListList>(3, -3.0f));
  hold(o->_v4fListList, newListList<zeVec4fListList>(4, 9.5f));
  hold(o->_quatListList, newListList<zeQuaternionfListList>(4, -0.5f));
  hold(o->_m44fListList, newListList<zeMatrix44fListList>(16, 2.0f));
}

AllMath* newAllMath() { return static_cast<AllMath*>(AllMath::_instantiateFromPool(nullptr)); }

bool isByteType(const zeMetaField* field) { return field->getAlignment() == 1; }

/// The lists of lists come last among the fields.
constexpr int kListLists = 5;

/// Whether two lists of lists hold alike lists in the same order.
bool sameLists(const zeObjectList* x, const zeObjectList* y) {
  if (!x || !y || x->getCount() != y->getCount()) return false;
  for (int i = 0; i < x->getCount(); ++i) {
    if (!x->get(i) || !x->get(i)->isAlikeTo(y->get(i), zeObject::kCopyDeep)) return false;
  }
  return true;
}

}  // namespace

TEST_F(MathRecord, NewObjectsTakeTheFieldDefaults) {
  AllMath* o = newAllMath();
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(o->_v3f[0], zeVec3f(1, 2, 3));
  EXPECT_EQ(o->_v3ds[0], zeVec3d(0, 0, 0));
  EXPECT_EQ(o->_v3ds[1], zeVec3d(4, 5, 6));
  EXPECT_EQ(AllMath::_Meta->getMetaField("_m44ds")->getSize(), 256u);
  o->release();
}

TEST_F(MathRecord, AnObjectSurvivesAByteSwappedRecordBitForBit) {
  AllMath* a = newAllMath();
  AllMath* b = newAllMath();
  ASSERT_TRUE(a && b);
  fillAll(a);
  // Bit patterns that only a bitwise copy keeps.
  a->_v4f[0].w = zetest::floatFromBits(0x7fc12345u);
  a->_m44ds[1][5] = -0.0;
  a->_quatList->data()[2].y = -0.0f;

  const unsigned int size = a->getRecordSize();
  ASSERT_GT(size, 0u);
  std::vector<unsigned char> swapped(size), native(size);
  ASSERT_EQ(a->writeRecord(swapped.data(), size, true), kSuccess);
  ASSERT_EQ(a->writeRecord(native.data(), size, false), kSuccess);
  EXPECT_NE(swapped, native);
  ASSERT_EQ(b->readRecord(swapped.data(), size, true), kSuccess);
  for (int i = 0; i < AllMath::kFields - kListLists; ++i) {
    const zeMetaField* field = AllMath::_Meta->getIndexedMetaField(i);
    EXPECT_TRUE(field->isAlike(a, b)) << field->getName();
  }
  // A list of lists compares its elements by address; its lists are compared here.
  EXPECT_TRUE(sameLists(a->_v2fListList, b->_v2fListList));
  EXPECT_TRUE(sameLists(a->_v3fListList, b->_v3fListList));
  EXPECT_TRUE(sameLists(a->_v4fListList, b->_v4fListList));
  EXPECT_TRUE(sameLists(a->_quatListList, b->_quatListList));
  EXPECT_TRUE(sameLists(a->_m44fListList, b->_m44fListList));

  for (int i = 0; i < AllMath::kValueFields; ++i) {
    const zeMetaField* field = AllMath::_Meta->getIndexedMetaField(i);
    EXPECT_EQ(std::memcmp(field->fieldMemory(a), field->fieldMemory(b), field->getSize()), 0) << field->getName();
  }
  ASSERT_TRUE(b->_quatList && b->_m44fListList);
  EXPECT_NE(b->_quatList, a->_quatList) << "read into a new list";
  EXPECT_EQ(std::memcmp(a->_quatList->data(), b->_quatList->data(), 3 * sizeof(zeQuaternionf)), 0);
  ASSERT_EQ(b->_m44fListList->getCount(), 2);
  EXPECT_EQ(std::memcmp(a->_m44fListList->get(1)->data(), b->_m44fListList->get(1)->data(), 3 * sizeof(zeMatrix44f)),
            0);
  a->release();
  b->release();
}

TEST_F(MathRecord, FieldsAndListsPrintParseAndPrintToTheSameText) {
  AllMath* a = newAllMath();
  AllMath* b = newAllMath();
  ASSERT_TRUE(a && b);
  fillAll(a);
  auto roundTrip = [](zeMetaField* field, const zeObject* from, zeObject* to, bool parses) {
    SCOPED_TRACE(field->getName());
    const char* printed = field->getByString(from, nullptr);
    ASSERT_NE(printed, nullptr);
    const int consumed = field->setByString(to, printed, nullptr);
    if (!parses) {
      EXPECT_EQ(consumed, 0) << "the letter c is not read back: " << printed;
    } else {
      EXPECT_EQ(consumed, static_cast<int>(std::strlen(printed)));
      const char* again = field->getByString(to, nullptr);
      EXPECT_STREQ(again, printed);
      zeInternalStringPool::releaseString(again);
    }
    zeInternalStringPool::releaseString(printed);
  };
  for (int i = 0; i < AllMath::kValueFields; ++i) {
    zeMetaField* field = AllMath::_Meta->getIndexedMetaField(i);
    roundTrip(field, a, b, !isByteType(field));
  }

  // A list's elements, through its "_data" field.
  zeVec3fList* points = static_cast<zeVec3fList*>(zeVec3fList::_instantiateFromPool(nullptr));
  roundTrip(zeVec3fList::k_data, a->_v3fList, points, true);
  EXPECT_EQ(points->getCount(), 3);
  zeMatrix44fList* matrices = static_cast<zeMatrix44fList*>(zeMatrix44fList::_instantiateFromPool(nullptr));
  roundTrip(zeMatrix44fList::k_data, a->_m44fList, matrices, true);
  EXPECT_EQ(matrices->getCount(), 3);
  zeVec4ucList* colours = static_cast<zeVec4ucList*>(zeVec4ucList::_instantiateFromPool(nullptr));
  roundTrip(zeVec4ucList::k_data, a->_v4ucList, colours, false);
  points->release();
  matrices->release();
  colours->release();
  a->release();
  b->release();
}
