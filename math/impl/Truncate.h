#pragma once

/// \file
/// Conversions from floating point to integers with the processor's
/// out-of-range rule, so that no input is undefined behaviour.

#include <climits>

#include "math/impl/ExactOrder.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// v truncated toward zero to an int; NaN and values outside the int range
/// give INT_MIN, as the processor's truncating conversion does.
template <class T>
inline int truncateToInt(T v) noexcept {
  if (!(v > T(-2147483649.0) && v < T(2147483648.0))) return INT_MIN;
  return static_cast<int>(v);
}

/// Low 8 bits of base + step, computed without signed overflow.
inline unsigned char wrapToByte(unsigned char base, int step) noexcept {
  return static_cast<unsigned char>(base + static_cast<unsigned int>(step));
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
