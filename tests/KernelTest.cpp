// The skinning and morphing kernels: the weight threshold, matrices and
// weights that must not be read, outputs written through a stride and
// nothing else, empty inputs, sums in their written order; and the classes
// that publish the kernels, registered by the library's initialisation.

#include <cmath>
#include <vector>

#include <math/ZEMath.h>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/GuardedPages.h"
#include "support/PathCompare.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using zetest::kInf;
const float kNaN = zetest::kNaNf;
const float kTiny = 0x1p-24f;  // half an ulp of 1: 1 + kTiny rounds back to 1

// A translation by (tx, ty, tz) scaled by s; column 3 is NaN, as it is never read.
zeMatrix44f translation(float tx, float ty, float tz, float s = 1.0f) {
  return zeMatrix44f(s, 0, 0, kNaN, 0, s, 0, kNaN, 0, 0, s, kNaN, tx, ty, tz, kNaN);
}

// Outputs `stride` bytes apart in a buffer whose every byte is poison until written.
struct Canaried {
  unsigned int count, stride;
  std::vector<unsigned char> bytes = zetest::poisonedOutputs(count, stride, 0);
  zeVec3f* first() { return reinterpret_cast<zeVec3f*>(bytes.data()); }
  float at(unsigned int i, int c) const { return zetest::floatAt(bytes, i * stride + 4 * c); }
  void expectOnlyOutputsWritten(unsigned int n) const { EXPECT_EQ(zetest::firstStrayWrite(bytes, n, stride, 0), -1); }
};

void expectOutput(const Canaried& out, unsigned int i, float x, float y, float z) {
  zetest::expectVecBits(zeVec3f(x, y, z), zeVec3f(out.at(i, 0), out.at(i, 1), out.at(i, 2)));
}

TEST(Blending, OnlyWeightsStrictlyAboveTheThresholdCount) {
  EXPECT_EQ(zetest::bitsOf(zeBlendWeightThreshold), 0x38D1B717u);
  const float above = std::nextafter(zeBlendWeightThreshold, 1.0f);
  const zeVec4f source[4] = {{3, 5, 7, kNaN}, {3, 5, 7, kNaN}, {3, 5, 7, kNaN}, {3, 5, 7, kNaN}};
  const float weights[4] = {zeBlendWeightThreshold, above, -1.0f, kNaN};
  const unsigned char indices[4] = {0, 0, 0, 0};
  const zeMatrix44f m = translation(1, 2, 3);
  Canaried out{4, 12};
  indexedBlendAligned4Vectors(source, 4, weights, indices, 1, &m, out.first(), 12);
  expectOutput(out, 1, 0.0f + 4.0f * above, 0.0f + 7.0f * above, 0.0f + 10.0f * above);
  for (unsigned int i : {0u, 2u, 3u}) expectOutput(out, i, 0.0f, 0.0f, 0.0f);
}

TEST(Blending, SumsTransformedInfluencesInOrderWithoutNormalising) {
  // The first influence's 1 swallows both tiny ones, each added on its own.
  const zeVec4f source[2] = {{0, 0, 0, kNaN}, {1.5f, -2.25f, 0.75f, kNaN}};
  const zeMatrix44f m[3] = {translation(1, 2, 0), translation(kTiny, 0, 0),
                            zeMatrix44f(0.3f, 1.1f, -0.7f, kNaN, 2.9f, 0.13f, 1.7f, kNaN, -1.3f, 0.51f, 0.37f, kNaN,
                                        0.1f, -0.2f, 0.45f, kNaN)};
  const float weights[6] = {1.0f, 1.0f, 1.0f, 0.5f, 0.75f, 0.3f};
  const unsigned char indices[6] = {0, 1, 1, 2, 0, 2};
  Canaried out{2, 12};
  indexedBlendAligned4Vectors(source, 2, weights, indices, 3, m, out.first(), 12);
  expectOutput(out, 0, 1.0f, 2.0f, 0.0f);
  const float qx = 1.5f * 0.3f + -2.25f * 2.9f + 0.75f * -1.3f + 0.1f;
  EXPECT_BITEQ(0.0f + qx * 0.5f + 2.5f * 0.75f + qx * 0.3f, out.at(1, 0));
}

TEST(Blending, NoInfluencesOrNoVerticesReadNothing) {
  const zeVec4f source[2] = {{-1, -2, -3, 1}, {4, 5, 6, 1}};
  Canaried out{2, 16};
  indexedBlendAligned4Vectors(source, 2, nullptr, nullptr, 0, nullptr, out.first(), 16);
  expectOutput(out, 0, 0.0f, 0.0f, 0.0f);
  expectOutput(out, 1, 0.0f, 0.0f, 0.0f);
  out.expectOnlyOutputsWritten(2);

  Canaried none{1, 12};
  indexedBlendAligned4Vectors(nullptr, 0, nullptr, nullptr, 4, nullptr, none.first(), 12);
  indexedBlendAligned4VectorsOneWeight(nullptr, 0, nullptr, nullptr, 4, nullptr, none.first(), 12);
  morphNonAligned(nullptr, nullptr, nullptr, 0, 4, none.first(), 12);
  none.expectOnlyOutputsWritten(0);
}

TEST(Blending, SkipsUnreadMatricesAndWeightsAndWritesOnlyOutputs) {
  GuardedPages pages;
  ASSERT_NE(pages.guarded, nullptr);
  // Entries 0 and 1 of the palette are readable; 2 and above are guarded.
  zeMatrix44f* palette = reinterpret_cast<zeMatrix44f*>(pages.guarded) - 2;
  palette[0] = translation(10, 0, 0);
  palette[1] = translation(0, 0, 0, 2);
  const zeVec4f source[3] = {{1, 2, 3, 1}, {1, 2, 3, 1}, {1, 2, 3, 1}};
  const float weights[9] = {1, 0, -2, zeBlendWeightThreshold, 0.5f, kNaN, 0, 0, 0};
  const unsigned char indices[9] = {0, 7, 8, 9, 1, 40, 50, 2, 3};
  Canaried out{3, 32};
  indexedBlendAligned4Vectors(source, 3, weights, indices, 3, palette, out.first(), 32);
  expectOutput(out, 0, 11.0f, 2.0f, 3.0f);
  expectOutput(out, 1, 1.0f, 2.0f, 3.0f);
  expectOutput(out, 2, 0.0f, 0.0f, 0.0f);
  out.expectOnlyOutputsWritten(3);

  // The single-influence kernel takes indices 0, 3, 6 and no weight at all.
  const unsigned char firstOnly[9] = {1, 60, 60, 0, 60, 60, 1, 60, 60};
  const float* unreadable = reinterpret_cast<const float*>(pages.guarded);
  Canaried one{3, 13};
  indexedBlendAligned4VectorsOneWeight(source, 3, unreadable, firstOnly, 3, palette, one.first(), 13);
  expectOutput(one, 0, 2.0f, 4.0f, 6.0f);
  expectOutput(one, 1, 11.0f, 2.0f, 3.0f);
  expectOutput(one, 2, 2.0f, 4.0f, 6.0f);
  one.expectOnlyOutputsWritten(3);
}

TEST(Morphing, AppliesEveryWeightInOrder) {
  const zeVec3f base[2] = {{-0.0f, 1.0f, 1.0f}, {2.0f, 3.0f, -0.0f}};
  const zeVec3f t0[2] = {{1.0f, kInf, 2 * kTiny}, {1.0f, 1.0f, 1.0f}};
  const zeVec3f t1[2] = {{0.0f, 0.0f, kTiny}, {1.0f, 1.0f, 1.0f}};
  const zeVec3f* targets[2] = {t0, t1};
  Canaried out{2, 14};

  // Zero weights still add: -0 + 0 is +0, and infinity * 0 is NaN.
  const float zeroFirst[2] = {0.0f, 1.0f};
  morphNonAligned(base, targets, zeroFirst, 2, 2, out.first(), 14);
  EXPECT_BITEQ(0.0f, out.at(0, 0));
  EXPECT_TRUE(std::isnan(out.at(0, 1)));
  expectOutput(out, 1, 3.0f, 4.0f, 1.0f);
  out.expectOnlyOutputsWritten(2);

  // Added one after the other, the two tiny steps vanish against 1.
  const float halfFirst[2] = {0.5f, 1.0f};
  morphNonAligned(base, targets, halfFirst, 2, 2, out.first(), 14);
  expectOutput(out, 0, 0.5f, kInf, 1.0f);

  const float negativeFirst[2] = {-1.0f, 0.5f};
  morphNonAligned(base, targets, negativeFirst, 2, 2, out.first(), 14);
  expectOutput(out, 1, 1.5f, 2.5f, -0.5f);

  // No targets: the base copied, here onto itself.
  zeVec3f vectors[2] = {{-0.0f, 1.0f, 5.0f}, {1.0f, 2.0f, 3.0f}};
  morphNonAligned(vectors, nullptr, nullptr, 2, 0, vectors, 12);
  EXPECT_BITEQ(-0.0f, vectors[0].x);
  EXPECT_BITEQ(3.0f, vectors[1].z);
}

using KernelRegistration = zetest::CoreTest;

TEST_F(KernelRegistration, InitialisationRegistersMorphingThenBlending) {
  zeVectorBlending::_vectorBlendingFunction = zeVectorBlending::_vectorBlendingOneWeightFunction = nullptr;
  zeVectorMorphing::_vectorMorphingFunction = zeVectorMorphing::_vectorMorphingAlignedFunction = nullptr;
  ASSERT_EQ(zeVectorBlending::getClassMeta(), nullptr);

  _libZEMath_Init();
  zeMetaObject* morphing = zeMetaObject::find("zeVectorMorphing");
  zeMetaObject* blending = zeMetaObject::find("zeVectorBlending");
  ASSERT_TRUE(morphing && morphing == zeVectorMorphing::getClassMeta() && morphing->isRegistered());
  ASSERT_TRUE(blending && blending == zeVectorBlending::getClassMeta() && blending->isRegistered());
  int i = 0;
  while (zeMetaObject::getClass(i) != morphing) ++i;
  EXPECT_EQ(zeMetaObject::getClass(i + 1), blending);

  EXPECT_EQ(zeVectorBlending::_vectorBlendingFunction, &indexedBlendAligned4Vectors);
  EXPECT_EQ(zeVectorBlending::_vectorBlendingOneWeightFunction, &indexedBlendAligned4VectorsOneWeight);
  EXPECT_EQ(zeVectorMorphing::_vectorMorphingFunction, &morphNonAligned);
  EXPECT_EQ(zeVectorMorphing::_vectorMorphingAlignedFunction, &morphNonAligned);
}

}  // namespace
