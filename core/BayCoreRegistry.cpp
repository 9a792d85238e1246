#include "core/BayCoreRegistry.h"

#include <dlfcn.h>

#include "core/zeInternalStringPool.h"
#include "core/zeMetaEnum.h"
#include "core/zeMetaField.h"

namespace Lux {

namespace {

// The registry lives on the heap and is never destroyed, so registrations
// made during static initialisation and the teardown at unload both find it;
// unregisterAll() empties it.
struct RegistryState {
  std::vector<zeMetaObject*> classes;
  std::vector<void (*)()> unregistrationHooks;
  std::vector<void*> libraryHandles;
};

RegistryState& state() {
  static RegistryState* registry = new RegistryState();
  return *registry;
}

template <class T>
void freeStorage(std::vector<T>& v) {
  std::vector<T>().swap(v);
}

// Unregisters everything when the core is unloaded (or the process ends).
// Constructed when the core is loaded, so it is destroyed after everything
// that libraries and programs built on the core construct later.
struct UnloadTeardown {
  ~UnloadTeardown() {
    BayCoreRegistry::unregisterAll();
    zeMetaEnum::destroyAll();
  }
} unloadTeardown;

}  // namespace

std::vector<zeMetaObject*>& BayCoreRegistry::classes() { return state().classes; }

zeMetaObject* BayCoreRegistry::createClass(zeMetaObject** slot, zeMetaObject* parent, const char* name, bool isAbstract,
                                           unsigned int instanceSize, void* vtable, zeInstantiateFunction instantiate) {
  zeMetaObject* meta = new (std::nothrow) zeMetaObject();
  if (!meta) return nullptr;
  meta->_name = zeInternalStringPool::getDefault()->setString(name);
  meta->_parent = parent;
  meta->_staticSlot = slot;
  meta->_instanceSize = instanceSize;
  meta->_flags = isAbstract ? zeMetaObject::kFlagAbstract : 0u;
  meta->_vtable = vtable;
  meta->_instantiate = instantiate;
  meta->_classIndex = static_cast<int>(classes().size());
  if (parent) {
    meta->_fields = parent->_fields;  // inherited fields first, shared with the parent
    for (zeMetaField* field : meta->_fields) field->addReference();
  }
  *slot = meta;
  classes().push_back(meta);
  for (zeMetaObject* ancestor = parent; ancestor; ancestor = ancestor->_parent) {
    ancestor->_descendants.push_back(meta);
  }
  return meta;
}

void BayCoreRegistry::runAncestorCallbacks(zeMetaObject* meta) {
  std::vector<zeMetaObject*> ancestors;
  for (zeMetaObject* ancestor = meta->_parent; ancestor; ancestor = ancestor->_parent) ancestors.push_back(ancestor);
  for (auto it = ancestors.rbegin(); it != ancestors.rend(); ++it) {
    // By index: a callback may install further callbacks.
    for (std::size_t i = 0; i < (*it)->_callbacks.size(); ++i) (*it)->_callbacks[i](meta);
  }
}

void BayCoreRegistry::setFlag(zeMetaObject* meta, unsigned int flag) { meta->_flags |= flag; }

int BayCoreRegistry::firstOwnField(const zeMetaObject* meta) {
  return meta->_parent ? meta->_parent->getMetaFieldCount() : 0;
}

void BayCoreRegistry::unregisterAll() {
  std::vector<zeMetaObject*>& registered = classes();

  // Class destructors first, while every class can still make and destroy objects.
  for (auto it = registered.rbegin(); it != registered.rend(); ++it) {
    std::vector<void (*)()> destructors;
    destructors.swap((*it)->_destructors);
    for (auto d = destructors.rbegin(); d != destructors.rend(); ++d) (*d)();
  }
  forgetRegistrationResults();

  // Then the field descriptors. A descriptor that dies after its own class
  // gave up its fields is freed without per-field destruct steps, which plain
  // descriptor data does not need.
  for (auto it = registered.rbegin(); it != registered.rend(); ++it) {
    std::vector<zeMetaField*> fields;
    fields.swap((*it)->_fields);
    for (auto f = fields.rbegin(); f != fields.rend(); ++f) (*f)->release();
  }

  // No object refers to a class descriptor any more.
  std::vector<zeMetaObject*> gone;
  gone.swap(registered);
  for (zeMetaObject* meta : gone) {
    if (meta->_staticSlot && *meta->_staticSlot == meta) *meta->_staticSlot = nullptr;
  }
  for (zeMetaObject* meta : gone) delete meta;

  std::vector<void (*)()> hooks;
  hooks.swap(state().unregistrationHooks);
  for (void (*hook)() : hooks) hook();

  zeInternalStringPool* strings = zeInternalStringPool::_defaultStringPool;
  if (strings && strings->getStringCount() == 0) {
    zeInternalStringPool::_defaultStringPool = nullptr;
    delete strings;
  }

  std::vector<void*> handles;
  handles.swap(state().libraryHandles);
  for (auto it = handles.rbegin(); it != handles.rend(); ++it) dlclose(*it);
  freeStorage(state().unregistrationHooks);
  freeStorage(state().libraryHandles);
}

void BayCoreRegistry::addUnregistrationHook(void (*hook)()) {
  if (hook) state().unregistrationHooks.push_back(hook);
}

void BayCoreRegistry::addLibraryHandle(void* handle) {
  if (handle) state().libraryHandles.push_back(handle);
}

}  // namespace Lux
