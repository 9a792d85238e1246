#include "math/meta/zeConvertStringToArray.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Lux {
namespace Math {

namespace {

// Longer number tokens are refused rather than cut.
constexpr std::size_t kLongestToken = 511;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

const char* skipBlanks(const char* p) {
  while (std::isspace(static_cast<unsigned char>(*p))) ++p;
  return p;
}

const char* skipDigits(const char* p) {
  while (isDigit(*p)) ++p;
  return p;
}

/// The closer that matches `opener`, or 0 when it opens nothing.
char closerOf(char opener) {
  switch (opener) {
    case '(':
      return ')';
    case '[':
      return ']';
    case '{':
      return '}';
    case '<':
      return '>';
    default:
      return '\0';
  }
}

/// The end of the number token that starts at `p`, or null when the text
/// there is no number of the mode: an optional "-", digits, and in floating
/// mode an optional point with digits and an exponent that needs digits.
/// No "+" in front.
const char* scanNumber(const char* p, bool floating) {
  if (*p == '-') ++p;
  if (!isDigit(*p) && !(floating && *p == '.')) return nullptr;
  p = skipDigits(p);
  if (!floating) return p;
  if (*p == '.') p = skipDigits(p + 1);
  if (*p == 'e' || *p == 'E') {
    ++p;
    if (*p == '+' || *p == '-') ++p;
    if (!isDigit(*p)) return nullptr;
    p = skipDigits(p);
  }
  return p;
}

template <class T>
void put(unsigned char* destination, T value) {
  std::memcpy(destination, &value, sizeof value);
}

bool storeFloating(double value, unsigned char* destination, int elementBytes) {
  switch (elementBytes) {
    case 4:
      put(destination, static_cast<float>(value));
      return true;
    case 8:
      put(destination, value);
      return true;
    default:
      return false;
  }
}

// Integers are cut to the element width without a range check.
bool storeInteger(int value, unsigned char* destination, int elementBytes) {
  switch (elementBytes) {
    case 1:
      put(destination, static_cast<std::uint8_t>(value));
      return true;
    case 2:
      put(destination, static_cast<std::uint16_t>(value));
      return true;
    case 4:
      put(destination, value);
      return true;
    case 8:
      put(destination, static_cast<std::int64_t>(value));
      return true;
    default:
      return false;
  }
}

/// Converts the token [begin, end) and stores it in one element; false when
/// the token is too long, does not convert, or the element size has no store.
bool convertAndStore(const char* begin, const char* end, unsigned char* destination, int elementBytes, bool floating) {
  const std::size_t length = static_cast<std::size_t>(end - begin);
  if (length > kLongestToken) return false;
  char token[kLongestToken + 1];
  std::memcpy(token, begin, length);
  token[length] = '\0';
  if (floating) {
    double value;
    if (std::sscanf(token, "%lg", &value) < 1) return false;  // "." and "-." scan but do not convert
    return storeFloating(value, destination, elementBytes);
  }
  int value;
  if (std::sscanf(token, "%d", &value) < 1) return false;
  return storeInteger(value, destination, elementBytes);
}

}  // namespace

int zeConvertStringToArray(const char* text, void* destination, int count, int elementBytes, bool floating) {
  if (!destination || !text || elementBytes == 0 || count == 0) return 0;
  const char* p = skipBlanks(text);
  const char closer = closerOf(*p);
  if (closer) ++p;

  unsigned char* element = static_cast<unsigned char*>(destination);
  bool commaSeparated = false;  // fixed by what follows the first number
  for (int i = 0; i < count; ++i) {
    p = skipBlanks(p);
    if (*p == '\0') return 0;
    const char* end = scanNumber(p, floating);
    if (!end || !convertAndStore(p, end, element, elementBytes, floating)) return 0;
    element += elementBytes;
    p = skipBlanks(end);
    if (i + 1 == count) break;
    if (i == 0) {
      commaSeparated = *p == ',';
      if (commaSeparated) ++p;
    } else if (commaSeparated) {
      if (*p != ',') return 0;
      ++p;
    }
  }

  if (closer) {
    if (*p != closer) return 0;
    ++p;
  }
  return static_cast<int>(p - text);
}

}  // namespace Math
}  // namespace Lux
