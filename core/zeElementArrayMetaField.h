#pragma once

#include "core/zeMetaField.h"

namespace Lux {

class zeDataList;

/// The element-array field "_data" of every list: the list's storage header
/// (count, capacity, storage pointer) seen as one field. Each element is
/// handled by the element field type, a shared field-type instance
/// (`_MetaField`, offset 0) that gets the address of an element where it
/// expects an object; without an element type the elements are plain bytes
/// of the list's element size, copied and compared as such, with no text form.
///
/// The stored form is variable: the byte length, the element count, then
/// each element's stored form.
class LUXCORE_API zeElementArrayMetaField : public zeMetaField {
  ZE_DECLARE_FIELD_CLASS(LUXCORE_API, zeElementArrayMetaField)

 public:
  /// Bits of the 32-bit property word.
  enum Properties : unsigned int {
    /// The elements are not stored: a record holds the list as empty (lists
    /// of plain pointers, which would not mean anything when read back).
    kTransientElements = 1
  };

  /// The element field type, or null for plain bytes.
  zeMetaField* getElementFieldType() const { return _elementType; }
  /// Sets the element field type (a shared instance; holds a reference).
  void setElementFieldType(zeMetaField* type);
  /// The property word.
  unsigned int getProperties() const { return _properties; }
  /// Sets the property word.
  void setProperties(unsigned int properties) { _properties = properties; }

  /// Replaces the "_data" field of list class `meta` by a copy whose element
  /// type is `elementType` and property word `properties`, published through
  /// `slot`; kSuccess, or kFailure when the class has no "_data" of this type.
  static int retype(zeMetaObject* meta, zeMetaField* elementType, unsigned int properties, zeMetaField** slot);

  /// The bytes of the storage header.
  unsigned int computeSize() override;
  /// Pointer alignment.
  unsigned int computeRequiredAlignment() override;
  /// Empties the list (its default), giving up the elements.
  void resetByValue(zeObject* object) override;
  /// Empties the list, as resetByValue().
  void resetByReference(zeObject* object) override;
  /// Gives up the elements and frees the storage.
  void destruct(zeObject* object) override;
  /// Makes the list hold copies of the source's elements, each by the element type's copyByValue.
  void copyByValue(zeObject* destination, const zeObject* source) override;
  /// Same, each element by copyByReference (a list of references shares the objects).
  void copyByReference(zeObject* destination, const zeObject* source) override;
  /// Same, each element by copyByValueShallow.
  void copyByValueShallow(zeObject* destination, const zeObject* source) override;
  /// Orders by element size, count, then element by element.
  int compare(const zeObject* a, const zeObject* b) const override;
  /// Same count and every element alike exactly.
  bool isAlikeCompareExactly(const zeObject* a, const zeObject* b) const override;
  /// Same count and every element alike deeply.
  bool isAlikeCompareDeep(const zeObject* a, const zeObject* b) const override;
  /// Same count and every element alike shallowly.
  bool isAlikeCompareShallow(const zeObject* a, const zeObject* b) const override;
  /// Length and count words plus the stored elements; 0 when an element cannot be written.
  unsigned int getIoSize(const zeObject* object) const override;
  /// Writes length, count and elements; the bytes written, or -1.
  int writeRawFieldMemory(const void* source, void* destination, const zeDirectory* directory,
                          bool swap) const override;
  /// Replaces the elements by the stored ones; the bytes read, or -1 (the list is then empty).
  int readRawFieldMemory(void* destination, const void* source, const zeDirectory* directory, bool swap) const override;
  /// Swaps the byte order of every element of the list whose header is at `memory`.
  void endianSwapMemory(void* memory, int count) const override;
  /// Parses elements one after the other up to the end of the text and
  /// replaces the list by them; characters consumed, or 0, leaving the list
  /// as it was, when an element does not parse or there is none.
  int setByString(zeObject* object, const char* text, const zeDirectory* directory) override;
  /// The elements' texts joined by one blank; null without an element type.
  const char* getByString(const zeObject* object, const zeDirectory* directory) override;

  void userConstruct() override;
  void userCopyDeep(const zeObject* source) override;
  void userCopyShallow(const zeObject* source) override;
  void userDestruct() override;

 private:
  typedef void (zeMetaField::*ElementCopy)(zeObject*, const zeObject*);
  typedef bool (zeMetaField::*ElementAlike)(const zeObject*, const zeObject*) const;

  zeMetaField* elementTypeFor(const zeDataList* list) const;
  void copyElements(zeObject* destination, const zeObject* source, ElementCopy copy);
  bool allAlike(const zeObject* a, const zeObject* b, ElementAlike alike) const;
  void destroyElements(zeDataList* list, int from, int to) const;
  void empty(zeDataList* list) const;
  unsigned int storedBytes(const zeDataList* list) const;
  bool readElements(zeDataList* list, const unsigned char* stored, unsigned int length, int count, bool swap) const;
  int parseElements(zeDataList* list, const char* text) const;
  void copyTypeFrom(const zeObject* source);

  zeMetaField* _elementType;
  unsigned int _properties;
};

}  // namespace Lux
