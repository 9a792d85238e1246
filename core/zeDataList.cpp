#include "core/zeDataList.h"

#include <cstddef>
#include <cstring>

#include "core/zeElementArrayMetaField.h"
#include "core/zeMemoryPool.h"
#include "core/zeResult.h"

namespace Lux {

ZE_DEFINE_FIELD_SLOT(zeDataList, _data)
ZE_IMPLEMENT_ABSTRACT_CLASS(zeDataList, zeObject, zeNoLibraryInit, &zeDataList::bayRegisterInitialize, nullptr)

namespace {

// Largest storage a list takes, in bytes.
constexpr unsigned long long kMaxStorageBytes = 0x7fffffffu;

bool fits(long long count, unsigned int elementSize) {
  return count >= 0 && static_cast<unsigned long long>(count) * elementSize <= kMaxStorageBytes;
}

// The capacity that holds `count` elements: twice the old capacity when that
// is more, so that appending one by one copies rarely.
int grownCapacity(int capacity, int count, unsigned int elementSize) {
  const long long doubled = 2LL * capacity;
  return doubled > count && fits(doubled, elementSize) ? static_cast<int>(doubled) : count;
}

}  // namespace

void zeDataList::bayRegisterInitialize() {
  const int first = _Meta->getMetaFieldCount();
  zeMetaObject::FieldInstantiateFunction make[] = {&zeElementArrayMetaField::_instantiateFromPool};
  _Meta->instantiateAndAppendFields(make, 1);
  static const char* const names[] = {"_data"};
  zeMetaField** slots[] = {&k_data};
  // The field spans the whole storage header, from the count to the pointer.
  int offsets[] = {static_cast<int>(offsetof(zeDataList, _count))};
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

int zeDataList::setCapacity(int capacity, unsigned int elementSize) {
  if (capacity < _count || elementSize == 0 || !fits(capacity, elementSize)) return kFailure;
  if (capacity == _capacity) return kSuccess;
  void* storage = nullptr;
  if (capacity > 0) {
    storage = zeMemoryPool::getPoolOf(this)->allocate(static_cast<std::size_t>(capacity) * elementSize);
    if (!storage) return kFailure;
    if (_count > 0) std::memcpy(storage, _data, static_cast<std::size_t>(_count) * elementSize);
  }
  zeMemoryPool::deallocate(_data);
  _data = storage;
  _capacity = capacity;
  return kSuccess;
}

int zeDataList::resizeAndSetCount(int count, unsigned int elementSize) {
  if (count < 0 || elementSize == 0) return kFailure;
  if (count > _capacity) {
    if (setCapacity(grownCapacity(_capacity, count, elementSize), elementSize) != kSuccess) return kFailure;
  }
  if (count > _count) {
    std::memset(getElementMemory(_count, elementSize), 0, static_cast<std::size_t>(count - _count) * elementSize);
  }
  _count = count;
  return kSuccess;
}

}  // namespace Lux
