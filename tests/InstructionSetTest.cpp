// The one detection of the instruction sets, the cap (from code and from
// ZEMATH_ISA), the path each family reports, and the path tables' shape.

#include <cstdlib>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "math/impl/ArrayTransformPaths.h"
#include "math/kernels/impl/BlendingPaths.h"
#include "math/kernels/impl/MorphingPaths.h"
#include "math/volumes/impl/CullingPaths.h"
#include "math/zeInstructionSet.h"

using namespace Lux::Math;

namespace {

const ZE_MATH_PATH_FAMILY kFamilies[] = {ZE_MATH_PATH_FAMILY_SKINNING, ZE_MATH_PATH_FAMILY_MORPHING,
                                         ZE_MATH_PATH_FAMILY_ARRAY_TRANSFORMS, ZE_MATH_PATH_FAMILY_CULLING};
const ZE_MATH_INSTRUCTION_SET kLevels[] = {ZE_MATH_INSTRUCTION_SET_SCALAR, ZE_MATH_INSTRUCTION_SET_SSE2,
                                           ZE_MATH_INSTRUCTION_SET_AVX2, ZE_MATH_INSTRUCTION_SET_AVX512};

ZE_MATH_INSTRUCTION_SET narrower(ZE_MATH_INSTRUCTION_SET a, ZE_MATH_INSTRUCTION_SET b) { return a < b ? a : b; }

// Every family runs the widest instruction set within the processor's and
// `cap`, and its path's name begins with that set's name.
void expectEveryFamilyOn(ZE_MATH_INSTRUCTION_SET cap) {
  const ZE_MATH_INSTRUCTION_SET level = narrower(cap, zeProcessorInstructionSet());
  const char* levelName = zeInstructionSetName(level);
  for (ZE_MATH_PATH_FAMILY f : kFamilies) {
    EXPECT_EQ(zePathInstructionSet(f), level) << "family " << f;
    const char* name = zePathName(f);
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(std::strncmp(name, levelName, std::strlen(levelName)), 0) << name << " under " << levelName;
  }
}

// Lifts the cap from code when a test ends.
struct LiftCapAtEnd {
  ~LiftCapAtEnd() { zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET_AVX512); }
};

// Path 0 is the scalar loop; the levels rise; SSE2 runs everywhere.
template <class Table>
void expectNarrowestFirst(const Table& table) {
  ASSERT_GE(table.count(), 2u);
  EXPECT_STREQ(table.path(0).name, "scalar");
  EXPECT_EQ(table.path(0).level, ZE_MATH_INSTRUCTION_SET_SCALAR);
  EXPECT_TRUE(table.available(1));
  for (unsigned int i = 1; i < table.count(); ++i) {
    EXPECT_LT(table.path(i - 1).level, table.path(i).level) << table.path(i).name;
    EXPECT_EQ(table.available(i), table.path(i).level <= zeProcessorInstructionSet()) << table.path(i).name;
  }
}

}  // namespace

TEST(InstructionSet, LevelsCarryTheNamesZEMATH_ISATakes) {
  const char* names[] = {"scalar", "sse2", "avx2", "avx512"};
  for (ZE_MATH_INSTRUCTION_SET level : kLevels) EXPECT_STREQ(zeInstructionSetName(level), names[level]);
  EXPECT_EQ(zeInstructionSetName(ZE_MATH_INSTRUCTION_SET(4)), nullptr);
  EXPECT_EQ(zeInstructionSetName(ZE_MATH_INSTRUCTION_SET(-1)), nullptr);
  // Every x86-64 processor has SSE2.
  EXPECT_GE(zeProcessorInstructionSet(), ZE_MATH_INSTRUCTION_SET_SSE2);
}

TEST(InstructionSet, EveryFamilyListsItsPathsNarrowestFirst) {
  expectNarrowestFirst(impl::blendPaths());
  expectNarrowestFirst(impl::morphPaths());
  expectNarrowestFirst(impl::arrayTransformPaths());
  expectNarrowestFirst(impl::cullPaths());
}

TEST(InstructionSet, TheCapFromCodeNarrowsEveryFamily) {
  LiftCapAtEnd lift;
  ASSERT_TRUE(zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET_AVX512));
  // What ZEMATH_ISA caps, should the run set it.
  const ZE_MATH_INSTRUCTION_SET environment = zeInstructionSetCap();
  for (ZE_MATH_INSTRUCTION_SET level : kLevels) {
    ASSERT_TRUE(zeSetInstructionSetCap(level));
    EXPECT_EQ(zeInstructionSetCap(), narrower(level, environment));
    expectEveryFamilyOn(narrower(level, environment));
  }
  // Values outside the enums change nothing and name nothing.
  EXPECT_FALSE(zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET(4)));
  EXPECT_FALSE(zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET(-1)));
  EXPECT_EQ(zeInstructionSetCap(), environment);
  EXPECT_EQ(zePathName(ZE_MATH_PATH_FAMILY(4)), nullptr);
  EXPECT_EQ(zePathInstructionSet(ZE_MATH_PATH_FAMILY(-1)), ZE_MATH_INSTRUCTION_SET_SCALAR);
}

TEST(InstructionSet, CappedMembersGiveTheScalarBits) {
  LiftCapAtEnd lift;
  zeMatrix44d m;
  for (int e = 0; e < 16; ++e) m[e] = 0.25 * e - 1.5;
  std::vector<zeVec4d> src(37);
  for (std::size_t i = 0; i < src.size(); ++i) src[i] = zeVec4d(0.5 * i, 1.0 / (i + 1), -2.0 * i, 1.0);
  std::vector<zeVec4d> expected(src.size());
  impl::arrayTransformPaths().path(0).points4d(m, src.data(), expected.data(), 37);
  for (ZE_MATH_INSTRUCTION_SET level : kLevels) {
    zeSetInstructionSetCap(level);
    std::vector<zeVec4d> out(src.size());
    m.transformPoints(src.data(), out.data(), 37);
    EXPECT_EQ(std::memcmp(out.data(), expected.data(), out.size() * sizeof(zeVec4d)), 0)
        << zePathName(ZE_MATH_PATH_FAMILY_ARRAY_TRANSFORMS);
  }
}

// Run by CTest with ZEMATH_ISA set, and the cap it should give in
// ZEMATH_TEST_EXPECTED_CAP (tests/CMakeLists.txt).
TEST(InstructionSetEnvironment, ZEMATH_ISACapsEveryFamily) {
  const char* expected = std::getenv("ZEMATH_TEST_EXPECTED_CAP");
  if (!expected) GTEST_SKIP() << "runs under CTest with ZEMATH_ISA set";
  ZE_MATH_INSTRUCTION_SET cap = ZE_MATH_INSTRUCTION_SET(-1);
  for (ZE_MATH_INSTRUCTION_SET level : kLevels)
    if (std::strcmp(zeInstructionSetName(level), expected) == 0) cap = level;
  ASSERT_NE(cap, ZE_MATH_INSTRUCTION_SET(-1)) << expected;
  EXPECT_EQ(zeInstructionSetCap(), cap);
  expectEveryFamilyOn(cap);
  // The code cannot lift what the environment caps.
  LiftCapAtEnd lift;
  ASSERT_TRUE(zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET_AVX512));
  EXPECT_EQ(zeInstructionSetCap(), cap);
}
