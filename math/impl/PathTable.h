#pragma once

/// \file
/// The paths of one family of vector kernels (skinning, morphing, the array
/// transforms, ...) and how a published function chooses among them.
/// Internal: the published functions call pathFor() on every call; the tests
/// and benchmarks run every path.
///
/// A family declares its paths once, narrowest first, as Path rows of its own
/// Kernels struct (one function pointer per kernel of the family): row 0 is
/// the plain scalar loop, the reference that every other row must match bit
/// for bit. A family may also give the rows it chooses from, when they are
/// not simply its paths: a row there may take some kernels from a narrower
/// path that measured faster, and says so in its name. The choice is the
/// widest such row that the processor runs within the cap
/// (math/zeInstructionSet.h); it is made at the first call and again after
/// the cap changes, never otherwise.

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "math/ZEMathExport.h"
#include "math/zeInstructionSet.h"

namespace Lux {
namespace Math {
namespace impl {

/// The widest instruction set the paths may use now: the processor's,
/// narrowed by the cap. Cheap: three loads after the first call.
ZEMATH_API ZE_MATH_INSTRUCTION_SET usableInstructionSet() noexcept;

/// One path of a family: its kernels (the members of Kernels), its name and
/// the instruction set it needs.
template <class Kernels>
struct Path : Kernels {
  const char* name;
  ZE_MATH_INSTRUCTION_SET level;
};

/// A family's paths and its choice among them; constant-initialised, so it
/// serves before and after every static constructor.
template <class Kernels>
class PathTable {
 public:
  typedef Path<Kernels> Entry;

  /// A family that chooses among its paths themselves.
  template <unsigned int N>
  constexpr explicit PathTable(const Entry (&paths)[N]) noexcept : PathTable(paths, paths) {}
  /// A family that chooses among `choices`, rows of its own making.
  template <unsigned int N, unsigned int C>
  constexpr PathTable(const Entry (&paths)[N], const Entry (&choices)[C]) noexcept
      : paths_(paths), count_(N), choices_(choices), choiceCount_(C) {}

  /// The number of paths compiled into the library.
  unsigned int count() const noexcept { return count_; }
  /// Path i; path 0, the scalar loop, for i out of range.
  const Entry& path(unsigned int i) const noexcept { return paths_[i < count_ ? i : 0]; }
  /// Whether this processor runs path i (the cap aside).
  bool available(unsigned int i) const noexcept { return path(i).level <= zeProcessorInstructionSet(); }

  /// The row the published functions run now.
  const Entry& chosen() const noexcept {
    const unsigned int level = usableInstructionSet();
    unsigned int made = made_.load(std::memory_order_relaxed);
    if (made >> 8 != level + 1) {
      made = (level + 1) << 8 | widestWithin(level);
      made_.store(made, std::memory_order_relaxed);
    }
    return choices_[made & 0xFF];
  }

  /// The row a call runs: the scalar loop when the call's outputs share bytes
  /// with one of its inputs, otherwise chosen(). The vector paths read a block
  /// of inputs before writing any of its outputs, the scalar loop reads each
  /// element just before writing it; only it gives the written result then.
  const Entry& pathFor(bool outputsShareInputBytes) const noexcept {
    return outputsShareInputBytes ? paths_[0] : chosen();
  }

 private:
  unsigned int widestWithin(unsigned int level) const noexcept {
    unsigned int best = 0;
    for (unsigned int i = 1; i < choiceCount_; ++i)
      if (unsigned(choices_[i].level) <= level) best = i;
    return best;
  }

  const Entry* paths_;
  unsigned int count_;
  const Entry* choices_;
  unsigned int choiceCount_;
  /// (level + 1) << 8 | the row chosen for that level; 0 before the first choice.
  mutable std::atomic<unsigned int> made_{0};
};

/// Whether the `aBytes` bytes at a and the `bBytes` bytes at b share a byte.
inline bool bytesOverlap(const void* a, std::size_t aBytes, const void* b, std::size_t bBytes) noexcept {
  const std::uintptr_t a0 = reinterpret_cast<std::uintptr_t>(a), b0 = reinterpret_cast<std::uintptr_t>(b);
  return a0 < b0 + bBytes && b0 < a0 + aBytes;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
