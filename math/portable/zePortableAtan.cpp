// The portable arctangent and two-argument arctangent: atan t = atan c +
// atan((t - c) / (1 + t c)) for c in {0, 1/2, 1, 3/2}, or pi/2 + atan(-1/t)
// for t above 39/16, the reduced argument carried as an exact pair and its
// arctangent from a minimax polynomial on |u| <= 7/16.

#include <cmath>
#include <limits>

#include "math/portable/detail/Horner.h"
#include "math/portable/detail/PiConstants.h"
#include "math/portable/zePortableTrig.h"

namespace Lux {
namespace Math {

namespace {

using portable::DoubleDouble;

/// atan u = u + u^3 A(u^2) on |u| <= 7/16; A contributes at most 2^-61.7
/// relative error to the arctangent (tools/trig_coefficients.py).
constexpr double kAtan[12] = {-0x1.5555555555552p-2, 0x1.999999999900cp-3, -0x1.24924924469a7p-3, 0x1.c71c71a19f439p-4,
                              -0x1.745d11d495b7cp-4, 0x1.3b13302f19b30p-4, -0x1.11090ffe2de4ap-4, 0x1.e1333217d53cbp-5,
                              -0x1.a9fe67400abfbp-5, 0x1.6b28194c7d1e1p-5, -0x1.0577e7ebd39ffp-5, 0x1.c0b5a448ed34fp-7};

constexpr DoubleDouble kAtanHalf = {0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56};
constexpr DoubleDouble kAtanThreeHalves = {0x1.f730bd281f69bp-1, 0x1.007887af0cbbdp-56};

/// Below this t, atan t rounds to t; above kHuge, to pi/2 (less 1/t).
constexpr double kTiny = 0x1p-27;
constexpr double kHuge = 0x1p66;

/// (t - c) / den as a pair, for t - c = num.hi + num.lo and den = den.hi +
/// den.lo: the quotient of the high parts corrected by the exact remainder.
DoubleDouble quotient(DoubleDouble num, DoubleDouble den) noexcept {
  const double q = num.hi / den.hi;
  const DoubleDouble p = portable::twoProduct(q, den.hi);
  return {q, ((((num.hi - p.hi) - p.lo) + num.lo) - q * den.lo) / den.hi};
}

/// atan(t.hi + t.lo) for t >= 0 (t.hi up to infinity), as a pair good to
/// about 2^-60 relative.
DoubleDouble atanPair(DoubleDouble t) noexcept {
  if (t.hi > kHuge) return {portable::kHalfPi.hi, portable::kHalfPi.lo - 1.0 / t.hi};
  DoubleDouble base = {0.0, 0.0};
  DoubleDouble u = t;
  if (t.hi >= 0x1.38p+1) {  // 39/16: u = -1/t
    const double q = -1.0 / t.hi;
    const DoubleDouble p = portable::twoProduct(q, t.hi);
    const double delta = ((1.0 + p.hi) + p.lo) + q * t.lo;  // 1 + q t
    base = portable::kHalfPi;
    u = {q, q * delta};
  } else if (t.hi >= 0x1.3p+0) {  // 19/16: c = 3/2, 1 + 3t/2 = 1 + (t + t/2)
    const DoubleDouble ct = portable::twoSum(t.hi, 0.5 * t.hi);
    const DoubleDouble den = portable::twoSum(1.0, ct.hi);
    base = kAtanThreeHalves;
    u = quotient({t.hi - 1.5, t.lo}, {den.hi, den.lo + (ct.lo + 1.5 * t.lo)});
  } else if (t.hi >= 0x1.6p-1) {  // 11/16: c = 1
    const DoubleDouble den = portable::twoSum(1.0, t.hi);
    base = portable::kQuarterPi;
    u = quotient({t.hi - 1.0, t.lo}, {den.hi, den.lo + t.lo});
  } else if (t.hi >= 0x1.cp-2) {  // 7/16: c = 1/2
    const DoubleDouble den = portable::twoSum(1.0, 0.5 * t.hi);
    base = kAtanHalf;
    u = quotient({t.hi - 0.5, t.lo}, {den.hi, den.lo + 0.5 * t.lo});
  }
  // atan(u.hi + u.lo) = u.hi + u.hi z A(z) + u.lo / (1 + z), z = u.hi^2,
  // the slope taken as 1 - z.
  const double z = u.hi * u.hi;
  const double tail = (u.hi * z) * portable::horner(kAtan, z) + u.lo * (1.0 - z);
  const DoubleDouble s = portable::twoSum(base.hi, u.hi);
  return portable::fastTwoSum(s.hi, s.lo + (base.lo + tail));
}

/// pi - a for a pair a in [0, pi/2].
DoubleDouble piMinus(DoubleDouble a) noexcept {
  const DoubleDouble s = portable::twoSum(portable::kPi.hi, -a.hi);
  return portable::fastTwoSum(s.hi, s.lo + (portable::kPi.lo - a.lo));
}

/// y / x for finite positive x and y whose ratio lies in [2^-60, 2^60], as a
/// pair. Both are scaled first by a power of two when either lies beyond
/// 2^+-900, so the exact product on the way neither overflows nor underflows.
DoubleDouble ratio(double y, double x) noexcept {
  if (x > 0x1p900 || y > 0x1p900) {
    x *= 0x1p-1000;
    y *= 0x1p-1000;
  } else if (x < 0x1p-900 || y < 0x1p-900) {
    x *= 0x1p1000;
    y *= 0x1p1000;
  }
  const double q = y / x;
  const DoubleDouble p = portable::twoProduct(q, x);
  return {q, ((y - p.hi) - p.lo) / x};
}

}  // namespace

double zePortableAtan(double x) noexcept {
  if (x != x) return x + x;
  const double a = std::fabs(x);
  if (a < kTiny) return x;
  const DoubleDouble v = atanPair({a, 0.0});
  return x < 0.0 ? -(v.hi + v.lo) : v.hi + v.lo;
}

double zePortableAtan2(double y, double x) noexcept {
  if (x != x || y != y) return x + y;
  const double ax = std::fabs(x), ay = std::fabs(y);
  const bool left = std::signbit(x);
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  DoubleDouble angle;  // of (|x| or x, |y|), in [0, pi]
  if (ay == 0.0) {
    angle = left ? portable::kPi : DoubleDouble{0.0, 0.0};
  } else if (ax == kInfinity) {
    angle = ay == kInfinity ? (left ? portable::kThreeQuarterPi : portable::kQuarterPi)
                            : (left ? portable::kPi : DoubleDouble{0.0, 0.0});
  } else if (ay == kInfinity || ax == 0.0) {
    angle = portable::kHalfPi;
  } else {
    const double q = ay / ax;
    DoubleDouble t;
    if (q < 0x1p-60) {
      t = {q, 0.0};  // atan t = t to far below an ulp, even when q is subnormal or 0
    } else if (q > 0x1p60) {
      t = {q, 0.0};  // atan t = pi/2 - 1/t
    } else {
      t = ratio(ay, ax);
    }
    const DoubleDouble a = q < 0x1p-60 ? t : atanPair(t);
    angle = left ? piMinus(a) : a;
  }
  const double v = angle.hi + angle.lo;
  return std::signbit(y) ? -v : v;
}

// Evaluated in double and rounded once: within 0.5 + 2^-29 float ulp.
float zePortableAtan(float x) noexcept { return static_cast<float>(zePortableAtan(static_cast<double>(x))); }

float zePortableAtan2(float y, float x) noexcept {
  return static_cast<float>(zePortableAtan2(static_cast<double>(y), static_cast<double>(x)));
}

}  // namespace Math
}  // namespace Lux
