// An object with a field of every math type, a two-element array field of
// every type and a list of every kind: written and read back byte-swapped
// through the object's record, and printed and parsed field by field.

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/CoreHelpers.h"

using namespace Lux;
using namespace Lux::Math;

// Not in an anonymous namespace: the registration statics are defined whether
// a test uses the class or not.
namespace records {

// The value and array fields: value type, member, field type, elements, and
// the first component test values start from.
#define ZE_ALL_MATH_FIELDS(X)                               \
  X(zeVec2f, _v2f, zeVec2fMetaField, 1, 1.0 / 3.0)          \
  X(zeVec3f, _v3f, zeVec3fMetaField, 1, -1234.5678)         \
  X(zeVec4f, _v4f, zeVec4fMetaField, 1, 1e-3)               \
  X(zeVec2d, _v2d, zeVec2dMetaField, 1, 1.0 / 7.0)          \
  X(zeVec3d, _v3d, zeVec3dMetaField, 1, -2.5e10)            \
  X(zeVec4d, _v4d, zeVec4dMetaField, 1, 3.0)                \
  X(zeVec3uc, _v3uc, zeVec3ucMetaField, 1, 5)               \
  X(zeVec4uc, _v4uc, zeVec4ucMetaField, 1, 250)             \
  X(zeMatrix44f, _m44f, zeMatrix44fMetaField, 1, 100.125)   \
  X(zeMatrix44d, _m44d, zeMatrix44dMetaField, 1, -0.001)    \
  X(zeVec2f, _v2fs, zeVec2fArrayMetaField, 2, 0.5)          \
  X(zeVec3f, _v3fs, zeVec3fArrayMetaField, 2, 65536.25)     \
  X(zeVec4f, _v4fs, zeVec4fArrayMetaField, 2, -3.0)         \
  X(zeVec2d, _v2ds, zeVec2dArrayMetaField, 2, 1e-5)         \
  X(zeVec3d, _v3ds, zeVec3dArrayMetaField, 2, 42.0)         \
  X(zeVec4d, _v4ds, zeVec4dArrayMetaField, 2, -1.0 / 3.0)   \
  X(zeVec3uc, _v3ucs, zeVec3ucArrayMetaField, 2, 0)         \
  X(zeVec4uc, _v4ucs, zeVec4ucArrayMetaField, 2, 128)       \
  X(zeMatrix44f, _m44fs, zeMatrix44fArrayMetaField, 2, 7.0) \
  X(zeMatrix44d, _m44ds, zeMatrix44dArrayMetaField, 2, 1e6)

// The lists, held by counted references: list class, member, first component.
#define ZE_ALL_MATH_LISTS(X)                    \
  X(zeVec2fList, _v2fList, 0.25)                \
  X(zeVec3fList, _v3fList, -11.5)               \
  X(zeVec3ucList, _v3ucList, 17)                \
  X(zeVec4fList, _v4fList, 1e5)                 \
  X(zeVec4ucList, _v4ucList, 200)               \
  X(zeQuaternionfList, _quatList, 0.125)        \
  X(zeMatrix44fList, _m44fList, -64.0)          \
  X(zeVec2fListList, _v2fListList, 3.0)         \
  X(zeVec3fListList, _v3fListList, -3.0)        \
  X(zeVec4fListList, _v4fListList, 9.5)         \
  X(zeQuaternionfListList, _quatListList, -0.5) \
  X(zeMatrix44fListList, _m44fListList, 2.0)

class AllMath : public zeObject {
  ZE_DECLARE_CLASS(, AllMath)

 public:
#define ZE_MEMBER(T, NAME, FIELD, N, START) T NAME[N];
  ZE_ALL_MATH_FIELDS(ZE_MEMBER)
#undef ZE_MEMBER
#define ZE_MEMBER(L, NAME, START) L* NAME;
  ZE_ALL_MATH_LISTS(ZE_MEMBER)
#undef ZE_MEMBER

  static constexpr int kValueFields = 20;
  static constexpr int kFields = 32;
  static void bayRegisterInitialize();
};

// Before validation each array's "_num" is set through its own descriptor;
// the lists are compared by their elements, not by address.
void prepareFields(zeMetaObject* meta, int first) {
#define ZE_NUM(T, NAME, FIELD, N, START) N,
  static const int nums[AllMath::kValueFields] = {ZE_ALL_MATH_FIELDS(ZE_NUM)};
#undef ZE_NUM
  for (int i = 0; i < AllMath::kFields; ++i) {
    zeMetaField* field = meta->getIndexedMetaField(first + i);
    if (i >= AllMath::kValueFields) {
      field->setCompareMethod(zeMetaField::kCompareDeep);
    } else if (nums[i] > 1) {
      field->getMetaObject()->getMetaField("_num")->setFromMemory(field, &nums[i]);
    }
  }
}

void AllMath::bayRegisterInitialize() {
#define ZE_FIELD(T, NAME, FIELD, N, START) {&FIELD::_instantiateFromPool, #NAME, nullptr, offsetof(AllMath, NAME)},
#define ZE_LIST(L, NAME, START) \
  {&zeObjectReferenceMetaField::_instantiateFromPool, #NAME, nullptr, offsetof(AllMath, NAME)},
  zetest::declareFields(_Meta, {ZE_ALL_MATH_FIELDS(ZE_FIELD) ZE_ALL_MATH_LISTS(ZE_LIST)}, &prepareFields);
#undef ZE_FIELD
#undef ZE_LIST
  static_cast<zeVec3fMetaField*>(_Meta->getMetaField("_v3f"))->setDefault(zeVec3f(1, 2, 3));
  static_cast<zeVec3dArrayMetaField*>(_Meta->getMetaField("_v3ds"))->setDefault(1, zeVec3d(4, 5, 6));
}

ZE_IMPLEMENT_CLASS(AllMath, zeObject, zeNoLibraryInit, &AllMath::bayRegisterInitialize, nullptr)

}  // namespace records

using records::AllMath;

namespace {

using MathRecord = zetest::CoreTest;

/// Fills the components of `n` values from `start` on, in steps that are not
/// powers of two (byte channels in steps of 41, wrapping).
template <class T>
void fillValues(T* values, int n, double start) {
  using C = std::remove_reference_t<decltype(std::declval<T&>()[0])>;
  C* components = &values[0][0];
  for (int i = 0; i < n * static_cast<int>(sizeof(T) / sizeof(C)); ++i) {
    if constexpr (std::is_integral_v<C>) {
      components[i] = static_cast<C>(static_cast<int>(start) + 41 * i);
    } else {
      components[i] = static_cast<C>(start + i * -7.375);
    }
  }
}

/// A new list of class L: three filled values, or for a list of lists two
/// such lists.
template <class L>
L* newList(double start) {
  L* list = static_cast<L*>(L::_instantiateFromPool(nullptr));
  if constexpr (std::is_base_of_v<zeObjectList, L>) {
    using Element = std::remove_pointer_t<decltype(list->get(0))>;
    for (int i = 0; i < 2; ++i) {
      Element* element = newList<Element>(start + i);
      list->append(element);
      element->release();
    }
  } else {
    list->resize(3);
    fillValues(list->data(), 3, start);
  }
  return list;
}

/// Finite values in every field and list.
void fillAll(AllMath* o) {
#define ZE_FILL(T, NAME, FIELD, N, START) fillValues(o->NAME, N, START);
#define ZE_FILL_LIST(L, NAME, START)                                      \
  zeObjectReferenceMetaField::setReferenced(&o->NAME, newList<L>(START)); \
  o->NAME->release();
  ZE_ALL_MATH_FIELDS(ZE_FILL)
  ZE_ALL_MATH_LISTS(ZE_FILL_LIST)
#undef ZE_FILL
#undef ZE_FILL_LIST
}

/// Prints `field` of `from`, parses the text into `to` and prints that again.
void roundTrip(zeMetaField* field, const zeObject* from, zeObject* to, bool parses) {
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
}

}  // namespace

TEST_F(MathRecord, NewObjectsTakeTheFieldDefaults) {
  zeSmartPointer<AllMath> o = zetest::make<AllMath>();
  ASSERT_TRUE(o);
  EXPECT_EQ(o->_v3f[0], zeVec3f(1, 2, 3));
  EXPECT_EQ(o->_v3ds[0], zeVec3d(0, 0, 0));
  EXPECT_EQ(o->_v3ds[1], zeVec3d(4, 5, 6));
  EXPECT_EQ(AllMath::_Meta->getMetaField("_m44ds")->getSize(), 256u);
}

TEST_F(MathRecord, AnObjectSurvivesAByteSwappedRecordBitForBit) {
  zeSmartPointer<AllMath> a = zetest::make<AllMath>();
  zeSmartPointer<AllMath> b = zetest::make<AllMath>();
  fillAll(a.get());
  // Bit patterns that only a bitwise copy keeps.
  a->_v4f[0].w = zetest::floatFromBits(0x7fc12345u);
  a->_m44ds[1][5] = -0.0;
  a->_quatList->data()[2].y = -0.0f;

  const std::vector<unsigned char> swapped = zetest::recordOf(a.get(), true);
  ASSERT_GT(swapped.size(), 0u);
  EXPECT_NE(swapped, zetest::recordOf(a.get(), false));
  ASSERT_EQ(zetest::readRecord(b.get(), swapped, true), kSuccess);
  // Every field compares bytes; a list of lists compares its lists here, not their addresses.
  zeObjectList::k_data->setCompareMethod(zeMetaField::kCompareDeep);
  for (int i = 0; i < AllMath::kFields; ++i) {
    const zeMetaField* field = AllMath::_Meta->getIndexedMetaField(i);
    EXPECT_TRUE(field->isAlike(a.get(), b.get())) << field->getName();
  }
  EXPECT_NE(b->_m44fListList->get(1), a->_m44fListList->get(1)) << "read into new lists";
}

TEST_F(MathRecord, FieldsAndListsPrintParseAndPrintToTheSameText) {
  zeSmartPointer<AllMath> a = zetest::make<AllMath>();
  zeSmartPointer<AllMath> b = zetest::make<AllMath>();
  fillAll(a.get());
  for (int i = 0; i < AllMath::kValueFields; ++i) {
    zeMetaField* field = AllMath::_Meta->getIndexedMetaField(i);
    roundTrip(field, a.get(), b.get(), field->getAlignment() != 1);  // byte vectors print a letter c
  }
  // A list's elements, through its "_data" field.
  roundTrip(zeVec3fList::k_data, a->_v3fList, zetest::make<zeVec3fList>().get(), true);
  roundTrip(zeMatrix44fList::k_data, a->_m44fList, zetest::make<zeMatrix44fList>().get(), true);
  roundTrip(zeVec4ucList::k_data, a->_v4ucList, zetest::make<zeVec4ucList>().get(), false);
}
