#pragma once

#include "core/zeTDataNoOperatorList.h"

namespace Lux {

/// A list of elements of type T with element operators: indexing, appending
/// by assignment and searching by ==.
template <class T>
class LUXCORE_API zeTDataList : public zeTDataNoOperatorList<T> {
 public:
  /// Element `i`; not checked against the count.
  T& operator[](int i) { return this->data()[i]; }
  const T& operator[](int i) const { return this->data()[i]; }  ///< Element `i`, read-only.

  /// Appends a copy of `value` (which may be an element of this list);
  /// kSuccess, or kFailure when memory runs out.
  int append(const T& value) {
    const T copy = value;
    const int i = this->_count;
    if (this->resize(i + 1) != kSuccess) return kFailure;
    this->data()[i] = copy;
    return kSuccess;
  }

  /// Index of the first element equal to `value`, or -1.
  int indexOf(const T& value) const {
    for (int i = 0; i < this->_count; ++i) {
      if (this->data()[i] == value) return i;
    }
    return -1;
  }
};

}  // namespace Lux
