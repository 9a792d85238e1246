#pragma once

// The exact sine, cosine, ... of an input through MPFR, the error of a result
// in ulps of the exact value, and the awkward inputs every measurement of the
// trigonometric functions includes. Shared by the accuracy program and the
// regular tests; not part of the library.

#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "math/portable/zePortableTrig.h"

namespace trigref {

enum Function { kSin, kCos, kTan, kAsin, kAcos, kAtan, kAtan2, kFunctionCount };

inline const char* functionName(Function f) {
  static const char* const names[] = {"sin", "cos", "tan", "asin", "acos", "atan", "atan2"};
  return names[f];
}

/// The library's own f at (y, x) (y only for atan2).
template <class T>
T portable(Function f, T y, T x) {
  switch (f) {
    case kSin:
      return Lux::Math::zePortableSin(x);
    case kCos:
      return Lux::Math::zePortableCos(x);
    case kTan:
      return Lux::Math::zePortableTan(x);
    case kAsin:
      return Lux::Math::zePortableAsin(x);
    case kAcos:
      return Lux::Math::zePortableAcos(x);
    case kAtan:
      return Lux::Math::zePortableAtan(x);
    default:
      return Lux::Math::zePortableAtan2(y, x);
  }
}

/// The C library's f at (y, x).
template <class T>
T system(Function f, T y, T x) {
  switch (f) {
    case kSin:
      return std::sin(x);
    case kCos:
      return std::cos(x);
    case kTan:
      return std::tan(x);
    case kAsin:
      return std::asin(x);
    case kAcos:
      return std::acos(x);
    case kAtan:
      return std::atan(x);
    default:
      return std::atan2(y, x);
  }
}

/// The same bits, any NaN matching any NaN.
template <class T>
bool sameBits(T a, T b) {
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

/// d in T; beyond the range of T its infinity (a plain conversion would be
/// undefined there).
template <class T>
T narrow(double d) {
  const double limit = static_cast<double>(std::numeric_limits<T>::max());
  if (d > limit) return std::numeric_limits<T>::infinity();
  if (d < -limit) return -std::numeric_limits<T>::infinity();
  return static_cast<T>(d);
}

/// One input: x, and y for atan2 (atan2(y, x)).
struct Input {
  double y;
  double x;
};

/// The exact value to 128 bits and the error of a result in ulps of that
/// value (in the result's format): 0 for a NaN where the exact value is NaN,
/// infinity for any other disagreement about NaN or infinity.
class Reference {
 public:
  Reference() { mpfr_inits2(128, exact_, a_, b_, d_, static_cast<mpfr_ptr>(nullptr)); }
  ~Reference() { mpfr_clears(exact_, a_, b_, d_, static_cast<mpfr_ptr>(nullptr)); }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;

  /// Error of the double result r of f at the input.
  double ulps(Function f, Input in, double r) { return error(f, in, r, 53, -1074); }
  /// Error of the float result r of f at the float input.
  double ulps(Function f, Input in, float r) { return error(f, in, static_cast<double>(r), 24, -149); }

 private:
  void compute(Function f, Input in) {
    mpfr_set_d(a_, in.x, MPFR_RNDN);
    switch (f) {
      case kSin:
        mpfr_sin(exact_, a_, MPFR_RNDN);
        break;
      case kCos:
        mpfr_cos(exact_, a_, MPFR_RNDN);
        break;
      case kTan:
        mpfr_tan(exact_, a_, MPFR_RNDN);
        break;
      case kAsin:
        mpfr_asin(exact_, a_, MPFR_RNDN);
        break;
      case kAcos:
        mpfr_acos(exact_, a_, MPFR_RNDN);
        break;
      case kAtan:
        mpfr_atan(exact_, a_, MPFR_RNDN);
        break;
      default:
        mpfr_set_d(b_, in.y, MPFR_RNDN);
        mpfr_atan2(exact_, b_, a_, MPFR_RNDN);
        break;
    }
  }

  double error(Function f, Input in, double r, int digits, int minExponent) {
    compute(f, in);
    if (mpfr_nan_p(exact_)) return std::isnan(r) ? 0.0 : std::numeric_limits<double>::infinity();
    if (!std::isfinite(r)) return std::numeric_limits<double>::infinity();
    // ulp of the exact value: 2^(e - digits) for |v| in [2^(e-1), 2^e),
    // never below the smallest subnormal.
    long e = mpfr_zero_p(exact_) ? minExponent + digits : mpfr_get_exp(exact_);
    long ulpExponent = e - digits;
    if (ulpExponent < minExponent) ulpExponent = minExponent;
    mpfr_set_d(d_, r, MPFR_RNDN);
    mpfr_sub(d_, d_, exact_, MPFR_RNDN);
    mpfr_abs(d_, d_, MPFR_RNDN);
    mpfr_mul_2si(d_, d_, -ulpExponent, MPFR_RNDN);
    return mpfr_get_d(d_, MPFR_RNDU);
  }

  mpfr_t exact_, a_, b_, d_;
};

/// Doubles from bits.
inline double fromBits(std::uint64_t bits) {
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}

/// The values around v: v itself and `spread` ulps either side.
inline void around(std::vector<double>& out, double v, int spread) {
  double up = v, down = v;
  out.push_back(v);
  for (int i = 0; i < spread; ++i) {
    up = std::nextafter(up, std::numeric_limits<double>::infinity());
    down = std::nextafter(down, -std::numeric_limits<double>::infinity());
    out.push_back(up);
    out.push_back(down);
  }
}

/// The awkward arguments of a one-argument function, both signs: zeros,
/// infinities, NaN, subnormals, the library's branch points, the doubles
/// nearest to multiples of pi/2 (sin, cos, tan) and huge arguments.
inline std::vector<double> hardArguments(Function f, int multiplesOfHalfPi) {
  const double inf = std::numeric_limits<double>::infinity();
  std::vector<double> v = {0.0,
                           inf,
                           std::numeric_limits<double>::quiet_NaN(),
                           0x1p-1074,
                           0x1p-1022,
                           0x1.fffffffffffffp-1023,
                           0x1.fffffffffffffp1023,
                           1.0,
                           0.5,
                           2.0};
  for (double b : {0x1p-27, 0x1p-26, 0x1.921fb54442d18p-1, 823549.0, 0x1.cp-2, 0x1.6p-1, 0x1.3p+0, 0x1.38p+1, 0x1p66,
                   0.5, 1.0, 0x1p-60, 0x1p60})
    around(v, b, 3);
  if (f == kSin || f == kCos || f == kTan) {
    mpfr_t k, p;
    mpfr_inits2(2200, k, p, static_cast<mpfr_ptr>(nullptr));
    mpfr_const_pi(p, MPFR_RNDN);
    mpfr_div_2ui(p, p, 1, MPFR_RNDN);
    for (int i = 1; i <= multiplesOfHalfPi; ++i) {
      mpfr_mul_ui(k, p, static_cast<unsigned long>(i), MPFR_RNDN);
      around(v, mpfr_get_d(k, MPFR_RNDN), 2);
    }
    // Multiples far out, where the reduction needs many bits of 2/pi.
    std::mt19937_64 random(7);
    for (int i = 0; i < multiplesOfHalfPi; ++i) {
      const long e = 20 + static_cast<long>(random() % 1000);
      mpfr_set_ui(k, random() >> 11, MPFR_RNDN);
      mpfr_mul_2si(k, k, e - 53, MPFR_RNDN);
      mpfr_div(k, k, p, MPFR_RNDN);
      mpfr_rint(k, k, MPFR_RNDN);
      mpfr_mul(k, k, p, MPFR_RNDN);
      const double d = mpfr_get_d(k, MPFR_RNDN);
      if (std::isfinite(d)) around(v, d, 1);
    }
    mpfr_clears(k, p, static_cast<mpfr_ptr>(nullptr));
    for (int e = 0; e < 1024; ++e) v.push_back(std::ldexp(1.0, e));
  }
  const std::size_t n = v.size();
  for (std::size_t i = 0; i < n; ++i) v.push_back(-v[i]);
  return v;
}

/// The awkward pairs of atan2: every combination of signed zeros, infinities,
/// NaN, tiny, huge and ordinary values, and ratios around the branch points.
inline std::vector<Input> hardPairs() {
  const double inf = std::numeric_limits<double>::infinity();
  const double values[] = {0.0,
                           -0.0,
                           inf,
                           -inf,
                           std::numeric_limits<double>::quiet_NaN(),
                           1.0,
                           -1.0,
                           0x1p-1074,
                           -0x1p-1074,
                           0x1.fffffffffffffp1023,
                           -0x1.fffffffffffffp1023,
                           0x1p-1022,
                           3.0,
                           -0.5};
  std::vector<Input> v;
  for (double y : values)
    for (double x : values) v.push_back({y, x});
  std::vector<double> ratios;
  for (double b : {0x1.cp-2, 0x1.6p-1, 0x1.3p+0, 0x1.38p+1, 1.0, 0x1p-60, 0x1p60, 0x1p66}) around(ratios, b, 2);
  for (double r : ratios)
    for (double x : {1.0, -1.0, 0x1p-1000, 0x1p1000, 3.0})
      if (std::isfinite(r * x)) v.push_back({r * x, x});
  return v;
}

/// A random double of the function's interesting range: a quarter random
/// bit patterns (every exponent), the rest spread over the range the
/// function sees in practice (angles up to 100, sines and cosines, slopes).
inline double randomArgument(Function f, std::mt19937_64& random) {
  const std::uint64_t bits = random();
  const double unit = static_cast<double>(random() >> 11) * 0x1p-53;  // [0, 1)
  const double sign = (bits & 1) ? -1.0 : 1.0;
  switch (random() % 4) {
    case 0: {
      const double d = fromBits(bits);
      return std::isnan(d) ? unit : d;
    }
    case 1:
      return sign * unit * (f == kAsin || f == kAcos ? 1.0 : 8.0);
    case 2:
      return sign * std::ldexp(0.5 + 0.5 * unit, -static_cast<int>(random() % 60));
    default:
      return sign * unit * (f == kAsin || f == kAcos ? 1.0 : 100.0);
  }
}

}  // namespace trigref
