// The one detection of the instruction sets, the cap, and what each family
// of vector paths runs.

#include "math/zeInstructionSet.h"

#include <cpuid.h>

#include <atomic>
#include <cctype>
#include <cstdint>
#include <cstdlib>

#include "math/impl/ArrayTransformPaths.h"
#include "math/impl/PathTable.h"
#include "math/kernels/impl/BlendingPaths.h"
#include "math/kernels/impl/MorphingPaths.h"

namespace Lux {
namespace Math {

namespace {

constexpr int kWidest = ZE_MATH_INSTRUCTION_SET_AVX512;

const char* const kNames[] = {"scalar", "sse2", "avx2", "avx512"};

bool inEnum(int level) { return level >= ZE_MATH_INSTRUCTION_SET_SCALAR && level <= kWidest; }

// The register state the operating system saves (XCR0); read only once
// CPUID says it may be read (OSXSAVE).
std::uint64_t savedState() {
  unsigned int lo, hi;
  __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
  return std::uint64_t(hi) << 32 | lo;
}

// CPUID for the instructions, XCR0 for the registers: SSE and AVX state
// (bits 1, 2) for AVX2; opmask and both halves of the upper ZMM state (bits
// 5, 6, 7) as well for AVX-512. The AVX-512 level is exactly the four
// subsets its units are built for (cmake/ZEMathIsa.cmake).
ZE_MATH_INSTRUCTION_SET detect() {
  unsigned int a, b, c, d;
  if (!__get_cpuid(1, &a, &b, &c, &d)) return ZE_MATH_INSTRUCTION_SET_SSE2;
  if (!(c & bit_OSXSAVE) || !(c & bit_AVX)) return ZE_MATH_INSTRUCTION_SET_SSE2;
  const std::uint64_t state = savedState();
  if ((state & 0x6) != 0x6 || __get_cpuid_max(0, nullptr) < 7) return ZE_MATH_INSTRUCTION_SET_SSE2;
  __cpuid_count(7, 0, a, b, c, d);
  if (!(b & bit_AVX2)) return ZE_MATH_INSTRUCTION_SET_SSE2;
#if defined(ZEMATH_EMULATED_AVX512)
  // A test build whose AVX-512 unit runs on AVX2 (cmake/ZEMathIsa.cmake).
  return ZE_MATH_INSTRUCTION_SET_AVX512;
#endif
  const unsigned int avx512 = bit_AVX512F | bit_AVX512VL | bit_AVX512BW | bit_AVX512DQ;
  if ((b & avx512) != avx512 || (state & 0xE0) != 0xE0) return ZE_MATH_INSTRUCTION_SET_AVX2;
  return ZE_MATH_INSTRUCTION_SET_AVX512;
}

// ZEMATH_ISA, any case; anything else caps nothing.
int environmentCap() {
  const char* text = std::getenv("ZEMATH_ISA");
  if (!text) return kWidest;
  for (int level = 0; level <= kWidest; ++level) {
    const char* name = kNames[level];
    std::size_t i = 0;
    while (name[i] && std::tolower(static_cast<unsigned char>(text[i])) == name[i]) ++i;
    if (!name[i] && !text[i]) return level;
  }
  return kWidest;
}

int processorLevel() {
  static const int level = detect();
  return level;
}

int environmentLevel() {
  static const int level = environmentCap();
  return level;
}

std::atomic<int> codeCap{kWidest};

int narrower(int a, int b) { return a < b ? a : b; }

// The chosen row of a family, whatever its kernels.
struct Chosen {
  const char* name;
  ZE_MATH_INSTRUCTION_SET level;
};

template <class Kernels>
Chosen chosenOf(const impl::PathTable<Kernels>& table) {
  const impl::Path<Kernels>& p = table.chosen();
  return {p.name, p.level};
}

// A new family adds its case here and its enumerator in the header.
Chosen chosenOf(ZE_MATH_PATH_FAMILY family) {
  switch (family) {
    case ZE_MATH_PATH_FAMILY_SKINNING:
      return chosenOf(impl::blendPaths());
    case ZE_MATH_PATH_FAMILY_MORPHING:
      return chosenOf(impl::morphPaths());
    case ZE_MATH_PATH_FAMILY_ARRAY_TRANSFORMS:
      return chosenOf(impl::arrayTransformPaths());
  }
  return {nullptr, ZE_MATH_INSTRUCTION_SET_SCALAR};
}

}  // namespace

namespace impl {

ZE_MATH_INSTRUCTION_SET usableInstructionSet() noexcept {
  const int cap = narrower(environmentLevel(), codeCap.load(std::memory_order_relaxed));
  return ZE_MATH_INSTRUCTION_SET(narrower(processorLevel(), cap));
}

}  // namespace impl

ZE_MATH_INSTRUCTION_SET zeProcessorInstructionSet() noexcept { return ZE_MATH_INSTRUCTION_SET(processorLevel()); }

ZE_MATH_INSTRUCTION_SET zeInstructionSetCap() noexcept {
  return ZE_MATH_INSTRUCTION_SET(narrower(environmentLevel(), codeCap.load(std::memory_order_relaxed)));
}

bool zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET cap) noexcept {
  if (!inEnum(cap)) return false;
  codeCap.store(cap, std::memory_order_relaxed);
  return true;
}

const char* zeInstructionSetName(ZE_MATH_INSTRUCTION_SET level) noexcept {
  return inEnum(level) ? kNames[level] : nullptr;
}

const char* zePathName(ZE_MATH_PATH_FAMILY family) noexcept { return chosenOf(family).name; }

ZE_MATH_INSTRUCTION_SET zePathInstructionSet(ZE_MATH_PATH_FAMILY family) noexcept { return chosenOf(family).level; }

}  // namespace Math
}  // namespace Lux
