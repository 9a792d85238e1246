#pragma once

/// \file
/// Colour packing, unpacking and layout conversion of the vector types. A
/// vector always holds red, green, blue (and alpha in its fourth component);
/// the layout governs only the packed 32-bit word. Layout names list the
/// bytes in memory order on a little-endian machine, lowest byte first.

#include <algorithm>
#include <cmath>

#include "math/impl/ExactOrder.h"
#include "math/impl/Truncate.h"
#include "math/zeMathEnums.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// The four bytes of a colour, each 0 to 255.
struct ColourBytes {
  unsigned int r;  ///< red
  unsigned int g;  ///< green
  unsigned int b;  ///< blue
  unsigned int a;  ///< alpha
};

/// True for the layouts that have a packed form (every one but HSV).
inline bool isPackedLayout(ZE_MATH_COLORSPACE_FORMAT f) noexcept {
  return f >= ZE_MATH_COLORSPACE_FORMAT_ABGR && f <= ZE_MATH_COLORSPACE_FORMAT_BGRA &&
         f != ZE_MATH_COLORSPACE_FORMAT_HSV;
}

/// Places the bytes in the word as layout f names them; 0 for HSV and for
/// numbers that are no layout. The three-byte layouts drop alpha.
inline unsigned int packBytes(ZE_MATH_COLORSPACE_FORMAT f, ColourBytes c) noexcept {
  switch (f) {
    case ZE_MATH_COLORSPACE_FORMAT_ABGR:
      return c.r << 24 | c.g << 16 | c.b << 8 | c.a;
    case ZE_MATH_COLORSPACE_FORMAT_RGBA:
      return c.a << 24 | c.b << 16 | c.g << 8 | c.r;
    case ZE_MATH_COLORSPACE_FORMAT_ARGB:
      return c.b << 24 | c.g << 16 | c.r << 8 | c.a;
    case ZE_MATH_COLORSPACE_FORMAT_BGR:
      return c.r << 16 | c.g << 8 | c.b;
    case ZE_MATH_COLORSPACE_FORMAT_RGB:
      return c.b << 16 | c.g << 8 | c.r;
    case ZE_MATH_COLORSPACE_FORMAT_BGRA:
      return c.a << 24 | c.r << 16 | c.g << 8 | c.b;
    default:
      return 0;
  }
}

/// Reads the bytes of word as layout f names them. hasAlpha tells whether the
/// layout carries one (a is 0 otherwise). Only called for packed layouts.
inline ColourBytes unpackBytes(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word, bool& hasAlpha) noexcept {
  const unsigned int b3 = word >> 24 & 0xFF, b2 = word >> 16 & 0xFF, b1 = word >> 8 & 0xFF, b0 = word & 0xFF;
  hasAlpha = true;
  switch (f) {
    case ZE_MATH_COLORSPACE_FORMAT_ABGR:
      return {b3, b2, b1, b0};
    case ZE_MATH_COLORSPACE_FORMAT_RGBA:
      return {b0, b1, b2, b3};
    case ZE_MATH_COLORSPACE_FORMAT_ARGB:
      return {b1, b2, b3, b0};
    case ZE_MATH_COLORSPACE_FORMAT_BGRA:
      return {b2, b1, b0, b3};
    case ZE_MATH_COLORSPACE_FORMAT_RGB:
      hasAlpha = false;
      return {b0, b1, b2, 0};
    default:
      hasAlpha = false;
      return {b2, b1, b0, 0};  // BGR
  }
}

/// Clamps c to [lo, hi] as max(lo, min(hi, c)); a NaN channel becomes hi.
template <class T>
inline T clampChannel(T c, T lo, T hi) noexcept {
  return std::max(lo, std::min(hi, c));
}

/// A clamped channel as a byte: trunc(v * 255 + 0.5), halves round upward.
template <class T>
inline unsigned int quantize(T v) noexcept {
  return static_cast<unsigned int>(truncateToInt(v * T(255) + T(0.5)));
}

/// An alpha argument: above 0 limited to at most 1, anything else (NaN too) 0.
template <class T>
inline T clampAlpha(T alpha) noexcept {
  return alpha > T(0) ? std::min(alpha, T(1)) : T(0);
}

/// A byte as a channel from 0 to 1.
template <class T>
inline T channelFromByte(unsigned int byte) noexcept {
  return static_cast<T>(byte) / T(255);
}

/// Writes red, green, blue of word in layout f into v.x, v.y, v.z, each
/// byte / 255, and returns whether the layout carries alpha (in alphaByte).
/// Only called for packed layouts.
template <class T, class V>
inline bool unpackChannels(V& v, ZE_MATH_COLORSPACE_FORMAT f, unsigned int word, unsigned int& alphaByte) noexcept {
  bool hasAlpha;
  const ColourBytes c = unpackBytes(f, word, hasAlpha);
  v.x = channelFromByte<T>(c.r);
  v.y = channelFromByte<T>(c.g);
  v.z = channelFromByte<T>(c.b);
  alphaByte = c.a;
  return hasAlpha;
}

/// In place, (r, g, b) becomes (hue, saturation, value). Only the red-dominant
/// case gives a conventional hue: when green or blue dominates, the hue is
/// red times 60 and the saturation or the value is overwritten with the
/// sector term. Both are kept exactly as the library has always computed them.
template <class T>
inline void rgbToHsv(T& x, T& y, T& z) noexcept {
  const T r = x, g = y, b = z;
  const T mx = std::max(std::max(r, g), b);
  const T mn = std::min(std::min(r, g), b);
  z = mx;
  if (mx == T(0)) {
    y = T(0);
    x = T(-1);
    return;
  }
  const T d = mx - mn;
  y = d / mx;
  if (y == T(0)) {
    x = T(-1);
    return;
  }
  const T rc = (mx - r) / d, gc = (mx - g) / d, bc = (mx - b) / d;
  T hue;
  if (r == mx) {
    hue = (bc - gc) * T(60);
  } else if (g == mx) {
    y = T(2) + rc - bc;
    hue = r * T(60);
  } else if (b == mx) {
    z = T(4) + gc - rc;
    hue = r * T(60);
  } else {  // NaN input
    x = r * T(60);
    return;
  }
  if (hue < T(0)) hue = hue + T(360);
  x = hue;
}

/// In place, (hue in degrees, saturation, value) becomes (r, g, b). A sector
/// outside 0 to 5 leaves the vector as it was.
template <class T>
inline void hsvToRgb(T& x, T& y, T& z) noexcept {
  const T h = x, s = y, v = z;
  if (s == T(0)) {
    const T grey = h < T(0) ? v : T(0);
    x = y = z = grey;
    return;
  }
  const T p = (T(1) - s) * v;
  if (h == T(360)) {
    x = v;
    y = p;
    z = p;
    return;
  }
  const T sector = h / T(60);
  const T whole = std::floor(sector);
  const int i = truncateToInt(whole);
  const T f = sector - whole;
  const T q = (T(1) - s * f) * v;
  const T t = (T(1) - (T(1) - f) * s) * v;
  switch (i) {
    case 0:
      x = v, y = t, z = p;
      break;
    case 1:
      x = q, y = v, z = p;
      break;
    case 2:
      x = p, y = v, z = t;
      break;
    case 3:
      x = p, y = q, z = v;
      break;
    case 4:
      x = t, y = p, z = v;
      break;
    case 5:
      x = v, y = p, z = q;
      break;
    default:
      break;
  }
}

/// Colour members of the 3-component float and double vectors.
template <class V, class T>
class Colour3Ops {
 public:
  /// The colour, clamped to the range of ZeroVector..OneVector as they are at
  /// call time and quantised to bytes, packed in layout f with the given alpha.
  /// 0 for HSV or a number that is no layout.
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f, T alpha) const noexcept {
    if (!isPackedLayout(f)) return 0;
    const V& c = self();
    return packBytes(f, {quantize(clampChannel(c.x, V::ZeroVector.x, V::OneVector.x)),
                         quantize(clampChannel(c.y, V::ZeroVector.y, V::OneVector.y)),
                         quantize(clampChannel(c.z, V::ZeroVector.z, V::OneVector.z)), quantize(clampAlpha(alpha))});
  }
  /// As packColor(f, 0): the alpha byte is 0 in every layout (no default of 255).
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f) const noexcept { return packColor(f, T(0)); }

  /// Fills red, green, blue from word in layout f, each byte / 255; HSV or a
  /// number that is no layout leaves the vector unchanged.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word) noexcept {
    if (!isPackedLayout(f)) return;
    unsigned int alphaByte;
    unpackChannels<T>(self(), f, word, alphaByte);
  }

  /// Reorders the channels from layout `from` to layout `to` (HSV: hue,
  /// saturation, value), quantising through a packed word at every step, also
  /// when only the order changes.
  void convertColor(ZE_MATH_COLORSPACE_FORMAT from, ZE_MATH_COLORSPACE_FORMAT to) noexcept {
    V& v = self();
    if (from == ZE_MATH_COLORSPACE_FORMAT_HSV && isThreeByte(to)) {
      hsvToRgb(v.x, v.y, v.z);
    } else if (isThreeByte(from) && to == ZE_MATH_COLORSPACE_FORMAT_HSV) {
      v.unpackColor(from, v.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, T(1)));
      rgbToHsv(v.x, v.y, v.z);
      return;
    } else {
      v.unpackColor(from, v.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, T(1)));
    }
    v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, v.packColor(to, T(1)));
  }

 private:
  static bool isThreeByte(ZE_MATH_COLORSPACE_FORMAT f) noexcept {
    return f == ZE_MATH_COLORSPACE_FORMAT_BGR || f == ZE_MATH_COLORSPACE_FORMAT_RGB;
  }
  V& self() noexcept { return *static_cast<V*>(this); }
  const V& self() const noexcept { return *static_cast<const V*>(this); }
};

/// Colour members of the 4-component float and double vectors; w is alpha.
template <class V, class T>
class Colour4Ops {
 public:
  /// The colour and its alpha w, each clamped to ZeroVector..OneVector as they
  /// are at call time, quantised and packed in layout f; 0 for HSV or a
  /// number that is no layout.
  unsigned int packColor(ZE_MATH_COLORSPACE_FORMAT f) const noexcept {
    if (!isPackedLayout(f)) return 0;
    const V& c = self();
    return packBytes(f, {quantize(clampChannel(c.x, V::ZeroVector.x, V::OneVector.x)),
                         quantize(clampChannel(c.y, V::ZeroVector.y, V::OneVector.y)),
                         quantize(clampChannel(c.z, V::ZeroVector.z, V::OneVector.z)),
                         quantize(clampChannel(c.w, V::ZeroVector.w, V::OneVector.w))});
  }

  /// Fills the vector from word in layout f, each byte / 255; the layouts
  /// without alpha (BGR, RGB) set w to 0. HSV or no layout: unchanged.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word) noexcept { unpackColor(f, word, T(0)); }
  /// As unpackColor(f, word), but the layouts without alpha set w to alpha.
  void unpackColor(ZE_MATH_COLORSPACE_FORMAT f, unsigned int word, T alpha) noexcept {
    if (!isPackedLayout(f)) return;
    unsigned int alphaByte;
    V& v = self();
    v.w = unpackChannels<T>(v, f, word, alphaByte) ? channelFromByte<T>(alphaByte) : alpha;
  }

  /// Reorders the channels from layout `from` to layout `to`. HSV to ABGR,
  /// RGBA or RGB and back convert x, y, z directly, with no quantisation, and
  /// leave the result in red, green, blue order whatever `to` names; every
  /// other pair goes through packed words. w is alpha throughout.
  void convertColor(ZE_MATH_COLORSPACE_FORMAT from, ZE_MATH_COLORSPACE_FORMAT to) noexcept {
    V& v = self();
    if (from == ZE_MATH_COLORSPACE_FORMAT_HSV && convertsDirectly(to)) {
      hsvToRgb(v.x, v.y, v.z);
    } else if (convertsDirectly(from) && to == ZE_MATH_COLORSPACE_FORMAT_HSV) {
      rgbToHsv(v.x, v.y, v.z);
    } else {
      v.unpackColor(from, v.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
      v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, v.packColor(to));
    }
  }

 private:
  static bool convertsDirectly(ZE_MATH_COLORSPACE_FORMAT f) noexcept {
    return f == ZE_MATH_COLORSPACE_FORMAT_ABGR || f == ZE_MATH_COLORSPACE_FORMAT_RGBA ||
           f == ZE_MATH_COLORSPACE_FORMAT_RGB;
  }
  V& self() noexcept { return *static_cast<V*>(this); }
  const V& self() const noexcept { return *static_cast<const V*>(this); }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
