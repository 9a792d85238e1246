// Skinning per frame, on weights shaped like exported characters (each
// vertex counts 1 to 4 of its influences, the others weigh exactly 0) and,
// reported apart, on weights that all count: the plain scalar loop, each
// instruction-set path and the published function, against the same work
// written with GLM and with Eigen, and against the memory limit: a loop that
// moves exactly the bytes the kernel moves (sources, weights and indices
// read, 12 bytes written per vertex at the stride) and does nothing else,
// with normal and with non-temporal stores. 1 to 4 influences over a
// 64-matrix palette, 10k and 1M vertices, output strides 12 and 32; the
// one-weight kernel; the published kernel on two threads, each skinning its
// half.
//
// Benchmark names: Skin/<variant>/<real|all>/<influences>/<vertices>/<stride>,
// Skin/<Limit|LimitNT>/<influences>/<vertices>/<stride>,
// OneWeight/<variant|Limit|LimitNT>/1/<vertices>/<stride>.

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>
#include <math/kernels/impl/BlendingPaths.h>

#include "MemoryLimit.h"
#include "SkinningMeshes.h"

#ifdef ZEMATH_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef ZEMATH_BENCH_EIGEN
#include <Eigen/Dense>
#endif

using namespace Lux::Math;
using zebench::SkinningMesh;
using zebench::SkinWeights;

namespace {

constexpr unsigned int kPalette = 64;

/// Guards the meshes and outputs made on first use (threaded benchmarks
/// start together).
std::mutex made;

/// A mesh of {influences, vertices} and its weights, made once.
const SkinningMesh& meshFor(int influences, int count, SkinWeights kind) {
  const std::lock_guard<std::mutex> lock(made);
  static std::map<std::tuple<int, int, int>, std::unique_ptr<SkinningMesh>> meshes;
  std::unique_ptr<SkinningMesh>& m = meshes[std::make_tuple(influences, count, int(kind))];
  if (!m)
    m = std::make_unique<SkinningMesh>(
        zebench::makeSkinningMesh(unsigned(count), unsigned(influences), kPalette, kind));
  return *m;
}

/// Room for `count` outputs `stride` bytes apart, from a 64-byte boundary, made once.
unsigned char* outputsFor(int count, int stride) {
  const std::lock_guard<std::mutex> lock(made);
  static std::map<std::pair<int, int>, std::vector<unsigned char>> outputs;
  std::vector<unsigned char>& bytes = outputs[std::make_pair(count, stride)];
  if (bytes.empty()) bytes.resize(std::size_t(count) * unsigned(stride) + 64);
  const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(bytes.data());
  return bytes.data() + (64 - at % 64) % 64;
}

/// The inputs and outputs of a benchmark's arguments {influences, vertices, stride}.
struct Skin {
  Skin(const benchmark::State& state, SkinWeights kind)
      : mesh(meshFor(int(state.range(0)), int(state.range(1)), kind)),
        stride(unsigned(state.range(2))),
        bytes(outputsFor(int(state.range(1)), int(state.range(2)))) {}
  unsigned char* out(unsigned int first = 0) const { return bytes + std::size_t(first) * stride; }
  zeVec3f* destination(unsigned int first = 0) const { return reinterpret_cast<zeVec3f*>(out(first)); }
  const SkinningMesh& mesh;
  unsigned int stride;
  unsigned char* bytes;
};

void setCounters(benchmark::State& state, unsigned int count) {
  state.SetItemsProcessed(std::int64_t(state.iterations()) * count);
}

void kernel(benchmark::State& state, impl::BlendPathFunction f, SkinWeights kind) {
  const Skin s(state, kind);
  const SkinningMesh& m = s.mesh;
  for (auto _ : state) {
    f(m.source.data(), m.count, m.weights.data(), m.indices.data(), m.influences, m.palette.data(), s.destination(),
      s.stride);
    benchmark::ClobberMemory();
  }
  setCounters(state, m.count);
}

// A published kernel, labelled with the path it runs.
void published(benchmark::State& state, impl::BlendPathFunction f, SkinWeights kind) {
  state.SetLabel(zePathName(ZE_MATH_PATH_FAMILY_SKINNING));
  kernel(state, f, kind);
}

// The bytes a kernel moves, and nothing else: the weighted kernel's, or
// with `oneWeight` those of the kernel that reads no weights.
void limit(benchmark::State& state, zebench::LimitStores stores, bool oneWeight) {
  const Skin s(state, SkinWeights::kRealistic);
  const SkinningMesh& m = s.mesh;
  const zebench::ReadStream streams[] = {{m.source.data(), sizeof(zeVec4f)},
                                         {m.indices.data(), m.influences},
                                         {m.weights.data(), m.influences * sizeof(float)}};
  for (auto _ : state) {
    benchmark::DoNotOptimize(zebench::memoryLimit(streams, oneWeight ? 2 : 3, m.count, s.out(), s.stride, stores));
    benchmark::ClobberMemory();
  }
  setCounters(state, m.count);
}

// Each thread skins its half of the mesh through the published pointer.
void twoThreads(benchmark::State& state) {
  const Skin s(state, SkinWeights::kRealistic);
  const SkinningMesh& m = s.mesh;
  const unsigned int half = m.count / 2;
  const unsigned int first = state.thread_index() == 0 ? 0 : half;
  const unsigned int n = state.thread_index() == 0 ? half : m.count - half;
  const zeVectorBlending::BlendingFunction f = zeVectorBlending::_vectorBlendingFunction;
  for (auto _ : state) {
    f(m.source.data() + first, n, m.weights.data() + std::size_t(first) * m.influences,
      m.indices.data() + std::size_t(first) * m.influences, m.influences, m.palette.data(), s.destination(first),
      s.stride);
    benchmark::ClobberMemory();
  }
  setCounters(state, n);
}

#ifdef ZEMATH_BENCH_GLM
// What a GLM user writes: column vectors, so the library's row-vector
// matrices are used transposed; same threshold test.
void glmLoop(benchmark::State& state, SkinWeights kind) {
  const Skin s(state, kind);
  const SkinningMesh& m = s.mesh;
  std::vector<glm::mat4> palette(m.palette.size());
  for (std::size_t j = 0; j < palette.size(); ++j)
    for (int e = 0; e < 16; ++e) palette[j][e / 4][e % 4] = m.palette[j][e];
  for (auto _ : state) {
    const float* w = m.weights.data();
    const unsigned char* idx = m.indices.data();
    for (unsigned int i = 0; i < m.count; ++i) {
      const glm::vec4 p(m.source[i].x, m.source[i].y, m.source[i].z, 1.0f);
      glm::vec3 sum(0.0f);
      for (unsigned int k = 0; k < m.influences; ++k, ++w, ++idx)
        if (*w > zeBlendWeightThreshold) sum += glm::vec3(palette[*idx] * p) * *w;
      std::memcpy(s.out(i), &sum, 12);
    }
    benchmark::ClobberMemory();
  }
  setCounters(state, m.count);
}
#endif

#ifdef ZEMATH_BENCH_EIGEN
// What an Eigen user writes: affine transforms applied to column vectors.
void eigenLoop(benchmark::State& state, SkinWeights kind) {
  const Skin s(state, kind);
  const SkinningMesh& m = s.mesh;
  std::vector<Eigen::Matrix4f> palette(m.palette.size());
  for (std::size_t j = 0; j < palette.size(); ++j) std::memcpy(palette[j].data(), m.palette[j].data(), 64);
  for (auto _ : state) {
    const float* w = m.weights.data();
    const unsigned char* idx = m.indices.data();
    for (unsigned int i = 0; i < m.count; ++i) {
      const Eigen::Vector4f p(m.source[i].x, m.source[i].y, m.source[i].z, 1.0f);
      Eigen::Vector3f sum = Eigen::Vector3f::Zero();
      for (unsigned int k = 0; k < m.influences; ++k, ++w, ++idx)
        if (*w > zeBlendWeightThreshold) sum += (palette[*idx] * p).head<3>() * *w;
      std::memcpy(s.out(i), sum.data(), 12);
    }
    benchmark::ClobberMemory();
  }
  setCounters(state, m.count);
}
#endif

void shapes(benchmark::internal::Benchmark* b) {
  for (int influences = 1; influences <= 4; ++influences)
    for (int count : {10000, 1000000})
      for (int stride : {12, 32}) b->Args({influences, count, stride});
}

void oneWeightShapes(benchmark::internal::Benchmark* b) {
  for (int count : {10000, 1000000})
    for (int stride : {12, 32}) b->Args({1, count, stride});
}

const struct {
  const char* name;
  SkinWeights kind;
} kWeights[] = {{"real", SkinWeights::kRealistic}, {"all", SkinWeights::kAllCounting}};

}  // namespace

int main(int argc, char** argv) {
  zeVectorBlending::userRegister();
  const impl::PathTable<impl::BlendKernels>& paths = impl::blendPaths();
  for (const auto& w : kWeights) {
    const std::string tail = std::string("/") + w.name;
    benchmark::RegisterBenchmark(("Skin/Scalar" + tail).c_str(), &kernel, &impl::blendScalar, w.kind)->Apply(shapes);
    for (unsigned int i = 1; i < paths.count(); ++i)
      if (paths.available(i))
        benchmark::RegisterBenchmark(("Skin/" + std::string(paths.path(i).name) + tail).c_str(), &kernel,
                                     paths.path(i).weighted, w.kind)
            ->Apply(shapes);
    benchmark::RegisterBenchmark(("Skin/Published" + tail).c_str(), &published,
                                 zeVectorBlending::_vectorBlendingFunction, w.kind)
        ->Apply(shapes);
#ifdef ZEMATH_BENCH_GLM
    benchmark::RegisterBenchmark(("Skin/GLM" + tail).c_str(), &glmLoop, w.kind)->Apply(shapes);
#endif
#ifdef ZEMATH_BENCH_EIGEN
    benchmark::RegisterBenchmark(("Skin/Eigen" + tail).c_str(), &eigenLoop, w.kind)->Apply(shapes);
#endif
  }
  benchmark::RegisterBenchmark("Skin/Limit", &limit, zebench::LimitStores::kNormal, false)->Apply(shapes);
  benchmark::RegisterBenchmark("Skin/LimitNT", &limit, zebench::LimitStores::kNonTemporal, false)->Apply(shapes);
  benchmark::RegisterBenchmark("Skin/PublishedTwoThreads/real", &twoThreads)->Apply(shapes)->Threads(2)->UseRealTime();
  benchmark::RegisterBenchmark("OneWeight/Scalar", &kernel, &impl::blendOneWeightScalar, SkinWeights::kRealistic)
      ->Apply(oneWeightShapes);
  for (unsigned int i = 1; i < paths.count(); ++i)
    if (paths.available(i))
      benchmark::RegisterBenchmark(("OneWeight/" + std::string(paths.path(i).name)).c_str(), &kernel,
                                   paths.path(i).oneWeight, SkinWeights::kRealistic)
          ->Apply(oneWeightShapes);
  benchmark::RegisterBenchmark("OneWeight/Limit", &limit, zebench::LimitStores::kNormal, true)->Apply(oneWeightShapes);
  benchmark::RegisterBenchmark("OneWeight/LimitNT", &limit, zebench::LimitStores::kNonTemporal, true)
      ->Apply(oneWeightShapes);
  benchmark::RegisterBenchmark("OneWeight/Published", &published, zeVectorBlending::_vectorBlendingOneWeightFunction,
                               SkinWeights::kRealistic)
      ->Apply(oneWeightShapes);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
