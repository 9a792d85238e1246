#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/VecOps.h"

namespace Lux {
namespace Math {

/// Four-channel byte colour (r, g, b, a).
class ZEMATH_API zeVec4uc : public impl::VecAccess<zeVec4uc, unsigned char, 4> {
 public:
  unsigned char r, g, b, a;

  zeVec4uc() = default;
  /// The colour (r, g, b, a).
  constexpr zeVec4uc(unsigned char r_, unsigned char g_, unsigned char b_, unsigned char a_) noexcept
      : r(r_), g(g_), b(b_), a(a_) {}

  /// Per channel: a + trunc(float((b - a) mod 256) * t), wrapped to 8 bits.
  /// Unlike zeVec3uc the difference is deliberately taken as an unsigned byte,
  /// so lerp(0.5, 200, 100) gives 22 where the three-channel type gives 150.
  void lerp(float t, const zeVec4uc& from, const zeVec4uc& to) noexcept {
    for (int i = 0; i < 4; ++i) {
      const unsigned char difference = static_cast<unsigned char>(to[i] - from[i]);
      (*this)[i] = impl::wrapToByte(from[i], impl::truncateToInt(static_cast<float>(difference) * t));
    }
  }
};

}  // namespace Math
}  // namespace Lux
