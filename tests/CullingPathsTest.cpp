// The culling kernels: the scalar loop gives what the dispatch tables give
// for objects holding the same values; every path the processor can run,
// and the published functions, give the scalar loop's bytes on random and
// awkward volumes and planes, at every count and alignment; tables holding
// other routines, and results over inputs, get the volume-by-volume answers.

#include <climits>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <math/ZEMath.h>

#include "math/volumes/impl/CullingPaths.h"
#include "support/CoreFixture.h"
#include "support/GuardedPages.h"
#include "support/PathCompare.h"
#include "support/Volumes.h"

using namespace Lux;
using namespace Lux::Math;
using namespace zetest;

namespace {

using Culling = zetest::CoreTest;

/// Planes as an application holds them, and the pointer array the kernels read.
struct Planes {
  std::vector<Held<zePlane>> held;
  std::vector<const zePlane*> pointers;
  void add(Held<zePlane> p) {
    pointers.push_back(p);
    held.push_back(std::move(p));
  }
  unsigned int count() const { return static_cast<unsigned int>(pointers.size()); }
};

/// Made by create(); with `awkward`, every other one then has fields written
/// directly: an octant stale or outside 0 to 7, and at times an awkward
/// normal or an offset of 0 or -0.
Planes randomPlanes(unsigned int count, bool awkward, std::mt19937& rng) {
  const int octants[] = {8, -1, 1000, 9, INT_MIN, 15, 3, 6};
  Planes planes;
  for (unsigned int j = 0; j < count; ++j) {
    const zeVec3f n(drawFloat(rng, false), drawFloat(rng, false), drawFloat(rng, false));
    Held<zePlane> p = plane(n, drawFloat(rng, false) * 4);
    if (awkward && j % 2 == 1) {
      p->_octant = static_cast<ZE_MATH_SPATIAL_REGION>(octants[j / 2 % 8]);
      if (rng() % 2) p->_norm = zeVec3f(drawFloat(rng, true, 2), drawFloat(rng, true, 2), drawFloat(rng, true, 2));
      if (rng() % 2) p->_offset = rng() % 2 ? 0.0f : -0.0f;
    }
    planes.add(std::move(p));
  }
  return planes;
}

/// Around the planes' offsets, one component in four awkward with `awkward`;
/// a box in four has min.x > max.x.
std::vector<zeAABoxValue> randomBoxes(unsigned int count, bool awkward, std::mt19937& rng) {
  std::vector<zeAABoxValue> boxes(count);
  for (zeAABoxValue& b : boxes) {
    b.min = zeVec3f(drawFloat(rng, awkward), drawFloat(rng, awkward), drawFloat(rng, awkward)) * 4.0f;
    const zeVec3f size(drawFloat(rng, awkward), drawFloat(rng, awkward), drawFloat(rng, awkward));
    b.max = b.min + zeVec3f(std::fabs(size.x), std::fabs(size.y), std::fabs(size.z));
    if (rng() % 4 == 0) std::swap(b.min.x, b.max.x);
  }
  return boxes;
}

/// Radii negative in one sphere of four (-0, NaN and infinities among the awkward ones).
std::vector<zeSphereValue> randomSpheres(unsigned int count, bool awkward, std::mt19937& rng) {
  std::vector<zeSphereValue> spheres(count);
  for (zeSphereValue& s : spheres) {
    s.center = zeVec3f(drawFloat(rng, awkward), drawFloat(rng, awkward), drawFloat(rng, awkward)) * 4.0f;
    s.radius = drawFloat(rng, awkward);
  }
  return spheres;
}

void assign(zeAABox& box, const zeAABoxValue& v) {
  box._min = v.min;
  box._max = v.max;
}
void assign(zeSphere& sphere, const zeSphereValue& v) {
  sphere._center = v.center;
  sphere._radius = v.radius;
}

/// Volume by volume through the dispatch tables, as the demo culls.
template <class Volume, class Value>
std::vector<unsigned char> throughTables(const std::vector<Value>& values, const Planes& planes) {
  std::vector<unsigned char> results;
  Held<Volume> volume = make<Volume>();
  for (const Value& v : values) {
    assign(*volume, v);
    int result = ALL;
    for (const zePlane* p : planes.pointers) {
      const ZE_MATH_CONTAINMENT_RESULTS answer = p->contains(volume);
      if (answer == NONE) {
        result = NONE;
        break;
      }
      if (answer == PARTIAL) result = PARTIAL;
    }
    results.push_back(static_cast<unsigned char>(result));
  }
  return results;
}

template <class Value>
using Kernel = void (*)(const Value*, unsigned int, const zePlane* const*, unsigned int, unsigned char*);

Kernel<zeAABoxValue> scalarOf(const zeAABoxValue*) { return &impl::cullAABoxesScalar; }
Kernel<zeSphereValue> scalarOf(const zeSphereValue*) { return &impl::cullSpheresScalar; }
Kernel<zeAABoxValue> kernelOf(const impl::CullPath& p, const zeAABoxValue*) { return p.boxes; }
Kernel<zeSphereValue> kernelOf(const impl::CullPath& p, const zeSphereValue*) { return p.spheres; }
void publish(const zeAABoxValue* v, unsigned int n, const zePlane* const* p, unsigned int m, unsigned char* r) {
  EXPECT_TRUE(zeCulling::_cullAABoxesFunction(v, n, p, m, r));
}
void publish(const zeSphereValue* v, unsigned int n, const zePlane* const* p, unsigned int m, unsigned char* r) {
  EXPECT_TRUE(zeCulling::_cullSpheresFunction(v, n, p, m, r));
}

/// Runs `kernel` on the values copied `volumeShift` bytes past a 64-byte
/// boundary, results written `resultShift` bytes into a poisoned buffer
/// with 16 bytes to spare.
template <class Value, class F>
std::vector<unsigned char> run(F kernel, const std::vector<Value>& values, const Planes& planes,
                               unsigned int volumeShift, unsigned int resultShift) {
  std::vector<unsigned char> bytes(64 + volumeShift + values.size() * sizeof(Value));
  unsigned char* at = bytes.data() + (64 - reinterpret_cast<std::uintptr_t>(bytes.data()) % 64) % 64 + volumeShift;
  if (!values.empty()) std::memcpy(at, values.data(), values.size() * sizeof(Value));
  std::vector<unsigned char> out(resultShift + values.size() + 16, kPoison);
  kernel(reinterpret_cast<const Value*>(at), static_cast<unsigned int>(values.size()), planes.pointers.data(),
         planes.count(), out.data() + resultShift);
  return out;
}

/// Every runnable path and the published function give the scalar loop's bytes.
template <class Value>
void expectEveryPathAgrees(const std::vector<Value>& values, const Planes& planes) {
  for (unsigned int volumeShift : {0u, 4u})
    for (unsigned int resultShift : {0u, 3u}) {
      const std::vector<unsigned char> scalar = run(scalarOf(values.data()), values, planes, volumeShift, resultShift);
      for (const impl::CullPath* p : runnablePaths(impl::cullPaths()))
        EXPECT_EQ(run(kernelOf(*p, values.data()), values, planes, volumeShift, resultShift), scalar)
            << p->name << ": " << values.size() << " volumes, " << planes.count() << " planes";
      EXPECT_EQ(run(static_cast<Kernel<Value>>(&publish), values, planes, volumeShift, resultShift), scalar)
          << "published: " << values.size() << " volumes, " << planes.count() << " planes";
    }
}

// An application's routine: PARTIAL for boxes with min.x above 0, else ALL.
ZE_MATH_CONTAINMENT_RESULTS partialRight(const zeVolume*, const zeVolume* box) {
  return static_cast<const zeAABox*>(box)->_min.x > 0.0f ? PARTIAL : ALL;
}

}  // namespace

TEST_F(Culling, TheScalarLoopGivesWhatTheDispatchTablesGive) {
  std::mt19937 rng(11);
  for (unsigned int planeCount : {0u, 1u, 2u, 6u, 17u})
    for (bool awkward : {false, true}) {
      const Planes planes = randomPlanes(planeCount, awkward, rng);
      const std::vector<zeAABoxValue> boxes = randomBoxes(400, awkward, rng);
      const std::vector<zeSphereValue> spheres = randomSpheres(400, awkward, rng);
      std::vector<unsigned char> b(boxes.size()), s(spheres.size());
      impl::cullAABoxesScalar(boxes.data(), 400, planes.pointers.data(), planeCount, b.data());
      impl::cullSpheresScalar(spheres.data(), 400, planes.pointers.data(), planeCount, s.data());
      EXPECT_EQ(b, (throughTables<zeAABox>(boxes, planes))) << planeCount << " planes";
      EXPECT_EQ(s, (throughTables<zeSphere>(spheres, planes))) << planeCount << " planes";
    }
}

// Every count to beyond two blocks of the widest path and an odd large one;
// up to 16 planes take one pass, more take several.
TEST_F(Culling, EveryPathGivesTheScalarBytesAtEveryCountAndAlignment) {
  std::mt19937 rng(5);
  for (unsigned int planeCount : {0u, 1u, 6u, 16u, 17u, 40u}) {
    const Planes planes = randomPlanes(planeCount, true, rng);
    for (unsigned int count = 0; count <= 37; ++count) {
      expectEveryPathAgrees(randomBoxes(count, count % 2 == 1, rng), planes);
      expectEveryPathAgrees(randomSpheres(count, count % 2 == 1, rng), planes);
    }
    expectEveryPathAgrees(randomBoxes(1001, true, rng), planes);
    expectEveryPathAgrees(randomSpheres(1001, true, rng), planes);
  }
}

// Volumes and results end where an inaccessible page begins: a path that
// read past the last volume, or wrote past the last result, would fault.
TEST_F(Culling, NothingPastTheVolumesIsReadNorPastTheResultsWritten) {
  std::mt19937 rng(13);
  const Planes planes = randomPlanes(6, true, rng);
  GuardedPages boxPages(1001 * sizeof(zeAABoxValue)), spherePages(1001 * sizeof(zeSphereValue)), resultPages;
  ASSERT_TRUE(boxPages.guarded && spherePages.guarded && resultPages.guarded);
  std::vector<Kernel<zeAABoxValue>> boxKernels = {&impl::cullAABoxesScalar, &publish};
  std::vector<Kernel<zeSphereValue>> sphereKernels = {&impl::cullSpheresScalar, &publish};
  for (const impl::CullPath* p : runnablePaths(impl::cullPaths())) {
    boxKernels.push_back(p->boxes);
    sphereKernels.push_back(p->spheres);
  }
  for (unsigned int count : {1u, 7u, 15u, 17u, 33u, 1001u}) {
    const std::vector<zeAABoxValue> boxes = randomBoxes(count, true, rng);
    const std::vector<zeSphereValue> spheres = randomSpheres(count, true, rng);
    zeAABoxValue* b = boxPages.last<zeAABoxValue>(count);
    zeSphereValue* s = spherePages.last<zeSphereValue>(count);
    std::memcpy(b, boxes.data(), count * sizeof(zeAABoxValue));
    std::memcpy(s, spheres.data(), count * sizeof(zeSphereValue));
    unsigned char* out = resultPages.last<unsigned char>(count);
    std::vector<unsigned char> first;
    for (Kernel<zeAABoxValue> k : boxKernels) {
      k(b, count, planes.pointers.data(), 6, out);
      if (first.empty()) first.assign(out, out + count);
      EXPECT_EQ(std::vector<unsigned char>(out, out + count), first) << count << " boxes";
    }
    first.clear();
    for (Kernel<zeSphereValue> k : sphereKernels) {
      k(s, count, planes.pointers.data(), 6, out);
      if (first.empty()) first.assign(out, out + count);
      EXPECT_EQ(std::vector<unsigned char>(out, out + count), first) << count << " spheres";
    }
  }
}

// The plane y = 2 (inside below). Touching counts as inside; an empty box,
// a negative radius and NaN answer NONE; no plane at all answers ALL.
TEST_F(Culling, AnswersAtTheBoundaries) {
  Planes planes;
  planes.add(plane(zeVec3f(0, 1, 0), 2.0f));
  const std::vector<zeAABoxValue> boxes = {{{0, 0, 0}, {1, 2, 1}},    {{0, 1, 0}, {1, 3, 1}}, {{0, 2, 0}, {1, 3, 1}},
                                           {{0, 2.5f, 0}, {1, 3, 1}}, {{1, 0, 0}, {0, 1, 0}}, {{0, 0, 0}, {1, 1, -1}},
                                           {{0, 0, 0}, {1, kNaNf, 1}}};
  const std::vector<zeSphereValue> spheres = {{{0, 1, 0}, 1.0f},  {{0, 3, 0}, 1.0f},  {{0, 3.5f, 0}, 1.0f},
                                              {{0, 2, 0}, 0.0f},  {{0, 2, 0}, -0.0f}, {{0, 0, 0}, -1.0f},
                                              {{0, 0, 0}, kNaNf}, {{0, -9, 0}, kInf}, {{0, kNaNf, 0}, 1.0f}};
  const std::vector<unsigned char> boxAnswers = {ALL, PARTIAL, PARTIAL, NONE, NONE, ALL, PARTIAL};
  const std::vector<unsigned char> sphereAnswers = {ALL, PARTIAL, NONE, ALL, ALL, NONE, NONE, PARTIAL, NONE};
  std::vector<unsigned char> out(16);
  ASSERT_TRUE(cullAABoxes(boxes.data(), 7, planes.pointers.data(), 1, out.data()));
  EXPECT_EQ(std::vector<unsigned char>(out.begin(), out.begin() + 7), boxAnswers);
  ASSERT_TRUE(cullSpheres(spheres.data(), 9, planes.pointers.data(), 1, out.data()));
  EXPECT_EQ(std::vector<unsigned char>(out.begin(), out.begin() + 9), sphereAnswers);
  ASSERT_TRUE(cullAABoxes(boxes.data(), 7, nullptr, 0, out.data()));
  EXPECT_EQ(std::vector<unsigned char>(out.begin(), out.begin() + 7), std::vector<unsigned char>(7, ALL));
}

TEST_F(Culling, ThePublishedPointersHoldTheKernelsWithoutRegistration) {
  EXPECT_EQ(zeCulling::_cullAABoxesFunction, &cullAABoxes);
  EXPECT_EQ(zeCulling::_cullSpheresFunction, &cullSpheres);
  const zeSphereValue sphere = {{0, 0, 0}, -1.0f};
  unsigned char result = 7;
  EXPECT_TRUE(zeCulling::_cullSpheresFunction(&sphere, 1, nullptr, 0, &result));
  EXPECT_EQ(result, ALL);
  EXPECT_TRUE(zeCulling::_cullSpheresFunction(nullptr, 0, nullptr, 5, nullptr));
  EXPECT_EQ(zeMetaObject::getClassCount(), 0);
}

// An entry an application installed is what the kernels answer with, for
// the planes whose class it serves; the library's entry back, the paths again.
TEST_F(Culling, TablesHoldingOtherRoutinesAreDispatchedVolumeByVolume) {
  std::mt19937 rng(3);
  const Planes planes = randomPlanes(6, false, rng);
  const std::vector<zeAABoxValue> boxes = randomBoxes(50, false, rng);
  zeMetaObject* plane = zePlane::getClassMeta();
  zeMetaObject* box = zeAABox::getClassMeta();
  zeVolume::setContainsFunction(plane, box, &partialRight);
  std::vector<unsigned char> out(50), library(50);
  EXPECT_TRUE(cullAABoxes(boxes.data(), 50, planes.pointers.data(), 6, out.data()));
  EXPECT_EQ(out, (throughTables<zeAABox>(boxes, planes)));
  impl::cullAABoxesScalar(boxes.data(), 50, planes.pointers.data(), 6, library.data());
  EXPECT_NE(out, library);
  zeVolume::setContainsFunction(plane, box, &zePlane::zePlaneContainsAABox);
  EXPECT_TRUE(cullAABoxes(boxes.data(), 50, planes.pointers.data(), 6, out.data()));
  EXPECT_EQ(out, (throughTables<zeAABox>(boxes, planes)));
}

// Results over the volumes are read back by later volumes, over a plane by
// later tests: the scalar loop's order decides, on every path.
TEST_F(Culling, ResultsOverInputsGiveTheScalarResult) {
  std::mt19937 rng(9);
  const std::vector<zeSphereValue> spheres = randomSpheres(40, false, rng);
  const Planes planes = randomPlanes(20, false, rng);
  for (std::size_t shift : {0u, 5u, 80u}) {
    std::vector<zeSphereValue> a = spheres, b = spheres;
    impl::cullSpheresScalar(a.data(), 40, planes.pointers.data(), 20,
                            reinterpret_cast<unsigned char*>(a.data()) + shift);
    EXPECT_TRUE(
        cullSpheres(b.data(), 40, planes.pointers.data(), 20, reinterpret_cast<unsigned char*>(b.data()) + shift));
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(zeSphereValue)), 0) << shift;
  }
  auto overLastPlane = [&](Kernel<zeSphereValue> kernel) {
    std::mt19937 same(21);
    const Planes p = randomPlanes(20, false, same);
    unsigned char* over = reinterpret_cast<unsigned char*>(&p.held.back()->_offset);
    kernel(spheres.data(), 8, p.pointers.data(), 20, over);
    return std::vector<unsigned char>(over, over + 8);
  };
  EXPECT_EQ(overLastPlane(&publish), overLastPlane(&impl::cullSpheresScalar));
}
