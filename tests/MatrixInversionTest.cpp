// Determinant, adjoint and the four inverses of both matrix classes: exact
// results on small integer matrices, the written order on rounded values, the
// twins' different singularity thresholds and the fallbacks to invert.

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/MatrixSupport.h"

using namespace Lux::Math;
using Lux::kFailure;
using Lux::kSuccess;
using zetest::diagonal;
using zetest::expectBits;

namespace {

template <class M>
M sentinel() {
  M m;
  for (int i = 0; i < 16; ++i) m[i] = typename M::Scalar(i) + typename M::Scalar(0.5);
  return m;
}

template <class M>
class MatrixInversion : public ::testing::Test {};
using MatrixTypes = ::testing::Types<zeMatrix44f, zeMatrix44d>;
TYPED_TEST_SUITE(MatrixInversion, MatrixTypes);

}  // namespace

TYPED_TEST(MatrixInversion, ExactAdjointInvertFailsUntouchedOnZeroAndSpreadsNaN) {
  using M = TypeParam;
  const M m(2, 0, 1, 3, 1, -1, 0, 2, 0, 3, 1, 1, 4, 1, 2, 0);
  EXPECT_EQ(-8, M::determinant(m));
  M adj;
  M::adjoint(m, adj);
  EXPECT_TRUE(zetest::referenceProduct(m, adj) == diagonal<M>(-8, -8, -8, -8));

  M inv = sentinel<M>();
  EXPECT_EQ(kFailure, inv.invert(M::zeroMatrix));
  expectBits(sentinel<M>(), inv);
  inv[6] = std::numeric_limits<typename M::Scalar>::quiet_NaN();  // NaN passes the threshold test
  EXPECT_EQ(kSuccess, inv.invert(inv));
  EXPECT_TRUE(std::isnan(inv[0]));
}

TYPED_TEST(MatrixInversion, RoundedValuesFollowTheWrittenFormulas) {
  using M = TypeParam;
  using T = typename M::Scalar;
  std::mt19937 rng(11);
  for (int round = 0; round < 20; ++round) {
    const M m = zetest::randomMatrix<M>(rng, 3);
    auto e = [&](int r, int c) { return m(r, c); };
    const T A = e(2, 2) * e(3, 3) - e(2, 3) * e(3, 2), B = e(2, 1) * e(3, 3) - e(2, 3) * e(3, 1);
    const T C = e(3, 1) * e(2, 0) - e(3, 0) * e(2, 1), D = e(3, 3) * e(2, 0) - e(2, 3) * e(3, 0);
    const T E = e(2, 1) * e(3, 2) - e(2, 2) * e(3, 1), F = e(3, 2) * e(2, 0) - e(2, 2) * e(3, 0);
    const T det =
        (e(1, 1) * A - e(1, 2) * B + e(1, 3) * E) * e(0, 0) - (A * e(1, 0) - e(1, 2) * D + e(1, 3) * F) * e(0, 1) +
        (B * e(1, 0) - D * e(1, 1) + e(1, 3) * C) * e(0, 2) - (E * e(1, 0) - F * e(1, 1) + C * e(1, 2)) * e(0, 3);
    EXPECT_BITEQ(det, M::determinant(m));

    M adj;
    M::adjoint(m, adj);
    EXPECT_BITEQ(e(1, 1) * A - e(1, 2) * B + e(1, 3) * E, adj(0, 0));
    EXPECT_BITEQ(-(e(0, 1) * A - e(0, 2) * B + e(0, 3) * E), adj(0, 1));
    M inPlace = m;
    M::adjoint(inPlace, inPlace);
    expectBits(adj, inPlace);

    // invert multiplies by one reciprocal; it may write over its argument.
    M inv;
    ASSERT_EQ(kSuccess, inv.invert(m));
    const T r = T(1) / det;
    for (int i = 0; i < 16; ++i) EXPECT_BITEQ(adj[i] * r, inv[i]);
    M self = m;
    ASSERT_EQ(kSuccess, self.invert(self));
    expectBits(inv, self);

    inv.invertOrthonormal(m);
    EXPECT_BITEQ(-(e(1, 0) * e(3, 0) + e(1, 1) * e(3, 1) + e(1, 2) * e(3, 2)), inv(3, 1));
    inv.invertOrthogonal(m);
    const T k = T(1) / (e(0, 0) * e(0, 0) + e(0, 1) * e(0, 1) + e(0, 2) * e(0, 2));
    EXPECT_BITEQ(e(2, 1) * k, inv(1, 2));
    EXPECT_BITEQ(-(e(3, 0) * inv(0, 1) + e(3, 1) * inv(1, 1) + e(3, 2) * inv(2, 1)), inv(3, 1));

    // The 3x3 determinant of invertAffine sums its positive and its negative products apart.
    const T products[6] = {e(0, 0) * e(1, 1) * e(2, 2),  e(0, 1) * e(1, 2) * e(2, 0),  e(0, 2) * e(1, 0) * e(2, 1),
                           -e(0, 2) * e(1, 1) * e(2, 0), -e(0, 1) * e(1, 0) * e(2, 2), -e(0, 0) * e(1, 2) * e(2, 1)};
    T pos = 0, neg = 0;
    for (T p : products) (p >= 0 ? pos : neg) += p;
    ASSERT_EQ(kSuccess, inv.invertAffine(m));
    EXPECT_BITEQ(-(e(1, 0) * e(2, 2) - e(1, 2) * e(2, 0)) * (T(1) / (pos + neg)), inv(1, 0));
    EXPECT_BITEQ(-(e(3, 0) * inv(0, 2) + e(3, 1) * inv(1, 2) + e(3, 2) * inv(2, 2)), inv(3, 2));
  }
}

TEST(MatrixInversionTwins, FloatRefusesOnlySubnormalDeterminantsDoubleRefusesBelowTheSmallThreshold) {
  zeMatrix44f f;
  zeMatrix44d d;
  const float smallestNormal = std::numeric_limits<float>::min();
  EXPECT_EQ(kSuccess, f.invert(diagonal<zeMatrix44f>(smallestNormal, 1, 1)));
  EXPECT_EQ(kFailure, f.invert(diagonal<zeMatrix44f>(smallestNormal / 2, 1, 1)));

  // The double threshold is the widened float 5e-7, not the double nearest it.
  const double widened = zetest::floatFromBits(0x350637BD);
  EXPECT_EQ(kSuccess, d.invert(diagonal<zeMatrix44d>(widened, 1, 1)));
  EXPECT_EQ(kFailure, d.invert(diagonal<zeMatrix44d>(std::nextafter(widened, 0.0), 1, 1)));
}

// Orthonormal transposes and ignores column 3 of its argument (a scaled matrix
// is transposed without notice); orthogonal divides by the squared scale of
// row 0; affine inverts the 3x3 and forces column 3 to (0, 0, 0, 1).
TYPED_TEST(MatrixInversion, CheapInversesOnExactInput) {
  using M = TypeParam;
  const struct {
    int (M::*inverse)(const M&) noexcept;
    M m, expected;
  } cases[] = {{&M::invertOrthonormal, M(0, 1, 0, 7, -1, 0, 0, 7, 0, 0, 1, 7, 5, 0.25, 0.5, 7),
                M(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, -0.25, 5, -0.5, 1)},
               {&M::invertOrthonormal, diagonal<M>(2, 2, 2), diagonal<M>(2, 2, 2)},
               {&M::invertOrthogonal, M(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 2, 0, 0, 1),
                M(0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0.5, 0, -1, 0, 0, 1)},
               {&M::invertAffine, M(1, 2, 0, 0.25, 0, 1, 0, 0.5, 0, 0, 2, 0.75, 1, 1, 1, 3),
                M(1, -2, 0, 0, 0, 1, 0, 0, 0, 0, 0.5, 0, -1, 1, -0.5, 1)}};
  for (const auto& c : cases) {
    M inv;
    EXPECT_EQ(kSuccess, (inv.*c.inverse)(c.m));
    for (int i = 0; i < 16; ++i) EXPECT_EQ(c.expected[i], inv[i]) << "case " << (&c - cases) << " element " << i;
  }
}

TYPED_TEST(MatrixInversion, AffinePrecisionTestIsRelativeAndZeroDoesNotFallBack) {
  using M = TypeParam;
  M inv;
  // A uniformly tiny matrix stays on this path even where invert would refuse it.
  EXPECT_EQ(kSuccess, inv.invertAffine(diagonal<M>(1e-4, 1e-4, 1e-4)));
  EXPECT_NEAR(1e4, inv(0, 0), 0.05);
  // All six products zero: 0/0 does not fall back; the result is not finite.
  EXPECT_EQ(kSuccess, inv.invertAffine(M::zeroMatrix));
  EXPECT_TRUE(std::isnan(inv(0, 0)) && std::isnan(inv(3, 1)));
  EXPECT_EQ(0, inv(2, 3));
  EXPECT_EQ(1, inv(3, 3));
}

TEST(MatrixInversionTwins, CheapInversesFallBackToEachClassesOwnInvert) {
  // Orthogonal, scale 1e-4: s = 1e-8 sends both to invert, whose determinant
  // 1e-12 only the float class accepts.
  const zeMatrix44f tinyF = diagonal<zeMatrix44f>(1e-4f, 1e-4f, 1e-4f);
  zeMatrix44f viaInvert, f;
  ASSERT_EQ(kSuccess, viaInvert.invert(tinyF));
  EXPECT_EQ(kSuccess, f.invertOrthogonal(tinyF));
  expectBits(viaInvert, f);
  zeMatrix44d d = sentinel<zeMatrix44d>();
  EXPECT_EQ(kFailure, d.invertOrthogonal(diagonal<zeMatrix44d>(1e-4, 1e-4, 1e-4)));
  expectBits(sentinel<zeMatrix44d>(), d);

  // A squared scale of exactly the widened float 5e-7 (summed as the class
  // does) is not below it: no fallback, although invert refuses this matrix.
  const double x = std::ldexp(1.0, -11), y = 0.0005114503100361352;
  ASSERT_EQ(static_cast<double>(zetest::floatFromBits(0x350637BD)), x * x + y * y + 0.0 * 0.0);
  EXPECT_EQ(kSuccess, d.invertOrthogonal(zeMatrix44d(x, y, 0, 0, 0, 1e-3, 0, 0, 0, 0, 1e-3, 0, 0, 0, 0, 1)));

  // Affine, rows (1, 1, 0) and (1, 1 + 2^-22, 0): det / (pos - neg) is about
  // 1.2e-7. The fallback inverts the whole 4x4, column 3 included, which the
  // double class refuses (determinant about 2.4e-7).
  const float e = std::ldexp(1.0f, -22);
  const zeMatrix44f cancelling(1, 1, 0, 0.5f, 1, 1 + e, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  ASSERT_EQ(kSuccess, viaInvert.invert(cancelling));
  EXPECT_EQ(kSuccess, f.invertAffine(cancelling));
  expectBits(viaInvert, f);
  EXPECT_NE(0.0f, f(0, 3));
  const double ed = e;
  d = sentinel<zeMatrix44d>();
  EXPECT_EQ(kFailure, d.invertAffine(zeMatrix44d(1, 1, 0, 0.5, 1, 1 + ed, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)));
  expectBits(sentinel<zeMatrix44d>(), d);
}
