// Print, parse, print again: the input bytes are the components of a value
// of one float or double field type (the first byte picks which); a value
// with any non-finite component is skipped. Byte channels are left out:
// their text carries a "c" suffix that is not read back. The text printed must parse completely,
// and the value parsed must print as the same text.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "FuzzSupport.h"

namespace {

bool allFinite(const unsigned char* bytes, unsigned int size, unsigned int componentBytes) {
  for (unsigned int at = 0; at + componentBytes <= size; at += componentBytes) {
    if (componentBytes == 4) {
      float f;
      std::memcpy(&f, bytes + at, 4);
      if (!std::isfinite(f)) return false;
    } else if (componentBytes == 8) {
      double d;
      std::memcpy(&d, bytes + at, 8);
      if (!std::isfinite(d)) return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const int kFloatingTypes[] = {0, 1, 2, 3, 4, 5, 8, 9};
  const zefuzz::FieldTypes& type = zefuzz::fieldTypes()[kFloatingTypes[data[0] % 8]];
  if (type.componentBytes == 1) std::abort();
  std::vector<unsigned char> value(type.valueBytes);
  std::memcpy(value.data(), data + 1, std::min<std::size_t>(size - 1, value.size()));
  if (!allFinite(value.data(), type.valueBytes, type.componentBytes)) return 0;

  const char* first = type.value->getStringFromMemory(value.data(), nullptr);
  if (!first) std::abort();
  std::vector<unsigned char> parsed(type.valueBytes);
  const int consumed = type.value->setMemoryByString(parsed.data(), first, nullptr);
  if (consumed != static_cast<int>(std::strlen(first))) std::abort();
  const char* second = type.value->getStringFromMemory(parsed.data(), nullptr);
  if (!second || std::strcmp(first, second) != 0) std::abort();
  Lux::zeInternalStringPool::releaseString(second);
  Lux::zeInternalStringPool::releaseString(first);
  return 0;
}
