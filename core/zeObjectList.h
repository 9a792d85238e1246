#pragma once

#include "core/zeTDataList.h"

namespace Lux {

/// A list of counted references to objects. Storing an object in an element
/// adds a reference to it and releases the object stored there before; the
/// list releases its elements as they are dropped and when it dies. Its
/// "_data" has zeObjectReferenceMetaField elements, so copies, comparisons,
/// text and records reach the objects.
class LUXCORE_API zeObjectList : public zeTDataList<zeObject*> {
  ZE_DECLARE_CLASS(LUXCORE_API, zeObjectList)
  ZE_DECLARE_FIELD_SLOT(LUXCORE_API, _data)

 public:
  /// The class of the elements: zeObject's for the untyped list.
  virtual zeMetaObject* getElementType() const;

  /// Shrinks the storage to the count before the list is written.
  void preWrite() override;

  /// Sets the count: dropped elements are released, new ones are null.
  /// kFailure for a negative count or when memory runs out.
  int setCount(int count);
  /// Element `i`, or null out of range.
  zeObject* get(int i) const { return i >= 0 && i < _count ? data()[i] : nullptr; }
  zeObject* operator[](int i) const { return get(i); }  ///< Element `i`, or null out of range.
  /// Stores `object` (or null) in element `i`; kFailure out of range.
  int set(int i, zeObject* object);
  /// Appends `object` (or null); kFailure when memory runs out.
  int append(zeObject* object);

  /// Releases the elements.
  void userDestruct() override;

  /// Registration: "_data" holds object references.
  static void bayRegisterInitialize();

 private:
  // Writing element slots directly would bypass the reference counts.
  using zeTDataList<zeObject*>::setElement;
  using zeTDataList<zeObject*>::appendElement;
  using zeTDataList<zeObject*>::resize;
};

}  // namespace Lux
