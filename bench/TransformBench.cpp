// The matrix array transforms: the plain element-by-element loop, each
// instruction-set path, the published members, and the same work written
// with GLM and with Eigen; float and double, 3- and 4-vectors, points and
// vectors, over 1k and 100k elements, source and destination apart. The
// point matrix is projective, so every 3-vector point is divided.
//
// Benchmark names: Transform/<variant>/<f|d><3|4><Points|Vectors>/<count>.

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>
#include <math/impl/ArrayTransformPaths.h>

#ifdef ZEMATH_BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef ZEMATH_BENCH_EIGEN
#include <Eigen/Dense>
#endif

using namespace Lux::Math;
using impl::ArrayTransformFunction;
using impl::ArrayTransformPath;

namespace {

template <class M, class V>
struct Work {
  explicit Work(unsigned int count) : count(count), src(count), dst(count) {
    using T = typename M::Scalar;
    std::mt19937 rng(1234);
    std::uniform_real_distribution<T> value(T(-1), T(1));
    for (int e = 0; e < 16; ++e) m[e] = value(rng);
    m[15] = T(4);  // w stays well away from 0 and from 1
    for (V& v : src)
      for (int c = 0; c < V::kComponentCount; ++c) v[c] = value(rng);
  }
  unsigned int count;
  M m;
  std::vector<V> src, dst;
};

template <class M, class V>
Work<M, V>& workFor(unsigned int count) {
  static std::vector<Work<M, V>*> all;
  for (Work<M, V>* w : all)
    if (w->count == count) return *w;
  all.push_back(new Work<M, V>(count));
  return *all.back();
}

template <class M, class V>
void finish(benchmark::State& state, const Work<M, V>& w) {
  state.SetItemsProcessed(std::int64_t(state.iterations()) * w.count);
}

// The loop the members ran before they had vector paths.
template <class M, class V, bool kPoints>
void scalarLoop(benchmark::State& state) {
  Work<M, V>& w = workFor<M, V>(unsigned(state.range(0)));
  for (auto _ : state) {
    for (unsigned int i = 0; i < w.count; ++i) {
      if constexpr (kPoints)
        w.dst[i].transformPoint(w.src[i], w.m);
      else
        w.dst[i].transformVector(w.src[i], w.m);
    }
    benchmark::ClobberMemory();
  }
  finish(state, w);
}

template <class M, class V>
void path(benchmark::State& state, ArrayTransformFunction<M, V> f) {
  Work<M, V>& w = workFor<M, V>(unsigned(state.range(0)));
  for (auto _ : state) {
    f(w.m, w.src.data(), w.dst.data(), w.count);
    benchmark::ClobberMemory();
  }
  finish(state, w);
}

template <class M, class V, bool kPoints>
void published(benchmark::State& state) {
  Work<M, V>& w = workFor<M, V>(unsigned(state.range(0)));
  for (auto _ : state) {
    if constexpr (kPoints)
      w.m.transformPoints(w.src.data(), w.dst.data(), w.count);
    else
      w.m.transformVectors(w.src.data(), w.dst.data(), w.count);
    benchmark::ClobberMemory();
  }
  finish(state, w);
}

#ifdef ZEMATH_BENCH_GLM
// What a GLM user writes: column vectors, so the row-vector matrix is used
// transposed; a 3-vector point is divided by w.
template <class M, class V, bool kPoints>
void glmLoop(benchmark::State& state) {
  using T = typename M::Scalar;
  Work<M, V>& w = workFor<M, V>(unsigned(state.range(0)));
  glm::mat<4, 4, T> g;
  for (int e = 0; e < 16; ++e) g[e / 4][e % 4] = w.m[e];
  const glm::mat<3, 3, T> g3(g);
  for (auto _ : state) {
    for (unsigned int i = 0; i < w.count; ++i) {
      const V& s = w.src[i];
      if constexpr (V::kComponentCount == 3) {
        const glm::vec<3, T> v(s.x, s.y, s.z);
        glm::vec<3, T> r;
        if constexpr (kPoints) {
          const glm::vec<4, T> p = g * glm::vec<4, T>(v, T(1));
          r = glm::vec<3, T>(p) / p.w;
        } else {
          r = g3 * v;
        }
        std::memcpy(&w.dst[i], &r, sizeof r);
      } else {
        const glm::vec<4, T> v(s.x, s.y, s.z, s.w);
        const glm::vec<4, T> r = kPoints ? g * v : glm::vec<4, T>(g3 * glm::vec<3, T>(v), v.w);
        std::memcpy(&w.dst[i], &r, sizeof r);
      }
    }
    benchmark::ClobberMemory();
  }
  finish(state, w);
}
#endif

#ifdef ZEMATH_BENCH_EIGEN
// What an Eigen user writes: column vectors, homogeneous points normalised
// by w for 3-vectors.
template <class M, class V, bool kPoints>
void eigenLoop(benchmark::State& state) {
  using T = typename M::Scalar;
  Work<M, V>& w = workFor<M, V>(unsigned(state.range(0)));
  Eigen::Matrix<T, 4, 4> g;
  std::memcpy(g.data(), w.m.data(), sizeof(T) * 16);
  const Eigen::Matrix<T, 3, 3> g3 = g.template topLeftCorner<3, 3>();
  for (auto _ : state) {
    for (unsigned int i = 0; i < w.count; ++i) {
      const Eigen::Map<const Eigen::Matrix<T, V::kComponentCount, 1>> v(w.src[i].data());
      Eigen::Map<Eigen::Matrix<T, V::kComponentCount, 1>> r(w.dst[i].data());
      if constexpr (V::kComponentCount == 3) {
        if constexpr (kPoints)
          r = (g * v.homogeneous()).hnormalized();
        else
          r = g3 * v;
      } else {
        if constexpr (kPoints) {
          r = g * v;
        } else {
          const T keep = v.w();
          r.template head<3>() = g3 * v.template head<3>();
          r.w() = keep;
        }
      }
    }
    benchmark::ClobberMemory();
  }
  finish(state, w);
}
#endif

template <class M, class V, bool kPoints>
void registerKind(const char* tag, ArrayTransformFunction<M, V> ArrayTransformPath::*kernel) {
  const auto name = [tag](const std::string& variant) { return "Transform/" + variant + "/" + tag; };
  const auto counts = [](benchmark::internal::Benchmark* b) { b->Arg(1000)->Arg(100000); };
  benchmark::RegisterBenchmark(name("Scalar").c_str(), &scalarLoop<M, V, kPoints>)->Apply(counts);
  const impl::PathTable<impl::ArrayTransformKernels>& paths = impl::arrayTransformPaths();
  for (unsigned int i = 1; i < paths.count(); ++i) {
    const ArrayTransformPath& p = paths.path(i);
    if (paths.available(i)) benchmark::RegisterBenchmark(name(p.name).c_str(), &path<M, V>, p.*kernel)->Apply(counts);
  }
  benchmark::RegisterBenchmark(name("Published").c_str(), &published<M, V, kPoints>)->Apply(counts);
#ifdef ZEMATH_BENCH_GLM
  benchmark::RegisterBenchmark(name("GLM").c_str(), &glmLoop<M, V, kPoints>)->Apply(counts);
#endif
#ifdef ZEMATH_BENCH_EIGEN
  benchmark::RegisterBenchmark(name("Eigen").c_str(), &eigenLoop<M, V, kPoints>)->Apply(counts);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  registerKind<zeMatrix44f, zeVec3f, true>("f3Points", &ArrayTransformPath::points3f);
  registerKind<zeMatrix44f, zeVec3f, false>("f3Vectors", &ArrayTransformPath::vectors3f);
  registerKind<zeMatrix44f, zeVec4f, true>("f4Points", &ArrayTransformPath::points4f);
  registerKind<zeMatrix44f, zeVec4f, false>("f4Vectors", &ArrayTransformPath::vectors4f);
  registerKind<zeMatrix44d, zeVec3d, true>("d3Points", &ArrayTransformPath::points3d);
  registerKind<zeMatrix44d, zeVec3d, false>("d3Vectors", &ArrayTransformPath::vectors3d);
  registerKind<zeMatrix44d, zeVec4d, true>("d4Points", &ArrayTransformPath::points4d);
  registerKind<zeMatrix44d, zeVec4d, false>("d4Vectors", &ArrayTransformPath::vectors4d);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
