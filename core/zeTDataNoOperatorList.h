#pragma once

#include <cstring>

#include "core/zeDataList.h"
#include "core/zeResult.h"

namespace Lux {

/// A list of elements of type T that moves them as bytes and asks nothing of
/// T: no constructor, assignment or comparison runs. The base of the typed
/// value lists; zeTDataList<T> adds the element operators.
template <class T>
class LUXCORE_API zeTDataNoOperatorList : public zeDataList {
 public:
  /// The size of T.
  unsigned int getElementSize() const override { return sizeof(T); }

  /// Shrinks the storage to the count when the capacity is larger.
  void clean() override {
    if (_capacity > _count) setCapacity(_count, sizeof(T));
  }

  /// The elements.
  T* data() { return static_cast<T*>(_data); }
  const T* data() const { return static_cast<const T*>(_data); }  ///< The elements, read-only.

  /// Sets the count (see resizeAndSetCount()).
  int resize(int count) { return resizeAndSetCount(count, sizeof(T)); }

  /// Copies element `i` into `value`; `i` is not checked.
  void getElement(int i, T& value) const { std::memcpy(&value, getElementMemory(i, sizeof(T)), sizeof(T)); }
  /// Copies `value` into element `i`; `i` is not checked.
  void setElement(int i, const T& value) { std::memcpy(getElementMemory(i, sizeof(T)), &value, sizeof(T)); }

  /// Appends a copy of `value` (which may be an element of this list);
  /// kSuccess, or kFailure when memory runs out.
  int appendElement(const T& value) {
    alignas(T) unsigned char copy[sizeof(T)];
    std::memcpy(copy, &value, sizeof(T));
    const int i = _count;
    if (resize(i + 1) != kSuccess) return kFailure;
    std::memcpy(getElementMemory(i, sizeof(T)), copy, sizeof(T));
    return kSuccess;
  }
};

}  // namespace Lux
