#pragma once

/// \file
/// zeCreate<T>(): how a program makes an object of a registered class.

#include "core/zeSmartPointer.h"

namespace Lux {

class zeMemoryPool;

/// A new object of the registered class T from `pool` (null: the default
/// pool), made by T's class descriptor (T is registered first when it is not)
/// and held by a smart pointer that adopts its creation reference, so the
/// object goes when the last holder does. Empty when T is abstract or memory
/// runs out. Registered classes have no public constructor: this, or
/// T::_instantiateFromPool(pool) for the raw reference, is how objects are made.
template <class T>
zeSmartPointer<T> zeCreate(zeMemoryPool* pool = nullptr) {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(pool)));
}

}  // namespace Lux
