// The sphere volume: its fields, the type indices its registration hands out,
// then its routines table by table (the sphere first) at the comparisons that
// decide each result.

#include <cmath>
#include <limits>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using Sphere = zetest::CoreTest;
using zetest::kNaNf;

constexpr ZE_MATH_CONTAINMENT_RESULTS NONE = ZE_MATH_CONTAINMENT_RESULTS_NONE;
constexpr ZE_MATH_CONTAINMENT_RESULTS PARTIAL = ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
constexpr ZE_MATH_CONTAINMENT_RESULTS ALL = ZE_MATH_CONTAINMENT_RESULTS_ALL;
const zeVec3f kO(0.0f, 0.0f, 0.0f), kX(1.0f, 0.0f, 0.0f);

void expectVecBitEq(const zeVec3f& expected, const zeVec3f& actual) {
  EXPECT_BITEQ(expected.x, actual.x);
  EXPECT_BITEQ(expected.y, actual.y);
  EXPECT_BITEQ(expected.z, actual.z);
}

template <class T>
zeSmartPointer<T> create() {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}
zeSmartPointer<zeSphere> sphere(const zeVec3f& c, float r) {
  auto s = create<zeSphere>();
  s->_center = c;
  s->_radius = r;
  return s;
}
zeSmartPointer<zeAABox> box(const zeVec3f& lo, const zeVec3f& hi) {
  auto b = create<zeAABox>();
  b->_min = lo;
  b->_max = hi;
  return b;
}
// The half-space y <= offset.
zeSmartPointer<zePlane> planeY(float offset) {
  auto p = create<zePlane>();
  p->create(zeVec3f(0.0f, 1.0f, 0.0f), offset);
  return p;
}
zeSmartPointer<zeRay> ray(const zeVec3f& pos, const zeVec3f& dir, float len) {
  auto r = create<zeRay>();
  r->_pos = pos;
  r->_dir = dir;
  r->_len = len;
  return r;
}
float below(float v) { return std::nextafter(v, -INFINITY); }
float above(float v) { return std::nextafter(v, INFINITY); }

// The growth of a non-empty sphere (c, r) by point q, as written.
void extendByHand(zeVec3f& c, float& r, const zeVec3f& q) {
  const float dx = c.x - q.x, dy = c.y - q.y, dz = c.z - q.z;
  const float x = dx * dx + dy * dy + dz * dz;
  if (r * r >= x) return;
  const float len = std::sqrt(x), k = r / len;
  c = zeVec3f((c.x + dx * k) * 0.5f + q.x * 0.5f, (c.y + dy * k) * 0.5f + q.y * 0.5f,
              (c.z + dz * k) * 0.5f + q.z * 0.5f);
  r = (len + r) * 0.5f;
}

}  // namespace

// --- fields and registration ---------------------------------------------------------

TEST_F(Sphere, StartsEmptyAndNumbersSphereBoxPlaneWhenRegisteredFirst) {
  zeSphere::bayRegister();
  // The sphere's box routines register the box, whose plane routines register the plane.
  EXPECT_EQ(zeVolume::getTypeIndex(zeSphere::getClassMeta()), 0u);
  ASSERT_NE(zeAABox::getClassMeta(), nullptr);
  ASSERT_NE(zePlane::getClassMeta(), nullptr);
  EXPECT_EQ(zeVolume::getTypeIndex(zeAABox::getClassMeta()), 1u);
  EXPECT_EQ(zeVolume::getTypeIndex(zePlane::getClassMeta()), 2u);

  zeMetaObject* meta = zeSphere::getClassMeta();
  const int n = meta->getMetaFieldCount();
  EXPECT_EQ(zeSphere::k_center, meta->getIndexedMetaField(n - 2));
  EXPECT_STREQ(zeSphere::k_center->getName(), "_center");
  EXPECT_EQ(zeSphere::k_radius, meta->getIndexedMetaField(n - 1));
  EXPECT_STREQ(zeSphere::k_radius->getName(), "_radius");
  auto s = create<zeSphere>();
  expectVecBitEq(kO, s->_center);
  EXPECT_BITEQ(-1.0f, s->_radius);
}

// --- intersection ----------------------------------------------------------------------

TEST_F(Sphere, IntersectsSpheresBoxesAndPlanesItReaches) {
  auto a = sphere(kO, 1.0f), b = sphere(zeVec3f(3.0f, 0.0f, 0.0f), 2.0f);
  EXPECT_TRUE(a->intersect(b.get()));  // touching: (1 + 2)^2 >= 9
  b->_center.x = above(3.0f);
  EXPECT_FALSE(a->intersect(b.get()));
  EXPECT_TRUE(sphere(kO, 0.0f)->intersect(sphere(kO, 0.0f).get()));
  for (float rb : {-1.0f, kNaNf}) EXPECT_FALSE(a->intersect(sphere(kO, rb).get()));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(a.get()));

  auto cube = box(zeVec3f(-1.0f, -1.0f, -1.0f), zeVec3f(1.0f, 1.0f, 1.0f));
  EXPECT_TRUE(sphere(zeVec3f(2.0f, 2.0f, 0.0f), 1.5f)->intersect(cube.get()));  // 2 <= 2.25 off an edge
  EXPECT_FALSE(sphere(zeVec3f(2.0f, 2.0f, 0.0f), 1.4f)->intersect(cube.get()));
  EXPECT_TRUE(sphere(zeVec3f(3.0f, 0.0f, 0.0f), 2.0f)->intersect(cube.get()));  // touching a face
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(cube.get()));
  EXPECT_FALSE(sphere(kO, 100.0f)->intersect(create<zeAABox>().get()));
  // Emptiness is decided on x alone: a box flipped in y is a box.
  EXPECT_TRUE(sphere(kO, 1.0f)->intersect(box(zeVec3f(-1.0f, 1.0f, -1.0f), zeVec3f(1.0f, -1.0f, 1.0f)).get()));

  auto p = planeY(2.0f);
  EXPECT_TRUE(sphere(zeVec3f(0.0f, 3.0f, 0.0f), 1.0f)->intersect(p.get()));  // 2 + 1 - 3 >= 0
  EXPECT_FALSE(sphere(zeVec3f(0.0f, 3.5f, 0.0f), 1.0f)->intersect(p.get()));
  EXPECT_TRUE(sphere(zeVec3f(0.0f, -50.0f, 0.0f), 1.0f)->intersect(p.get()));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(p.get()));
}

TEST_F(Sphere, MeetsARayAtItsSurfaceWithinTheLength) {
  auto s = sphere(kO, 1.0f);
  auto r = ray(zeVec3f(-3.0f, 0.0f, 0.0f), kX, 2.0f);  // the near hit at t = 2
  EXPECT_TRUE(s->intersect(r.get()));
  r->_len = below(2.0f);
  EXPECT_FALSE(s->intersect(r.get()));
  // From the centre only a ray reaching the far side meets it, on purpose.
  EXPECT_FALSE(s->intersect(ray(kO, kX, 0.5f).get()));
  EXPECT_TRUE(s->intersect(ray(kO, kX, 1.0f).get()));
  EXPECT_FALSE(s->intersect(ray(zeVec3f(3.0f, 0.0f, 0.0f), kX, 100.0f).get()));  // pointing away
  EXPECT_TRUE(s->intersect(ray(zeVec3f(-3.0f, 1.0f, 0.0f), kX, 3.0f).get()));    // grazing
  EXPECT_FALSE(s->intersect(ray(zeVec3f(-3.0f, above(1.0f), 0.0f), kX, 3.0f).get()));
  EXPECT_TRUE(sphere(kO, 0.0f)->intersect(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 1.0f).get()));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 5.0f).get()));
}

// --- containment -------------------------------------------------------------------------

TEST_F(Sphere, ContainsPointsAndSpheres) {
  auto s = sphere(zeVec3f(1.0f, 2.0f, 2.0f), 3.0f);
  EXPECT_EQ(s->contains(zeVec3f(1.0f, 2.0f, 5.0f)), ALL);  // on the surface
  EXPECT_EQ(s->contains(zeVec3f(1.0f, 2.0f, above(5.0f))), NONE);
  EXPECT_EQ(s->contains(zeVec3f(kNaNf, 0.0f, 0.0f)), NONE);
  EXPECT_EQ(sphere(kO, 0.0f)->contains(kO), ALL);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(kO), NONE);

  auto a = sphere(kO, 3.0f);
  const struct {
    float x, rb;
    ZE_MATH_CONTAINMENT_RESULTS expected;
  } cases[] = {
      {2.0f, 1.0f, ALL},             // touching from inside: (3 - 1)^2 >= 4
      {above(2.0f), 1.0f, PARTIAL},  //
      {4.0f, 1.0f, PARTIAL},         // touching from outside
      {4.5f, 1.0f, NONE},            //
      {0.0f, 5.0f, PARTIAL},         // a larger b is at most partly inside
      {0.0f, -1.0f, ALL},            // b's emptiness is not tested
  };
  for (const auto& c : cases) EXPECT_EQ(a->contains(sphere(zeVec3f(c.x, 0.0f, 0.0f), c.rb).get()), c.expected) << c.x;
  EXPECT_EQ(sphere(kO, -1.0f)->contains(a.get()), NONE);
  EXPECT_EQ(sphere(kO, kNaNf)->contains(a.get()), NONE);
}

TEST_F(Sphere, ContainsBoxesByTheirFarthestAndNearestCorners) {
  auto cube = box(zeVec3f(-1.0f, -1.0f, -1.0f), zeVec3f(1.0f, 1.0f, 1.0f));
  EXPECT_EQ(sphere(kO, 2.0f)->contains(cube.get()), ALL);
  EXPECT_EQ(sphere(kO, 1.5f)->contains(cube.get()), NONE);  // inside, short of every corner: on purpose
  EXPECT_EQ(sphere(zeVec3f(1.0f, 1.0f, 1.0f), 0.5f)->contains(cube.get()), PARTIAL);
  auto slab = box(kO, zeVec3f(2.0f, 1.0f, 2.0f));  // farthest corner at 3, nearest at 0
  EXPECT_EQ(sphere(kO, 3.0f)->contains(slab.get()), ALL);
  EXPECT_EQ(sphere(kO, below(3.0f))->contains(slab.get()), PARTIAL);
  auto unit = box(kO, zeVec3f(1.0f, 1.0f, 1.0f));  // nearest corner at 1 from (2, 0, 0)
  EXPECT_EQ(sphere(zeVec3f(2.0f, 0.0f, 0.0f), 1.0f)->contains(unit.get()), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(2.0f, 0.0f, 0.0f), below(1.0f))->contains(unit.get()), NONE);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(unit.get()), NONE);
  // The box's emptiness is not tested: the empty box lies at infinite squared distance.
  EXPECT_EQ(sphere(kO, 1e6f)->contains(create<zeAABox>().get()), NONE);
  EXPECT_EQ(sphere(kO, std::numeric_limits<float>::max())->contains(create<zeAABox>().get()), ALL);
}

TEST_F(Sphere, ContainsPlanesAtMostPartlyAndRaysByTheirEnds) {
  auto p = planeY(2.0f);
  EXPECT_EQ(sphere(zeVec3f(0.0f, 3.0f, 0.0f), 1.0f)->contains(p.get()), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(0.0f, -50.0f, 0.0f), 1.0f)->contains(p.get()), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(0.0f, 3.5f, 0.0f), 1.0f)->contains(p.get()), NONE);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(p.get()), NONE);

  auto s = sphere(kO, 1.0f);
  const struct {
    float start, len;
    ZE_MATH_CONTAINMENT_RESULTS expected;
  } cases[] = {
      {-0.5f, 1.5f, ALL},      // the end on the surface
      {-0.5f, 2.0f, PARTIAL},  // start inside
      {-3.0f, 2.0f, PARTIAL},  // end inside
      {-3.0f, 5.0f, PARTIAL},  // through it
      {-3.0f, 1.5f, NONE},     // short of it
  };
  for (const auto& c : cases) EXPECT_EQ(s->contains(ray(zeVec3f(c.start, 0.0f, 0.0f), kX, c.len).get()), c.expected);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(ray(zeVec3f(-3.0f, 0.0f, 0.0f), kX, 5.0f).get()), NONE);
}

// --- extension ------------------------------------------------------------------------------

TEST_F(Sphere, GrowsByPointsAndRays) {
  auto s = create<zeSphere>();
  s->extendBy(zeVec3f(1.0f, 2.0f, 3.0f));
  expectVecBitEq(zeVec3f(1.0f, 2.0f, 3.0f), s->_center);
  EXPECT_BITEQ(0.0f, s->_radius);
  s->extendBy(zeVec3f(1.0f, 2.0f, 5.0f));
  expectVecBitEq(zeVec3f(1.0f, 2.0f, 4.0f), s->_center);
  EXPECT_BITEQ(1.0f, s->_radius);
  s->extendBy(zeVec3f(1.0f, 2.0f, 3.0f));  // on the surface
  EXPECT_BITEQ(1.0f, s->_radius);
  zeVec3f c = s->_center;
  float r = s->_radius;
  const zeVec3f q(-2.3f, 0.7f, 9.1f);
  extendByHand(c, r, q);
  s->extendBy(q);
  expectVecBitEq(c, s->_center);
  EXPECT_BITEQ(r, s->_radius);

  auto t = create<zeSphere>();
  t->extendBy(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 4.0f).get());
  expectVecBitEq(kX, t->_center);
  EXPECT_BITEQ(2.0f, t->_radius);
  t->extendBy(planeY(-100.0f).get());  // left at the default: no change
  EXPECT_BITEQ(2.0f, t->_radius);
}

TEST_F(Sphere, GrowsBySpheres) {
  auto a = create<zeSphere>();
  a->extendBy(sphere(zeVec3f(1.0f, 2.0f, 3.0f), 0.5f).get());  // an empty a takes b
  expectVecBitEq(zeVec3f(1.0f, 2.0f, 3.0f), a->_center);
  a->extendBy(create<zeSphere>().get());  // an empty b adds nothing
  EXPECT_BITEQ(0.5f, a->_radius);

  auto small = sphere(kO, 1.0f), outer = sphere(kO, 3.0f);
  small->extendBy(sphere(kX, 3.0f).get());  // nested inside b
  expectVecBitEq(kX, small->_center);
  EXPECT_BITEQ(3.0f, small->_radius);
  outer->extendBy(sphere(kX, 1.0f).get());                         // b nested inside
  outer->extendBy(sphere(zeVec3f(2.0f, 0.0f, 0.0f), 1.0f).get());  // touching inside: spanned, same sphere
  expectVecBitEq(kO, outer->_center);
  EXPECT_BITEQ(3.0f, outer->_radius);

  // Concentric up to a squared distance of 5e-7: the centre stays, the larger
  // radius wins, b's on a tie (told apart by -0 and +0).
  auto near = sphere(kO, 1.0f);
  near->extendBy(sphere(zeVec3f(7e-4f, 0.0f, 0.0f), 2.0f).get());  // 4.9e-7
  expectVecBitEq(kO, near->_center);
  EXPECT_BITEQ(2.0f, near->_radius);
  auto zero = sphere(kO, -0.0f);
  zero->extendBy(sphere(kO, 0.0f).get());
  EXPECT_BITEQ(0.0f, zero->_radius);
  zero->extendBy(sphere(kO, -0.0f).get());
  EXPECT_BITEQ(-0.0f, zero->_radius);
  auto spanned = sphere(kO, 1.0f);
  spanned->extendBy(sphere(zeVec3f(8e-4f, 0.0f, 0.0f), 1.0f).get());  // 6.4e-7
  EXPECT_NEAR(spanned->_center.x, 4e-4f, 1e-6f);

  const zeVec3f ca(0.3f, -1.2f, 2.5f), cb(4.1f, 0.6f, -0.7f);
  const float ra = 0.8f, rb = 1.7f;
  auto p = sphere(ca, ra);
  p->extendBy(sphere(cb, rb).get());
  const float dx = ca.x - cb.x, dy = ca.y - cb.y, dz = ca.z - cb.z;
  const float len = std::sqrt(dx * dx + dy * dy + dz * dz), inv = 1.0f / len;
  const float ux = dx * inv, uy = dy * inv, uz = dz * inv;
  expectVecBitEq(
      zeVec3f((ca.x + ux * ra) * 0.5f + (cb.x - ux * rb) * 0.5f, (ca.y + uy * ra) * 0.5f + (cb.y - uy * rb) * 0.5f,
              (ca.z + uz * ra) * 0.5f + (cb.z - uz * rb) * 0.5f),
      p->_center);
  EXPECT_BITEQ(((ra + len) + rb) * 0.5f, p->_radius);
}

TEST_F(Sphere, GrowsByBoxesCornerByCornerInGetCornersOrder) {
  auto s = create<zeSphere>();
  s->extendBy(box(zeVec3f(1.0f, 2.0f, -1.0f), zeVec3f(3.0f, 4.0f, 0.0f)).get());  // the box's own sphere
  expectVecBitEq(zeVec3f(2.0f, 3.0f, -0.5f), s->_center);
  EXPECT_BITEQ(1.5f, s->_radius);
  s->extendBy(create<zeAABox>().get());
  EXPECT_BITEQ(1.5f, s->_radius);

  auto b = box(zeVec3f(2.0f, -3.1f, 0.7f), zeVec3f(5.3f, 1.9f, 4.4f));
  zeVec3f corners[8], c(0.1f, -0.4f, 0.3f);
  float r = 0.5f;
  b->getCorners(corners);
  for (const zeVec3f& corner : corners) extendByHand(c, r, corner);
  auto t = sphere(zeVec3f(0.1f, -0.4f, 0.3f), 0.5f);
  t->extendBy(b.get());
  expectVecBitEq(c, t->_center);
  EXPECT_BITEQ(r, t->_radius);
}

TEST_F(Sphere, RoutinesDispatchBackThroughTheTables) {
  auto s = sphere(kO, 1.0f);
  const zeMetaObject* meta = zeSphere::getClassMeta();
  zeVolume::setContainsVecFunction(meta, [](const zeVolume*, const zeVec3f&) { return ALL; });
  EXPECT_EQ(s->contains(ray(zeVec3f(50.0f, 0.0f, 0.0f), kX, 1.0f).get()), ALL);
  static int calls = 0;
  zeVolume::setExtendByVecFunction(meta, [](zeVolume*, const zeVec3f&) { ++calls; });
  s->extendBy(ray(kO, kX, 1.0f).get());
  s->extendBy(box(kO, zeVec3f(1.0f, 1.0f, 1.0f)).get());
  EXPECT_EQ(calls, 2 + 8);
  zeVolume::setIntersectionFunction(zePlane::getClassMeta(), meta,
                                    [](const zeVolume*, const zeVolume*) { return true; });
  EXPECT_EQ(s->contains(planeY(-100.0f).get()), PARTIAL);
}

// --- transform, empty, emptiness and centre ----------------------------------------------------

TEST_F(Sphere, TransformsByTheLongestAxisImage) {
  const float scales[][3] = {{2.0f, 2.0f, 2.0f}, {3.0f, 1.0f, 2.0f}, {1.0f, 3.0f, 2.0f}, {1.0f, 2.0f, 3.0f}};
  for (const auto& k : scales) {
    auto s = sphere(kX, 1.5f);
    zeVolume* v = s.get();
    v->transform(zeMatrix44f(k[0], 0, 0, 0, 0, k[1], 0, 0, 0, 0, k[2], 0, 1.0f, -2.0f, 0.5f, 1));
    expectVecBitEq(zeVec3f(k[0] + 1.0f, -2.0f, 0.5f), s->_center);
    EXPECT_BITEQ(k[0] == 2.0f && k[1] == 2.0f ? 3.0f : 4.5f, s->_radius);
  }
  auto e = sphere(kX, -1.0f);  // empty: the centre stays too
  e->transform(zeMatrix44f(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 5, 5, 1));
  expectVecBitEq(kX, e->_center);
}

TEST_F(Sphere, EmptiesByItsRadiusAlone) {
  auto s = sphere(zeVec3f(1.0f, 2.0f, 3.0f), 0.0f);
  for (float r : {0.0f, -0.0f, kNaNf}) {
    s->_radius = r;
    EXPECT_FALSE(s->isEmpty());
  }
  s->empty();
  EXPECT_TRUE(s->isEmpty());
  EXPECT_BITEQ(-1.0f, s->_radius);
  zeVec3f out(9.0f, 9.0f, 9.0f);
  s->getCenter(out);
  expectVecBitEq(zeVec3f(1.0f, 2.0f, 3.0f), out);
}
