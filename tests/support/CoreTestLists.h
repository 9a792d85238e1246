#pragma once

// Data lists of the object-model tests: a list of floats without element
// operators and a list of ints with them, each retyping "_data" with the
// field type of its elements. The registration statics are defined here:
// include this header in one source file of a test program.

#include "core/LuxCore.h"

namespace testlists {

class FloatList : public Lux::zeTDataNoOperatorList<float> {
  ZE_DECLARE_CLASS(, FloatList)
  ZE_DECLARE_FIELD_SLOT(, _data)

 public:
  static void bayRegisterInitialize() {
    if (!Lux::zeFloatMetaField::_MetaField) Lux::zeFloatMetaField::bayRegister();
    Lux::zeElementArrayMetaField::retype(_Meta, Lux::zeFloatMetaField::_MetaField, 0, &k_data);
  }
};
ZE_DEFINE_FIELD_SLOT(FloatList, _data)
ZE_IMPLEMENT_CLASS(FloatList, Lux::zeDataList, Lux::zeNoLibraryInit, &FloatList::bayRegisterInitialize, nullptr)

class IntList : public Lux::zeTDataList<int> {
  ZE_DECLARE_CLASS(, IntList)
  ZE_DECLARE_FIELD_SLOT(, _data)

 public:
  static void bayRegisterInitialize() {
    if (!Lux::zeIntMetaField::_MetaField) Lux::zeIntMetaField::bayRegister();
    Lux::zeElementArrayMetaField::retype(_Meta, Lux::zeIntMetaField::_MetaField, 0, &k_data);
  }
};
ZE_DEFINE_FIELD_SLOT(IntList, _data)
ZE_IMPLEMENT_CLASS(IntList, Lux::zeDataList, Lux::zeNoLibraryInit, &IntList::bayRegisterInitialize, nullptr)

}  // namespace testlists
