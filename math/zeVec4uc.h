#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Four-channel byte colour (r, g, b, a).
class ZEMATH_API zeVec4uc : public impl::VecAccess<zeVec4uc, unsigned char, 4> {
 public:
  ///@{ The channels.
  unsigned char r, g, b, a;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
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

  /// The four channels placed unchanged in layout f (RGBA gives the stored
  /// bytes as one little-endian word); 0 for HSV or a number that is no layout.
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f) const noexcept { return impl::packBytes(f, {r, g, b, a}); }

  /// Fills the channels from word in layout f; the layouts without alpha
  /// (BGR, RGB) set a to 0. HSV or no layout: unchanged.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word) noexcept { unpackColor(f, word, 0); }
  /// As unpackColor(f, word), but the layouts without alpha set a to alpha.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word, unsigned char alpha) noexcept {
    if (!impl::isPackedLayout(f)) return;
    bool hasAlpha;
    const impl::ColourBytes c = impl::unpackBytes(f, word, hasAlpha);
    r = static_cast<unsigned char>(c.r);
    g = static_cast<unsigned char>(c.g);
    b = static_cast<unsigned char>(c.b);
    a = hasAlpha ? static_cast<unsigned char>(c.a) : alpha;
  }

  /// Reorders the channels from layout `from` to layout `to` through packed
  /// words, alpha from the fourth channel. HSV has no special meaning for bytes.
  void convertColor(ZE_MATH_COLORSPACE_FORMAT from, ZE_MATH_COLORSPACE_FORMAT to) noexcept {
    unpackColor(from, packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
    unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, packColor(to));
  }
};

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
