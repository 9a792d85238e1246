#include "core/zeFloatMetaField.h"

#include "core/PrimitiveFieldSupport.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeFloatMetaField, zeMetaField, zeNoLibraryInit, nullptr)

unsigned int zeFloatMetaField::computeSize() { return 4; }

void zeFloatMetaField::endianSwapMemory(void* memory, int count) const { primitive::swapWords4(memory, count); }

int zeFloatMetaField::setMemoryByString(void* memory, const char* text, const zeDirectory*) {
  return primitive::parseNumber<float>(text, memory, [](const char* s, char** end) { return std::strtof(s, end); });
}

const char* zeFloatMetaField::getStringFromMemory(const void* memory, const zeDirectory*) {
  float value;
  std::memcpy(&value, memory, sizeof value);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.9g", static_cast<double>(value));  // nine digits give the float back
  return primitive::pooled(buffer);
}

}  // namespace Lux
