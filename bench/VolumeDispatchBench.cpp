// The cost of dispatching a volume test through the tables (zeVolume::intersect:
// the type indices, the pair index, one indirect call) against calling the
// routine itself through a function pointer the compiler cannot see through,
// for box/sphere, plane/box, plane/sphere and plane/ray; prints the ratio of
// each pair. Also the ray/triangle test over a batch of random rays and
// triangles, set against GLM's where it is available.
//
// Benchmark names: BoxSphere/ThroughIntersect, BoxSphere/DirectCall,
// Dispatch/<PlaneBox|PlaneSphere|PlaneRay>/<Table|Direct>,
// IntersectRay/ZEMath/<FrontSide|BothSides>, IntersectRay/GLM.

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>

#include "RatioReporter.h"

#ifdef ZEMATH_BENCH_GLM
#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtx/intersect.hpp>
#endif

using namespace Lux;
using namespace Lux::Math;

namespace {

// Names of the table run and the direct run of each pair, in report order.
struct PairNames {
  const char* table;
  const char* direct;
};
const PairNames kPairs[] = {{"BoxSphere/ThroughIntersect", "BoxSphere/DirectCall"},
                            {"Dispatch/PlaneBox/Table", "Dispatch/PlaneBox/Direct"},
                            {"Dispatch/PlaneSphere/Table", "Dispatch/PlaneSphere/Direct"},
                            {"Dispatch/PlaneRay/Table", "Dispatch/PlaneRay/Direct"}};

template <class T>
zeSmartPointer<T> made() {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}

// A box, a sphere reaching into it from outside one face, a slanted plane
// through the origin, and a ray that starts outside the plane and ends inside
// it (so the plane/ray routine runs to the end).
struct Scene {
  Scene() : box(made<zeAABox>()), sphere(made<zeSphere>()), plane(made<zePlane>()), ray(made<zeRay>()) {
    box->_min = zeVec3f(-1.0f, -1.0f, -1.0f);
    box->_max = zeVec3f(1.0f, 1.0f, 1.0f);
    sphere->_center = zeVec3f(1.5f, 0.25f, -0.5f);
    sphere->_radius = 0.75f;
    plane->create(zeVec3f(1.0f, 2.0f, 3.0f), 0.0f);
    ray->make(zeVec3f(2.0f, 2.0f, 2.0f), zeVec3f(-2.0f, -2.0f, -2.0f));
  }
  // Whether every pair meets, through the tables.
  bool allMeet() const {
    return box->intersect(sphere.get()) && plane->intersect(box.get()) && plane->intersect(sphere.get()) &&
           plane->intersect(ray.get());
  }
  zeSmartPointer<zeAABox> box;
  zeSmartPointer<zeSphere> sphere;
  zeSmartPointer<zePlane> plane;
  zeSmartPointer<zeRay> ray;
};

// The routines, read anew on every call, so they are never inlined.
zeIntersectionFunction volatile boxSphereRoutine = &zeAABox::zeAABoxIntersectSphere;
zeIntersectionFunction volatile planeBoxRoutine = &zePlane::zePlaneIntersectAABox;
zeIntersectionFunction volatile planeSphereRoutine = &zePlane::zePlaneIntersectSphere;
zeRayIntersectionFunction volatile planeRayRoutine = &zePlane::zePlaneIntersectRay;

void throughTable(benchmark::State& state, const zeVolume* a, const zeVolume* b) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(b);
    benchmark::DoNotOptimize(a->intersect(b));
  }
}

void directCall(benchmark::State& state, const zeVolume* a, const zeVolume* b,
                zeIntersectionFunction volatile* routine) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(b);
    const zeIntersectionFunction f = *routine;
    benchmark::DoNotOptimize(f(a, b));
  }
}

void rayThroughTable(benchmark::State& state, const zeVolume* v, const zeRay* ray) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(v);
    benchmark::DoNotOptimize(ray);
    benchmark::DoNotOptimize(v->intersect(ray));
  }
}

void rayDirectCall(benchmark::State& state, const zeVolume* v, const zeRay* ray,
                   zeRayIntersectionFunction volatile* routine) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(v);
    benchmark::DoNotOptimize(ray);
    const zeRayIntersectionFunction f = *routine;
    benchmark::DoNotOptimize(f(v, ray));
  }
}

// --- ray/triangle ---------------------------------------------------------

constexpr int kTriangles = 1024;

struct Triangle {
  zeVec3f v0, v1, v2;
};

// Triangles with corners in the cube [-1, 1]^3; each ray runs from a point at
// distance 3 from the origin through a point of [-0.5, 0.5]^3 and on for as
// far again, so roughly a fifth of them hit their triangle.
struct RayBatch {
  RayBatch() {
    std::mt19937 rng(5);
    std::uniform_real_distribution<float> corner(-1.0f, 1.0f), target(-0.5f, 0.5f);
    std::normal_distribution<float> around;
    for (int i = 0; i < kTriangles; ++i) {
      Triangle t;
      t.v0 = zeVec3f(corner(rng), corner(rng), corner(rng));
      t.v1 = zeVec3f(corner(rng), corner(rng), corner(rng));
      t.v2 = zeVec3f(corner(rng), corner(rng), corner(rng));
      triangles.push_back(t);
      zeVec3f from(around(rng), around(rng), around(rng));
      from *= 3.0f / from.length();
      const zeVec3f through(target(rng), target(rng), target(rng));
      const zeVec3f to(2.0f * through.x - from.x, 2.0f * through.y - from.y, 2.0f * through.z - from.z);
      rays.push_back(made<zeRay>());
      rays.back()->make(from, to);
    }
  }
  // The share of rays that hit their triangle from either side.
  double hitShare() const {
    int hits = 0;
    zeVec3f hit, normal;
    for (int i = 0; i < kTriangles; ++i) {
      const Triangle& t = triangles[i];
      hits += zeIntersect::intersectRay(rays[i].get(), t.v0, t.v1, t.v2, hit, normal, zeRay::BOTH_SIDES) >= 0.0f;
    }
    return double(hits) / kTriangles;
  }
  std::vector<Triangle> triangles;
  std::vector<zeSmartPointer<zeRay>> rays;
};

void intersectRay(benchmark::State& state, const RayBatch* batch, unsigned int sides) {
  std::vector<zeVec3f> hits(kTriangles), normals(kTriangles);
  std::vector<float> distances(kTriangles);
  for (auto _ : state) {
    for (int i = 0; i < kTriangles; ++i) {
      const Triangle& t = batch->triangles[i];
      distances[i] = zeIntersect::intersectRay(batch->rays[i].get(), t.v0, t.v1, t.v2, hits[i], normals[i], sides);
    }
    benchmark::DoNotOptimize(distances.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kTriangles);
  state.counters["hit_share"] = batch->hitShare();
}

#ifdef ZEMATH_BENCH_GLM
// What a GLM user would write: the two-sided test, giving the distance along
// the direction and two barycentric coordinates (no normal, no hit point, no
// length limit).
void intersectRayGlm(benchmark::State& state, const RayBatch* batch) {
  struct GlmCase {
    glm::vec3 pos, dir, v0, v1, v2;
  };
  std::vector<GlmCase> cases;
  const auto asGlm = [](const zeVec3f& v) { return glm::vec3(v.x, v.y, v.z); };
  for (int i = 0; i < kTriangles; ++i) {
    const Triangle& t = batch->triangles[i];
    const zeRay& r = *batch->rays[i];
    cases.push_back({asGlm(r._pos), asGlm(r._dir), asGlm(t.v0), asGlm(t.v1), asGlm(t.v2)});
  }
  std::vector<glm::vec2> barycentric(kTriangles);
  std::vector<float> distances(kTriangles);
  std::vector<char> hit(kTriangles);
  for (auto _ : state) {
    for (int i = 0; i < kTriangles; ++i) {
      const GlmCase& c = cases[i];
      hit[i] = glm::intersectRayTriangle(c.pos, c.dir, c.v0, c.v1, c.v2, barycentric[i], distances[i]);
    }
    benchmark::DoNotOptimize(hit.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kTriangles);
}
#endif

}  // namespace

int main(int argc, char** argv) {
  zeAABox::bayRegister();  // registers the sphere and the plane on the way
  zeRayList::bayRegister();
  {
    Scene scene;
    if (!scene.box || !scene.sphere || !scene.plane || !scene.ray || !scene.allMeet()) {
      std::fprintf(stderr, "the volumes are not set up to meet\n");
      return 1;
    }
    const RayBatch rays;
    const zeVolume* box = scene.box.get();
    const zeVolume* sphere = scene.sphere.get();
    const zeVolume* plane = scene.plane.get();
    const zeRay* ray = scene.ray.get();
    benchmark::RegisterBenchmark(kPairs[0].table, &throughTable, box, sphere);
    benchmark::RegisterBenchmark(kPairs[0].direct, &directCall, box, sphere, &boxSphereRoutine);
    benchmark::RegisterBenchmark(kPairs[1].table, &throughTable, plane, box);
    benchmark::RegisterBenchmark(kPairs[1].direct, &directCall, plane, box, &planeBoxRoutine);
    benchmark::RegisterBenchmark(kPairs[2].table, &throughTable, plane, sphere);
    benchmark::RegisterBenchmark(kPairs[2].direct, &directCall, plane, sphere, &planeSphereRoutine);
    benchmark::RegisterBenchmark(kPairs[3].table, &rayThroughTable, plane, ray);
    benchmark::RegisterBenchmark(kPairs[3].direct, &rayDirectCall, plane, ray, &planeRayRoutine);
    benchmark::RegisterBenchmark("IntersectRay/ZEMath/FrontSide", &intersectRay, &rays, unsigned(zeRay::FRONT_SIDE));
    benchmark::RegisterBenchmark("IntersectRay/ZEMath/BothSides", &intersectRay, &rays, unsigned(zeRay::BOTH_SIDES));
#ifdef ZEMATH_BENCH_GLM
    benchmark::RegisterBenchmark("IntersectRay/GLM", &intersectRayGlm, &rays);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    for (const PairNames& pair : kPairs) {
      const double table = reporter.median(pair.table), direct = reporter.median(pair.direct);
      if (table > 0.0 && direct > 0.0) {
        std::printf("%s / %s (median CPU time): %.3f (%.3f ns / %.3f ns)\n", pair.table, pair.direct, table / direct,
                    table, direct);
      }
    }
  }
  BayCore::unregisterAllClasses();
  return 0;
}
