#pragma once

#include "core/zeClassRegistration.h"

namespace Lux {

/// A library of registered classes: holds the function that registers them.
/// A shared library offers one through its exported
/// `extern "C" void createLibraryObject(zeSmartPointer<zeLibrary>& result)`.
class LUXCORE_API zeLibrary : public zeObject {
  ZE_DECLARE_CLASS(LUXCORE_API, zeLibrary)

 public:
  /// The registration function type.
  typedef void (*RegisterFunction)();
  /// The entry every loadable library exports.
  typedef void (*CreateFunction)(zeSmartPointer<zeLibrary>& result);

  /// Opens the shared library at `path` and returns the library object its
  /// createLibraryObject makes; null when the library does not open, has no
  /// such entry, or the entry gives nothing. An opened library stays open
  /// until classes are unregistered, so the classes it registers keep their
  /// code.
  static zeSmartPointer<zeLibrary> load(const char* path);

  /// Sets the function that registers the library's classes.
  void setRegisterFunction(RegisterFunction function) { _registerFunction = function; }
  /// The function that registers the library's classes, or null.
  RegisterFunction getRegisterFunction() const { return _registerFunction; }

  /// Runs the registration function: kSuccess, or kFailure when there is none.
  int registerClasses();

 private:
  RegisterFunction _registerFunction;
};

}  // namespace Lux
