// The plane volume: registration and its table entries, construction, the
// closest and intersection points, transform, and every routine with the
// plane as first operand at the boundaries its comparisons decide; then the
// two matrix projections that read a plane.

#include <cmath>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/MatrixSupport.h"
#include "support/Volumes.h"

using namespace Lux;
using namespace Lux::Math;
using namespace zetest;

using Plane = zetest::CoreTest;
const zeVec3f kUp(0, 1, 0), kDown(0, -1, 0), kOrigin(0, 0, 0);

// --- registration -------------------------------------------------------------

TEST_F(Plane, RegistersItsFieldsWithZeroDefaults) {
  auto p = make<zePlane>();
  zeMetaObject* meta = zePlane::getClassMeta();
  EXPECT_EQ(meta->getParent(), zeVolume::getClassMeta());
  const int first = meta->getMetaFieldCount() - 3;
  const char* const names[] = {"_norm", "_offset", "_octant"};
  zeMetaObject* const types[] = {zeVec3fMetaField::getClassMeta(), zeFloatMetaField::getClassMeta(),
                                 zeEnumMetaField::getClassMeta()};
  for (int i = 0; i < 3; ++i) {
    EXPECT_STREQ(meta->getIndexedMetaField(first + i)->getName(), names[i]);
    EXPECT_EQ(meta->getIndexedMetaField(first + i)->getMetaObject(), types[i]);
  }
  EXPECT_EQ(static_cast<zeEnumMetaField*>(zePlane::k_octant)->getMetaEnum(), getZE_MATH_SPATIAL_REGIONMetaEnum());
  expectVecBits(kOrigin, p->_norm);
  EXPECT_BITEQ(0.0f, p->_offset);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XP_YP_ZP);
}

// Whichever class registers first, each partner is registered before the
// plane's first pair with it, and all eighteen entries are the plane's.
TEST_F(Plane, InstallsItsEntriesWhicheverClassRegistersFirst) {
  struct Start {
    void (*registerFirst)();
    unsigned int plane, box, sphere;
  } const starts[] = {
      {&zePlane::bayRegister, 0, 1, 2}, {&zeAABox::bayRegister, 1, 0, 2}, {&zeSphere::bayRegister, 2, 1, 0}};
  using Fn = void (*)();
  for (const Start& start : starts) {
    BayCore::unregisterAllClasses();
    start.registerFirst();
    zeMetaObject *p = zePlane::getClassMeta(), *b = zeAABox::getClassMeta(), *s = zeSphere::getClassMeta();
    EXPECT_EQ(zeVolume::getTypeIndex(p), start.plane);
    EXPECT_EQ(zeVolume::getTypeIndex(b), start.box);
    EXPECT_EQ(zeVolume::getTypeIndex(s), start.sphere);
    const Fn installed[] = {Fn(zeVolume::getIntersectionFunction(p, b)), Fn(zeVolume::getIntersectionFunction(p, p)),
                            Fn(zeVolume::getIntersectionFunction(p, s)), Fn(zeVolume::getContainsFunction(p, b)),
                            Fn(zeVolume::getContainsFunction(p, p)),     Fn(zeVolume::getContainsFunction(p, s)),
                            Fn(zeVolume::getExtendByFunction(p, p)),     Fn(zeVolume::getExtendByFunction(p, b)),
                            Fn(zeVolume::getExtendByFunction(p, s)),     Fn(zeVolume::getRayIntersectionFunction(p)),
                            Fn(zeVolume::getContainsRayFunction(p)),     Fn(zeVolume::getExtendByRayFunction(p)),
                            Fn(zeVolume::getContainsVecFunction(p)),     Fn(zeVolume::getExtendByVecFunction(p)),
                            Fn(zeVolume::getTransformFunction(p)),       Fn(zeVolume::getEmptyFunction(p)),
                            Fn(zeVolume::getIsEmptyFunction(p)),         Fn(zeVolume::getGetCenterFunction(p))};
    const Fn expected[] = {Fn(&zePlane::zePlaneIntersectAABox),    Fn(&zePlane::zePlaneIntersectPlane),
                           Fn(&zePlane::zePlaneIntersectSphere),   Fn(&zePlane::zePlaneContainsAABox),
                           Fn(&zePlane::zePlaneContainsPlane),     Fn(&zePlane::zePlaneContainsSphere),
                           Fn(&zePlane::zePlaneExtendByAnyVolume), Fn(&zePlane::zePlaneExtendByAABox),
                           Fn(&zePlane::zePlaneExtendBySphere),    Fn(&zePlane::zePlaneIntersectRay),
                           Fn(&zePlane::zePlaneContainsRay),       Fn(&zePlane::zePlaneExtendByRay),
                           Fn(&zePlane::zePlaneContainsVec),       Fn(&zePlane::zePlaneExtendByVec),
                           Fn(&zePlane::zePlaneTransform),         Fn(&zePlane::zePlaneEmpty),
                           Fn(&zePlane::zePlaneIsEmpty),           Fn(&zePlane::zePlaneGetCenter)};
    for (int i = 0; i < 18; ++i) EXPECT_EQ(installed[i], expected[i]) << "entry " << i;
  }
}

// --- construction and queries ---------------------------------------------------

TEST_F(Plane, CreateFormsNormaliseAndRefreshTheOctant) {
  auto p = make<zePlane>();
  const float third = 1.0f / std::sqrt(3.0f), fifth = 1.0f / std::sqrt(0.0f + 9.0f + 16.0f);
  p->create(zeVec3f(0, 0, 1), zeVec3f(0, 1, 0), zeVec3f(1, 0, 0));  // clockwise seen from +(1, 1, 1)
  expectVecBits(zeVec3f(-third, -third, -third), p->_norm);
  EXPECT_BITEQ(-third, p->_offset);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XN_YN_ZN);
  p->create(zeVec3f(3, -4, 0), 7.5f);
  expectVecBits(zeVec3f(3 * fifth, -4 * fifth, 0), p->_norm);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XP_YN_ZP);
  const zeVec3f at(1.5f, 2.25f, -3.0f), n(0 * fifth, 3 * fifth, -4 * fifth);
  p->create(at, zeVec3f(0, 3, -4));
  expectVecBits(n, p->_norm);
  EXPECT_BITEQ(n.x * at.x + n.y * at.y + n.z * at.z, p->_offset);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XP_YP_ZN);
  p->create(kOrigin, 1.0f);  // no guard
  EXPECT_TRUE(std::isnan(p->_norm.x) && std::isnan(p->_norm.z));
  p->create(at, at, at);
  EXPECT_TRUE(std::isnan(p->_norm.y) && std::isnan(p->_offset));
}

TEST_F(Plane, SetNormalKeepsTheOffsetWhileAWrittenNormalLeavesTheOctantStale) {
  auto p = plane(kUp, 0.5f);
  auto straddling = box(zeVec3f(0, -1, 0), zeVec3f(1, 1, 1));
  p->setNormal(0.0f, -2.0f, 0.0f);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XP_YN_ZP);
  p->setNormal(zeVec3f(0, 0, 3));
  expectVecBits(zeVec3f(0, 0, 1), p->_norm);
  EXPECT_BITEQ(0.5f, p->_offset);
  p->setNormal(kDown);
  p->_offset = 0.0f;
  EXPECT_EQ(p->contains(straddling), PARTIAL);
  // Written through the field, the cached octant still says up, so the box
  // corners are those of the old normal.
  p->setNormal(kUp);
  p->_norm = kDown;
  EXPECT_EQ(p->contains(straddling), ALL);
}

TEST_F(Plane, ClosestPointAndIntersectionPoint) {
  auto p = plane(zeVec3f(1, 2, 2), 1.25f);
  const zeVec3f n = p->_norm, q(0.3f, -1.7f, 2.9f);
  const float k = -(n.x * q.x + n.y * q.y + n.z * q.z - 1.25f);
  zeVec3f out;
  p->findClosestPoint(q, out);
  expectVecBits(zeVec3f(q.x + n.x * k, q.y + n.y * k, q.z + n.z * k), out);

  auto ground = plane(kUp, 1.0f);
  const float t = -(0 * 2.0f + 1 * 3.0f + 0 * 0.0f - 1.0f) / (0 * 0.6f + 1 * -0.8f + 0 * 0.0f);
  auto r = ray(zeVec3f(2, 3, 0), zeVec3f(0.6f, -0.8f, 0), t);
  EXPECT_TRUE(ground->findIntersectionPoint(r, out));  // at exactly _len
  expectVecBits(zeVec3f(2 + 0.6f * t, 3 + -0.8f * t, 0 + 0 * t), out);
  r->_len = std::nextafter(t, 0.0f);
  EXPECT_FALSE(ground->findIntersectionPoint(r, out));
  r->_len = -1.0f;  // unbounded
  EXPECT_TRUE(ground->findIntersectionPoint(r, out));
  r->_dir = zeVec3f(0.6f, 0.8f, 0);  // behind the start: false, out written all the same
  EXPECT_FALSE(ground->findIntersectionPoint(r, out));
  EXPECT_BITEQ(3 + 0.8f * (-2.0f / 0.8f), out.y);
  // Just below the threshold the ray is parallel and out untouched; at it, not.
  const float threshold = zetest::floatFromBits(0x350637BD);
  r->_dir = zeVec3f(1, std::nextafter(threshold, 0.0f), 0);
  out = zeVec3f(-7, -7, -7);
  EXPECT_FALSE(ground->findIntersectionPoint(r, out));
  expectVecBits(zeVec3f(-7, -7, -7), out);
  r->_dir = zeVec3f(1, -threshold, 0);
  EXPECT_TRUE(ground->findIntersectionPoint(r, out));
}

TEST_F(Plane, TransformMovesAPointAndTurnsTheNormalByTheMatrixItself) {
  auto p = plane(zeVec3f(1, 0, 0), 2.0f);
  p->transform(zeMatrix44f(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 3, 5, 1));  // quarter turn, then a shift
  expectVecBits(kUp, p->_norm);
  EXPECT_BITEQ(5.0f, p->_offset);
  static_cast<zeVolume*>(p.get())->transform(zeMatrix44f(-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
  expectVecBits(kDown, p->_norm);
  EXPECT_EQ(p->_octant, ZE_MATH_SPATIAL_REGION_XP_YN_ZP);
  // A scale of (2, 1, 1) turns the normal (1, 1, 0) towards x, where the
  // inverse transpose would turn it away.
  p->create(zeVec3f(1, 1, 0), 1.0f);
  const zeVec3f n0 = p->_norm, q(n0.x * 2, n0.y, n0.z);
  p->transform(zeMatrix44f(2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
  const float s = 1.0f / std::sqrt(n0.x * 2 * (n0.x * 2) + n0.y * n0.y + n0.z * n0.z);
  const zeVec3f n(n0.x * 2 * s, n0.y * s, n0.z * s);
  expectVecBits(n, p->_norm);
  EXPECT_BITEQ(n.x * q.x + n.y * q.y + n.z * q.z, p->_offset);
}

// --- intersection ---------------------------------------------------------------

TEST_F(Plane, IntersectsBoxesPlanesAndSpheres) {
  auto floor = plane(kDown, 0.0f);  // inside y >= 0; the corner against the normal is (min.x, max.y, min.z)
  EXPECT_TRUE(floor->intersect(box(zeVec3f(0, -2, 0), zeVec3f(1, 0, 1))));
  EXPECT_FALSE(floor->intersect(box(zeVec3f(0, -2, 0), zeVec3f(1, -1e-3f, 1))));
  auto ceiling = plane(kUp, 10.0f);  // only x decides emptiness
  EXPECT_TRUE(ceiling->intersect(box(zeVec3f(0, 5, 0), zeVec3f(1, -5, 1))));
  EXPECT_FALSE(ceiling->intersect(box(zeVec3f(2, 5, 0), zeVec3f(1, -5, 1))));
  EXPECT_FALSE(ceiling->intersect(make<zeAABox>()));

  // Opposite normals meet when the offsets sum to 0 or more.
  auto a = plane(kUp, 1.0f), b = plane(kDown, -2.0f);
  EXPECT_FALSE(a->intersect(b));
  b->_norm.x = 5e-4f;  // |a.n + b.n|^2 = 2.5e-7: still opposite
  EXPECT_FALSE(a->intersect(b));
  b->_norm.x = 1e-3f;  // 1e-6: not opposite
  EXPECT_TRUE(a->intersect(b));
  b->_norm.x = kNaNf;
  EXPECT_TRUE(a->intersect(b));
  EXPECT_TRUE(a->intersect(plane(kDown, -1.0f)));

  auto ground = plane(kUp, 0.0f);
  EXPECT_TRUE(ground->intersect(sphere(zeVec3f(4, 2, 0), 2.0f)));  // touching from outside
  EXPECT_FALSE(ground->intersect(sphere(zeVec3f(4, 2.001f, 0), 2.0f)));
  EXPECT_TRUE(ground->intersect(sphere(kOrigin, 0.0f)));
  EXPECT_FALSE(ground->intersect(sphere(zeVec3f(0, -5, 0), kNaNf)));
  EXPECT_FALSE(ground->intersect(make<zeSphere>()));
}

// --- containment ----------------------------------------------------------------

TEST_F(Plane, ContainsPointsBoxesAndSpheres) {
  auto p = plane(kUp, 2.0f);
  EXPECT_EQ(p->contains(zeVec3f(5, 2, -7)), ALL);
  EXPECT_EQ(p->contains(zeVec3f(0, 2.001f, 0)), NONE);
  EXPECT_EQ(p->contains(zeVec3f(0, kNaNf, 0)), NONE);

  auto floor = plane(kDown, 0.0f);                                                // inside y >= 0
  EXPECT_EQ(floor->contains(box(zeVec3f(0, 0, 0), zeVec3f(1, 2, 1))), ALL);       // far corner on the plane
  EXPECT_EQ(floor->contains(box(zeVec3f(0, -1, 0), zeVec3f(1, 0, 1))), PARTIAL);  // near corner on it
  EXPECT_EQ(floor->contains(box(zeVec3f(0, -1, 0), zeVec3f(1, -0.5f, 1))), NONE);
  EXPECT_EQ(floor->contains(make<zeAABox>()), NONE);
  auto straddling = box(zeVec3f(0, -1, 0), zeVec3f(1, 1, 1));
  EXPECT_EQ(floor->contains(straddling), PARTIAL);
  for (int octant : {0, 8, 9, -1}) {  // counted as 0: _max first, then _min
    floor->_octant = static_cast<ZE_MATH_SPATIAL_REGION>(octant);
    EXPECT_EQ(floor->contains(straddling), ALL) << octant;
  }
  floor->_octant = ZE_MATH_SPATIAL_REGION_XN_YN_ZN;  // _min first, then _max
  EXPECT_EQ(floor->contains(straddling), PARTIAL);

  auto ground = plane(kUp, 0.0f);
  EXPECT_EQ(ground->contains(sphere(zeVec3f(0, -2, 0), 2.0f)), ALL);     // tangent from inside
  EXPECT_EQ(ground->contains(sphere(zeVec3f(0, 2, 0), 2.0f)), PARTIAL);  // tangent from outside
  EXPECT_EQ(ground->contains(sphere(zeVec3f(0, 2.5f, 0), 2.0f)), NONE);
  EXPECT_EQ(ground->contains(sphere(kOrigin, 0.0f)), ALL);
  EXPECT_EQ(ground->contains(make<zeSphere>()), NONE);
}

TEST_F(Plane, ContainsAPlaneByTheReversedOffsetComparison) {
  auto a = plane(kUp, 1.0f);
  // Same direction: ALL only when b lies farther out, the reverse of what its points say.
  EXPECT_EQ(a->contains(plane(kUp, 2.0f)), ALL);
  EXPECT_EQ(a->contains(plane(kUp, 1.0f)), NONE);
  EXPECT_EQ(a->contains(plane(kUp, 0.0f)), NONE);
  // Opposite: decided by b's point nearest the origin.
  EXPECT_EQ(a->contains(plane(kDown, -1.0f)), ALL);
  EXPECT_EQ(a->contains(plane(kDown, -2.0f)), NONE);
  auto slanted = plane(zeVec3f(1, 0, 0), 0.0f);
  EXPECT_EQ(a->contains(slanted), PARTIAL);
  slanted->_norm.x = kNaNf;
  EXPECT_EQ(a->contains(slanted), PARTIAL);
}

// --- rays -------------------------------------------------------------------------

TEST_F(Plane, RaysByTheirStartAndTheirEnd) {
  auto ground = plane(kUp, 0.0f);
  EXPECT_TRUE(ground->intersect(ray(kOrigin, kUp, 0.0f)));             // starts on the plane
  EXPECT_TRUE(ground->intersect(ray(zeVec3f(0, 2, 0), kDown, 2.0f)));  // ends on it
  EXPECT_FALSE(ground->intersect(ray(zeVec3f(0, 2, 0), kDown, 1.5f)));
  // Containment takes _pos + _dir as the end, whatever _len says.
  EXPECT_EQ(ground->contains(ray(zeVec3f(0, -1, 0), kUp, 100.0f)), ALL);
  EXPECT_EQ(ground->contains(ray(zeVec3f(0, -0.5f, 0), kUp, 0.0f)), PARTIAL);
  EXPECT_EQ(ground->contains(ray(zeVec3f(0, 1, 0), kDown, 0.0f)), PARTIAL);
  EXPECT_EQ(ground->contains(ray(zeVec3f(0, 1, 0), kUp, 0.0f)), NONE);
}

// --- extension and the remaining single entries ---------------------------------

TEST_F(Plane, ExtendsOutwardAlongItsFixedNormal) {
  auto p = plane(zeVec3f(1, 2, 2), -1.0f);
  const zeVec3f n = p->_norm;
  auto along = [&n](const zeVec3f& q) { return q.x * n.x + q.y * n.y + q.z * n.z; };
  p->extendBy(zeVec3f(-5, -5, -5));
  EXPECT_BITEQ(-1.0f, p->_offset);
  p->extendBy(zeVec3f(0.5f, 0.25f, 1.0f));
  EXPECT_BITEQ(along(zeVec3f(0.5f, 0.25f, 1.0f)), p->_offset);
  p->extendBy(ray(zeVec3f(0, 1, 0), zeVec3f(0, 0.6f, 0.8f), 3.0f));  // the end uses _len
  EXPECT_BITEQ(along(zeVec3f(0 + 0 * 3.0f, 1 + 0.6f * 3.0f, 0 + 0.8f * 3.0f)), p->_offset);
  p->extendBy(sphere(zeVec3f(1, 3, -2), 4.5f));  // its point farthest along n
  const float farthest = along(zeVec3f(n.x * 4.5f + 1, n.y * 4.5f + 3, n.z * 4.5f + -2));
  EXPECT_BITEQ(farthest, p->_offset);
  p->extendBy(sphere(zeVec3f(100, 100, 100), -1.0f));
  EXPECT_BITEQ(farthest, p->_offset);
  p->extendBy(box(zeVec3f(-1, 0, 2), zeVec3f(3, 4, 5)));  // its corner farthest along n is _max
  EXPECT_BITEQ(along(zeVec3f(3, 4, 5)), p->_offset);
  p->extendBy(make<zeAABox>());
  p->extendBy(plane(kUp, 1e6f));
  EXPECT_BITEQ(along(zeVec3f(3, 4, 5)), p->_offset);
  expectVecBits(n, p->_norm);
}

TEST_F(Plane, IsNeverEmptyAndCentresOnItsPointNearestTheOrigin) {
  auto p = plane(zeVec3f(1, 2, 2), 4.5f);
  const zeVec3f n = p->_norm;
  p->empty();
  EXPECT_FALSE(p->isEmpty());
  zeVec3f centre;
  p->getCenter(centre);
  expectVecBits(zeVec3f(n.x * 4.5f, n.y * 4.5f, n.z * 4.5f), centre);
}

// --- the matrix projections that read a plane -------------------------------------

TEST_F(Plane, ProjectionsReadNormalAndOffsetTheDoubleClassWidened) {
  auto p = plane(zeVec3f(0.3f, -1.1f, 0.7f), 2.3f);
  const zeVec3f& n = p->_norm;
  const zeVec3f dir(0.2f, -0.9f, 0.4f), light(1.5f, 4.25f, -3.1f);
  zeMatrix44f f, expectedF;
  f.makeOrthographicProjection(p, dir);
  impl::projectAlongOntoPlane(expectedF, n, p->_offset, dir);
  zetest::expectBits(expectedF, f);
  const float floatDiagonal = f[0];
  f.makeShadowMatrix(p, light);
  impl::shadowOntoPlane(expectedF, n, p->_offset, light);
  zetest::expectBits(expectedF, f);

  const zeVec3d wideN(n.x, n.y, n.z), wideDir(dir.x, dir.y, dir.z), wideLight(light.x, light.y, light.z);
  zeMatrix44d d, expectedD;
  d.makeOrthographicProjection(p, wideDir);
  impl::projectAlongOntoPlane(expectedD, wideN, double(p->_offset), wideDir);
  zetest::expectBits(expectedD, d);
  EXPECT_NE(double(floatDiagonal), d[0]);  // computed in double, not widened from float
  d.makeShadowMatrix(p, wideLight);
  impl::shadowOntoPlane(expectedD, wideN, double(p->_offset), wideLight);
  zetest::expectBits(expectedD, d);
  // The six-argument forms are not hidden.
  f.makeOrthographicProjection(-1, 1, -1, 1, -1, 1);
  d.makeOrthographicProjection(-1, 1, -1, 1, -1, 1);
  EXPECT_EQ(f[0], 1.0f);
  EXPECT_EQ(d[0], 1.0);
}
