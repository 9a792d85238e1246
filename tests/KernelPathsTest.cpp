// Every skinning path the processor can run yields the scalar loop's bytes:
// outputs and the bytes between them, on random and on awkward inputs.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "math/kernels/impl/BlendingPaths.h"
#include "math/kernels/zeVectorBlendingKernels.h"
#include "support/Bits.h"
#include "support/GuardedPages.h"

using namespace Lux::Math;
using impl::BlendPath;
using impl::BlendPathFunction;

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Mesh {
  std::vector<zeVec4f> source;
  std::vector<float> weights;
  std::vector<unsigned char> indices;
  std::vector<zeMatrix44f> palette;
  unsigned int weightsPerVertex = 0;
};

// Weights from a mix that hits the threshold and its neighbours, negatives,
// zeros of both signs, NaN and infinities; values spread over many exponents.
Mesh randomMesh(unsigned int count, unsigned int weightsPerVertex, bool special, unsigned int seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<float> value(-4.0f, 4.0f);
  std::uniform_int_distribution<int> pick(0, 15);
  const float awkward[] = {zeBlendWeightThreshold,
                           std::nextafter(zeBlendWeightThreshold, 1.0f),
                           std::nextafter(zeBlendWeightThreshold, 0.0f),
                           0.0f,
                           -0.0f,
                           -0.5f,
                           kNaN,
                           kInf,
                           -kInf,
                           1e-30f,
                           3e38f};
  Mesh m;
  m.weightsPerVertex = weightsPerVertex;
  m.palette.resize(64);
  for (zeMatrix44f& mat : m.palette)
    for (int e = 0; e < 16; ++e) mat[e] = value(rng);
  if (special) {
    m.palette[1][5] = kInf;
    m.palette[2][12] = kNaN;
    m.palette[3][0] = -kInf;
  }
  m.source.resize(count);
  for (zeVec4f& v : m.source) {
    v = zeVec4f(value(rng), value(rng), value(rng), value(rng));
    if (special && pick(rng) == 0) v.y = pick(rng) < 8 ? kNaN : -kInf;
  }
  for (unsigned int i = 0; i < count * weightsPerVertex; ++i) {
    m.indices.push_back(static_cast<unsigned char>(pick(rng) * 4 + pick(rng) % 4));
    const int p = pick(rng);
    m.weights.push_back(special && p < 11 ? awkward[p] : value(rng) * 0.25f);
  }
  return m;
}

// Runs a kernel into a buffer of poisoned bytes and returns the whole buffer.
std::vector<unsigned char> run(BlendPathFunction f, const Mesh& m, unsigned int stride, unsigned int offset) {
  const std::size_t n = m.source.size();
  std::vector<unsigned char> out(offset + (n ? (n - 1) * stride + 12 : 0) + 16, 0xA5);
  f(m.source.data(), static_cast<unsigned int>(n), m.weights.data(), m.indices.data(), m.weightsPerVertex,
    m.palette.data(), reinterpret_cast<zeVec3f*>(out.data() + offset), stride);
  return out;
}

std::vector<const BlendPath*> runnablePaths() {
  std::vector<const BlendPath*> paths;
  for (unsigned int i = 1; i < impl::blendPathCount(); ++i)
    if (impl::blendPath(i).available) paths.push_back(&impl::blendPath(i));
  return paths;
}

// The offset of the first byte that differs, or -1. The outputs are read as
// floats from `offset` on, `stride` bytes apart: two NaNs match whatever their
// sign and payload, which the written order does not fix (an addition may
// take its operands either way round). Every other byte must match exactly.
long firstDifference(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b, unsigned int stride,
                     unsigned int offset) {
  if (a.size() != b.size()) return 0;
  std::vector<bool> nanAlike(a.size(), false);
  for (std::size_t at = offset; at + 12 <= a.size() - 16; at += stride)
    for (std::size_t c = at; c < at + 12; c += 4) {
      float x, y;
      std::memcpy(&x, &a[c], 4);
      std::memcpy(&y, &b[c], 4);
      if (std::isnan(x) && std::isnan(y)) nanAlike[c] = nanAlike[c + 1] = nanAlike[c + 2] = nanAlike[c + 3] = true;
    }
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i] != b[i] && !nanAlike[i]) return static_cast<long>(i);
  return -1;
}

void expectAllPathsAgree(const Mesh& m, unsigned int stride, unsigned int offset) {
  const std::vector<unsigned char> weighted = run(&impl::blendScalar, m, stride, offset);
  for (const BlendPath* p : runnablePaths())
    EXPECT_EQ(firstDifference(run(p->weighted, m, stride, offset), weighted, stride, offset), -1)
        << p->name << " stride " << stride;
  // The one-weight kernel reads the first index of each vertex.
  if (m.weightsPerVertex == 0) return;
  const std::vector<unsigned char> one = run(&impl::blendOneWeightScalar, m, stride, offset);
  for (const BlendPath* p : runnablePaths())
    EXPECT_EQ(firstDifference(run(p->oneWeight, m, stride, offset), one, stride, offset), -1)
        << p->name << " one weight";
}

}  // namespace

TEST(KernelPaths, TheScalarLoopComesFirstAndSse2IsAlwaysThere) {
  ASSERT_GE(impl::blendPathCount(), 2u);
  EXPECT_STREQ(impl::blendPath(0).name, "scalar");
  EXPECT_TRUE(impl::blendPath(1).available);
  EXPECT_TRUE(impl::selectedBlendPath().available);
}

TEST(KernelPaths, RandomInputsEveryCountAndStride) {
  for (unsigned int wpv = 0; wpv <= 5; ++wpv)
    for (unsigned int count = 0; count <= 19; ++count)
      for (unsigned int stride : {12u, 13u, 16u, 32u}) {
        expectAllPathsAgree(randomMesh(count, wpv, false, 7 * count + wpv), stride, 0);
        expectAllPathsAgree(randomMesh(count, wpv, true, 11 * count + wpv), stride, 3);
      }
}

TEST(KernelPaths, LargeMeshWithSpecialValues) {
  for (unsigned int wpv = 1; wpv <= 6; ++wpv)
    for (unsigned int stride : {4u, 12u, 32u}) expectAllPathsAgree(randomMesh(1003, wpv, true, 99 + wpv), stride, 1);
}

TEST(KernelPaths, OverlappingOutputsGiveTheScalarResult) {
  const Mesh m = randomMesh(37, 4, true, 5);
  const std::vector<zeVec4f> original = m.source;
  for (unsigned int stride : {16u, 32u}) {
    // The outputs overlay the source itself: later vertices read earlier outputs.
    Mesh a = m, b = m;
    a.source.resize(37 * 2);
    b.source.resize(37 * 2);
    impl::blendScalar(a.source.data(), 37, a.weights.data(), a.indices.data(), 4, a.palette.data(),
                      reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(a.source.data()) + 8), stride);
    indexedBlendAligned4Vectors(b.source.data(), 37, b.weights.data(), b.indices.data(), 4, b.palette.data(),
                                reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(b.source.data()) + 8),
                                stride);
    EXPECT_EQ(0, std::memcmp(a.source.data(), b.source.data(), a.source.size() * sizeof(zeVec4f)));
  }
}

TEST(KernelPaths, SkippedInfluencesAddNothingEvenWhereTheirProductIsNaN) {
  // Influence 0 points at a matrix of infinities with a weight at the
  // threshold: multiplying it by zero would give NaN; skipping it gives half
  // of the point through the identity.
  Mesh m;
  m.weightsPerVertex = 2;
  m.palette.assign(2, zeMatrix44f());
  for (int e = 0; e < 16; ++e) {
    m.palette[0][e] = kInf;
    m.palette[1][e] = e % 5 == 0 ? 1.0f : 0.0f;
  }
  m.source.assign(9, zeVec4f(1.0f, 2.0f, 3.0f, 1.0f));
  for (unsigned int i = 0; i < 9; ++i) {
    m.weights.insert(m.weights.end(), {zeBlendWeightThreshold, 0.5f});
    m.indices.insert(m.indices.end(), {0, 1});
  }
  expectAllPathsAgree(m, 12, 0);
  for (const BlendPath* p : runnablePaths()) {
    const std::vector<unsigned char> out = run(p->weighted, m, 12, 0);
    float last[3];
    std::memcpy(last, out.data() + 8 * 12, sizeof last);
    EXPECT_BITEQ(last[0], 0.5f) << p->name;
    EXPECT_BITEQ(last[1], 1.0f) << p->name;
    EXPECT_BITEQ(last[2], 1.5f) << p->name;
  }
}

TEST(KernelPaths, LongMeshesNamingFewSomeOrManyMatrices) {
  // Stretches of 300 vertices name matrices below 32, below 64, or anywhere
  // in a palette of 256, so that every way of reaching the matrices is taken.
  for (unsigned int wpv = 1; wpv <= 4; ++wpv) {
    Mesh m = randomMesh(1500, wpv, true, 31 + wpv);
    std::mt19937 rng(wpv);
    m.palette.resize(256, m.palette[5]);
    for (std::size_t i = 0; i < m.indices.size(); ++i) {
      const unsigned int reach[3] = {32, 64, 256};
      m.indices[i] = static_cast<unsigned char>(rng() % reach[i / wpv / 300 % 3]);
    }
    for (unsigned int stride : {12u, 16u}) expectAllPathsAgree(m, stride, 0);
  }
}

TEST(KernelPaths, LongMeshesReadNothingPastTheirInputs) {
  // Matrices 0 to 63 fill one page and the next is unreadable: influences
  // naming matrix 64 and up all fall at or below the threshold. The weights
  // and indices end right at unreadable pages too; the one-weight kernel may
  // read only up to the first index of the last vertex.
  for (unsigned int count : {700u, 717u, 730u}) {
    Mesh m = randomMesh(count, 4, false, count);
    for (std::size_t i = 0; i < m.indices.size(); ++i)
      if (i % 7 == 3 && i % 4 != 0) {
        m.indices[i] = static_cast<unsigned char>(64 + i % 192);
        m.weights[i] = i % 2 ? zeBlendWeightThreshold : -1.0f;
      }
    const std::size_t n = m.indices.size();
    GuardedPages matrixPages, weightPages(n * 4), indexPages(n), firstIndexPages(n - 3);
    ASSERT_TRUE(matrixPages.guarded && weightPages.guarded && indexPages.guarded && firstIndexPages.guarded);
    ASSERT_EQ(matrixPages.size % (64 * sizeof(zeMatrix44f)), 0u);
    zeMatrix44f* palette = matrixPages.last<zeMatrix44f>(64);
    float* weights = weightPages.last<float>(n);
    unsigned char* indices = indexPages.last<unsigned char>(n);
    unsigned char* firstIndices = firstIndexPages.last<unsigned char>(n - 3);
    std::copy(m.palette.begin(), m.palette.end(), palette);
    std::copy(m.weights.begin(), m.weights.end(), weights);
    std::copy(m.indices.begin(), m.indices.end(), indices);
    std::copy(m.indices.begin(), m.indices.end() - 3, firstIndices);
    std::vector<unsigned char> expected(count * 12), out(count * 12);
    impl::blendScalar(m.source.data(), count, weights, indices, 4, palette, reinterpret_cast<zeVec3f*>(expected.data()),
                      12);
    for (const BlendPath* p : runnablePaths()) {
      p->weighted(m.source.data(), count, weights, indices, 4, palette, reinterpret_cast<zeVec3f*>(out.data()), 12);
      EXPECT_EQ(firstDifference(out, expected, 12, 0), -1) << p->name;
      p->oneWeight(m.source.data(), count, nullptr, firstIndices, 4, palette, reinterpret_cast<zeVec3f*>(out.data()),
                   12);
    }
  }
}
