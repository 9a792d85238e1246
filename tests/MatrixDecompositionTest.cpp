// Splitting matrices into translation, rotation, scale and shear, and
// composing them back, in both matrix classes.

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>

#include "core/zeResult.h"
#include "math/zeMathEnums.h"
#include "support/MatrixSupport.h"

using namespace Lux::Math;
using Lux::kFailure;
using Lux::kSuccess;

namespace {

enum : int {
  TX = ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X,
  RX = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X,
  RY = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y,
  RZ = ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z,
  SX = ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X
};

template <class M>
class Decomposition : public ::testing::Test {
 protected:
  using T = typename zetest::Twin<M>::T;
  using V3 = typename zetest::Twin<M>::V3;
  // Angles through asin/atan2 and a few roundings of values up to about 10.
  const double tol = std::is_same<T, float>::value ? 2e-4 : 1e-11;
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
    ASSERT_EQ(kSuccess, m.decomposeMatrixRadians(m, out));
    for (int i = 0; i < 3; ++i) EXPECT_BITEQ(in[i], out[i]);  // row 3 as set
    for (int i = 3; i < 12; ++i) EXPECT_NEAR(in[i], out[i], this->tol) << "round " << round << " part " << i;
  }
}

// makeScale((±2, 3, 4), (0.5, 0.25, -1)) has the rows (±2, 0, 0), (1.5, 3, 0),
// (1, -4, 4): every projection removed is exact. The shears are divided by the
// row lengths before a reflection negates the three scales, so they keep the
// signs of the raw projections.
TYPED_TEST(Decomposition, ScalesAndShearsOfAShearedScale) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  using M = TypeParam;
  const T expected[2][6] = {{2, 3, 4, T(0.5), T(0.25), -1}, {-2, -3, -4, T(-0.5), T(-0.25), -1}};
  M m;
  for (int k = 0; k < 2; ++k) {
    m.makeScale(V3(expected[k][0], 3, 4), V3(T(0.5), T(0.25), -1));
    T parts[12];
    ASSERT_EQ(kSuccess, m.decomposeMatrixRadians(m, parts));
    for (int i = 0; i < 6; ++i) EXPECT_BITEQ(expected[k][i], parts[SX + i]) << "case " << k << " part " << SX + i;
  }

  // getScale gives the raw projections; without make the rest of out is kept.
  m.makeScale(V3(2, 3, 4), V3(T(0.5), T(0.25), -1));
  M out = M::zeroMatrix;
  m.getScale(out, false);
  EXPECT_TRUE(out == M(2, 0, 0, 0, T(1.5), 3, 0, 0, 1, -4, 4, 0, 0, 0, 0, 0));
  m(3, 3) = 2;  // it works on the rows divided by m33
  m.getScale(out, true);
  EXPECT_TRUE(out == M(1, 0, 0, 0, T(0.75), T(1.5), 0, 0, T(0.5), -2, 2, 0, 0, 0, 0, 1));

  // diag(-1, 1, 1, 1): the frame turns to diag(1, -1, -1) with negated zeros,
  // so ROTATE_X = atan2(-0, -1) = -pi and ROTATE_Z = atan2(-0, 1) = -0.
  m.makeScale(V3(-1, 1, 1));
  T parts[12];
  ASSERT_EQ(kSuccess, m.decomposeMatrixRadians(m, parts));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(T(-1), parts[SX + i]);
  EXPECT_NEAR(-3.14159265358979, parts[RX], this->tol);
  EXPECT_BITEQ(T(0), parts[RY]);
  EXPECT_BITEQ(T(-0.0), parts[RZ]);
  m.getRotation(out, true);
  EXPECT_TRUE(out == zetest::diagonal<M>(1, -1, -1));
}

TYPED_TEST(Decomposition, ThreeOutcomes) {
  using T = typename TestFixture::T;
  T parts[12];
  for (T& p : parts) p = T(42);
  TypeParam m = TypeParam::identityMatrix;
  m(0, 3) = T(0.5);
  m(3, 3) = 0;
  EXPECT_EQ(0, m.decomposeMatrixRadians(m, parts));  // m33 = 0: neither kSuccess nor kFailure
  EXPECT_NE(kFailure, 0);
  EXPECT_EQ(T(0.5), m(0, 3));  // nor is column 3 reset

  TypeParam singular = TypeParam::zeroMatrix;
  singular(3, 3) = 1;
  singular(3, 0) = 5;
  EXPECT_EQ(kFailure, singular.decomposeMatrixRadians(singular, parts));
  for (int i = 0; i < 12; ++i) EXPECT_EQ(T(42), parts[i]) << " part " << i;  // neither writes parts
}

TYPED_TEST(Decomposition, GetRotationAndClampedAngles) {
  using T = typename TestFixture::T;
  using M = TypeParam;
  T in[12] = {1, -2, 3, T(0.3), T(-0.4), T(1.2), 2, T(0.5), T(1.5), 0, 0, 0};
  M m, rotation, out = M::zeroMatrix;
  m.composeMatrixRadians(m, in);
  rotation.makeRotationRadians(in[RX], in[RY], in[RZ]);
  m.getRotation(out, false);
  EXPECT_EQ(T(0), out(3, 3));  // without make the rest of out is kept
  m.getRotation(out, true);
  zetest::expectNear(rotation, out, this->tol);

  T x, y, z;
  m.getRotationRadians(x, y, z);  // the scaled rows are orthonormalised first
  EXPECT_NEAR(in[RX], x, this->tol);
  EXPECT_NEAR(in[RY], y, this->tol);
  EXPECT_NEAR(in[RZ], z, this->tol);
  m.makeRotationRadians(T(0), T(1.5707963267948966), T(0));  // -r0.z is exactly 1
  ASSERT_EQ(T(-1), m(0, 2));
  m.getRotationRadians(x, y, z);
  EXPECT_BITEQ(std::asin(T(1)), y);
  m(0, 0) = std::numeric_limits<T>::quiet_NaN();  // NaN clamps to asin(-1)
  m.getRotationRadians(x, y, z);
  EXPECT_BITEQ(std::asin(T(-1)), y);
}

// The float class resets column 3 of itself and reads rotation, scale and
// shear from its own rows as they stand; the double class does both on its
// copy of m divided by m33. Made alike, this would fail.
TEST(DecompositionTwins, FloatWorksOnItselfDoubleOnItsDividedCopy) {
  const auto decompose = [](auto self, auto& parts) {
    using M = decltype(self);
    using V3 = typename zetest::Twin<M>::V3;
    self(0, 3) = 0.5;
    M m;
    m.makeScale(V3(4, 4, 4));
    m.setTranslation(V3(2, 4, 6));
    m(1, 3) = 0.25;
    m(3, 3) = 2;
    const M before = m;
    EXPECT_EQ(kSuccess, self.decomposeMatrixRadians(m, parts));
    zetest::expectBits(before, m);
    EXPECT_EQ(1, parts[TX]);  // both take the translation from m divided by m33
    return self(0, 3);
  };
  float pf[12];
  double pd[12];
  EXPECT_EQ(0.0f, decompose(zeMatrix44f::identityMatrix, pf));
  EXPECT_EQ(1.0f, pf[SX]);  // this matrix's rows
  EXPECT_EQ(0.5, decompose(zeMatrix44d::identityMatrix, pd));
  EXPECT_EQ(2.0, pd[SX]);  // m's rows divided by m33
}

// Degrees become radians by the float nearest pi/180 in the float class and
// by the truncated decimal 0.0174532925199433 in the double class.
TEST(DecompositionTwins, DegreeFactors) {
  const auto viaRadians = [](auto m, const auto* degrees, auto factor) {
    decltype(factor) radians[12];
    for (int i = 0; i < 12; ++i) radians[i] = i >= RX && i <= RZ ? degrees[i] * factor : degrees[i];
    m.composeMatrixRadians(m, radians);
    return m;
  };
  float degreesF[12] = {1, 2, 3, 30, 45, 123, 1, 2, 3, 0.1f, 0.2f, 0.3f};
  zeMatrix44f f;
  f.composeMatrixDegrees(f, degreesF);
  zetest::expectBits(viaRadians(f, degreesF, 0.017453292f), f);
  EXPECT_EQ(123.0f, degreesF[RZ]);  // parts is not changed

  double degreesD[12] = {1, 2, 3, 30, 45, 123, 1, 2, 3, 0.1, 0.2, 0.3};
  zeMatrix44d d;
  d.composeMatrixDegrees(d, degreesD);
  zetest::expectBits(viaRadians(d, degreesD, 0.0174532925199433), d);
  const zeMatrix44d nearest = viaRadians(d, degreesD, 3.14159265358979323846 / 180.0);
  bool differs = false;
  for (int i = 0; i < 16; ++i) differs = differs || zetest::bitsOf(nearest[i]) != zetest::bitsOf(d[i]);
  EXPECT_TRUE(differs);
}

}  // namespace
