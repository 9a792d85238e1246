#pragma once

// Helpers shared by the matrix suites: the vector type that goes with each
// matrix class, bit-exact and tolerant element comparisons, random matrices
// and a product written out as a plain sum.

#include <random>

#include <gtest/gtest.h>

#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "support/Bits.h"

namespace zetest {

/// The scalar and three-component vector of a matrix class.
template <class M>
struct Twin;
template <>
struct Twin<Lux::Math::zeMatrix44f> {
  using T = float;
  using V3 = Lux::Math::zeVec3f;
};
template <>
struct Twin<Lux::Math::zeMatrix44d> {
  using T = double;
  using V3 = Lux::Math::zeVec3d;
};

/// Expects the sixteen elements to match bit for bit.
template <class M>
void expectBits(const M& expected, const M& actual) {
  for (int i = 0; i < 16; ++i) EXPECT_BITEQ(expected[i], actual[i]) << " element " << i;
}

/// Expects |expected - actual| <= tol for all sixteen elements (NaN fails).
template <class M>
void expectNear(const M& expected, const M& actual, double tol) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(expected[i], actual[i], tol) << " element " << i;
}

/// Sixteen elements drawn uniformly from (-bound, bound).
template <class M>
M randomMatrix(std::mt19937& rng, typename M::Scalar bound = 10) {
  std::uniform_real_distribution<typename M::Scalar> dist(-bound, bound);
  M m;
  for (int i = 0; i < 16; ++i) m[i] = dist(rng);
  return m;
}

/// a·b by the written formula, for comparing against the library bit for bit.
template <class M>
M referenceProduct(const M& a, const M& b) {
  M r;
  for (int row = 0; row < 4; ++row)
    for (int c = 0; c < 4; ++c)
      r(row, c) = a(row, 0) * b(0, c) + a(row, 1) * b(1, c) + a(row, 2) * b(2, c) + a(row, 3) * b(3, c);
  return r;
}

/// diag(a, b, c, d), zeros elsewhere.
template <class M>
M diagonal(typename M::Scalar a, typename M::Scalar b, typename M::Scalar c, typename M::Scalar d = 1) {
  return M(a, 0, 0, 0, 0, b, 0, 0, 0, 0, c, 0, 0, 0, 0, d);
}

}  // namespace zetest
