#include "core/zeMetaEnum.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace Lux {

namespace {
zeMetaEnum* allEnums = nullptr;  // newest first
zeMetaEnum* lastEnum = nullptr;
}  // namespace

zeMetaEnum* zeMetaEnum::createMetaEnum(const char* name, const char* const* names, int* values, int count) {
  if (!name || count < 0 || (count > 0 && (!names || !values))) return nullptr;
  // One block: the descriptor, the name pointers, the values, then the texts.
  std::size_t textBytes = std::strlen(name) + 1;
  for (int i = 0; i < count; ++i) {
    if (!names[i]) return nullptr;
    textBytes += std::strlen(names[i]) + 1;
  }
  const std::size_t n = static_cast<std::size_t>(count);
  const std::size_t bytes = sizeof(zeMetaEnum) + n * sizeof(const char*) + n * sizeof(int) + textBytes;
  char* block = static_cast<char*>(std::malloc(bytes));
  if (!block) return nullptr;

  zeMetaEnum* meta = ::new (block) zeMetaEnum();
  char* cursor = block + sizeof(zeMetaEnum);
  meta->_names = reinterpret_cast<const char**>(cursor);
  cursor += n * sizeof(const char*);
  meta->_values = reinterpret_cast<int*>(cursor);
  cursor += n * sizeof(int);
  auto copyText = [&cursor](const char* text) {
    const std::size_t length = std::strlen(text) + 1;
    char* copy = static_cast<char*>(std::memcpy(cursor, text, length));
    cursor += length;
    return copy;
  };
  meta->_name = copyText(name);
  for (int i = 0; i < count; ++i) {
    meta->_names[i] = copyText(names[i]);
    meta->_values[i] = values[i];
  }
  meta->_count = count;

  // Appended, so find() gives the first made.
  if (lastEnum) {
    lastEnum->_next = meta;
  } else {
    allEnums = meta;
  }
  lastEnum = meta;
  return meta;
}

zeMetaEnum* zeMetaEnum::find(const char* name) {
  if (!name) return nullptr;
  for (zeMetaEnum* meta = allEnums; meta; meta = meta->_next) {
    if (std::strcmp(meta->_name, name) == 0) return meta;
  }
  return nullptr;
}

void zeMetaEnum::destroyAll() {
  while (allEnums) {
    zeMetaEnum* meta = allEnums;
    allEnums = meta->_next;
    meta->~zeMetaEnum();
    std::free(meta);
  }
  lastEnum = nullptr;
}

int zeMetaEnum::findName(const char* name) const {
  if (!name) return -1;
  for (int i = 0; i < _count; ++i) {
    if (std::strcmp(_names[i], name) == 0) return i;
  }
  return -1;
}

int zeMetaEnum::findValue(int value) const {
  for (int i = 0; i < _count; ++i) {
    if (_values[i] == value) return i;
  }
  return -1;
}

}  // namespace Lux
