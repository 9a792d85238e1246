#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Three-channel byte colour (r, g, b).
class ZEMATH_API zeVec3uc : public impl::VecAccess<zeVec3uc, unsigned char, 3> {
 public:
  ///@{ The channels.
  unsigned char r, g, b;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
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

  /// The channels placed unchanged in layout f with the alpha byte (the
  /// three-byte layouts drop it); 0 for HSV or a number that is no layout.
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned char alpha) const noexcept {
    return impl::packBytes(f, {r, g, b, alpha});
  }
  /// As packColor(f, 0): no default alpha of 255 is applied.
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f) const noexcept { return packColor(f, 0); }

  /// Fills the channels from word in layout f; HSV or no layout: unchanged.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word) noexcept {
    if (!impl::isPackedLayout(f)) return;
    bool hasAlpha;
    const impl::ColourBytes c = impl::unpackBytes(f, word, hasAlpha);
    r = static_cast<unsigned char>(c.r);
    g = static_cast<unsigned char>(c.g);
    b = static_cast<unsigned char>(c.b);
  }

  /// Reorders the channels from layout `from` to layout `to` through packed
  /// words with alpha 255. HSV has no special meaning for bytes.
  void convertColor(ZE_MATH_COLORSPACE_FORMAT from, ZE_MATH_COLORSPACE_FORMAT to) noexcept {
    unpackColor(from, packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, 255));
    unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, packColor(to, 255));
  }
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
