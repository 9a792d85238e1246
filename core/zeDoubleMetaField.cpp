#include "core/zeDoubleMetaField.h"

#include "core/PrimitiveFieldSupport.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeDoubleMetaField, zeMetaField, zeNoLibraryInit, nullptr)

unsigned int zeDoubleMetaField::computeSize() { return 8; }

void zeDoubleMetaField::endianSwapMemory(void* memory, int count) const { primitive::swapWords8(memory, count); }

int zeDoubleMetaField::setMemoryByString(void* memory, const char* text, const zeDirectory*) {
  return primitive::parseNumber<double>(text, memory, [](const char* s, char** end) { return std::strtod(s, end); });
}

const char* zeDoubleMetaField::getStringFromMemory(const void* memory, const zeDirectory*) {
  double value;
  std::memcpy(&value, memory, sizeof value);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);  // seventeen digits give the double back
  return primitive::pooled(buffer);
}

}  // namespace Lux
