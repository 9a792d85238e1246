// Every morphing path the processor can run yields the scalar loop's bytes:
// outputs and the bytes between them, on random and on awkward inputs; the
// published kernel keeps the scalar result when outputs overlay inputs.

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "math/kernels/impl/MorphingPaths.h"
#include "math/kernels/zeVectorMorphingKernels.h"
#include "support/Bits.h"
#include "support/PathCompare.h"

using namespace Lux::Math;
using namespace zetest;
using impl::MorphPath;
using impl::MorphPathFunction;

namespace {

struct Morph {
  std::vector<zeVec3f> base;
  std::vector<std::vector<zeVec3f>> targets;
  std::vector<const zeVec3f*> pointers;
  std::vector<float> weights;

  unsigned int count() const { return static_cast<unsigned int>(base.size()); }
  unsigned int targetCount() const { return static_cast<unsigned int>(weights.size()); }
  // Room after every input (`room` vectors in all) for outputs that run past its end.
  void point(std::size_t room = 0) {
    if (room) base.resize(room);
    pointers.clear();
    for (std::vector<zeVec3f>& t : targets) {
      if (room) t.resize(room);
      pointers.push_back(t.data());
    }
  }
};

Morph randomMorph(unsigned int count, unsigned int targetCount, bool special, unsigned int seed) {
  std::mt19937 rng(seed);
  auto draw = [&] { return zeVec3f(drawFloat(rng, special), drawFloat(rng, special), drawFloat(rng, special)); };
  Morph m;
  m.base.resize(count);
  for (zeVec3f& v : m.base) v = draw();
  m.targets.resize(targetCount);
  for (std::vector<zeVec3f>& t : m.targets) {
    t.resize(count);
    for (zeVec3f& v : t) v = draw();
  }
  for (unsigned int t = 0; t < targetCount; ++t) m.weights.push_back(drawFloat(rng, special) * (special ? 1 : 0.25f));
  m.point();
  return m;
}

std::vector<unsigned char> run(MorphPathFunction f, const Morph& m, unsigned int stride, unsigned int offset) {
  std::vector<unsigned char> out = poisonedOutputs(m.count(), stride, offset);
  f(m.base.data(), const_cast<const zeVec3f**>(m.pointers.data()), m.weights.data(), m.count(), m.targetCount(),
    reinterpret_cast<zeVec3f*>(out.data() + offset), stride);
  return out;
}

// The vector paths and the published kernel.
std::vector<MorphPathFunction> kernels() {
  std::vector<MorphPathFunction> all = {&morphNonAligned};
  for (const MorphPath* p : runnablePaths(impl::morphPaths())) all.push_back(p->function);
  return all;
}

void expectAllPathsAgree(const Morph& m, unsigned int stride, unsigned int offset) {
  const std::vector<unsigned char> scalar = run(&impl::morphScalar, m, stride, offset);
  ASSERT_EQ(firstStrayWrite(scalar, m.count(), stride, offset), -1);
  for (MorphPathFunction f : kernels())
    EXPECT_EQ(firstDifference(run(f, m, stride, offset), scalar, stride, offset), -1)
        << "count " << m.count() << " targets " << m.targetCount() << " stride " << stride << " offset " << offset;
}

}  // namespace

// 16 targets fit one pass of a vector path; 17 and 33 take more. The last
// cases pass over tens of megabytes, where packed outputs are stored past
// the caches: from any 4-byte boundary, and from none.
TEST(MorphPaths, RandomInputsEveryCountTargetCountAndStride) {
  for (unsigned int targets : {0u, 1u, 2u, 8u, 9u, 16u, 17u, 33u})
    for (unsigned int count = 0; count <= 19; ++count)
      for (unsigned int stride : {12u, 13u, 16u, 32u}) {
        expectAllPathsAgree(randomMorph(count, targets, false, 7 * count + targets), stride, 0);
        expectAllPathsAgree(randomMorph(count, targets, true, 11 * count + targets), stride, 3);
      }
  for (unsigned int targets : {1u, 8u, 9u, 17u})
    for (unsigned int stride : {12u, 32u})
      expectAllPathsAgree(randomMorph(1003, targets, true, 99 + targets), stride, 1);
  for (unsigned int targets : {1u, 17u}) {
    const Morph m = randomMorph(targets == 1 ? 1000003 : 160001, targets, true, 41 + targets);
    for (unsigned int offset : {0u, 4u, 1u}) expectAllPathsAgree(m, 12, offset);
  }
}

// Every path meets the signed zeros and the NaN product the published kernel
// is held to: -0 + 0 * 0.5 + 0 * 0 + 0 * -1 is +0; infinity times 0 is NaN.
TEST(MorphPaths, SignedZerosAndNaNProductsOnEveryPath) {
  Morph m;
  m.base.assign(21, zeVec3f(1.0f, 2.0f, 3.0f));
  m.base[0] = zeVec3f(-0.0f, -0.0f, -0.0f);
  m.targets.assign(3, std::vector<zeVec3f>(21, zeVec3f(1.0f, 0.0f, 0.0f)));
  m.targets[0][0] = m.targets[1][0] = m.targets[2][0] = zeVec3f(0.0f, 0.0f, 0.0f);
  m.targets[1][1] = zeVec3f(kInf, 0.0f, 0.0f);
  m.weights = {0.5f, 0.0f, -1.0f};
  m.point();
  expectAllPathsAgree(m, 12, 0);
  const std::vector<unsigned char> out = run(&impl::morphScalar, m, 12, 0);
  EXPECT_BITEQ(floatAt(out, 0), 0.0f);
  EXPECT_TRUE(std::isnan(floatAt(out, 12)));
}

TEST(MorphPaths, CountZeroWritesNothingWhateverTheOtherArguments) {
  std::vector<unsigned char> out(32, kPoison);
  for (MorphPathFunction f : kernels()) f(nullptr, nullptr, nullptr, 0, 5, reinterpret_cast<zeVec3f*>(&out[1]), 13);
  EXPECT_EQ(out, std::vector<unsigned char>(32, kPoison));
}

// Outputs over inputs: the published kernel must give what the scalar loop
// gives, which reads each input just before it writes the output. Strides
// under 12 bytes overwrite part of the output before; with the weights in
// the output buffer later vectors see the outputs written over them.
TEST(MorphPaths, OutputsOverInputsGiveTheScalarResult) {
  const unsigned int count = 37, targets = 9;
  const Morph original = randomMorph(count, targets, true, 5);
  struct Layout {
    const char* what;
    int input;          // -1: the base, else a target
    std::size_t shift;  // in bytes, from the start of that input
    unsigned int stride;
  };
  const Layout layouts[] = {{"in place", -1, 0, 12},         {"base, wider stride", -1, 0, 16},
                            {"base, one ahead", -1, 12, 12}, {"base, a float ahead", -1, 4, 12},
                            {"a target", 3, 0, 12},          {"a target, ahead", 8, 24, 32}};
  for (const Layout& l : layouts) {
    Morph a = original, b = original;
    a.point(4 * count);
    b.point(4 * count);
    auto destination = [&](Morph& m) {
      zeVec3f* in = l.input < 0 ? m.base.data() : m.targets[l.input].data();
      return reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(in) + l.shift);
    };
    impl::morphScalar(a.base.data(), a.pointers.data(), a.weights.data(), count, targets, destination(a), l.stride);
    morphNonAligned(b.base.data(), b.pointers.data(), b.weights.data(), count, targets, destination(b), l.stride);
    EXPECT_EQ(0, std::memcmp(a.base.data(), b.base.data(), a.base.size() * sizeof(zeVec3f))) << l.what;
    for (unsigned int t = 0; t < targets; ++t)
      EXPECT_EQ(0, std::memcmp(a.targets[t].data(), b.targets[t].data(), a.targets[t].size() * sizeof(zeVec3f)))
          << l.what << " target " << t;
  }
  for (unsigned int n : {3u, 17u})
    for (unsigned int stride : {0u, 4u, 8u}) {
      const Morph m = randomMorph(21, n, false, 13 + n);
      std::vector<unsigned char> a(20 * stride + 12 + 4, kPoison), b = a;
      impl::morphScalar(m.base.data(), const_cast<const zeVec3f**>(m.pointers.data()), m.weights.data(), 21, n,
                        reinterpret_cast<zeVec3f*>(&a[1]), stride);
      morphNonAligned(m.base.data(), const_cast<const zeVec3f**>(m.pointers.data()), m.weights.data(), 21, n,
                      reinterpret_cast<zeVec3f*>(&b[1]), stride);
      EXPECT_EQ(a, b) << "targets " << n << " stride " << stride;
    }
  const Morph m = randomMorph(6, 3, false, 3);
  std::vector<unsigned char> a(12 + 6 * 16, 0), b;
  std::memcpy(&a[16], m.weights.data(), 12);
  b = a;
  impl::morphScalar(m.base.data(), const_cast<const zeVec3f**>(m.pointers.data()), reinterpret_cast<float*>(&a[16]), 6,
                    3, reinterpret_cast<zeVec3f*>(a.data()), 16);
  morphNonAligned(m.base.data(), const_cast<const zeVec3f**>(m.pointers.data()), reinterpret_cast<float*>(&b[16]), 6, 3,
                  reinterpret_cast<zeVec3f*>(b.data()), 16);
  EXPECT_EQ(a, b) << "weights overwritten";
}
