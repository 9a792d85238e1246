// Quaternion algebra, the conversions to and from matrices and Euler angles,
// and the blends, with the places where the float and double twins differ.

#include <cmath>
#include <initializer_list>
#include <type_traits>

#include <gtest/gtest.h>

#include "math/ZEMath.h"
#include "support/Bits.h"
#include "support/MatrixSupport.h"

using namespace Lux::Math;
using zetest::diagonal;
using zetest::kNaNd;
using zetest::kNaNf;

static_assert(std::is_standard_layout_v<zeQuaternionf> && std::is_standard_layout_v<zeQuaterniond>);
static_assert(std::is_trivially_default_constructible_v<zeQuaternionf> && std::is_trivially_copyable_v<zeQuaterniond>);
static_assert(sizeof(zeQuaternionf) == 4 * sizeof(float) && sizeof(zeQuaterniond) == 4 * sizeof(double));

namespace {

template <class Q>
void expectQuat(const Q& q, double x, double y, double z, double w, double tolerance = 0.0) {
  const double expected[4] = {x, y, z, w};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(expected[i], q[i], tolerance) << " component " << i;
}

/// Expects m0, m1, m4, m5 of m: the x-y corner of the rotation block.
template <class M>
void expectCorner(const M& m, double m0, double m1, double m4, double m5) {
  expectQuat(Lux::Math::zeQuaterniond(m[0], m[1], m[4], m[5]), m0, m1, m4, m5);
}

template <class M>
M filled(typename M::Scalar v) {
  return M(v, v, v, v, v, v, v, v, v, v, v, v, v, v, v, v);
}

}  // namespace

TEST(QuaternionAlgebra, FloatMultiplyIsHamiltonDoubleKeepsItsOwnSigns) {
  // Small integers keep every product exact; the result may be an operand.
  zeQuaternionf f(1, 2, 3, 4);
  f.multiply(f, zeQuaternionf(5, 6, 7, 8));
  expectQuat(f, 24, 48, 48, -6);
  zeQuaterniond d(1, 2, 3, 4);
  d.multiply(d, zeQuaterniond(5, 6, 7, 8));
  expectQuat(d, 24, -30, 18, -6);

  f.invert(zeQuaternionf(1, 2, 3, 4));        // one reciprocal of the norm, multiplied in
  EXPECT_BITEQ(-3.0f * (1.0f / 30.0f), f.z);  // 3 / 30 rounds differently
  EXPECT_BITEQ(4.0f * (1.0f / 30.0f), f.w);
  d.invert(zeQuaterniond(0, 0, 0, 0));
  EXPECT_FALSE(std::isfinite(d.x) || std::isfinite(d.w));
}

TEST(QuaternionMatrix, WritersAndTheTwinsScaleAndBorder) {
  zeMatrix44f f = filled<zeMatrix44f>(9);
  zeQuaternionf(0, 0, 0, 2).getMatrix(f);
  EXPECT_TRUE(f == zeMatrix44f::identityMatrix);  // translation cleared too
  zeQuaternionf(0, 0, 1, 1).getMatrix(f);
  expectCorner(f, -1, -2, 2, -1);
  zeMatrix44d d = filled<zeMatrix44d>(9);
  zeQuaterniond(0, 0, 0, 0).getMatrix(d);
  EXPECT_TRUE(d == zeMatrix44d::identityMatrix);  // the zero quaternion scales by 0
  zeQuaterniond(0, 0, 1, 1).getMatrix(d);
  expectCorner(d, 0, -1, 1, 0);  // a quarter turn about z

  // The block writers leave the rest of the matrix alone.
  f = filled<zeMatrix44f>(9);
  zeQuaternionf(0, 0, 2, 0).getRotationMatrix(f);
  expectCorner(f, -7, 0, 0, -7);  // not normalised
  EXPECT_EQ(f[12], 9.0f);
  f.setQuaternion(zeQuaternionf(0, 0, 2, 0));  // normalised first: a half turn
  expectCorner(f, -1, 0, 0, -1);
  EXPECT_EQ(f[15], 9.0f);
  f.setQuaternion(zeQuaternionf(0, 0, 0, 0));
  EXPECT_TRUE(std::isnan(f[0]));

  // The float matrix copies the named vectors as they are at the call; the
  // double matrix writes literal values.
  const zeVec4f savedF = zeVec4f::TVector;
  const zeVec4d savedD = zeVec4d::TVector;
  zeVec4f::TVector = zeVec4f(1, 2, 3, 4);
  zeVec4d::TVector = zeVec4d(1, 2, 3, 4);
  f.makeQuaternion(zeQuaternionf(0, 0, 0, 3));
  d = filled<zeMatrix44d>(9);
  d.makeQuaternion(zeQuaterniond(0, 0, 0, 3));
  zeVec4f::TVector = savedF;
  zeVec4d::TVector = savedD;
  EXPECT_TRUE(f == zeMatrix44f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 4));
  EXPECT_TRUE(d == zeMatrix44d::identityMatrix);
}

TEST(QuaternionMatrix, SetMatrixBranchesAndTies) {
  zeQuaternionf q;
  q.setMatrix(diagonal<zeMatrix44f>(1, -0.5f, -0.5f, 1));  // trace exactly 0 stays on the trace
  expectQuat(q, 0, 0, 0, 0.5);
  q.setMatrix(diagonal<zeMatrix44f>(-1, -1, 1, 0));  // m15 enters where the trace adds 1
  EXPECT_BITEQ(0.5f * std::sqrt(3.0f), q.z);
  q.setMatrix(diagonal<zeMatrix44f>(-0.25f, -0.25f, -1, 1));  // m5 = m0: m0 wins
  EXPECT_BITEQ(0.5f * std::sqrt(2.0f), q.x);
  q.setMatrix(diagonal<zeMatrix44f>(-1, -0.25f, -0.25f, 1));  // m10 = m5: m5 wins
  EXPECT_BITEQ(0.5f * std::sqrt(2.0f), q.y);
  zeQuaterniond d;
  d.setMatrix(diagonal<zeMatrix44d>(-1, -1, -1, -5));
  EXPECT_TRUE(std::isnan(d.x) && std::isnan(d.w));

  // Round trips of unit quaternions, with w, x, y and z the largest component
  // in turn; each branch gives that component positive.
  zeMatrix44d m;
  for (const zeQuaterniond& u : {zeQuaterniond(0.4, -0.2, 0.4, 0.8), zeQuaterniond(0.8, 0.4, -0.2, 0.4),
                                 zeQuaterniond(-0.2, 0.8, 0.4, 0.4), zeQuaterniond(0.4, -0.2, 0.8, 0.4)}) {
    u.getMatrix(m);
    d.setMatrix(m);
    expectQuat(d, u.x, u.y, u.z, u.w, 1e-14);
  }
}

TEST(QuaternionEuler, FloatBuildsRxRyRzDoubleFlipsTwoSigns) {
  const float rx = 0.3f, ry = -0.5f, rz = 0.7f;
  zeQuaternionf f;
  f.setRotationRadians(rx, ry, rz);
  zeMatrix44f m, euler;
  f.getMatrix(m);
  euler.makeRotationRadians(rx, ry, rz);
  zetest::expectNear(euler, m, 1e-6);

  zeQuaterniond d;
  d.setRotationRadians(rx, ry, rz);
  const double hx = std::sin(-rx / 2.0), hy = std::sin(-ry / 2.0), hz = std::sin(-rz / 2.0);
  const double gx = std::cos(-rx / 2.0), gy = std::cos(-ry / 2.0), gz = std::cos(-rz / 2.0);
  expectQuat(d, hx * gy * gz - gx * hy * hz, gx * hy * gz + hx * gy * hz, gx * gy * hz + hx * hy * gz,
             gx * gy * gz - hx * hy * hz, 1e-15);
  EXPECT_GT(std::fabs(d.x - f.x), 0.1);

  f.setRotationRadians(0.4f, 0, 0);  // about one axis the twins agree
  d.setRotationRadians(0.4f, 0, 0);
  expectQuat(f, d.x, d.y, d.z, d.w, 1e-7);
}

// The pole branch is out of reach of real input (cos(asin(v)) is never exactly
// 0 for |v| < 1), so the test calls it through a probe.
template <class Q>
struct PoleProbe : Q {
  using Q::getPoleRotationRadians;
};

TEST(QuaternionEuler, GetRotationRadiansClampsAndTheTwinsDifferAtThePole) {
  float rx = 1, ry = 1, rz = 1;
  zeQuaternionf q;
  q.setRotationRadians(0.3f, -0.5f, 0.7f);
  q.getRotationRadians(rx, ry, rz);
  EXPECT_NEAR(rx, 0.3f, 2e-6);
  EXPECT_NEAR(ry, -0.5f, 2e-6);
  EXPECT_NEAR(rz, 0.7f, 2e-6);
  // -m2 rounds to just above 1: the pitch is pinned, not asin of it (NaN).
  zeQuaternionf(0, -3, 0, 3).getRotationRadians(rx, ry, rz);
  EXPECT_BITEQ(std::asin(1.0f), ry);
  double dx = 1, dy = 1, dz = 1;
  zeQuaterniond(kNaNd, 0, 0, 1).getRotationRadians(dx, dy, dz);
  EXPECT_BITEQ(std::asin(-1.0), dy);
  EXPECT_TRUE(std::isnan(dx) && std::isnan(dz));

  // At a pole the float twin writes the roll into ry and leaves rx alone.
  rx = ry = rz = 5;
  PoleProbe<zeQuaternionf>::getPoleRotationRadians(diagonal<zeMatrix44f>(0, 1, 0, 1), rx, ry, rz);
  expectQuat(zeQuaternionf(rx, ry, rz, 0), 5, 0, 0, 0);
  dx = dy = dz = 5;
  PoleProbe<zeQuaterniond>::getPoleRotationRadians(diagonal<zeMatrix44d>(0, 1, 0, 1), dx, dy, dz);
  expectQuat(zeQuaterniond(dx, dy, dz, 0), 0, 5, 0, 0);
}

TEST(QuaternionBlend, LerpAndFastInterpolation) {
  const zeQuaternionf a(0.5f, -0.5f, 0.5f, 0.5f), minusA(-0.5f, 0.5f, -0.5f, -0.5f);
  zeQuaternionf q;
  q.lerp(0.3f, a, minusA);  // the far end is flipped onto a
  EXPECT_BITEQ(0.5f * (1.0f - 0.3f) + 0.5f * 0.3f, q.x);
  q.lerp(0.5f, zeQuaternionf(0, 0, 0, 1), zeQuaternionf(1, 0, 0, 0));
  expectQuat(q, 0.5, 0, 0, 0.5);  // not normalised
  zeQuaternionf end = minusA;
  q.fastInterpolation(0.5f, a, end);
  expectQuat(q, 0, 0, 0, 0);  // no flip
  // A NaN dot product takes the quarter-turn form.
  q.lerp(0.5f, zeQuaternionf(kNaNf, 0, 0, 1), zeQuaternionf(0, 0, 0, 1));
  EXPECT_BITEQ(std::sin(0.5f * 1.5707964f), q.w);
  EXPECT_BITEQ(-std::sin(0.5f * 1.5707964f), q.z);
}

TEST(QuaternionBlend, FloatSlerpIsAFittedPolynomialDoubleIsTrigonometry) {
  const zeQuaternionf one(0, 0, 0, 1), k(0, 0, 1, 0);
  const zeQuaterniond oneD(0, 0, 0, 1), kD(0, 0, 1, 0);
  zeQuaternionf f;
  zeQuaterniond d;
  f.slerp(0, one, k);
  expectQuat(f, 0, 0, -0.00136594765f, 0.99863404f);  // the weights at d = 0, t = 0
  d.slerp(0.25, oneD, kD);
  expectQuat(d, 0, 0, std::sin(std::acos(-1.0) / 8), std::cos(std::acos(-1.0) / 8), 1e-15);
  // Opposite ends: the float twin turns a quarter away, the double blends linearly.
  f.slerp(0.5f, one, zeQuaternionf(0, 0, 0, -1));
  expectQuat(f, 0, 0, -std::sin(0.5f * 1.5707964f), std::sin(0.5f * 1.5707964f));
  d.slerp(0.5, oneD, zeQuaterniond(0, 0, 0, -1));
  expectQuat(d, 0, 0, 0, 1);
  // A NaN dot product: linear in float, the quarter-turn form in double.
  f.slerp(0.5f, zeQuaternionf(kNaNf, 0, 0, 1), one);
  EXPECT_EQ(f.w, 1.0f);
  d.slerp(0.5, zeQuaterniond(kNaNd, 0, 0, 1), oneD);
  EXPECT_BITEQ(std::sin(0.5 * 1.5707963267948966), d.w);
  // Close ends (1 - d not above 0.08) blend linearly.
  f.slerp(0.5f, one, zeQuaternionf(0, 0, 0.28f, 0.96f));
  EXPECT_BITEQ(1.0f * 0.5f + 0.96f * 0.5f, f.w);

  // The polynomial tracks the double's spherical blend.
  const zeQuaternionf a(0.5f, 0.5f, 0.5f, 0.5f), b(0.1f, -0.7f, 0.1f, 0.7f);
  for (float t = 0; t <= 1.0f; t += 0.125f) {
    f.slerp(t, a, b);
    d.slerp(t, zeQuaterniond(a.x, a.y, a.z, a.w), zeQuaterniond(b.x, b.y, b.z, b.w));
    expectQuat(f, d.x, d.y, d.z, d.w, 2e-3);
  }
}
