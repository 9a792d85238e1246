// Orthographic, perspective, planar and shadow projections of both matrix
// classes, and the frustum read back from a perspective matrix.

#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/MatrixSupport.h"

using namespace Lux::Math;
using zetest::expectBits;
using zetest::expectNear;

namespace {

template <class M>
class Projection : public ::testing::Test {
 protected:
  using T = typename zetest::Twin<M>::T;
  using V3 = typename zetest::Twin<M>::V3;
  // A few roundings of tan/atan on values near 1.
  const double tol = std::is_same<T, float>::value ? 1e-6 : 1e-14;
};
using Matrices = ::testing::Types<zeMatrix44f, zeMatrix44d>;
TYPED_TEST_SUITE(Projection, Matrices);

TYPED_TEST(Projection, BoxAndFrustumBitForBitWithTheirSignedZeros) {
  using T = typename TestFixture::T;
  using M = TypeParam;
  const T l = T(-0.3), r = T(1.7), b = T(-1.1), t = T(0.9), n = T(0.7), f = T(13.1);
  const T x = 1 / (r - l), y = 1 / (t - b), z = 1 / (f - n);
  M m = M::identityMatrix;
  m.makeOrthographicProjection(l, r, b, t, n, f);
  expectBits(M(2 * x, 0, 0, 0, 0, 2 * y, 0, 0, 0, 0, -2 * z, 0, -(l + r) * x, -(b + t) * y, -(n + f) * z, 1), m);
  m.makePerspectiveProjection(l, r, b, t, n, f);
  expectBits(
      M(2 * n * x, 0, 0, 0, 0, 2 * n * y, 0, 0, (l + r) * x, (b + t) * y, -(f + n) * z, -1, 0, 0, -2 * f * n * z, 0),
      m);
  // A centred box negates a zero sum: its translation row is -0.
  m.makeOrthographicProjection(-1, 1, -1, 1, -1, 1);
  expectBits(M(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, T(-0.0), T(-0.0), T(-0.0), 1), m);
  m.makePerspectiveProjection(-1, 1, -1, 1, 1, 3);
  expectBits(M(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, -1, 0, 0, -3, 0), m);
}

TYPED_TEST(Projection, FieldOfViewTakesOneAngleAndDerivesTheOtherThroughAtan) {
  using T = typename TestFixture::T;
  using M = TypeParam;
  const T quarterTurn = T(1.5707963267948966), nan = std::numeric_limits<T>::quiet_NaN();
  M m, expected;
  m.makePerspectiveProjectionRadians(quarterTurn, nan, 1, 1, 10);  // fovY ignored
  expected.makePerspectiveProjection(-1, 1, -1, 1, 1, 10);
  expectNear(expected, m, this->tol);
  m.makePerspectiveProjectionRadians(-1, quarterTurn, 2, 1, 10);
  expected.makePerspectiveProjection(-2, 2, -1, 1, 1, 10);
  expectNear(expected, m, this->tol);
  M viaNaN;  // a NaN horizontal angle selects the vertical one as well
  viaNaN.makePerspectiveProjectionRadians(nan, quarterTurn, 2, 1, 10);
  expectBits(m, viaNaN);
  // The derived half tangent is tan of the doubled half of atan(n tx / aspect / n),
  // which here differs from tx / aspect in both precisions.
  const T n = T(0.7), tx = std::tan(T(1.5) * T(0.5)), h = std::atan(n * tx / T(1.5) / n);
  const T ty = std::tan(2 * h * T(0.5));
  m.makePerspectiveProjectionRadians(T(1.5), nan, T(1.5), n, 20);
  expected.makePerspectiveProjection(-tx * n, tx * n, -ty * n, ty * n, n, 20);
  expectBits(expected, m);
}

// The shadow lands on the plane 0.6 x + 0.8 z = 2.5 on the line from the light;
// the parallel projection, whose row 3 carries the offset negated, lands on
// the mirrored plane 0.6 x + 0.8 z = -2.5 along the direction.
TYPED_TEST(Projection, PlaneProjectionsLandOnThePlane) {
  using T = typename TestFixture::T;
  using V3 = typename TestFixture::V3;
  using M = TypeParam;
  const V3 normal(T(0.6), T(0), T(0.8)), dir(T(0.3), T(-1.2), T(0.7)), light(T(1.5), T(4.25), T(-3.1));
  const V3 p(T(-1), T(2), T(0.5));
  const T d = T(2.5);
  M along, shadow;
  impl::projectAlongOntoPlane(along, normal, d, dir);
  impl::shadowOntoPlane(shadow, normal, d, light);
  V3 q, s, offLine, offRay;
  q.transformPoint(p, along);
  s.transformPoint(p, shadow);
  offLine.cross(q - p, dir);
  offRay.cross(s - light, p - light);
  for (const double v : {normal.dot(q) + d, normal.dot(s) - d, offLine.length(), offRay.length()})
    EXPECT_NEAR(0, v, 10 * this->tol);
  // Off the diagonal the products are negated, so the zero normal component
  // gives -0 (not 0 - 0 = +0).
  EXPECT_BITEQ(T(-0.0), along(1, 0));
  EXPECT_BITEQ(T(-0.0), shadow(1, 0));
  EXPECT_BITEQ(T(-0.0), shadow(1, 3));
  const T k = ((T(0) * light.y + T(0.6) * light.x) + T(0.8) * light.z) + -d;
  EXPECT_BITEQ(k - T(0.6) * light.x, shadow(0, 0));
  EXPECT_BITEQ(k + d, shadow(3, 3));
}

TYPED_TEST(Projection, FrustumReadBackScalesBothPairsByTheWidth) {
  using T = typename TestFixture::T;
  using M = TypeParam;
  M m;
  m.makePerspectiveProjection(-2, 2, -1, 1, 1, 3);  // m00 = 0.5, m22 = -2, m32 = -3
  T o[6];
  m.getFrustumParameters(o[0], o[1], o[2], o[3], o[4], o[5]);
  const T n = T(1.5) * (T(-1) / T(3) + 1), w = n / T(0.5);  // n is 1 - 2^-24 in float
  const T expected[6] = {-w, w, -w, w, n, 3};               // bottom and top: about -2 and 2
  for (int i = 0; i < 6; ++i) EXPECT_BITEQ(expected[i], o[i]) << i;
  m.getFrustumParameters(o[0], o[1], o[2], o[3], o[4], o[4]);  // near read back after far
  EXPECT_BITEQ(T(-6), o[0]);
  EXPECT_BITEQ(T(6), o[1]);
  m.makePerspectiveProjection(T(-0.5), T(1.5), T(-0.25), T(1.75), T(0.5), 40);  // off-centre, square
  m.getFrustumParameters(o[0], o[1], o[2], o[3], o[4], o[5]);
  const double input[6] = {-0.5, 1.5, -0.25, 1.75, 0.5, 40};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(input[i], o[i], 1e3 * this->tol) << i;
}

TYPED_TEST(Projection, FrustumReadBackWritesNothingForNonPerspectiveMatrices) {
  using M = TypeParam;
  M zeroFocal;
  zeroFocal.makePerspectiveProjection(-1, 1, -1, 1, 1, 3);
  zeroFocal(0, 0) = 0;
  for (const M& m : {M::identityMatrix, zetest::diagonal<M>(1, 1, -1), zeroFocal}) {
    typename TestFixture::T o[6] = {7, 7, 7, 7, 7, 7};
    m.getFrustumParameters(o[0], o[1], o[2], o[3], o[4], o[5]);
    for (const auto v : o) EXPECT_EQ(7, v);
  }
}

}  // namespace
