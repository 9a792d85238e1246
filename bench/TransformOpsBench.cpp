// Transform work an engine does every frame, over a batch of 1024 inputs per
// iteration: the general and the affine 4x4 inverse, the quaternion blend and
// the quaternion's rotation matrix, float and double, each set against what a
// GLM user and an Eigen user would write for the same work.
//
// Benchmark names: Invert/<variant>/<f|d>, InvertAffine/<variant>/<f|d>,
// Slerp/<variant>/<f|d>, QuatToMatrix/<variant>/<f|d>, with the variant
// ZEMath, GLM or Eigen.

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>

#ifdef ZEMATH_BENCH_GLM
#include <glm/glm.hpp>
#include <glm/gtc/matrix_inverse.hpp>
#include <glm/gtc/quaternion.hpp>
#endif
#ifdef ZEMATH_BENCH_EIGEN
#include <Eigen/Dense>
#endif

using namespace Lux::Math;

namespace {

constexpr int kBatch = 1024;

// The inputs, generated once in double and narrowed for the float runs.
// Matrices are stored row by row with the translation in elements 12-14; the
// column-major, column-vector layouts of GLM and Eigen hold the same transform
// in the same sixteen places, so every library reads the same numbers.
template <class T>
struct Inputs {
  std::vector<std::array<T, 16>> matrices;
  std::vector<std::array<T, 4>> from, to;  // unit quaternions, x y z w
  std::vector<T> t;
};

std::array<double, 4> randomUnitQuaternion(std::mt19937& rng) {
  std::normal_distribution<double> n;
  std::array<double, 4> q{n(rng), n(rng), n(rng), n(rng)};
  const double length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
  for (double& c : q) c /= length;
  return q;
}

// A rotation with each axis scaled by 0.5 to 2, then a translation: affine and
// well conditioned (condition number at most 4).
std::array<double, 16> randomAffine(std::mt19937& rng) {
  std::uniform_real_distribution<double> scale(0.5, 2.0), move(-10.0, 10.0);
  const std::array<double, 4> q = randomUnitQuaternion(rng);
  const double x = q[0], y = q[1], z = q[2], w = q[3];
  const double rotation[3][3] = {{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
                                 {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
                                 {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}};
  std::array<double, 16> m{};
  for (int row = 0; row < 3; ++row) {
    const double s = scale(rng);
    for (int c = 0; c < 3; ++c) m[4 * row + c] = s * rotation[row][c];
  }
  m[12] = move(rng);
  m[13] = move(rng);
  m[14] = move(rng);
  m[15] = 1.0;
  return m;
}

template <class T>
const Inputs<T>& inputs() {
  static const Inputs<T> in = [] {
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    Inputs<T> made;
    for (int i = 0; i < kBatch; ++i) {
      const std::array<double, 16> m = randomAffine(rng);
      const std::array<double, 4> a = randomUnitQuaternion(rng), b = randomUnitQuaternion(rng);
      made.matrices.push_back({});
      for (int e = 0; e < 16; ++e) made.matrices.back()[e] = T(m[e]);
      made.from.push_back({T(a[0]), T(a[1]), T(a[2]), T(a[3])});
      made.to.push_back({T(b[0]), T(b[1]), T(b[2]), T(b[3])});
      made.t.push_back(T(fraction(rng)));
    }
    return made;
  }();
  return in;
}

// One library's types and its way of doing each piece of work.

template <class T>
struct ZEMath;
template <>
struct ZEMath<float> {
  using M = zeMatrix44f;
  using Q = zeQuaternionf;
  using R = zeMatrix44f;
};
template <>
struct ZEMath<double> {
  using M = zeMatrix44d;
  using Q = zeQuaterniond;
  using R = zeMatrix44d;
};
template <class T>
struct ZEMathOps : ZEMath<T> {
  using typename ZEMath<T>::M;
  using typename ZEMath<T>::Q;
  static T* elements(M& m) { return m.data(); }
  static Q quaternion(const std::array<T, 4>& q) { return Q(q[0], q[1], q[2], q[3]); }
  static void invert(M& r, const M& m) { benchmark::DoNotOptimize(r.invert(m)); }
  static void invertAffine(M& r, const M& m) { benchmark::DoNotOptimize(r.invertAffine(m)); }
  static void slerp(Q& r, T t, const Q& a, const Q& b) { r.slerp(t, a, b); }
  static void toMatrix(M& r, const Q& q) { q.getMatrix(r); }
};

#ifdef ZEMATH_BENCH_GLM
template <class T>
struct GlmOps {
  using M = glm::mat<4, 4, T>;
  using Q = glm::qua<T>;
  using R = M;
  static T* elements(M& m) { return &m[0][0]; }
  static Q quaternion(const std::array<T, 4>& q) { return Q(q[3], q[0], q[1], q[2]); }  // w first
  static void invert(M& r, const M& m) { r = glm::inverse(m); }
  static void invertAffine(M& r, const M& m) { r = glm::affineInverse(m); }
  static void slerp(Q& r, T t, const Q& a, const Q& b) { r = glm::slerp(a, b, t); }
  static void toMatrix(M& r, const Q& q) { r = glm::mat4_cast(q); }
};
#endif

#ifdef ZEMATH_BENCH_EIGEN
template <class T>
struct EigenOps {
  using M = Eigen::Matrix<T, 4, 4>;
  using Q = Eigen::Quaternion<T>;
  using R = Eigen::Matrix<T, 3, 3>;  // Eigen writes the 3x3 rotation only
  static T* elements(M& m) { return m.data(); }
  static Q quaternion(const std::array<T, 4>& q) { return Q(q[3], q[0], q[1], q[2]); }  // w first
  static void invert(M& r, const M& m) { r = m.inverse(); }
  static void invertAffine(M& r, const M& m) { r = Eigen::Transform<T, 3, Eigen::Affine>(m).inverse().matrix(); }
  static void slerp(Q& r, T t, const Q& a, const Q& b) { r = a.slerp(t, b); }
  static void toMatrix(R& r, const Q& q) { r = q.toRotationMatrix(); }
};
#endif

// The batch in one library's types, made on first use, and room for results.
template <class L, class T>
struct Batch {
  Batch() : matrices(kBatch), inverses(kBatch), from(kBatch), to(kBatch), blends(kBatch), rotations(kBatch) {
    const Inputs<T>& in = inputs<T>();
    for (int i = 0; i < kBatch; ++i) {
      T* e = L::elements(matrices[i]);
      for (int k = 0; k < 16; ++k) e[k] = in.matrices[i][k];
      from[i] = L::quaternion(in.from[i]);
      to[i] = L::quaternion(in.to[i]);
    }
  }
  std::vector<typename L::M> matrices, inverses;
  std::vector<typename L::Q> from, to, blends;
  std::vector<typename L::R> rotations;
};

template <class L, class T>
Batch<L, T>& batch() {
  static Batch<L, T> b;
  return b;
}

// Runs work(i) for the whole batch once per iteration.
template <class Work>
void overBatch(benchmark::State& state, Work work) {
  for (auto _ : state) {
    for (int i = 0; i < kBatch; ++i) work(i);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * kBatch);
}

template <class L, class T>
void invert(benchmark::State& state) {
  Batch<L, T>& b = batch<L, T>();
  overBatch(state, [&b](int i) { L::invert(b.inverses[i], b.matrices[i]); });
}

template <class L, class T>
void invertAffine(benchmark::State& state) {
  Batch<L, T>& b = batch<L, T>();
  overBatch(state, [&b](int i) { L::invertAffine(b.inverses[i], b.matrices[i]); });
}

template <class L, class T>
void slerp(benchmark::State& state) {
  Batch<L, T>& b = batch<L, T>();
  const std::vector<T>& t = inputs<T>().t;
  overBatch(state, [&b, &t](int i) { L::slerp(b.blends[i], t[i], b.from[i], b.to[i]); });
}

template <class L, class T>
void quatToMatrix(benchmark::State& state) {
  Batch<L, T>& b = batch<L, T>();
  overBatch(state, [&b](int i) { L::toMatrix(b.rotations[i], b.from[i]); });
}

// Registers Work/<variant>/f and Work/<variant>/d.
template <template <class> class L>
void registerVariant(const std::string& variant) {
  const std::string f = "/" + variant + "/f", d = "/" + variant + "/d";
  benchmark::RegisterBenchmark(("Invert" + f).c_str(), &invert<L<float>, float>);
  benchmark::RegisterBenchmark(("Invert" + d).c_str(), &invert<L<double>, double>);
  benchmark::RegisterBenchmark(("InvertAffine" + f).c_str(), &invertAffine<L<float>, float>);
  benchmark::RegisterBenchmark(("InvertAffine" + d).c_str(), &invertAffine<L<double>, double>);
  benchmark::RegisterBenchmark(("Slerp" + f).c_str(), &slerp<L<float>, float>);
  benchmark::RegisterBenchmark(("Slerp" + d).c_str(), &slerp<L<double>, double>);
  benchmark::RegisterBenchmark(("QuatToMatrix" + f).c_str(), &quatToMatrix<L<float>, float>);
  benchmark::RegisterBenchmark(("QuatToMatrix" + d).c_str(), &quatToMatrix<L<double>, double>);
}

}  // namespace

int main(int argc, char** argv) {
  registerVariant<ZEMathOps>("ZEMath");
#ifdef ZEMATH_BENCH_GLM
  registerVariant<GlmOps>("GLM");
#endif
#ifdef ZEMATH_BENCH_EIGEN
  registerVariant<EigenOps>("Eigen");
#endif
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
