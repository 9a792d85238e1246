#include "core/zeObjectReferenceMetaField.h"

#include <cstring>

#include "core/zeInternalStringPool.h"
#include "core/zeObjectRecord.h"
#include "core/zeResult.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeObjectReferenceMetaField, zeMetaField, zeNoLibraryInit, nullptr)

namespace {

// Longest class name a stored reference may carry.
constexpr unsigned int kMaxNameLength = 255;

// Makes the reference at `memory` hold `object`, taking over the reference
// the caller has on it, and releases the object held before.
void adopt(void* memory, zeObject* object) {
  zeObject* old = zeObjectReferenceMetaField::getReferenced(memory);
  std::memcpy(memory, &object, sizeof object);
  if (old) old->release();
}

unsigned int nameLengthOf(const zeObject* object) {
  return static_cast<unsigned int>(std::strlen(object->getMetaObject()->getName()));
}

// Bytes of the stored form of a reference to `object`; 0 when it cannot be written.
unsigned int storedBytesOf(const zeObject* object) {
  if (!object) return 4;
  if (!object->getMetaObject()) return 0;
  const unsigned int record = object->getRecordSize();
  if (record == 0) return 0;
  const unsigned long long bytes = 8ull + nameLengthOf(object) + record;
  return bytes <= 0x7fffffffu ? static_cast<unsigned int>(bytes) : 0u;
}

// The registered class named by the `length` characters at `name`, or null.
zeMetaObject* classNamed(const unsigned char* name, unsigned int length) {
  if (length == 0 || length > kMaxNameLength) return nullptr;
  char text[kMaxNameLength + 1];
  std::memcpy(text, name, length);
  text[length] = '\0';
  return zeMetaObject::find(text);
}

}  // namespace

zeObject* zeObjectReferenceMetaField::getReferenced(const void* memory) {
  zeObject* object;
  std::memcpy(&object, memory, sizeof object);
  return object;
}

void zeObjectReferenceMetaField::setReferenced(void* memory, zeObject* object) {
  if (object) object->addReference();
  adopt(memory, object);
}

zeObject* zeObjectReferenceMetaField::getDefault() const {
  return getDefaultMemory() ? getReferenced(getDefaultMemory()) : nullptr;
}

unsigned int zeObjectReferenceMetaField::computeSize() { return sizeof(zeObject*); }

// --- reset, destruction, default ---------------------------------------------------

void zeObjectReferenceMetaField::resetByValue(zeObject* object) {
  const zeObject* original = getDefault();
  adopt(fieldMemory(object), original ? original->createCopy(kCopyDeep) : nullptr);
}

void zeObjectReferenceMetaField::resetByReference(zeObject* object) {
  setReferenced(fieldMemory(object), getDefault());
}

void zeObjectReferenceMetaField::destruct(zeObject* object) { adopt(fieldMemory(object), nullptr); }

void zeObjectReferenceMetaField::setDefaultMemory(const void* memory) {
  zeObject* old = getDefault();
  if (!memory) {
    zeMetaField::setDefaultMemory(nullptr);
    return;
  }
  zeObject* fresh = getReferenced(memory);
  if (fresh) fresh->addReference();
  zeMetaField::setDefaultMemory(memory);
  if (old) old->release();
}

// --- copies, comparison, print, traversal --------------------------------------------

void zeObjectReferenceMetaField::copyByValue(zeObject* destination, const zeObject* source) {
  if (destination == source) return;
  const zeObject* original = getReferenced(fieldMemory(source));
  adopt(fieldMemory(destination), original ? original->createCopy(kCopyDeep) : nullptr);
}

void zeObjectReferenceMetaField::copyByReference(zeObject* destination, const zeObject* source) {
  setReferenced(fieldMemory(destination), getReferenced(fieldMemory(source)));
}

void zeObjectReferenceMetaField::copyByValueShallow(zeObject* destination, const zeObject* source) {
  copyByReference(destination, source);
}

void zeObjectReferenceMetaField::print(const zeObject* object, unsigned int indent, const char* prefix) {
  zeMetaField::print(object, indent, prefix);
  if (const zeObject* held = getReferenced(fieldMemory(object))) held->printFields(indent + 2);
}

int zeObjectReferenceMetaField::traverse(zeObject* object, int (*visit)(zeObject*, zeMetaField*, void*), void* data) {
  const int result = zeMetaField::traverse(object, visit, data);
  zeObject* held = getReferenced(fieldMemory(object));
  return result != 0 || !held ? result : held->traverseFields(visit, data);
}

bool zeObjectReferenceMetaField::isAlikeCompareDeep(const zeObject* a, const zeObject* b) const {
  const zeObject* p = getReferenced(fieldMemory(a));
  const zeObject* q = getReferenced(fieldMemory(b));
  if (p == q) return true;
  return p && q && p->isAlikeTo(q, kCopyDeep);
}

// --- stored form ------------------------------------------------------------------

unsigned int zeObjectReferenceMetaField::getIoSize(const zeObject* object) const {
  return storedBytesOf(getReferenced(fieldMemory(object)));
}

int zeObjectReferenceMetaField::writeRawFieldMemory(const void* source, void* destination, const zeDirectory*,
                                                    bool swap) const {
  zeObject* held = getReferenced(source);
  const unsigned int bytes = storedBytesOf(held);
  if (bytes < 4) return -1;
  unsigned char* out = static_cast<unsigned char*>(destination);
  zeObjectRecord::putWord(out, bytes, swap);
  if (!held) return 4;
  const unsigned int nameLength = nameLengthOf(held);
  zeObjectRecord::putWord(out + 4, nameLength, swap);
  std::memcpy(out + 8, held->getMetaObject()->getName(), nameLength);
  const unsigned int nested = 8 + nameLength;
  if (held->writeRecord(out + nested, bytes - nested, swap) != kSuccess) return -1;
  return static_cast<int>(bytes);
}

int zeObjectReferenceMetaField::readRawFieldMemory(void* destination, const void* source, const zeDirectory*,
                                                   bool swap) const {
  const unsigned char* stored = static_cast<const unsigned char*>(source);
  const unsigned int bytes = zeObjectRecord::getWord(stored, swap);
  if (bytes == 4) {
    adopt(destination, nullptr);
    return 4;
  }
  if (bytes < 8) return -1;
  const unsigned int nameLength = zeObjectRecord::getWord(stored + 4, swap);
  if (nameLength > bytes - 8) return -1;
  const zeMetaObject* meta = classNamed(stored + 8, nameLength);
  if (!meta || (_referenceType && !meta->isOfType(_referenceType))) return -1;
  // The nested record must fill the rest exactly.
  const unsigned int nested = 8 + nameLength;
  const unsigned int recordBytes = bytes - nested;
  if (recordBytes < zeObjectRecord::kHeaderBytes ||
      zeObjectRecord::getWord(stored + nested + 12, swap) != recordBytes) {
    return -1;
  }
  zeObject* object = meta->createInstance();
  if (!object) return -1;
  if (object->readRecord(stored + nested, recordBytes, swap) != kSuccess) {
    object->release();
    return -1;
  }
  adopt(destination, object);
  return static_cast<int>(bytes);
}

// --- text -------------------------------------------------------------------------

const char* zeObjectReferenceMetaField::getStringFromMemory(const void* memory, const zeDirectory*) {
  const zeObject* held = getReferenced(memory);
  zeInternalStringPool* pool = zeInternalStringPool::getDefault();
  if (!pool) return nullptr;
  return pool->setString(held && held->getMetaObject() ? held->getMetaObject()->getName() : "null");
}

// --- the descriptor's own state -------------------------------------------------

void zeObjectReferenceMetaField::userConstruct() {
  zeMetaField::userConstruct();
  setVariableIoSize(true);
}

void zeObjectReferenceMetaField::copyTypeFrom(const zeObject* source) {
  if (source == this) return;
  _referenceType = static_cast<const zeObjectReferenceMetaField*>(source)->_referenceType;
  // The descriptor state came with a copy of the default's bytes: the copy
  // holds its own reference to the default object.
  if (zeObject* shared = getDefault()) shared->addReference();
}

void zeObjectReferenceMetaField::userCopyDeep(const zeObject* source) {
  zeMetaField::userCopyDeep(source);
  copyTypeFrom(source);
}

void zeObjectReferenceMetaField::userCopyShallow(const zeObject* source) {
  zeMetaField::userCopyShallow(source);
  copyTypeFrom(source);
}

void zeObjectReferenceMetaField::userDestruct() {
  if (zeObject* shared = getDefault()) shared->release();
  zeMetaField::userDestruct();
}

}  // namespace Lux
