#pragma once

/// \file
/// Argument reduction of the portable sine, cosine and tangent.

#include "math/portable/detail/DoubleDouble.h"

namespace Lux {
namespace Math {
namespace portable {

/// For finite x >= pi/4: x = n pi/2 + r with |r| at most pi/4 plus a few
/// ulps. Returns n mod 4 and r as a pair hi + lo, good to about 2^-100
/// relative. Moderate x subtract n pi/2 in 33-bit pieces; from 2^19 pi/2 on,
/// x is multiplied by the bits of 2/pi that matter in exact integer arithmetic.
int reduceHalfPi(double x, DoubleDouble& r) noexcept;

}  // namespace portable
}  // namespace Math
}  // namespace Lux
