#pragma once

/// \file
/// What the field types of fixed-length arrays of vectors and matrices
/// share. An array field type derives from the field type E of its element
/// and adds one reflected field, "_num", the number of elements; it keeps
/// E's alignment and E's per-value print and parse.

#include <cstddef>
#include <cstring>

#include "core/zeIntMetaField.h"
#include "core/zeMetaObject.h"
#include "math/ZEMathExport.h"
#include "math/meta/zeMathClassRegistration.h"

namespace Lux {
namespace Math {
namespace impl {

/// Base of the field type of arrays of E's values.
template <class E>
class ZEMATH_API ArrayMetaField : public E {
 public:
  using ElementField = E;                   ///< The field type of one element.
  using ValueType = typename E::ValueType;  ///< The value type of one element.

  /// Byte offset of "_num" in every array field instance (right after the
  /// descriptor's base).
  static constexpr int kNumOffset = 88;
  /// Bytes of every array field instance.
  static constexpr unsigned int kInstanceBytes = 96;

  /// Number of elements in the field; 1 unless set.
  int _num;

  /// Element `index` of the default value becomes a copy of `value`; the
  /// default memory is made first if the field has none. An index at or past
  /// `_num` lies outside that memory and is ignored.
  void setDefault(unsigned int index, const ValueType& value) {
    this->setDefaultMemory(nullptr);
    // The descriptor owns its default memory; only its accessor is const.
    void* defaults = const_cast<void*>(this->getDefaultMemory());
    if (!defaults || static_cast<long long>(index) >= _num) return;
    std::memcpy(static_cast<char*>(defaults) + index * sizeof(ValueType), &value, sizeof(ValueType));
  }

  /// `_num` elements.
  unsigned int computeSize() override {
    return static_cast<unsigned int>(_num) * static_cast<unsigned int>(sizeof(ValueType));
  }

  /// Reverses the byte order of `count` arrays: `count * _num` elements
  /// through the element type's shared descriptor (nothing for bytes).
  void endianSwapMemory(void* memory, int count) const override {
    if (!E::_MetaField) E::bayRegister();
    if (E::_MetaField) E::_MetaField->endianSwapMemory(memory, count * _num);
  }

 protected:
  /// Declares "_num" on the array class `meta`: an int field at byte 88 with
  /// default 1, published through `slot`.
  static void declareNumField(zeMetaObject* meta, zeMetaField** slot) {
    static_assert(offsetof(ArrayMetaField, _num) == kNumOffset, "_num follows the descriptor's base");
    const int first = meta->getMetaFieldCount();
    zeMetaObject::FieldInstantiateFunction make[] = {&zeIntMetaField::_instantiateFromPool};
    meta->instantiateAndAppendFields(make, 1);
    zeMetaField* num = meta->getIndexedMetaField(first);
    if (!num) return;
    static_cast<zeIntMetaField*>(num)->setDefault(1);
    static const char* const names[] = {"_num"};
    zeMetaField** slots[] = {slot};
    int offsets[] = {kNumOffset};
    meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
  }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux

/// Registration statics of array field class C, with the slot of "_num".
#define ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(C) \
  ZE_MATH_DECLARE_FIELD_CLASS(C)             \
  ZE_MATH_DECLARE_FIELD_SLOT(_num)           \
  ZEMATH_API static void bayRegisterInitialize();

/// Registration of array field class C, whose elements have field type
/// ELEMENT (its parent class).
#define ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(C, ELEMENT)                                  \
  static_assert(sizeof(C) == ::Lux::Math::impl::ArrayMetaField<ELEMENT>::kInstanceBytes, \
                #C " adds nothing to the element type but _num");                        \
  ZE_DEFINE_FIELD_SLOT(C, _num)                                                          \
  void C::bayRegisterInitialize() { declareNumField(_Meta, &k_num); }                    \
  ZE_MATH_IMPLEMENT_FIELD_CLASS(C, ELEMENT, &C::bayRegisterInitialize)
