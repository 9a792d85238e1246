#include "core/zeMetaObject.h"

#include <cstring>
#include <new>

#include "core/BayCore.h"
#include "core/BayCoreRegistry.h"
#include "core/zeInternalStringPool.h"
#include "core/zeMemoryPool.h"
#include "core/zeMetaField.h"
#include "core/zeResult.h"

namespace Lux {

zeMetaObject::~zeMetaObject() {
  for (zeMetaField* field : _fields) field->release();
  zeInternalStringPool::releaseString(_name);
}

zeMetaObject* zeMetaObject::find(const char* name) {
  if (!name) return nullptr;
  for (zeMetaObject* meta : BayCoreRegistry::classes()) {
    if (std::strcmp(meta->_name, name) == 0) return meta;
  }
  return nullptr;
}

int zeMetaObject::getClassCount() { return static_cast<int>(BayCoreRegistry::classes().size()); }

zeMetaObject* zeMetaObject::getClass(int i) {
  const std::vector<zeMetaObject*>& classes = BayCoreRegistry::classes();
  return i >= 0 && i < static_cast<int>(classes.size()) ? classes[static_cast<std::size_t>(i)] : nullptr;
}

zeObject* zeMetaObject::createInstance(zeMemoryPool* pool) const {
  if (isAbstract()) return nullptr;
  if (_instantiate) return _instantiate(this, pool);
  if (!_vtable || _instanceSize < sizeof(zeObject)) return nullptr;
  if (!pool) pool = BayCore::getDefaultPool();
  void* memory = pool->allocate(_instanceSize);
  if (!memory) return nullptr;
  std::memset(memory, 0, _instanceSize);
  zeObject* object = ::new (memory) zeObject();
  std::memcpy(static_cast<char*>(memory) + BayCore::_vTablePointerOffset, &_vtable, sizeof _vtable);
  object->_meta = const_cast<zeMetaObject*>(this);
  object->_referenceWord = 1;  // the caller's reference
  for (zeMetaField* field : _fields) field->construct(object);
  resetFields(object, true);
  object->userConstruct();
  return object;
}

zeSmartPointer<zeObject> zeMetaObject::createInstanceRef(zeMemoryPool* pool) const {
  return zeSmartPointer<zeObject>::adopt(createInstance(pool));
}

void zeMetaObject::resetFields(zeObject* object, bool deep) const {
  if (!object) return;
  for (zeMetaField* field : _fields) field->reset(object);
  object->userResetFields(deep);
}

zeMetaField* zeMetaObject::getMetaField(const char* name) const {
  if (!name) return nullptr;
  for (zeMetaField* field : _fields) {
    if (field->getName() && std::strcmp(field->getName(), name) == 0) return field;
  }
  return nullptr;
}

zeMetaField* zeMetaObject::getIndexedMetaField(int i) const {
  return i >= 0 && i < getMetaFieldCount() ? _fields[static_cast<std::size_t>(i)] : nullptr;
}

int zeMetaObject::instantiateAndAppendFields(FieldInstantiateFunction* functions, int n) {
  int result = kSuccess;
  for (int i = 0; functions && i < n; ++i) {
    zeObject* created = functions[i] ? functions[i](nullptr) : nullptr;
    if (!created) {
      result = kFailure;
      continue;
    }
    zeMetaField* field = static_cast<zeMetaField*>(created);
    field->setOwnerClass(this);
    _fields.push_back(field);  // the creation reference becomes the class's
  }
  return result;
}

int zeMetaObject::setMetaFieldBasicPropertiesAndValidateAll(const char* const* names, zeMetaField*** slots,
                                                            int* offsets, int first) {
  if (first < 0) return kFailure;
  for (int i = first; i < getMetaFieldCount(); ++i) {
    zeMetaField* field = _fields[static_cast<std::size_t>(i)];
    const int j = i - first;
    field->setName(names ? names[j] : nullptr);
    field->setPublishSlot(slots ? slots[j] : nullptr);
    if (offsets) field->setOffset(offsets[j]);
    field->setOwnerClass(this);
  }
  int result = kSuccess;
  for (zeMetaField* field : _fields) {
    if (field->validate() != kSuccess) result = kFailure;
  }
  return result;
}

int zeMetaObject::validateAndSetMetaField(int index, zeMetaField* field) {
  if (!field) return kFailure;
  if (index < 0 || index >= getMetaFieldCount()) {
    field->release();
    return kFailure;
  }
  zeMetaField*& place = _fields[static_cast<std::size_t>(index)];
  zeMetaField* old = place;
  place = field;
  field->setOwnerClass(this);
  old->release();
  return field->validate();
}

void zeMetaObject::registerClassDestructor(void (*destructor)()) {
  if (destructor) _destructors.push_back(destructor);
}

void zeMetaObject::registerClassRegistrationCallback(void (*callback)(zeMetaObject* meta)) {
  if (callback) _callbacks.push_back(callback);
}

zeMetaObject* zeMetaObject::getChild(int i) const {
  return i >= 0 && i < getChildCount() ? _descendants[static_cast<std::size_t>(i)] : nullptr;
}

bool zeMetaObject::isOfType(const zeMetaObject* other) const {
  if (!other) return false;
  for (const zeMetaObject* meta = this; meta; meta = meta->_parent) {
    if (meta == other) return true;
  }
  return false;
}

}  // namespace Lux
