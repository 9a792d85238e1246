// Field types of the vector and matrix values: registration, sizes and
// alignments, text forms, parsing, byte swaps and defaults.

#include <array>
#include <cfloat>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

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
};

#define ZE_FIELD_TYPE(C, SIZE, ALIGNMENT) \
  { #C, &C::bayRegister, &C::getClassMeta, &C::_MetaField, SIZE, ALIGNMENT }
const FieldType kFieldTypes[] = {
    ZE_FIELD_TYPE(zeVec2fMetaField, 8, 16),      ZE_FIELD_TYPE(zeVec3fMetaField, 12, 16),
    ZE_FIELD_TYPE(zeVec4fMetaField, 16, 16),     ZE_FIELD_TYPE(zeVec2dMetaField, 16, 8),
    ZE_FIELD_TYPE(zeVec3dMetaField, 24, 8),      ZE_FIELD_TYPE(zeVec4dMetaField, 32, 8),
    ZE_FIELD_TYPE(zeVec3ucMetaField, 3, 1),      ZE_FIELD_TYPE(zeVec4ucMetaField, 4, 1),
    ZE_FIELD_TYPE(zeMatrix44fMetaField, 64, 16), ZE_FIELD_TYPE(zeMatrix44dMetaField, 128, 8),
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

const float kInf = std::numeric_limits<float>::infinity();
const double kInfD = std::numeric_limits<double>::infinity();

/// The channels of a colour, for comparisons.
std::array<int, 4> channels(const zeVec4uc& c) { return {c.r, c.g, c.b, c.a}; }

zeMatrix44f floatMatrixOf(float v) {
  zeMatrix44f m;
  for (int i = 0; i < 16; ++i) m[i] = v;
  return m;
}

}  // namespace

TEST_F(MetaField, EachTypeRegistersOnceUnderItsNameWithOneSharedInstance) {
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
    EXPECT_STREQ(meta->getName(), type.name);
    EXPECT_EQ(meta->getParent(), zeMetaField::getClassMeta());
    EXPECT_EQ(meta->getInstanceSize(), 88u);
    EXPECT_EQ(meta->getMetaFieldCount(), 0);
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(zeMetaField::_MetaFieldList->get(instance->getTypeIndex()), instance);
    EXPECT_EQ(instance->getGenericMetaField(), instance);
  }
}

TEST_F(MetaField, SizesAndAlignmentsFollowTheTypeTableNotTheSizes) {
  for (const FieldType& type : kFieldTypes) {
    SCOPED_TRACE(type.name);
    type.bayRegister();
    zeMetaField* field = *type.shared;
    EXPECT_EQ(field->computeSize(), type.size);
    EXPECT_EQ(field->getSize(), type.size);
    EXPECT_EQ(field->computeRequiredAlignment(), type.alignment);
    EXPECT_EQ(field->getAlignment(), type.alignment);
  }
}

TEST_F(MetaField, FloatTypesPrintSixDecimalsDoubleTypesSixSignificantDigits) {
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
}

TEST_F(MetaField, ByteVectorsPrintALetterCAfterEachChannel) {
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
  EXPECT_EQ(print<zeMatrix44fMetaField>(floatMatrixOf(-FLT_MAX)),
            "\n" + row + ",\n" + row + ",\n" + row + ",\n" + row + "\n");
}

TEST_F(MetaField, PrintedTextIsPooledAndShared) {
  const zeVec3f v(1, 2, 3);
  const char* a = shared<zeVec3fMetaField>()->getStringFromMemory(&v, nullptr);
  const char* b = shared<zeVec3fMetaField>()->getStringFromMemory(&v, nullptr);
  EXPECT_EQ(a, b);
  EXPECT_EQ(zeInternalStringPool::getReferenceCount(a), 2u);
  zeInternalStringPool::releaseString(a);
  zeInternalStringPool::releaseString(b);
}

TEST_F(MetaField, ParsingTakesTheTypesCountWidthAndMode) {
  zeVec3f v3(9, 9, 9);
  EXPECT_EQ(shared<zeVec3fMetaField>()->setMemoryByString(&v3, "1,2.5,-0.25 tail", nullptr), 12);
  EXPECT_BITEQ(1.0f, v3.x);
  EXPECT_BITEQ(2.5f, v3.y);
  EXPECT_BITEQ(-0.25f, v3.z);

  zeVec2d v2;
  EXPECT_EQ(shared<zeVec2dMetaField>()->setMemoryByString(&v2, "1e-07,1.23457e+08", nullptr), 17);
  EXPECT_BITEQ(1e-07, v2.x);
  EXPECT_BITEQ(123457000.0, v2.y);

  zeVec4uc c(9, 9, 9, 9);
  EXPECT_EQ(shared<zeVec4ucMetaField>()->setMemoryByString(&c, "[256 -1 7 300]", nullptr), 14);
  EXPECT_EQ(channels(c), channels(zeVec4uc(0, 255, 7, 44))) << "integers cut to 8 bits";
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
  EXPECT_EQ(channels(c), channels(zeVec4uc(0, 9, 9, 9)));
}

TEST_F(MetaField, FiniteValuesPrintParseAndPrintToTheSameText) {
  auto roundTrip = [](zeMetaField* field, const void* value, void* scratch) {
    const char* first = field->getStringFromMemory(value, nullptr);
    EXPECT_EQ(field->setMemoryByString(scratch, first, nullptr), static_cast<int>(std::strlen(first)));
    const char* second = field->getStringFromMemory(scratch, nullptr);
    EXPECT_STREQ(first, second);
    zeInternalStringPool::releaseString(first);
    zeInternalStringPool::releaseString(second);
  };
  const zeVec2f v2f(1.0f / 3.0f, -123456.789f);
  const zeVec3f v3f(-0.0f, FLT_MAX, 7.1e-7f);
  const zeVec4f v4f(16777.217f, 1e-7f, -2.5f, 0.1f);
  const zeVec2d v2d(1.0 / 3.0, -DBL_MAX);
  const zeVec3d v3d(-0.0, 5e-324, 123456789.0);
  const zeVec4d v4d(0.1, 0.2, 0.3, -1e100);
  zeMatrix44f mf;
  zeMatrix44d md;
  for (int i = 0; i < 16; ++i) {
    mf[i] = (i - 7.3f) * 1000.1f;
    md[i] = (i - 7.3) / 3.0;
  }
  unsigned char scratch[128];
  roundTrip(shared<zeVec2fMetaField>(), &v2f, scratch);
  roundTrip(shared<zeVec3fMetaField>(), &v3f, scratch);
  roundTrip(shared<zeVec4fMetaField>(), &v4f, scratch);
  roundTrip(shared<zeVec2dMetaField>(), &v2d, scratch);
  roundTrip(shared<zeVec3dMetaField>(), &v3d, scratch);
  roundTrip(shared<zeVec4dMetaField>(), &v4d, scratch);
  roundTrip(shared<zeMatrix44fMetaField>(), &mf, scratch);
  roundTrip(shared<zeMatrix44dMetaField>(), &md, scratch);
}

TEST_F(MetaField, ByteSwapsReverseEachComponentOfCountValues) {
  // Two zeVec3d: six 8-byte words swapped, the word behind them untouched.
  std::uint64_t d[7] = {1, 2, 3, 4, 5, 6, 7};
  shared<zeVec3dMetaField>()->endianSwapMemory(d, 2);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(d[i], __builtin_bswap64(static_cast<std::uint64_t>(i + 1)));
  EXPECT_EQ(d[6], 7u);

  // Five zeVec3f: fifteen float words.
  std::uint32_t f[16];
  for (int i = 0; i < 16; ++i) f[i] = 0x01020300u + static_cast<std::uint32_t>(i);
  shared<zeVec3fMetaField>()->endianSwapMemory(f, 5);
  for (int i = 0; i < 15; ++i) EXPECT_EQ(f[i], __builtin_bswap32(0x01020300u + static_cast<std::uint32_t>(i)));
  EXPECT_EQ(f[15], 0x0102030Fu);

  // A matrix of each precision swaps its sixteen words; swapping twice restores it.
  zeMatrix44f mf = floatMatrixOf(1.5f);
  shared<zeMatrix44fMetaField>()->endianSwapMemory(&mf, 1);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(zetest::bitsOf(mf[i]), __builtin_bswap32(zetest::bitsOf(1.5f)));
  shared<zeMatrix44fMetaField>()->endianSwapMemory(&mf, 1);
  EXPECT_EQ(mf, floatMatrixOf(1.5f));
  zeMatrix44d md = zeMatrix44d::identityMatrix;
  shared<zeMatrix44dMetaField>()->endianSwapMemory(&md, 1);
  EXPECT_EQ(zetest::bitsOf(md[15]), __builtin_bswap64(zetest::bitsOf(1.0)));
  EXPECT_EQ(zetest::bitsOf(md[14]), 0u);

  // Bytes have no byte order.
  zeVec4uc c[2] = {zeVec4uc(1, 2, 3, 4), zeVec4uc(5, 6, 7, 8)};
  shared<zeVec4ucMetaField>()->endianSwapMemory(c, 2);
  EXPECT_EQ(channels(c[0]), channels(zeVec4uc(1, 2, 3, 4)));
  EXPECT_EQ(channels(c[1]), channels(zeVec4uc(5, 6, 7, 8)));
}

TEST_F(MetaField, SetDefaultCopiesTheValueIntoTheDefaultMemory) {
  auto* field = static_cast<zeVec4dMetaField*>(zeVec4dMetaField::_instantiateFromPool(nullptr));
  ASSERT_NE(field, nullptr);
  const zeVec4d value(1, -2, 3.25, -0.0);
  field->setDefault(value);
  ASSERT_NE(field->getDefaultMemory(), nullptr);
  EXPECT_EQ(std::memcmp(field->getDefaultMemory(), &value, sizeof value), 0);
  field->release();
}
