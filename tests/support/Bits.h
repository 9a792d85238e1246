#pragma once

// Helpers for bit-exact expectations: values compared by their bit patterns,
// so -0 differs from +0 and a NaN equals a NaN of the same payload.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace zetest {

inline std::uint32_t bitsOf(float v) {
  std::uint32_t b;
  std::memcpy(&b, &v, sizeof b);
  return b;
}

inline std::uint64_t bitsOf(double v) {
  std::uint64_t b;
  std::memcpy(&b, &v, sizeof b);
  return b;
}

inline float floatFromBits(std::uint32_t b) {
  float v;
  std::memcpy(&v, &b, sizeof v);
  return v;
}

/// Distance in units in the last place between two finite values of one sign.
template <class T>
inline std::int64_t ulpDistance(T a, T b) {
  const auto ia = static_cast<std::int64_t>(bitsOf(a));
  const auto ib = static_cast<std::int64_t>(bitsOf(b));
  return ia > ib ? ia - ib : ib - ia;
}

constexpr float kNaNf = std::numeric_limits<float>::quiet_NaN();
constexpr double kNaNd = std::numeric_limits<double>::quiet_NaN();

}  // namespace zetest

/// Expects two floating-point values to have the same bit pattern.
#define EXPECT_BITEQ(expected, actual) \
  EXPECT_EQ(zetest::bitsOf(expected), zetest::bitsOf(actual)) << "expected " << (expected) << ", got " << (actual)

namespace zetest {

/// Expects every component of two vectors to match bit for bit.
template <class V>
void expectVecBits(const V& expected, const V& actual) {
  for (int i = 0; i < V::kComponentCount; ++i) EXPECT_BITEQ(expected[i], actual[i]) << " component " << i;
}

}  // namespace zetest
