#include "core/zeMetaField.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "core/zeInternalStringPool.h"
#include "core/zeMemoryPool.h"
#include "core/zeResult.h"

namespace Lux {

__internalObjectList* zeMetaField::_MetaFieldList = nullptr;

namespace {

void releaseMetaFieldList() {
  __internalObjectList* list = zeMetaField::_MetaFieldList;
  zeMetaField::_MetaFieldList = nullptr;
  if (list) list->release();
}

}  // namespace

ZE_IMPLEMENT_ABSTRACT_CLASS(zeMetaField, zeObject, zeNoLibraryInit, &zeMetaField::bayRegisterInitialize, nullptr)

void zeMetaField::bayRegisterInitialize() {
  if (!_MetaFieldList) {
    _MetaFieldList = static_cast<__internalObjectList*>(__internalObjectList::_instantiateFromPool(nullptr));
  }
  _Meta->registerClassDestructor(&releaseMetaFieldList);
}

zeMetaField::~zeMetaField() {
  zeInternalStringPool::releaseString(_name);
  _name = nullptr;
}

// --- generic, size-driven behaviour ------------------------------------------

zeMetaField* zeMetaField::getGenericMetaField() { return nullptr; }

void zeMetaField::setFromMemory(zeObject* object, const void* memory) {
  if (object && memory) std::memmove(fieldMemory(object), memory, _size);
}

unsigned int zeMetaField::computeSize() { return 0; }

unsigned int zeMetaField::computeTypeSize() {
  // The shared instance describes one value of the type (an array type's
  // shared instance has one element).
  zeMetaField* generic = getGenericMetaField();
  return generic && generic != this ? generic->computeSize() : computeSize();
}

unsigned int zeMetaField::computeRequiredAlignment() {
  const unsigned int typeSize = computeTypeSize();
  unsigned int alignment = 1;
  while (typeSize != 0 && alignment < 16 && typeSize % (2 * alignment) == 0) alignment *= 2;
  return alignment;
}

void zeMetaField::resetByValue(zeObject* object) {
  char* memory = static_cast<char*>(fieldMemory(object));
  const unsigned int fromDefault = _defaultMemory ? (_size < _defaultBytes ? _size : _defaultBytes) : 0u;
  if (fromDefault) std::memcpy(memory, _defaultMemory, fromDefault);
  std::memset(memory + fromDefault, 0, _size - fromDefault);
}

void zeMetaField::resetByNoReset(zeObject*) {}

void zeMetaField::resetByReference(zeObject* object) { resetByValue(object); }

void zeMetaField::construct(zeObject*) {}

void zeMetaField::destruct(zeObject*) {}

void zeMetaField::commission(zeObject*) {}

void zeMetaField::decommission(zeObject*) {}

void zeMetaField::setDefaultMemory(const void* memory) {
  // Sized by the type as it is now: the size may not be validated yet when a
  // registration sets the default of a field it has just made.
  unsigned int bytes = computeSize();
  if (bytes == 0) bytes = _size;
  if (bytes == 0) return;
  if (bytes != _defaultBytes) {
    void* grown = BayCore::getDefaultPool()->allocate(bytes);
    if (!grown) return;
    const unsigned int kept = bytes < _defaultBytes ? bytes : _defaultBytes;
    if (kept) std::memcpy(grown, _defaultMemory, kept);
    std::memset(static_cast<char*>(grown) + kept, 0, bytes - kept);
    zeMemoryPool::deallocate(_defaultMemory);
    _defaultMemory = grown;
    _defaultBytes = bytes;
  }
  if (memory) std::memcpy(_defaultMemory, memory, bytes);
}

void zeMetaField::copyByValue(zeObject* destination, const zeObject* source) {
  std::memmove(fieldMemory(destination), fieldMemory(source), _size);
}

void zeMetaField::copyByReference(zeObject* destination, const zeObject* source) { copyByValue(destination, source); }

void zeMetaField::copyByValueShallow(zeObject* destination, const zeObject* source) {
  copyByValue(destination, source);
}

void zeMetaField::copyByReset(zeObject* destination, const zeObject*) { reset(destination); }

void zeMetaField::copyByNoCopy(zeObject*, const zeObject*) {}

void zeMetaField::print(const zeObject* object, unsigned int indent, const char* prefix) {
  const char* text = getByString(object, nullptr);
  std::printf("%*s%s%s = %s\n", static_cast<int>(indent), "", prefix ? prefix : "", _name ? _name : "",
              text ? text : "");
  zeInternalStringPool::releaseString(text);
}

int zeMetaField::traverse(zeObject* object, int (*visit)(zeObject*, zeMetaField*, void*), void* data) {
  return visit ? visit(object, this, data) : 0;
}

int zeMetaField::addToDirectory(zeObject*, zeDirectory*) { return kSuccess; }

int zeMetaField::compare(const zeObject* a, const zeObject* b) const {
  const int order = std::memcmp(fieldMemory(a), fieldMemory(b), _size);
  return (order > 0) - (order < 0);
}

bool zeMetaField::isAlikeCompareExactly(const zeObject* a, const zeObject* b) const { return compare(a, b) == 0; }

bool zeMetaField::isAlikeCompareDeep(const zeObject* a, const zeObject* b) const { return compare(a, b) == 0; }

bool zeMetaField::isAlikeCompareShallow(const zeObject* a, const zeObject* b) const { return compare(a, b) == 0; }

bool zeMetaField::isAlikeCompareNoCompare(const zeObject*, const zeObject*) const { return true; }

unsigned int zeMetaField::getIoSize(const zeObject*) const { return _size; }

int zeMetaField::writeRawFieldMemory(const void* source, void* destination, const zeDirectory*, bool swap) const {
  std::memmove(destination, source, _size);
  if (swap) endianSwapMemory(destination, 1);
  return _size;
}

int zeMetaField::readRawFieldMemory(void* destination, const void* source, const zeDirectory*, bool swap) const {
  std::memmove(destination, source, _size);
  if (swap) endianSwapMemory(destination, 1);
  return _size;
}

void zeMetaField::endianSwapMemory(void*, int) const {}

void zeMetaField::endianSwap(zeObject* object) const { endianSwapMemory(fieldMemory(object), 1); }

int zeMetaField::setByString(zeObject* object, const char* text, const zeDirectory* directory) {
  const int count = getElementCount();
  if (count == 1) return setMemoryByString(fieldMemory(object), text, directory);
  return convertStringToMemory(text, fieldMemory(object), count, directory);
}

const char* zeMetaField::getByString(const zeObject* object, const zeDirectory* directory) {
  const int count = getElementCount();
  if (count == 1) return getStringFromMemory(fieldMemory(object), directory);
  return convertMemoryToString(fieldMemory(object), count, directory, " ", static_cast<int>(getElementBytes()));
}

int zeMetaField::setMemoryByString(void*, const char*, const zeDirectory*) { return 0; }

const char* zeMetaField::getStringFromMemory(const void*, const zeDirectory*) { return nullptr; }

const char* zeMetaField::convertMemoryToString(const void* memory, int count, const zeDirectory* directory,
                                               const char* separator, int stride) {
  std::string joined;
  for (int i = 0; i < count; ++i) {
    const char* text = getStringFromMemory(static_cast<const char*>(memory) + i * stride, directory);
    if (!text) return nullptr;
    if (i > 0 && separator) joined += separator;
    joined += text;
    zeInternalStringPool::releaseString(text);
  }
  zeInternalStringPool* pool = zeInternalStringPool::getDefault();
  return pool ? pool->setString(joined.c_str()) : nullptr;
}

int zeMetaField::convertStringToMemory(const char* text, void* memory, int count, const zeDirectory* directory) {
  if (!text || !memory || count <= 0) return 0;
  const unsigned int stride = getElementBytes();
  int position = 0;
  for (int i = 0; i < count; ++i) {
    const int used = setMemoryByString(static_cast<char*>(memory) + i * stride, text + position, directory);
    if (used <= 0) return 0;
    position += used;
  }
  return position;
}

void zeMetaField::postRead() { validate(); }

// --- non-virtual ------------------------------------------------------------

int zeMetaField::getElementCount() const {
  // Array field types reflect their element count as "_num" on the
  // descriptor itself.
  const zeMetaObject* meta = getMetaObject();
  const zeMetaField* num = meta ? meta->getMetaField("_num") : nullptr;
  if (!num || num->getSize() != sizeof(int)) return 1;
  int count;
  std::memcpy(&count, num->fieldMemory(this), sizeof count);
  return count > 0 ? count : 0;
}

unsigned int zeMetaField::getElementBytes() const {
  const int count = getElementCount();
  return count > 0 ? _size / static_cast<unsigned int>(count) : 0u;
}

int zeMetaField::validate() {
  const unsigned int size = computeSize();
  if (size > 0xffffu) return kFailure;
  _size = static_cast<unsigned short>(size);
  // A descriptor takes the type index of its type's shared instance.
  zeMetaField* generic = getGenericMetaField();
  if (generic && generic != this) _typeIndex = generic->_typeIndex;
  _alignment = static_cast<unsigned short>(computeRequiredAlignment());
  return kSuccess;
}

zeMetaField* zeMetaField::createCopy(CopyMethod method) const {
  return static_cast<zeMetaField*>(zeObject::createCopy(method));
}

void zeMetaField::setName(const char* name) {
  const char* pooled = nullptr;
  if (name) {
    zeInternalStringPool* pool = zeInternalStringPool::getDefault();
    pooled = pool ? pool->setString(name) : nullptr;
  }
  zeInternalStringPool::releaseString(_name);
  _name = pooled;
}

void zeMetaField::setPublishSlot(zeMetaField** slot) {
  _publishSlot = slot;
  if (slot) *slot = this;
}

void zeMetaField::reset(zeObject* object) {
  switch (_resetMethod) {
    case kResetByNoReset:
      resetByNoReset(object);
      break;
    case kResetByReference:
      resetByReference(object);
      break;
    default:
      resetByValue(object);
      break;
  }
}

void zeMetaField::copy(zeObject* destination, const zeObject* source, CopyMethod method) {
  if (method == kCopyShallow) {
    copyByValueShallow(destination, source);
    return;
  }
  switch (_copyMethod) {
    case kCopyByReference:
      copyByReference(destination, source);
      break;
    case kCopyByValueShallow:
      copyByValueShallow(destination, source);
      break;
    case kCopyByReset:
      copyByReset(destination, source);
      break;
    case kCopyByNoCopy:
      copyByNoCopy(destination, source);
      break;
    default:
      copyByValue(destination, source);
      break;
  }
}

bool zeMetaField::isAlike(const zeObject* a, const zeObject* b) const {
  switch (_compareMethod) {
    case kCompareDeep:
      return isAlikeCompareDeep(a, b);
    case kCompareShallow:
      return isAlikeCompareShallow(a, b);
    case kCompareNoCompare:
      return isAlikeCompareNoCompare(a, b);
    default:
      return isAlikeCompareExactly(a, b);
  }
}

// --- the descriptor's own state -------------------------------------------------

void zeMetaField::copyDescriptorState(const zeMetaField& source) {
  if (&source == this) return;
  const char* name = zeInternalStringPool::addReference(source._name);
  zeInternalStringPool::releaseString(_name);
  _name = name;
  _offset = source._offset;
  _typeIndex = source._typeIndex;
  _size = source._size;
  _alignment = source._alignment;
  _resetMethod = source._resetMethod;
  _copyMethod = source._copyMethod;
  _compareMethod = source._compareMethod;
  _ioForm = source._ioForm;
  _publishSlot = source._publishSlot;  // the copy publishes itself only when told to
  _ownerClass = source._ownerClass;
  zeMemoryPool::deallocate(_defaultMemory);
  _defaultMemory = nullptr;
  _defaultBytes = 0;
  if (source._defaultMemory) {
    _defaultMemory = BayCore::getDefaultPool()->allocate(source._defaultBytes);
    if (_defaultMemory) {
      std::memcpy(_defaultMemory, source._defaultMemory, source._defaultBytes);
      _defaultBytes = source._defaultBytes;
    }
  }
}

void zeMetaField::releaseDescriptorState() {
  if (_publishSlot && *_publishSlot == this) *_publishSlot = nullptr;
  _publishSlot = nullptr;
  zeInternalStringPool::releaseString(_name);
  _name = nullptr;
  zeMemoryPool::deallocate(_defaultMemory);
  _defaultMemory = nullptr;
  _defaultBytes = 0;
}

void zeMetaField::userCopyDeep(const zeObject* source) {
  zeObject::userCopyDeep(source);
  copyDescriptorState(*static_cast<const zeMetaField*>(source));
}

void zeMetaField::userCopyShallow(const zeObject* source) {
  zeObject::userCopyShallow(source);
  copyDescriptorState(*static_cast<const zeMetaField*>(source));
}

void zeMetaField::userDestruct() {
  releaseDescriptorState();
  zeObject::userDestruct();
}

}  // namespace Lux
