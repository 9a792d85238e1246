// Translation, scale, rotation and viewing transforms of both matrix classes.

#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "math/zeVec4d.h"
#include "math/zeVec4f.h"
#include "support/Bits.h"

using namespace Lux::Math;

// The mixins are empty: they add neither size nor layout.
static_assert(sizeof(zeMatrix44f) == 64 && sizeof(zeMatrix44d) == 128, "sixteen elements and nothing else");
static_assert(std::is_standard_layout<zeMatrix44f>::value && std::is_standard_layout<zeMatrix44d>::value, "");
static_assert(std::is_trivially_default_constructible<zeMatrix44f>::value, "");

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

/// Sixteen distinct, inexact elements: 0.1 (i + 1) - 0.7 (i % 3).
template <class M>
M busy() {
  M m;
  for (int i = 0; i < 16; ++i)
    m[i] =
        typename Twin<M>::T(0.1) * typename Twin<M>::T(i + 1) - typename Twin<M>::T(0.7) * typename Twin<M>::T(i % 3);
  return m;
}

template <class M>
void expectSameBits(const M& expected, const M& actual) {
  for (int i = 0; i < 16; ++i) EXPECT_BITEQ(expected[i], actual[i]) << " at element " << i;
}

/// |expected - actual| <= tol for all sixteen elements (NaN fails).
template <class M>
void expectNear(const M& expected, const M& actual, double tol) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(expected[i], actual[i], tol) << " at element " << i;
}

template <class M>
class Construction : public ::testing::Test {
 protected:
  using T = typename Twin<M>::T;
  using V3 = typename Twin<M>::V3;
  // Rounding of a handful of sine/cosine-based operations on values near 1.
  const double tol = std::is_same<T, float>::value ? 4e-7 : 1e-15;
};
using Matrices = ::testing::Types<zeMatrix44f, zeMatrix44d>;
TYPED_TEST_SUITE(Construction, Matrices);

TYPED_TEST(Construction, TranslationMakeSetGet) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const V3 t(T(0.1), T(-2.5), T(7));
  TypeParam m;
  m.makeTranslation(t);
  TypeParam expected = TypeParam::identityMatrix;
  expected(3, 0) = t.x, expected(3, 1) = t.y, expected(3, 2) = t.z;
  expectSameBits(expected, m);

  m = busy<TypeParam>();
  expected = m;
  m.setTranslation(t);
  expected(3, 0) = t.x, expected(3, 1) = t.y, expected(3, 2) = t.z;
  expectSameBits(expected, m);
  V3 back;
  m.getTranslation(back);
  EXPECT_TRUE(back == t);
}

TYPED_TEST(Construction, PreAndPostTranslationFollowTheirSums) {
  using T = typename TestFixture::T;
  const typename TestFixture::V3 t(T(0.3), T(-1.7), T(2.9));
  const TypeParam m = busy<TypeParam>();
  TypeParam pre = m, post = m;
  pre.preTranslation(t);
  post.postTranslation(t);
  TypeParam expectPre = m, expectPost = m;
  for (int c = 0; c < 4; ++c) expectPre(3, c) = ((t.x * m(0, c) + t.y * m(1, c)) + t.z * m(2, c)) + m(3, c);
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 3; ++c) expectPost(r, c) = m(r, c) + t[c] * m(r, 3);
  expectSameBits(expectPre, pre);
  expectSameBits(expectPost, post);
}

TYPED_TEST(Construction, ScaleAndShear) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const V3 s(T(2), T(0.3), T(-5)), h(T(0.7), T(-0.1), T(1.3));
  TypeParam m;
  m.makeScale(T(3));
  TypeParam expected = TypeParam::identityMatrix;
  expected(0, 0) = expected(1, 1) = expected(2, 2) = T(3);
  expectSameBits(expected, m);  // m33 stays 1

  m.makeScale(s, h);
  expected = TypeParam::identityMatrix;
  expected(0, 0) = s.x, expected(1, 0) = h.x * s.y, expected(1, 1) = s.y;
  expected(2, 0) = h.y * s.z, expected(2, 1) = h.z * s.z, expected(2, 2) = s.z;
  expectSameBits(expected, m);

  // The set forms write the same elements and nothing else.
  m = busy<TypeParam>();
  expected = m;
  m.setScale(s, h);
  expected(0, 0) = s.x, expected(1, 0) = h.x * s.y, expected(1, 1) = s.y;
  expected(2, 0) = h.y * s.z, expected(2, 1) = h.z * s.z, expected(2, 2) = s.z;
  expectSameBits(expected, m);
  m.setScale(V3(T(9), T(8), T(7)));
  expected(0, 0) = T(9), expected(1, 1) = T(8), expected(2, 2) = T(7);
  expectSameBits(expected, m);
}

TYPED_TEST(Construction, PreScaleScalesRowsPostScaleScalesColumns) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam pre, post;
  pre.makeTranslation(V3(T(1), T(2), T(3)));
  post = pre;
  pre.preScale(V3(T(2), T(3), T(4)));
  post.postScale(V3(T(2), T(3), T(4)));
  TypeParam expected = TypeParam::identityMatrix;
  expected(0, 0) = T(2), expected(1, 1) = T(3), expected(2, 2) = T(4);
  expected(3, 0) = T(1), expected(3, 1) = T(2), expected(3, 2) = T(3);
  expectSameBits(expected, pre);  // the translation is not scaled
  expected(3, 0) = T(2), expected(3, 1) = T(6), expected(3, 2) = T(12);
  expectSameBits(expected, post);  // it is scaled here, column 3 is not
}

TYPED_TEST(Construction, AxisAngleThresholdAndFormula) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const TypeParam start = busy<TypeParam>();
  TypeParam m = start;
  m.setRotationRadians(T(1e-7), V3(T(3), T(-4), T(5)));
  TypeParam expected = start;
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) expected(r, c) = r == c ? T(1) : T(0);
  expectSameBits(expected, m);  // below the threshold: identity 3x3, the rest untouched

  // The threshold is the widened single-precision 5e-7, compared strictly: an
  // angle just below the double nearest 5e-7 but at or above the float still turns.
  const T atThreshold = std::is_same<T, float>::value ? T(5e-7f) : T(4.999999999e-7);
  m.setRotationRadians(atThreshold, V3(T(0), T(0), T(1)));
  EXPECT_NE(m(0, 1), T(0));

  // A zero axis leaves cos on the diagonal and +0 elsewhere.
  m.setRotationRadians(T(1e-6), V3(T(0), T(0), T(0)));
  EXPECT_NEAR(std::cos(T(1e-6)), m(0, 0), this->tol);
  EXPECT_BITEQ(m(0, 0), m(2, 2));
  EXPECT_BITEQ(T(0), m(0, 1));
  EXPECT_BITEQ(T(0), m(2, 1));

  const T angle = T(0.9);
  const T x = T(0.3), y = T(-0.5), z = T(0.8);  // not normalised, used as given
  m.makeRotationRadians(angle, V3(x, y, z));
  const T s = std::sin(angle), c = std::cos(angle), t = T(1) - c;
  const T e[9] = {x * (t * x) + c,     y * (t * x) + z * s, (t * x) * z - y * s, x * (t * y) - z * s, y * (t * y) + c,
                  (t * y) * z + x * s, x * (t * z) + y * s, y * (t * z) - x * s, (t * z) * z + c};
  expected = TypeParam::identityMatrix;
  for (int i = 0; i < 9; ++i) expected(i / 3, i % 3) = e[i];
  expectNear(expected, m, this->tol);

  // Right-handed: about +z, (1, 0, 0) turns to (cos, sin, 0).
  m.makeRotationRadians(angle, V3(T(0), T(0), T(1)));
  V3 p;
  p.transformVector(V3(T(1), T(0), T(0)), m);
  EXPECT_NEAR(c, p.x, this->tol);
  EXPECT_NEAR(s, p.y, this->tol);
}

TYPED_TEST(Construction, EulerIsRxRyRzWithAnExactZeroShortcut) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const T x = T(0.4), y = T(-1.1), z = T(2.3);
  TypeParam m, rx, ry, rz, product;
  m.makeRotationRadians(x, y, z);
  rx.makeRotationRadians(x, V3(T(1), T(0), T(0)));
  ry.makeRotationRadians(y, V3(T(0), T(1), T(0)));
  rz.makeRotationRadians(z, V3(T(0), T(0), T(1)));
  product = rx;
  product.postRotationRadians(y, V3(T(0), T(1), T(0)));
  product.postRotationRadians(z, V3(T(0), T(0), T(1)));
  expectNear(product, m, 4 * this->tol);

  // Zero angles take no sine: sin 0 = +0, even for -0, so m02 = -sin y is -0.
  m.makeRotationRadians(T(0), T(-0.0), T(0));
  EXPECT_TRUE(m == TypeParam::identityMatrix);
  EXPECT_BITEQ(T(-0.0), m(0, 2));
  EXPECT_BITEQ(T(0), m(1, 2));
  TypeParam kept = busy<TypeParam>();
  TypeParam expected = kept;
  kept.setRotationRadians(T(0), T(0), T(0));
  for (int i = 0; i < 9; ++i) expected(i / 3, i % 3) = i % 4 == 0 ? T(1) : (i == 2 ? T(-0.0) : T(0));
  expectSameBits(expected, kept);
}

TYPED_TEST(Construction, PreAndPostRotationConcatenate) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  const V3 axis(T(0.6), T(0), T(0.8));
  TypeParam r;
  r.makeRotationRadians(T(0.7), axis);
  const TypeParam m = busy<TypeParam>();
  TypeParam post = m, pre = m, expectPost, expectPre;
  post.postRotationRadians(T(0.7), axis);
  pre.preRotationRadians(T(0.7), axis);
  for (int i = 0; i < 16; ++i) {
    const int row = i / 4, col = i % 4;
    expectPost[i] = m(row, 0) * r(0, col) + m(row, 1) * r(1, col) + m(row, 2) * r(2, col) + m(row, 3) * r(3, col);
    expectPre[i] = r(row, 0) * m(0, col) + r(row, 1) * m(1, col) + r(row, 2) * m(2, col) + r(row, 3) * m(3, col);
  }
  expectSameBits(expectPost, post);
  expectSameBits(expectPre, pre);
}

TYPED_TEST(Construction, LookAt) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m;
  m.makeLookAt(V3(T(0), T(0), T(5)), V3(T(0), T(0), T(0)), V3(T(0), T(1), T(0)));
  // Row 3 is the negated products with eye: -(0) is -0.
  const TypeParam expected(T(1), T(0), T(0), T(0), T(0), T(1), T(0), T(0), T(0), T(0), T(1), T(0), T(-0.0), T(-0.0),
                           T(-5), T(1));
  expectSameBits(expected, m);

  // A general camera, step by step: guarded unit f, u and s, v = f x s.
  const V3 eye(T(1), T(2), T(3)), center(T(4), T(-1), T(2.5)), up(T(0.2), T(1), T(0.1));
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
  const TypeParam general(s.x, v.x, f.x, T(0), s.y, v.y, f.y, T(0), s.z, v.z, f.z, T(0),
                          -(s.x * eye.x + s.y * eye.y + s.z * eye.z), -(v.x * eye.x + v.y * eye.y + v.z * eye.z),
                          -(f.x * eye.x + f.y * eye.y + f.z * eye.z), T(1));
  expectSameBits(general, m);

  // The direction form with direction = center - eye (exactly) is the same matrix.
  TypeParam viaDirection;
  viaDirection.makeLookAtDirection(eye, V3(T(3), T(-3), T(-0.5)), up);
  expectSameBits(general, viaDirection);
}

TYPED_TEST(Construction, LookAtDegenerateInput) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  TypeParam m;
  // eye = center: f stays zero, so does s; no fallback.
  m.makeLookAt(V3(T(1), T(1), T(1)), V3(T(1), T(1), T(1)), V3(T(0), T(1), T(0)));
  for (int r = 0; r < 3; ++r) {
    EXPECT_EQ(T(0), m(r, 0));
    EXPECT_EQ(T(0), m(r, 2));
  }
  EXPECT_EQ(T(1), m(3, 3));
  // An infinite or NaN eye carries NaN into m33.
  m.makeLookAt(V3(std::numeric_limits<T>::infinity(), T(0), T(0)), V3(T(0), T(0), T(0)), V3(T(0), T(1), T(0)));
  EXPECT_TRUE(std::isnan(m(3, 3)));
  m.makeLookAtDirection(V3(T(0), std::numeric_limits<T>::quiet_NaN(), T(0)), V3(T(0), T(0), T(-1)),
                        V3(T(0), T(1), T(0)));
  EXPECT_TRUE(std::isnan(m(3, 3)));
}

// The guard is the smallest normal value of each class's own type: |f|² = 1e-40
// is below it in float (f is kept as is) and above it in double (normalised).
TEST(LookAtGuard, SmallestNormalOfTheType) {
  zeMatrix44f mf;
  mf.makeLookAt(zeVec3f(1e-20f, 0.0f, 0.0f), zeVec3f(0.0f, 0.0f, 0.0f), zeVec3f(0.0f, 1.0f, 0.0f));
  EXPECT_BITEQ(1e-20f, mf(0, 2));
  zeMatrix44d md;
  md.makeLookAt(zeVec3d(1e-20, 0.0, 0.0), zeVec3d(0.0, 0.0, 0.0), zeVec3d(0.0, 1.0, 0.0));
  EXPECT_BITEQ(1.0, md(0, 2));
}

TEST(RotationFromTo, IdentityBandIsInclusive) {
  zeMatrix44f m = zeMatrix44f::zeroMatrix;
  m.makeRotation(zeVec3f(0.6f, 0.8f, 0.0f), zeVec3f(0.6f, 0.8f, 0.0f));
  expectSameBits(zeMatrix44f::identityMatrix, m);
  m.makeRotation(zeVec3f(1.0f, 0.0f, 0.0f), zeVec3f(1.000001f, 0.0f, 0.0f));
  expectSameBits(zeMatrix44f::identityMatrix, m);
  // Just outside the band the general branch runs on parallel vectors: n is 0, normalised to NaN.
  m.makeRotation(zeVec3f(1.0f, 0.0f, 0.0f), zeVec3f(std::nextafter(1.000001f, 2.0f), 0.0f, 0.0f));
  EXPECT_TRUE(std::isnan(m(0, 0)));
}

TEST(RotationFromTo, OppositeDirectionsHalfTurn) {
  // to x (1, 0, 0) vanishes, so the axis is to x (0, 1, 0) = (0, 0, -1).
  zeMatrix44f m, expected;
  m.makeRotation(zeVec3f(1.0f, 0.0f, 0.0f), zeVec3f(-1.0f, 0.0f, 0.0f));
  expected.makeRotationRadians(3.1415927f, zeVec3f(0.0f, 0.0f, -1.0f));
  expectSameBits(expected, m);
  // Otherwise the axis is to x (1, 0, 0), normalised: here (-0, 0, 1), whose
  // -0 reaches m20.
  m.makeRotation(zeVec3f(0.0f, 1.0f, 0.0f), zeVec3f(0.0f, -1.0f, 0.0f));
  expected.makeRotationRadians(3.1415927f, zeVec3f(-0.0f, 0.0f, 1.0f));
  EXPECT_BITEQ(-0.0f, m(2, 0));
  expectSameBits(expected, m);
}

TEST(RotationFromTo, GeneralCase) {
  // from = (2, 0, 0), to = (0, 1, 0): n = (0, 0, 1), b = (0, 2, 0),
  // (p, q, r) = (0, 2, 0); Bt G B = [[0, 8, 0], [-8, 0, 0], [0, 0, 1]] exactly.
  zeMatrix44f m;
  m.makeRotation(zeVec3f(2.0f, 0.0f, 0.0f), zeVec3f(0.0f, 1.0f, 0.0f));
  expectSameBits(
      zeMatrix44f(0.0f, 8.0f, 0.0f, 0.0f, -8.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f), m);

  const zeVec3f from(0.48f, 0.6f, 0.64f), to(0.0f, 0.6f, -0.8f);
  m.makeRotation(from, to);
  zeVec3f turned;
  turned.transformVector(from, m);
  EXPECT_NEAR(to.x, turned.x, 1e-6);
  EXPECT_NEAR(to.y, turned.y, 1e-6);
  EXPECT_NEAR(to.z, turned.z, 1e-6);
}

}  // namespace
