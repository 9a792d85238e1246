// The library's own trigonometric functions against the C library's, on the
// same 4096 inputs per iteration: angles in [-10, 10] for sin, cos, sincos
// and tan, [-1, 1] for asin and acos, [-20, 20] for atan, points of
// [-10, 10]^2 for atan2.
//
// Benchmark names: Trig/<function>/<f|d>/<Portable|CLibrary>.

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>

using namespace Lux::Math;

namespace {

constexpr int kCount = 4096;

template <class T>
std::vector<T> inputs(double low, double high, unsigned seed) {
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> d(low, high);
  std::vector<T> v(kCount);
  for (T& x : v) x = static_cast<T>(d(random));
  return v;
}

/// Calls f on every input and keeps the results alive.
template <class T, class F>
void unary(benchmark::State& state, double low, double high, F f) {
  const std::vector<T> x = inputs<T>(low, high, 1);
  for (auto _ : state) {
    T sum = 0;
    for (T v : x) sum += f(v);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

template <class T, class F>
void binary(benchmark::State& state, F f) {
  const std::vector<T> y = inputs<T>(-10, 10, 2), x = inputs<T>(-10, 10, 3);
  for (auto _ : state) {
    T sum = 0;
    for (int i = 0; i < kCount; ++i) sum += f(y[i], x[i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

template <class T>
void sinCosPortable(T a, T& s, T& c) {
  zePortableSinCos(a, s, c);
}
void sinCosSystem(float a, float& s, float& c) { ::sincosf(a, &s, &c); }
void sinCosSystem(double a, double& s, double& c) { ::sincos(a, &s, &c); }

template <class T>
void registerAll(const char* p) {
  const std::string prefix = std::string("Trig/");
  auto add = [&](const char* fn, const char* who, auto body) {
    benchmark::RegisterBenchmark((prefix + fn + "/" + p + "/" + who).c_str(), body);
  };
  add("sin", "Portable", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return zePortableSin(v); }); });
  add("sin", "CLibrary", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return std::sin(v); }); });
  add("cos", "Portable", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return zePortableCos(v); }); });
  add("cos", "CLibrary", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return std::cos(v); }); });
  add("sincos", "Portable", [](benchmark::State& s) {
    unary<T>(s, -10, 10, [](T v) {
      T a, b;
      sinCosPortable(v, a, b);
      return a + b;
    });
  });
  add("sincos", "CLibrary", [](benchmark::State& s) {
    unary<T>(s, -10, 10, [](T v) {
      T a, b;
      sinCosSystem(v, a, b);
      return a + b;
    });
  });
  add("tan", "Portable", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return zePortableTan(v); }); });
  add("tan", "CLibrary", [](benchmark::State& s) { unary<T>(s, -10, 10, [](T v) { return std::tan(v); }); });
  add("asin", "Portable", [](benchmark::State& s) { unary<T>(s, -1, 1, [](T v) { return zePortableAsin(v); }); });
  add("asin", "CLibrary", [](benchmark::State& s) { unary<T>(s, -1, 1, [](T v) { return std::asin(v); }); });
  add("acos", "Portable", [](benchmark::State& s) { unary<T>(s, -1, 1, [](T v) { return zePortableAcos(v); }); });
  add("acos", "CLibrary", [](benchmark::State& s) { unary<T>(s, -1, 1, [](T v) { return std::acos(v); }); });
  add("atan", "Portable", [](benchmark::State& s) { unary<T>(s, -20, 20, [](T v) { return zePortableAtan(v); }); });
  add("atan", "CLibrary", [](benchmark::State& s) { unary<T>(s, -20, 20, [](T v) { return std::atan(v); }); });
  add("atan2", "Portable", [](benchmark::State& s) { binary<T>(s, [](T y, T x) { return zePortableAtan2(y, x); }); });
  add("atan2", "CLibrary", [](benchmark::State& s) { binary<T>(s, [](T y, T x) { return std::atan2(y, x); }); });
}

}  // namespace

int main(int argc, char** argv) {
  registerAll<float>("f");
  registerAll<double>("d");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
