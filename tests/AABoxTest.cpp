// The axis-aligned box: registration and its lists, corners, and its routines
// as first operand grouped by table (intersection, containment, extension),
// then rays and points, transform, empty and centre, each at the boundary
// where its comparisons decide.

#include <cfloat>
#include <cmath>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using AABox = zetest::CoreTest;
using zetest::kNaNf;
using C = ZE_MATH_CONTAINMENT_RESULTS;
constexpr C NONE = ZE_MATH_CONTAINMENT_RESULTS_NONE;
constexpr C PARTIAL = ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
constexpr C ALL = ZE_MATH_CONTAINMENT_RESULTS_ALL;

void expectVecBitEq(const zeVec3f& expected, const zeVec3f& actual) {
  EXPECT_BITEQ(expected.x, actual.x);
  EXPECT_BITEQ(expected.y, actual.y);
  EXPECT_BITEQ(expected.z, actual.z);
}

// An object made by its class, released with the holder.
template <class T>
zeSmartPointer<T> make() {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}
zeSmartPointer<zeAABox> box(const zeVec3f& lo, const zeVec3f& hi) {
  zeSmartPointer<zeAABox> b = make<zeAABox>();
  b->_min = lo;
  b->_max = hi;
  return b;
}
zeSmartPointer<zeAABox> unitBox() { return box(zeVec3f(-1, -1, -1), zeVec3f(1, 1, 1)); }
zeSmartPointer<zeSphere> sphere(const zeVec3f& c, float r) {
  zeSmartPointer<zeSphere> s = make<zeSphere>();
  s->_center = c;
  s->_radius = r;
  return s;
}
// Fields set directly: the cached octant is whatever the caller says.
zeSmartPointer<zePlane> plane(const zeVec3f& n, float o, ZE_MATH_SPATIAL_REGION octant) {
  zeSmartPointer<zePlane> p = make<zePlane>();
  p->_norm = n;
  p->_offset = o;
  p->_octant = octant;
  return p;
}
zeSmartPointer<zeRay> ray(const zeVec3f& pos, const zeVec3f& dir, float len) {
  zeSmartPointer<zeRay> r = make<zeRay>();
  r->_pos = pos;
  r->_dir = dir;
  r->_len = len;
  return r;
}

}  // namespace

TEST_F(AABox, RegistersEmptyDefaultsItsPartnersAndEveryRoutineButExtendByPlane) {
  zeAABox::bayRegister();
  zeMetaObject* meta = zeAABox::getClassMeta();
  ASSERT_NE(meta, nullptr);
  EXPECT_EQ(meta->getParent(), zeVolume::getClassMeta());
  ASSERT_EQ(meta->getMetaFieldCount(), 2);
  EXPECT_STREQ(meta->getIndexedMetaField(0)->getName(), "_min");
  EXPECT_STREQ(meta->getIndexedMetaField(1)->getName(), "_max");
  // The box registers the plane before its (box, plane) entries, the plane the sphere.
  EXPECT_EQ(zeVolume::getTypeIndex(meta), 0u);
  EXPECT_EQ(zeVolume::getTypeIndex(zePlane::getClassMeta()), 1u);
  EXPECT_EQ(zeVolume::getTypeIndex(zeSphere::getClassMeta()), 2u);

  zeSmartPointer<zeAABox> b = make<zeAABox>();
  expectVecBitEq(zeVec3f(FLT_MAX, FLT_MAX, FLT_MAX), b->_min);
  expectVecBitEq(zeVec3f(-FLT_MAX, -FLT_MAX, -FLT_MAX), b->_max);
  EXPECT_TRUE(b->isEmpty());

  const zeMetaObject *p = zePlane::getClassMeta(), *s = zeSphere::getClassMeta();
  EXPECT_EQ(zeVolume::getIntersectionFunction(meta, s), &zeAABox::zeAABoxIntersectSphere);
  EXPECT_EQ(zeVolume::getContainsFunction(meta, p), &zeAABox::zeAABoxContainsPlane);
  EXPECT_EQ(zeVolume::getExtendByFunction(meta, s), &zeAABox::zeAABoxExtendBySphere);
  EXPECT_EQ(zeVolume::getExtendByFunction(meta, p), &zeVolume::zeVolumeExtendByVolume);
  EXPECT_EQ(zeVolume::getGetCenterFunction(meta), &zeAABox::zeAABoxGetCenter);
}

TEST_F(AABox, ListsRegisterTheBoxAndOnlyTheCountedOneHoldsReferences) {
  zeSmartPointer<zeAABoxList> counted = make<zeAABoxList>();
  zeSmartPointer<zeNonRefCountedAABoxList> plain = make<zeNonRefCountedAABoxList>();
  ASSERT_NE(zeAABox::getClassMeta(), nullptr);
  EXPECT_EQ(counted->getElementType(), zeAABox::getClassMeta());
  EXPECT_EQ(plain->getElementType(), zeAABox::getClassMeta());
  EXPECT_STREQ(plain->getMetaObject()->getName(), "zeNonRefCountedAABoxList");
  EXPECT_NE(plain->getMetaObject()->getMetaField("_data"), nullptr);
  zeSmartPointer<zeAABox> b = unitBox();
  ASSERT_EQ(plain->setCount(1), kSuccess);
  plain->set(0, b.get());
  EXPECT_EQ(b->getReferenceCount(), 1u);
  counted->append(b.get());
  EXPECT_EQ(b->getReferenceCount(), 2u);
  EXPECT_EQ(plain->get(0), b.get());
}

TEST_F(AABox, CornersByOctantAndInBitOrder) {
  zeSmartPointer<zeAABox> b = box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6));
  zeVec3f out(-7, -7, -7);
  b->getCorner(ZE_MATH_SPATIAL_REGION_XP_YN_ZN, out);
  expectVecBitEq(zeVec3f(4, 2, 3), out);
  zeVec3f corners[8];
  b->getCorners(corners);
  expectVecBitEq(zeVec3f(1, 2, 6), corners[1]);
  expectVecBitEq(zeVec3f(4, 5, 3), corners[6]);
  for (int i = 0; i < 8; ++i) {
    b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(~i & 7), out);
    expectVecBitEq(out, corners[i]);
  }
  out = zeVec3f(-7, -7, -7);
  b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(8), out);
  b->getCorner(static_cast<ZE_MATH_SPATIAL_REGION>(-1), out);
  expectVecBitEq(zeVec3f(-7, -7, -7), out);
}

// --- intersection table -------------------------------------------------------

TEST_F(AABox, IntersectsBoxesSharingAFaceButNotEmptyOnesOrNaN) {
  zeSmartPointer<zeAABox> a = unitBox();
  EXPECT_TRUE(a->intersect(box(zeVec3f(1, -1, -1), zeVec3f(3, 1, 1)).get()));
  EXPECT_FALSE(a->intersect(box(zeVec3f(std::nextafter(1.0f, 2.0f), -1, -1), zeVec3f(3, 1, 1)).get()));
  EXPECT_FALSE(a->intersect(make<zeAABox>().get()));
  EXPECT_FALSE(a->intersect(box(zeVec3f(0, kNaNf, 0), zeVec3f(0, 0, 0)).get()));
}

TEST_F(AABox, IntersectsASphereAtExactlyItsRadius) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(3, 0, 0), 2.0f).get()));  // touches the face
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(4, 5, 1), 5.0f).get()));  // touches an edge: 9 + 16
  EXPECT_FALSE(b->intersect(sphere(zeVec3f(4, 5, 1), std::nextafter(5.0f, 0.0f)).get()));
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(1, 1, 1), 0.0f).get()));    // a point on the corner
  EXPECT_FALSE(b->intersect(sphere(zeVec3f(0, 0, 0), -1.0f).get()));  // empty sphere
  EXPECT_FALSE(b->intersect(sphere(zeVec3f(0, 0, 0), kNaNf).get()));
  EXPECT_FALSE(make<zeAABox>()->intersect(sphere(zeVec3f(0, 0, 0), FLT_MAX).get()));
  // A NaN centre is below and above nothing: it adds no distance.
  EXPECT_TRUE(b->intersect(sphere(zeVec3f(kNaNf, 9, 0), 8.0f).get()));
}

TEST_F(AABox, IntersectsAPlaneByTheCornerOfTheCachedOctantsComplement) {
  // Inside is y >= 0 for the normal (0, -1, 0); the box spans y from -1 to 1.
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_TRUE(b->intersect(plane(zeVec3f(0, -1, 0), 0.0f, ZE_MATH_SPATIAL_REGION_XP_YN_ZP).get()));
  // A stale octant (the one of (0, 1, 0)) picks the corner at y = -1.
  EXPECT_FALSE(b->intersect(plane(zeVec3f(0, -1, 0), 0.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()));
  // Touching: the corner lies on the plane.
  EXPECT_TRUE(b->intersect(plane(zeVec3f(0, 1, 0), -1.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()));
  EXPECT_FALSE(b->intersect(plane(zeVec3f(0, 1, 0), -1.5f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()));
  EXPECT_FALSE(make<zeAABox>()->intersect(plane(zeVec3f(0, 1, 0), 0.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()));
}

// --- containment table --------------------------------------------------------

TEST_F(AABox, ContainsBoxesNestedOrEqualAndAsksTheTablesWhetherTheyMeet) {
  zeSmartPointer<zeAABox> a = box(zeVec3f(0, 0, 0), zeVec3f(2, 2, 2));
  EXPECT_EQ(a->contains(box(zeVec3f(0, 0, 0), zeVec3f(2, 2, 2)).get()), ALL);
  EXPECT_EQ(a->contains(box(zeVec3f(1, 1, 1), zeVec3f(3, 1, 1)).get()), PARTIAL);
  EXPECT_EQ(a->contains(box(zeVec3f(2, 0, 0), zeVec3f(3, 1, 1)).get()), PARTIAL);  // a shared face
  EXPECT_EQ(a->contains(box(zeVec3f(3, 0, 0), zeVec3f(4, 1, 1)).get()), NONE);
  EXPECT_EQ(a->contains(make<zeAABox>().get()), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(a.get()), NONE);
  // Inverted on y only: not empty, and wholly inside.
  zeSmartPointer<zeAABox> flat = box(zeVec3f(1, 1.5f, 1), zeVec3f(1.5f, 1, 1.5f));
  EXPECT_FALSE(flat->isEmpty());
  EXPECT_EQ(a->contains(flat.get()), ALL);

  const zeMetaObject* meta = zeAABox::getClassMeta();
  zeVolume::setIntersectionFunction(meta, meta, &zeVolume::zeVolumeIntersectVolume);
  EXPECT_EQ(a->contains(box(zeVec3f(1, 1, 1), zeVec3f(1, 1, 1)).get()), NONE);
}

TEST_F(AABox, ContainsASphereByItsFaceDistancesOnly) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_EQ(b->contains(sphere(zeVec3f(0, 0, 0), 1.0f).get()), ALL);  // touching every face from inside
  EXPECT_EQ(b->contains(sphere(zeVec3f(0.5f, 0, 0), 1.0f).get()), PARTIAL);
  EXPECT_EQ(b->contains(sphere(zeVec3f(0, 0, 0.25f), 0.0f).get()), ALL);
  // Touching a face from outside at exactly its radius, all other distances at least 1.
  EXPECT_EQ(b->contains(sphere(zeVec3f(2, 0, 0), 1.0f).get()), ALL);
  EXPECT_EQ(b->contains(sphere(zeVec3f(2.5f, 0, 0), 1.0f).get()), NONE);
  EXPECT_EQ(b->contains(sphere(zeVec3f(0, 0, 0), -1.0f).get()), NONE);
}

TEST_F(AABox, ContainsAPlaneAtMostPartially) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_EQ(b->contains(plane(zeVec3f(0, 1, 0), 0.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()), PARTIAL);
  EXPECT_EQ(b->contains(plane(zeVec3f(0, 1, 0), 5.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()), PARTIAL);
  EXPECT_EQ(b->contains(plane(zeVec3f(0, 1, 0), -2.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(plane(zeVec3f(0, 1, 0), 0.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get()), NONE);
}

// --- extension table ----------------------------------------------------------

TEST_F(AABox, ExtendsByBoxesAndSpheresButNotByPlanes) {
  zeSmartPointer<zeAABox> b = make<zeAABox>();
  b->extendBy(box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6)).get());
  expectVecBitEq(zeVec3f(1, 2, 3), b->_min);
  expectVecBitEq(zeVec3f(4, 5, 6), b->_max);
  b->extendBy(make<zeAABox>().get());
  b->extendBy(sphere(zeVec3f(9, 9, 9), -1.0f).get());
  b->extendBy(plane(zeVec3f(0, 1, 0), 100.0f, ZE_MATH_SPATIAL_REGION_XP_YP_ZP).get());
  expectVecBitEq(zeVec3f(1, 2, 3), b->_min);
  expectVecBitEq(zeVec3f(4, 5, 6), b->_max);
  b->extendBy(sphere(zeVec3f(0.1f, 3, 7), 0.5f).get());
  expectVecBitEq(zeVec3f(0.1f - 0.5f, 2, 3), b->_min);
  expectVecBitEq(zeVec3f(4, 5, 7.5f), b->_max);
  b->extendBy(sphere(zeVec3f(2, 3, 4), 0.0f).get());  // a point inside: no change
  expectVecBitEq(zeVec3f(4, 5, 7.5f), b->_max);
}

// --- rays and points ----------------------------------------------------------

TEST_F(AABox, ContainsPointsOnItsFacesButNotNaN) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_EQ(b->contains(zeVec3f(1, -1, 0.5f)), ALL);
  EXPECT_EQ(b->contains(zeVec3f(1, std::nextafter(-1.0f, -2.0f), 0)), NONE);
  EXPECT_EQ(b->contains(zeVec3f(0, 0, kNaNf)), NONE);
  b->extendBy(zeVec3f(kNaNf, 3, 0));  // NaN compares false: only y grows
  expectVecBitEq(zeVec3f(1, 3, 1), b->_max);
  expectVecBitEq(zeVec3f(-1, -1, -1), b->_min);
}

TEST_F(AABox, IntersectsRaysStartingInsideOrReachingItWithinTheirLength) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_TRUE(b->intersect(ray(zeVec3f(1, 0, 0), zeVec3f(1, 0, 0), 0.0f).get()));
  EXPECT_TRUE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(1, 0, 0), 2.0f).get()));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(1, 0, 0), std::nextafter(2.0f, 0.0f)).get()));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(-1, 0, 0), 10.0f).get()));       // pointing away
  EXPECT_FALSE(b->intersect(ray(zeVec3f(-3, 0, 0), zeVec3f(0.6f, 0.8f, 0), 10.0f).get()));  // passes by
  // Below the small threshold a direction component counts as parallel.
  const float threshold = zetest::floatFromBits(0x350637BD);
  EXPECT_TRUE(b->intersect(ray(zeVec3f(2, 0, 0), zeVec3f(-threshold, 0, 0), 1e7f).get()));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(2, 0, 0), zeVec3f(-std::nextafter(threshold, 0.0f), 0, 0), 1e7f).get()));
  EXPECT_FALSE(b->intersect(ray(zeVec3f(2, 0, -5), zeVec3f(1e-7f, 0, 1), 10.0f).get()));
}

TEST_F(AABox, ContainsRaysByTheirEndsAndCrossings) {
  zeSmartPointer<zeAABox> b = unitBox();
  EXPECT_EQ(b->contains(ray(zeVec3f(-1, 0, 0), zeVec3f(1, 0, 0), 2.0f).get()), ALL);
  EXPECT_EQ(b->contains(ray(zeVec3f(0, 0, 0), zeVec3f(1, 0, 0), 2.0f).get()), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(2, 0, 0), zeVec3f(-1, 0, 0), 1.5f).get()), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(-3, 0, 0), zeVec3f(1, 0, 0), 6.0f).get()), PARTIAL);
  EXPECT_EQ(b->contains(ray(zeVec3f(-3, 0, 0), zeVec3f(1, 0, 0), 1.0f).get()), NONE);
  EXPECT_EQ(make<zeAABox>()->contains(ray(zeVec3f(0, 0, 0), zeVec3f(1, 0, 0), 1.0f).get()), NONE);
}

TEST_F(AABox, ExtendsByPointsAndBothEndsOfARay) {
  zeSmartPointer<zeAABox> b = make<zeAABox>();
  b->extendBy(zeVec3f(1, 2, 3));
  expectVecBitEq(zeVec3f(1, 2, 3), b->_min);
  expectVecBitEq(zeVec3f(1, 2, 3), b->_max);
  b->extendBy(ray(zeVec3f(0, 2, 3), zeVec3f(0.6f, 0.8f, 0), 3.0f).get());
  expectVecBitEq(zeVec3f(0, 2, 3), b->_min);
  expectVecBitEq(zeVec3f(0 + 0.6f * 3.0f, 2 + 0.8f * 3.0f, 3), b->_max);
}

// --- transform, empty, centre -------------------------------------------------

TEST_F(AABox, TransformsBySummingTheLargerAndSmallerProductsPerAxis) {
  zeSmartPointer<zeAABox> b = box(zeVec3f(1, 2, 3), zeVec3f(4, 5, 6));
  // Rows: x -> (0.5, -3, 0), y -> (1.5, 0, 0.25), z -> (0, 2, -1); translation (0.1, 0.2, 0.3).
  const zeMatrix44f m(0.5f, -3, 0, 7, 1.5f, 0, 0.25f, 7, 0, 2, -1, 7, 0.1f, 0.2f, 0.3f, 1);
  b->transform(m);
  expectVecBitEq(
      zeVec3f(((0.1f + 0.5f) + 3.0f) + 0.0f, ((0.2f + -12.0f) + 0.0f) + 6.0f, ((0.3f + 0.0f) + 0.5f) + -6.0f), b->_min);
  expectVecBitEq(
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
    zeSmartPointer<zeAABox> b = box(zeVec3f(-2, 4, 6), zeVec3f(2, 8, 10));
    m(3, 3) = ws[k];
    b->transform(m);
    expectVecBitEq(zeVec3f(-2 * scale[k], 4 * scale[k], 6 * scale[k]), b->_min);
    expectVecBitEq(zeVec3f(2 * scale[k], 8 * scale[k], 10 * scale[k]), b->_max);
  }
  // Empty by its x axis alone: untouched; inverted on y only: transformed.
  m(3, 3) = 1.0f;
  m(3, 1) = 1.0f;
  zeSmartPointer<zeAABox> e = box(zeVec3f(1, 0, 0), zeVec3f(0, 5, 5));
  e->transform(m);
  expectVecBitEq(zeVec3f(1, 0, 0), e->_min);
  zeSmartPointer<zeAABox> f = box(zeVec3f(0, 5, 0), zeVec3f(1, 0, 1));
  f->transform(m);
  static_cast<zeVolume*>(f.get())->transform(m);  // through the table as well
  expectVecBitEq(zeVec3f(0, 2, 0), f->_min);
  expectVecBitEq(zeVec3f(1, 7, 1), f->_max);
}

TEST_F(AABox, EmptiesToTheDefaultsAndHalvesBeforeSummingTheCentre) {
  zeSmartPointer<zeAABox> b = box(zeVec3f(FLT_MAX, -3, 1), zeVec3f(FLT_MAX, 4, 2));
  zeVec3f c;
  b->getCenter(c);
  expectVecBitEq(zeVec3f(FLT_MAX, -3 * 0.5f + 4 * 0.5f, 1.5f), c);  // no overflow
  EXPECT_FALSE(b->isEmpty());
  b->empty();
  EXPECT_TRUE(b->isEmpty());
  expectVecBitEq(zeVec3f(FLT_MAX, FLT_MAX, FLT_MAX), b->_min);
  expectVecBitEq(zeVec3f(-FLT_MAX, -FLT_MAX, -FLT_MAX), b->_max);
  b->getCenter(c);
  expectVecBitEq(zeVec3f(0, 0, 0), c);
}
