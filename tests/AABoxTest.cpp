// The axis-aligned box: registration and its lists, corners, and its routines
// as first operand grouped by table (intersection, containment, extension),
// then rays and points, transform, empty and centre, each at the boundary
// where its comparisons decide.

#include <cfloat>
#include <cmath>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/Volumes.h"

using namespace Lux;
using namespace Lux::Math;

using namespace zetest;
using AABox = zetest::CoreTest;

namespace {

Held<zeAABox> unitBox() { return box(zeVec3f(-1, -1, -1), zeVec3f(1, 1, 1)); }
const zeVec3f kX(1, 0, 0), kUp(0, 1, 0), kO(0, 0, 0);

}  // namespace

TEST_F(AABox, RegistersEmptyDefaultsItsPartnersAndEveryRoutineButExtendByPlane) {
  zeAABox::bayRegister();
  zeMetaObject* meta = zeAABox::getClassMeta();
  ASSERT_NE(meta, nullptr);
  EXPECT_EQ(meta->getParent(), zeVolume::getClassMeta());
  ASSERT_EQ(meta->getMetaFieldCount(), 2);
  EXPECT_STREQ(meta->getIndexedMetaField(0)->getName(), "_min");
  EXPECT_STREQ(meta->getIndexedMetaField(1)->getName(), "_max");

  auto b = make<zeAABox>();
  expectVecBits(zeVec3f(FLT_MAX, FLT_MAX, FLT_MAX), b->_min);
  expectVecBits(zeVec3f(-FLT_MAX, -FLT_MAX, -FLT_MAX), b->_max);
  EXPECT_TRUE(b->isEmpty());

  const zeMetaObject *p = zePlane::getClassMeta(), *s = zeSphere::getClassMeta();
  EXPECT_EQ(zeVolume::getIntersectionFunction(meta, s), &zeAABox::zeAABoxIntersectSphere);
  EXPECT_EQ(zeVolume::getContainsFunction(meta, p), &zeAABox::zeAABoxContainsPlane);
  EXPECT_EQ(zeVolume::getExtendByFunction(meta, s), &zeAABox::zeAABoxExtendBySphere);
  EXPECT_EQ(zeVolume::getExtendByFunction(meta, p), &zeVolume::zeVolumeExtendByVolume);
  EXPECT_EQ(zeVolume::getGetCenterFunction(meta), &zeAABox::zeAABoxGetCenter);
}

TEST_F(AABox, ListsRegisterTheBoxAndOnlyTheCountedOneHoldsReferences) {
  auto counted = make<zeAABoxList>();
  auto plain = make<zeNonRefCountedAABoxList>();
  ASSERT_NE(zeAABox::getClassMeta(), nullptr);
  EXPECT_EQ(counted->getElementType(), zeAABox::getClassMeta());
  EXPECT_EQ(plain->getElementType(), zeAABox::getClassMeta());
  EXPECT_STREQ(plain->getMetaObject()->getName(), "zeNonRefCountedAABoxList");
  EXPECT_NE(plain->getMetaObject()->getMetaField("_data"), nullptr);
  auto b = unitBox();
  ASSERT_EQ(plain->setCount(1), kSuccess);
  plain->set(0, b);
  EXPECT_EQ(b->getReferenceCount(), 1u);
  counted->append(b);
  EXPECT_EQ(b->getReferenceCount(), 2u);
  EXPECT_EQ(plain->get(0), b);
}

TEST_F(AABox, CornersByOctantAndInBitOrder) {
  auto b = box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6));
  zeVec3f out(-7, -7, -7);
  b->getCorner(ZE_MATH_SPATIAL_REGION_XP_YN_ZN, out);
  expectVecBits(zeVec3f(4, 2, 3), out);
  zeVec3f corners[8];
  b->getCorners(corners);
  expectVecBits(zeVec3f(1, 2, 6), corners[1]);
  expectVecBits(zeVec3f(4, 5, 3), corners[6]);
  for (int i = 0; i < 8; ++i) {
    b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(~i & 7), out);
    expectVecBits(out, corners[i]);
  }
  out = zeVec3f(-7, -7, -7);
  b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(8), out);
  b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(-1), out);
  expectVecBits(zeVec3f(-7, -7, -7), out);
}

// --- intersection table -------------------------------------------------------

TEST_F(AABox, IntersectsBoxesSharingAFaceButNotEmptyOnesOrNaN) {
  auto a = unitBox();
  EXPECT_TRUE(a->intersect(box(zeVec3f(1, -1, -1), zeVec3f(3, 1, 1))));
  EXPECT_FALSE(a->intersect(box(zeVec3f(std::nextafter(1.0f, 2.0f), -1, -1), zeVec3f(3, 1, 1))));
  EXPECT_FALSE(a->intersect(make<zeAABox>()));
  EXPECT_FALSE(a->intersect(box(zeVec3f(0, kNaNf, 0), kO)));
}

TEST_F(AABox, IntersectsASphereAtExactlyItsRadius) {
  auto b = unitBox();
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(3, 0, 0), 2.0f)));  // touches the face
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(4, 5, 1), 5.0f)));  // touches an edge: 9 + 16
  EXPECT_FALSE(b->intersect(sphere(zeVec3f(4, 5, 1), std::nextafter(5.0f, 0.0f))));
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(1, 1, 1), 0.0f)));  // a point on the corner
  EXPECT_FALSE(b->intersect(sphere(kO, -1.0f)));              // empty sphere
  EXPECT_FALSE(b->intersect(sphere(kO, kNaNf)));
  EXPECT_FALSE(make<zeAABox>()->intersect(sphere(kO, FLT_MAX)));
  // A NaN centre is below and above nothing: it adds no distance.
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(kNaNf, 9, 0), 8.0f)));
}

TEST_F(AABox, IntersectsAPlaneByTheCornerOfTheCachedOctantsComplement) {
  // Inside is y >= 0 for the normal (0, -1, 0); the box spans y from -1 to 1.
  auto b = unitBox();
  auto down = plane(zeVec3f(0, -1, 0), 0.0f);
  EXPECT_TRUE(b->intersect(down));
  // A stale octant (the one of (0, 1, 0)) picks the corner at y = -1.
  down->_octant = ZE_MATH_SPATIAL_REGION_XP_YP_ZP;
  EXPECT_FALSE(b->intersect(down));
  // Touching: the corner lies on the plane.
  EXPECT_TRUE(b->intersect(plane(kUp, -1.0f)));
  EXPECT_FALSE(b->intersect(plane(kUp, -1.5f)));
  EXPECT_FALSE(make<zeAABox>()->intersect(plane(kUp, 0.0f)));
}

// --- containment table --------------------------------------------------------

TEST_F(AABox, ContainsBoxesNestedOrEqualAndAsksTheTablesWhetherTheyMeet) {
  auto a = box(kO, zeVec3f(2, 2, 2));
  EXPECT_EQ(a->contains(box(kO, zeVec3f(2, 2, 2))), ALL);
  EXPECT_EQ(a->contains(box(zeVec3f(1, 1, 1), zeVec3f(3, 1, 1))), PARTIAL);
  EXPECT_EQ(a->contains(box(zeVec3f(2, 0, 0), zeVec3f(3, 1, 1))), PARTIAL);  // a shared face
  EXPECT_EQ(a->contains(box(zeVec3f(3, 0, 0), zeVec3f(4, 1, 1))), NONE);
  EXPECT_EQ(a->contains(make<zeAABox>()), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(a), NONE);
  // Inverted on y only: not empty, and wholly inside.
  auto flat = box(zeVec3f(1, 1.5f, 1), zeVec3f(1.5f, 1, 1.5f));
  EXPECT_FALSE(flat->isEmpty());
  EXPECT_EQ(a->contains(flat), ALL);

  const zeMetaObject* meta = zeAABox::getClassMeta();
  zeVolume::setIntersectionFunction(meta, meta, &zeVolume::zeVolumeIntersectVolume);
  EXPECT_EQ(a->contains(box(zeVec3f(1, 1, 1), zeVec3f(1, 1, 1))), NONE);
}

TEST_F(AABox, ContainsASphereByItsFaceDistancesOnly) {
  auto b = unitBox();
  EXPECT_EQ(b->contains(sphere(kO, 1.0f)), ALL);  // touching every face from inside
  EXPECT_EQ(b->contains(sphere(zeVec3f(0.5f, 0, 0), 1.0f)), PARTIAL);
  EXPECT_EQ(b->contains(sphere(zeVec3f(0, 0, 0.25f), 0.0f)), ALL);
  // Touching a face from outside at exactly its radius, all other distances at least 1.
  EXPECT_EQ(b->contains(sphere(zeVec3f(2, 0, 0), 1.0f)), ALL);
  EXPECT_EQ(b->contains(sphere(zeVec3f(2.5f, 0, 0), 1.0f)), NONE);
  EXPECT_EQ(b->contains(sphere(kO, -1.0f)), NONE);
}

TEST_F(AABox, ContainsAPlaneAtMostPartially) {
  auto b = unitBox();
  EXPECT_EQ(b->contains(plane(kUp, 0.0f)), PARTIAL);
  EXPECT_EQ(b->contains(plane(kUp, 5.0f)), PARTIAL);
  EXPECT_EQ(b->contains(plane(kUp, -2.0f)), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(plane(kUp, 0.0f)), NONE);
}

// --- extension table ----------------------------------------------------------

TEST_F(AABox, ExtendsByBoxesAndSpheresButNotByPlanes) {
  auto b = make<zeAABox>();
  b->extendBy(box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6)));
  expectVecBits(zeVec3f(1, 2, 3), b->_min);
  expectVecBits(zeVec3f(4, 5, 6), b->_max);
  b->extendBy(make<zeAABox>());
  b->extendBy(sphere(zeVec3f(9, 9, 9), -1.0f));
  b->extendBy(plane(kUp, 100.0f));
  expectVecBits(zeVec3f(1, 2, 3), b->_min);
  expectVecBits(zeVec3f(4, 5, 6), b->_max);
  b->extendBy(sphere(zeVec3f(0.1f, 3, 7), 0.5f));
  expectVecBits(zeVec3f(0.1f - 0.5f, 2, 3), b->_min);
  expectVecBits(zeVec3f(4, 5, 7.5f), b->_max);
  b->extendBy(sphere(zeVec3f(2, 3, 4), 0.0f));  // a point inside: no change
  expectVecBits(zeVec3f(4, 5, 7.5f), b->_max);
}

// --- rays and points ----------------------------------------------------------

TEST_F(AABox, ContainsPointsOnItsFacesButNotNaN) {
  auto b = unitBox();
  EXPECT_EQ(b->contains(zeVec3f(1, -1, 0.5f)), ALL);
  EXPECT_EQ(b->contains(zeVec3f(1, std::nextafter(-1.0f, -2.0f), 0)), NONE);
  EXPECT_EQ(b->contains(zeVec3f(0, 0, kNaNf)), NONE);
  b->extendBy(zeVec3f(kNaNf, 3, 0));  // NaN compares false: only y grows
  expectVecBits(zeVec3f(1, 3, 1), b->_max);
  expectVecBits(zeVec3f(-1, -1, -1), b->_min);
}

TEST_F(AABox, IntersectsRaysStartingInsideOrReachingItWithinTheirLength) {
  auto b = unitBox();
  EXPECT_TRUE(b->intersect(ray(kX, kX, 0.0f)));
  EXPECT_TRUE(b->intersect(ray(zeVec3f(-3, 0, 0), kX, 2.0f)));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), kX, std::nextafter(2.0f, 0.0f))));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(-1, 0, 0), 10.0f)));       // pointing away
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(0.6f, 0.8f, 0), 10.0f)));  // passes by
  // Below the small threshold a direction component counts as parallel.
  const float threshold = zetest::floatFromBits(0x350637BD);
  EXPECT_TRUE(b->intersect(ray(zeVec3f(2, 0, 0), zeVec3f(-threshold, 0, 0), 1e7f)));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(2, 0, 0), zeVec3f(-std::nextafter(threshold, 0.0f), 0, 0), 1e7f)));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(2, 0, -5), zeVec3f(1e-7f, 0, 1), 10.0f)));
}

TEST_F(AABox, ContainsRaysByTheirEndsAndCrossings) {
  auto b = unitBox();
  EXPECT_EQ(b->contains(ray(zeVec3f(-1, 0, 0), kX, 2.0f)), ALL);
  EXPECT_EQ(b->contains(ray(kO, kX, 2.0f)), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(2, 0, 0), zeVec3f(-1, 0, 0), 1.5f)), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(-3, 0, 0), kX, 6.0f)), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(-3, 0, 0), kX, 1.0f)), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(ray(kO, kX, 1.0f)), NONE);
}

TEST_F(AABox, ExtendsByPointsAndBothEndsOfARay) {
  auto b = make<zeAABox>();
  b->extendBy(zeVec3f(1, 2, 3));
  expectVecBits(zeVec3f(1, 2, 3), b->_min);
  expectVecBits(zeVec3f(1, 2, 3), b->_max);
  b->extendBy(ray(zeVec3f(0, 2, 3), zeVec3f(0.6f, 0.8f, 0), 3.0f));
  expectVecBits(zeVec3f(0, 2, 3), b->_min);
  expectVecBits(zeVec3f(0 + 0.6f * 3.0f, 2 + 0.8f * 3.0f, 3), b->_max);
}

// --- transform, empty, centre -------------------------------------------------

TEST_F(AABox, TransformsBySummingTheLargerAndSmallerProductsPerAxis) {
  auto b = box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6));
  // Rows: x -> (0.5, -3, 0), y -> (1.5, 0, 0.25), z -> (0, 2, -1); translation (0.1, 0.2, 0.3).
  const zeMatrix44f m(0.5f, -3, 0, 7, 1.5f, 0, 0.25f, 7, 0, 2, -1, 7, 0.1f, 0.2f, 0.3f, 1);
  b->transform(m);
  expectVecBits(zeVec3f(((0.1f + 0.5f) + 3.0f) + 0.0f, ((0.2f + -12.0f) + 0.0f) + 6.0f, ((0.3f + 0.0f) + 0.5f) + -6.0f),
                b->_min);
  expectVecBits(
      zeVec3f(((0.1f + 2.0f) + 7.5f) + 0.0f, ((0.2f + -3.0f) + 0.0f) + 12.0f, ((0.3f + 0.0f) + 1.25f) + -3.0f),
      b->_max);
}

TEST_F(AABox, TransformDividesByWOnlyAboveTheThreshold) {
  zeMatrix44f m = zeMatrix44f::identityMatrix;
  m(0, 3) = 9.0f;  // never read
  const float ws[] = {2.0f, 0.0f, -2.0f, kNaNf, 1.0f};
  const float scale[] = {0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
  for (int k = 0; k < 5; ++k) {
    SCOPED_TRACE(ws[k]);
    auto b = box(zeVec3f(-2, 4, 6), zeVec3f(2, 8, 10));
    m(3, 3) = ws[k];
    b->transform(m);
    expectVecBits(zeVec3f(-2 * scale[k], 4 * scale[k], 6 * scale[k]), b->_min);
    expectVecBits(zeVec3f(2 * scale[k], 8 * scale[k], 10 * scale[k]), b->_max);
  }
  // Empty by its x axis alone: untouched; inverted on y only: transformed.
  m(3, 3) = 1.0f;
  m(3, 1) = 1.0f;
  auto e = box(kX, zeVec3f(0, 5, 5));
  e->transform(m);
  expectVecBits(kX, e->_min);
  auto f = box(zeVec3f(0, 5, 0), zeVec3f(1, 0, 1));
  f->transform(m);
  static_cast<zeVolume*>(f)->transform(m);  // through the table as well
  expectVecBits(zeVec3f(0, 2, 0), f->_min);
  expectVecBits(zeVec3f(1, 7, 1), f->_max);
}

TEST_F(AABox, EmptiesToTheDefaultsAndHalvesBeforeSummingTheCentre) {
  auto b = box(zeVec3f(FLT_MAX, -3, 1), zeVec3f(FLT_MAX, 4, 2));
  zeVec3f c;
  b->getCenter(c);
  expectVecBits(zeVec3f(FLT_MAX, -3 * 0.5f + 4 * 0.5f, 1.5f), c);  // no overflow
  EXPECT_FALSE(b->isEmpty());
  b->empty();
  EXPECT_TRUE(b->isEmpty());
  expectVecBits(zeVec3f(FLT_MAX, FLT_MAX, FLT_MAX), b->_min);
  expectVecBits(zeVec3f(-FLT_MAX, -FLT_MAX, -FLT_MAX), b->_max);
  b->getCenter(c);
  expectVecBits(kO, c);
}
