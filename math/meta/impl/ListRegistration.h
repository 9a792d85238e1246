#pragma once

/// \file
/// Registration of the typed lists. A value list retypes the "_data" field
/// it inherits from zeDataList with the field type of its elements, so the
/// core stores, copies, compares and prints them as such; a list of lists
/// registers its element list class along with itself.

#include "core/zeDataList.h"
#include "core/zeElementArrayMetaField.h"
#include "core/zeMetaObject.h"
#include "core/zeObjectList.h"
#include "math/ZEMathExport.h"
#include "math/meta/zeMathClassRegistration.h"

namespace Lux {
namespace Math {
namespace impl {

/// Replaces "_data" of the list class `meta` by a copy whose elements have
/// the field type ElementField (property word 0), published through `slot`.
template <class ElementField>
void retypeListData(zeMetaObject* meta, zeMetaField** slot) {
  if (!ElementField::_MetaField) ElementField::bayRegister();
  zeElementArrayMetaField::retype(meta, ElementField::_MetaField, 0, slot);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux

/// Registration statics of value list class C, with the slot of "_data".
#define ZE_MATH_DECLARE_DATA_LIST_CLASS(C) \
  ZE_MATH_DECLARE_CLASS(C)                 \
  ZE_MATH_DECLARE_FIELD_SLOT(_data)        \
  ZEMATH_API static void bayRegisterInitialize();

/// Registration of value list class C, whose elements have field type
/// ELEMENT_FIELD.
#define ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(C, ELEMENT_FIELD)                                             \
  static_assert(sizeof(C) == sizeof(::Lux::zeDataList), #C " adds no data to the list");                \
  ZE_DEFINE_FIELD_SLOT(C, _data)                                                                        \
  void C::bayRegisterInitialize() { ::Lux::Math::impl::retypeListData<ELEMENT_FIELD>(_Meta, &k_data); } \
  ZE_MATH_IMPLEMENT_CLASS(C, ::Lux::zeDataList, &C::bayRegisterInitialize, nullptr)

/// Registration of list-of-lists class C, whose elements are ELEMENT_LIST
/// objects; registering C registers ELEMENT_LIST too.
#define ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(C, ELEMENT_LIST) \
  ZE_MATH_IMPLEMENT_CLASS_WITH_FURTHER(C, ::Lux::zeObjectList, nullptr, nullptr, &ELEMENT_LIST::bayRegister)
