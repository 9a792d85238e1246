#pragma once

#include "core/zeMetaField.h"

namespace Lux {

/// Field holding a counted reference to an object (a `zeObject*` that owns
/// one reference), such as a list an object keeps; also the element type of
/// the object lists. A copy by value copies the object, a copy by reference
/// or a shallow copy shares it; the deep comparison compares the objects'
/// fields; a dying holder releases it. The default, if any, is an object the
/// descriptor holds a reference to: reset by value gives a copy of it, reset
/// by reference shares it.
///
/// The stored form is variable: the byte length, then, for an object, the
/// length of its class name, the name, and the object's own record (a
/// length of 4 alone stands for null). Text gives the class name ("null"
/// without an object) and does not parse.
///
/// Referenced objects must not lead back to their holder: copies,
/// comparisons, printing and traversal follow references to the end, and
/// records refuse such a cycle.
class LUXCORE_API zeObjectReferenceMetaField : public zeMetaField {
  ZE_DECLARE_FIELD_CLASS(LUXCORE_API, zeObjectReferenceMetaField)

 public:
  /// The class the referenced objects must be of when read; null: any.
  zeMetaObject* getReferenceType() const { return _referenceType; }
  /// Sets the class the referenced objects must be of when read.
  void setReferenceType(zeMetaObject* type) { _referenceType = type; }
  /// Makes `object` (which gains a reference) the default; null: none.
  void setDefault(zeObject* object) { setDefaultMemory(&object); }
  /// The default object, or null.
  zeObject* getDefault() const;

  /// The object a reference at `memory` holds.
  static zeObject* getReferenced(const void* memory);
  /// Makes the reference at `memory` hold `object`: adds a reference to it,
  /// then releases the object held before.
  static void setReferenced(void* memory, zeObject* object);

  /// 8 bytes.
  unsigned int computeSize() override;
  /// Holds a copy of the default object, or null.
  void resetByValue(zeObject* object) override;
  /// Shares the default object, or holds null.
  void resetByReference(zeObject* object) override;
  /// Releases the held object.
  void destruct(zeObject* object) override;
  /// Takes a reference to the object at `memory` (null: makes sure the
  /// memory exists) and releases the former default.
  void setDefaultMemory(const void* memory) override;
  /// Holds a deep copy of the source's object.
  void copyByValue(zeObject* destination, const zeObject* source) override;
  /// Shares the source's object.
  void copyByReference(zeObject* destination, const zeObject* source) override;
  /// Shares the source's object.
  void copyByValueShallow(zeObject* destination, const zeObject* source) override;
  /// Prints the class name, then the object's fields indented by two more blanks.
  void print(const zeObject* object, unsigned int indent, const char* prefix) override;
  /// Visits the field, then (when the visit gave 0) the fields of the held object.
  int traverse(zeObject* object, int (*visit)(zeObject*, zeMetaField*, void*), void* data) override;
  /// Both null, the same object, or objects alike field by field.
  bool isAlikeCompareDeep(const zeObject* a, const zeObject* b) const override;
  /// Bytes of the stored form; 0 when the object cannot be written.
  unsigned int getIoSize(const zeObject* object) const override;
  /// Writes the stored form; the bytes written, or -1.
  int writeRawFieldMemory(const void* source, void* destination, const zeDirectory* directory,
                          bool swap) const override;
  /// Makes a new object of the stored class from its record and holds it;
  /// the bytes read, or -1 for an unknown or unfit class or a refused record.
  int readRawFieldMemory(void* destination, const void* source, const zeDirectory* directory, bool swap) const override;
  /// The class name of the held object, or "null", as pooled text.
  const char* getStringFromMemory(const void* memory, const zeDirectory* directory) override;

  void userConstruct() override;
  void userCopyDeep(const zeObject* source) override;
  void userCopyShallow(const zeObject* source) override;
  void userDestruct() override;

 private:
  void copyTypeFrom(const zeObject* source);

  zeMetaObject* _referenceType;
};

}  // namespace Lux
