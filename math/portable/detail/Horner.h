#pragma once

/// \file
/// Polynomial evaluation in the one order the portable functions use.

namespace Lux {
namespace Math {
namespace portable {

/// c[0] + z (c[1] + z (c[2] + ... + z c[N-1])), innermost first; every
/// multiply and add rounded on its own.
template <int N>
inline double horner(const double (&c)[N], double z) noexcept {
  double p = c[N - 1];
  for (int k = N - 2; k >= 0; --k) p = c[k] + z * p;
  return p;
}

}  // namespace portable
}  // namespace Math
}  // namespace Lux
