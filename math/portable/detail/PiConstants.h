#pragma once

/// \file
/// Multiples of pi as unevaluated pairs hi + lo (hi the nearest double, lo
/// the nearest double to the rest), and pi/2 cut into pieces for the
/// reduction of moderate arguments. Values from tools/trig_coefficients.py.

#include "math/portable/detail/DoubleDouble.h"

namespace Lux {
namespace Math {
namespace portable {

/// pi, pi/2, pi/4 and 3pi/4.
constexpr DoubleDouble kPi = {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
constexpr DoubleDouble kHalfPi = {0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr DoubleDouble kQuarterPi = {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55};
constexpr DoubleDouble kThreeQuarterPi = {0x1.2d97c7f3321d2p+1, 0x1.a79394c9e8a0ap-54};

/// pi/2 = kHalfPiPiece[0] + [1] + [2] + [3] to about 2^-157: the first three
/// carry 33 significant bits each, so n times a piece is exact for n < 2^20.
constexpr double kHalfPiPiece[4] = {0x1.921fb54400000p+0, 0x1.0b4611a600000p-34, 0x1.3198a2e000000p-69,
                                    0x1.b839a252049c1p-104};

/// The largest double not above pi/4: arguments up to it need no reduction.
constexpr double kQuarterPiBelow = 0x1.921fb54442d18p-1;

}  // namespace portable
}  // namespace Math
}  // namespace Lux
