#pragma once

#include <cstddef>

#include "core/LuxCoreExport.h"
#include "core/zeSmartPointer.h"

namespace Lux {

class __internalObjectList;
class zeMemoryPool;
template <class C>
void* zeRetrieveVTablePointer();
class zeMetaField;
class zeMetaObject;

/// Root of every registered class.
///
/// The header of every object is, in order: the virtual-table pointer, the
/// core word (the object's class descriptor) and a 32-bit reference word whose
/// low 23 bits count references; the upper 9 bits are object flags. Derived
/// classes lay their fields directly after it.
///
/// Objects are made by their class descriptor (zeMetaObject::createInstance),
/// never by a C++ constructor of the derived class: the memory is zeroed,
/// zeObject() runs, the class's virtual table is installed, the reflected
/// fields are reset from their defaults and userConstruct() runs. A registered
/// class therefore holds plain data only and sets itself up in its user hooks.
/// There is no virtual destructor: the last release() destroys the object
/// through internalRelease().
class LUXCORE_API zeObject {
 public:
  /// Mask of the reference count in the reference word.
  static constexpr unsigned int kReferenceCountMask = 0x7fffffu;
  /// Position of the lowest object-flag bit in the reference word.
  static constexpr unsigned int kObjectFlagShift = 23;

  /// How createCopy() treats the fields of the original.
  enum CopyMethod : int {
    kCopyShallow = 0,  ///< fields by their shallow copy; userCopyShallow() runs
    kCopyDeep = 1      ///< fields by their own copy method; userCopyDeep() runs
  };

  // Objects are shared by reference and copied through createCopy().
  zeObject(const zeObject&) = delete;
  zeObject& operator=(const zeObject&) = delete;

  // The seventeen user hooks, in a fixed slot order that every class inherits.

  /// Hook for allocating storage that fields refer to; does nothing here.
  virtual void userAllocateFields(bool deep);
  /// Hook that frees what userAllocateFields() made; does nothing here.
  virtual void userDeallocateFields();
  /// Completes a deep copy from `source` after the fields were copied.
  virtual void userCopyDeep(const zeObject* source);
  /// Completes a shallow copy from `source` after the fields were copied.
  virtual void userCopyShallow(const zeObject* source);
  /// Whether state beyond the reflected fields is alike, deep comparison; true here.
  virtual bool userIsAlikeDeep(const zeObject* other) const;
  /// Whether state beyond the reflected fields is alike, shallow comparison; true here.
  virtual bool userIsAlikeShallow(const zeObject* other) const;
  /// Runs on a copy made by createCopy(), before the user copy hook.
  virtual void userInstantiate(bool deep);
  /// Runs when the last reference goes, before the object is destroyed.
  virtual void userRelease();
  /// Runs last when the object is made.
  virtual void userConstruct();
  /// Runs first when the object is destroyed.
  virtual void userDestruct();
  /// Hook after the reflected fields were reset from their defaults.
  virtual void userResetFields(bool deep);
  /// Runs before the object is written to a file.
  virtual void preWrite();
  /// Runs after the object was read.
  virtual void postRead();
  /// Runs once the whole file holding the object was read.
  virtual void postFileRead();
  /// Drops slack storage; does nothing here.
  virtual void clean();
  /// Hook for turning a class abstract; does nothing here.
  virtual void makeAbstract(zeMetaObject* meta);
  /// Hook for turning a class concrete; does nothing here.
  virtual void makeConcrete(zeMetaObject* meta);

  /// Adds one reference.
  void addReference() const { ++_referenceWord; }

  /// Drops one reference; when the low 23 bits reach 0 the object is
  /// destroyed, whatever its flag bits.
  void release() const {
    --_referenceWord;
    if ((_referenceWord & kReferenceCountMask) == 0) internalRelease();
  }

  /// Destroys the object: userRelease(), userDestruct(), each reflected
  /// field's destruct() from last to first, then the memory goes back to its
  /// pool.
  void internalRelease() const;

  /// The reference count (low 23 bits of the reference word).
  unsigned int getReferenceCount() const { return _referenceWord & kReferenceCountMask; }

  /// The 9 object-flag bits (upper bits of the reference word), as a value 0..511.
  unsigned int getObjectFlags() const { return _referenceWord >> kObjectFlagShift; }

  /// Replaces the 9 object-flag bits; the reference count is kept.
  void setObjectFlags(unsigned int flags) const {
    _referenceWord = (_referenceWord & kReferenceCountMask) | (flags << kObjectFlagShift);
  }

  /// The class descriptor that made the object; null for an object not made by one.
  zeMetaObject* getMetaObject() const { return _meta; }

  /// Whether the object's class is `meta` or derives from it.
  bool isOfType(const zeMetaObject* meta) const;

  /// A new object of the same class from `pool` (null: the default pool),
  /// carrying one reference for the caller, with the fields copied as `method`
  /// says; null on failure.
  zeObject* createCopy(CopyMethod method, zeMemoryPool* pool = nullptr) const;

  /// Copies the reflected fields of `source`, an object of the same class,
  /// each by its copy method (shallow: by the shallow copy), then runs the
  /// user copy hook. Returns false, copying nothing, when the classes differ.
  bool copyFrom(const zeObject* source, CopyMethod method);

  /// Whether `other` is of the same class and alike field by field: deep,
  /// each field by its compare method, then userIsAlikeDeep(); shallow, each
  /// field by its shallow comparison, then userIsAlikeShallow().
  bool isAlikeTo(const zeObject* other, CopyMethod method) const;

  // --- services on all reflected fields ------------------------------------

  /// Prints every reflected field to standard output, one line each
  /// ("name = text"), with `indent` leading blanks.
  void printFields(unsigned int indent = 0) const;

  /// Sets the field called `name` from its text form. kSuccess, or kFailure
  /// when the class has no such field or the text does not parse (a field of
  /// several elements may then hold the elements parsed before the failure).
  int setFieldByString(const char* name, const char* text);

  /// Calls traverse() of every reflected field in order; stops at and
  /// returns the first result that is not 0, else 0.
  int traverseFields(int (*visit)(zeObject* object, zeMetaField* field, void* data), void* data);

  /// Bytes of the object's record (all reflected fields with a header that
  /// names the class and checks the content); 0 when it cannot be written.
  unsigned int getRecordSize() const;

  /// Runs preWrite(), then writes the record to `buffer` in native byte order
  /// or, with `swap`, in the other one. kSuccess, or kFailure when `length`
  /// is less than getRecordSize() or a field cannot be written.
  int writeRecord(void* buffer, unsigned int length, bool swap);

  /// Reads a record made by writeRecord() with the same `swap` from the
  /// `length` bytes at `buffer`, then runs postRead(). kFailure, leaving the
  /// object as it was, for a truncated or corrupt record or one of another
  /// class.
  int readRecord(const void* buffer, unsigned int length, bool swap);

  /// Memory for an object from the default pool; `tag` is kept for memory
  /// tracking (0: none). Null when memory runs out.
  static void* operator new(std::size_t size, unsigned long tag) noexcept;
  /// There is no plain `new` of an object.
  static void* operator new(std::size_t) = delete;  // Objects are made by their class descriptor: zeCreate<C>(pool).
  /// Gives memory of an object back to its pool.
  static void operator delete(void* memory) noexcept;
  /// Pairs with the tagged operator new.
  static void operator delete(void* memory, unsigned long tag) noexcept;

  // Registration statics of the root class (see zeClassRegistration.h).
  /// The class descriptor, or null while unregistered.
  static zeMetaObject* _Meta;
  /// Registers the class (once).
  static void bayRegister();
  /// The registration step itself, as zeBayRegister runs it.
  static zeSmartPointer<__internalObjectList> bayRegisterInternal();
  /// The virtual table pointer of an instance of the class.
  static void* retrieveVTablePointer();
  /// The class descriptor, or null while unregistered.
  static zeMetaObject* getClassMeta();
  /// The class descriptor, registering the class when it is missing.
  static zeMetaObject* getClassMetaSafe();
  /// A new instance from `pool` (the default pool when null).
  static zeObject* _instantiateFromPool(zeMemoryPool* pool);

 protected:
  /// An object with no class descriptor and no reference. Objects are made by
  /// their class descriptor: Lux::zeCreate<C>(pool), or C::_instantiateFromPool(pool).
  zeObject() : _meta(nullptr), _referenceWord(0) {}

 private:
  friend class zeMetaObject;
  friend void* zeRetrieveVTablePointer<zeObject>();

  zeMetaObject* _meta;
  mutable unsigned int _referenceWord;
};

}  // namespace Lux
