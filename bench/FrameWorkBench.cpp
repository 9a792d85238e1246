// Morphing and the 4x4 product. Morphing with 1 and 8 targets over 1M
// vertices is set against its memory limit: a loop that moves exactly the
// bytes the kernel moves (the base and every target read, the outputs
// written) and does nothing else, with normal and with non-temporal stores;
// and each instruction-set path of the kernel on its own. The float and
// double products against GLM's and Eigen's.
//
// Benchmark names: Morph/<variant>/<targets> (variant Published, Limit,
// LimitNT, Scalar or a path name: sse2, avx2, avx512), Product/<variant>.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "MemoryLimit.h"

#include <math/ZEMath.h>
#include <math/kernels/impl/MorphingPaths.h>

#ifdef ZEMATH_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef ZEMATH_BENCH_EIGEN
#include <Eigen/Dense>
#endif

using namespace Lux::Math;

namespace {

constexpr unsigned int kVertices = 1000000;

struct Morph {
  explicit Morph(unsigned int targetCount)
      : base(kVertices), targets(targetCount), weights(targetCount, 0.125f), bytes(kVertices * sizeof(zeVec3f) + 64) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> value(-1.0f, 1.0f);
    for (zeVec3f& v : base) v = zeVec3f(value(rng), value(rng), value(rng));
    for (std::vector<zeVec3f>& t : targets) {
      t.resize(kVertices);
      for (zeVec3f& v : t) v = zeVec3f(value(rng), value(rng), value(rng));
      pointers.push_back(t.data());
    }
  }
  std::vector<zeVec3f> base;
  std::vector<std::vector<zeVec3f>> targets;
  std::vector<const zeVec3f*> pointers;
  std::vector<float> weights;
  /// Room for the outputs, which start at a 64-byte boundary.
  std::vector<unsigned char> bytes;
  zeVec3f* out() {
    const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(bytes.data());
    return reinterpret_cast<zeVec3f*>(bytes.data() + (64 - at % 64) % 64);
  }
};

Morph& morphFor(unsigned int targetCount) {
  static Morph one(1), eight(8);
  return targetCount == 1 ? one : eight;
}

void setBytes(benchmark::State& state, const Morph& m) {
  const std::int64_t perVertex = std::int64_t(12) * (m.targets.size() + 2);
  state.SetBytesProcessed(std::int64_t(state.iterations()) * perVertex * kVertices);
}

void morph(benchmark::State& state, zeVectorMorphing::MorphingFunction f) {
  Morph& m = morphFor(unsigned(state.range(0)));
  for (auto _ : state) {
    f(m.base.data(), m.pointers.data(), m.weights.data(), kVertices, unsigned(m.pointers.size()), m.out(), 12);
    benchmark::ClobberMemory();
  }
  setBytes(state, m);
}

// The bytes the kernel moves, and nothing else.
void limit(benchmark::State& state, zebench::LimitStores stores) {
  Morph& m = morphFor(unsigned(state.range(0)));
  std::vector<zebench::ReadStream> streams = {{m.base.data(), sizeof(zeVec3f)}};
  for (const zeVec3f* t : m.pointers) streams.push_back({t, sizeof(zeVec3f)});
  unsigned char* out = reinterpret_cast<unsigned char*>(m.out());
  for (auto _ : state) {
    benchmark::DoNotOptimize(zebench::memoryLimit(streams.data(), streams.size(), kVertices, out, 12, stores));
    benchmark::ClobberMemory();
  }
  setBytes(state, m);
}

template <class M>
M filled(unsigned int seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<float> value(-1.0f, 1.0f);
  M m;
  for (int e = 0; e < 16; ++e) m[e] = value(rng);
  return m;
}

void productFloat(benchmark::State& state) {
  zeMatrix44f a = filled<zeMatrix44f>(1), b = filled<zeMatrix44f>(2), c;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    zeMatrix44f::matrixMultiply(&c, &a, &b);
    benchmark::DoNotOptimize(&c);
    benchmark::ClobberMemory();
  }
}

void productDouble(benchmark::State& state) {
  zeMatrix44d a = filled<zeMatrix44d>(1), b = filled<zeMatrix44d>(2), c;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    c.multiply(a, b);
    benchmark::DoNotOptimize(&c);
    benchmark::ClobberMemory();
  }
}

#ifdef ZEMATH_BENCH_GLM
void productGlm(benchmark::State& state) {
  glm::mat4 a(1.5f), b(0.5f), c;
  a[3][1] = 2.0f;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    c = a * b;
    benchmark::DoNotOptimize(&c);
    benchmark::ClobberMemory();
  }
}
#endif

#ifdef ZEMATH_BENCH_EIGEN
void productEigen(benchmark::State& state) {
  Eigen::Matrix4f a = Eigen::Matrix4f::Random(), b = Eigen::Matrix4f::Random(), c;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    c.noalias() = a * b;
    benchmark::DoNotOptimize(&c);
    benchmark::ClobberMemory();
  }
}
#endif

}  // namespace

int main(int argc, char** argv) {
  zeVectorMorphing::userRegister();
  benchmark::RegisterBenchmark("Morph/Published", &morph, zeVectorMorphing::_vectorMorphingFunction)->Arg(1)->Arg(8);
  benchmark::RegisterBenchmark("Morph/Limit", &limit, zebench::LimitStores::kNormal)->Arg(1)->Arg(8);
  benchmark::RegisterBenchmark("Morph/LimitNT", &limit, zebench::LimitStores::kNonTemporal)->Arg(1)->Arg(8);
  benchmark::RegisterBenchmark("Morph/Scalar", &morph, &impl::morphScalar)->Arg(1)->Arg(8);
  const impl::PathTable<impl::MorphKernels>& paths = impl::morphPaths();
  for (unsigned int i = 1; i < paths.count(); ++i) {
    const impl::MorphPath& p = paths.path(i);
    if (paths.available(i))
      benchmark::RegisterBenchmark((std::string("Morph/") + p.name).c_str(), &morph, p.function)->Arg(1)->Arg(8);
  }
  benchmark::RegisterBenchmark("Product/Float", &productFloat);
  benchmark::RegisterBenchmark("Product/Double", &productDouble);
#ifdef ZEMATH_BENCH_GLM
  benchmark::RegisterBenchmark("Product/GLM", &productGlm);
#endif
#ifdef ZEMATH_BENCH_EIGEN
  benchmark::RegisterBenchmark("Product/Eigen", &productEigen);
#endif
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
