#include "core/zeInternalStringPool.h"

#include <cstdlib>
#include <new>

namespace Lux {

zeInternalStringPool* zeInternalStringPool::_defaultStringPool = nullptr;

namespace {

// FNV-1a over the bytes of the text.
unsigned int hashOf(const char* text) {
  unsigned int hash = 2166136261u;
  for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p; ++p) {
    hash = (hash ^ *p) * 16777619u;
  }
  return hash;
}

}  // namespace

void* zeInternalStringPool::operator new(std::size_t size) noexcept { return std::malloc(size); }

void zeInternalStringPool::operator delete(void* memory) noexcept { std::free(memory); }

zeInternalStringPool* zeInternalStringPool::getDefault() {
  if (!_defaultStringPool) _defaultStringPool = new zeInternalStringPool();
  return _defaultStringPool;
}

const char* zeInternalStringPool::setString(const char* text) {
  if (!text) return nullptr;
  const unsigned int hash = hashOf(text);
  zeStringPoolContainer& container = _containers[hash % kContainerCount];
  if (zeStringPoolItem* item = container.find(text, hash)) {
    ++item->_count;
    return item->text();
  }
  zeStringPoolItem* item = container.add(text, hash);
  return item ? item->text() : nullptr;
}

const char* zeInternalStringPool::addReference(const char* pooled) {
  if (pooled) ++zeStringPoolItem::fromText(pooled)->_count;
  return pooled;
}

void zeInternalStringPool::releaseString(const char* pooled) {
  if (!pooled) return;
  zeStringPoolItem* item = zeStringPoolItem::fromText(pooled);
  if (--item->_count == 0) item->_container->internalRelease(item);
}

unsigned int zeInternalStringPool::getReferenceCount(const char* pooled) {
  return pooled ? zeStringPoolItem::fromText(pooled)->_count : 0;
}

int zeInternalStringPool::getStringCount() const {
  int count = 0;
  for (const zeStringPoolContainer& container : _containers) count += container.getCount();
  return count;
}

}  // namespace Lux
