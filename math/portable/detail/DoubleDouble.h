#pragma once

/// \file
/// Exact sums and products of doubles, and the few operations on unevaluated
/// pairs hi + lo that the portable trigonometric functions need. Plain double
/// operations only: no fused multiply-add, so the bits are the same on every
/// x86-64 processor. Built with -ffp-contract=off; a fast-math build would
/// reassociate the error terms away, so it is refused.

#if defined(__FAST_MATH__)
#error "the portable trigonometric functions need IEEE double arithmetic: no fast-math"
#endif

namespace Lux {
namespace Math {
namespace portable {

/// An unevaluated sum hi + lo with |lo| at most about an ulp of hi.
struct DoubleDouble {
  double hi;  ///< the leading part
  double lo;  ///< the rest
};

/// a + b = s + e exactly, s the rounded sum (any magnitudes).
inline DoubleDouble twoSum(double a, double b) noexcept {
  const double s = a + b;
  const double bb = s - a;
  const double e = (a - (s - bb)) + (b - bb);
  return {s, e};
}

/// a + b = s + e exactly, for |a| >= |b| (or a zero).
inline DoubleDouble fastTwoSum(double a, double b) noexcept {
  const double s = a + b;
  const double e = b - (s - a);
  return {s, e};
}

/// a = hi + lo, each half with at most 26 significant bits (|a| < 2^995).
inline DoubleDouble split(double a) noexcept {
  const double c = 134217729.0 * a;  // 2^27 + 1
  const double hi = c - (c - a);
  return {hi, a - hi};
}

/// a b = p + e exactly (Dekker's product), p the rounded product; no
/// overflow or underflow on the way (|a|, |b| below 2^995, |a b| above 2^-969).
inline DoubleDouble twoProduct(double a, double b) noexcept {
  const double p = a * b;
  const DoubleDouble as = split(a);
  const DoubleDouble bs = split(b);
  const double e = (((as.hi * bs.hi - p) + as.hi * bs.lo) + as.lo * bs.hi) + as.lo * bs.lo;
  return {p, e};
}

/// a + b for pairs, renormalised; relative error about 2^-104.
inline DoubleDouble add(DoubleDouble a, DoubleDouble b) noexcept {
  const DoubleDouble s = twoSum(a.hi, b.hi);
  return fastTwoSum(s.hi, s.lo + (a.lo + b.lo));
}

/// a b for pairs, renormalised; relative error about 2^-102.
inline DoubleDouble multiply(DoubleDouble a, DoubleDouble b) noexcept {
  const DoubleDouble p = twoProduct(a.hi, b.hi);
  return fastTwoSum(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}

/// a / b, rounded once to double: the quotient of the high parts corrected by
/// the exact remainder. Within 0.5 ulp plus about 2^-100 relative.
inline double divideRounded(DoubleDouble a, DoubleDouble b) noexcept {
  const double q = a.hi / b.hi;
  const DoubleDouble p = twoProduct(q, b.hi);
  const double remainder = (((a.hi - p.hi) - p.lo) + a.lo) - q * b.lo;
  return q + remainder / b.hi;
}

}  // namespace portable
}  // namespace Math
}  // namespace Lux
