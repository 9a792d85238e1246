#pragma once

namespace Lux {

/// Holds one counted reference to an object.
///
/// It adopts nothing implicitly: constructing from or assigning a raw pointer
/// adds a reference. A fresh object, which already carries its creation
/// reference, is taken over without a second count by adopt().
template <class T>
class zeSmartPointer {
 public:
  /// Holds nothing.
  zeSmartPointer() = default;

  /// Holds `object`, adding a reference.
  explicit zeSmartPointer(T* object) : _object(object) {
    if (_object) _object->addReference();
  }

  /// Holds what `other` holds, one more reference.
  zeSmartPointer(const zeSmartPointer& other) : zeSmartPointer(other._object) {}

  /// Holds what a pointer of a derived class holds, one more reference.
  template <class U>
  zeSmartPointer(const zeSmartPointer<U>& other) : zeSmartPointer(other.get()) {}

  /// Takes over the reference of `other`, which is left empty.
  zeSmartPointer(zeSmartPointer&& other) noexcept : _object(other._object) { other._object = nullptr; }

  /// Releases the held object, if any.
  ~zeSmartPointer() {
    if (_object) _object->release();
  }

  /// Takes over the one reference `object` carries (a creation reference).
  static zeSmartPointer adopt(T* object) {
    zeSmartPointer result;
    result._object = object;
    return result;
  }

  /// Holds `object`: adds a reference to it first, then releases the old
  /// object, then stores, so assigning the held object to itself is safe.
  zeSmartPointer& operator=(T* object) {
    if (object) object->addReference();
    if (_object) _object->release();
    _object = object;
    return *this;
  }

  /// Holds what `other` holds, releasing the previous object.
  zeSmartPointer& operator=(const zeSmartPointer& other) { return *this = other._object; }

  /// Takes over the reference of `other`, releasing the previous object.
  zeSmartPointer& operator=(zeSmartPointer&& other) noexcept {
    if (this != &other) {
      T* old = _object;
      _object = other._object;
      other._object = nullptr;
      if (old) old->release();
    }
    return *this;
  }

  /// Gives up the held reference to the caller, leaving the pointer empty.
  T* detach() {
    T* object = _object;
    _object = nullptr;
    return object;
  }

  /// The held object, or null.
  T* get() const { return _object; }
  T* operator->() const { return _object; }                      ///< The held object's members.
  T& operator*() const { return *_object; }                      ///< The held object; must not be null.
  explicit operator bool() const { return _object != nullptr; }  ///< Whether an object is held.

  /// Whether both hold the same object.
  friend bool operator==(const zeSmartPointer& a, const zeSmartPointer& b) { return a._object == b._object; }
  /// Whether they hold different objects.
  friend bool operator!=(const zeSmartPointer& a, const zeSmartPointer& b) { return a._object != b._object; }

 private:
  T* _object = nullptr;
};

}  // namespace Lux
