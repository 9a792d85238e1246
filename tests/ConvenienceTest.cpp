// The conveniences (operators, free functions, value-returning getters, const
// sources, frustum planes) against the operations they wrap: on random input
// every one must give the bits of the wrapped operation.

#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/CoreFixture.h"
#include "support/MatrixSupport.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

/// Expects two values of a value type to hold the same bytes.
template <class X>
void expectSameBits(const X& wrapped, const X& convenience) {
  EXPECT_EQ(0, std::memcmp(&wrapped, &convenience, sizeof(X)));
}

template <class V>
V randomVector(std::mt19937& rng) {
  std::uniform_real_distribution<typename V::Scalar> dist(-10, 10);
  V v;
  for (int i = 0; i < V::kComponentCount; ++i) v[i] = dist(rng);
  return v;
}

/// A random unit quaternion (the float class's matrix is a rotation for unit
/// quaternions only).
template <class Q>
Q randomQuaternion(std::mt19937& rng) {
  using T = decltype(Q::x);
  std::uniform_real_distribution<T> dist(-1, 1);
  const Q q(dist(rng), dist(rng), dist(rng), dist(rng));
  return q / std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
}

/// The array transforms of m on a random array, from the writable source and
/// through a const matrix from the const source: the same bits.
template <class V, class M>
void expectConstSourceAlike(M& m, std::mt19937& rng) {
  V source[5], written[5], read[5];
  for (V& v : source) v = randomVector<V>(rng);
  const M& fixed = m;
  const V* constSource = source;
  m.transformVectors(source, written, 5);
  fixed.transformVectors(constSource, read, 5);
  expectSameBits(written, read);
  m.transformPoints(source, written, 5);
  fixed.transformPoints(constSource, read, 5);
  expectSameBits(written, read);
}

template <class V>
void vectorCases(std::vector<std::pair<const char*, std::function<void(std::mt19937&)>>>& cases) {
  cases.push_back({"dot(a, b) is a.dot(b)", [](std::mt19937& rng) {
                     const V a = randomVector<V>(rng), b = randomVector<V>(rng);
                     EXPECT_BITEQ(a.dot(b), dot(a, b));
                   }});
  cases.push_back({"normalized(v) and v.normalized() are normalize()", [](std::mt19937& rng) {
                     V v = randomVector<V>(rng);
                     const V copy = v;
                     v.normalize();
                     expectSameBits(v, normalized(copy));
                     expectSameBits(v, copy.normalized());
                   }});
  cases.push_back({"v / 2 and v /= 2 are v * 0.5", [](std::mt19937& rng) {
                     V v = randomVector<V>(rng);
                     const V half = v * typename V::Scalar(0.5);
                     expectSameBits(half, v / 2);
                     expectSameBits(half, v /= 2);
                   }});
}

template <class V>
void crossCases(std::vector<std::pair<const char*, std::function<void(std::mt19937&)>>>& cases) {
  cases.push_back({"cross(a, b) is r.cross(a, b)", [](std::mt19937& rng) {
                     const V a = randomVector<V>(rng), b = randomVector<V>(rng);
                     V r;
                     r.cross(a, b);
                     expectSameBits(r, cross(a, b));
                   }});
}

template <class M, class V3, class V4>
void matrixCases(std::vector<std::pair<const char*, std::function<void(std::mt19937&)>>>& cases,
                 void (*product)(M& dst, const M& a, const M& b)) {
  cases.push_back({"a * b and a *= b are the product a·b", [product](std::mt19937& rng) {
                     M a = zetest::randomMatrix<M>(rng);
                     const M b = zetest::randomMatrix<M>(rng);
                     M ab;
                     product(ab, a, b);
                     expectSameBits(ab, a * b);
                     expectSameBits(ab, a *= b);
                   }});
  cases.push_back({"m * 2, 2 * m are add(m, m); m / 2 is m * 0.5", [](std::mt19937& rng) {
                     const M m = zetest::randomMatrix<M>(rng);
                     M twice;
                     twice.add(m, m);
                     expectSameBits(twice, m * 2);
                     expectSameBits(twice, 2 * m);
                     expectSameBits(m * typename M::Scalar(0.5), m / 2);
                   }});
  cases.push_back(
      {"getTranslation() and getRotationRadians() return what the out-parameter forms write", [](std::mt19937& rng) {
         const M m = zetest::randomMatrix<M>(rng);
         V3 t, angles;
         m.getTranslation(t);
         m.getRotationRadians(angles.x, angles.y, angles.z);
         expectSameBits(t, m.getTranslation());
         expectSameBits(angles, m.getRotationRadians());
       }});
  cases.push_back({"the array transforms of a const source are those of a writable one", [](std::mt19937& rng) {
                     M m = zetest::randomMatrix<M>(rng);
                     expectConstSourceAlike<V3>(m, rng);
                     expectConstSourceAlike<V4>(m, rng);
                   }});
}

template <class Q>
void quaternionCases(std::vector<std::pair<const char*, std::function<void(std::mt19937&)>>>& cases, double tolerance) {
  cases.push_back({"q.getMatrix() returns what getMatrix(m) writes", [](std::mt19937& rng) {
                     const Q q = randomQuaternion<Q>(rng);
                     decltype(q.getMatrix()) m;
                     q.getMatrix(m);
                     expectSameBits(m, q.getMatrix());
                   }});
  cases.push_back({"a * b applies a first, like the matrices; a *= b is a * b", [tolerance](std::mt19937& rng) {
                     const Q a = randomQuaternion<Q>(rng), b = randomQuaternion<Q>(rng);
                     zetest::expectNear(a.getMatrix() * b.getMatrix(), (a * b).getMatrix(), tolerance);
                     Q c = a;
                     expectSameBits(a * b, c *= b);
                   }});
  cases.push_back({"q * 2 and 2 * q are q doubled; q / 2 is q * 0.5", [](std::mt19937& rng) {
                     const Q q = randomQuaternion<Q>(rng);
                     const Q doubled(q.x + q.x, q.y + q.y, q.z + q.z, q.w + q.w);
                     expectSameBits(doubled, q * 2);
                     expectSameBits(doubled, 2 * q);
                     expectSameBits(q * decltype(q.x)(0.5), q / 2);
                   }});
}

void floatProduct(zeMatrix44f& dst, const zeMatrix44f& a, const zeMatrix44f& b) {
  zeMatrix44f::matrixMultiply(&dst, &a, &b);
}
void doubleProduct(zeMatrix44d& dst, const zeMatrix44d& a, const zeMatrix44d& b) { dst.multiply(a, b); }

}  // namespace

TEST(Conveniences, GiveTheBitsOfTheOperationsTheyWrap) {
  std::vector<std::pair<const char*, std::function<void(std::mt19937&)>>> cases;
  vectorCases<zeVec2f>(cases);
  vectorCases<zeVec2d>(cases);
  vectorCases<zeVec3f>(cases);
  vectorCases<zeVec3d>(cases);
  vectorCases<zeVec4f>(cases);
  vectorCases<zeVec4d>(cases);
  crossCases<zeVec3f>(cases);
  crossCases<zeVec3d>(cases);
  crossCases<zeVec4f>(cases);
  crossCases<zeVec4d>(cases);
  matrixCases<zeMatrix44f, zeVec3f, zeVec4f>(cases, &floatProduct);
  matrixCases<zeMatrix44d, zeVec3d, zeVec4d>(cases, &doubleProduct);
  quaternionCases<zeQuaternionf>(cases, 1e-5);
  quaternionCases<zeQuaterniond>(cases, 1e-12);
  cases.push_back({"float a * b is multiply(a, b)", [](std::mt19937& rng) {
                     const zeQuaternionf a = randomQuaternion<zeQuaternionf>(rng);
                     const zeQuaternionf b = randomQuaternion<zeQuaternionf>(rng);
                     zeQuaternionf product;
                     product.multiply(a, b);
                     expectSameBits(product, a * b);
                   }});
  cases.push_back({"double a * b of small integers is the float class's multiply, widened", [](std::mt19937& rng) {
                     std::uniform_int_distribution<int> small(-9, 9);
                     const zeQuaternionf a(small(rng), small(rng), small(rng), small(rng));
                     const zeQuaternionf b(small(rng), small(rng), small(rng), small(rng));
                     zeQuaternionf product;
                     product.multiply(a, b);
                     expectSameBits(zeQuaterniond(product.x, product.y, product.z, product.w),
                                    zeQuaterniond(a.x, a.y, a.z, a.w) * zeQuaterniond(b.x, b.y, b.z, b.w));
                   }});

  std::mt19937 rng(20);
  for (const auto& [name, check] : cases) {
    SCOPED_TRACE(name);
    for (int trial = 0; trial < 200 && !::testing::Test::HasFailure(); ++trial) check(rng);
  }
}

TEST(Conveniences, DivisionDividesEachComponent) {
  // A division per component, not a product with the reciprocal: 1/10, 2/10
  // and 3/10 round to the floats nearest 0.1, 0.2 and 0.3.
  EXPECT_EQ(zeVec3f(0.1f, 0.2f, 0.3f), zeVec3f(1, 2, 3) / 10.0f);
  const zeQuaternionf q = zeQuaternionf(1, 2, 3, 7) / 10.0f;
  EXPECT_TRUE(q.x == 0.1f && q.y == 0.2f && q.z == 0.3f && q.w == 0.7f);
  // The double quaternions' product is the Hamilton product, unlike their multiply.
  const zeQuaterniond k = zeQuaterniond(1, 0, 0, 0) * zeQuaterniond(0, 1, 0, 0);
  EXPECT_TRUE(k.x == 0 && k.y == 0 && k.z == 1 && k.w == 0);
}

// The planes of the frustum (-1, 1, -1, 1, 1, 3) seen from the origin along -z.
TEST(FrustumPlanes, OfAKnownFrustumFaceOutOfIt) {
  zeMatrix44f projection;
  projection.makePerspectiveProjection(-1, 1, -1, 1, 1, 3);
  zeVec4f planes[6];
  projection.getFrustumPlanes(planes);
  const float h = 0.70710678f;
  const zeVec4f expected[6] = {{-h, 0, h, 0}, {h, 0, h, 0}, {0, -h, h, 0}, {0, h, h, 0}, {0, 0, 1, -1}, {0, 0, -1, 3}};
  for (int k = 0; k < 6; ++k)
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(expected[k][i], planes[k][i], 1e-7) << "plane " << k << " component " << i;
  // Near and far are exact: the normal (0, 0, 3) or (0, 0, -1) normalises exactly.
  EXPECT_EQ(expected[4], planes[4]);
  EXPECT_EQ(expected[5], planes[5]);
}

using FrustumPlanesVolumes = zetest::CoreTest;

// For random cameras: a point is inside all six planes exactly when its clip
// coordinates lie within -w..w (points near a plane are skipped), and the
// zePlane volumes made with setPlane answer the same.
TEST_F(FrustumPlanesVolumes, HoldWhatTheClipCubeHolds) {
  std::mt19937 rng(6);
  std::uniform_real_distribution<float> coordinate(-40, 40);
  zeSmartPointer<zePlane> volumes[6];
  for (zeSmartPointer<zePlane>& plane : volumes) plane = zeCreate<zePlane>();
  int inside = 0, tested = 0;
  for (int camera = 0; camera < 20; ++camera) {
    zeMatrix44f view, projection;
    view.makeLookAt(zeVec3f(coordinate(rng), coordinate(rng), coordinate(rng)), zeVec3f(0, 0, 0), zeVec3f::YVector);
    projection.makePerspectiveProjectionRadians(-1, 0.5f + camera * 0.05f, 1.5f, 0.5f, 80.0f);
    const zeMatrix44f viewProjection = view * projection;
    zeVec4f planes[6];
    viewProjection.getFrustumPlanes(planes);
    for (int k = 0; k < 6; ++k) {
      volumes[k]->setPlane(planes[k]);
      EXPECT_EQ(zeVec3f(planes[k].x, planes[k].y, planes[k].z), volumes[k]->_norm);
      EXPECT_EQ(volumes[k]->_norm.getOctant(), volumes[k]->_octant);
    }
    for (int n = 0; n < 500; ++n) {
      const zeVec3f p(coordinate(rng), coordinate(rng), coordinate(rng));
      zeVec4f clip;
      clip.transformPoint(p, viewProjection);
      const float margin = 1e-3f * std::fabs(clip.w);
      bool near = false, clipInside = true, planesInside = true, volumesInside = true;
      for (int j = 0; j < 3; ++j) {
        near = near || std::fabs(std::fabs(clip[j]) - std::fabs(clip.w)) < margin;
        clipInside = clipInside && -clip.w <= clip[j] && clip[j] <= clip.w;
      }
      if (near) continue;
      for (int k = 0; k < 6; ++k) {
        planesInside = planesInside && planes[k].x * p.x + planes[k].y * p.y + planes[k].z * p.z - planes[k].w <= 0;
        volumesInside = volumesInside && volumes[k]->contains(p) == ZE_MATH_CONTAINMENT_RESULTS_ALL;
      }
      EXPECT_EQ(clipInside, planesInside) << "camera " << camera << " point " << p.x << ", " << p.y << ", " << p.z;
      EXPECT_EQ(planesInside, volumesInside);
      inside += clipInside;
      ++tested;
    }
  }
  EXPECT_GT(inside, 100);
  EXPECT_GT(tested, 9000);
}
