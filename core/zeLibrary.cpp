#include "core/zeLibrary.h"

#include <dlfcn.h>

#include "core/zeResult.h"

namespace Lux {

ZE_IMPLEMENT_CLASS(zeLibrary, zeObject, zeNoLibraryInit, nullptr, nullptr)

zeSmartPointer<zeLibrary> zeLibrary::load(const char* path) {
  if (!path) return zeSmartPointer<zeLibrary>();
  void* handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (!handle) return zeSmartPointer<zeLibrary>();
  CreateFunction create = reinterpret_cast<CreateFunction>(dlsym(handle, "createLibraryObject"));
  zeSmartPointer<zeLibrary> library;
  if (create) create(library);
  if (!library) {
    dlclose(handle);
    return library;
  }
  BayCore::keepLibraryOpen(handle);
  return library;
}

int zeLibrary::registerClasses() {
  if (!_registerFunction) return kFailure;
  _registerFunction();
  return kSuccess;
}

}  // namespace Lux
