// Vector value types: layout, named constants, regions, cross products,
// interpolation, normals, reflection and single transforms.

#include <type_traits>

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/Bits.h"

using namespace Lux::Math;
using zetest::kNaNd;
using zetest::kNaNf;

namespace {

template <class V, int N, class T>
constexpr bool isPlainValue() {
  return sizeof(V) == N * sizeof(T) && std::is_standard_layout_v<V> && std::is_trivially_copyable_v<V> &&
         std::is_trivially_default_constructible_v<V>;
}
static_assert(isPlainValue<zeVec2f, 2, float>() && isPlainValue<zeVec2d, 2, double>());
static_assert(isPlainValue<zeVec3f, 3, float>() && isPlainValue<zeVec3d, 3, double>());
static_assert(isPlainValue<zeVec4f, 4, float>() && isPlainValue<zeVec4d, 4, double>());
static_assert(isPlainValue<zeVec3uc, 3, unsigned char>() && isPlainValue<zeVec4uc, 4, unsigned char>());

// A matrix with distinct, non-trivial elements in every position.
zeMatrix44f sampleMatrix() {
  return zeMatrix44f(0.5f, 1.25f, -2.0f, 0.0f, 3.0f, -0.75f, 0.125f, 0.0f, -1.5f, 2.5f, 4.0f, 0.0f, 7.0f, -9.0f, 11.0f,
                     1.0f);
}

}  // namespace

TEST(VectorLayout, ComponentsAreContiguousAndAddressable) {
  zeVec4f v(1, 2, 3, 4);
  EXPECT_EQ(&v.x, v.data());
  EXPECT_EQ(&v.w, &v[3]);
  v[2] = 9;
  EXPECT_EQ(9.0f, v.z);
  const zeVec3uc c(10, 20, 30);
  EXPECT_EQ(30, c[2]);
  EXPECT_EQ(c.b, c[2]);
}

TEST(VectorConstants, HoldTheirValuesAndStayAssignable) {
  zetest::expectVecBits(zeVec4f(0, 0, 0, 1), zeVec4f::TVector);
  zetest::expectVecBits(zeVec4f(0, 0, 1, 0), zeVec4f::ZVector);
  zetest::expectVecBits(zeVec4d(1, 1, 1, 1), zeVec4d::OneVector);
  zetest::expectVecBits(zeVec3d(0, 1, 0), zeVec3d::YVector);
  zetest::expectVecBits(zeVec2f(1, 0), zeVec2f::XVector);
  zetest::expectVecBits(zeVec2d(0, 0), zeVec2d::ZeroVector);

  const zeVec3f saved = zeVec3f::OneVector;
  zeVec3f::OneVector = zeVec3f(2, 2, 2);
  EXPECT_EQ(2.0f, zeVec3f::OneVector.y);
  zeVec3f::OneVector = saved;
}

TEST(VectorRegions, OnlyStrictlyNegativeComponentsCount) {
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XP_YP_ZP, zeVec3f(0, 0, 0).getOctant());
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XP_YP_ZP, zeVec3f(-0.0f, 1, 1).getOctant());
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XN_YP_ZN, zeVec3f(-1, 0, -1).getOctant());
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XP_YN_ZN, zeVec3d(kNaNd, -1, -2).getOctant());
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XN_YN_ZN, zeVec4f(-1, -1, -1, 5).getOctant());
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_XP_YP_ZN, zeVec4d(1, 1, -1, -1).getOctant());

  EXPECT_EQ(ZE_MATH_PLANAR_REGION_XN_YN, zeVec2f(-1, -1).getQuadrant());
  EXPECT_EQ(ZE_MATH_PLANAR_REGION_XP_YN, zeVec2d(-0.0, -3).getQuadrant());
  EXPECT_EQ(ZE_MATH_PLANAR_REGION_XN_YP, zeVec3f(-2, kNaNf, -7).getQuadrant());
  EXPECT_EQ(ZE_MATH_PLANAR_REGION_XP_YP, zeVec4d(0, 0, -1, -1).getQuadrant());
}

TEST(VectorCross, FourComponentFormsSetWToOne) {
  zeVec4f c;
  c.cross(zeVec4f::XVector, zeVec4f::YVector);
  zetest::expectVecBits(zeVec4f(0, 0, 1, 1), c);

  zeVec4d d(1, 0, 0, 7);
  d.cross(zeVec4d(0, 0, 1, 9));
  zetest::expectVecBits(zeVec4d(0, -1, 0, 1), d);

  zeVec3f a(1, 2, 3);
  a.cross(a, zeVec3f(4, 5, 6));  // the result may be an argument
  zetest::expectVecBits(zeVec3f(2 * 6 - 3 * 5, 3 * 4 - 1 * 6, 1 * 5 - 2 * 4), a);
}

TEST(VectorLerp, FloatAndDoubleFollowDifferenceTimesTPlusStart) {
  const float a = 0.1f, b = 0.7f, t = 0.3f;
  zeVec2f v;
  v.lerp(t, zeVec2f(a, b), zeVec2f(b, a));
  EXPECT_BITEQ((b - a) * t + a, v.x);
  EXPECT_BITEQ((a - b) * t + b, v.y);

  const double p = 1e16, q = 1.0, s = 0.999;
  zeVec3d w(p, q, p);
  w.lerp(s, w, zeVec3d(q, p, q));
  EXPECT_BITEQ((q - p) * s + p, w.x);
  EXPECT_BITEQ((p - q) * s + q, w.y);
}

TEST(VectorLerp, ByteTypesTruncateAndWrapDifferently) {
  zeVec3uc c3;
  c3.lerp(0.5f, zeVec3uc(10, 13, 200), zeVec3uc(13, 10, 100));
  EXPECT_EQ(11, c3.r);
  EXPECT_EQ(12, c3.g);
  EXPECT_EQ(150, c3.b);

  zeVec4uc c4;
  c4.lerp(0.5f, zeVec4uc(200, 10, 13, 0), zeVec4uc(100, 13, 10, 0));
  EXPECT_EQ(22, c4.r);   // (100 - 200) mod 256 = 156, halved to 78, 278 wraps to 22
  EXPECT_EQ(11, c4.g);   // equal to the three-channel rule when b >= a
  EXPECT_EQ(139, c4.b);  // 13 + trunc(253 * 0.5)

  zeVec3uc end;
  end.lerp(1.0f, zeVec3uc(0, 7, 255), zeVec3uc(200, 3, 0));
  EXPECT_EQ(200, end.r);
  EXPECT_EQ(3, end.g);
  EXPECT_EQ(0, end.b);
  end.lerp(2.0f, zeVec3uc(0, 0, 0), zeVec3uc(200, 0, 0));
  EXPECT_EQ(144, end.r);  // 400 stored in 8 bits

  // A t far outside any range does not trap; the result is some byte.
  zeVec4uc far;
  far.lerp(1e30f, zeVec4uc(1, 2, 3, 4), zeVec4uc(5, 6, 7, 8));
  far.lerp(kNaNf, zeVec4uc(1, 2, 3, 4), zeVec4uc(5, 6, 7, 8));
}

TEST(VectorNormal, DirectionAndScalingPerType) {
  zeVec3f n3;
  n3.makeNormal(zeVec3f(0, 0, 0), zeVec3f(2, 0, 0), zeVec3f(0, 2, 0));
  zetest::expectVecBits(zeVec3f(0, 0, 1), n3);

  zeVec4f n4f;
  n4f.makeNormal(zeVec4f(0, 0, 0, 5), zeVec4f(2, 0, 0, 6), zeVec4f(0, 2, 0, 7));
  zetest::expectVecBits(zeVec4f(0, 0, 1, 1), n4f);

  // The double 4-vector divides by 1 / length: direction times its length.
  zeVec4d n4d;
  n4d.makeNormal(zeVec4d(0, 0, 0, 0), zeVec4d(1, 0, 0, 0), zeVec4d(0, 1, 0, 0));
  zetest::expectVecBits(zeVec4d(0, 0, 1, 1), n4d);
  n4d.makeNormal(zeVec4d(0, 0, 0, 0), zeVec4d(2, 0, 0, 0), zeVec4d(0, 2, 0, 0));
  zetest::expectVecBits(zeVec4d(0, 0, 16, 1), n4d);
  zeVec3d n3d;
  n3d.makeNormal(zeVec3d(0, 0, 0), zeVec3d(2, 0, 0), zeVec3d(0, 2, 0));
  zetest::expectVecBits(zeVec3d(0, 0, 1), n3d);

  // Degenerate triangles: 0 times infinity is NaN, 0 divided by infinity is 0.
  n3.makeNormal(zeVec3f(1, 1, 1), zeVec3f(1, 1, 1), zeVec3f(2, 2, 2));
  EXPECT_TRUE(std::isnan(n3.x) && std::isnan(n3.y) && std::isnan(n3.z));
  n4d.makeNormal(zeVec4d(1, 1, 1, 0), zeVec4d(1, 1, 1, 0), zeVec4d(1, 1, 1, 0));
  EXPECT_EQ(0.0, n4d.x);
  EXPECT_EQ(0.0, n4d.z);
  EXPECT_EQ(1.0, n4d.w);
}

TEST(VectorNormal, FloatScalesByOneOverLength) {
  const zeVec3f a(0.3f, 1.7f, -2.2f), b(4.1f, 0.2f, 0.9f), c(-1.3f, 2.6f, 3.3f);
  zeVec3f n;
  n.makeNormal(a, b, c);
  const zeVec3f e1 = a - b, e2 = c - b;
  const float x = e2.y * e1.z - e2.z * e1.y, y = e2.z * e1.x - e2.x * e1.z, z = e2.x * e1.y - e2.y * e1.x;
  const float scale = 1.0f / std::sqrt(x * x + y * y + z * z);
  zetest::expectVecBits(zeVec3f(x * scale, y * scale, z * scale), n);
}

TEST(VectorReflect, BouncesOnlyVectorsThatEnterTheSurface) {
  zeVec3f r;
  r.reflect(zeVec3f(0, 1, 0), zeVec3f(1, 2, 3), 1.0f);  // leaving: unchanged
  zetest::expectVecBits(zeVec3f(1, 2, 3), r);
  r.reflect(zeVec3f(0, 1, 0), zeVec3f(1, -2, 3), 1.0f);  // mirrored
  zetest::expectVecBits(zeVec3f(1, 2, 3), r);
  r.reflect(zeVec3f(0, 1, 0), zeVec3f(1, -2, 3), 0.0f);  // normal part removed
  zetest::expectVecBits(zeVec3f(1, 0, 3), r);
  r.reflect(zeVec3f(0, 1, 0), zeVec3f(1, 0, 3), 1.0f);  // d = 0: formula with k = 0
  zetest::expectVecBits(zeVec3f(1, 0, 3), r);

  // The dot product ignores w but the subtraction does not.
  zeVec4d r4;
  r4.reflect(zeVec4d(0, 0, 2, 3), zeVec4d(1, 1, -1, 10), 0.5);
  const double k = (0.5 + 1.0) * -2.0;
  zetest::expectVecBits(zeVec4d(1, 1, -1 - k * 2, 10 - k * 3), r4);
  r4.reflect(zeVec4d(0, 0, 1, 3), zeVec4d(1, 1, 1, 10), 1.0);
  zetest::expectVecBits(zeVec4d(1, 1, 1, 10), r4);

  // A NaN dot product fails d > 0 and takes the formula.
  r.reflect(zeVec3f(kNaNf, 0, 0), zeVec3f(1, 1, 1), 1.0f);
  EXPECT_TRUE(std::isnan(r.x));
}

TEST(VectorBezier, EndPointsExactAndMidpointByRepeatedLerp) {
  zeVec3f p0(0, 0, 0), p1(1, 3, 0), p2(3, 3, 1), p3(4, 0, 7);
  zeVec3f b;
  b.bezierInterpolate(0.0f, p0, p1, p2, p3);
  zetest::expectVecBits(p0, b);
  b.bezierInterpolate(1.0f, p0, p1, p2, p3);
  zetest::expectVecBits(p3, b);
  b.bezierInterpolate(0.5f, p0, p1, p2, p3);
  zetest::expectVecBits(zeVec3f(2.0f, 2.25f, 1.25f), b);

  zeVec4f q0(0, 0, 0, 0), q1(0, 0, 0, 1), q2(0, 0, 0, 1), q3(0, 0, 0, 0);
  zeVec4f c;
  c.bezierInterpolate(0.5f, q0, q1, q2, q3);
  EXPECT_BITEQ(0.75f, c.w);
}

TEST(VectorTransform, DirectionsIgnoreTranslationAndKeepW) {
  const zeMatrix44f m = sampleMatrix();
  zeVec3f v(1, 2, 3);
  v.transformVector(v, m);
  zetest::expectVecBits(
      zeVec3f(1 * 0.5f + 2 * 3.0f + 3 * -1.5f, 1 * 1.25f + 2 * -0.75f + 3 * 2.5f, 1 * -2.0f + 2 * 0.125f + 3 * 4.0f),
      v);

  zeVec4f w(1, 2, 3, kNaNf);
  w.transformVector(w, m);
  EXPECT_EQ(zetest::bitsOf(kNaNf), zetest::bitsOf(w.w));
  EXPECT_BITEQ(v.y, w.y);
}

TEST(VectorTransform, AffinePointsAreNotDivided) {
  const zeMatrix44f m = sampleMatrix();
  const zeVec3f p(0.1f, 0.2f, 0.3f);
  zeVec3f q;
  q.transformPoint(p, m);
  zetest::expectVecBits(
      zeVec3f(p.x * 0.5f + p.y * 3.0f + p.z * -1.5f + 7.0f, p.x * 1.25f + p.y * -0.75f + p.z * 2.5f + -9.0f,
              p.x * -2.0f + p.y * 0.125f + p.z * 4.0f + 11.0f),
      q);
  q.transformPoint(p, zeMatrix44f::identityMatrix);
  zetest::expectVecBits(p, q);
}

TEST(VectorTransform, TinyWDividesByThePositiveThreshold) {
  const float threshold = zetest::floatFromBits(0x350637BD);
  const float factor = 1.0f / threshold;
  zeMatrix44f m = zeMatrix44f::identityMatrix;
  m[15] = 0.0f;
  zeVec3f q;
  q.transformPoint(zeVec3f(1, -2, 3), m);
  zetest::expectVecBits(zeVec3f(1 * factor, -2 * factor, 3 * factor), q);

  m[15] = -1e-9f;  // the sign of a tiny w is dropped
  q.transformPoint(zeVec3f(1, -2, 3), m);
  zetest::expectVecBits(zeVec3f(1 * factor, -2 * factor, 3 * factor), q);

  m[15] = -threshold;  // |w| equal to the threshold divides by w itself
  q.transformPoint(zeVec3f(1, 0, 0), m);
  EXPECT_BITEQ(1.0f * (1.0f / -threshold), q.x);

  m[15] = 2.0f;
  q.transformPoint(zeVec3f(4, 6, 8), m);
  zetest::expectVecBits(zeVec3f(2, 3, 4), q);

  m[15] = kNaNf;
  q.transformPoint(zeVec3f(4, 6, 8), m);
  EXPECT_TRUE(std::isnan(q.x) && std::isnan(q.y) && std::isnan(q.z));
}

TEST(VectorTransform, DoubleFormUsesTheWidenedSinglePrecisionThreshold) {
  const double widened = zetest::floatFromBits(0x350637BD);
  const double between = 4.9999999937e-07;  // above the widened float, below the double 5e-7
  ASSERT_LT(widened, between);
  ASSERT_LT(between, 5e-7);
  zeMatrix44d m = zeMatrix44d::identityMatrix;
  m[15] = between;
  zeVec3d q;
  q.transformPoint(zeVec3d(1, 0, 0), m);
  EXPECT_BITEQ(1.0 / between, q.x);
  m[15] = -4.9e-7;
  q.transformPoint(zeVec3d(1, 0, 0), m);
  EXPECT_BITEQ(1.0 / widened, q.x);
}

TEST(VectorTransform, FourComponentPointsUseTheFullProduct) {
  const zeMatrix44f m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  zeVec4f p(1, 0.5f, 0.25f, 2);
  p.transformPoint(p, m);
  zetest::expectVecBits(zeVec4f(1 + 2.5f + 2.25f + 26, 2 + 3 + 2.5f + 28, 3 + 3.5f + 2.75f + 30, 4 + 4 + 3 + 32), p);

  zeVec4f fromThree;
  fromThree.transformPoint(zeVec3f(1, 0.5f, 0.25f), m);
  zetest::expectVecBits(zeVec4f(1 + 2.5f + 2.25f + 13, 2 + 3 + 2.5f + 14, 3 + 3.5f + 2.75f + 15, 4 + 4 + 3 + 16),
                        fromThree);
}

TEST(VectorBasics, ArithmeticDotAndNormalize) {
  const zeVec3f a(1, 2, 3), b(4, 5, 6);
  zetest::expectVecBits(zeVec3f(-3, -3, -3), a - b);
  zetest::expectVecBits(zeVec3f(5, 7, 9), a + b);
  zetest::expectVecBits(zeVec3f(2, 4, 6), a * 2.0f);
  zetest::expectVecBits(zeVec3f(-1, -2, -3), -a);
  EXPECT_BITEQ(32.0f, a.dot(b));
  zeVec4d v(3, 0, 4, 0);
  v.normalize();
  zetest::expectVecBits(zeVec4d(3 * (1 / 5.0), 0, 4 * (1 / 5.0), 0), v);
  EXPECT_TRUE(zeVec2f(1, 2) == zeVec2f(1, 2));
  EXPECT_TRUE(zeVec2f(1, kNaNf) != zeVec2f(1, kNaNf));
}
