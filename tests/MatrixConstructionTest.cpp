// Translation, scale, rotation and viewing transforms of both matrix classes.

#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/MatrixSupport.h"

using namespace Lux::Math;
using zetest::expectBits;
using zetest::expectNear;

namespace {

/// Sixteen distinct, inexact, non-zero elements.
template <class M>
M busy() {
  M m;
  for (int i = 0; i < 16; ++i) m[i] = typename M::Scalar(0.1) * (i + 1) - typename M::Scalar(0.7) * (i % 3);
  return m;
}

template <class M>
class Construction : public ::testing::Test {
 protected:
  using T = typename zetest::Twin<M>::T;
  using V3 = typename zetest::Twin<M>::V3;
  // Rounding of a handful of sine/cosine-based operations on values near 1.
  const double tol = std::is_same<T, float>::value ? 4e-7 : 1e-15;
};
using Matrices = ::testing::Types<zeMatrix44f, zeMatrix44d>;
TYPED_TEST_SUITE(Construction, Matrices);

TYPED_TEST(Construction, SetFormsWriteOnlyTheirElementsMakeFormsStartFromTheIdentity) {
  using T = typename TestFixture::T;
  using M = TypeParam;
  const typename TestFixture::V3 t(T(0.1), T(-2.5), T(7)), s(T(2), T(0.3), T(-5)), h(T(0.7), T(-0.1), T(1.3));
  const auto written = [&](M e) {  // translation, then scale and the shears xy, xz, yz
    e(3, 0) = t.x, e(3, 1) = t.y, e(3, 2) = t.z;
    e(0, 0) = s.x, e(1, 0) = h.x * s.y, e(1, 1) = s.y;
    e(2, 0) = h.y * s.z, e(2, 1) = h.z * s.z, e(2, 2) = s.z;
    return e;
  };
  M m = busy<M>();
  m.setTranslation(t);
  m.setScale(s, h);
  expectBits(written(busy<M>()), m);
  m.makeScale(s, h);
  m.setTranslation(t);
  expectBits(written(M::identityMatrix), m);
  m.makeScale(T(3));  // m33 stays 1
  expectBits(zetest::diagonal<M>(3, 3, 3), m);
}

// pre... is X·this (X applies first), post... is this·X, each rounded exactly
// like the written product; X is made on a busy matrix.
TYPED_TEST(Construction, PreAndPostFormsAreTheProducts) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const V3 t(T(0.3), T(-1.7), T(2.9)), s(T(2), T(-0.3), T(1.1)), axis(T(0.6), T(0), T(0.8));
  const TypeParam m = busy<TypeParam>();
  TypeParam x[3] = {m, m, m}, pre[3] = {m, m, m}, post[3] = {m, m, m};
  x[0].makeTranslation(t);
  pre[0].preTranslation(t);
  post[0].postTranslation(t);
  x[1].makeScale(s);
  pre[1].preScale(s);
  post[1].postScale(s);
  x[2].makeRotationRadians(T(0.7), axis);
  pre[2].preRotationRadians(T(0.7), axis);
  post[2].postRotationRadians(T(0.7), axis);
  for (int i = 0; i < 3; ++i) {
    expectBits(zetest::referenceProduct(x[i], m), pre[i]);
    expectBits(zetest::referenceProduct(m, x[i]), post[i]);
  }
}

TYPED_TEST(Construction, AxisAngleThresholdZeroAxisAndFormula) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m = busy<TypeParam>(), expected = m;
  m.setRotationRadians(T(1e-7), V3(3, -4, 5));
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) expected(r, c) = r == c ? T(1) : T(0);
  expectBits(expected, m);  // below the threshold: identity 3x3, the rest untouched

  // The threshold is the widened single-precision 5e-7, compared strictly: an
  // angle just below the double nearest 5e-7 but at or above the float still turns.
  m.setRotationRadians(std::is_same<T, float>::value ? T(5e-7f) : T(4.999999999e-7), V3(0, 0, 1));
  EXPECT_NE(m(0, 1), T(0));

  // A zero axis leaves cos on the diagonal and +0 elsewhere.
  m.setRotationRadians(T(1e-6), V3(0, 0, 0));
  EXPECT_NEAR(std::cos(T(1e-6)), m(2, 2), this->tol);
  EXPECT_BITEQ(T(0), m(0, 1));
  EXPECT_BITEQ(T(0), m(2, 1));

  const T angle = T(0.9), x = T(0.3), y = T(-0.5), z = T(0.8);  // the axis is used as given
  m.makeRotationRadians(angle, V3(x, y, z));
  const T s = std::sin(angle), c = std::cos(angle), t = T(1) - c;
  const T e[9] = {x * (t * x) + c,     y * (t * x) + z * s, (t * x) * z - y * s, x * (t * y) - z * s, y * (t * y) + c,
                  (t * y) * z + x * s, x * (t * z) + y * s, y * (t * z) - x * s, (t * z) * z + c};
  expected = TypeParam::identityMatrix;
  for (int i = 0; i < 9; ++i) expected(i / 3, i % 3) = e[i];
  expectNear(expected, m, this->tol);
  m.makeRotationRadians(angle, V3(0, 0, 1));  // right-handed: row 0, the image of x, leans to +y
  EXPECT_NEAR(s, m(0, 1), this->tol);
}

TYPED_TEST(Construction, EulerIsRxRyRzWithAnExactZeroShortcut) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m, product;
  m.makeRotationRadians(T(0.4), T(-1.1), T(2.3));
  product.makeRotationRadians(T(0.4), V3(1, 0, 0));
  product.postRotationRadians(T(-1.1), V3(0, 1, 0));
  product.postRotationRadians(T(2.3), V3(0, 0, 1));
  expectNear(product, m, 4 * this->tol);

  // Zero angles take no sine: sin 0 = +0, even for -0, so m02 = -sin y is -0.
  m = busy<TypeParam>();
  product = m;
  m.setRotationRadians(T(0), T(-0.0), T(0));
  for (int i = 0; i < 9; ++i) product(i / 3, i % 3) = i % 4 == 0 ? T(1) : (i == 2 ? T(-0.0) : T(0));
  expectBits(product, m);
}

TYPED_TEST(Construction, LookAt) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m;
  m.makeLookAt(V3(0, 0, 5), V3(0, 0, 0), V3(0, 1, 0));
  // Row 3 is the negated products with eye: -(0) is -0.
  expectBits(TypeParam(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, T(-0.0), T(-0.0), -5, 1), m);

  // A general camera, step by step: unit f, u and s, v = f x s.
  const V3 eye(1, 2, 3), center(4, -1, T(2.5)), up(T(0.2), 1, T(0.1));
  const auto unit = [](const V3& v) {
    const T len = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return V3(v.x / len, v.y / len, v.z / len);
  };
  const V3 f = unit(eye - center);
  V3 s, v;
  s.cross(unit(up), f);
  s = unit(s);
  v.cross(f, s);
  m.makeLookAt(eye, center, up);
  const TypeParam general(s.x, v.x, f.x, 0, s.y, v.y, f.y, 0, s.z, v.z, f.z, 0, -s.dot(eye), -v.dot(eye), -f.dot(eye),
                          1);
  expectBits(general, m);
  m.makeLookAtDirection(eye, V3(3, -3, T(-0.5)), up);  // direction = center - eye, exactly
  expectBits(general, m);

  // eye = center: f stays zero, so does s; no fallback.
  m.makeLookAt(V3(1, 1, 1), V3(1, 1, 1), V3(0, 1, 0));
  for (int r = 0; r < 3; ++r) EXPECT_TRUE(m(r, 0) == T(0) && m(r, 2) == T(0)) << r;
  EXPECT_EQ(T(1), m(3, 3));
  // An infinite or NaN eye carries NaN into m33.
  m.makeLookAt(V3(std::numeric_limits<T>::infinity(), 0, 0), V3(0, 0, 0), V3(0, 1, 0));
  EXPECT_TRUE(std::isnan(m(3, 3)));
  m.makeLookAtDirection(V3(0, std::numeric_limits<T>::quiet_NaN(), 0), V3(0, 0, -1), V3(0, 1, 0));
  EXPECT_TRUE(std::isnan(m(3, 3)));

  // The twins guard with the smallest normal value of their own type: |f|² =
  // 1e-40 is below it in float (f is kept as is) and above it in double.
  m.makeLookAt(V3(T(1e-20), 0, 0), V3(0, 0, 0), V3(0, 1, 0));
  EXPECT_BITEQ((std::is_same<T, float>::value ? T(1e-20) : T(1)), m(0, 2));
}

TEST(RotationFromTo, InclusiveIdentityBandAndHalfTurns) {
  zeMatrix44f m = zeMatrix44f::zeroMatrix, expected;
  m.makeRotation(zeVec3f(0.6f, 0.8f, 0), zeVec3f(0.6f, 0.8f, 0));
  expectBits(zeMatrix44f::identityMatrix, m);
  m.makeRotation(zeVec3f(1, 0, 0), zeVec3f(1.000001f, 0, 0));
  expectBits(zeMatrix44f::identityMatrix, m);
  // Just outside the band the general branch runs on parallel vectors: n is 0, normalised to NaN.
  m.makeRotation(zeVec3f(1, 0, 0), zeVec3f(std::nextafter(1.000001f, 2.0f), 0, 0));
  EXPECT_TRUE(std::isnan(m(0, 0)));

  // Opposite: to x (1, 0, 0) vanishes here, so the axis is to x (0, 1, 0) = (0, 0, -1).
  m.makeRotation(zeVec3f(1, 0, 0), zeVec3f(-1, 0, 0));
  expected.makeRotationRadians(3.1415927f, zeVec3f(0, 0, -1));
  expectBits(expected, m);
  // Otherwise the axis is to x (1, 0, 0), normalised: here (-0, 0, 1), whose -0 reaches m20.
  m.makeRotation(zeVec3f(0, 1, 0), zeVec3f(0, -1, 0));
  expected.makeRotationRadians(3.1415927f, zeVec3f(-0.0f, 0, 1));
  EXPECT_BITEQ(-0.0f, m(2, 0));
  expectBits(expected, m);
}

TEST(RotationFromTo, GeneralCase) {
  // from = (2, 0, 0), to = (0, 1, 0): n = (0, 0, 1), b = (0, 2, 0),
  // (p, q, r) = (0, 2, 0); Bt G B = [[0, 8, 0], [-8, 0, 0], [0, 0, 1]] exactly.
  zeMatrix44f m;
  m.makeRotation(zeVec3f(2, 0, 0), zeVec3f(0, 1, 0));
  expectBits(zeMatrix44f(0, 8, 0, 0, -8, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), m);

  const zeVec3f from(0.48f, 0.6f, 0.64f), to(0, 0.6f, -0.8f);
  m.makeRotation(from, to);
  zeVec3f turned;
  turned.transformVector(from, m);
  for (int c = 0; c < 3; ++c) EXPECT_NEAR(to[c], turned[c], 1e-6) << c;
}

}  // namespace
