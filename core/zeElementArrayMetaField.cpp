#include "core/zeElementArrayMetaField.h"

#include <cctype>
#include <cstddef>
#include <cstring>

#include "core/zeDataList.h"
#include "core/zeMemoryPool.h"
#include "core/zeObjectRecord.h"
#include "core/zeResult.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeElementArrayMetaField, zeMetaField, zeNoLibraryInit, nullptr)

namespace {

// The list whose storage header is at `memory` (the field's memory).
zeDataList* listAt(void* memory) {
  return reinterpret_cast<zeDataList*>(static_cast<char*>(memory) - offsetof(zeDataList, _count));
}
const zeDataList* listAt(const void* memory) {
  return reinterpret_cast<const zeDataList*>(static_cast<const char*>(memory) - offsetof(zeDataList, _count));
}

// An element as the element type sees it: the "object" holding the value at
// offset 0, where a shared field-type instance finds its field.
zeObject* holderOf(void* element) { return reinterpret_cast<zeObject*>(element); }
const zeObject* holderOf(const void* element) { return reinterpret_cast<const zeObject*>(element); }

int sign(int order) { return (order > 0) - (order < 0); }

}  // namespace

// --- element type and property word -------------------------------------------

void zeElementArrayMetaField::setElementFieldType(zeMetaField* type) {
  if (type) type->addReference();
  if (_elementType) _elementType->release();
  _elementType = type;
}

int zeElementArrayMetaField::retype(zeMetaObject* meta, zeMetaField* elementType, unsigned int properties,
                                    zeMetaField** slot) {
  zeMetaField* data = meta ? meta->getMetaField("_data") : nullptr;
  if (!data || !data->isOfType(_Meta)) return kFailure;
  int index = 0;
  while (meta->getIndexedMetaField(index) != data) ++index;
  zeElementArrayMetaField* copy = static_cast<zeElementArrayMetaField*>(data->createCopy(kCopyDeep));
  if (!copy) return kFailure;
  copy->setElementFieldType(elementType);
  copy->setProperties(properties);
  copy->setPublishSlot(slot);
  return meta->validateAndSetMetaField(index, copy);
}

zeMetaField* zeElementArrayMetaField::elementTypeFor(const zeDataList* list) const {
  // An element type of another size than the list's elements would reach
  // past them: such elements are handled as plain bytes.
  return _elementType && _elementType->getSize() == list->getElementSize() ? _elementType : nullptr;
}

// --- size, reset, destruction -----------------------------------------------

unsigned int zeElementArrayMetaField::computeSize() {
  return static_cast<unsigned int>(offsetof(zeDataList, _data) + sizeof(void*) - offsetof(zeDataList, _count));
}

unsigned int zeElementArrayMetaField::computeRequiredAlignment() { return alignof(void*); }

void zeElementArrayMetaField::destroyElements(zeDataList* list, int from, int to) const {
  zeMetaField* type = elementTypeFor(list);
  if (!type) return;
  const unsigned int size = list->getElementSize();
  for (int i = from; i < to; ++i) type->destruct(holderOf(list->getElementMemory(i, size)));
}

void zeElementArrayMetaField::empty(zeDataList* list) const {
  const int count = list->_count;
  list->_count = 0;  // emptied first: an element that dies may look at the list
  destroyElements(list, 0, count);
}

void zeElementArrayMetaField::resetByValue(zeObject* object) { empty(listAt(fieldMemory(object))); }

void zeElementArrayMetaField::resetByReference(zeObject* object) { resetByValue(object); }

void zeElementArrayMetaField::destruct(zeObject* object) {
  zeDataList* list = listAt(fieldMemory(object));
  empty(list);
  zeMemoryPool::deallocate(list->_data);
  list->_data = nullptr;
  list->_capacity = 0;
}

// --- copies and comparisons -------------------------------------------------------

void zeElementArrayMetaField::copyElements(zeObject* destination, const zeObject* source, ElementCopy copy) {
  zeDataList* to = listAt(fieldMemory(destination));
  const zeDataList* from = listAt(fieldMemory(source));
  if (to == from) return;
  empty(to);
  const unsigned int size = to->getElementSize();
  if (from->getElementSize() != size || to->resizeAndSetCount(from->_count, size) != kSuccess) return;
  zeMetaField* type = elementTypeFor(to);
  for (int i = 0; i < from->_count; ++i) {
    void* element = to->getElementMemory(i, size);
    const void* original = from->getElementMemory(i, size);
    if (type) {
      (type->*copy)(holderOf(element), holderOf(original));
    } else {
      std::memcpy(element, original, size);
    }
  }
}

void zeElementArrayMetaField::copyByValue(zeObject* destination, const zeObject* source) {
  copyElements(destination, source, &zeMetaField::copyByValue);
}

void zeElementArrayMetaField::copyByReference(zeObject* destination, const zeObject* source) {
  copyElements(destination, source, &zeMetaField::copyByReference);
}

void zeElementArrayMetaField::copyByValueShallow(zeObject* destination, const zeObject* source) {
  copyElements(destination, source, &zeMetaField::copyByValueShallow);
}

int zeElementArrayMetaField::compare(const zeObject* a, const zeObject* b) const {
  const zeDataList* p = listAt(fieldMemory(a));
  const zeDataList* q = listAt(fieldMemory(b));
  if (p->getElementSize() != q->getElementSize()) return p->getElementSize() < q->getElementSize() ? -1 : 1;
  if (p->_count != q->_count) return p->_count < q->_count ? -1 : 1;
  const zeMetaField* type = elementTypeFor(p);
  const unsigned int size = p->getElementSize();
  for (int i = 0; i < p->_count; ++i) {
    const void* x = p->getElementMemory(i, size);
    const void* y = q->getElementMemory(i, size);
    const int order = type ? type->compare(holderOf(x), holderOf(y)) : std::memcmp(x, y, size);
    if (order != 0) return sign(order);
  }
  return 0;
}

bool zeElementArrayMetaField::allAlike(const zeObject* a, const zeObject* b, ElementAlike alike) const {
  const zeDataList* p = listAt(fieldMemory(a));
  const zeDataList* q = listAt(fieldMemory(b));
  if (p->_count != q->_count || p->getElementSize() != q->getElementSize()) return false;
  const zeMetaField* type = elementTypeFor(p);
  const unsigned int size = p->getElementSize();
  for (int i = 0; i < p->_count; ++i) {
    const void* x = p->getElementMemory(i, size);
    const void* y = q->getElementMemory(i, size);
    if (type ? !(type->*alike)(holderOf(x), holderOf(y)) : std::memcmp(x, y, size) != 0) return false;
  }
  return true;
}

bool zeElementArrayMetaField::isAlikeCompareExactly(const zeObject* a, const zeObject* b) const {
  return allAlike(a, b, &zeMetaField::isAlikeCompareExactly);
}

bool zeElementArrayMetaField::isAlikeCompareDeep(const zeObject* a, const zeObject* b) const {
  return allAlike(a, b, &zeMetaField::isAlikeCompareDeep);
}

bool zeElementArrayMetaField::isAlikeCompareShallow(const zeObject* a, const zeObject* b) const {
  return allAlike(a, b, &zeMetaField::isAlikeCompareShallow);
}

// --- stored form ------------------------------------------------------------------

unsigned int zeElementArrayMetaField::storedBytes(const zeDataList* list) const {
  unsigned long long bytes = 8;  // length and count
  if ((_properties & kTransientElements) == 0) {
    const zeMetaField* type = elementTypeFor(list);
    const unsigned int size = list->getElementSize();
    for (int i = 0; i < list->_count; ++i) {
      const unsigned int element = type ? type->getIoSize(holderOf(list->getElementMemory(i, size))) : size;
      if (type && type->hasVariableIoSize() && element < 4) return 0;  // cannot be written
      bytes += element;
    }
  }
  return bytes <= 0x7fffffffu ? static_cast<unsigned int>(bytes) : 0u;
}

unsigned int zeElementArrayMetaField::getIoSize(const zeObject* object) const {
  return storedBytes(listAt(fieldMemory(object)));
}

int zeElementArrayMetaField::writeRawFieldMemory(const void* source, void* destination, const zeDirectory* directory,
                                                 bool swap) const {
  const zeDataList* list = listAt(source);
  const unsigned int bytes = storedBytes(list);
  if (bytes == 0) return -1;
  const int count = (_properties & kTransientElements) ? 0 : list->_count;
  unsigned char* out = static_cast<unsigned char*>(destination);
  zeObjectRecord::putWord(out, bytes, swap);
  zeObjectRecord::putWord(out + 4, static_cast<unsigned int>(count), swap);
  const zeMetaField* type = elementTypeFor(list);
  const unsigned int size = list->getElementSize();
  unsigned int cursor = 8;
  for (int i = 0; i < count; ++i) {
    const void* element = list->getElementMemory(i, size);
    int written = static_cast<int>(size);
    if (type) {
      written = type->writeRawFieldMemory(element, out + cursor, directory, swap);
      if (written < 0) return -1;
    } else {
      std::memcpy(out + cursor, element, size);
    }
    cursor += static_cast<unsigned int>(written);
  }
  return cursor == bytes ? static_cast<int>(bytes) : -1;
}

bool zeElementArrayMetaField::readElements(zeDataList* list, const unsigned char* stored, unsigned int length,
                                           int count, bool swap) const {
  const zeMetaField* type = elementTypeFor(list);
  const unsigned int size = list->getElementSize();
  // Every element takes some bytes: a corrupt count is refused before any
  // storage is made for it.
  const unsigned int least = !type ? size : type->hasVariableIoSize() ? 4u : type->getSize();
  if (least == 0 || static_cast<unsigned long long>(count) * least > length - 8) return false;
  if (list->resizeAndSetCount(count, size) != kSuccess) return false;
  unsigned int cursor = 8;
  for (int i = 0; i < count; ++i) {
    void* element = list->getElementMemory(i, size);
    unsigned int bytes = size;
    if (!type) {
      if (bytes > length - cursor) return false;
      std::memcpy(element, stored + cursor, size);
    } else {
      if (!zeObjectRecord::storedSizeOf(type, holderOf(element), stored + cursor, length - cursor, swap, bytes)) {
        return false;
      }
      if (type->readRawFieldMemory(element, stored + cursor, nullptr, swap) != static_cast<int>(bytes)) return false;
    }
    cursor += bytes;
  }
  return cursor == length;
}

int zeElementArrayMetaField::readRawFieldMemory(void* destination, const void* source, const zeDirectory*,
                                                bool swap) const {
  zeDataList* list = listAt(destination);
  const unsigned char* stored = static_cast<const unsigned char*>(source);
  const unsigned int length = zeObjectRecord::getWord(stored, swap);
  const int count = static_cast<int>(zeObjectRecord::getWord(stored + 4, swap));
  empty(list);
  if (length < 8 || count < 0) return -1;
  if (_properties & kTransientElements) return count == 0 && length == 8 ? 8 : -1;
  if (!readElements(list, stored, length, count, swap)) {
    empty(list);
    return -1;
  }
  return static_cast<int>(length);
}

void zeElementArrayMetaField::endianSwapMemory(void* memory, int count) const {
  if (count <= 0) return;
  zeDataList* list = listAt(memory);
  if (const zeMetaField* type = elementTypeFor(list)) type->endianSwapMemory(list->_data, list->_count);
}

// --- text -----------------------------------------------------------------------

int zeElementArrayMetaField::parseElements(zeDataList* list, const char* text) const {
  zeMetaField* type = elementTypeFor(list);
  const unsigned int size = list->getElementSize();
  int position = 0;
  for (;;) {
    while (std::isspace(static_cast<unsigned char>(text[position]))) ++position;
    if (text[position] == '\0') return position;
    const int i = list->_count;
    if (list->resizeAndSetCount(i + 1, size) != kSuccess) return 0;
    const int used = type->setMemoryByString(list->getElementMemory(i, size), text + position, nullptr);
    if (used <= 0) return 0;
    position += used;
  }
}

int zeElementArrayMetaField::setByString(zeObject* object, const char* text, const zeDirectory*) {
  zeDataList* list = listAt(fieldMemory(object));
  if (!text || !elementTypeFor(list)) return 0;
  // The elements are parsed behind the present ones, which they replace
  // only when all of them parse.
  const int kept = list->_count;
  const int consumed = parseElements(list, text);
  if (consumed == 0 || list->_count == kept) {
    destroyElements(list, kept, list->_count);
    list->_count = kept;
    return 0;
  }
  destroyElements(list, 0, kept);
  const unsigned int size = list->getElementSize();
  std::memmove(list->_data, list->getElementMemory(kept, size), static_cast<std::size_t>(list->_count - kept) * size);
  list->_count -= kept;
  return consumed;
}

const char* zeElementArrayMetaField::getByString(const zeObject* object, const zeDirectory* directory) {
  const zeDataList* list = listAt(fieldMemory(object));
  zeMetaField* type = elementTypeFor(list);
  if (!type) return nullptr;
  return type->convertMemoryToString(list->_data, list->_count, directory, " ",
                                     static_cast<int>(list->getElementSize()));
}

// --- the descriptor's own state -------------------------------------------------

void zeElementArrayMetaField::userConstruct() {
  zeMetaField::userConstruct();
  setVariableIoSize(true);
}

void zeElementArrayMetaField::copyTypeFrom(const zeObject* source) {
  const zeElementArrayMetaField* original = static_cast<const zeElementArrayMetaField*>(source);
  setElementFieldType(original->_elementType);
  _properties = original->_properties;
}

void zeElementArrayMetaField::userCopyDeep(const zeObject* source) {
  zeMetaField::userCopyDeep(source);
  copyTypeFrom(source);
}

void zeElementArrayMetaField::userCopyShallow(const zeObject* source) {
  zeMetaField::userCopyShallow(source);
  copyTypeFrom(source);
}

void zeElementArrayMetaField::userDestruct() {
  setElementFieldType(nullptr);
  zeMetaField::userDestruct();
}

}  // namespace Lux
