#pragma once

// Helpers of the object-model tests: declaring a test class's fields, making
// instances, and reading an object's field text and byte record.

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/LuxCore.h"

namespace zetest {

/// One field a test class declares itself.
struct FieldDecl {
  Lux::zeMetaObject::FieldInstantiateFunction make;
  const char* name;
  Lux::zeMetaField** slot;
  int offset;
};

/// Declares `fields` after the inherited ones the way every class does:
/// instantiate the descriptors, let `prepare` adjust them (it gets the index of
/// the first), then name, publish, place and validate them.
inline void declareFields(Lux::zeMetaObject* meta, std::initializer_list<FieldDecl> fields,
                          void (*prepare)(Lux::zeMetaObject*, int first) = nullptr) {
  std::vector<Lux::zeMetaObject::FieldInstantiateFunction> make;
  std::vector<const char*> names;
  std::vector<Lux::zeMetaField**> slots;
  std::vector<int> offsets;
  for (const FieldDecl& field : fields) {
    make.push_back(field.make);
    names.push_back(field.name);
    slots.push_back(field.slot);
    offsets.push_back(field.offset);
  }
  const int first = meta->getMetaFieldCount();
  meta->instantiateAndAppendFields(make.data(), static_cast<int>(make.size()));
  if (prepare) prepare(meta, first);
  meta->setMetaFieldBasicPropertiesAndValidateAll(names.data(), slots.data(), offsets.data(), first);
}

/// A new instance of `T`, its creation reference held by a smart pointer.
template <class T>
Lux::zeSmartPointer<T> make(Lux::zeMemoryPool* pool = nullptr) {
  return Lux::zeCreate<T>(pool);
}

/// The text `field` gives for `object`; the pooled text is released.
inline std::string textOf(Lux::zeMetaField* field, const Lux::zeObject* object) {
  const char* text = field->getByString(object, nullptr);
  std::string result = text ? text : "(none)";
  Lux::zeInternalStringPool::releaseString(text);
  return result;
}

/// The record of `object`, written natively or byte-swapped.
inline std::vector<unsigned char> recordOf(Lux::zeObject* object, bool swap) {
  std::vector<unsigned char> bytes(object->getRecordSize());
  EXPECT_EQ(object->writeRecord(bytes.data(), static_cast<unsigned int>(bytes.size()), swap), Lux::kSuccess);
  return bytes;
}

/// Reads `record` into `object`: kSuccess or kFailure.
inline int readRecord(Lux::zeObject* object, const std::vector<unsigned char>& record, bool swap) {
  return object->readRecord(record.data(), static_cast<unsigned int>(record.size()), swap);
}

}  // namespace zetest
