#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/VecOps.h"

namespace Lux {
namespace Math {

/// Three-channel byte colour (r, g, b).
class ZEMATH_API zeVec3uc : public impl::VecAccess<zeVec3uc, unsigned char, 3> {
 public:
  unsigned char r, g, b;

  zeVec3uc() = default;
  /// The colour (r, g, b).
  constexpr zeVec3uc(unsigned char r_, unsigned char g_, unsigned char b_) noexcept : r(r_), g(g_), b(b_) {}

  /// Per channel: a + trunc(float(b - a) * t), the difference signed
  /// (-255 to 255), the sum wrapped to 8 bits; no clamping, no rounding.
  void lerp(float t, const zeVec3uc& a, const zeVec3uc& b) noexcept {
    for (int i = 0; i < 3; ++i) {
      const int difference = int(b[i]) - int(a[i]);
      (*this)[i] = impl::wrapToByte(a[i], impl::truncateToInt(static_cast<float>(difference) * t));
    }
  }
};

}  // namespace Math
}  // namespace Lux
