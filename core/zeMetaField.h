#pragma once

#include "core/zeClassRegistration.h"
#include "core/zeDirectory.h"

namespace Lux {

/// Field descriptor: describes one reflected field of a class (its name,
/// type, byte size, offset in the instance and default value) and performs
/// the generic, size-driven operations on it. Field-type classes derive from
/// it and override what their type needs; each has a shared instance,
/// `_MetaField`, listed in zeMetaField::_MetaFieldList.
///
/// A field-type class's own data starts at byte 88, right after this base.
class LUXCORE_API zeMetaField : public zeObject {
  ZE_DECLARE_CLASS(LUXCORE_API, zeMetaField)

 public:
  /// How a field is set when an object is made (resetFields()).
  enum ResetMethod : unsigned char { kResetByValue = 0, kResetByNoReset = 1, kResetByReference = 2 };
  /// How a field is copied by a deep object copy.
  enum FieldCopyMethod : unsigned char {
    kCopyByValue = 0,
    kCopyByReference = 1,
    kCopyByValueShallow = 2,
    kCopyByReset = 3,
    kCopyByNoCopy = 4
  };
  /// How a field is compared by isAlike().
  enum CompareMethod : unsigned char {
    kCompareExactly = 0,
    kCompareDeep = 1,
    kCompareShallow = 2,
    kCompareNoCompare = 3
  };

  /// The global list of shared field-type instances; a field type's index is
  /// its position here. Exists while zeMetaField is registered.
  static __internalObjectList* _MetaFieldList;

  /// Releases the pooled name (the retrieveVTablePointer path; registered
  /// objects are destroyed through internalRelease()).
  ~zeMetaField();

  // --- virtual operations, in slot order after zeObject's ------------------

  /// The shared instance of this field's type; null for the base.
  virtual zeMetaField* getGenericMetaField();
  /// Copies the field's bytes from `memory` into `object`.
  virtual void setFromMemory(zeObject* object, const void* memory);
  /// Byte size of the field; 0 for the base.
  virtual unsigned int computeSize();
  /// Byte size of one value of the field's type (the shared instance's size).
  virtual unsigned int computeTypeSize();
  /// Alignment the field's memory wants: the largest power of two up to 16
  /// that divides the type size.
  virtual unsigned int computeRequiredAlignment();
  /// Sets the field of `object` from the default memory (zero without one).
  virtual void resetByValue(zeObject* object);
  /// Leaves the field of `object` as it is.
  virtual void resetByNoReset(zeObject* object);
  /// Sets a referring field of `object` from its default; by value here.
  virtual void resetByReference(zeObject* object);
  /// Prepares the field's memory in a new object; nothing for plain data.
  virtual void construct(zeObject* object);
  /// Gives up what the field of a dying object holds; nothing for plain data.
  virtual void destruct(zeObject* object);
  /// Hook when the field becomes live in a running object; does nothing.
  virtual void commission(zeObject* object);
  /// Hook when the field leaves a running object; does nothing.
  virtual void decommission(zeObject* object);
  /// Makes sure the field owns default memory of its size; with `memory`
  /// non-null copies that many bytes from it.
  virtual void setDefaultMemory(const void* memory);
  /// Copies the field's bytes from `source` to `destination`.
  virtual void copyByValue(zeObject* destination, const zeObject* source);
  /// Copies a referring field; by value here.
  virtual void copyByReference(zeObject* destination, const zeObject* source);
  /// Copies the field without what it refers to; by value here.
  virtual void copyByValueShallow(zeObject* destination, const zeObject* source);
  /// Resets the field of `destination` instead of copying.
  virtual void copyByReset(zeObject* destination, const zeObject* source);
  /// Leaves the field of `destination` as it is.
  virtual void copyByNoCopy(zeObject* destination, const zeObject* source);
  /// Writes "prefix name = text" with `indent` leading blanks to standard output.
  virtual void print(const zeObject* object, unsigned int indent, const char* prefix);
  /// Calls `visit(object, this, data)` and returns its result.
  virtual int traverse(zeObject* object, int (*visit)(zeObject*, zeMetaField*, void*), void* data);
  /// Enters what the field refers to into a directory; plain data has nothing (kSuccess).
  virtual int addToDirectory(zeObject* object, zeDirectory* directory);
  /// Byte-wise order of the field in `a` and `b`: <0, 0 or >0.
  virtual int compare(const zeObject* a, const zeObject* b) const;
  /// Whether the fields are byte for byte equal.
  virtual bool isAlikeCompareExactly(const zeObject* a, const zeObject* b) const;
  /// Deep comparison; byte for byte here.
  virtual bool isAlikeCompareDeep(const zeObject* a, const zeObject* b) const;
  /// Shallow comparison; byte for byte here.
  virtual bool isAlikeCompareShallow(const zeObject* a, const zeObject* b) const;
  /// Always alike.
  virtual bool isAlikeCompareNoCompare(const zeObject* a, const zeObject* b) const;
  /// Bytes the field takes in a file: its byte size.
  virtual unsigned int getIoSize(const zeObject* object) const;
  /// Writes the field's bytes from `source` to file memory `destination`,
  /// byte-swapped when `swap`; returns the bytes written (getIoSize()), or
  /// -1 when the value cannot be written.
  virtual int writeRawFieldMemory(const void* source, void* destination, const zeDirectory* directory, bool swap) const;
  /// Reads the field's bytes from file memory `source` into `destination`,
  /// byte-swapped when `swap`; returns the bytes read, or -1 when the stored
  /// value is refused. A field of variable I/O size finds its length in the
  /// first 32-bit word of `source`, which the caller has checked.
  virtual int readRawFieldMemory(void* destination, const void* source, const zeDirectory* directory, bool swap) const;
  /// Reverses the byte order of `count` consecutive values; bytes have none,
  /// so nothing here.
  virtual void endianSwapMemory(void* memory, int count) const;
  /// Reverses the byte order of the field of `object`.
  virtual void endianSwap(zeObject* object) const;
  /// Parses the whole field of `object` from `text`, element after element
  /// (getElementCount()); characters consumed, 0 on failure.
  virtual int setByString(zeObject* object, const char* text, const zeDirectory* directory);
  /// The whole field of `object` as pooled text, its elements joined by one
  /// blank (caller owns one reference); null if it has no text form.
  virtual const char* getByString(const zeObject* object, const zeDirectory* directory);
  /// Parses one value of the field's type; characters consumed, 0 on failure (always, here).
  virtual int setMemoryByString(void* memory, const char* text, const zeDirectory* directory);
  /// One value of the field's type as pooled text; null here.
  virtual const char* getStringFromMemory(const void* memory, const zeDirectory* directory);
  /// `count` values `stride` bytes apart as pooled text joined by `separator`.
  virtual const char* convertMemoryToString(const void* memory, int count, const zeDirectory* directory,
                                            const char* separator, int stride);
  /// Parses `count` consecutive values of getElementBytes() each, one
  /// setMemoryByString() after the other, each starting where the previous
  /// one stopped; characters consumed, 0 when any value consumes nothing.
  virtual int convertStringToMemory(const char* text, void* memory, int count, const zeDirectory* directory);

  /// Revalidates the descriptor after it was read.
  void postRead() override;

  // --- non-virtual ----------------------------------------------------------

  /// Recomputes size and alignment from the type and takes the type index of
  /// the type's shared instance; kFailure when the size does not fit 16 bits.
  int validate();

  /// An independent copy of the descriptor (name, type, offset, slot, methods,
  /// default memory, reflected fields), one reference for the caller.
  zeMetaField* createCopy(CopyMethod method) const;

  /// The field name (pooled), or null.
  const char* getName() const { return _name; }
  /// Names the field (the text is pooled).
  void setName(const char* name);
  /// The field's byte size, set by validate().
  unsigned short getSize() const { return _size; }
  /// The alignment set by validate().
  unsigned short getAlignment() const { return _alignment; }
  /// The field's byte offset in the instance.
  int getOffset() const { return _offset; }
  /// Sets the byte offset.
  void setOffset(int offset) { _offset = offset; }
  /// Position of the field type in the global list.
  unsigned short getTypeIndex() const { return _typeIndex; }
  /// Sets the type index.
  void setTypeIndex(unsigned short index) { _typeIndex = index; }
  /// The static slot the descriptor is published through, or null.
  zeMetaField** getPublishSlot() const { return _publishSlot; }
  /// Publishes the descriptor through `slot` (null: nowhere).
  void setPublishSlot(zeMetaField** slot);
  /// The default memory, or null.
  const void* getDefaultMemory() const { return _defaultMemory; }
  /// The class whose instances hold the field, or null.
  zeMetaObject* getOwnerClass() const { return _ownerClass; }
  /// Sets the class whose instances hold the field.
  void setOwnerClass(zeMetaObject* owner) { _ownerClass = owner; }
  /// How the field is reset.
  ResetMethod getResetMethod() const { return static_cast<ResetMethod>(_resetMethod); }
  /// How the field is copied.
  FieldCopyMethod getCopyMethod() const { return static_cast<FieldCopyMethod>(_copyMethod); }
  /// How the field is compared.
  CompareMethod getCompareMethod() const { return static_cast<CompareMethod>(_compareMethod); }
  /// Sets how the field is reset.
  void setResetMethod(ResetMethod method) { _resetMethod = method; }
  /// Sets how the field is copied.
  void setCopyMethod(FieldCopyMethod method) { _copyMethod = method; }
  /// Sets how the field is compared.
  void setCompareMethod(CompareMethod method) { _compareMethod = method; }

  /// Resets the field of `object` by the reset method.
  void reset(zeObject* object);
  /// Copies the field from `source` by the copy method (deep) or shallowly.
  void copy(zeObject* destination, const zeObject* source, CopyMethod method);
  /// Compares the field by the compare method.
  bool isAlike(const zeObject* a, const zeObject* b) const;

  /// Number of elements of the field: the descriptor's own reflected "_num"
  /// when its class has one (array fields), else 1.
  int getElementCount() const;
  /// Bytes per element: the byte size divided by getElementCount(); 0 for no element.
  unsigned int getElementBytes() const;
  /// Whether the field's stored size depends on its value; such a field
  /// stores its byte length in the first 32-bit word of its stored form.
  bool hasVariableIoSize() const { return _ioForm != 0; }

  /// The field's memory inside `object`.
  void* fieldMemory(zeObject* object) const { return reinterpret_cast<char*>(object) + _offset; }
  /// The field's memory inside `object`, read-only.
  const void* fieldMemory(const zeObject* object) const { return reinterpret_cast<const char*>(object) + _offset; }

  void userCopyDeep(const zeObject* source) override;
  void userCopyShallow(const zeObject* source) override;
  void userDestruct() override;

  /// Registration: creates _MetaFieldList and its class destructor.
  static void bayRegisterInitialize();

 protected:
  /// Declares the stored size variable (see hasVariableIoSize()); field
  /// types that need it call this from userConstruct().
  void setVariableIoSize(bool variable) { _ioForm = variable ? 1 : 0; }

 private:
  void copyDescriptorState(const zeMetaField& source);
  void releaseDescriptorState();

  // The descriptor's state, laid out behind the 20-byte object header so the
  // base ends at byte 88.
  // A new descriptor has no name, type, size or default (all zero).
  int _offset = 0;
  const char* _name = nullptr;
  unsigned short _typeIndex = 0;
  unsigned short _size = 0;
  unsigned short _alignment = 0;
  unsigned char _resetMethod = kResetByValue;
  unsigned char _copyMethod = kCopyByValue;
  zeMetaField** _publishSlot = nullptr;
  void* _defaultMemory = nullptr;
  zeMetaObject* _ownerClass = nullptr;
  unsigned char _compareMethod = kCompareExactly;
  unsigned char _ioForm = 0;  // 1: variable stored size
  [[maybe_unused]] unsigned char _reservedFlags[2] = {};
  unsigned int _defaultBytes = 0;            // bytes of _defaultMemory
  [[maybe_unused]] void* _reserved[2] = {};  // keeps the base at 88 bytes as it grows
};

static_assert(sizeof(zeMetaField) == 88, "a field class's own data starts at byte 88");

}  // namespace Lux
