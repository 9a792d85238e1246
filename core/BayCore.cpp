#include "core/BayCore.h"

#include "core/BayCoreRegistry.h"
#include "core/zeMemoryPool.h"

namespace Lux {

// The virtual-table pointer is the first word of every object.
const int BayCore::_vTablePointerOffset = 0;

namespace {
// Constant-initialised and trivially destructible: usable from the first
// static initialiser to the last static destructor of any library.
zeMemoryPool defaultPool("default");
}  // namespace

zeMemoryPool* BayCore::getDefaultPool() { return &defaultPool; }

void BayCore::unregisterAllClasses() { BayCoreRegistry::unregisterAll(); }

void BayCore::registerUnregistrationHook(void (*hook)()) { BayCoreRegistry::addUnregistrationHook(hook); }

void BayCore::keepLibraryOpen(void* handle) { BayCoreRegistry::addLibraryHandle(handle); }

}  // namespace Lux
