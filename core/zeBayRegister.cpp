#include "core/zeBayRegister.h"

#include <cstring>
#include <vector>

#include "core/BayCoreRegistry.h"
#include "core/__internalObjectList.h"
#include "core/zeMetaField.h"

namespace Lux {

namespace {

struct RegistrationEntry {
  zeRegisterInternalFunction function;
  bool inProgress;
  zeRegistrationResult result;
};

std::vector<RegistrationEntry>& registrations() {
  static std::vector<RegistrationEntry>* entries = new std::vector<RegistrationEntry>();
  return *entries;
}

int findRegistration(zeRegisterInternalFunction function) {
  const std::vector<RegistrationEntry>& entries = registrations();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].function == function) return static_cast<int>(i);
  }
  return -1;
}

// The registration result: the field descriptors the class declares itself.
zeRegistrationResult ownFieldsOf(const zeMetaObject* meta) {
  zeRegistrationResult result = zeRegistrationResult::adopt(
      static_cast<__internalObjectList*>(__internalObjectList::_instantiateFromPool(nullptr)));
  if (!result) return result;
  for (int i = BayCoreRegistry::firstOwnField(meta); i < meta->getMetaFieldCount(); ++i) {
    result->append(meta->getIndexedMetaField(i));
  }
  return result;
}

}  // namespace

void BayCoreRegistry::forgetRegistrationResults() {
  // Moved out first: releasing a result may not reach back into the registry,
  // but the registry must be empty by the time anything could.
  std::vector<RegistrationEntry> entries;
  entries.swap(registrations());
}

zeRegistrationResult zeBayRegister(zeRegisterInternalFunction registerInternal) {
  if (!registerInternal) return zeRegistrationResult();
  const int found = findRegistration(registerInternal);
  if (found >= 0) return registrations()[static_cast<std::size_t>(found)].result;  // null while under way

  registrations().push_back(RegistrationEntry{registerInternal, true, zeRegistrationResult()});
  zeRegistrationResult result = registerInternal();
  // The entry is looked up again: registrations made meanwhile may have moved it.
  const int index = findRegistration(registerInternal);
  if (index < 0) return result;
  if (!result) {
    registrations().erase(registrations().begin() + index);  // tried again next time
    return result;
  }
  RegistrationEntry& entry = registrations()[static_cast<std::size_t>(index)];
  entry.inProgress = false;
  entry.result = result;
  return result;
}

zeRegistrationResult zeBayRegister(bool isAbstract, zeMetaObject** meta,
                                   zeRegisterInternalFunction parentRegisterInternal,
                                   zeGetClassMetaFunction parentGetClassMeta, zeGetClassMetaFunction getClassMetaSafe,
                                   const char* name, unsigned int instanceSize,
                                   zeRetrieveVTableFunction retrieveVTablePointer, zeInstantiateFunction instantiate,
                                   zeRegistrationStep initialize, zeRegistrationStep user,
                                   const zeRegistrationStep* further) {
  (void)getClassMetaSafe;  // the descriptor is reached through *meta
  if (!meta || !name || !*name) return zeRegistrationResult();
  if (*meta) return ownFieldsOf(*meta);  // registered by another path already

  zeMetaObject* parent = nullptr;
  if (parentRegisterInternal || parentGetClassMeta) {
    if (parentRegisterInternal) zeBayRegister(parentRegisterInternal);
    parent = parentGetClassMeta ? parentGetClassMeta() : nullptr;
    if (!parent) return zeRegistrationResult();
  }
  if (zeMetaObject::find(name)) return zeRegistrationResult();

  void* vtable = retrieveVTablePointer && !isAbstract ? retrieveVTablePointer() : nullptr;
  zeMetaObject* created =
      BayCoreRegistry::createClass(meta, parent, name, isAbstract, instanceSize, vtable, instantiate);
  if (!created) return zeRegistrationResult();

  BayCoreRegistry::runAncestorCallbacks(created);
  if (initialize) initialize();
  BayCoreRegistry::setFlag(created, zeMetaObject::kFlagFieldsSet);
  if (user) user();
  for (const zeRegistrationStep* step = further; step && *step; ++step) (*step)();
  BayCoreRegistry::setFlag(created, zeMetaObject::kFlagRegistered);
  return ownFieldsOf(created);
}

}  // namespace Lux
