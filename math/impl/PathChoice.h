#pragma once

/// \file
/// What the published kernels and array transforms share when they choose
/// an instruction-set path: the widest path the processor runs, and whether
/// an output shares bytes with an input (the vector paths read a block of
/// inputs before writing any of its outputs; the scalar loop reads each
/// element just before writing it, so overlapping outputs take the scalar
/// loop). Internal.

#include <cstddef>
#include <cstdint>

namespace Lux {
namespace Math {
namespace impl {

/// The index of the last available path of `paths[0..count)`; path 0, the
/// scalar loop, is always available.
template <class Path>
unsigned int widestAvailable(const Path* paths, unsigned int count) noexcept {
  unsigned int best = 0;
  for (unsigned int i = 1; i < count; ++i)
    if (paths[i].available) best = i;
  return best;
}

/// Whether the `aBytes` bytes at a and the `bBytes` bytes at b share a byte.
inline bool bytesOverlap(const void* a, std::size_t aBytes, const void* b, std::size_t bBytes) noexcept {
  const std::uintptr_t a0 = reinterpret_cast<std::uintptr_t>(a), b0 = reinterpret_cast<std::uintptr_t>(b);
  return a0 < b0 + bBytes && b0 < a0 + aBytes;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
