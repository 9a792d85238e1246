// Every skinning path the processor can run yields the scalar loop's bytes:
// outputs and the bytes between them, on random and on awkward inputs.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "bench/SkinningMeshes.h"
#include "math/kernels/impl/BlendingPaths.h"
#include "math/kernels/zeVectorBlendingKernels.h"
#include "support/Bits.h"
#include "support/GuardedPages.h"
#include "support/PathCompare.h"

using namespace Lux::Math;
using namespace zetest;
using impl::BlendPath;
using impl::BlendPathFunction;

namespace {

struct Mesh {
  std::vector<zeVec4f> source;
  std::vector<float> weights;
  std::vector<unsigned char> indices;
  std::vector<zeMatrix44f> palette;
  unsigned int weightsPerVertex = 0;
};

// With `special`, weights hit the threshold and its neighbours or an awkward
// value half the time, and a few matrix elements and sources are not finite.
Mesh randomMesh(unsigned int count, unsigned int weightsPerVertex, bool special, unsigned int seed) {
  std::mt19937 rng(seed);
  const float threshold[] = {zeBlendWeightThreshold, std::nextafter(zeBlendWeightThreshold, 1.0f),
                             std::nextafter(zeBlendWeightThreshold, 0.0f)};
  Mesh m;
  m.weightsPerVertex = weightsPerVertex;
  m.palette.resize(64);
  for (zeMatrix44f& mat : m.palette)
    for (int e = 0; e < 16; ++e) mat[e] = drawFloat(rng, false);
  if (special) {
    m.palette[1][5] = kInf;
    m.palette[2][12] = kNaNf;
    m.palette[3][0] = -kInf;
  }
  m.source.resize(count);
  for (zeVec4f& v : m.source) {
    v = zeVec4f(drawFloat(rng, false), drawFloat(rng, false), drawFloat(rng, false), drawFloat(rng, false));
    if (special && rng() % 16 == 0) v.y = rng() % 2 ? kNaNf : -kInf;
  }
  for (unsigned int i = 0; i < count * weightsPerVertex; ++i) {
    m.indices.push_back(static_cast<unsigned char>(rng() % 64));
    const unsigned int p = rng() % 16;
    m.weights.push_back(!special ? drawFloat(rng, false) * 0.25f : p < 3 ? threshold[p] : drawFloat(rng, p < 8, 1));
  }
  return m;
}

// Runs a kernel into a buffer of poisoned bytes and returns the whole buffer.
std::vector<unsigned char> run(BlendPathFunction f, const Mesh& m, unsigned int stride, unsigned int offset) {
  std::vector<unsigned char> out = poisonedOutputs(m.source.size(), stride, offset);
  f(m.source.data(), static_cast<unsigned int>(m.source.size()), m.weights.data(), m.indices.data(), m.weightsPerVertex,
    m.palette.data(), reinterpret_cast<zeVec3f*>(out.data() + offset), stride);
  return out;
}

std::vector<const BlendPath*> paths() { return runnablePaths(impl::blendPaths()); }

// The weighted kernels, and the one-weight kernels (which read the first
// index of each vertex) where vertices have weights.
void expectAllPathsAgree(const Mesh& m, unsigned int stride, unsigned int offset) {
  const std::vector<unsigned char> weighted = run(&impl::blendScalar, m, stride, offset);
  EXPECT_EQ(firstStrayWrite(weighted, m.source.size(), stride, offset), -1) << "scalar";
  const std::vector<unsigned char> one =
      m.weightsPerVertex ? run(&impl::blendOneWeightScalar, m, stride, offset) : weighted;
  for (const BlendPath* p : paths()) {
    EXPECT_EQ(firstDifference(run(p->weighted, m, stride, offset), weighted, stride, offset), -1)
        << p->name << " stride " << stride;
    if (m.weightsPerVertex == 0) continue;
    EXPECT_EQ(firstDifference(run(p->oneWeight, m, stride, offset), one, stride, offset), -1)
        << p->name << " one weight";
  }
}

}  // namespace

TEST(KernelPaths, RandomInputsEveryCountWeightCountAndStride) {
  for (unsigned int wpv = 0; wpv <= 5; ++wpv)
    for (unsigned int count = 0; count <= 19; ++count)
      for (unsigned int stride : {12u, 13u, 16u, 32u}) {
        expectAllPathsAgree(randomMesh(count, wpv, false, 7 * count + wpv), stride, 0);
        expectAllPathsAgree(randomMesh(count, wpv, true, 11 * count + wpv), stride, 3);
      }
  // Long meshes, outputs over one another (stride 4) as well.
  for (unsigned int wpv = 1; wpv <= 6; ++wpv)
    for (unsigned int stride : {4u, 12u, 32u}) expectAllPathsAgree(randomMesh(1003, wpv, true, 99 + wpv), stride, 1);
}

TEST(KernelPaths, RealisticWeightsOverPalettesOf1To256) {
  // Exported characters: each vertex counts 1 to 4 influences, the other
  // slots weigh exactly 0 and name matrix 0. Here some skipped slots weigh
  // the threshold, a negative value or NaN instead and name matrices past
  // the palette (a read of them is a fault under AddressSanitizer), a few
  // sources and matrix elements are not finite, and one counted weight in
  // a few is negative.
  for (unsigned int palette : {1u, 64u, 65u, 256u})
    for (unsigned int wpv = 1; wpv <= 6; ++wpv)
      for (unsigned int count : {1u, 63u, 64u, 65u, 333u}) {
        const zebench::SkinningMesh r =
            zebench::makeSkinningMesh(count, wpv, palette, zebench::SkinWeights::kRealistic, palette * 7 + wpv + count);
        Mesh m{r.source, r.weights, r.indices, r.palette, wpv};
        std::mt19937 rng(count + wpv);
        const float skipped[] = {zeBlendWeightThreshold, -0.5f, kNaNf, 0.0f};
        for (std::size_t i = 0; i < m.weights.size(); ++i) {
          if (m.weights[i] == 0.0f) {
            m.weights[i] = skipped[rng() % 4];
            m.indices[i] = static_cast<unsigned char>(palette < 256 ? palette + rng() % (256 - palette) : rng() % 256);
          } else if (rng() % 16 == 0) {
            m.weights[i] = -m.weights[i];
          }
        }
        for (zeVec4f& v : m.source)
          if (rng() % 32 == 0) v.z = rng() % 2 ? kNaNf : kInf;
        m.palette.back()[rng() % 12] = -kInf;
        for (unsigned int stride : {12u, 32u}) {
          expectAllPathsAgree(m, stride, 0);
          expectAllPathsAgree(m, stride, 1);
        }
      }
}

TEST(KernelPaths, SignedZerosKeepTheirSigns) {
  // Sources and matrices of +0, -0 and 1: about one output component in
  // sixteen is -0 before weighting, which the one-weight kernel must keep
  // and the weighted sums, starting at +0, must not.
  const float values[] = {0.0f, -0.0f, -0.0f, 1.0f};
  for (unsigned int wpv : {1u, 4u, 5u}) {
    Mesh m = randomMesh(333, wpv, true, 13 + wpv);
    std::mt19937 rng(wpv);
    for (zeMatrix44f& mat : m.palette)
      for (int e = 0; e < 16; ++e) mat[e] = values[rng() % 4];
    for (zeVec4f& v : m.source) v = zeVec4f(values[rng() % 4], values[rng() % 4], values[rng() % 4], 1.0f);
    for (unsigned int stride : {12u, 32u}) expectAllPathsAgree(m, stride, 1);
  }
}

TEST(KernelPaths, OutputsOverTheSourceGiveTheScalarResult) {
  // Later vertices read earlier outputs.
  Mesh a = randomMesh(37, 4, true, 5);
  a.source.resize(37 * 2);
  for (unsigned int stride : {16u, 32u}) {
    Mesh b = a, c = a;
    impl::blendScalar(b.source.data(), 37, b.weights.data(), b.indices.data(), 4, b.palette.data(),
                      reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(b.source.data()) + 8), stride);
    indexedBlendAligned4Vectors(c.source.data(), 37, c.weights.data(), c.indices.data(), 4, c.palette.data(),
                                reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(c.source.data()) + 8),
                                stride);
    EXPECT_EQ(0, std::memcmp(b.source.data(), c.source.data(), b.source.size() * sizeof(zeVec4f)));
  }
}

TEST(KernelPaths, SkippedInfluencesAddNothingEvenWhereTheirProductIsNaN) {
  // Influence 0 names a matrix of infinities with a weight at the threshold:
  // multiplying would give NaN; skipping it leaves half the point through
  // the identity.
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
  std::vector<BlendPathFunction> kernels = {&impl::blendScalar};
  for (const BlendPath* p : paths()) kernels.push_back(p->weighted);
  for (BlendPathFunction f : kernels) {
    const std::vector<unsigned char> out = run(f, m, 12, 0);
    EXPECT_BITEQ(floatAt(out, 96), 0.5f);
    EXPECT_BITEQ(floatAt(out, 100), 1.0f);
    EXPECT_BITEQ(floatAt(out, 104), 1.5f);
  }
}

TEST(KernelPaths, LongMeshesNamingFewSomeOrManyMatrices) {
  // Stretches of 300 vertices name matrices below 32, below 64, or anywhere
  // in a palette of 256, so that every way of reaching the matrices is taken.
  for (unsigned int wpv = 1; wpv <= 4; ++wpv) {
    Mesh m = randomMesh(1500, wpv, true, 31 + wpv);
    std::mt19937 rng(wpv);
    m.palette.resize(256, m.palette[5]);
    const unsigned int reach[3] = {32, 64, 256};
    for (std::size_t i = 0; i < m.indices.size(); ++i)
      m.indices[i] = static_cast<unsigned char>(rng() % reach[i / wpv / 300 % 3]);
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
    for (const BlendPath* p : paths()) {
      p->weighted(m.source.data(), count, weights, indices, 4, palette, reinterpret_cast<zeVec3f*>(out.data()), 12);
      EXPECT_EQ(firstDifference(out, expected, 12, 0), -1) << p->name;
      p->oneWeight(m.source.data(), count, nullptr, firstIndices, 4, palette, reinterpret_cast<zeVec3f*>(out.data()),
                   12);
    }
  }
}
