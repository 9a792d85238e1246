#include "core/zeObjectList.h"

#include "core/zeElementArrayMetaField.h"
#include "core/zeObjectReferenceMetaField.h"

namespace Lux {

ZE_DEFINE_FIELD_SLOT(zeObjectList, _data)
ZE_IMPLEMENT_CLASS(zeObjectList, zeDataList, zeNoLibraryInit, &zeObjectList::bayRegisterInitialize, nullptr)

void zeObjectList::bayRegisterInitialize() {
  if (!zeObjectReferenceMetaField::_MetaField) zeObjectReferenceMetaField::bayRegister();
  zeElementArrayMetaField::retype(_Meta, zeObjectReferenceMetaField::_MetaField, 0, &k_data);
}

zeMetaObject* zeObjectList::getElementType() const { return zeObject::_Meta; }

void zeObjectList::preWrite() { clean(); }

int zeObjectList::setCount(int count) {
  if (count < 0) return kFailure;
  while (_count > count) {
    // Taken out of the list before it is released.
    zeObject* dropped = data()[--_count];
    if (dropped) dropped->release();
  }
  return resizeAndSetCount(count, sizeof(zeObject*));
}

int zeObjectList::set(int i, zeObject* object) {
  if (i < 0 || i >= _count) return kFailure;
  zeObjectReferenceMetaField::setReferenced(&data()[i], object);
  return kSuccess;
}

int zeObjectList::append(zeObject* object) {
  const int i = _count;
  if (setCount(i + 1) != kSuccess) return kFailure;
  return set(i, object);
}

void zeObjectList::userDestruct() {
  setCount(0);
  zeTDataList<zeObject*>::userDestruct();
}

}  // namespace Lux
