// The portable arcsine and arccosine: a minimax polynomial on |x| <= 1/2,
// and beyond it asin x = pi/2 - 2 asin sqrt((1 - x)/2), the square root
// carried as an exact pair.

#include <cmath>

#include "math/portable/detail/Horner.h"
#include "math/portable/detail/PiConstants.h"
#include "math/portable/zePortableTrig.h"

namespace Lux {
namespace Math {

namespace {

using portable::DoubleDouble;

/// asin x = x + x^3 P(x^2) on |x| <= 1/2; P contributes at most 2^-59.9
/// relative error to the arcsine (tools/trig_coefficients.py).
constexpr double kAsin[13] = {0x1.5555555555577p-3, 0x1.333333332e131p-4, 0x1.6db6db7212680p-5, 0x1.f1c71a94f2d60p-6,
                              0x1.6e8bdee04479fp-6, 0x1.1c49f05c5f0c8p-6, 0x1.ca1f8d804fad6p-7, 0x1.758589066e55ep-7,
                              0x1.613c905812694p-7, 0x1.e5f54d75e99a3p-9, 0x1.639c825864c35p-6, -0x1.57fd8e9cb0cfep-6,
                              0x1.0b46c1745a9bbp-5};

/// Below this |x|, asin x rounds to x.
constexpr double kTiny = 0x1p-27;

/// For 1/2 < a <= 1: s = sqrt((1 - a)/2) as the pair (hi, lo), and asin s - hi
/// (the polynomial's tail plus lo times asin's slope 1 + s^2/2).
struct HalfAngle {
  double s;
  double tail;
};

HalfAngle halfAngle(double a) noexcept {
  const double z = (1.0 - a) * 0.5;  // exact
  const double s = std::sqrt(z);
  if (s == 0.0) return {0.0, 0.0};
  const DoubleDouble square = portable::twoProduct(s, s);
  const double lo = ((z - square.hi) - square.lo) / (s + s);
  return {s, (s * z) * portable::horner(kAsin, z) + lo * (1.0 + 0.5 * z)};
}

/// NaN for a NaN x (its payload) or |x| > 1 (the invalid-operation NaN).
double invalid(double x) noexcept { return x != x ? x + x : (x - x) / (x - x); }

}  // namespace

double zePortableAsin(double x) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 1.0)) return invalid(x);
  if (a < kTiny) return x;
  if (a <= 0.5) {
    const double z = x * x;
    return x + (x * z) * portable::horner(kAsin, z);
  }
  // pi/2 - 2 asin s, with pi/2 - 2 s exact as a pair.
  const HalfAngle h = halfAngle(a);
  const DoubleDouble d = portable::twoSum(portable::kHalfPi.hi, -2.0 * h.s);
  const double v = d.hi + ((d.lo + portable::kHalfPi.lo) - 2.0 * h.tail);
  return x < 0.0 ? -v : v;
}

double zePortableAcos(double x) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 1.0)) return invalid(x);
  if (a <= 0.5) {
    // pi/2 - asin x, with pi/2 - x exact as a pair.
    const double z = x * x;
    const DoubleDouble d = portable::twoSum(portable::kHalfPi.hi, -x);
    return d.hi + ((d.lo + portable::kHalfPi.lo) - (x * z) * portable::horner(kAsin, z));
  }
  const HalfAngle h = halfAngle(a);
  if (x > 0.0) return 2.0 * (h.s + h.tail);
  // pi - 2 asin s.
  const DoubleDouble d = portable::twoSum(portable::kPi.hi, -2.0 * h.s);
  return d.hi + ((d.lo + portable::kPi.lo) - 2.0 * h.tail);
}

// Evaluated in double and rounded once: within 0.5 + 2^-29 float ulp.
float zePortableAsin(float x) noexcept { return static_cast<float>(zePortableAsin(static_cast<double>(x))); }

float zePortableAcos(float x) noexcept { return static_cast<float>(zePortableAcos(static_cast<double>(x))); }

}  // namespace Math
}  // namespace Lux
