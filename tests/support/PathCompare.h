#pragma once

// Support for the suites that hold every vector path to the scalar loop:
// awkward inputs, poisoned output buffers and a byte comparison in which two
// NaN outputs match.

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "Bits.h"

namespace zetest {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr unsigned char kPoison = 0xA5;

/// Values that vector code gets wrong most easily: zeros of both signs, a
/// negative, NaN, infinities, and tiny and huge magnitudes.
constexpr float kAwkwardFloats[] = {0.0f, -0.0f, -1.0f, kNaNf, kInf, -kInf, 1e-30f, 3e38f};

/// A value in [-4, 4); with `awkward`, one time in `oneIn` an awkward value.
inline float drawFloat(std::mt19937& rng, bool awkward, int oneIn = 4) {
  const unsigned int p = rng() % (8u * static_cast<unsigned int>(oneIn));
  if (awkward && p < 8) return kAwkwardFloats[p];
  return std::uniform_real_distribution<float>(-4.0f, 4.0f)(rng);
}

/// Every path of a table after the scalar loop (path 0) that this processor
/// can run.
template <class Table>
std::vector<const typename Table::Entry*> runnablePaths(const Table& table) {
  std::vector<const typename Table::Entry*> paths;
  for (unsigned int i = 1; i < table.count(); ++i)
    if (table.available(i)) paths.push_back(&table.path(i));
  return paths;
}

/// Poisoned bytes for `count` outputs of 12 bytes, `stride` apart from
/// `offset`, and 16 more after the last.
inline std::vector<unsigned char> poisonedOutputs(std::size_t count, unsigned int stride, unsigned int offset) {
  return std::vector<unsigned char>(offset + (count ? (count - 1) * stride + 12 : 0) + 16, kPoison);
}

/// The offset of the first byte that differs, or -1. Outputs of three floats
/// lie `stride` apart from `offset`: two NaNs there match whatever their sign
/// and payload, which the written order does not fix (a sum may take its
/// operands either way round). Every other byte must match exactly.
inline long firstDifference(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b,
                            unsigned int stride, unsigned int offset) {
  if (a.size() != b.size()) return 0;
  std::vector<bool> nanAlike(a.size(), false);
  for (std::size_t at = offset; at + 12 + 16 <= a.size(); at += stride ? stride : a.size())
    for (std::size_t c = at; c < at + 12; c += 4) {
      float x, y;
      std::memcpy(&x, &a[c], 4);
      std::memcpy(&y, &b[c], 4);
      if (std::isnan(x) && std::isnan(y)) nanAlike[c] = nanAlike[c + 1] = nanAlike[c + 2] = nanAlike[c + 3] = true;
    }
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i] != b[i] && !nanAlike[i]) return static_cast<long>(i);
  return -1;
}

/// The offset of the first byte outside the outputs that is not poison, or -1.
inline long firstStrayWrite(const std::vector<unsigned char>& bytes, std::size_t count, unsigned int stride,
                            unsigned int offset) {
  std::vector<bool> output(bytes.size(), false);
  for (std::size_t i = 0; i < count; ++i)
    for (std::size_t c = offset + i * stride; c < offset + i * stride + 12; ++c) output[c] = true;
  for (std::size_t at = 0; at < bytes.size(); ++at)
    if (!output[at] && bytes[at] != kPoison) return static_cast<long>(at);
  return -1;
}

/// Reads the float at byte `at`.
inline float floatAt(const std::vector<unsigned char>& bytes, std::size_t at) {
  float v;
  std::memcpy(&v, &bytes[at], sizeof v);
  return v;
}

}  // namespace zetest
