#pragma once

#include "core/zeClassRegistration.h"

namespace Lux {

/// Growable array of plain elements, the base of every list. After the object
/// header it holds, in order, the element count, the capacity and the pointer
/// to the element storage, which comes from the list's own pool. The size of
/// an element is the typed list's getElementSize(); the storage is reflected
/// as the element-array field "_data" (zeElementArrayMetaField), which copies,
/// compares, prints, stores and frees the elements. Typed lists retype "_data"
/// with the field type of their elements (zeElementArrayMetaField::retype).
class LUXCORE_API zeDataList : public zeObject {
  ZE_DECLARE_CLASS(LUXCORE_API, zeDataList)
  ZE_DECLARE_FIELD_SLOT(LUXCORE_API, _data)

 public:
  /// Bytes per element.
  virtual unsigned int getElementSize() const = 0;

  /// Number of elements.
  int getCount() const { return _count; }
  /// Number of elements the storage holds.
  int getCapacity() const { return _capacity; }
  /// The element storage; null while the capacity is 0.
  void* getData() { return _data; }
  const void* getData() const { return _data; }  ///< The element storage, read-only.
  /// Element `i` of `elementSize` bytes; not checked against the count.
  void* getElementMemory(int i, unsigned int elementSize) {
    return static_cast<char*>(_data) + static_cast<unsigned long>(i) * elementSize;
  }
  /// Element `i` of `elementSize` bytes, read-only; not checked against the count.
  const void* getElementMemory(int i, unsigned int elementSize) const {
    return static_cast<const char*>(_data) + static_cast<unsigned long>(i) * elementSize;
  }

  /// Moves the elements into storage for exactly `capacity` elements (none
  /// for 0). kFailure, changing nothing, for a capacity below the count, a
  /// size of 0 or when memory runs out.
  int setCapacity(int capacity, unsigned int elementSize);

  /// Sets the count; grows the storage to the larger of `count` and twice the
  /// capacity when it is too small. Elements gained are zeroed; elements
  /// dropped are not touched (lists of references release them first).
  /// kFailure, changing nothing, for a negative count, a size of 0 or when
  /// memory runs out.
  int resizeAndSetCount(int count, unsigned int elementSize);

  /// Registration: declares "_data".
  static void bayRegisterInitialize();

  // The storage header, in this order (change it through the members above).
  int _count = 0;         ///< Number of elements in use.
  int _capacity = 0;      ///< Number of elements the storage holds.
  void* _data = nullptr;  ///< The element storage, or null.
};

}  // namespace Lux
