#pragma once

// Internal to the core: text and byte-order helpers shared by the primitive
// field types.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/zeInternalStringPool.h"

namespace Lux {
namespace primitive {

/// `buffer` as pooled text, one reference for the caller.
inline const char* pooled(const char* buffer) {
  zeInternalStringPool* pool = zeInternalStringPool::getDefault();
  return pool ? pool->setString(buffer) : nullptr;
}

/// Reverses the bytes of `count` consecutive 4-byte words.
inline void swapWords4(void* memory, int count) {
  unsigned char* p = static_cast<unsigned char*>(memory);
  for (int i = 0; i < count; ++i, p += 4) {
    std::uint32_t word;
    std::memcpy(&word, p, 4);
    word = __builtin_bswap32(word);
    std::memcpy(p, &word, 4);
  }
}

/// Reverses the bytes of `count` consecutive 8-byte words.
inline void swapWords8(void* memory, int count) {
  unsigned char* p = static_cast<unsigned char*>(memory);
  for (int i = 0; i < count; ++i, p += 8) {
    std::uint64_t word;
    std::memcpy(&word, p, 8);
    word = __builtin_bswap64(word);
    std::memcpy(p, &word, 8);
  }
}

/// Parses a number with `parse` (a strto* wrapper); characters consumed, 0
/// when no number starts the text.
template <class T, class Parse>
int parseNumber(const char* text, void* memory, Parse parse) {
  if (!text || !memory) return 0;
  char* end = nullptr;
  errno = 0;
  const T value = parse(text, &end);
  if (end == text) return 0;
  std::memcpy(memory, &value, sizeof value);
  return static_cast<int>(end - text);
}

}  // namespace primitive
}  // namespace Lux
