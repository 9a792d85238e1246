#pragma once

#include "core/zeObjectList.h"

namespace Lux {

/// A list of counted references to objects of class T (registered, with
/// `T::_Meta`).
template <class T>
class LUXCORE_API zeTObjectList : public zeObjectList {
 public:
  /// T's class descriptor.
  zeMetaObject* getElementType() const override { return T::_Meta; }

  /// Element `i`, or null out of range.
  T* get(int i) const { return static_cast<T*>(zeObjectList::get(i)); }
  T* operator[](int i) const { return get(i); }  ///< Element `i`, or null out of range.
  /// Stores `object` (or null) in element `i`; kFailure out of range.
  int set(int i, T* object) { return zeObjectList::set(i, object); }
  /// Appends `object` (or null); kFailure when memory runs out.
  int append(T* object) { return zeObjectList::append(object); }
};

}  // namespace Lux
