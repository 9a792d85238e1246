// Splitting matrices into translation, rotation, scale and shear, and
// composing them back, in both matrix classes.

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "core/zeResult.h"
#include "math/zeMathEnums.h"
#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "support/Bits.h"

using namespace Lux::Math;

namespace {

template <class M>
struct Twin;
template <>
struct Twin<zeMatrix44f> {
  using T = float;
  using V3 = zeVec3f;
};
template <>
struct Twin<zeMatrix44d> {
  using T = double;
  using V3 = zeVec3d;
};

enum : int {
  TX = ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X,
  RX = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X,
  RY = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y,
  RZ = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z,
  SX = ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X,
  HXY = ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XY
};

template <class M>
class Decomposition : public ::testing::Test {
 protected:
  using T = typename Twin<M>::T;
  using V3 = typename Twin<M>::V3;
  static constexpr bool kFloat = std::is_same<T, float>::value;
  // Angles through asin/atan2 and a few roundings of values up to about 10.
  const double tol = kFloat ? 2e-4 : 1e-11;

  /// Twelve parts filled with a value no routine writes.
  static void poison(T* parts) {
    for (int i = 0; i < 12; ++i) parts[i] = T(42);
  }
  static void expectUntouched(const T* parts) {
    for (int i = 0; i < 12; ++i) EXPECT_EQ(T(42), parts[i]) << " part " << i;
  }
};
using Matrices = ::testing::Types<zeMatrix44f, zeMatrix44d>;
TYPED_TEST_SUITE(Decomposition, Matrices);

TYPED_TEST(Decomposition, ComposeThenDecomposeRoundTrips) {
  using T = typename TestFixture::T;
  std::mt19937 random(20240611);
  std::uniform_real_distribution<double> translation(-10, 10), angleXZ(-3.1, 3.1), angleY(-1.5, 1.5), scale(0.2, 3),
      shear(-0.6, 0.6);
  for (int round = 0; round < 200; ++round) {
    T in[12] = {T(translation(random)), T(translation(random)), T(translation(random)), T(angleXZ(random)),
                T(angleY(random)),      T(angleXZ(random)),     T(scale(random)),       T(scale(random)),
                T(scale(random)),       T(shear(random)),       T(shear(random)),       T(shear(random))};
    T out[12];
    TypeParam m;
    m.composeMatrixRadians(m, in);
    ASSERT_EQ(Lux::kSuccess, m.decomposeMatrixRadians(m, out));
    for (int i = 0; i < 3; ++i) EXPECT_BITEQ(in[i], out[i]);  // row 3 as set
    for (int i = 3; i < 12; ++i) EXPECT_NEAR(in[i], out[i], this->tol) << "round " << round << " part " << i;
  }
}

// makeScale((2, 3, 4), (0.5, 0.25, -1)) has the rows (2, 0, 0), (1.5, 3, 0),
// (1, -4, 4): the projections removed are 1.5, 1 and -4, all exact.
TYPED_TEST(Decomposition, ScalesAndShearsOfAShearedScale) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m;
  m.makeScale(V3(T(2), T(3), T(4)), V3(T(0.5), T(0.25), T(-1)));
  TypeParam out = TypeParam::zeroMatrix;
  m.getScale(out, false);  // raw projections, the rest of out untouched
  const TypeParam raw(T(2), T(0), T(0), T(0), T(1.5), T(3), T(0), T(0), T(1), T(-4), T(4), T(0), T(0), T(0), T(0),
                      T(0));
  EXPECT_TRUE(raw == out);
  EXPECT_EQ(T(0), out(3, 3));
  m.getScale(out, true);
  EXPECT_EQ(T(1), out(3, 3));

  T parts[12];
  ASSERT_EQ(Lux::kSuccess, m.decomposeMatrixRadians(m, parts));
  const T scalesAndShears[6] = {T(2), T(3), T(4), T(0.5), T(0.25), T(-1)};
  for (int i = 0; i < 6; ++i) EXPECT_BITEQ(scalesAndShears[i], parts[SX + i]);

  // getScale works on the rows divided by m33.
  m(3, 3) = T(2);
  m.getScale(out, true);
  EXPECT_EQ(T(1), out(0, 0));
  EXPECT_EQ(T(0.75), out(1, 0));
  EXPECT_EQ(T(-2), out(2, 1));
}

// A reflection negates the three scales; the shears are divided by the row
// lengths before that, so they keep the signs of the raw projections.
TYPED_TEST(Decomposition, ReflectionNegatesScalesOnly) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m;
  m.makeScale(V3(T(-2), T(3), T(4)), V3(T(0.5), T(0.25), T(-1)));
  T parts[12];
  ASSERT_EQ(Lux::kSuccess, m.decomposeMatrixRadians(m, parts));
  const T scalesAndShears[6] = {T(-2), T(-3), T(-4), T(-0.5), T(-0.25), T(-1)};
  for (int i = 0; i < 6; ++i) EXPECT_BITEQ(scalesAndShears[i], parts[SX + i]);

  // diag(-1, 1, 1, 1): the frame turns to diag(1, -1, -1) with negated zeros,
  // so ROTATE_X = atan2(-0, -1) = -pi and ROTATE_Z = atan2(-0, 1) = -0.
  m.makeScale(V3(T(-1), T(1), T(1)));
  ASSERT_EQ(Lux::kSuccess, m.decomposeMatrixRadians(m, parts));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(T(-1), parts[SX + i]);
  EXPECT_NEAR(-3.14159265358979, parts[RX], this->tol);
  EXPECT_BITEQ(T(0), parts[RY]);
  EXPECT_BITEQ(T(-0.0), parts[RZ]);
  TypeParam rotation = TypeParam::zeroMatrix;
  m.getRotation(rotation, true);
  EXPECT_TRUE(rotation == TypeParam(T(1), T(0), T(0), T(0), T(0), T(-1), T(0), T(0), T(0), T(0), T(-1), T(0), T(0),
                                    T(0), T(0), T(1)));
}

TYPED_TEST(Decomposition, ThreeOutcomes) {
  using T = typename TestFixture::T;
  T parts[12];
  this->poison(parts);
  TypeParam m = TypeParam::identityMatrix;
  m(0, 3) = T(0.5);
  m(3, 3) = T(0);
  const TypeParam before = m;
  EXPECT_EQ(0, m.decomposeMatrixRadians(m, parts));  // neither kSuccess nor kFailure
  EXPECT_NE(Lux::kFailure, 0);
  this->expectUntouched(parts);
  EXPECT_EQ(T(0.5), m(0, 3));
  EXPECT_TRUE(before(3, 3) == m(3, 3));

  TypeParam singular = TypeParam::zeroMatrix;
  singular(3, 3) = T(1);
  singular(3, 0) = T(5);
  EXPECT_EQ(Lux::kFailure, singular.decomposeMatrixRadians(singular, parts));
  this->expectUntouched(parts);
}

TYPED_TEST(Decomposition, GetPartsHonourTheMakeFlag) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  T in[12] = {T(1), T(-2), T(3), T(0.3), T(-0.4), T(1.2), T(2), T(0.5), T(1.5), T(0), T(0), T(0)};
  TypeParam m;
  m.composeMatrixRadians(m, in);
  TypeParam expectedRotation;
  expectedRotation.makeRotationRadians(in[RX], in[RY], in[RZ]);

  TypeParam out = TypeParam::zeroMatrix;
  out(3, 3) = T(7);
  m.getRotation(out, false);
  EXPECT_EQ(T(7), out(3, 3));
  out(3, 3) = T(1);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(expectedRotation[i], out[i], this->tol);
  out = TypeParam::zeroMatrix;
  m.getRotation(out, true);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(expectedRotation[i], out[i], this->tol);

  out = TypeParam::zeroMatrix;
  m.getTranslation(out, false);
  EXPECT_TRUE(out == TypeParam(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, T(1), T(-2), T(3), 0));
  m.getTranslation(out, true);
  TypeParam expected;
  expected.makeTranslation(V3(T(1), T(-2), T(3)));
  EXPECT_TRUE(expected == out);

  T x, y, z;
  expectedRotation.getRotationRadians(x, y, z);
  EXPECT_NEAR(in[RX], x, this->tol);
  EXPECT_NEAR(in[RY], y, this->tol);
  EXPECT_NEAR(in[RZ], z, this->tol);
}

TYPED_TEST(Decomposition, EulerAnglesClampOutsideTheOpenInterval) {
  using T = typename TestFixture::T;
  const T halfPi = T(1.5707963267948966);
  TypeParam m;
  T x, y, z;
  m.makeRotationRadians(T(0.1), T(0.2), T(0.3));
  m.getRotationRadians(x, y, z);
  EXPECT_NEAR(0.1, x, this->tol);
  EXPECT_NEAR(0.2, y, this->tol);
  EXPECT_NEAR(0.3, z, this->tol);

  m.makeRotationRadians(T(0), halfPi, T(0));  // -r0.z is exactly 1
  ASSERT_EQ(T(-1), m(0, 2));
  m.getRotationRadians(x, y, z);
  EXPECT_NEAR(halfPi, y, this->tol);

  m(0, 0) = std::numeric_limits<T>::quiet_NaN();  // NaN clamps to asin(-1)
  m.getRotationRadians(x, y, z);
  EXPECT_NEAR(-halfPi, y, this->tol);
}

// The float class resets column 3 of itself and reads rows, scale and shear
// from itself as they stand; the double class does both on its copy of m,
// divided by m33. Made alike, one of these would fail.
TEST(DecompositionTwins, FloatWorksOnItselfDoubleOnItsCopy) {
  zeMatrix44f f = zeMatrix44f::identityMatrix, otherF;
  f(0, 3) = 0.5f;
  otherF.makeScale(zeVec3f(2.0f, 2.0f, 2.0f));
  otherF.setTranslation(zeVec3f(1.0f, 2.0f, 3.0f));
  otherF(1, 3) = 0.25f;
  const zeMatrix44f otherFBefore = otherF;
  float pf[12];
  ASSERT_EQ(Lux::kSuccess, f.decomposeMatrixRadians(otherF, pf));
  EXPECT_EQ(0.0f, f(0, 3));
  EXPECT_EQ(1.0f, pf[SX]);      // this matrix's rows
  EXPECT_EQ(3.0f, pf[TX + 2]);  // m's translation
  EXPECT_EQ(0.25f, otherF(1, 3));
  EXPECT_TRUE(otherFBefore == otherF);

  zeMatrix44d d = zeMatrix44d::identityMatrix, otherD;
  d(0, 3) = 0.5;
  otherD.makeScale(zeVec3d(2.0, 2.0, 2.0));
  otherD.setTranslation(zeVec3d(1.0, 2.0, 3.0));
  otherD(1, 3) = 0.25;
  double pd[12];
  ASSERT_EQ(Lux::kSuccess, d.decomposeMatrixRadians(otherD, pd));
  EXPECT_EQ(0.5, d(0, 3));
  EXPECT_EQ(2.0, pd[SX]);
  EXPECT_EQ(3.0, pd[TX + 2]);
  EXPECT_EQ(0.25, otherD(1, 3));
}

TEST(DecompositionTwins, DivisionByM33ReachesTheDoubleRowsOnly) {
  zeMatrix44f f;
  f.makeScale(zeVec3f(4.0f, 4.0f, 4.0f));
  f.setTranslation(zeVec3f(2.0f, 4.0f, 6.0f));
  f(3, 3) = 2.0f;
  float pf[12];
  ASSERT_EQ(Lux::kSuccess, f.decomposeMatrixRadians(f, pf));
  EXPECT_EQ(1.0f, pf[TX]);
  EXPECT_EQ(4.0f, pf[SX]);   // undivided rows
  EXPECT_EQ(1.0f, f(3, 3));  // its own column 3 reset

  zeMatrix44d d;
  d.makeScale(zeVec3d(4.0, 4.0, 4.0));
  d.setTranslation(zeVec3d(2.0, 4.0, 6.0));
  d(3, 3) = 2.0;
  double pd[12];
  ASSERT_EQ(Lux::kSuccess, d.decomposeMatrixRadians(d, pd));
  EXPECT_EQ(1.0, pd[TX]);
  EXPECT_EQ(2.0, pd[SX]);
  EXPECT_EQ(2.0, d(3, 3));
}

// Degrees become radians by the float nearest pi/180 in the float class and
// by the truncated decimal 0.0174532925199433 in the double class.
TEST(DecompositionTwins, DegreeFactors) {
  float degreesF[12] = {1, 2, 3, 30, 45, 123, 1, 2, 3, 0.1f, 0.2f, 0.3f};
  float radiansF[12];
  for (int i = 0; i < 12; ++i) radiansF[i] = i >= RX && i <= RZ ? degreesF[i] * 0.017453292f : degreesF[i];
  zeMatrix44f f, expectedF;
  f.composeMatrixDegrees(f, degreesF);
  expectedF.composeMatrixRadians(expectedF, radiansF);
  for (int i = 0; i < 16; ++i) EXPECT_BITEQ(expectedF[i], f[i]);
  EXPECT_EQ(123.0f, degreesF[RZ]);  // parts is not changed

  double degreesD[12] = {1, 2, 3, 30, 45, 123, 1, 2, 3, 0.1, 0.2, 0.3};
  double radiansD[12], nearestD[12];
  for (int i = 0; i < 12; ++i) {
    const bool angle = i >= RX && i <= RZ;
    radiansD[i] = angle ? degreesD[i] * 0.0174532925199433 : degreesD[i];
    nearestD[i] = angle ? degreesD[i] * (3.14159265358979323846 / 180.0) : degreesD[i];
  }
  zeMatrix44d d, expectedD, nearest;
  d.composeMatrixDegrees(d, degreesD);
  expectedD.composeMatrixRadians(expectedD, radiansD);
  nearest.composeMatrixRadians(nearest, nearestD);
  bool differs = false;
  for (int i = 0; i < 16; ++i) {
    EXPECT_BITEQ(expectedD[i], d[i]);
    differs = differs || zetest::bitsOf(nearest[i]) != zetest::bitsOf(d[i]);
  }
  EXPECT_TRUE(differs);

  // 90 degrees about x is the float quarter turn up to rounding.
  float quarterDegrees[12] = {0, 0, 0, 90, 0, 0, 1, 1, 1, 0, 0, 0};
  float quarterRadians[12] = {0, 0, 0, 1.5707963f, 0, 0, 1, 1, 1, 0, 0, 0};
  f.composeMatrixDegrees(f, quarterDegrees);
  expectedF.composeMatrixRadians(expectedF, quarterRadians);
  EXPECT_TRUE(expectedF == f);
}

}  // namespace
