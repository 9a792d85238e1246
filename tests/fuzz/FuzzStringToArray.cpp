// Fuzzes the number-list parser in both modes and every element width. The
// first input byte picks the mode, the width and the count; the rest is the
// text. The destination is exactly as large as the count asks for, so a
// store past it is caught.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <math/ZEMath.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const int kWidths[] = {1, 2, 4, 8};
  const bool floating = (data[0] & 1) != 0;
  const int elementBytes = kWidths[(data[0] >> 1) & 3];
  const int count = ((data[0] >> 3) & 15) + 1;
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);

  std::vector<unsigned char> destination(static_cast<std::size_t>(count * elementBytes));
  const int consumed =
      Lux::Math::zeConvertStringToArray(text.c_str(), destination.data(), count, elementBytes, floating);
  if (consumed < 0 || static_cast<std::size_t>(consumed) > std::strlen(text.c_str())) std::abort();
  return 0;
}
