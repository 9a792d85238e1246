// Rays (registration, make, transform, the sides enum) and the ray/triangle
// test: its three failure codes, the sign-bit decisions between them, and
// which outputs each outcome writes.

#include <cmath>
#include <cstring>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using Ray = zetest::CoreTest;
using zetest::kNaNf;

void expectVecBitEq(const zeVec3f& expected, const zeVec3f& actual) {
  EXPECT_BITEQ(expected.x, actual.x);
  EXPECT_BITEQ(expected.y, actual.y);
  EXPECT_BITEQ(expected.z, actual.z);
}

// A ray made by its class, released with the holder.
struct RayHolder {
  RayHolder(const zeVec3f& pos, const zeVec3f& dir, float len)
      : ray(static_cast<zeRay*>(zeRay::_instantiateFromPool(nullptr))) {
    ray->_pos = pos;
    ray->_dir = dir;
    ray->_len = len;
  }
  ~RayHolder() { ray->release(); }
  zeRay* operator->() const { return ray; }
  zeRay* ray;
};

const zeVec3f kSentinel(-7.0f, -7.0f, -7.0f);

// The triangle (0,0,0), (1,0,0), (0,1,0) in the z = 0 plane, normal +z.
struct Triangle {
  zeVec3f v0{0.0f, 0.0f, 0.0f}, v1{1.0f, 0.0f, 0.0f}, v2{0.0f, 1.0f, 0.0f};
  zeVec3f hit = kSentinel, normal = kSentinel;
  float cast(const RayHolder& ray, unsigned int sides) {
    hit = kSentinel;
    normal = kSentinel;
    return zeIntersect::intersectRay(ray.ray, v0, v1, v2, hit, normal, sides);
  }
};

const zeVec3f kDown(0.0f, 0.0f, -1.0f);
const zeVec3f kUp(0.0f, 0.0f, 1.0f);

}  // namespace

TEST_F(Ray, RegistersItsFieldsWithTheirDefaults) {
  zeRayList::bayRegister();
  zeMetaObject* meta = zeRay::getClassMeta();
  ASSERT_NE(meta, nullptr) << "the list registers its element class";
  EXPECT_STREQ(meta->getName(), "zeRay");
  EXPECT_EQ(meta->getParent(), zeObject::getClassMeta());
  ASSERT_EQ(meta->getMetaFieldCount(), 3);
  const char* const names[] = {"_pos", "_dir", "_len"};
  zeMetaField* const slots[] = {zeRay::k_pos, zeRay::k_dir, zeRay::k_len};
  for (int i = 0; i < 3; ++i) {
    EXPECT_STREQ(meta->getIndexedMetaField(i)->getName(), names[i]);
    EXPECT_EQ(meta->getIndexedMetaField(i), slots[i]);
  }
  auto* list = static_cast<zeRayList*>(zeRayList::_instantiateFromPool(nullptr));
  EXPECT_EQ(list->getElementType(), meta);
  list->release();

  auto* ray = static_cast<zeRay*>(zeRay::_instantiateFromPool(nullptr));
  expectVecBitEq(zeVec3f(0, 0, 0), ray->_pos);
  expectVecBitEq(zeVec3f(0, 1, 0), ray->_dir);
  EXPECT_BITEQ(0.0f, ray->_len);
  ray->release();

  zeIntersect::bayRegister();
  ASSERT_NE(zeIntersect::getClassMeta(), nullptr);
  EXPECT_STREQ(zeIntersect::getClassMeta()->getName(), "zeIntersect");
  EXPECT_EQ(zeIntersect::getClassMeta()->getMetaFieldCount(), 0);
}

TEST_F(Ray, SidesEnumIsMadeOnceWithItsThreeConstants) {
  zeMetaEnum* sides = zeRay::getISET_SIDESMetaEnum();
  ASSERT_NE(sides, nullptr);
  EXPECT_EQ(zeRay::getISET_SIDESMetaEnum(), sides);
  EXPECT_EQ(zeRay::ISET_SIDES_Meta, sides);
  EXPECT_STREQ(sides->getName(), "ISET_SIDES");
  ASSERT_EQ(sides->getCount(), 3);
  EXPECT_STREQ(sides->getValueName(0), "FRONT_SIDE");
  EXPECT_STREQ(sides->getValueName(1), "BACK_SIDE");
  EXPECT_STREQ(sides->getValueName(2), "BOTH_SIDES");
  EXPECT_EQ(sides->getValue(0), zeRay::FRONT_SIDE);
  EXPECT_EQ(sides->getValue(1), zeRay::BACK_SIDE);
  EXPECT_EQ(sides->getValue(2), zeRay::BOTH_SIDES);
}

TEST_F(Ray, MakeNormalisesOnlyAboveTheSmallThreshold) {
  RayHolder ray(kSentinel, kSentinel, 0.0f);
  ray->make(zeVec3f(1, 2, 3), zeVec3f(4, 6, 3));
  expectVecBitEq(zeVec3f(1, 2, 3), ray->_pos);
  EXPECT_BITEQ(5.0f, ray->_len);
  expectVecBitEq(zeVec3f(3.0f * (1.0f / 5.0f), 4.0f * (1.0f / 5.0f), 0.0f), ray->_dir);

  // A zero-length segment keeps the zero difference as direction.
  ray->make(zeVec3f(1, 2, 3), zeVec3f(1, 2, 3));
  EXPECT_BITEQ(0.0f, ray->_len);
  expectVecBitEq(zeVec3f(0, 0, 0), ray->_dir);

  // 4e-7 is below the threshold: direction and length keep their small values.
  const float tiny = 4e-7f;
  ray->make(zeVec3f(0, 0, 0), zeVec3f(tiny, 0, 0));
  EXPECT_BITEQ(std::sqrt(tiny * tiny + 0.0f + 0.0f), ray->_len);
  expectVecBitEq(zeVec3f(tiny, 0, 0), ray->_dir);

  // The start may be the ray's own.
  ray->make(ray->_pos, zeVec3f(0, 3, 4));
  expectVecBitEq(zeVec3f(0, 0, 0), ray->_pos);
  EXPECT_BITEQ(5.0f, ray->_len);
}

TEST_F(Ray, TransformMapsBothEndsAndRenormalises) {
  // Scale (1, 3, 2), then translate by (1, 2, 3).
  const zeMatrix44f m(1, 0, 0, 0, 0, 3, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1);
  RayHolder ray(zeVec3f(0, 0, 0), zeVec3f(0, 1, 0), 2.0f);
  ray->transform(m);
  expectVecBitEq(zeVec3f(1, 2, 3), ray->_pos);
  EXPECT_BITEQ(6.0f, ray->_len);
  expectVecBitEq(zeVec3f(0.0f, 6.0f * (1.0f / 6.0f), 0.0f), ray->_dir);

  // No guard: a ray of length 0 gets a NaN direction.
  RayHolder point(zeVec3f(1, 1, 1), zeVec3f(0, 1, 0), 0.0f);
  point->transform(m);
  EXPECT_BITEQ(0.0f, point->_len);
  EXPECT_TRUE(std::isnan(point->_dir.x) && std::isnan(point->_dir.y) && std::isnan(point->_dir.z));
}

TEST_F(Ray, TriangleHitDependsOnTheSideAsked) {
  Triangle tri;
  RayHolder ray(zeVec3f(0.25f, 0.25f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(1.0f, tri.cast(ray, zeRay::FRONT_SIDE));
  expectVecBitEq(zeVec3f(0.25f, 0.25f, 0.0f), tri.hit);
  expectVecBitEq(zeVec3f(0, 0, 1), tri.normal);
  EXPECT_BITEQ(1.0f, tri.cast(ray, zeRay::BOTH_SIDES));
  EXPECT_BITEQ(1.0f, tri.cast(ray, 3u)) << "a sides value above 2 culls no side";

  // Culled: the normal is written all the same, the hit point is not.
  EXPECT_BITEQ(-2.0f, tri.cast(ray, zeRay::BACK_SIDE));
  expectVecBitEq(zeVec3f(0, 0, 1), tri.normal);
  expectVecBitEq(kSentinel, tri.hit);

  // From below, along the normal: the back face.
  RayHolder below(zeVec3f(0.25f, 0.25f, -1.0f), kUp, 2.0f);
  EXPECT_BITEQ(1.0f, tri.cast(below, zeRay::BACK_SIDE));
  EXPECT_BITEQ(-2.0f, tri.cast(below, zeRay::FRONT_SIDE));
}

TEST_F(Ray, TriangleOutOfReachAndMissed) {
  Triangle tri;
  RayHolder shortRay(zeVec3f(0.25f, 0.25f, 1.0f), kDown, 0.5f);
  EXPECT_BITEQ(-3.0f, tri.cast(shortRay, zeRay::FRONT_SIDE));
  expectVecBitEq(kSentinel, tri.hit);
  expectVecBitEq(zeVec3f(0, 0, 1), tri.normal);

  RayHolder behind(zeVec3f(0.25f, 0.25f, -1.0f), kDown, 2.0f);
  EXPECT_BITEQ(-3.0f, tri.cast(behind, zeRay::BOTH_SIDES));

  // Reaching the plane exactly at _len is a hit.
  RayHolder exact(zeVec3f(0.25f, 0.25f, 1.0f), kDown, 1.0f);
  EXPECT_BITEQ(1.0f, tri.cast(exact, zeRay::FRONT_SIDE));

  // Beside the triangle: the hit point is written, the result is -4.
  RayHolder beside(zeVec3f(2.0f, 2.0f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(-4.0f, tri.cast(beside, zeRay::FRONT_SIDE));
  expectVecBitEq(zeVec3f(2, 2, 0), tri.hit);
}

TEST_F(Ray, TriangleStartingOnThePlaneDecidesBySignBitOfZero) {
  Triangle tri;
  // Going down, t = -(0) / -1 = +0: a hit at the start.
  RayHolder down(zeVec3f(0.25f, 0.25f, 0.0f), kDown, 1.0f);
  EXPECT_BITEQ(0.0f, tri.cast(down, zeRay::BOTH_SIDES));
  expectVecBitEq(zeVec3f(0.25f, 0.25f, 0.0f), tri.hit);
  // Going up, t = -(0) / 1 = -0, which counts as behind.
  RayHolder up(zeVec3f(0.25f, 0.25f, 0.0f), kUp, 1.0f);
  EXPECT_BITEQ(-3.0f, tri.cast(up, zeRay::BOTH_SIDES));
}

TEST_F(Ray, TriangleEdgesAndVerticesCountAsInside) {
  Triangle tri;
  RayHolder onEdge(zeVec3f(0.5f, 0.0f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(1.0f, tri.cast(onEdge, zeRay::FRONT_SIDE));
  RayHolder onHypotenuse(zeVec3f(0.5f, 0.5f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(1.0f, tri.cast(onHypotenuse, zeRay::FRONT_SIDE));
  RayHolder onVertex(zeVec3f(0.0f, 0.0f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(1.0f, tri.cast(onVertex, zeRay::FRONT_SIDE));
  RayHolder justOutside(zeVec3f(0.5f, -1e-6f, 1.0f), kDown, 2.0f);
  EXPECT_BITEQ(-4.0f, tri.cast(justOutside, zeRay::FRONT_SIDE));
}

TEST_F(Ray, ParallelAndNaNTestsAreSkippedOnlyForBothSides) {
  Triangle tri;
  // Exactly parallel: culled one-sided; two-sided, t = -1 / +0 = -inf is behind.
  RayHolder parallel(zeVec3f(0.25f, 0.25f, 1.0f), zeVec3f(1, 0, 0), 2.0f);
  EXPECT_BITEQ(-2.0f, tri.cast(parallel, zeRay::BACK_SIDE));
  EXPECT_BITEQ(-2.0f, tri.cast(parallel, 3u));
  EXPECT_BITEQ(-3.0f, tri.cast(parallel, zeRay::BOTH_SIDES));

  // Nearly parallel, d = -4e-7, meets the front: culled by the threshold
  // alone; two-sided, t = 2.5e6 lies beyond _len.
  RayHolder grazing(zeVec3f(0.25f, 0.25f, 1.0f), zeVec3f(1, 0, -4e-7f), 2.0f);
  EXPECT_BITEQ(-2.0f, tri.cast(grazing, zeRay::FRONT_SIDE));
  EXPECT_BITEQ(-3.0f, tri.cast(grazing, zeRay::BOTH_SIDES));
  // Just above the threshold the front is hit.
  RayHolder steep(zeVec3f(0.25f, 0.25f, 1e-6f), zeVec3f(0, 0, -6e-7f), 2.0f);
  const float d = -6e-7f;
  EXPECT_BITEQ(-(1e-6f * 1.0f) / d, tri.cast(steep, zeRay::FRONT_SIDE));

  // A NaN d is culled whatever its sign bit, also when no side is culled.
  RayHolder nan(zeVec3f(0.25f, 0.25f, 1.0f), zeVec3f(0, 0, kNaNf), 2.0f);
  EXPECT_BITEQ(-2.0f, tri.cast(nan, 3u));
  EXPECT_BITEQ(-2.0f, tri.cast(nan, zeRay::FRONT_SIDE));
}

TEST_F(Ray, TriangleNormalAndDistanceFollowTheWrittenOrder) {
  // A slanted triangle whose normal points towards the origin.
  Triangle tri;
  tri.v0 = zeVec3f(0, 0, 2);
  tri.v1 = zeVec3f(0, 3, 0);
  tri.v2 = zeVec3f(3, 0, 0);
  RayHolder ray(zeVec3f(0.5f, 0.5f, -1.0f), kUp, 10.0f);

  const float cx = 3.0f * -2.0f - -2.0f * 0.0f;  // e1 = (0, 3, -2), e2 = (3, 0, -2)
  const float cy = -2.0f * 3.0f - 0.0f * -2.0f;
  const float cz = 0.0f * 0.0f - 3.0f * 3.0f;
  const float scale = 1.0f / std::sqrt(cx * cx + cy * cy + cz * cz);
  const zeVec3f n(cx * scale, cy * scale, cz * scale);
  const float d = 0.0f * n.x + 0.0f * n.y + 1.0f * n.z;
  const float t = -((0.5f - 0.0f) * n.x + (0.5f - 0.0f) * n.y + (-1.0f - 2.0f) * n.z) / d;

  EXPECT_BITEQ(t, tri.cast(ray, zeRay::FRONT_SIDE));
  expectVecBitEq(n, tri.normal);
  expectVecBitEq(zeVec3f(0.5f + 0.0f * t, 0.5f + 0.0f * t, -1.0f + 1.0f * t), tri.hit);
}
