// Skinning per frame: the library's kernels (the plain scalar loop, each
// instruction-set path and the published function) against the same work
// written with GLM and with Eigen, for 1 to 4 influences over a 64-matrix
// palette, 10k and 1M vertices, output strides 12 and 32; the one-weight
// kernel; and the published kernel on two threads, each skinning its half.
//
// Benchmark names: Skin/<variant>/<influences>/<vertices>/<stride>.

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>
#include <math/kernels/impl/BlendingPaths.h>

#ifdef ZEMATH_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef ZEMATH_BENCH_EIGEN
#include <Eigen/Dense>
#endif

using namespace Lux::Math;

namespace {

struct Mesh {
  Mesh(unsigned int count, unsigned int influences, unsigned int stride)
      : count(count),
        influences(influences),
        stride(stride),
        source(count),
        weights(count * influences),
        indices(count * influences),
        palette(64),
        out(std::size_t(count) * stride / sizeof(float) + 4) {
    std::mt19937 rng(1234);
    std::uniform_real_distribution<float> value(-2.0f, 2.0f);
    std::uniform_int_distribution<int> index(0, 63);
    for (zeMatrix44f& m : palette) {
      for (int e = 0; e < 16; ++e) m[e] = value(rng);
      m(0, 3) = m(1, 3) = m(2, 3) = 0.0f;
      m(3, 3) = 1.0f;
    }
    for (zeVec4f& v : source) v = zeVec4f(value(rng), value(rng), value(rng), 1.0f);
    for (unsigned int i = 0; i < count; ++i) {
      float total = 0.0f;
      for (unsigned int k = 0; k < influences; ++k) {
        const float w = 0.25f + 0.5f * (value(rng) + 2.0f) / 4.0f;
        weights[i * influences + k] = w;
        total += w;
        indices[i * influences + k] = static_cast<unsigned char>(index(rng));
      }
      for (unsigned int k = 0; k < influences; ++k) weights[i * influences + k] /= total;
    }
  }
  zeVec3f* destination(unsigned int first = 0) {
    return reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(out.data()) + std::size_t(first) * stride);
  }
  unsigned int count, influences, stride;
  std::vector<zeVec4f> source;
  std::vector<float> weights;
  std::vector<unsigned char> indices;
  std::vector<zeMatrix44f> palette;
  std::vector<float> out;
};

Mesh& meshFor(unsigned int count, unsigned int influences, unsigned int stride) {
  static std::vector<Mesh*> meshes;
  for (Mesh* m : meshes)
    if (m->count == count && m->influences == influences && m->stride == stride) return *m;
  meshes.push_back(new Mesh(count, influences, stride));
  return *meshes.back();
}

void setCounters(benchmark::State& state, const Mesh& m) {
  state.SetItemsProcessed(std::int64_t(state.iterations()) * m.count);
}

void kernel(benchmark::State& state, impl::BlendPathFunction f) {
  Mesh& m = meshFor(unsigned(state.range(1)), unsigned(state.range(0)), unsigned(state.range(2)));
  for (auto _ : state) {
    f(m.source.data(), m.count, m.weights.data(), m.indices.data(), m.influences, m.palette.data(), m.destination(),
      m.stride);
    benchmark::ClobberMemory();
  }
  setCounters(state, m);
}

// Each thread skins its half of the mesh through the published pointer.
void twoThreads(benchmark::State& state) {
  Mesh& m = meshFor(unsigned(state.range(1)), unsigned(state.range(0)), unsigned(state.range(2)));
  const unsigned int half = m.count / 2;
  const unsigned int first = state.thread_index() == 0 ? 0 : half;
  const unsigned int n = state.thread_index() == 0 ? half : m.count - half;
  const zeVectorBlending::BlendingFunction f = zeVectorBlending::_vectorBlendingFunction;
  for (auto _ : state) {
    f(m.source.data() + first, n, m.weights.data() + std::size_t(first) * m.influences,
      m.indices.data() + std::size_t(first) * m.influences, m.influences, m.palette.data(), m.destination(first),
      m.stride);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * n);
}

#ifdef ZEMATH_BENCH_GLM
// What a GLM user writes: column vectors, so the library's row-vector
// matrices are used transposed; same threshold test.
void glmLoop(benchmark::State& state) {
  Mesh& m = meshFor(unsigned(state.range(1)), unsigned(state.range(0)), unsigned(state.range(2)));
  std::vector<glm::mat4> palette(m.palette.size());
  for (std::size_t j = 0; j < palette.size(); ++j)
    for (int e = 0; e < 16; ++e) palette[j][e / 4][e % 4] = m.palette[j][e];
  unsigned char* out = reinterpret_cast<unsigned char*>(m.out.data());
  for (auto _ : state) {
    const float* w = m.weights.data();
    const unsigned char* idx = m.indices.data();
    for (unsigned int i = 0; i < m.count; ++i) {
      const glm::vec4 p(m.source[i].x, m.source[i].y, m.source[i].z, 1.0f);
      glm::vec3 sum(0.0f);
      for (unsigned int k = 0; k < m.influences; ++k, ++w, ++idx)
        if (*w > zeBlendWeightThreshold) sum += glm::vec3(palette[*idx] * p) * *w;
      std::memcpy(out + std::size_t(i) * m.stride, &sum, 12);
    }
    benchmark::ClobberMemory();
  }
  setCounters(state, m);
}
#endif

#ifdef ZEMATH_BENCH_EIGEN
// What an Eigen user writes: affine transforms applied to column vectors.
void eigenLoop(benchmark::State& state) {
  Mesh& m = meshFor(unsigned(state.range(1)), unsigned(state.range(0)), unsigned(state.range(2)));
  std::vector<Eigen::Matrix4f> palette(m.palette.size());
  for (std::size_t j = 0; j < palette.size(); ++j) std::memcpy(palette[j].data(), m.palette[j].data(), 64);
  unsigned char* out = reinterpret_cast<unsigned char*>(m.out.data());
  for (auto _ : state) {
    const float* w = m.weights.data();
    const unsigned char* idx = m.indices.data();
    for (unsigned int i = 0; i < m.count; ++i) {
      const Eigen::Vector4f p(m.source[i].x, m.source[i].y, m.source[i].z, 1.0f);
      Eigen::Vector3f sum = Eigen::Vector3f::Zero();
      for (unsigned int k = 0; k < m.influences; ++k, ++w, ++idx)
        if (*w > zeBlendWeightThreshold) sum += (palette[*idx] * p).head<3>() * *w;
      std::memcpy(out + std::size_t(i) * m.stride, sum.data(), 12);
    }
    benchmark::ClobberMemory();
  }
  setCounters(state, m);
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

}  // namespace

int main(int argc, char** argv) {
  zeVectorBlending::userRegister();
  benchmark::RegisterBenchmark("Skin/Scalar", &kernel, &impl::blendScalar)->Apply(shapes);
  const impl::PathTable<impl::BlendKernels>& paths = impl::blendPaths();
  for (unsigned int i = 1; i < paths.count(); ++i) {
    const impl::BlendPath& p = paths.path(i);
    if (paths.available(i))
      benchmark::RegisterBenchmark((std::string("Skin/") + p.name).c_str(), &kernel, p.weighted)->Apply(shapes);
  }
  benchmark::RegisterBenchmark("Skin/Published", &kernel, zeVectorBlending::_vectorBlendingFunction)->Apply(shapes);
  benchmark::RegisterBenchmark("Skin/PublishedTwoThreads", &twoThreads)->Apply(shapes)->Threads(2)->UseRealTime();
#ifdef ZEMATH_BENCH_GLM
  benchmark::RegisterBenchmark("Skin/GLM", &glmLoop)->Apply(shapes);
#endif
#ifdef ZEMATH_BENCH_EIGEN
  benchmark::RegisterBenchmark("Skin/Eigen", &eigenLoop)->Apply(shapes);
#endif
  benchmark::RegisterBenchmark("OneWeight/Scalar", &kernel, &impl::blendOneWeightScalar)->Apply(oneWeightShapes);
  benchmark::RegisterBenchmark("OneWeight/Published", &kernel, zeVectorBlending::_vectorBlendingOneWeightFunction)
      ->Apply(oneWeightShapes);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
