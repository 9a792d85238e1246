// Reduction of a sine, cosine or tangent argument to [-pi/4, pi/4].

#include "math/portable/detail/ReduceHalfPi.h"

#include <cstdint>
#include <cstring>

#include "math/portable/detail/PiConstants.h"

namespace Lux {
namespace Math {
namespace portable {

namespace {

/// Below this, n = round(x 2/pi) stays under 2^19 and the 33-bit pieces of
/// pi/2 times n are exact.
constexpr double kModerateLimit = 823549.0;  // just below 2^19 pi/2

/// The bits of 2/pi after the binary point, 64 to a word, behind one zero word
/// so that the window of an argument from 2^-33 up never starts before it.
constexpr std::uint64_t kTwoOverPiBits[21] = {
    0x0000000000000000ULL, 0xa2f9836e4e441529ULL, 0xfc2757d1f534ddc0ULL, 0xdb6295993c439041ULL, 0xfe5163abdebbc561ULL,
    0xb7246e3a424dd2e0ULL, 0x06492eea09d1921cULL, 0xfe1deb1cb129a73eULL, 0xe88235f52ebb4484ULL, 0xe99c7026b45f7e41ULL,
    0x3991d639835339f4ULL, 0x9c845f8bbdf9283bULL, 0x1ff897ffde05980fULL, 0xef2f118b5a0a6d1fULL, 0x6d367ecf27cb09b7ULL,
    0x4f463f669e5fea2dULL, 0x7527bac7ebe5f17bULL, 0x3d0739f78a5292eaULL, 0x6bfb5fb11f8d5d08ULL, 0x56033046fc7b6babULL,
    0xf0cfbc209af4361dULL};

/// 2^k for -1022 <= k <= 1023, built from its bits.
double powerOfTwo(int k) noexcept {
  const std::uint64_t bits = static_cast<std::uint64_t>(k + 1023) << 52;
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}

/// n = round(x 2/pi) by the 1.5 2^52 shift (exact for |x 2/pi| < 2^51), then
/// r = x - n pi/2 with every product of n and a piece exact and the
/// cancelling differences carried as exact pairs.
int reduceModerate(double x, DoubleDouble& r) noexcept {
  constexpr double kTwoOverPi = 0x1.45f306dc9c883p-1;
  constexpr double kShift = 0x1.8p52;
  const double n = (x * kTwoOverPi + kShift) - kShift;
  const double head = x - n * kHalfPiPiece[0];  // exact: n pi/2 is within a factor 2 of x
  const DoubleDouble second = twoSum(head, -(n * kHalfPiPiece[1]));
  const DoubleDouble third = twoSum(second.hi, -(n * kHalfPiPiece[2]));
  const double tail = (second.lo + third.lo) - n * kHalfPiPiece[3];
  r = fastTwoSum(third.hi, tail);
  return static_cast<int>(n) & 3;
}

/// Payne and Hanek: with x = m 2^e (m an integer of 53 bits), only the bits
/// of 2/pi from position e - 1 on decide x 2/pi mod 4; 192 of them give the
/// integer part mod 4 and a fraction good to 2^-137, far below the closest
/// approach of any double to a multiple of pi/2 (about 2^-61).
int reduceHuge(double x, DoubleDouble& r) noexcept {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  const int e = static_cast<int>((bits >> 52) & 0x7ff) - 1075;
  const std::uint64_t m = (bits & 0xfffffffffffffULL) | (1ULL << 52);

  // The window of 192 bits that starts at bit e - 1 after the binary point
  // (position e + 62 of the table, which has one leading zero word).
  const int position = e + 62;
  const int word = position >> 6;
  const int shift = position & 63;
  std::uint64_t window[3];
  for (int i = 0; i < 3; ++i) {
    window[i] = kTwoOverPiBits[word + i] << shift;
    if (shift != 0) window[i] |= kTwoOverPiBits[word + i + 1] >> (64 - shift);
  }

  // The low 192 bits of m times the window: bits 190 and 191 are n mod 4,
  // the 190 below the fraction of x 2/pi.
  using u128 = unsigned __int128;
  std::uint64_t product[3];
  u128 partial = static_cast<u128>(m) * window[2];
  product[0] = static_cast<std::uint64_t>(partial);
  partial = static_cast<u128>(m) * window[1] + (partial >> 64);
  product[1] = static_cast<std::uint64_t>(partial);
  partial = static_cast<u128>(m) * window[0] + (partial >> 64);
  product[2] = static_cast<std::uint64_t>(partial);

  int n = static_cast<int>(product[2] >> 62);
  product[2] &= 0x3fffffffffffffffULL;
  const bool roundUp = (product[2] >> 61) != 0;
  if (roundUp) {
    // fraction - 1: keep its magnitude 2^190 - fraction.
    n += 1;
    std::uint64_t borrow = 0;
    for (int i = 0; i < 3; ++i) {
      const std::uint64_t top = i == 2 ? 0x4000000000000000ULL : 0;
      const std::uint64_t subtrahend = product[i] + borrow;
      const std::uint64_t next = (subtrahend < borrow || top < subtrahend) ? 1 : 0;
      product[i] = top - subtrahend;
      borrow = next;
    }
  }

  // Normalise the magnitude so that its leading one is bit 191.
  int leading = 0;
  while (product[2] == 0 && leading < 128) {
    product[2] = product[1];
    product[1] = product[0];
    product[0] = 0;
    leading += 64;
  }
  const int clz = __builtin_clzll(product[2] | 1);
  if (clz != 0) {
    product[2] = (product[2] << clz) | (product[1] >> (64 - clz));
    product[1] = (product[1] << clz) | (product[0] >> (64 - clz));
  }
  leading += clz;

  // The top 106 bits as two exact doubles: |fraction| = (a 2^75 + b 2^22) 2^(-190 - leading + 64).
  const double a = static_cast<double>(product[2] >> 11);
  const double b = static_cast<double>(((product[2] & 0x7ff) << 42) | (product[1] >> 22));
  const DoubleDouble fraction = fastTwoSum(a * powerOfTwo(-51 - leading), b * powerOfTwo(-104 - leading));
  r = multiply(fraction, kHalfPi);
  if (roundUp) r = {-r.hi, -r.lo};
  return n & 3;
}

}  // namespace

int reduceHalfPi(double x, DoubleDouble& r) noexcept {
  return x < kModerateLimit ? reduceModerate(x, r) : reduceHuge(x, r);
}

}  // namespace portable
}  // namespace Math
}  // namespace Lux
