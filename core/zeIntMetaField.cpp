#include "core/zeIntMetaField.h"

#include "core/PrimitiveFieldSupport.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeIntMetaField, zeMetaField, zeNoLibraryInit, nullptr)

unsigned int zeIntMetaField::computeSize() { return 4; }

void zeIntMetaField::endianSwapMemory(void* memory, int count) const { primitive::swapWords4(memory, count); }

int zeIntMetaField::setMemoryByString(void* memory, const char* text, const zeDirectory*) {
  // Parsed wide and kept to 32 bits, as a field of enum or flag type may hold any 32-bit pattern.
  return primitive::parseNumber<int>(text, memory, [](const char* s, char** end) {
    return static_cast<int>(static_cast<unsigned int>(std::strtoll(s, end, 10)));
  });
}

const char* zeIntMetaField::getStringFromMemory(const void* memory, const zeDirectory*) {
  int value;
  std::memcpy(&value, memory, sizeof value);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%d", value);
  return primitive::pooled(buffer);
}

}  // namespace Lux
