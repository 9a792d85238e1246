#pragma once

/// \file
/// The per-class registration pattern. A registered class writes one
/// declaration macro at the top of its body and one implementation macro in
/// its source file:
///
///     class MYENGINE_API Lamp : public Lux::zeObject {
///       ZE_DECLARE_CLASS(MYENGINE_API, Lamp)
///      public:
///       float _power;
///       static void bayRegisterInitialize();   // optional: declares _power
///     };
///
///     ZE_IMPLEMENT_CLASS(Lamp, Lux::zeObject, myEngineInit, &Lamp::bayRegisterInitialize, nullptr)
///
/// The macros give the class its registration statics: `_Meta`,
/// `bayRegister()`, `bayRegisterInternal()`, `retrieveVTablePointer()`,
/// `getClassMeta()`, `getClassMetaSafe()` and `_instantiateFromPool()`; field
/// types also `_MetaField`, `bayRegisterMetaValidate()` and the virtual
/// `getGenericMetaField()`. The class's constructor is protected: programs
/// make objects with `Lux::zeCreate<Lamp>(pool)` (core/zeCreate.h), and a
/// `Lamp` on the stack or from `new` does not compile. Each static carries the export macro of the
/// library that defines the class, so every module sees the one `_Meta`.
/// `LIBRARY_INIT` is the defining library's one-time initialisation, run
/// first by every `bayRegisterInternal()`.

#include <cstring>
#include <new>
#include <type_traits>

#include "core/BayCore.h"
#include "core/zeBayRegister.h"
#include "core/zeCreate.h"
#include "core/zeMetaObject.h"
#include "core/zeObject.h"

namespace Lux {

class zeMetaField;

/// The one-time initialisation of a library that needs none.
inline void zeNoLibraryInit() {}

/// The virtual-table pointer of class C: an instance is built in object
/// memory (base constructor, then C's table), the word at the table offset is
/// read, and the construction is undone as C's destructor would. Null for a
/// C++-abstract class.
template <class C>
void* zeRetrieveVTablePointer() {
  if constexpr (std::is_abstract_v<C>) {
    return nullptr;
  } else {
    void* memory = zeObject::operator new(sizeof(C), 0);
    if (!memory) return nullptr;
    C* object = ::new (memory) C;
    void* vtable;
    std::memcpy(&vtable, reinterpret_cast<const char*>(object) + BayCore::_vTablePointerOffset, sizeof vtable);
    object->C::~C();  // exactly C's destructor: the class is known here
    zeObject::operator delete(memory);
    return vtable;
  }
}

}  // namespace Lux

/// Registration statics of class C, exported with API, and its constructor,
/// which is protected: only the class descriptor makes objects (classes
/// derived from C construct it as their base). Leaves access public.
#define ZE_DECLARE_CLASS(API, C)                                                                                 \
 protected:                                                                                                      \
  C() = default; /* Objects of registered classes are made by their class descriptor: Lux::zeCreate<C>(pool). */ \
  friend void* ::Lux::zeRetrieveVTablePointer<C>();                                                              \
                                                                                                                 \
 public:                                                                                                         \
  API static ::Lux::zeMetaObject* _Meta;                                                                         \
  API static void bayRegister();                                                                                 \
  API static ::Lux::zeRegistrationResult bayRegisterInternal();                                                  \
  API static void* retrieveVTablePointer();                                                                      \
  API static ::Lux::zeMetaObject* getClassMeta();                                                                \
  API static ::Lux::zeMetaObject* getClassMetaSafe();                                                            \
  API static ::Lux::zeObject* _instantiateFromPool(::Lux::zeMemoryPool* pool);

/// Registration statics of field-type class C (derived from zeMetaField).
#define ZE_DECLARE_FIELD_CLASS(API, C)       \
  ZE_DECLARE_CLASS(API, C)                   \
  API static ::Lux::zeMetaField* _MetaField; \
  API static void bayRegisterMetaValidate(); \
  API static void _releaseMetaField();       \
  ::Lux::zeMetaField* getGenericMetaField() override { return _MetaField; }

/// The slot through which the descriptor of reflected field NAME is
/// published (NAME `_num` gives `k_num`).
#define ZE_DECLARE_FIELD_SLOT(API, NAME) API static ::Lux::zeMetaField* k##NAME;
/// Definition of the slot of reflected field NAME of class C.
#define ZE_DEFINE_FIELD_SLOT(C, NAME) ::Lux::zeMetaField* C::k##NAME = nullptr;

/// Definitions of C's registration statics. INITIALIZE and USER are
/// `&C::bayRegisterInitialize` / `&C::bayRegisterUser` or nullptr; FURTHER is
/// a null-terminated table of further registration functions or nullptr.
#define ZE_IMPLEMENT_CLASS_FULL(C, PARENT, LIBRARY_INIT, IS_ABSTRACT, INITIALIZE, USER, FURTHER)                    \
  ::Lux::zeMetaObject* C::_Meta = nullptr;                                                                          \
  void C::bayRegister() { ::Lux::zeBayRegister(&C::bayRegisterInternal); }                                          \
  ::Lux::zeRegistrationResult C::bayRegisterInternal() {                                                            \
    LIBRARY_INIT();                                                                                                 \
    return ::Lux::zeBayRegister((IS_ABSTRACT), &C::_Meta, &PARENT::bayRegisterInternal, &PARENT::getClassMeta,      \
                                &C::getClassMetaSafe, #C, static_cast<unsigned int>(sizeof(C)),                     \
                                (IS_ABSTRACT) ? nullptr : &C::retrieveVTablePointer, nullptr, (INITIALIZE), (USER), \
                                (FURTHER));                                                                         \
  }                                                                                                                 \
  void* C::retrieveVTablePointer() { return ::Lux::zeRetrieveVTablePointer<C>(); }                                  \
  ::Lux::zeMetaObject* C::getClassMeta() { return _Meta; }                                                          \
  ::Lux::zeMetaObject* C::getClassMetaSafe() {                                                                      \
    if (_Meta && _Meta->isRegistered()) return _Meta;                                                               \
    bayRegister();                                                                                                  \
    return _Meta;                                                                                                   \
  }                                                                                                                 \
  ::Lux::zeObject* C::_instantiateFromPool(::Lux::zeMemoryPool* pool) {                                             \
    bayRegister();                                                                                                  \
    return _Meta ? _Meta->createInstance(pool) : nullptr;                                                           \
  }

/// A concrete class.
#define ZE_IMPLEMENT_CLASS(C, PARENT, LIBRARY_INIT, INITIALIZE, USER) \
  ZE_IMPLEMENT_CLASS_FULL(C, PARENT, LIBRARY_INIT, false, INITIALIZE, USER, nullptr)

/// A class of which no instances are made.
#define ZE_IMPLEMENT_ABSTRACT_CLASS(C, PARENT, LIBRARY_INIT, INITIALIZE, USER) \
  ZE_IMPLEMENT_CLASS_FULL(C, PARENT, LIBRARY_INIT, true, INITIALIZE, USER, nullptr)

/// A concrete class whose registration also runs the functions listed
/// after USER (for instance the bayRegister of a class it holds).
#define ZE_IMPLEMENT_CLASS_WITH_FURTHER(C, PARENT, LIBRARY_INIT, INITIALIZE, USER, ...)      \
  static const ::Lux::zeRegistrationStep C##_furtherRegistration[] = {__VA_ARGS__, nullptr}; \
  ZE_IMPLEMENT_CLASS_FULL(C, PARENT, LIBRARY_INIT, false, INITIALIZE, USER, C##_furtherRegistration)

/// A field-type class: as a concrete class, plus the shared instance made by
/// bayRegisterMetaValidate(), which runs as the further registration step.
/// The shared instance joins zeMetaField::_MetaFieldList, takes its index
/// there as type index, and is dropped when the class is unregistered.
#define ZE_IMPLEMENT_FIELD_CLASS(C, PARENT, LIBRARY_INIT, INITIALIZE)                                        \
  ::Lux::zeMetaField* C::_MetaField = nullptr;                                                               \
  void C::bayRegisterMetaValidate() {                                                                        \
    if (_MetaField) return;                                                                                  \
    ::Lux::__internalObjectList* list = ::Lux::zeMetaField::_MetaFieldList;                                  \
    ::Lux::zeObject* created = _Meta && list ? _Meta->createInstance() : nullptr;                            \
    if (!created) return;                                                                                    \
    _MetaField = static_cast<C*>(created);                                                                   \
    list->append(_MetaField);                                                                                \
    _MetaField->setTypeIndex(static_cast<unsigned short>(list->getCount() - 1));                             \
    _MetaField->validate();                                                                                  \
    _Meta->registerClassDestructor(&C::_releaseMetaField);                                                   \
  }                                                                                                          \
  void C::_releaseMetaField() {                                                                              \
    ::Lux::zeMetaField* shared = _MetaField;                                                                 \
    _MetaField = nullptr;                                                                                    \
    if (shared) shared->release();                                                                           \
  }                                                                                                          \
  static const ::Lux::zeRegistrationStep C##_furtherRegistration[] = {&C::bayRegisterMetaValidate, nullptr}; \
  ZE_IMPLEMENT_CLASS_FULL(C, PARENT, LIBRARY_INIT, false, INITIALIZE, nullptr, C##_furtherRegistration)

// The registration result type; included last because it is itself a
// registered class declared with the macros above.
#include "core/__internalObjectList.h"
