// The exactness check: silent in the library's own build, and every family
// of it named.

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include <cstring>

using namespace Lux::Math;

TEST(ExactResults, TheLibrarysOwnFlagsGiveTheLibrarysBits) { EXPECT_EQ(0u, zeCheckExactResults()); }

TEST(ExactResults, EveryFamilyIsNamedAndNothingElseIs) {
  const char* const names[] = {"vectors", "matrices", "quaternions", "colors", "screen-space", "volumes"};
  unsigned int all = 0;
  for (int i = 0; i < 6; ++i) {
    ASSERT_NE(nullptr, zeExactFamilyName(1u << i));
    EXPECT_STREQ(names[i], zeExactFamilyName(1u << i));
    all |= 1u << i;
  }
  EXPECT_EQ(unsigned(ZE_MATH_EXACT_FAMILY_ALL), all);
  for (unsigned int notOne : {0u, 3u, 64u, unsigned(ZE_MATH_EXACT_FAMILY_ALL), ~0u})
    EXPECT_EQ(nullptr, zeExactFamilyName(notOne)) << notOne;
}

TEST(ExactResults, EachFamilyWritesWithinItsBlockAndAByteDifferenceIsReportedForItsFamilyAlone) {
  const impl::ExactProbeInputs in = impl::loadExactProbeInputs();
  impl::ExactProbeResults a, b;
  impl::runExactProbe(in, a);
  for (int family = 0; family < impl::kExactFamilyCount; ++family) {
    EXPECT_GT(a.used[family], 0) << family;
    EXPECT_LE(a.used[family], impl::ExactProbeResults::kCapacity) << family;
  }
  for (int family = 0; family < impl::kExactFamilyCount; ++family) {
    std::memcpy(&b, &a, sizeof a);
    b.bytes[family][a.used[family] - 1] ^= 1;  // the last bit of the family's last result
    EXPECT_EQ(1u << family, impl::differingFamilies(a, b));
  }
  std::memcpy(&b, &a, sizeof a);
  b.used[3] = -1;  // an overflowing block never matches
  EXPECT_EQ(8u, impl::differingFamilies(a, b));
}
