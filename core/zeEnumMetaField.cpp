#include "core/zeEnumMetaField.h"

#include <cctype>

#include "core/PrimitiveFieldSupport.h"
#include "core/zeMetaEnum.h"

namespace Lux {

ZE_IMPLEMENT_FIELD_CLASS(zeEnumMetaField, zeMetaField, zeNoLibraryInit, nullptr)

unsigned int zeEnumMetaField::computeSize() { return 4; }

void zeEnumMetaField::endianSwapMemory(void* memory, int count) const { primitive::swapWords4(memory, count); }

int zeEnumMetaField::setMemoryByString(void* memory, const char* text, const zeDirectory*) {
  if (!text || !memory) return 0;
  int start = 0;
  while (std::isspace(static_cast<unsigned char>(text[start]))) ++start;
  int end = start;
  while (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_') ++end;
  const bool isName = end > start && !std::isdigit(static_cast<unsigned char>(text[start]));
  if (!isName) {
    return primitive::parseNumber<int>(text, memory, [](const char* s, char** e) {
      return static_cast<int>(static_cast<unsigned int>(std::strtoll(s, e, 10)));
    });
  }
  if (!_metaEnum) return 0;
  for (int i = 0; i < _metaEnum->getCount(); ++i) {
    const char* name = _metaEnum->getValueName(i);
    if (std::strlen(name) == static_cast<std::size_t>(end - start) &&
        std::strncmp(name, text + start, end - start) == 0) {
      const int value = _metaEnum->getValue(i);
      std::memcpy(memory, &value, sizeof value);
      return end;
    }
  }
  return 0;
}

const char* zeEnumMetaField::getStringFromMemory(const void* memory, const zeDirectory*) {
  int value;
  std::memcpy(&value, memory, sizeof value);
  if (const char* name = _metaEnum ? _metaEnum->getNameOfValue(value) : nullptr) return primitive::pooled(name);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%d", value);
  return primitive::pooled(buffer);
}

void zeEnumMetaField::userCopyDeep(const zeObject* source) {
  zeMetaField::userCopyDeep(source);
  _metaEnum = static_cast<const zeEnumMetaField*>(source)->_metaEnum;
}

void zeEnumMetaField::userCopyShallow(const zeObject* source) {
  zeMetaField::userCopyShallow(source);
  _metaEnum = static_cast<const zeEnumMetaField*>(source)->_metaEnum;
}

}  // namespace Lux
