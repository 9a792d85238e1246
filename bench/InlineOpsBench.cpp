// Inline operations as a user's program compiles them (bench/CMakeLists.txt
// builds this file with -O2 -march=x86-64-v3 and only what the ZEMath target
// passes on): over a batch of 1024 inputs per iteration, the single point
// transform, cross product, lerp and triangle normal of zeVec3f, the full
// transform of zeVec4f, the quaternion product, the 4x4 products, the
// pre-translation and the pixel diameter. These must stay inline and as fast
// as the plain expressions: items per second is operations per second.
//
// Benchmark names: Inline/<operation>.

#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>

using namespace Lux::Math;

namespace {

constexpr int kBatch = 1024;

struct Inputs {
  std::vector<zeVec3f> a, b, c;
  std::vector<zeVec4f> p;
  std::vector<float> t;
  std::vector<zeQuaternionf> q, r;
  std::vector<zeMatrix44f> m, n;
  std::vector<zeMatrix44d> md, nd;
};

const Inputs& inputs() {
  static const Inputs in = [] {
    std::mt19937 rng(17);
    std::uniform_real_distribution<float> value(-4.0f, 4.0f), fraction(0.0f, 1.0f);
    auto v = [&] { return value(rng); };
    Inputs made;
    for (int i = 0; i < kBatch; ++i) {
      made.a.emplace_back(v(), v(), v());
      made.b.emplace_back(v(), v(), v());
      made.c.emplace_back(v(), v(), v());
      made.p.emplace_back(v(), v(), v(), 1.0f);
      made.t.push_back(fraction(rng));
      made.q.emplace_back(v(), v(), v(), v());
      made.r.emplace_back(v(), v(), v(), v());
      zeMatrix44f m, n;
      zeMatrix44d md, nd;
      for (int e = 0; e < 16; ++e) {
        m[e] = v();
        n[e] = v();
        md[e] = v();
        nd[e] = v();
      }
      made.m.push_back(m);
      made.n.push_back(n);
      made.md.push_back(md);
      made.nd.push_back(nd);
    }
    return made;
  }();
  return in;
}

// Runs op(i, out[i]) over the batch each iteration.
template <class Out, class Op>
void batch(benchmark::State& state, Op op) {
  std::vector<Out> out(kBatch);
  for (auto _ : state) {
    for (int i = 0; i < kBatch; ++i) op(i, out[i]);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kBatch);
}

void Vec3fTransformPoint(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeVec3f>(state, [&](int i, zeVec3f& out) { out.transformPoint(in.a[i], in.m[i]); });
}
void Vec3fCross(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeVec3f>(state, [&](int i, zeVec3f& out) { out.cross(in.a[i], in.b[i]); });
}
void Vec3fLerp(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeVec3f>(state, [&](int i, zeVec3f& out) { out.lerp(in.t[i], in.a[i], in.b[i]); });
}
void Vec3fMakeNormal(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeVec3f>(state, [&](int i, zeVec3f& out) { out.makeNormal(in.a[i], in.b[i], in.c[i]); });
}
void Vec4fTransformPoint(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeVec4f>(state, [&](int i, zeVec4f& out) { out.transformPoint(in.p[i], in.m[i]); });
}
void QuaternionfMultiply(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeQuaternionf>(state, [&](int i, zeQuaternionf& out) { out.multiply(in.q[i], in.r[i]); });
}
void Matrix44fProduct(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeMatrix44f>(state, [&](int i, zeMatrix44f& out) { zeMatrix44f::matrixMultiply(&out, &in.m[i], &in.n[i]); });
}
void Matrix44dProduct(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeMatrix44d>(state, [&](int i, zeMatrix44d& out) { out.multiply(in.md[i], in.nd[i]); });
}
void Matrix44fPreTranslation(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<zeMatrix44f>(state, [&](int i, zeMatrix44f& out) {
    out = in.m[i];
    out.preTranslation(in.a[i]);
  });
}
void Vec4fPixelSpaceDiameter(benchmark::State& state) {
  const Inputs& in = inputs();
  batch<float>(state, [&](int i, float& out) { out = in.p[i].computePixelSpaceDiameter(in.a[i], in.t[i]); });
}

BENCHMARK(Vec3fTransformPoint)->Name("Inline/Vec3fTransformPoint");
BENCHMARK(Vec3fCross)->Name("Inline/Vec3fCross");
BENCHMARK(Vec3fLerp)->Name("Inline/Vec3fLerp");
BENCHMARK(Vec3fMakeNormal)->Name("Inline/Vec3fMakeNormal");
BENCHMARK(Vec4fTransformPoint)->Name("Inline/Vec4fTransformPoint");
BENCHMARK(QuaternionfMultiply)->Name("Inline/QuaternionfMultiply");
BENCHMARK(Matrix44fProduct)->Name("Inline/Matrix44fProduct");
BENCHMARK(Matrix44dProduct)->Name("Inline/Matrix44dProduct");
BENCHMARK(Matrix44fPreTranslation)->Name("Inline/Matrix44fPreTranslation");
BENCHMARK(Vec4fPixelSpaceDiameter)->Name("Inline/Vec4fPixelSpaceDiameter");

}  // namespace

BENCHMARK_MAIN();
