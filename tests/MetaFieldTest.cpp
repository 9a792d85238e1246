// Field types of the vector and matrix values: registration, sizes and
// alignments, text forms, parsing and byte swaps.

#include <algorithm>
#include <array>
#include <cfloat>
#include <limits>
#include <string>
#include <vector>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using MetaField = zetest::CoreTest;

struct FieldType {
  const char* name;
  void (*bayRegister)();
  zeMetaObject* (*getClassMeta)();
  zeMetaField** shared;
  unsigned int size;
  unsigned int alignment;
  unsigned int word;  // bytes a byte swap reverses together
};

#define ZE_FIELD_TYPE(C, SIZE, ALIGNMENT, WORD) \
  { #C, &C::bayRegister, &C::getClassMeta, &C::_MetaField, SIZE, ALIGNMENT, WORD }
const FieldType kFieldTypes[] = {
    ZE_FIELD_TYPE(zeVec2fMetaField, 8, 16, 4),      ZE_FIELD_TYPE(zeVec3fMetaField, 12, 16, 4),
    ZE_FIELD_TYPE(zeVec4fMetaField, 16, 16, 4),     ZE_FIELD_TYPE(zeVec2dMetaField, 16, 8, 8),
    ZE_FIELD_TYPE(zeVec3dMetaField, 24, 8, 8),      ZE_FIELD_TYPE(zeVec4dMetaField, 32, 8, 8),
    ZE_FIELD_TYPE(zeVec3ucMetaField, 3, 1, 1),      ZE_FIELD_TYPE(zeVec4ucMetaField, 4, 1, 1),
    ZE_FIELD_TYPE(zeMatrix44fMetaField, 64, 16, 4), ZE_FIELD_TYPE(zeMatrix44dMetaField, 128, 8, 8),
};
#undef ZE_FIELD_TYPE

/// The shared instance of field type C, registered on demand.
template <class C>
zeMetaField* shared() {
  C::bayRegister();
  return C::_MetaField;
}

/// What field type C prints for `value`; the pooled text is released.
template <class C>
std::string print(const typename C::ValueType& value) {
  const char* pooled = shared<C>()->getStringFromMemory(&value, nullptr);
  EXPECT_EQ(zeInternalStringPool::getReferenceCount(pooled), 1u);
  std::string text = pooled ? pooled : "(null)";
  zeInternalStringPool::releaseString(pooled);
  return text;
}

/// The channels of a colour, for comparisons.
std::array<int, 4> channels(const zeVec4uc& c) { return {c.r, c.g, c.b, c.a}; }

const float kInf = std::numeric_limits<float>::infinity();
const double kInfD = std::numeric_limits<double>::infinity();

}  // namespace

TEST_F(MetaField, EachTypeRegistersOnceWithOneSharedInstanceItsSizeAndAlignment) {
  for (const FieldType& type : kFieldTypes) {
    SCOPED_TRACE(type.name);
    EXPECT_EQ(type.getClassMeta(), nullptr);
    type.bayRegister();
    zeMetaObject* meta = type.getClassMeta();
    ASSERT_NE(meta, nullptr);
    const int listed = zeMetaField::_MetaFieldList->getCount();
    zeMetaField* instance = *type.shared;
    type.bayRegister();
    EXPECT_EQ(type.getClassMeta(), meta);
    EXPECT_EQ(*type.shared, instance);
    EXPECT_EQ(zeMetaField::_MetaFieldList->getCount(), listed) << "appended once";
    EXPECT_EQ(zeMetaObject::find(type.name), meta);
    EXPECT_EQ(meta->getParent(), zeMetaField::getClassMeta());
    EXPECT_EQ(meta->getInstanceSize(), 88u);
    EXPECT_EQ(meta->getMetaFieldCount(), 0);
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(zeMetaField::_MetaFieldList->get(instance->getTypeIndex()), instance);
    EXPECT_EQ(instance->getGenericMetaField(), instance);
    // The alignment follows the type table, not the size.
    EXPECT_EQ(instance->getSize(), type.size);
    EXPECT_EQ(instance->getAlignment(), type.alignment);
  }
}

TEST_F(MetaField, FloatsPrintSixDecimalsDoublesSixSignificantDigitsBytesALetterC) {
  EXPECT_EQ(print<zeVec3fMetaField>(zeVec3f(1, 2.5f, -0.25f)), "1.000000,2.500000,-0.250000");
  EXPECT_EQ(print<zeVec2dMetaField>(zeVec2d(1e-7, 123456789)), "1e-07,1.23457e+08");
  // The exact binary value is printed, ties to even: 123456.7890625.
  EXPECT_EQ(print<zeVec2fMetaField>(zeVec2f(1.0f / 3.0f, 123456.789f)), "0.333333,123456.789062");
  EXPECT_EQ(print<zeVec4dMetaField>(zeVec4d(1.0 / 3.0, 2.0 / 3.0, 100000, 1000000)), "0.333333,0.666667,100000,1e+06");
  EXPECT_EQ(print<zeVec3dMetaField>(zeVec3d(-0.0, 0.0, -1e-300)), "-0,0,-1e-300");
  EXPECT_EQ(print<zeVec4fMetaField>(zeVec4f(-0.0f, 1e-7f, -1e-7f, FLT_MIN)), "-0.000000,0.000000,-0.000000,0.000000");
  EXPECT_EQ(print<zeVec2fMetaField>(zeVec2f(FLT_MAX, -16777217.0f)),
            "340282346638528859811704183484516925440.000000,-16777216.000000");
  EXPECT_EQ(print<zeVec3dMetaField>(zeVec3d(DBL_MAX, DBL_MIN, 4.9406564584124654e-324)),
            "1.79769e+308,2.22507e-308,4.94066e-324");
  EXPECT_EQ(print<zeVec4fMetaField>(zeVec4f(zetest::kNaNf, -zetest::kNaNf, kInf, -kInf)), "nan,-nan,inf,-inf");
  EXPECT_EQ(print<zeVec4dMetaField>(zeVec4d(zetest::kNaNd, -zetest::kNaNd, kInfD, -kInfD)), "nan,-nan,inf,-inf");
  // Byte vectors: a letter c after each channel.
  EXPECT_EQ(print<zeVec4ucMetaField>(zeVec4uc(0, 0, 0, 0)), "0c,0c,0c,0c");
  EXPECT_EQ(print<zeVec4ucMetaField>(zeVec4uc(255, 0, 128, 255)), "255c,0c,128c,255c");
  EXPECT_EQ(print<zeVec3ucMetaField>(zeVec3uc(7, 200, 255)), "7c,200c,255c");
}

TEST_F(MetaField, MatricesPrintRowByRowBetweenLineFeeds) {
  EXPECT_EQ(print<zeMatrix44fMetaField>(zeMatrix44f::identityMatrix),
            "\n1.000000,0.000000,0.000000,0.000000,\n0.000000,1.000000,0.000000,0.000000,\n"
            "0.000000,0.000000,1.000000,0.000000,\n0.000000,0.000000,0.000000,1.000000\n");
  zeMatrix44d m;
  for (int i = 0; i < 16; ++i) m[i] = i + 0.5;
  EXPECT_EQ(print<zeMatrix44dMetaField>(m),
            "\n0.5,1.5,2.5,3.5,\n4.5,5.5,6.5,7.5,\n8.5,9.5,10.5,11.5,\n12.5,13.5,14.5,15.5\n");
  // The longest text there is still fits whole.
  std::string row = "-340282346638528859811704183484516925440.000000";
  row = row + "," + row + "," + row + "," + row;
  zeMatrix44f lowest;
  for (int i = 0; i < 16; ++i) lowest[i] = -FLT_MAX;
  EXPECT_EQ(print<zeMatrix44fMetaField>(lowest), "\n" + row + ",\n" + row + ",\n" + row + ",\n" + row + "\n");

  // Equal texts share one pooled copy.
  const char* a = shared<zeMatrix44dMetaField>()->getStringFromMemory(&m, nullptr);
  const char* b = shared<zeMatrix44dMetaField>()->getStringFromMemory(&m, nullptr);
  EXPECT_EQ(a, b);
  EXPECT_EQ(zeInternalStringPool::getReferenceCount(a), 2u);
  zeInternalStringPool::releaseString(a);
  zeInternalStringPool::releaseString(b);
}

TEST_F(MetaField, ParsingTakesTheTypesCountWidthAndMode) {
  zeVec3f v3(9, 9, 9);
  EXPECT_EQ(shared<zeVec3fMetaField>()->setMemoryByString(&v3, "1,2.5,-0.25 tail", nullptr), 12);
  EXPECT_EQ(v3, zeVec3f(1, 2.5f, -0.25f));

  zeVec2d v2;
  EXPECT_EQ(shared<zeVec2dMetaField>()->setMemoryByString(&v2, "1e-07,1.23457e+08", nullptr), 17);
  EXPECT_EQ(v2, zeVec2d(1e-07, 123457000.0));

  zeVec4uc c(9, 9, 9, 9);
  EXPECT_EQ(shared<zeVec4ucMetaField>()->setMemoryByString(&c, "[256 -1 7 300]", nullptr), 14);
  EXPECT_EQ(channels(c), (std::array<int, 4>{0, 255, 7, 44})) << "integers cut to 8 bits";
  EXPECT_EQ(shared<zeVec4ucMetaField>()->setMemoryByString(&c, "1.5,2,3,4", nullptr), 0) << "no point in integer mode";

  zeMatrix44d m = zeMatrix44d::zeroMatrix;
  EXPECT_EQ(shared<zeMatrix44dMetaField>()->setMemoryByString(&m, "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15", nullptr),
            37);
  for (int i = 0; i < 16; ++i) EXPECT_BITEQ(static_cast<double>(i), m[i]);
}

TEST_F(MetaField, RefusedTextKeepsTheComponentsConvertedBeforeIt) {
  zeVec4f v(9, 9, 9, 9);
  EXPECT_EQ(shared<zeVec4fMetaField>()->setMemoryByString(&v, "1,2,nan,4", nullptr), 0);
  EXPECT_EQ(v, zeVec4f(1, 2, 9, 9));
  EXPECT_EQ(shared<zeVec4fMetaField>()->setMemoryByString(&v, "inf,0,0,0", nullptr), 0);
  zeVec4uc c(9, 9, 9, 9);
  EXPECT_EQ(shared<zeVec4ucMetaField>()->setMemoryByString(&c, "0c,0c,0c,0c", nullptr), 0) << "c is no separator";
  EXPECT_EQ(channels(c), (std::array<int, 4>{0, 9, 9, 9}));
}

TEST_F(MetaField, ByteSwapsReverseEachComponentOfCountValues) {
  for (const FieldType& type : kFieldTypes) {
    SCOPED_TRACE(type.name);
    type.bayRegister();
    // Five values then eight bytes that must stay as they are; byte vectors have no byte order.
    std::vector<unsigned char> memory(5 * type.size + 8);
    for (std::size_t i = 0; i < memory.size(); ++i) memory[i] = static_cast<unsigned char>(i);
    std::vector<unsigned char> expected = memory;
    for (auto w = expected.begin(); w < expected.begin() + 5 * type.size; w += type.word)
      std::reverse(w, w + type.word);
    (*type.shared)->endianSwapMemory(memory.data(), 5);
    EXPECT_EQ(memory, expected);
  }
}
