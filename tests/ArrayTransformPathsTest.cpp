// Every array-transform path the processor can run yields the scalar loop's
// bits, element by element, on random and on awkward inputs, in place and
// apart; the matrix members give the same bits.

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "math/impl/ArrayTransformPaths.h"
#include "support/Bits.h"
#include "support/PathCompare.h"

using namespace Lux::Math;
using impl::ArrayTransformFunction;
using impl::ArrayTransformPath;

namespace {

template <class M, class V>
using Kernel = ArrayTransformFunction<M, V> impl::ArrayTransformKernels::*;

const impl::PathTable<impl::ArrayTransformKernels>& table() { return impl::arrayTransformPaths(); }

std::vector<const ArrayTransformPath*> paths() { return zetest::runnablePaths(table()); }

// Components mostly in [-4, 4]; with `withAwkward`, now and then NaN, an
// infinity, a zero of either sign, or a value near the divide's threshold.
template <class T>
T component(std::mt19937& rng, bool withAwkward) {
  std::uniform_real_distribution<T> value(T(-4), T(4));
  std::uniform_int_distribution<int> pick(0, 31);
  const T small = zeSmallThreshold<T>;
  const T awkward[] = {std::numeric_limits<T>::quiet_NaN(),
                       std::numeric_limits<T>::infinity(),
                       -std::numeric_limits<T>::infinity(),
                       T(0),
                       -T(0),
                       T(1),
                       small,
                       std::nextafter(small, T(0)),
                       -small,
                       T(1e-9),
                       T(-1e-9)};
  const int p = pick(rng);
  return withAwkward && p < 11 ? awkward[p] : value(rng);
}

template <class V>
std::vector<V> randomArray(unsigned int count, bool withAwkward, unsigned int seed) {
  using T = typename V::Scalar;
  std::mt19937 rng(seed);
  std::vector<V> v(count);
  for (V& e : v)
    for (int c = 0; c < V::kComponentCount; ++c) e[c] = component<T>(rng, withAwkward);
  return v;
}

// Matrices that exercise each branch of the divide: random (w anywhere), affine
// (w exactly 1), w = x (so the awkward x values reach the divide directly),
// and random with a NaN and infinities among the elements.
template <class M>
std::vector<M> matrices(unsigned int seed) {
  using T = typename M::Scalar;
  std::mt19937 rng(seed);
  std::vector<M> ms(4);
  for (M& m : ms)
    for (int e = 0; e < 16; ++e) m[e] = component<T>(rng, false);
  for (int e : {3, 7, 11}) ms[1][e] = T(0);
  ms[1][15] = T(1);
  ms[2][3] = T(1);
  for (int e : {7, 11, 15}) ms[2][e] = T(0);
  ms[3][5] = std::numeric_limits<T>::infinity();
  ms[3][12] = std::numeric_limits<T>::quiet_NaN();
  ms[3][11] = -std::numeric_limits<T>::infinity();
  return ms;
}

// The identity but for w = x and a shift of 3 along x.
template <class M>
M wIsX() {
  M m;
  for (int e = 0; e < 16; ++e) m[e] = e % 5 == 0 && e != 15 ? 1 : 0;
  m[3] = 1;
  m[12] = 3;
  return m;
}

// Index of the first component that differs, or -1. Two NaNs match whatever
// their sign and payload, which the written order does not fix (a product may
// take its operands either way round).
template <class V>
long firstDifference(const std::vector<V>& a, const std::vector<V>& b) {
  for (std::size_t i = 0; i < a.size(); ++i)
    for (int c = 0; c < V::kComponentCount; ++c) {
      if (std::isnan(a[i][c]) && std::isnan(b[i][c])) continue;
      if (zetest::bitsOf(a[i][c]) != zetest::bitsOf(b[i][c])) return static_cast<long>(i * V::kComponentCount + c);
    }
  return -1;
}

// Runs the kernel apart (into a poisoned array two elements longer) and in place.
template <class M, class V>
std::vector<V> run(ArrayTransformFunction<M, V> f, const M& m, const std::vector<V>& src, bool inPlace) {
  std::vector<V> out = src;
  out.resize(src.size() + 2);
  for (std::size_t i = src.size(); i < out.size(); ++i)
    for (int c = 0; c < V::kComponentCount; ++c) out[i][c] = typename V::Scalar(-7.25);
  const unsigned int n = static_cast<unsigned int>(src.size());
  if (inPlace)
    f(m, out.data(), out.data(), n);
  else
    f(m, src.data(), out.data(), n);
  return out;
}

template <class M, class V>
void expectAllPathsAgree(Kernel<M, V> kernel, const char* what, unsigned int seed) {
  const ArrayTransformFunction<M, V> reference = table().path(0).*kernel;
  for (const M& m : matrices<M>(seed)) {
    for (unsigned int n = 0; n <= 20; ++n)
      for (bool withAwkward : {false, true}) {
        const std::vector<V> src = randomArray<V>(n < 20 ? n : 1001, withAwkward, seed + 31 * n);
        for (bool inPlace : {false, true}) {
          const std::vector<V> expected = run(reference, m, src, inPlace);
          for (const ArrayTransformPath* p : paths())
            EXPECT_EQ(firstDifference(run(p->*kernel, m, src, inPlace), expected), -1)
                << p->name << " " << what << " count " << src.size() << (inPlace ? " in place" : "");
        }
      }
  }
}

}  // namespace

TEST(ArrayTransformPaths, FloatKernelsGiveTheScalarBits) {
  expectAllPathsAgree<zeMatrix44f, zeVec3f>(&ArrayTransformPath::vectors3f, "vectors3f", 1);
  expectAllPathsAgree<zeMatrix44f, zeVec3f>(&ArrayTransformPath::points3f, "points3f", 2);
  expectAllPathsAgree<zeMatrix44f, zeVec4f>(&ArrayTransformPath::vectors4f, "vectors4f", 3);
  expectAllPathsAgree<zeMatrix44f, zeVec4f>(&ArrayTransformPath::points4f, "points4f", 4);
}

TEST(ArrayTransformPaths, DoubleKernelsGiveTheScalarBits) {
  expectAllPathsAgree<zeMatrix44d, zeVec3d>(&ArrayTransformPath::vectors3d, "vectors3d", 5);
  expectAllPathsAgree<zeMatrix44d, zeVec3d>(&ArrayTransformPath::points3d, "points3d", 6);
  expectAllPathsAgree<zeMatrix44d, zeVec4d>(&ArrayTransformPath::vectors4d, "vectors4d", 7);
  expectAllPathsAgree<zeMatrix44d, zeVec4d>(&ArrayTransformPath::points4d, "points4d", 8);
}

TEST(ArrayTransformPaths, TinyAndUnitWOnEveryPath) {
  // w = x: 1 leaves the point undivided, +-1e-9 divides by +threshold.
  const zeMatrix44f m = wIsX<zeMatrix44f>();
  std::vector<zeVec3f> src(32, zeVec3f(1.0f, 2.0f, -0.0f));
  src[5] = zeVec3f(1e-9f, 2.0f, -0.0f);
  src[30] = zeVec3f(-1e-9f, 2.0f, -0.0f);
  const float factor = 1.0f / 5e-7f;
  for (unsigned int i = 0; i < table().count(); ++i) {
    if (!table().available(i)) continue;
    const ArrayTransformPath& p = table().path(i);
    std::vector<zeVec3f> out(32);
    p.points3f(m, src.data(), out.data(), 32);
    EXPECT_BITEQ(4.0f, out[0].x) << p.name;
    EXPECT_BITEQ(2.0f, out[0].y) << p.name;
    EXPECT_BITEQ((1e-9f + 3.0f) * factor, out[5].x) << p.name;
    EXPECT_BITEQ(2.0f * factor, out[30].y) << p.name;
  }
}

TEST(ArrayTransformPaths, TheDoubleTwinDividesByTheWidenedSingleThreshold) {
  const zeMatrix44d m = wIsX<zeMatrix44d>();
  std::vector<zeVec3d> src(19, zeVec3d(-1e-12, 2.0, 0.5));
  // 1 / 4.999999987376214e-7, not 1 / 5e-7 (the double nearest).
  const double factor = 1.0 / static_cast<double>(5e-7f);
  for (unsigned int i = 0; i < table().count(); ++i) {
    if (!table().available(i)) continue;
    const ArrayTransformPath& p = table().path(i);
    std::vector<zeVec3d> out(19);
    p.points3d(m, src.data(), out.data(), 19);
    EXPECT_BITEQ((-1e-12 + 3.0) * factor, out[18].x) << p.name;
    EXPECT_BITEQ(2.0 * factor, out[0].y) << p.name;
    EXPECT_NE(zetest::bitsOf(2.0 * (1.0 / 5e-7)), zetest::bitsOf(out[0].y)) << p.name;
  }
}

TEST(ArrayTransformPaths, VectorsOfFourCarryWBitForBit) {
  const float payloadNaN = zetest::floatFromBits(0x7FC01234u);
  std::vector<zeVec4f> src(40, zeVec4f(1.0f, 2.0f, 3.0f, payloadNaN));
  src[17].w = -0.0f;
  zeMatrix44f m;
  for (int e = 0; e < 16; ++e) m[e] = 2.0f;
  for (const ArrayTransformPath* p : paths()) {
    std::vector<zeVec4f> out = src;
    p->vectors4f(m, out.data(), out.data(), 40);
    EXPECT_EQ(0x7FC01234u, zetest::bitsOf(out[39].w)) << p->name;
    EXPECT_BITEQ(-0.0f, out[17].w) << p->name;
  }
}

TEST(ArrayTransformPaths, MembersGiveTheScalarBits) {
  const zeMatrix44f mf = matrices<zeMatrix44f>(9)[2];
  zeMatrix44d md = matrices<zeMatrix44d>(9)[2];
  const std::vector<zeVec3f> s3f = randomArray<zeVec3f>(77, true, 10);
  const std::vector<zeVec4f> s4f = randomArray<zeVec4f>(77, true, 11);
  const std::vector<zeVec3d> s3d = randomArray<zeVec3d>(77, true, 12);
  const std::vector<zeVec4d> s4d = randomArray<zeVec4d>(77, true, 13);
  const ArrayTransformPath& scalar = table().path(0);
  std::vector<zeVec3f> a3f = s3f, e3f = s3f;
  mf.transformPoints(a3f.data(), a3f.data(), 77);
  scalar.points3f(mf, e3f.data(), e3f.data(), 77);
  EXPECT_EQ(firstDifference(a3f, e3f), -1);
  std::vector<zeVec4f> a4f(77), e4f(77);
  mf.transformVectors(const_cast<zeVec4f*>(s4f.data()), a4f.data(), 77);
  scalar.vectors4f(mf, s4f.data(), e4f.data(), 77);
  EXPECT_EQ(firstDifference(a4f, e4f), -1);
  std::vector<zeVec3d> a3d = s3d, e3d = s3d;
  md.transformPoints(a3d.data(), a3d.data(), 77);
  scalar.points3d(md, e3d.data(), e3d.data(), 77);
  EXPECT_EQ(firstDifference(a3d, e3d), -1);
  std::vector<zeVec4d> a4d(77), e4d(77);
  md.transformPoints(const_cast<zeVec4d*>(s4d.data()), a4d.data(), 77);
  scalar.points4d(md, s4d.data(), e4d.data(), 77);
  EXPECT_EQ(firstDifference(a4d, e4d), -1);
}

TEST(ArrayTransformPaths, ArraysOverlappingWithAShiftGetTheScalarOrder) {
  const zeMatrix44f m = matrices<zeMatrix44f>(14)[0];
  for (std::ptrdiff_t shift : {-1, 1, 5}) {
    std::vector<zeVec3f> a = randomArray<zeVec3f>(64, false, 15), e = a;
    m.transformPoints(a.data() + 8, a.data() + 8 + shift, 40);
    table().path(0).points3f(m, e.data() + 8, e.data() + 8 + shift, 40);
    EXPECT_EQ(firstDifference(a, e), -1) << "shift " << shift;
  }
}
