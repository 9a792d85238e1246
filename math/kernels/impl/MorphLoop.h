#pragma once

/// \file
/// One morphing pass written once over a vector of lanes. Every float
/// component is computed on its own, so a block of N vectors is 3N floats in
/// three registers, each lane one float: start value, then each target's
/// float times its weight added in target order, with separate multiplies
/// and adds, exactly as the scalar loop does. Included only by the
/// instruction-set units (math/isa/); it uses raw floats so that those
/// units, some built for wider instructions, share no inline function
/// with the rest of the library.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The helpers below work on whole vectors held in registers: they must melt
// into the loop.
#define ZE_MORPH_INLINE inline __attribute__((always_inline))

constexpr std::size_t kVectorBytes = 3 * sizeof(float);

/// From this many bytes read and written by one pass on, the packed outputs
/// are stored around the caches: the pass has outgrown a large last-level
/// cache (32 MiB), so the outputs would only push out inputs still to come,
/// and the processor no longer reads each output line before writing it.
/// Measured on 1M vectors: a quarter or more throughput with one target, a
/// tenth with eight; on passes that fit the caches it costs instead. The
/// bits are the same either way.
constexpr std::size_t kStreamingBytes = std::size_t(32) << 20;

/// The weights of a pass, as floats and spread over all lanes, and the
/// addresses of its targets: read once, before the loop.
template <class V>
struct PassTargets {
  typename V::F lanes[kMorphPassTargets];
  float weights[kMorphPassTargets];
  const float* targets[kMorphPassTargets];
  unsigned int count;
};

/// Vectors [begin, end) one at a time, in the scalar order.
template <class V>
ZE_MORPH_INLINE void morphEach(const unsigned char* from, std::size_t fromStride, const PassTargets<V>& p,
                               std::size_t begin, std::size_t end, unsigned char* out, std::size_t stride) {
  for (std::size_t i = begin; i < end; ++i) {
    float v[3];
    std::memcpy(v, from + i * fromStride, kVectorBytes);
    for (unsigned int k = 0; k < p.count; ++k) {
      const float* d = p.targets[k] + 3 * i;
      v[0] = v[0] + d[0] * p.weights[k];
      v[1] = v[1] + d[1] * p.weights[k];
      v[2] = v[2] + d[2] * p.weights[k];
    }
    std::memcpy(out + i * stride, v, kVectorBytes);
  }
}

/// The start values of N vectors: whole registers when they are packed,
/// else gathered 12 bytes at a time.
template <class V, bool kPacked>
ZE_MORPH_INLINE void loadStart(const unsigned char* from, std::size_t stride, typename V::F a[3]) {
  const float* s;
  alignas(64) float gathered[3 * V::N];
  if (kPacked) {
    s = reinterpret_cast<const float*>(from);
  } else {
    for (int l = 0; l < V::N; ++l) std::memcpy(gathered + 3 * l, from + l * stride, kVectorBytes);
    s = gathered;
  }
  for (int r = 0; r < 3; ++r) a[r] = V::load(s + r * V::N);
}

/// Writes N vectors: whole registers when the outputs are packed (around the
/// caches with kStream, at a vector boundary), else 12 bytes per output so
/// that the bytes between outputs stay untouched.
template <class V, bool kPacked, bool kStream>
ZE_MORPH_INLINE void storeOutputs(const typename V::F a[3], unsigned char* out, std::size_t stride) {
  float* o = reinterpret_cast<float*>(out);
  if (kStream) {
    for (int r = 0; r < 3; ++r) V::stream(o + r * V::N, a[r]);
  } else if (kPacked) {
    for (int r = 0; r < 3; ++r) V::store(o + r * V::N, a[r]);
  } else {
    alignas(64) float lanes[3 * V::N];
    for (int r = 0; r < 3; ++r) V::store(lanes + r * V::N, a[r]);
    for (int l = 0; l < V::N; ++l) std::memcpy(out + l * stride, lanes + 3 * l, kVectorBytes);
  }
}

/// How many packed outputs come before one that starts at a vector boundary
/// (fewer than N when `out` lies at a 4-byte boundary).
template <class V>
std::size_t outputsBeforeBoundary(const unsigned char* out, std::size_t count) {
  std::size_t i = 0;
  while (i < count && reinterpret_cast<std::uintptr_t>(out + i * kVectorBytes) % sizeof(typename V::F) != 0) ++i;
  return i;
}

template <class V, bool kPackedFrom, bool kPackedOut, bool kStream>
inline void morphBlocks(const unsigned char* from, std::size_t fromStride, const PassTargets<V>& p, std::size_t count,
                        unsigned char* out, std::size_t stride) {
  using F = typename V::F;
  std::size_t i = 0;
  if (kStream) {
    i = outputsBeforeBoundary<V>(out, count);
    morphEach<V>(from, fromStride, p, 0, i, out, stride);
  }
  for (; i + V::N <= count; i += V::N) {
    F a[3];
    loadStart<V, kPackedFrom>(from + i * fromStride, fromStride, a);
    for (unsigned int k = 0; k < p.count; ++k) {
      const float* d = p.targets[k] + 3 * i;
      for (int r = 0; r < 3; ++r) a[r] = V::add(a[r], V::mul(V::load(d + r * V::N), p.lanes[k]));
    }
    storeOutputs<V, kPackedOut, kStream>(a, out + i * stride, stride);
  }
  // Streamed stores are ordered before whatever the caller does next.
  if (kStream) V::fence();
  // The last vectors, fewer than N, one at a time.
  morphEach<V>(from, fromStride, p, i, count, out, stride);
}

/// The whole pass. The packed cases get loops of their own; the start
/// vectors are only spread out in later passes, which start from outputs
/// that are spread out too.
template <class V>
inline void morphPassLoop(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                          const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                          unsigned int stride) {
  PassTargets<V> p;
  p.count = targetCount;
  for (unsigned int k = 0; k < targetCount; ++k) {
    p.weights[k] = weights[k];
    p.lanes[k] = V::set1(p.weights[k]);
    p.targets[k] = targets[k];
  }
  const bool packedFrom = fromStride == kVectorBytes, packedOut = stride == kVectorBytes;
  const std::size_t passBytes = kVectorBytes * count * (std::size_t(targetCount) + 2);
  const bool stream = packedOut && passBytes >= kStreamingBytes && reinterpret_cast<std::uintptr_t>(out) % 4 == 0;
  if (packedFrom && stream)
    morphBlocks<V, true, true, true>(from, fromStride, p, count, out, stride);
  else if (packedFrom && packedOut)
    morphBlocks<V, true, true, false>(from, fromStride, p, count, out, stride);
  else if (packedFrom)
    morphBlocks<V, true, false, false>(from, fromStride, p, count, out, stride);
  else
    morphBlocks<V, false, false, false>(from, fromStride, p, count, out, stride);
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
