// The sphere volume: its fields, the type indices its registration hands out,
// then its routines table by table (the sphere first) at the comparisons that
// decide each result.

#include <cmath>
#include <limits>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/Volumes.h"

using namespace Lux;
using namespace Lux::Math;
using namespace zetest;

namespace {

using Sphere = zetest::CoreTest;

const zeVec3f kO(0.0f, 0.0f, 0.0f), kX(1.0f, 0.0f, 0.0f);

// The half-space y <= offset.
Held<zePlane> planeY(float offset) { return plane(zeVec3f(0.0f, 1.0f, 0.0f), offset); }
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

TEST_F(Sphere, RegistersItsFieldsAndStartsEmpty) {
  zeSphere::bayRegister();
  zeMetaObject* meta = zeSphere::getClassMeta();
  const int n = meta->getMetaFieldCount();
  EXPECT_EQ(zeSphere::k_center, meta->getIndexedMetaField(n - 2));
  EXPECT_STREQ(zeSphere::k_center->getName(), "_center");
  EXPECT_EQ(zeSphere::k_radius, meta->getIndexedMetaField(n - 1));
  EXPECT_STREQ(zeSphere::k_radius->getName(), "_radius");
  auto s = make<zeSphere>();
  expectVecBits(kO, s->_center);
  EXPECT_BITEQ(-1.0f, s->_radius);
}

// --- intersection ----------------------------------------------------------------------

TEST_F(Sphere, IntersectsSpheresBoxesAndPlanesItReaches) {
  auto a = sphere(kO, 1.0f), b = sphere(zeVec3f(3.0f, 0.0f, 0.0f), 2.0f);
  EXPECT_TRUE(a->intersect(b));  // touching: (1 + 2)^2 >= 9
  b->_center.x = above(3.0f);
  EXPECT_FALSE(a->intersect(b));
  EXPECT_TRUE(sphere(kO, 0.0f)->intersect(sphere(kO, 0.0f)));
  for (float rb : {-1.0f, kNaNf}) EXPECT_FALSE(a->intersect(sphere(kO, rb)));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(a));

  auto cube = box(zeVec3f(-1.0f, -1.0f, -1.0f), zeVec3f(1.0f, 1.0f, 1.0f));
  EXPECT_TRUE(sphere(zeVec3f(2.0f, 2.0f, 0.0f), 1.5f)->intersect(cube));  // 2 <= 2.25 off an edge
  EXPECT_FALSE(sphere(zeVec3f(2.0f, 2.0f, 0.0f), 1.4f)->intersect(cube));
  EXPECT_TRUE(sphere(zeVec3f(3.0f, 0.0f, 0.0f), 2.0f)->intersect(cube));  // touching a face
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(cube));
  EXPECT_FALSE(sphere(kO, 100.0f)->intersect(make<zeAABox>()));
  // Emptiness is decided on x alone: a box flipped in y is a box.
  EXPECT_TRUE(sphere(kO, 1.0f)->intersect(box(zeVec3f(-1.0f, 1.0f, -1.0f), zeVec3f(1.0f, -1.0f, 1.0f))));

  auto p = planeY(2.0f);
  EXPECT_TRUE(sphere(zeVec3f(0.0f, 3.0f, 0.0f), 1.0f)->intersect(p));  // 2 + 1 - 3 >= 0
  EXPECT_FALSE(sphere(zeVec3f(0.0f, 3.5f, 0.0f), 1.0f)->intersect(p));
  EXPECT_TRUE(sphere(zeVec3f(0.0f, -50.0f, 0.0f), 1.0f)->intersect(p));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(p));
}

TEST_F(Sphere, MeetsARayAtItsSurfaceWithinTheLength) {
  auto s = sphere(kO, 1.0f);
  auto r = ray(zeVec3f(-3.0f, 0.0f, 0.0f), kX, 2.0f);  // the near hit at t = 2
  EXPECT_TRUE(s->intersect(r));
  r->_len = below(2.0f);
  EXPECT_FALSE(s->intersect(r));
  // From the centre only a ray reaching the far side meets it, on purpose.
  EXPECT_FALSE(s->intersect(ray(kO, kX, 0.5f)));
  EXPECT_TRUE(s->intersect(ray(kO, kX, 1.0f)));
  EXPECT_FALSE(s->intersect(ray(zeVec3f(3.0f, 0.0f, 0.0f), kX, 100.0f)));  // pointing away
  EXPECT_TRUE(s->intersect(ray(zeVec3f(-3.0f, 1.0f, 0.0f), kX, 3.0f)));    // grazing
  EXPECT_FALSE(s->intersect(ray(zeVec3f(-3.0f, above(1.0f), 0.0f), kX, 3.0f)));
  EXPECT_TRUE(sphere(kO, 0.0f)->intersect(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 1.0f)));
  EXPECT_FALSE(sphere(kO, -1.0f)->intersect(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 5.0f)));
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
  for (const auto& c : cases) EXPECT_EQ(a->contains(sphere(zeVec3f(c.x, 0.0f, 0.0f), c.rb)), c.expected) << c.x;
  EXPECT_EQ(sphere(kO, -1.0f)->contains(a), NONE);
  EXPECT_EQ(sphere(kO, kNaNf)->contains(a), NONE);
}

TEST_F(Sphere, ContainsBoxesByTheirFarthestAndNearestCorners) {
  auto cube = box(zeVec3f(-1.0f, -1.0f, -1.0f), zeVec3f(1.0f, 1.0f, 1.0f));
  EXPECT_EQ(sphere(kO, 2.0f)->contains(cube), ALL);
  EXPECT_EQ(sphere(kO, 1.5f)->contains(cube), NONE);  // inside, short of every corner: on purpose
  EXPECT_EQ(sphere(zeVec3f(1.0f, 1.0f, 1.0f), 0.5f)->contains(cube), PARTIAL);
  auto slab = box(kO, zeVec3f(2.0f, 1.0f, 2.0f));  // farthest corner at 3, nearest at 0
  EXPECT_EQ(sphere(kO, 3.0f)->contains(slab), ALL);
  EXPECT_EQ(sphere(kO, below(3.0f))->contains(slab), PARTIAL);
  auto unit = box(kO, zeVec3f(1.0f, 1.0f, 1.0f));  // nearest corner at 1 from (2, 0, 0)
  EXPECT_EQ(sphere(zeVec3f(2.0f, 0.0f, 0.0f), 1.0f)->contains(unit), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(2.0f, 0.0f, 0.0f), below(1.0f))->contains(unit), NONE);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(unit), NONE);
  // The box's emptiness is not tested: the empty box lies at infinite squared distance.
  EXPECT_EQ(sphere(kO, 1e6f)->contains(make<zeAABox>()), NONE);
  EXPECT_EQ(sphere(kO, std::numeric_limits<float>::max())->contains(make<zeAABox>()), ALL);
}

TEST_F(Sphere, ContainsPlanesAtMostPartlyAndRaysByTheirEnds) {
  auto p = planeY(2.0f);
  EXPECT_EQ(sphere(zeVec3f(0.0f, 3.0f, 0.0f), 1.0f)->contains(p), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(0.0f, -50.0f, 0.0f), 1.0f)->contains(p), PARTIAL);
  EXPECT_EQ(sphere(zeVec3f(0.0f, 3.5f, 0.0f), 1.0f)->contains(p), NONE);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(p), NONE);

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
  for (const auto& c : cases) EXPECT_EQ(s->contains(ray(zeVec3f(c.start, 0.0f, 0.0f), kX, c.len)), c.expected);
  EXPECT_EQ(sphere(kO, -1.0f)->contains(ray(zeVec3f(-3.0f, 0.0f, 0.0f), kX, 5.0f)), NONE);
}

// --- extension ------------------------------------------------------------------------------

TEST_F(Sphere, GrowsByPointsAndRays) {
  auto s = make<zeSphere>();
  s->extendBy(zeVec3f(1.0f, 2.0f, 3.0f));
  expectVecBits(zeVec3f(1.0f, 2.0f, 3.0f), s->_center);
  EXPECT_BITEQ(0.0f, s->_radius);
  s->extendBy(zeVec3f(1.0f, 2.0f, 5.0f));
  expectVecBits(zeVec3f(1.0f, 2.0f, 4.0f), s->_center);
  EXPECT_BITEQ(1.0f, s->_radius);
  s->extendBy(zeVec3f(1.0f, 2.0f, 3.0f));  // on the surface
  EXPECT_BITEQ(1.0f, s->_radius);
  zeVec3f c = s->_center;
  float r = s->_radius;
  const zeVec3f q(-2.3f, 0.7f, 9.1f);
  extendByHand(c, r, q);
  s->extendBy(q);
  expectVecBits(c, s->_center);
  EXPECT_BITEQ(r, s->_radius);

  auto t = make<zeSphere>();
  t->extendBy(ray(zeVec3f(-1.0f, 0.0f, 0.0f), kX, 4.0f));
  expectVecBits(kX, t->_center);
  EXPECT_BITEQ(2.0f, t->_radius);
  t->extendBy(planeY(-100.0f));  // left at the default: no change
  EXPECT_BITEQ(2.0f, t->_radius);
}

TEST_F(Sphere, GrowsBySpheres) {
  auto a = make<zeSphere>();
  a->extendBy(sphere(zeVec3f(1.0f, 2.0f, 3.0f), 0.5f));  // an empty a takes b
  expectVecBits(zeVec3f(1.0f, 2.0f, 3.0f), a->_center);
  a->extendBy(make<zeSphere>());  // an empty b adds nothing
  EXPECT_BITEQ(0.5f, a->_radius);

  auto small = sphere(kO, 1.0f), outer = sphere(kO, 3.0f);
  small->extendBy(sphere(kX, 3.0f));  // nested inside b
  expectVecBits(kX, small->_center);
  EXPECT_BITEQ(3.0f, small->_radius);
  outer->extendBy(sphere(kX, 1.0f));                         // b nested inside
  outer->extendBy(sphere(zeVec3f(2.0f, 0.0f, 0.0f), 1.0f));  // touching inside: spanned, same sphere
  expectVecBits(kO, outer->_center);
  EXPECT_BITEQ(3.0f, outer->_radius);

  // Concentric up to a squared distance of 5e-7: the centre stays, the larger
  // radius wins, b's on a tie (told apart by -0 and +0).
  auto near = sphere(kO, 1.0f);
  near->extendBy(sphere(zeVec3f(7e-4f, 0.0f, 0.0f), 2.0f));  // 4.9e-7
  expectVecBits(kO, near->_center);
  EXPECT_BITEQ(2.0f, near->_radius);
  auto zero = sphere(kO, -0.0f);
  zero->extendBy(sphere(kO, 0.0f));
  EXPECT_BITEQ(0.0f, zero->_radius);
  zero->extendBy(sphere(kO, -0.0f));
  EXPECT_BITEQ(-0.0f, zero->_radius);
  auto spanned = sphere(kO, 1.0f);
  spanned->extendBy(sphere(zeVec3f(8e-4f, 0.0f, 0.0f), 1.0f));  // 6.4e-7
  EXPECT_NEAR(spanned->_center.x, 4e-4f, 1e-6f);

  const zeVec3f ca(0.3f, -1.2f, 2.5f), cb(4.1f, 0.6f, -0.7f);
  const float ra = 0.9f, rb = 1.7f;  // ra + (len + rb) would round differently
  auto p = sphere(ca, ra);
  p->extendBy(sphere(cb, rb));
  const float dx = ca.x - cb.x, dy = ca.y - cb.y, dz = ca.z - cb.z;
  const float len = std::sqrt(dx * dx + dy * dy + dz * dz), inv = 1.0f / len;
  const float ux = dx * inv, uy = dy * inv, uz = dz * inv;
  expectVecBits(
      zeVec3f((ca.x + ux * ra) * 0.5f + (cb.x - ux * rb) * 0.5f, (ca.y + uy * ra) * 0.5f + (cb.y - uy * rb) * 0.5f,
              (ca.z + uz * ra) * 0.5f + (cb.z - uz * rb) * 0.5f),
      p->_center);
  EXPECT_BITEQ(((ra + len) + rb) * 0.5f, p->_radius);
}

TEST_F(Sphere, GrowsByBoxesCornerByCornerInGetCornersOrder) {
  auto s = make<zeSphere>();
  s->extendBy(box(zeVec3f(1.0f, 2.0f, -1.0f), zeVec3f(3.0f, 4.0f, 0.0f)));  // the box's own sphere
  expectVecBits(zeVec3f(2.0f, 3.0f, -0.5f), s->_center);
  EXPECT_BITEQ(1.5f, s->_radius);
  s->extendBy(make<zeAABox>());
  EXPECT_BITEQ(1.5f, s->_radius);

  auto b = box(zeVec3f(2.0f, -3.1f, 0.7f), zeVec3f(5.3f, 1.9f, 4.4f));
  zeVec3f corners[8], c(0.1f, -0.4f, 0.3f);
  float r = 0.5f;
  b->getCorners(corners);
  for (const zeVec3f& corner : corners) extendByHand(c, r, corner);
  auto t = sphere(zeVec3f(0.1f, -0.4f, 0.3f), 0.5f);
  t->extendBy(b);
  expectVecBits(c, t->_center);
  EXPECT_BITEQ(r, t->_radius);
}

TEST_F(Sphere, RoutinesDispatchBackThroughTheTables) {
  auto s = sphere(kO, 1.0f);
  const zeMetaObject* meta = zeSphere::getClassMeta();
  zeVolume::setContainsVecFunction(meta, [](const zeVolume*, const zeVec3f&) { return ALL; });
  EXPECT_EQ(s->contains(ray(zeVec3f(50.0f, 0.0f, 0.0f), kX, 1.0f)), ALL);
  static int calls = 0;
  zeVolume::setExtendByVecFunction(meta, [](zeVolume*, const zeVec3f&) { ++calls; });
  s->extendBy(ray(kO, kX, 1.0f));
  s->extendBy(box(kO, zeVec3f(1.0f, 1.0f, 1.0f)));
  EXPECT_EQ(calls, 2 + 8);
  zeVolume::setIntersectionFunction(zePlane::getClassMeta(), meta,
                                    [](const zeVolume*, const zeVolume*) { return true; });
  EXPECT_EQ(s->contains(planeY(-100.0f)), PARTIAL);
}

// --- transform, empty, emptiness and centre ----------------------------------------------------

TEST_F(Sphere, TransformsByTheLongestAxisImage) {
  const float scales[][3] = {{2.0f, 2.0f, 2.0f}, {3.0f, 1.0f, 2.0f}, {1.0f, 3.0f, 2.0f}, {1.0f, 2.0f, 3.0f}};
  for (const auto& k : scales) {
    auto s = sphere(kX, 1.5f);
    zeVolume* v = s;
    v->transform(zeMatrix44f(k[0], 0, 0, 0, 0, k[1], 0, 0, 0, 0, k[2], 0, 1.0f, -2.0f, 0.5f, 1));
    expectVecBits(zeVec3f(k[0] + 1.0f, -2.0f, 0.5f), s->_center);
    EXPECT_BITEQ(k[0] == 2.0f && k[1] == 2.0f ? 3.0f : 4.5f, s->_radius);
  }
  auto e = sphere(kX, -1.0f);  // empty: the centre stays too
  e->transform(zeMatrix44f(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 5, 5, 1));
  expectVecBits(kX, e->_center);
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
  expectVecBits(zeVec3f(1.0f, 2.0f, 3.0f), out);
}
