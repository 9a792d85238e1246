#pragma once

// Internal to the core: the registry behind zeBayRegister, zeMetaObject's
// class look-ups and BayCore's teardown. Not installed, not exported.

#include <vector>

#include "core/zeBayRegister.h"
#include "core/zeMetaObject.h"

namespace Lux {

class BayCoreRegistry {
 public:
  /// Every registered class, in registration order.
  static std::vector<zeMetaObject*>& classes();

  /// A new class descriptor, stored in *slot, filled from the arguments and
  /// the parent, listed, and joined to its ancestors' descendant lists.
  /// Null when memory runs out.
  static zeMetaObject* createClass(zeMetaObject** slot, zeMetaObject* parent, const char* name, bool isAbstract,
                                   unsigned int instanceSize, void* vtable, zeInstantiateFunction instantiate);

  /// Runs the registration callbacks of every ancestor of `meta`, outermost first.
  static void runAncestorCallbacks(zeMetaObject* meta);

  /// Marks the initialize step done and, after the further steps, the class registered.
  static void setFlag(zeMetaObject* meta, unsigned int flag);

  /// The fields `meta` declares itself: those after its parent's.
  static int firstOwnField(const zeMetaObject* meta);

  /// Drops the kept results of the one-argument zeBayRegister.
  static void forgetRegistrationResults();

  /// The teardown of BayCore::unregisterAllClasses().
  static void unregisterAll();

  static void addUnregistrationHook(void (*hook)());
  static void addLibraryHandle(void* handle);
};

}  // namespace Lux
