// Field types of fixed-length arrays of vectors and matrices: registration
// with "_num", sizes, byte swaps and defaults.

#include <cstdint>
#include <cstring>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using MetaFieldArray = zetest::CoreTest;

struct ArrayType {
  const char* name;
  void (*bayRegister)();
  zeMetaObject* (*getClassMeta)();
  zeMetaField** shared;
  zeMetaField** numSlot;
  zeMetaObject* (*elementClassMeta)();
  zeMetaField** elementShared;
  unsigned int elementSize;
};

#define ZE_ARRAY_TYPE(C, E, SIZE) \
  { #C, &C::bayRegister, &C::getClassMeta, &C::_MetaField, &C::k_num, &E::getClassMeta, &E::_MetaField, SIZE }
const ArrayType kArrayTypes[] = {
    ZE_ARRAY_TYPE(zeVec2fArrayMetaField, zeVec2fMetaField, 8),
    ZE_ARRAY_TYPE(zeVec3fArrayMetaField, zeVec3fMetaField, 12),
    ZE_ARRAY_TYPE(zeVec4fArrayMetaField, zeVec4fMetaField, 16),
    ZE_ARRAY_TYPE(zeVec2dArrayMetaField, zeVec2dMetaField, 16),
    ZE_ARRAY_TYPE(zeVec3dArrayMetaField, zeVec3dMetaField, 24),
    ZE_ARRAY_TYPE(zeVec4dArrayMetaField, zeVec4dMetaField, 32),
    ZE_ARRAY_TYPE(zeVec3ucArrayMetaField, zeVec3ucMetaField, 3),
    ZE_ARRAY_TYPE(zeVec4ucArrayMetaField, zeVec4ucMetaField, 4),
    ZE_ARRAY_TYPE(zeMatrix44fArrayMetaField, zeMatrix44fMetaField, 64),
    ZE_ARRAY_TYPE(zeMatrix44dArrayMetaField, zeMatrix44dMetaField, 128),
};
#undef ZE_ARRAY_TYPE

/// A fresh array field descriptor of type C holding `num` elements.
template <class C>
C* newArrayField(int num) {
  C* field = static_cast<C*>(C::_instantiateFromPool(nullptr));
  if (field) field->_num = num;
  return field;
}

}  // namespace

TEST_F(MetaFieldArray, EachTypeRegistersWithItsElementTypeAndANumField) {
  for (const ArrayType& type : kArrayTypes) {
    SCOPED_TRACE(type.name);
    EXPECT_EQ(type.getClassMeta(), nullptr);
    type.bayRegister();
    const int listed = zeMetaField::_MetaFieldList->getCount();
    type.bayRegister();
    EXPECT_EQ(zeMetaField::_MetaFieldList->getCount(), listed) << "one shared instance";
    zeMetaObject* meta = type.getClassMeta();
    ASSERT_NE(meta, nullptr);
    EXPECT_STREQ(meta->getName(), type.name);
    EXPECT_EQ(meta->getParent(), type.elementClassMeta()) << "registered with the element type as parent";
    EXPECT_EQ(meta->getInstanceSize(), 96u);

    ASSERT_EQ(meta->getMetaFieldCount(), 1);
    zeMetaField* num = meta->getMetaField("_num");
    ASSERT_NE(num, nullptr);
    EXPECT_EQ(*type.numSlot, num);
    EXPECT_EQ(num->getOffset(), 88);
    EXPECT_EQ(num->getTypeIndex(), zeIntMetaField::_MetaField->getTypeIndex());
    int defaultNum = 0;
    std::memcpy(&defaultNum, num->getDefaultMemory(), sizeof defaultNum);
    EXPECT_EQ(defaultNum, 1);

    zeMetaField* shared = *type.shared;
    ASSERT_NE(shared, nullptr);
    EXPECT_NE(shared, *type.elementShared);
    EXPECT_EQ(shared->getGenericMetaField(), shared);
    EXPECT_EQ(zeMetaField::_MetaFieldList->get(shared->getTypeIndex()), shared);
    EXPECT_EQ(shared->getSize(), type.elementSize) << "the shared instance holds one element";
    EXPECT_EQ(shared->getAlignment(), (*type.elementShared)->getAlignment());
  }
}

TEST_F(MetaFieldArray, SizeIsNumElementsAndPrintingStaysPerElement) {
  zeVec3fArrayMetaField* v = newArrayField<zeVec3fArrayMetaField>(4);
  zeMatrix44fArrayMetaField* m = newArrayField<zeMatrix44fArrayMetaField>(3);
  zeVec4ucArrayMetaField* c = newArrayField<zeVec4ucArrayMetaField>(0);
  ASSERT_TRUE(v && m && c);
  EXPECT_EQ(v->computeSize(), 48u);
  EXPECT_EQ(m->computeSize(), 192u);
  EXPECT_EQ(c->computeSize(), 0u);
  v->validate();
  EXPECT_EQ(v->getSize(), 48u);
  EXPECT_EQ(v->getAlignment(), 16u);

  const zeVec3f element(1, 2.5f, -0.25f);
  const char* text = v->getStringFromMemory(&element, nullptr);
  EXPECT_STREQ(text, "1.000000,2.500000,-0.250000");
  zeInternalStringPool::releaseString(text);
  v->release();
  m->release();
  c->release();
}

TEST_F(MetaFieldArray, ByteSwapsReverseCountTimesNumElements) {
  zeVec3fArrayMetaField* v = newArrayField<zeVec3fArrayMetaField>(3);
  std::uint32_t f[19];
  for (int i = 0; i < 19; ++i) f[i] = 0x0A0B0C00u + static_cast<std::uint32_t>(i);
  v->endianSwapMemory(f, 2);  // two arrays of three zeVec3f: eighteen words
  for (int i = 0; i < 18; ++i) EXPECT_EQ(f[i], __builtin_bswap32(0x0A0B0C00u + static_cast<std::uint32_t>(i)));
  EXPECT_EQ(f[18], 0x0A0B0C12u);

  zeMatrix44dArrayMetaField* m = newArrayField<zeMatrix44dArrayMetaField>(2);
  std::uint64_t d[33];
  for (int i = 0; i < 33; ++i) d[i] = static_cast<std::uint64_t>(i) << 8;
  m->endianSwapMemory(d, 1);
  for (int i = 0; i < 32; ++i) EXPECT_EQ(d[i], __builtin_bswap64(static_cast<std::uint64_t>(i) << 8));
  EXPECT_EQ(d[32], 32u << 8);

  zeVec4ucArrayMetaField* c = newArrayField<zeVec4ucArrayMetaField>(2);
  unsigned char bytes[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  c->endianSwapMemory(bytes, 1);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(bytes[i], i + 1);
  v->release();
  m->release();
  c->release();
}

TEST_F(MetaFieldArray, SetDefaultWritesOneElementOfTheDefaultMemory) {
  zeVec2dArrayMetaField* field = newArrayField<zeVec2dArrayMetaField>(3);
  ASSERT_NE(field, nullptr);
  field->setDefault(1, zeVec2d(-1.5, 2.25));
  field->setDefault(3, zeVec2d(9, 9));  // past _num: outside the default memory
  ASSERT_NE(field->getDefaultMemory(), nullptr);
  zeVec2d defaults[3];
  std::memcpy(defaults, field->getDefaultMemory(), sizeof defaults);
  EXPECT_EQ(defaults[0], zeVec2d(0, 0));
  EXPECT_EQ(defaults[1], zeVec2d(-1.5, 2.25));
  EXPECT_EQ(defaults[2], zeVec2d(0, 0));
  field->release();
}
