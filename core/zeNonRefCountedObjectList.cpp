#include "core/zeNonRefCountedObjectList.h"

#include "core/zeElementArrayMetaField.h"

namespace Lux {

ZE_DEFINE_FIELD_SLOT(zeNonRefCountedObjectList, _data)
ZE_IMPLEMENT_CLASS(zeNonRefCountedObjectList, zeDataList, zeNoLibraryInit,
                   &zeNonRefCountedObjectList::bayRegisterInitialize, nullptr)

void zeNonRefCountedObjectList::bayRegisterInitialize() {
  zeElementArrayMetaField::retype(_Meta, nullptr, zeElementArrayMetaField::kTransientElements, &k_data);
}

zeMetaObject* zeNonRefCountedObjectList::getElementType() const { return zeObject::_Meta; }

void zeNonRefCountedObjectList::preWrite() { clean(); }

int zeNonRefCountedObjectList::set(int i, zeObject* object) {
  if (i < 0 || i >= _count) return kFailure;
  data()[i] = object;
  return kSuccess;
}

}  // namespace Lux
