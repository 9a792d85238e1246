// Culling 100k volumes, half boxes and half spheres, against the six planes
// of a view frustum: the published kernels against the per-volume loop an
// application writes through the dispatch tables (box and sphere objects,
// each plane's `contains`), the plain scalar loop over the values, and each
// instruction-set path. The volumes lie around the frustum so that inside,
// partial and outside all occur; their shares are reported. Prints the
// ratios of the per-volume loop and the scalar loop to the published kernels.
//
// Benchmark names: Cull/<variant> (Dispatch, Scalar, Published, or a path
// name: sse2, avx2, avx512).

#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>
#include <math/volumes/impl/CullingPaths.h>

#include "RatioReporter.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

constexpr unsigned int kVolumes = 100000;

template <class T>
zeSmartPointer<T> made() {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}

// An eye at the origin looking down -z: 50 degrees high, 4:3, depth 1 to 60;
// every plane's inside faces into the view. Volumes of size 0.3 to 1.8 lie in
// x in [-45, 45], y in [-30, 30], z in [-75, 10]; boxes at even positions of
// the application's list, spheres at odd ones.
struct Scene {
  Scene() {
    const float up = 0.43633231f;                              // 25 degrees, half the height
    const float side = std::atan(std::tan(up) * 4.0f / 3.0f);  // half the width
    const zeVec3f normals[6] = {{-std::cos(side), 0, std::sin(side)},
                                {std::cos(side), 0, std::sin(side)},
                                {0, -std::cos(up), std::sin(up)},
                                {0, std::cos(up), std::sin(up)},
                                {0, 0, 1},
                                {0, 0, -1}};
    const float offsets[6] = {0, 0, 0, 0, -1, 60};
    for (int j = 0; j < 6; ++j) {
      held[j] = made<zePlane>();
      held[j]->create(normals[j], offsets[j]);
      planes[j] = held[j].get();
    }
    std::mt19937 rng(17);
    std::uniform_real_distribution<float> x(-45, 45), y(-30, 30), z(-75, 10), size(0.3f, 1.8f);
    for (unsigned int i = 0; i < kVolumes; ++i) {
      const zeVec3f c(x(rng), y(rng), z(rng));
      const float s = size(rng);
      if (i % 2 == 0) {
        const zeVec3f half(s, s * 0.75f, s * 1.25f);
        boxes.push_back({c - half, c + half});
        zeSmartPointer<zeAABox> box = made<zeAABox>();
        box->_min = boxes.back().min;
        box->_max = boxes.back().max;
        objects.emplace_back(box);
      } else {
        spheres.push_back({c, s});
        zeSmartPointer<zeSphere> sphere = made<zeSphere>();
        sphere->_center = c;
        sphere->_radius = s;
        objects.emplace_back(sphere);
      }
    }
    boxResults.resize(boxes.size());
    sphereResults.resize(spheres.size());
    objectResults.resize(objects.size());
  }
  zeSmartPointer<zePlane> held[6];
  const zePlane* planes[6];
  std::vector<zeAABoxValue> boxes;
  std::vector<zeSphereValue> spheres;
  std::vector<zeSmartPointer<zeVolume>> objects;
  std::vector<unsigned char> boxResults, sphereResults, objectResults;
};

Scene* scene = nullptr;

// What an application writes: each volume object against each plane through
// the tables, NONE ending its tests.
void throughTables(Scene& s) {
  for (std::size_t i = 0; i < s.objects.size(); ++i) {
    const zeVolume* v = s.objects[i].get();
    ZE_MATH_CONTAINMENT_RESULTS result = ZE_MATH_CONTAINMENT_RESULTS_ALL;
    for (const zePlane* p : s.planes) {
      const ZE_MATH_CONTAINMENT_RESULTS r = p->contains(v);
      if (r == ZE_MATH_CONTAINMENT_RESULTS_NONE) {
        result = r;
        break;
      }
      if (r == ZE_MATH_CONTAINMENT_RESULTS_PARTIAL) result = r;
    }
    s.objectResults[i] = static_cast<unsigned char>(result);
  }
}

void dispatch(benchmark::State& state) {
  for (auto _ : state) {
    throughTables(*scene);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kVolumes);
}

void kernels(benchmark::State& state, impl::CullKernels k) {
  Scene& s = *scene;
  for (auto _ : state) {
    k.boxes(s.boxes.data(), unsigned(s.boxes.size()), s.planes, 6, s.boxResults.data());
    k.spheres(s.spheres.data(), unsigned(s.spheres.size()), s.planes, 6, s.sphereResults.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kVolumes);
}

void published(benchmark::State& state) {
  Scene& s = *scene;
  for (auto _ : state) {
    zeCulling::_cullAABoxesFunction(s.boxes.data(), unsigned(s.boxes.size()), s.planes, 6, s.boxResults.data());
    zeCulling::_cullSpheresFunction(s.spheres.data(), unsigned(s.spheres.size()), s.planes, 6, s.sphereResults.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kVolumes);
  // The shares of the outcomes, as the objects give them.
  unsigned long counts[3] = {0, 0, 0};
  for (unsigned char r : s.objectResults) ++counts[r];
  state.counters["inside"] = double(counts[ZE_MATH_CONTAINMENT_RESULTS_ALL]) / kVolumes;
  state.counters["partial"] = double(counts[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL]) / kVolumes;
  state.counters["outside"] = double(counts[ZE_MATH_CONTAINMENT_RESULTS_NONE]) / kVolumes;
}

// Whether the kernels agree with the tables on every volume.
bool kernelsAgree(Scene& s) {
  throughTables(s);
  zeCulling::_cullAABoxesFunction(s.boxes.data(), unsigned(s.boxes.size()), s.planes, 6, s.boxResults.data());
  zeCulling::_cullSpheresFunction(s.spheres.data(), unsigned(s.spheres.size()), s.planes, 6, s.sphereResults.data());
  for (std::size_t i = 0; i < s.objects.size(); ++i) {
    const unsigned char kernel = i % 2 == 0 ? s.boxResults[i / 2] : s.sphereResults[i / 2];
    if (kernel != s.objectResults[i]) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  zeAABox::bayRegister();  // registers the sphere and the plane on the way
  {
    Scene s;
    scene = &s;
    if (!kernelsAgree(s)) {
      std::fprintf(stderr, "the culling kernels disagree with the dispatch tables\n");
      return 1;
    }
    benchmark::RegisterBenchmark("Cull/Dispatch", &dispatch);
    const impl::PathTable<impl::CullKernels>& paths = impl::cullPaths();
    benchmark::RegisterBenchmark("Cull/Scalar", &kernels, paths.path(0));
    for (unsigned int i = 1; i < paths.count(); ++i)
      if (paths.available(i))
        benchmark::RegisterBenchmark((std::string("Cull/") + paths.path(i).name).c_str(), &kernels, paths.path(i));
    benchmark::RegisterBenchmark("Cull/Published", &published);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    const double kernel = reporter.median("Cull/Published");
    for (const char* baseline : {"Cull/Dispatch", "Cull/Scalar"}) {
      const double t = reporter.median(baseline);
      if (t > 0.0 && kernel > 0.0)
        std::printf("%s / Cull/Published (median CPU time): %.2f (%.2f ns / %.2f ns per volume)\n", baseline,
                    t / kernel, t / kVolumes, kernel / kVolumes);
    }
    scene = nullptr;
  }
  BayCore::unregisterAllClasses();
  return 0;
}
