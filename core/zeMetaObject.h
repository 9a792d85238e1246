#pragma once

#include <vector>

#include "core/LuxCoreExport.h"
#include "core/zeSmartPointer.h"

namespace Lux {

class zeMemoryPool;
class zeMetaField;
class zeObject;

/// Class descriptor: name, parent, instance size, reflected fields and the
/// virtual table of one registered class. Made by zeBayRegister when the
/// class registers and freed when classes are unregistered
/// (BayCore::unregisterAllClasses()); never made or freed by hand.
class LUXCORE_API zeMetaObject {
 public:
  /// Flag bits of getFlags().
  enum Flags : unsigned int {
    kFlagAbstract = 1,   ///< no instances can be made
    kFlagFieldsSet = 2,  ///< the class's initialize step has run
    kFlagRegistered = 4  ///< registration has completed
  };

  /// Custom instantiation of a class (given at registration instead of the
  /// pool-and-virtual-table path); one reference for the caller or null.
  typedef zeObject* (*InstantiateFunction)(const zeMetaObject* meta, zeMemoryPool* pool);
  /// Makes one field descriptor from a pool (a field class's _instantiateFromPool).
  typedef zeObject* (*FieldInstantiateFunction)(zeMemoryPool* pool);

  zeMetaObject(const zeMetaObject&) = delete;
  zeMetaObject& operator=(const zeMetaObject&) = delete;

  // --- the registry -------------------------------------------------------

  /// The registered class of that name, or null.
  static zeMetaObject* find(const char* name);
  /// Number of registered classes.
  static int getClassCount();
  /// Registered class `i` in registration order, or null out of range.
  static zeMetaObject* getClass(int i);

  // --- description --------------------------------------------------------

  /// The class name.
  const char* getName() const { return _name; }
  /// The parent class, null for the root.
  const zeMetaObject* getParent() const { return _parent; }
  /// Bytes per instance.
  unsigned int getInstanceSize() const { return _instanceSize; }
  /// The flag set (Flags).
  unsigned int getFlags() const { return _flags; }
  /// Whether instances can be made.
  bool isAbstract() const { return (_flags & kFlagAbstract) != 0; }
  /// Whether registration of the class has completed.
  bool isRegistered() const { return (_flags & kFlagRegistered) != 0; }
  /// The virtual-table pointer installed in new instances; null for abstract classes.
  void* getVTablePointer() const { return _vtable; }
  /// Position of the class in the registry.
  int getClassIndex() const { return _classIndex; }

  /// A 32-bit slot reserved for whoever owns the class family (the volumes
  /// keep their type index here). 0 until set.
  unsigned int getOwnerSlot() const { return _ownerSlot; }
  /// Writes the owner slot.
  void setOwnerSlot(unsigned int value) { _ownerSlot = value; }

  // --- instances ----------------------------------------------------------

  /// New instance from the default pool with one reference for the caller;
  /// null for an abstract class or when memory runs out.
  zeObject* createInstance() const { return createInstance(nullptr); }
  /// Same from `pool` (null: the default pool).
  zeObject* createInstance(zeMemoryPool* pool) const;
  /// Same, held by a smart pointer that owns the creation reference.
  zeSmartPointer<zeObject> createInstanceRef(zeMemoryPool* pool) const;

  /// Resets every reflected field of `object` by its reset method, then runs
  /// userResetFields(deep).
  void resetFields(zeObject* object, bool deep) const;

  // --- fields -------------------------------------------------------------

  /// The field of that name, inherited fields included; null if none.
  zeMetaField* getMetaField(const char* name) const;
  /// Number of fields, inherited included.
  int getMetaFieldCount() const { return static_cast<int>(_fields.size()); }
  /// Field `i`, inherited fields first; null out of range.
  zeMetaField* getIndexedMetaField(int i) const;

  /// Makes one field descriptor with each of the `n` functions (from the
  /// default pool) and appends them after the existing fields. Returns
  /// kSuccess, or kFailure when a descriptor could not be made (the others
  /// are still appended).
  int instantiateAndAppendFields(FieldInstantiateFunction* functions, int n);

  /// For the fields from index `first` on: sets name i - first, publishes the
  /// descriptor through *slots[i - first], sets its byte offset, then
  /// validates every field of the class. kFailure when a field fails.
  int setMetaFieldBasicPropertiesAndValidateAll(const char* const* names, zeMetaField*** slots, int* offsets,
                                                int first);

  /// Replaces the field at `index` by `field`, whose reference the class
  /// takes over, and validates it. An index out of range releases `field`
  /// and gives kFailure.
  int validateAndSetMetaField(int index, zeMetaField* field);

  // --- class family -------------------------------------------------------

  /// Function called when the class is unregistered (last installed, first called).
  void registerClassDestructor(void (*destructor)());
  /// Function called for every class registered later that derives from this one.
  void registerClassRegistrationCallback(void (*callback)(zeMetaObject* meta));

  /// Number of classes derived from this one, directly or not.
  int getChildCount() const { return static_cast<int>(_descendants.size()); }
  /// Derived class `i` in registration order; null out of range.
  zeMetaObject* getChild(int i) const;
  /// Whether this class is `other` or derives from it.
  bool isOfType(const zeMetaObject* other) const;

 private:
  friend class BayCoreRegistry;

  zeMetaObject() = default;
  ~zeMetaObject();

  const char* _name = nullptr;  // pooled
  zeMetaObject* _parent = nullptr;
  zeMetaObject** _staticSlot = nullptr;  // the class's _Meta, cleared when unregistered
  unsigned int _instanceSize = 0;
  unsigned int _flags = 0;
  unsigned int _ownerSlot = 0;
  int _classIndex = -1;
  void* _vtable = nullptr;
  InstantiateFunction _instantiate = nullptr;
  std::vector<zeMetaField*> _fields;  // one reference each
  std::vector<zeMetaObject*> _descendants;
  std::vector<void (*)()> _destructors;
  std::vector<void (*)(zeMetaObject*)> _callbacks;
};

}  // namespace Lux
