// Every morphing path the processor can run yields the scalar loop's bytes:
// outputs and the bytes between them, on random and on awkward inputs; the
// published kernel keeps the scalar result when outputs overlay inputs.

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "math/kernels/impl/MorphingPaths.h"
#include "math/kernels/zeVectorMorphingKernels.h"
#include "support/Bits.h"

using namespace Lux::Math;
using impl::MorphPath;
using impl::MorphPathFunction;

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr unsigned char kCanary = 0xA5;

struct Morph {
  std::vector<zeVec3f> base;
  std::vector<std::vector<zeVec3f>> targets;
  std::vector<const zeVec3f*> pointers;
  std::vector<float> weights;

  unsigned int count() const { return static_cast<unsigned int>(base.size()); }
  unsigned int targetCount() const { return static_cast<unsigned int>(weights.size()); }
  const zeVec3f** targetArray() { return pointers.data(); }
};

// With `special`, components and weights are drawn now and then from NaN,
// infinities, zeros of both signs, negative and huge or tiny values.
Morph randomMorph(unsigned int count, unsigned int targetCount, bool special, unsigned int seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<float> value(-4.0f, 4.0f);
  std::uniform_int_distribution<int> pick(0, 15);
  const float awkward[] = {0.0f, -0.0f, -1.0f, kNaN, kInf, -kInf, 1e-30f, 3e38f};
  auto draw = [&] {
    const int p = pick(rng);
    return special && p < 8 && pick(rng) < 4 ? awkward[p] : value(rng);
  };
  Morph m;
  m.base.resize(count);
  for (zeVec3f& v : m.base) v = zeVec3f(draw(), draw(), draw());
  m.targets.resize(targetCount);
  for (std::vector<zeVec3f>& t : m.targets) {
    t.resize(count);
    for (zeVec3f& v : t) v = zeVec3f(draw(), draw(), draw());
    m.pointers.push_back(t.data());
  }
  for (unsigned int t = 0; t < targetCount; ++t) m.weights.push_back(special ? draw() : value(rng) * 0.25f);
  return m;
}

// Runs a kernel into a buffer of canary bytes and returns the whole buffer.
std::vector<unsigned char> run(MorphPathFunction f, Morph& m, unsigned int stride, unsigned int offset) {
  const std::size_t n = m.count();
  std::vector<unsigned char> out(offset + (n ? (n - 1) * stride + 12 : 0) + 16, kCanary);
  f(m.base.data(), m.targetArray(), m.weights.data(), m.count(), m.targetCount(),
    reinterpret_cast<zeVec3f*>(out.data() + offset), stride);
  return out;
}

std::vector<const MorphPath*> runnablePaths() {
  std::vector<const MorphPath*> paths;
  for (unsigned int i = 1; i < impl::morphPathCount(); ++i)
    if (impl::morphPath(i).available) paths.push_back(&impl::morphPath(i));
  return paths;
}

// The first byte of the output component that holds byte `at`, or -1 when
// `at` lies outside the 12-byte outputs.
long componentAt(std::size_t at, std::size_t count, unsigned int stride, unsigned int offset) {
  if (at < offset) return -1;
  const std::size_t rel = at - offset, i = rel / stride, within = rel - i * stride;
  return i < count && within < 12 ? static_cast<long>(at - within % 4) : -1;
}

bool inOutput(std::size_t at, std::size_t count, unsigned int stride, unsigned int offset) {
  return componentAt(at, count, stride, offset) >= 0;
}

// The offset of the first byte that differs, or -1. Outputs are compared as
// floats where both are NaN (sign and payload of a NaN sum are not fixed by
// the written order); every other byte must match exactly.
long firstDifference(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b, std::size_t count,
                     unsigned int stride, unsigned int offset) {
  if (a.size() != b.size()) return 0;
  for (std::size_t at = 0; at < a.size(); ++at) {
    if (a[at] == b[at]) continue;
    const long c = componentAt(at, count, stride, offset);
    if (c >= 0) {
      float x, y;
      std::memcpy(&x, &a[c], 4);
      std::memcpy(&y, &b[c], 4);
      if (std::isnan(x) && std::isnan(y)) continue;
    }
    return static_cast<long>(at);
  }
  return -1;
}

void expectAllPathsAgree(Morph& m, unsigned int stride, unsigned int offset) {
  const std::vector<unsigned char> scalar = run(&impl::morphScalar, m, stride, offset);
  for (std::size_t at = 0; at < scalar.size(); ++at) {
    if (inOutput(at, m.count(), stride, offset)) continue;
    ASSERT_EQ(scalar[at], kCanary) << "byte " << at;
  }
  for (const MorphPath* p : runnablePaths())
    EXPECT_EQ(firstDifference(run(p->function, m, stride, offset), scalar, m.count(), stride, offset), -1)
        << p->name << " count " << m.count() << " targets " << m.targetCount() << " stride " << stride << " offset "
        << offset;
  EXPECT_EQ(firstDifference(run(&morphNonAligned, m, stride, offset), scalar, m.count(), stride, offset), -1)
      << "published";
}

float component(const std::vector<unsigned char>& out, std::size_t at) {
  float v;
  std::memcpy(&v, &out[at], sizeof v);
  return v;
}

}  // namespace

TEST(MorphPaths, TheScalarLoopComesFirstAndSse2IsAlwaysThere) {
  ASSERT_GE(impl::morphPathCount(), 2u);
  EXPECT_STREQ(impl::morphPath(0).name, "scalar");
  EXPECT_TRUE(impl::morphPath(1).available);
  EXPECT_TRUE(impl::selectedMorphPath().available);
}

// 16 targets fit one pass of a vector path; 17 and 33 take more.
TEST(MorphPaths, RandomInputsEveryCountTargetCountAndStride) {
  for (unsigned int targets : {0u, 1u, 2u, 8u, 9u, 16u, 17u, 33u})
    for (unsigned int count = 0; count <= 19; ++count)
      for (unsigned int stride : {12u, 13u, 16u, 32u}) {
        Morph plain = randomMorph(count, targets, false, 7 * count + targets);
        expectAllPathsAgree(plain, stride, 0);
        Morph special = randomMorph(count, targets, true, 11 * count + targets);
        expectAllPathsAgree(special, stride, 3);
      }
}

TEST(MorphPaths, LargeOddCountWithSpecialValues) {
  for (unsigned int targets : {1u, 8u, 9u, 17u}) {
    Morph m = randomMorph(1003, targets, true, 99 + targets);
    for (unsigned int stride : {12u, 32u}) expectAllPathsAgree(m, stride, 1);
  }
}

// Passes over tens of megabytes, where packed outputs are stored past the
// caches: from any 4-byte boundary, and from none.
TEST(MorphPaths, PassesLargerThanTheCaches) {
  for (unsigned int targets : {1u, 17u}) {
    Morph m = randomMorph(targets == 1 ? 1000003 : 160001, targets, true, 41 + targets);
    for (unsigned int offset : {0u, 4u, 1u}) expectAllPathsAgree(m, 12, offset);
  }
}

TEST(MorphPaths, EveryWeightIsAppliedExactly) {
  // Vector 0: -0 base plus (+0) * 0.5 is +0; vector 1: an infinite target
  // times a zero weight is NaN; the rest move by (0.5, 0, 0) then (-1, 0, 0).
  Morph m;
  m.base.assign(21, zeVec3f(1.0f, 2.0f, 3.0f));
  m.base[0] = zeVec3f(-0.0f, -0.0f, -0.0f);
  m.targets = {std::vector<zeVec3f>(21, zeVec3f(1.0f, 0.0f, 0.0f)), std::vector<zeVec3f>(21, zeVec3f(0, 0, 0)),
               std::vector<zeVec3f>(21, zeVec3f(1.0f, 0.0f, 0.0f))};
  m.targets[0][0] = m.targets[2][0] = zeVec3f(0.0f, 0.0f, 0.0f);
  m.targets[1][1] = zeVec3f(kInf, 0.0f, 0.0f);
  for (const std::vector<zeVec3f>& t : m.targets) m.pointers.push_back(t.data());
  m.weights = {0.5f, 0.0f, -1.0f};
  std::vector<MorphPathFunction> kernels = {&impl::morphScalar, &morphNonAligned};
  for (const MorphPath* p : runnablePaths()) kernels.push_back(p->function);
  for (MorphPathFunction f : kernels) {
    const std::vector<unsigned char> out = run(f, m, 12, 0);
    // -0 + 0 * 0.5 = +0, then + 0 * 0 and + 0 * -1 (= -0): +0 + -0 = +0.
    EXPECT_BITEQ(component(out, 0), 0.0f);
    EXPECT_TRUE(std::isnan(component(out, 12)));
    for (std::size_t i = 2; i < 21; ++i) {
      EXPECT_BITEQ(component(out, 12 * i), 0.5f);
      EXPECT_BITEQ(component(out, 12 * i + 4), 2.0f);
      EXPECT_BITEQ(component(out, 12 * i + 8), 3.0f);
    }
  }
}

TEST(MorphPaths, CountZeroWritesNothingWhateverTheOtherArguments) {
  unsigned char out[32];
  std::memset(out, kCanary, sizeof out);
  for (const MorphPath* p : runnablePaths())
    p->function(nullptr, nullptr, nullptr, 0, 5, reinterpret_cast<zeVec3f*>(out + 1), 13);
  morphNonAligned(nullptr, nullptr, nullptr, 0, 5, reinterpret_cast<zeVec3f*>(out + 1), 13);
  for (unsigned char b : out) EXPECT_EQ(b, kCanary);
}

// Outputs over inputs: the published kernel must give what the scalar loop
// gives, which reads each input just before it writes the output.
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
    for (Morph* m : {&a, &b}) {
      // Room after every input for outputs that run past its end.
      m->base.resize(4 * count);
      m->pointers.clear();
      for (std::vector<zeVec3f>& t : m->targets) {
        t.resize(4 * count);
        m->pointers.push_back(t.data());
      }
    }
    auto destination = [&](Morph& m) {
      zeVec3f* in = l.input < 0 ? m.base.data() : m.targets[l.input].data();
      return reinterpret_cast<zeVec3f*>(reinterpret_cast<unsigned char*>(in) + l.shift);
    };
    impl::morphScalar(a.base.data(), a.targetArray(), a.weights.data(), count, targets, destination(a), l.stride);
    morphNonAligned(b.base.data(), b.targetArray(), b.weights.data(), count, targets, destination(b), l.stride);
    EXPECT_EQ(0, std::memcmp(a.base.data(), b.base.data(), a.base.size() * sizeof(zeVec3f))) << l.what;
    for (unsigned int t = 0; t < targets; ++t)
      EXPECT_EQ(0, std::memcmp(a.targets[t].data(), b.targets[t].data(), a.targets[t].size() * sizeof(zeVec3f)))
          << l.what << " target " << t;
  }
}

TEST(MorphPaths, OutputsOverOneAnotherGiveTheScalarResult) {
  // Strides under 12 bytes: each output overwrites part of the one before.
  for (unsigned int targets : {3u, 17u})
    for (unsigned int stride : {0u, 4u, 8u}) {
      Morph m = randomMorph(21, targets, false, 13 + targets);
      std::vector<unsigned char> a(20 * stride + 12 + 4, kCanary), b = a;
      impl::morphScalar(m.base.data(), m.targetArray(), m.weights.data(), 21, targets,
                        reinterpret_cast<zeVec3f*>(a.data() + 1), stride);
      morphNonAligned(m.base.data(), m.targetArray(), m.weights.data(), 21, targets,
                      reinterpret_cast<zeVec3f*>(b.data() + 1), stride);
      EXPECT_EQ(a, b) << "targets " << targets << " stride " << stride;
    }
}

TEST(MorphPaths, OutputsOverTheWeightsGiveTheScalarResult) {
  // The weights sit in the output buffer after the first output: the scalar
  // loop reads them again for every vector, so later vectors see the
  // outputs written over them.
  Morph m = randomMorph(6, 3, false, 3);
  std::vector<unsigned char> a(12 + 6 * 16, 0), b;
  std::memcpy(a.data() + 16, m.weights.data(), 12);
  b = a;
  impl::morphScalar(m.base.data(), m.targetArray(), reinterpret_cast<float*>(a.data() + 16), 6, 3,
                    reinterpret_cast<zeVec3f*>(a.data()), 16);
  morphNonAligned(m.base.data(), m.targetArray(), reinterpret_cast<float*>(b.data() + 16), 6, 3,
                  reinterpret_cast<zeVec3f*>(b.data()), 16);
  EXPECT_EQ(a, b);
}
