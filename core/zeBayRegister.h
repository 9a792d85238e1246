#pragma once

#include "core/LuxCoreExport.h"
#include "core/zeSmartPointer.h"

namespace Lux {

class __internalObjectList;
class zeMemoryPool;
class zeMetaObject;
class zeObject;

/// What a registration returns: the field descriptors the class declares
/// itself, in order (empty for a class without fields of its own); null when
/// the registration failed or is already under way.
typedef zeSmartPointer<__internalObjectList> zeRegistrationResult;

/// A class's bayRegisterInternal.
typedef zeRegistrationResult (*zeRegisterInternalFunction)();
/// A class's getClassMeta or getClassMetaSafe.
typedef zeMetaObject* (*zeGetClassMetaFunction)();
/// A class's retrieveVTablePointer.
typedef void* (*zeRetrieveVTableFunction)();
/// Custom instantiation of a class; see zeMetaObject::InstantiateFunction.
typedef zeObject* (*zeInstantiateFunction)(const zeMetaObject* meta, zeMemoryPool* pool);
/// An initialize, user or further registration step.
typedef void (*zeRegistrationStep)();

/// Runs `registerInternal` once and keeps its result, which later calls
/// return. Reached again while that same registration is under way (a class
/// registering a partner that refers back to it), it returns null at once.
/// A failed registration (null result) is tried again by the next call.
LUXCORE_API zeRegistrationResult zeBayRegister(zeRegisterInternalFunction registerInternal);

/// Registers one class, in this order: the parent first (through the
/// one-argument form); the class descriptor created, stored in *meta, filled
/// (name, parent, size, virtual table, inherited fields) and joined to the
/// descendant lists of all its ancestors; the registration callbacks of every
/// ancestor, outermost first, run for it; then `initialize`, `user` and each
/// function of the null-terminated `further` table; then the registered flag
/// (4) is set. Any of the step functions may be null. Gives null, registering
/// nothing, when the name is missing, the name is taken, or the parent does not register.
LUXCORE_API zeRegistrationResult zeBayRegister(
    bool isAbstract, zeMetaObject** meta, zeRegisterInternalFunction parentRegisterInternal,
    zeGetClassMetaFunction parentGetClassMeta, zeGetClassMetaFunction getClassMetaSafe, const char* name,
    unsigned int instanceSize, zeRetrieveVTableFunction retrieveVTablePointer, zeInstantiateFunction instantiate,
    zeRegistrationStep initialize, zeRegistrationStep user, const zeRegistrationStep* further);

}  // namespace Lux
