#pragma once

// Inputs and results of the inline-operation table (InlineOperations.h).
//
// Every input is a pure function of (sample, slot, component), so that the
// library's build and an outside build draw exactly the same values whatever
// order they evaluate arguments in. Inputs are made from bit patterns and a
// division or an addition at most, never a multiply feeding an add, so the
// inputs themselves cannot differ between builds that contract and builds
// that do not. Results are written as text, one token per value with its bits.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include <math/ZEMath.h>

namespace inline_table {

/// Samples per operation; the first kAwkwardSamples draw special values often.
constexpr int kSamples = 48;
constexpr int kAwkwardSamples = 16;

inline std::uint64_t mix(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15ull;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
  return x ^ (x >> 31);
}

template <class T, class Bits>
T fromBits(Bits bits) {
  static_assert(sizeof(T) == sizeof(Bits), "same size");
  T v;
  std::memcpy(&v, &bits, sizeof v);
  return v;
}

/// +-0, NaN of either sign (the processor's default payload), infinities,
/// subnormals, the smallest normal, huge values, and the library's threshold.
template <class T>
struct Specials;
template <>
struct Specials<float> {
  static constexpr std::uint32_t kBits[] = {0x00000000, 0x80000000, 0x7FC00000, 0xFFC00000, 0x7F800000, 0xFF800000,
                                            0x00000001, 0x80400000, 0x00800000, 0x7F7FFFFF, 0xFE000000, 0x3F800000,
                                            0xBF800000, 0x350637BD, 0xB50637BD, 0x3F000000};
};
template <>
struct Specials<double> {
  static constexpr std::uint64_t kBits[] = {
      0x0000000000000000, 0x8000000000000000, 0x7FF8000000000000, 0xFFF8000000000000,
      0x7FF0000000000000, 0xFFF0000000000000, 0x0000000000000001, 0x8008000000000000,
      0x0010000000000000, 0x7FEFFFFFFFFFFFFF, 0xFFC0000000000000, 0x3FF0000000000000,
      0xBFF0000000000000, 0x3EA0C6F7A0000000, 0xBEA0C6F7A0000000, 0x3FE0000000000000};
};

/// The inputs of one sample of one operation.
class Sample {
 public:
  /// Sample `index`; `plane` is a plane object the operations may set and query.
  Sample(int index, Lux::Math::zePlane* plane) : index_(index), plane_(plane) {}

  Lux::Math::zePlane* plane() const { return plane_; }

  /// A float or double: sign, exponent in [-8, 8] and mantissa at random, or
  /// now and then (often in the awkward samples) a special value.
  template <class T>
  T scalar(int slot, int component = 0) const {
    const std::uint64_t h = hash(slot, component, 1);
    if (special(h)) return specialValue<T>(h);
    const std::uint64_t sign = h >> 63;
    const std::uint64_t exponent = (h >> 40) % 17;  // 2^-8 .. 2^8
    if constexpr (std::is_same_v<T, float>)
      return fromBits<float>(std::uint32_t(sign << 31 | (exponent + 119) << 23 | (h & 0x7FFFFF)));
    else
      return fromBits<double>(sign << 63 | (exponent + 1015) << 52 | (mix(h) & 0xFFFFFFFFFFFFFull));
  }

  /// A vector, quaternion or matrix of scalar() components.
  template <class V>
  V get(int slot) const {
    V v;
    for (int i = 0; i < count<V>(); ++i) v[i] = scalar<typename V::Scalar>(slot, i);
    return v;
  }

  /// An interpolation parameter: mostly in [0, 1), now and then 0, 1, below 0,
  /// above 1 or special.
  template <class T>
  T parameter(int slot) const {
    const std::uint64_t h = hash(slot, 0, 2);
    if (special(h)) return specialValue<T>(h);
    switch (h % 8) {
      case 0:
        return T(0);
      case 1:
        return T(1);
      case 2:
        return -unit<T>(h);
      case 3:
        return T(1) + unit<T>(h);
      default:
        return unit<T>(h);
    }
  }

  /// A colour channel: in [0, 1) at random, on a step of 1/255, half way
  /// between two steps, a little outside [0, 1], or special.
  template <class T>
  T channel(int slot, int component) const {
    const std::uint64_t h = hash(slot, component, 3);
    if (special(h)) return specialValue<T>(h);
    const int step = int(mix(h) % 256);
    switch (h % 6) {
      case 0:
        return T(step) / T(255);
      case 1:
        return (T(step) + T(0.5)) / T(255);  // rounds to either side of the half step
      case 2:
        return -unit<T>(h) / T(8);
      case 3:
        return T(1) + unit<T>(h) / T(8);
      default:
        return unit<T>(h);
    }
  }

  /// A hue in degrees: in [-30, 400) at random, a multiple of 60, or special.
  template <class T>
  T hue(int slot) const {
    const std::uint64_t h = hash(slot, 0, 4);
    if (special(h)) return specialValue<T>(h);
    const int whole = int(mix(h) % 430) - 30;
    return h % 4 == 0 ? T(whole / 60 * 60) : T(whole) + unit<T>(h);
  }

  /// A colour vector of channel() components.
  template <class V>
  V colour(int slot) const {
    V v;
    for (int i = 0; i < count<V>(); ++i) v[i] = channel<typename V::Scalar>(slot, i);
    return v;
  }

  /// Random bits.
  std::uint32_t word(int slot) const { return std::uint32_t(hash(slot, 0, 5)); }
  /// A random byte.
  unsigned char byte(int slot, int component) const { return static_cast<unsigned char>(hash(slot, component, 6)); }
  /// A value of magnitude 2^-30 .. 2^-21 of either sign: below the threshold 5e-7.
  template <class T>
  T tiny(int slot) const {
    const std::uint64_t h = hash(slot, 0, 7);
    const T magnitude = T(1) / T(std::uint64_t(1) << (21 + h % 10));
    return h >> 63 ? -magnitude : magnitude;
  }

 private:
  template <class V>
  static constexpr int count() {
    if constexpr (std::is_same_v<V, Lux::Math::zeMatrix44f> || std::is_same_v<V, Lux::Math::zeMatrix44d>)
      return 16;
    else
      return V::kComponentCount;
  }
  std::uint64_t hash(int slot, int component, int kind) const {
    return mix(mix(mix(std::uint64_t(index_)) ^ std::uint64_t(slot)) ^ std::uint64_t(component * 16 + kind));
  }
  bool special(std::uint64_t h) const { return index_ < kAwkwardSamples ? (h >> 8) % 3 == 0 : (h >> 8) % 40 == 0; }
  template <class T>
  static T specialValue(std::uint64_t h) {
    constexpr auto& bits = Specials<T>::kBits;
    return fromBits<T>(bits[(h >> 16) % (sizeof bits / sizeof bits[0])]);
  }
  /// A value in [0, 1) from the high bits of h: 1.m - 1, exact.
  template <class T>
  static T unit(std::uint64_t h) {
    if constexpr (std::is_same_v<T, float>)
      return fromBits<float>(std::uint32_t(0x3F800000 | (h >> 41))) - 1.0f;
    else
      return fromBits<double>(0x3FF0000000000000ull | (h >> 12)) - 1.0;
  }

  int index_;
  Lux::Math::zePlane* plane_;
};

/// The results of one sample as text: one token per value, its type letter
/// and its bits in hexadecimal (f float, d double, i integer).
class Results {
 public:
  void put(float v) { token("f%08x", fromBits<std::uint32_t>(v)); }
  void put(double v) { token("d%016llx", static_cast<unsigned long long>(fromBits<std::uint64_t>(v))); }
  void put(bool v) { token("i%x", unsigned(v)); }
  void put(int v) { token("i%x", unsigned(v)); }
  void put(unsigned int v) { token("i%x", v); }
  void put(unsigned char v) { token("i%x", unsigned(v)); }
  /// The components of a vector, quaternion or matrix, in storage order.
  template <class V, class = decltype(std::declval<const V&>()[0])>
  void put(const V& v) {
    for (int i = 0; i < int(sizeof(V) / sizeof(v[0])); ++i) put(v[i]);
  }
  const std::string& text() const { return text_; }

 private:
  template <class U>
  void token(const char* format, U value) {
    char buffer[24];
    std::snprintf(buffer, sizeof buffer, format, value);
    if (!text_.empty()) text_ += ' ';
    text_ += buffer;
  }
  std::string text_;
};

}  // namespace inline_table
