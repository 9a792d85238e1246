// Matrix layout and core arithmetic: products and their aliasing, the
// tolerance comparison, transposes, element-wise arithmetic, array transforms.

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/MatrixSupport.h"

using namespace Lux::Math;
using zetest::expectBits;
using zetest::kNaNd;
using zetest::kNaNf;
using zetest::randomMatrix;
using zetest::referenceProduct;

namespace {

static_assert(sizeof(zeMatrix44f) == 64 && std::is_standard_layout_v<zeMatrix44f> &&
              std::is_trivially_copyable_v<zeMatrix44f> && std::is_trivially_default_constructible_v<zeMatrix44f>);
// The double class tests for self-assignment, so it is not trivially copyable.
static_assert(sizeof(zeMatrix44d) == 128 && std::is_standard_layout_v<zeMatrix44d> &&
              !std::is_trivially_copyable_v<zeMatrix44d> && std::is_trivially_default_constructible_v<zeMatrix44d> &&
              std::is_copy_constructible_v<zeMatrix44d>);

// The float class multiplies only through the static matrixMultiply.
template <class M, class = void>
struct HasMemberMultiply : std::false_type {};
template <class M>
struct HasMemberMultiply<M, std::void_t<decltype(std::declval<M&>().multiply(std::declval<const M&>()))>>
    : std::true_type {};
static_assert(!HasMemberMultiply<zeMatrix44f>::value && HasMemberMultiply<zeMatrix44d>::value);

// The double class's four array transforms are not const members; the float
// class's are. (Both classes add const members that take a const source.)
template <class MemberFunction>
constexpr bool hasForm(MemberFunction) {
  return true;
}
static_assert(
    hasForm<void (zeMatrix44d::*)(zeVec3d*, zeVec3d*, unsigned int) noexcept>(&zeMatrix44d::transformPoints) &&
    hasForm<void (zeMatrix44d::*)(zeVec4d*, zeVec4d*, unsigned int) noexcept>(&zeMatrix44d::transformVectors));
static_assert(
    hasForm<void (zeMatrix44f::*)(zeVec3f*, zeVec3f*, unsigned int) const noexcept>(&zeMatrix44f::transformPoints));

}  // namespace

TEST(MatrixLayout, RowMajorElementsAndNamedConstants) {
  zeMatrix44f m(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  EXPECT_EQ(6.0f, m(1, 2));
  EXPECT_EQ(13.0f, m[13]);
  EXPECT_EQ(&m[0], m.data());
  m.makeIdentity();
  expectBits(zeMatrix44f::identityMatrix, m);
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(i % 5 == 0 ? 1.0 : 0.0, zeMatrix44d::identityMatrix[i]);
    EXPECT_EQ(0.0f, zeMatrix44f::zeroMatrix[i]);
  }
}

TEST(MatrixProduct, MatchesTheWrittenSumInEveryAliasing) {
  std::mt19937 rng(7);
  for (int round = 0; round < 50; ++round) {
    const zeMatrix44f a = randomMatrix<zeMatrix44f>(rng), b = randomMatrix<zeMatrix44f>(rng);
    const zeMatrix44f ab = referenceProduct(a, b);
    zeMatrix44f r;
    zeMatrix44f::matrixMultiply(&r, &a, &b);
    expectBits(ab, r);
    zeMatrix44f lhs = a;
    zeMatrix44f::matrixMultiply(&lhs, &lhs, &b);
    expectBits(ab, lhs);
    zeMatrix44f rhs = b;
    zeMatrix44f::matrixMultiply(&rhs, &a, &rhs);
    expectBits(ab, rhs);
    zeMatrix44f both = a;
    zeMatrix44f::matrixMultiply(&both, &both, &both);
    expectBits(referenceProduct(a, a), both);

    const zeMatrix44d c = randomMatrix<zeMatrix44d>(rng), d = randomMatrix<zeMatrix44d>(rng);
    zeMatrix44d cd;
    cd.multiply(c, d);
    expectBits(referenceProduct(c, d), cd);
    zeMatrix44d pre = d;
    pre.multiply(c);  // c applies first
    expectBits(referenceProduct(c, d), pre);
  }
}

namespace {

// a·b for values where the order of the sum shows: overflow that a later term
// cannot undo, a tie that rounds back to 1, signed zeros and NaNs. Summed in
// any other order, row 0 would give max and 1 + 2 * half.
template <class M>
void expectEdgeValueProduct(void (*product)(M&, const M&, const M&)) {
  using T = typename M::Scalar;
  const T max = std::numeric_limits<T>::max(), inf = std::numeric_limits<T>::infinity();
  const T half = std::numeric_limits<T>::epsilon() / 2, z = T(-0.0), nan = std::numeric_limits<T>::quiet_NaN();
  const M a(1, 1, 1, 0, inf, 0, 0, 0, z, z, z, z, 0, 0, 0, 0);
  const M b(max, 1, z, inf, max, half, z, -inf, -max, half, z, 1, 0, 0, z, 0);
  const M expected(inf, 1, z, nan, inf, inf, nan, nan, 0, z, 0, nan, 0, 0, z, nan);
  M r;
  product(r, a, b);
  for (int i = 0; i < 16; ++i) {
    if (std::isnan(expected[i]))
      EXPECT_TRUE(std::isnan(r[i])) << " element " << i;
    else
      EXPECT_BITEQ(expected[i], r[i]) << " element " << i;
  }
}

}  // namespace

TEST(MatrixProduct, EdgeValuesFollowTheWrittenOrder) {
  expectEdgeValueProduct<zeMatrix44f>(
      [](zeMatrix44f& r, const zeMatrix44f& a, const zeMatrix44f& b) { zeMatrix44f::matrixMultiply(&r, &a, &b); });
  expectEdgeValueProduct<zeMatrix44d>(
      [](zeMatrix44d& r, const zeMatrix44d& a, const zeMatrix44d& b) { r.multiply(a, b); });
}

TEST(MatrixProduct, PreMultiplyAppliesTheArgumentFirst) {
  const zeMatrix44d quarterTurnZ(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  const zeMatrix44d translate(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1);
  zeMatrix44d m = quarterTurnZ;
  m.multiply(translate);
  zeVec3d p;
  p.transformPoint(zeVec3d(1, 0, 0), m);  // moved to (6, 0, 0), then turned
  EXPECT_EQ(0.0, p.x);
  EXPECT_EQ(6.0, p.y);
}

TEST(MatrixCompare, StrictAbsoluteSinglePrecisionThreshold) {
  const float threshold = zetest::floatFromBits(0x350637BD);
  zeMatrix44f a = zeMatrix44f::zeroMatrix, b = a;
  for (int i = 0; i < 16; ++i) b[i] = 4e-7f;
  EXPECT_TRUE(a == b);
  b[9] = threshold;
  EXPECT_FALSE(a == b);  // exactly the threshold is unequal
  b[9] = std::nextafter(threshold, 0.0f);
  EXPECT_TRUE(a == b);
  b[0] = -0.0f;
  EXPECT_TRUE(a == b);
  a[15] = kNaNf;
  EXPECT_FALSE(a == a);

  // The double class compares against the widened float, not the double 5e-7.
  zeMatrix44d c = zeMatrix44d::identityMatrix, d = c;
  d[3] = 4.9999999937e-07;
  EXPECT_FALSE(c == d);
  d[3] = static_cast<double>(threshold) - 1e-22;
  EXPECT_TRUE(c == d);
  d[3] = 1e300;
  d[4] = kNaNd;
  EXPECT_FALSE(c == d);
}

TEST(MatrixTranspose, InPlaceIsCorrectTwoArgumentFormHasNoAliasGuard) {
  const zeMatrix44f m(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  zeMatrix44f t;
  t.transpose(m);
  expectBits(zeMatrix44f(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15), t);
  zeMatrix44f inPlace = m;
  inPlace.transpose();
  expectBits(t, inPlace);
  zeMatrix44f scrambled = m;
  scrambled.transpose(scrambled);  // later elements read values already overwritten
  expectBits(zeMatrix44f(0, 4, 8, 12, 4, 5, 9, 13, 8, 9, 10, 14, 12, 13, 14, 15), scrambled);
}

TEST(MatrixElementwise, AddSubtractDivideElementByElement) {
  const zeMatrix44d a(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  zeMatrix44d b = zeMatrix44d::identityMatrix;
  zeMatrix44d r;
  r.add(a, b);
  EXPECT_EQ(2.0, r[0]);
  EXPECT_EQ(2.0, r[1]);
  r.subtract(a, b);
  EXPECT_EQ(5.0, r[5]);
  EXPECT_EQ(7.0, r[6]);
  r.divide(a, b);  // element-wise: off-diagonal divisions by zero
  EXPECT_EQ(1.0, r[0]);
  EXPECT_TRUE(std::isinf(r[1]));
  r.divide(b, b);
  EXPECT_TRUE(std::isnan(r[1]));
  r.add(r, a);  // the result may be an argument
  EXPECT_EQ(2.0, r[0]);
}

TEST(MatrixArrays, PointTransformsDivideLikeTheSingleForm) {
  zeMatrix44f m = zeMatrix44f::identityMatrix;
  m(3, 0) = 2.5f;
  m(0, 3) = 0.25f;  // w = 0.25 x + 1
  zeVec3f points[5] = {{1, 2, 3}, {-4, 5, 6}, {-4.000001f, 1, 1}, {-3.9999995f, 0, 0}, {0.1f, 0.2f, 0.3f}};
  zeVec3f expected[5];
  for (int i = 0; i < 5; ++i) expected[i].transformPoint(points[i], m);
  m.transformPoints(points, points, 5);  // in place
  for (int i = 0; i < 5; ++i)
    for (int c = 0; c < 3; ++c) EXPECT_BITEQ(expected[i][c], points[i][c]);

  zeVec3f same[2] = {{1, 2, 3}, {kNaNf, 0, 0}};
  zeMatrix44f::identityMatrix.transformPoints(same, same, 2);
  EXPECT_BITEQ(3.0f, same[0].z);
  EXPECT_TRUE(std::isnan(same[1].x));
  m.transformPoints(static_cast<zeVec3f*>(nullptr), nullptr, 0);  // nothing to do
}

TEST(MatrixArrays, VectorAndFourComponentForms) {
  zeMatrix44d m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  zeVec4d v[2] = {{1, 0.5, 0.25, kNaNd}, {1, 0.5, 0.25, 2}};
  m.transformVectors(v, v, 1);
  EXPECT_EQ(zetest::bitsOf(kNaNd), zetest::bitsOf(v[0].w));
  EXPECT_EQ(1 + 2.5 + 2.25, v[0].x);
  m.transformPoints(v + 1, v + 1, 1);
  EXPECT_EQ(4 + 4 + 3 + 32.0, v[1].w);
  zeVec3d d[1] = {{1, 0.5, 0.25}};
  m.transformVectors(d, d, 1);
  EXPECT_EQ(3 + 3.5 + 2.75, d[0].z);
}

TEST(MatrixMaxElement, LargestMagnitudeNaNNeverWins) {
  zeMatrix44f m = zeMatrix44f::identityMatrix;
  m[7] = -7.0f;
  m[3] = kNaNf;
  EXPECT_EQ(7.0f, m.getMaxElement());
  EXPECT_EQ(0.0, zeMatrix44d::zeroMatrix.getMaxElement());
  m[0] = kNaNf;
  m[15] = -1e30f;
  EXPECT_EQ(1e30f, m.getMaxElement());
}

TEST(MatrixAssign, DoubleSelfAssignmentLeavesTheMatrixAlone) {
  zeMatrix44d m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, kNaNd);
  zeMatrix44d& alias = m;
  m = alias;
  EXPECT_EQ(14.0, m[13]);
  zeMatrix44d copy(m);
  zeMatrix44d other;
  other = copy;
  EXPECT_EQ(zetest::bitsOf(kNaNd), zetest::bitsOf(other[15]));
  zeMatrix44f::copyMatrix(zeMatrix44f::zeroMatrix.data(), zeMatrix44f::zeroMatrix.data());
  Lux::registerMultiplyAlignedFunction();
}
