// The cost of dispatching a box/sphere intersection test through the volume
// tables (zeVolume::intersect: two type indices, the pair index, one indirect
// call) against calling the box/sphere routine itself through a function
// pointer the compiler cannot see through. Prints the ratio of the two.

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>

using namespace Lux;
using namespace Lux::Math;

namespace {

const char* const kDispatched = "BoxSphere/ThroughIntersect";
const char* const kDirect = "BoxSphere/DirectCall";

// A box and a sphere reaching into it from outside one face.
struct Scene {
  Scene()
      : box(zeSmartPointer<zeAABox>::adopt(static_cast<zeAABox*>(zeAABox::_instantiateFromPool(nullptr)))),
        sphere(zeSmartPointer<zeSphere>::adopt(static_cast<zeSphere*>(zeSphere::_instantiateFromPool(nullptr)))) {
    box->_min = zeVec3f(-1.0f, -1.0f, -1.0f);
    box->_max = zeVec3f(1.0f, 1.0f, 1.0f);
    sphere->_center = zeVec3f(1.5f, 0.25f, -0.5f);
    sphere->_radius = 0.75f;
  }
  zeSmartPointer<zeAABox> box;
  zeSmartPointer<zeSphere> sphere;
};

void throughIntersect(benchmark::State& state, const Scene* scene) {
  const zeVolume* box = scene->box.get();
  const zeVolume* sphere = scene->sphere.get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(sphere);
    benchmark::DoNotOptimize(box->intersect(sphere));
  }
}

// Read anew on every call, so the routine is never inlined.
zeIntersectionFunction volatile directRoutine = &zeAABox::zeAABoxIntersectSphere;

void directCall(benchmark::State& state, const Scene* scene) {
  const zeVolume* box = scene->box.get();
  const zeVolume* sphere = scene->sphere.get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(sphere);
    const zeIntersectionFunction routine = directRoutine;
    benchmark::DoNotOptimize(routine(box, sphere));
  }
}

// Prints as usual and keeps the CPU time per iteration of each run, or the
// median the library reports when it reports aggregates only.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const std::string name = run.run_name.function_name;
      if (run.run_type == Run::RT_Iteration) times[name].push_back(run.GetAdjustedCPUTime());
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") medians[name] = run.GetAdjustedCPUTime();
    }
  }
  // The median time of benchmark `name`; 0 when it did not run.
  double median(const std::string& name) {
    std::vector<double>& t = times[name];
    if (t.empty()) return medians.count(name) ? medians[name] : 0.0;
    std::sort(t.begin(), t.end());
    return t.size() % 2 ? t[t.size() / 2] : (t[t.size() / 2 - 1] + t[t.size() / 2]) / 2;
  }

 private:
  std::map<std::string, std::vector<double>> times;
  std::map<std::string, double> medians;
};

}  // namespace

int main(int argc, char** argv) {
  zeAABox::bayRegister();  // registers the sphere and the plane on the way
  {
    Scene scene;
    if (!scene.box || !scene.sphere || !scene.box->intersect(scene.sphere.get())) {
      std::fprintf(stderr, "the box and the sphere are not set up to intersect\n");
      return 1;
    }
    benchmark::RegisterBenchmark(kDispatched, &throughIntersect, &scene);
    benchmark::RegisterBenchmark(kDirect, &directCall, &scene);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    const double dispatched = reporter.median(kDispatched), direct = reporter.median(kDirect);
    if (dispatched > 0.0 && direct > 0.0) {
      std::printf("through intersect / direct call (median CPU time): %.3f (%.3f ns / %.3f ns)\n", dispatched / direct,
                  dispatched, direct);
    }
  }
  BayCore::unregisterAllClasses();
  return 0;
}
