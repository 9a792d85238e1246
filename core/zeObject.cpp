#include "core/zeObject.h"

#include "core/zeClassRegistration.h"
#include "core/zeMemoryPool.h"
#include "core/zeMetaField.h"
#include "core/zeObjectRecord.h"
#include "core/zeResult.h"

namespace Lux {

void zeObject::userAllocateFields(bool) {}
void zeObject::userDeallocateFields() {}
void zeObject::userCopyDeep(const zeObject*) {}
void zeObject::userCopyShallow(const zeObject*) {}
bool zeObject::userIsAlikeDeep(const zeObject*) const { return true; }
bool zeObject::userIsAlikeShallow(const zeObject*) const { return true; }
void zeObject::userInstantiate(bool) {}
void zeObject::userRelease() {}
void zeObject::userConstruct() {}
void zeObject::userDestruct() {}
void zeObject::userResetFields(bool) {}
void zeObject::preWrite() {}
void zeObject::postRead() {}
void zeObject::postFileRead() {}
void zeObject::clean() {}
void zeObject::makeAbstract(zeMetaObject*) {}
void zeObject::makeConcrete(zeMetaObject*) {}

void zeObject::internalRelease() const {
  zeObject* self = const_cast<zeObject*>(this);
  // A count that stays at one while the object dies keeps a reference taken
  // and dropped by a user hook from destroying it a second time.
  _referenceWord = (_referenceWord & ~kReferenceCountMask) | 1u;
  self->userRelease();
  self->userDestruct();
  if (const zeMetaObject* meta = _meta) {
    for (int i = meta->getMetaFieldCount() - 1; i >= 0; --i) meta->getIndexedMetaField(i)->destruct(self);
  }
  operator delete(self);
}

bool zeObject::isOfType(const zeMetaObject* meta) const { return _meta && _meta->isOfType(meta); }

zeObject* zeObject::createCopy(CopyMethod method, zeMemoryPool* pool) const {
  if (!_meta) return nullptr;
  zeObject* copy = _meta->createInstance(pool);
  if (!copy) return nullptr;
  copy->userInstantiate(method == kCopyDeep);
  copy->copyFrom(this, method);
  return copy;
}

bool zeObject::copyFrom(const zeObject* source, CopyMethod method) {
  if (!source || !_meta || source->_meta != _meta) return false;
  for (int i = 0; i < _meta->getMetaFieldCount(); ++i) _meta->getIndexedMetaField(i)->copy(this, source, method);
  if (method == kCopyDeep) {
    userCopyDeep(source);
  } else {
    userCopyShallow(source);
  }
  return true;
}

bool zeObject::isAlikeTo(const zeObject* other, CopyMethod method) const {
  if (!other || !_meta || other->_meta != _meta) return false;
  for (int i = 0; i < _meta->getMetaFieldCount(); ++i) {
    const zeMetaField* field = _meta->getIndexedMetaField(i);
    const bool alike = method == kCopyDeep ? field->isAlike(this, other) : field->isAlikeCompareShallow(this, other);
    if (!alike) return false;
  }
  return method == kCopyDeep ? userIsAlikeDeep(other) : userIsAlikeShallow(other);
}

void zeObject::printFields(unsigned int indent) const {
  if (!_meta) return;
  for (int i = 0; i < _meta->getMetaFieldCount(); ++i) _meta->getIndexedMetaField(i)->print(this, indent, "");
}

int zeObject::setFieldByString(const char* name, const char* text) {
  zeMetaField* field = _meta ? _meta->getMetaField(name) : nullptr;
  if (!field || !text) return kFailure;
  return field->setByString(this, text, nullptr) > 0 ? kSuccess : kFailure;
}

int zeObject::traverseFields(int (*visit)(zeObject*, zeMetaField*, void*), void* data) {
  if (!_meta || !visit) return 0;
  for (int i = 0; i < _meta->getMetaFieldCount(); ++i) {
    const int result = _meta->getIndexedMetaField(i)->traverse(this, visit, data);
    if (result != 0) return result;
  }
  return 0;
}

unsigned int zeObject::getRecordSize() const { return zeObjectRecord::getSize(this); }

int zeObject::writeRecord(void* buffer, unsigned int length, bool swap) {
  return zeObjectRecord::write(this, buffer, length, swap);
}

int zeObject::readRecord(const void* buffer, unsigned int length, bool swap) {
  return zeObjectRecord::read(this, buffer, length, swap);
}

void* zeObject::operator new(std::size_t size, unsigned long tag) noexcept {
  return BayCore::getDefaultPool()->allocate(size, tag);
}

void zeObject::operator delete(void* memory) noexcept { zeMemoryPool::deallocate(memory); }

void zeObject::operator delete(void* memory, unsigned long) noexcept { zeMemoryPool::deallocate(memory); }

// The root registers without a parent; the core's classes need no library
// initialisation.
zeMetaObject* zeObject::_Meta = nullptr;

void zeObject::bayRegister() { zeBayRegister(&zeObject::bayRegisterInternal); }

zeRegistrationResult zeObject::bayRegisterInternal() {
  return zeBayRegister(false, &zeObject::_Meta, nullptr, nullptr, &zeObject::getClassMetaSafe, "zeObject",
                       static_cast<unsigned int>(sizeof(zeObject)), &zeObject::retrieveVTablePointer, nullptr, nullptr,
                       nullptr, nullptr);
}

void* zeObject::retrieveVTablePointer() { return zeRetrieveVTablePointer<zeObject>(); }

zeMetaObject* zeObject::getClassMeta() { return _Meta; }

zeMetaObject* zeObject::getClassMetaSafe() {
  if (_Meta && _Meta->isRegistered()) return _Meta;
  bayRegister();
  return _Meta;
}

zeObject* zeObject::_instantiateFromPool(zeMemoryPool* pool) {
  bayRegister();
  return _Meta ? _Meta->createInstance(pool) : nullptr;
}

}  // namespace Lux
