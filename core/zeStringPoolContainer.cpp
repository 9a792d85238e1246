#include "core/zeStringPoolContainer.h"

#include <cstdlib>
#include <cstring>

namespace Lux {

zeStringPoolContainer::~zeStringPoolContainer() {
  for (int i = 0; i < _count; ++i) std::free(_items[i]);
  std::free(_items);
}

zeStringPoolItem* zeStringPoolContainer::find(const char* text, unsigned int hash) const {
  for (int i = 0; i < _count; ++i) {
    zeStringPoolItem* item = _items[i];
    if (item->_hash == hash && std::strcmp(item->text(), text) == 0) return item;
  }
  return nullptr;
}

zeStringPoolItem* zeStringPoolContainer::add(const char* text, unsigned int hash) {
  if (_count == _capacity) {
    const int capacity = _capacity ? 2 * _capacity : 4;
    void* grown = std::realloc(_items, sizeof(zeStringPoolItem*) * static_cast<std::size_t>(capacity));
    if (!grown) return nullptr;
    _items = static_cast<zeStringPoolItem**>(grown);
    _capacity = capacity;
  }
  const std::size_t length = std::strlen(text);
  zeStringPoolItem* item = static_cast<zeStringPoolItem*>(std::malloc(sizeof(zeStringPoolItem) + length + 1));
  if (!item) return nullptr;
  item->_container = this;
  item->_count = 1;
  item->_hash = hash;
  std::memcpy(item->text(), text, length + 1);
  _items[_count++] = item;
  return item;
}

void zeStringPoolContainer::internalRelease(zeStringPoolItem* item) {
  for (int i = 0; i < _count; ++i) {
    if (_items[i] != item) continue;
    _items[i] = _items[--_count];  // order within a bucket does not matter
    std::free(item);
    return;
  }
}

}  // namespace Lux
