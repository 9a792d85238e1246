// Fuzzes the text parsing of every value and array field type. The first
// input byte picks the field type, whether its value or its array type
// parses, and how many values convertStringToMemory() reads; the rest is the
// text. Destinations are exactly as large as the values asked for.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const zefuzz::FieldTypes& type = zefuzz::fieldTypes()[data[0] % zefuzz::kFieldTypeCount];
  Lux::zeMetaField* field = (data[0] & 0x10) ? type.array : type.value;
  const int count = ((data[0] >> 5) & 3) + 1;
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  const int length = static_cast<int>(std::strlen(text.c_str()));

  std::vector<unsigned char> one(type.valueBytes);
  const int consumed = field->setMemoryByString(one.data(), text.c_str(), nullptr);
  if (consumed < 0 || consumed > length) std::abort();

  std::vector<unsigned char> several(static_cast<std::size_t>(count) * field->getElementBytes());
  const int consumedAll = field->convertStringToMemory(text.c_str(), several.data(), count, nullptr);
  if (consumedAll < 0 || consumedAll > length) std::abort();
  if (count == 1 && consumedAll != consumed) std::abort();
  return 0;
}
