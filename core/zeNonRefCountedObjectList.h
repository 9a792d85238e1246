#pragma once

#include "core/zeTDataList.h"

namespace Lux {

/// A list of plain pointers to objects: the operations of zeObjectList, but
/// no reference is added or released. The pointers are not stored in
/// records (the list reads back empty) and have no text form.
class LUXCORE_API zeNonRefCountedObjectList : public zeTDataList<zeObject*> {
  ZE_DECLARE_CLASS(LUXCORE_API, zeNonRefCountedObjectList)
  ZE_DECLARE_FIELD_SLOT(LUXCORE_API, _data)

 public:
  /// The class of the elements: zeObject's for the untyped list.
  virtual zeMetaObject* getElementType() const;

  /// Shrinks the storage to the count before the list is written.
  void preWrite() override;

  /// Sets the count; new elements are null. kFailure for a negative count or
  /// when memory runs out.
  int setCount(int count) { return resize(count); }
  /// Element `i`, or null out of range.
  zeObject* get(int i) const { return i >= 0 && i < _count ? data()[i] : nullptr; }
  /// Stores `object` in element `i`; kFailure out of range.
  int set(int i, zeObject* object);

  /// Registration: "_data" holds transient plain pointers.
  static void bayRegisterInitialize();
};

}  // namespace Lux
