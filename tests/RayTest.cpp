// Rays (registration, make, transform, the sides enum) and the ray/triangle
// test: its three failure codes, the sign-bit decisions between them, and
// which outputs each outcome writes.

#include <cmath>
#include <cstring>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/Volumes.h"

using namespace Lux;
using namespace Lux::Math;
using namespace zetest;

namespace {

using Ray = zetest::CoreTest;

const zeVec3f kSentinel(-7.0f, -7.0f, -7.0f), kDown(0.0f, 0.0f, -1.0f), kUp(0.0f, 0.0f, 1.0f);

// The triangle (0,0,0), (1,0,0), (0,1,0) in the z = 0 plane, normal +z.
struct Triangle {
  zeVec3f v0{0.0f, 0.0f, 0.0f}, v1{1.0f, 0.0f, 0.0f}, v2{0.0f, 1.0f, 0.0f};
  zeVec3f hit = kSentinel, normal = kSentinel;
  float cast(zeRay* ray, unsigned int sides) {
    hit = kSentinel;
    normal = kSentinel;
    return zeIntersect::intersectRay(ray, v0, v1, v2, hit, normal, sides);
  }
};

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

  auto r = make<zeRay>();
  expectVecBits(zeVec3f(0, 0, 0), r->_pos);
  expectVecBits(zeVec3f(0, 1, 0), r->_dir);
  EXPECT_BITEQ(0.0f, r->_len);

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
  auto r = ray(kSentinel, kSentinel, 0.0f);
  r->make(zeVec3f(1, 2, 3), zeVec3f(4, 6, 3));
  expectVecBits(zeVec3f(1, 2, 3), r->_pos);
  EXPECT_BITEQ(5.0f, r->_len);
  expectVecBits(zeVec3f(3.0f * (1.0f / 5.0f), 4.0f * (1.0f / 5.0f), 0.0f), r->_dir);

  // A zero-length segment keeps the zero difference as direction.
  r->make(zeVec3f(1, 2, 3), zeVec3f(1, 2, 3));
  EXPECT_BITEQ(0.0f, r->_len);
  expectVecBits(zeVec3f(0, 0, 0), r->_dir);

  // 4e-7 is below the threshold: direction and length keep their small values.
  const float tiny = 4e-7f;
  r->make(zeVec3f(0, 0, 0), zeVec3f(tiny, 0, 0));
  EXPECT_BITEQ(std::sqrt(tiny * tiny + 0.0f + 0.0f), r->_len);
  expectVecBits(zeVec3f(tiny, 0, 0), r->_dir);
  // 1e-6 is above it.
  r->make(zeVec3f(0, 0, 0), zeVec3f(1e-6f, 0, 0));
  EXPECT_BITEQ(1e-6f * (1.0f / std::sqrt(1e-6f * 1e-6f + 0.0f + 0.0f)), r->_dir.x);

  // The start may be the ray's own.
  r->make(r->_pos, zeVec3f(0, 3, 4));
  expectVecBits(zeVec3f(0, 0, 0), r->_pos);
  EXPECT_BITEQ(5.0f, r->_len);
}

TEST_F(Ray, TransformMapsBothEndsAndRenormalises) {
  // Scale (1, 3, 2), then translate by (1, 2, 3).
  const zeMatrix44f m(1, 0, 0, 0, 0, 3, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1);
  auto r = ray(zeVec3f(0, 0, 0), zeVec3f(0, 1, 0), 2.0f);
  r->transform(m);
  expectVecBits(zeVec3f(1, 2, 3), r->_pos);
  EXPECT_BITEQ(6.0f, r->_len);
  expectVecBits(zeVec3f(0.0f, 6.0f * (1.0f / 6.0f), 0.0f), r->_dir);

  // No guard: a ray of length 0 gets a NaN direction.
  auto point = ray(zeVec3f(1, 1, 1), zeVec3f(0, 1, 0), 0.0f);
  point->transform(m);
  EXPECT_BITEQ(0.0f, point->_len);
  EXPECT_TRUE(std::isnan(point->_dir.x) && std::isnan(point->_dir.y) && std::isnan(point->_dir.z));
}

// The result codes: -2 culled (the normal is written, the hit point not),
// -3 behind the start or beyond _len, -4 beside the triangle (the hit point
// is written). Starting on the plane, t is -(0) / d: +0 going down is a hit,
// -0 going up counts as behind. A sides value above 2 culls no side; only
// BOTH_SIDES skips the parallel test, and a NaN d is culled whatever its sign.
TEST_F(Ray, TriangleCastsByTheirResultCodes) {
  const zeVec3f above(0.25f, 0.25f, 1.0f), under(0.25f, 0.25f, -1.0f), onPlane(0.25f, 0.25f, 0.0f);
  const zeVec3f inside(0.25f, 0.25f, 0.0f), none = kSentinel;
  const struct Case {
    const char* what;
    zeVec3f pos, dir;
    float len;
    unsigned int sides;
    float expected;
    zeVec3f hit;
  } cases[] = {
      {"front", above, kDown, 2.0f, zeRay::FRONT_SIDE, 1.0f, inside},
      {"front, both", above, kDown, 2.0f, zeRay::BOTH_SIDES, 1.0f, inside},
      {"front, sides 3", above, kDown, 2.0f, 3u, 1.0f, inside},
      {"front, back asked", above, kDown, 2.0f, zeRay::BACK_SIDE, -2.0f, none},
      {"back", under, kUp, 2.0f, zeRay::BACK_SIDE, 1.0f, inside},
      {"back, front asked", under, kUp, 2.0f, zeRay::FRONT_SIDE, -2.0f, none},
      {"short", above, kDown, 0.5f, zeRay::FRONT_SIDE, -3.0f, none},
      {"behind", under, kDown, 2.0f, zeRay::BOTH_SIDES, -3.0f, none},
      {"exactly _len", above, kDown, 1.0f, zeRay::FRONT_SIDE, 1.0f, inside},
      {"beside", zeVec3f(2.0f, 2.0f, 1.0f), kDown, 2.0f, zeRay::FRONT_SIDE, -4.0f, zeVec3f(2, 2, 0)},
      {"on the plane, down", onPlane, kDown, 1.0f, zeRay::BOTH_SIDES, 0.0f, inside},
      {"on the plane, up", onPlane, kUp, 1.0f, zeRay::BOTH_SIDES, -3.0f, none},
      {"edge", zeVec3f(0.5f, 0.0f, 1.0f), kDown, 2.0f, zeRay::FRONT_SIDE, 1.0f, zeVec3f(0.5f, 0.0f, 0.0f)},
      {"hypotenuse", zeVec3f(0.5f, 0.5f, 1.0f), kDown, 2.0f, zeRay::FRONT_SIDE, 1.0f, zeVec3f(0.5f, 0.5f, 0.0f)},
      {"vertex", zeVec3f(0.0f, 0.0f, 1.0f), kDown, 2.0f, zeRay::FRONT_SIDE, 1.0f, zeVec3f(0.0f, 0.0f, 0.0f)},
      {"just outside", zeVec3f(0.5f, -1e-6f, 1.0f), kDown, 2.0f, zeRay::FRONT_SIDE, -4.0f, zeVec3f(0.5f, -1e-6f, 0.0f)},
      // Parallel: culled one-sided; two-sided, t = -1 / +0 = -inf is behind.
      {"parallel, back", above, zeVec3f(1, 0, 0), 2.0f, zeRay::BACK_SIDE, -2.0f, none},
      {"parallel, sides 3", above, zeVec3f(1, 0, 0), 2.0f, 3u, -2.0f, none},
      {"parallel, both", above, zeVec3f(1, 0, 0), 2.0f, zeRay::BOTH_SIDES, -3.0f, none},
      // d = -4e-7 meets the front: culled by the threshold alone; two-sided,
      // t = 2.5e6 lies beyond _len. Just above the threshold the front is hit.
      {"grazing, front", above, zeVec3f(1, 0, -4e-7f), 2.0f, zeRay::FRONT_SIDE, -2.0f, none},
      {"grazing, both", above, zeVec3f(1, 0, -4e-7f), 2.0f, zeRay::BOTH_SIDES, -3.0f, none},
      {"steep", zeVec3f(0.25f, 0.25f, 1e-6f), zeVec3f(0, 0, -6e-7f), 2.0f, zeRay::FRONT_SIDE, -(1e-6f * 1.0f) / -6e-7f,
       zeVec3f(0.25f, 0.25f, 1e-6f + -6e-7f * (-(1e-6f * 1.0f) / -6e-7f))},
      {"NaN d, sides 3", above, zeVec3f(0, 0, kNaNf), 2.0f, 3u, -2.0f, none},
      {"NaN d, front", above, zeVec3f(0, 0, kNaNf), 2.0f, zeRay::FRONT_SIDE, -2.0f, none},
  };
  Triangle tri;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_BITEQ(c.expected, tri.cast(ray(c.pos, c.dir, c.len), c.sides));
    expectVecBits(c.hit, tri.hit);
    if (!std::isnan(c.dir.z)) expectVecBits(zeVec3f(0, 0, 1), tri.normal);
  }
}

TEST_F(Ray, TriangleNormalAndDistanceFollowTheWrittenOrder) {
  // A slanted triangle whose normal points towards the origin.
  Triangle tri;
  tri.v0 = zeVec3f(0, 0, 2);
  tri.v1 = zeVec3f(0, 3, 0);
  tri.v2 = zeVec3f(3, 0, 0);
  auto r = ray(zeVec3f(0.5f, 0.5f, -1.0f), kUp, 10.0f);

  const float cx = 3.0f * -2.0f - -2.0f * 0.0f;  // e1 = (0, 3, -2), e2 = (3, 0, -2)
  const float cy = -2.0f * 3.0f - 0.0f * -2.0f;
  const float cz = 0.0f * 0.0f - 3.0f * 3.0f;
  const float scale = 1.0f / std::sqrt(cx * cx + cy * cy + cz * cz);
  const zeVec3f n(cx * scale, cy * scale, cz * scale);
  const float d = 0.0f * n.x + 0.0f * n.y + 1.0f * n.z;
  const float t = -((0.5f - 0.0f) * n.x + (0.5f - 0.0f) * n.y + (-1.0f - 2.0f) * n.z) / d;

  EXPECT_BITEQ(t, tri.cast(r, zeRay::FRONT_SIDE));
  expectVecBits(n, tri.normal);
  expectVecBits(zeVec3f(0.5f + 0.0f * t, 0.5f + 0.0f * t, -1.0f + 1.0f * t), tri.hit);
}
