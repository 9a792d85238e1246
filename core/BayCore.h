#pragma once

#include "core/LuxCoreExport.h"

namespace Lux {

class zeMemoryPool;

/// Process-wide state of the object model: where objects keep their virtual
/// table, the default memory pool, and the teardown of all registrations.
class LUXCORE_API BayCore {
 public:
  /// Byte offset, inside every object, of the virtual-table pointer.
  static const int _vTablePointerOffset;

  /// The default memory pool; lives as long as the process.
  static zeMemoryPool* getDefaultPool();

  /// Unregisters every class, last registered first: runs the class
  /// destructors, releases the kept registration results and every field
  /// descriptor, clears each class's _Meta, frees the class descriptors, runs
  /// the unregistration hooks, frees the default string pool when it holds
  /// no text, and closes the libraries that zeLibrary::load opened. Objects
  /// of registered classes must all be released before. Runs by itself when
  /// the core is unloaded; tests may call it to start afresh.
  static void unregisterAllClasses();

  /// Function run (once) by the next unregisterAllClasses(), after the
  /// classes are gone; libraries reset their once-flags with it.
  static void registerUnregistrationHook(void (*hook)());

  /// Keeps a library handle open until classes are unregistered.
  static void keepLibraryOpen(void* handle);
};

}  // namespace Lux
