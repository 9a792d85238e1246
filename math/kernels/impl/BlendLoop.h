#pragma once

/// \file
/// The skinning loops written once over a vector of lanes (one vertex per
/// lane). Each lane computes exactly what the scalar loop computes for its
/// vertex, in the same order, with separate multiplies and adds. Written for
/// lanes of one or two 128-bit parts (SSE2, AVX2). Included only by the
/// instruction-set units (math/isa/); it uses raw floats so that those
/// units, some built for wider instructions, share no inline function with
/// the rest of the library.

#include <cstddef>
#include <cstring>

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The helpers below work on whole vectors held in registers: they must melt
// into the loop.
#define ZE_BLEND_INLINE inline __attribute__((always_inline))

/// What a skipped lane reads instead of a matrix or a vertex: zeros, so the
/// arithmetic on it stays quiet; its result is discarded.
alignas(64) const float kZeroBlock[16] = {};

/// The strict threshold of the weighted kernel (bits 0x38D1B717).
constexpr float kBlendThreshold = 0.0001f;

/// Turns four vectors of one row per lane into four vectors of one column
/// per lane (within each 128-bit half for wider vectors).
template <class V>
ZE_BLEND_INLINE void transpose4(typename V::F r[4]) {
  using F = typename V::F;
  const F t0 = V::unpacklo(r[0], r[1]);
  const F t1 = V::unpackhi(r[0], r[1]);
  const F t2 = V::unpacklo(r[2], r[3]);
  const F t3 = V::unpackhi(r[2], r[3]);
  r[0] = V::template shuffle<0x44>(t0, t2);
  r[1] = V::template shuffle<0xEE>(t0, t2);
  r[2] = V::template shuffle<0x44>(t1, t3);
  r[3] = V::template shuffle<0xEE>(t1, t3);
}

/// Group g of a block: the four floats at p[g], or for registers of two
/// 128-bit halves those at p[g] in the low half and p[g + 4] in the high
/// half, so that the in-half transpose leaves the lanes in order.
template <class V>
ZE_BLEND_INLINE typename V::F loadGroupOfLanes(const float* const* p, int g) {
  if constexpr (V::N == V::kChunk)
    return V::load(p[g]);
  else
    return V::loadHalves(p[g], p[g + 4]);
}

/// Writes back what loadGroupOfLanes reads: the four floats of lane l at lanes[l].
template <class V>
ZE_BLEND_INLINE void storeGroupsToLanes(const typename V::F r[4], float (*lanes)[4]) {
  for (int g = 0; g < 4; ++g) {
    if constexpr (V::N == V::kChunk)
      V::store(lanes[g], r[g]);
    else
      V::storeHalves(lanes[g], lanes[g + 4], r[g]);
  }
}

/// out[c], lane l = p[l][c] for c < 4.
template <class V>
ZE_BLEND_INLINE void loadColumns(const float* const* p, typename V::F out[4]) {
  for (int g = 0; g < 4; ++g) out[g] = loadGroupOfLanes<V>(p, g);
  transpose4<V>(out);
}

/// One lane's (x, y, z, 1)·m without the fourth column, sums left to right.
template <class V>
struct Product {
  typename V::F x, y, z;
};

template <class V>
ZE_BLEND_INLINE Product<V> transformLanes(typename V::F x, typename V::F y, typename V::F z, const float* const* m) {
  using F = typename V::F;
  const float* rows[V::N];
  F r0[4], r1[4], r2[4], r3[4];
  for (int l = 0; l < V::N; ++l) rows[l] = m[l];
  loadColumns<V>(rows, r0);
  for (int l = 0; l < V::N; ++l) rows[l] = m[l] + 4;
  loadColumns<V>(rows, r1);
  for (int l = 0; l < V::N; ++l) rows[l] = m[l] + 8;
  loadColumns<V>(rows, r2);
  for (int l = 0; l < V::N; ++l) rows[l] = m[l] + 12;
  loadColumns<V>(rows, r3);
  Product<V> q;
  q.x = V::add(V::add(V::add(V::mul(x, r0[0]), V::mul(y, r1[0])), V::mul(z, r2[0])), r3[0]);
  q.y = V::add(V::add(V::add(V::mul(x, r0[1]), V::mul(y, r1[1])), V::mul(z, r2[1])), r3[1]);
  q.z = V::add(V::add(V::add(V::mul(x, r0[2]), V::mul(y, r1[2])), V::mul(z, r2[2])), r3[2]);
  return q;
}

/// Writes lane l's (x, y, z) as 12 bytes at out + l * stride, lanes in order,
/// for the first `live` lanes.
template <class V>
ZE_BLEND_INLINE void storeLanes(typename V::F x, typename V::F y, typename V::F z, unsigned char* out,
                                std::size_t stride, int live) {
  typename V::F r[4] = {x, y, z, V::zero()};
  transpose4<V>(r);
  float lanes[V::N][4];
  storeGroupsToLanes<V>(r, lanes);
  for (int l = 0; l < live; ++l) std::memcpy(out + l * stride, lanes[l], 3 * sizeof(float));
}

/// Skins `live` (at most V::N) vertices starting at vertex `first`. With
/// kOneWeight, the first influence of each vertex alone, unweighted.
template <class V, bool kOneWeight>
ZE_BLEND_INLINE void blendBlock(const float* source, std::size_t first, int live, const float* weights,
                                const unsigned char* indices, std::size_t weightsPerVertex, const float* matrices,
                                unsigned char* out, std::size_t stride) {
  using F = typename V::F;
  const float* p[V::N];
  for (int l = 0; l < V::N; ++l) p[l] = l < live ? source + 4 * (first + l) : kZeroBlock;
  F s[4];
  loadColumns<V>(p, s);

  if (kOneWeight) {
    for (int l = 0; l < V::N; ++l)
      p[l] = l < live ? matrices + 16 * std::size_t(indices[(first + l) * weightsPerVertex]) : kZeroBlock;
    const Product<V> q = transformLanes<V>(s[0], s[1], s[2], p);
    storeLanes<V>(q.x, q.y, q.z, out, stride, live);
    return;
  }

  F sx = V::zero(), sy = V::zero(), sz = V::zero();
  const F threshold = V::set1(kBlendThreshold);
  // Each lane walks its own vertex's weights and indices; a dead lane (past
  // the tail) walks a zero weight that never counts.
  const float* wl[V::N];
  const unsigned char* il[V::N];
  for (int l = 0; l < V::N; ++l) {
    const std::size_t at = (first + l) * weightsPerVertex;
    wl[l] = l < live ? weights + at : kZeroBlock;
    il[l] = l < live ? indices + at : nullptr;
  }
  for (std::size_t k = 0; k < weightsPerVertex; ++k) {
    alignas(64) float w[V::N];
    bool any = false;
    for (int l = 0; l < V::N; ++l) {
      w[l] = l < live ? wl[l][k] : 0.0f;
      // A skipped influence never reads its matrix.
      const bool counts = w[l] > kBlendThreshold;
      p[l] = counts ? matrices + 16 * std::size_t(il[l][k]) : kZeroBlock;
      any = any || counts;
    }
    if (!any) continue;
    const F wv = V::load(w);
    const F counts = V::greater(wv, threshold);
    const Product<V> q = transformLanes<V>(s[0], s[1], s[2], p);
    // Skipped lanes keep their sum as it was (adding a zero would turn -0 into +0).
    sx = V::select(counts, V::add(sx, V::mul(q.x, wv)), sx);
    sy = V::select(counts, V::add(sy, V::mul(q.y, wv)), sy);
    sz = V::select(counts, V::add(sz, V::mul(q.z, wv)), sz);
  }
  storeLanes<V>(sx, sy, sz, out, stride, live);
}

/// The whole loop: full blocks, then one partial block for the tail.
template <class V, bool kOneWeight>
inline void blendLoop(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                      unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  std::size_t i = 0;
  for (; i + V::N <= count; i += V::N)
    blendBlock<V, kOneWeight>(source, i, V::N, weights, indices, weightsPerVertex, matrices, out + i * stride, stride);
  if (i < count)
    blendBlock<V, kOneWeight>(source, i, int(count - i), weights, indices, weightsPerVertex, matrices, out + i * stride,
                              stride);
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
