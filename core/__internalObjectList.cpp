#include "core/__internalObjectList.h"

#include <cstring>

#include "core/zeMemoryPool.h"

namespace Lux {

ZE_IMPLEMENT_CLASS(__internalObjectList, zeObject, zeNoLibraryInit, nullptr, nullptr)

bool __internalObjectList::append(zeObject* object) {
  if (_count == _capacity) {
    const int capacity = _capacity ? 2 * _capacity : 8;
    void* grown = BayCore::getDefaultPool()->allocate(sizeof(zeObject*) * static_cast<unsigned int>(capacity));
    if (!grown) return false;
    if (_count) std::memcpy(grown, _items, sizeof(zeObject*) * static_cast<unsigned int>(_count));
    zeMemoryPool::deallocate(_items);
    _items = static_cast<zeObject**>(grown);
    _capacity = capacity;
  }
  if (object) object->addReference();
  _items[_count++] = object;
  return true;
}

void __internalObjectList::clear() {
  // Emptied before releasing, so an element that reaches into the list while
  // it dies finds it consistent.
  while (_count > 0) {
    zeObject* object = _items[--_count];
    if (object) object->release();
  }
}

void __internalObjectList::userDestruct() {
  clear();
  zeMemoryPool::deallocate(_items);
  _items = nullptr;
  _capacity = 0;
}

}  // namespace Lux
