// The exactness check in a file compiled with fused multiply-adds
// (support/FusedContraction.cpp): it must name every family. A program of
// its own, so that no other file shares its copies of the inline operations.

#include <gtest/gtest.h>
#include <math/zeExactResults.h>

unsigned int exactResultsWithFusedContraction();

TEST(ExactResults, AFileBuiltWithFusedMultiplyAddsFailsInEveryFamily) {
  if (!__builtin_cpu_supports("fma") || !__builtin_cpu_supports("avx")) GTEST_SKIP() << "no FMA on this processor";
  EXPECT_EQ(unsigned(Lux::Math::ZE_MATH_EXACT_FAMILY_ALL), exactResultsWithFusedContraction());
}
