#pragma once

/// \file
/// The skinning loops written once over a vector of lanes, a vertex to each
/// 128-bit part of a register: SSE2 holds one vertex per register, AVX2 two,
/// AVX-512 four (its own loop, BlendAvx512Loop.h, sends here what its
/// palette tables cannot hold). Lane c of a part is component c of that
/// vertex's output; the fourth lane is scratch.
///
/// x, y and z of a vertex are broadcast over its part, and each counted
/// influence loads the rows of its matrix whole, straight from the palette
/// (no gather; rows only move between parts as a whole), so that lane c
/// computes
/// x*M[0][c] + y*M[1][c] + z*M[2][c] + M[3][c], times the weight, added to
/// the running sum that starts at 0: exactly the scalar loop's order for
/// that component, separate multiplies and adds. An influence at or below
/// the threshold points its part at a block of zeros instead of its matrix
/// (which is never read), and its part keeps its sum as it was. No branch
/// depends on the weights, so realistic meshes, where each vertex counts a
/// different number of its influences, run as fast as any.
///
/// Included only by the instruction-set units (math/isa/); it uses raw
/// floats so that those units, some built for wider instructions, share no
/// inline function with the rest of the library. The lanes (math/impl/lanes)
/// supply load, store, store3, add, mul, greater, select, maskBits and
/// shuffle<imm> within each 128-bit part; registers of two parts also
/// loadHalves, storeHalves, store3Halves, lowHalves and highHalves, of four
/// parts loadQuarters, storeQuarters, store3Quarters and shuffle128<imm>.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The helpers below work on whole vectors held in registers: they must melt
// into the loop.
#define ZE_BLEND_INLINE inline __attribute__((always_inline))

/// What a skipped influence or a vertex past the end reads instead of a
/// matrix, a vertex or weights: zeros, so the arithmetic on it stays quiet;
/// its result is never kept.
alignas(64) const float kZeroBlock[16] = {};

/// What a vertex past the end reads instead of an index.
const unsigned char kZeroIndex = 0;

/// The strict threshold of the weighted kernel (bits 0x38D1B717).
constexpr float kBlendThreshold = 0.0001f;

/// Vertices per register: one per 128-bit part.
template <class V>
constexpr int kVerticesPer = V::N / 4;

/// How far ahead (in vertices) the main loop asks for its inputs and its
/// outputs: reading a 1M-vertex mesh waits on memory otherwise.
constexpr std::size_t kPrefetchVertices = 64;

/// The arrays of one call. `perVertex` is the number of influences per
/// vertex; `count` the number of vertices (what may be read).
struct BlendInputs {
  const float* source;
  const float* weights;
  const unsigned char* indices;
  const float* matrices;
  std::size_t perVertex;
  std::size_t count;
};

/// Asks for every cache line of the inputs of vertices [first, first + n)
/// (the weights too unless kOneWeight) and of their outputs, to write.
/// Asking past the end of an array reads nothing.
template <bool kOneWeight>
ZE_BLEND_INLINE void prefetch(const BlendInputs& in, std::size_t first, std::size_t n, unsigned char* out,
                              std::size_t stride) {
  constexpr std::size_t kLine = 64;
  const auto ask = [](const void* from, std::size_t bytes, int write) {
    for (std::size_t o = 0; o < bytes; o += kLine)
      write ? __builtin_prefetch(static_cast<const char*>(from) + o, 1)
            : __builtin_prefetch(static_cast<const char*>(from) + o, 0);
  };
  ask(in.source + 4 * first, 4 * sizeof(float) * n, 0);
  if (!kOneWeight) ask(in.weights + in.perVertex * first, sizeof(float) * in.perVertex * n, 0);
  ask(in.indices + in.perVertex * first, in.perVertex * n, 0);
  ask(out + stride * first, stride * n, 1);
}

/// Part p of the result is the four floats at at[p].
template <class V>
ZE_BLEND_INLINE typename V::F loadParts(const float* const* at) {
  if constexpr (kVerticesPer<V> == 1)
    return V::load(at[0]);
  else if constexpr (kVerticesPer<V> == 2)
    return V::loadHalves(at[0], at[1]);
  else
    return V::loadQuarters(at[0], at[1], at[2], at[3]);
}

/// Lane c of each part, over the whole part.
template <class V, int kLane>
ZE_BLEND_INLINE typename V::F spread(typename V::F v) {
  return V::template shuffle<kLane * 0x55>(v, v);
}

/// x, y, z of each part's vertex, each over its whole part.
template <class V>
struct Point {
  typename V::F x, y, z;
  ZE_BLEND_INLINE explicit Point(typename V::F v) : x(spread<V, 0>(v)), y(spread<V, 1>(v)), z(spread<V, 2>(v)) {}
};

/// (x, y, z, 1)·m of each part's vertex by the rows of its matrix at m[p],
/// each component summed left to right.
template <class V>
ZE_BLEND_INLINE typename V::F transformed(const Point<V>& p, const float* const* m) {
  constexpr int P = kVerticesPer<V>;
  typename V::F r0, r1, r2, r3;
  if constexpr (P == 2) {
    // Two rows of each matrix per load, then each row of both together.
    const typename V::F a01 = V::load(m[0]), b01 = V::load(m[1]), a23 = V::load(m[0] + 8), b23 = V::load(m[1] + 8);
    r0 = V::lowHalves(a01, b01);
    r1 = V::highHalves(a01, b01);
    r2 = V::lowHalves(a23, b23);
    r3 = V::highHalves(a23, b23);
  } else if constexpr (P == 4) {
    // Each matrix in one load, then a transpose of 128-bit parts: part p of
    // row r is row r of vertex p's matrix.
    const typename V::F a = V::load(m[0]), b = V::load(m[1]), c = V::load(m[2]), d = V::load(m[3]);
    const typename V::F ab01 = V::template shuffle128<0x44>(a, b), ab23 = V::template shuffle128<0xEE>(a, b);
    const typename V::F cd01 = V::template shuffle128<0x44>(c, d), cd23 = V::template shuffle128<0xEE>(c, d);
    r0 = V::template shuffle128<0x88>(ab01, cd01);
    r1 = V::template shuffle128<0xDD>(ab01, cd01);
    r2 = V::template shuffle128<0x88>(ab23, cd23);
    r3 = V::template shuffle128<0xDD>(ab23, cd23);
  } else {
    const float* row[4][P];
    for (int r = 0; r < 4; ++r)
      for (int v = 0; v < P; ++v) row[r][v] = m[v] + 4 * r;
    r0 = loadParts<V>(row[0]);
    r1 = loadParts<V>(row[1]);
    r2 = loadParts<V>(row[2]);
    r3 = loadParts<V>(row[3]);
  }
  return V::add(V::add(V::add(V::mul(p.x, r0), V::mul(p.y, r1)), V::mul(p.z, r2)), r3);
}

/// Writes x, y, z of the first `live` parts, 12 bytes each, `stride` bytes
/// apart, in vertex order. With kSpill the outputs are packed (stride 12)
/// and another output follows the last of these: each part is written
/// whole, its scratch lane landing where the next output is written after.
template <class V, bool kSpill>
ZE_BLEND_INLINE void storeParts(typename V::F v, unsigned char* out, std::size_t stride, int live) {
  constexpr int P = kVerticesPer<V>;
  float* at[P];
  for (int p = 0; p < P; ++p) at[p] = reinterpret_cast<float*>(out + p * stride);
  if (live < P) {
    alignas(64) float lanes[V::N];
    V::store(lanes, v);
    for (int p = 0; p < live; ++p) std::memcpy(at[p], lanes + 4 * p, 3 * sizeof(float));
  } else if constexpr (P == 1) {
    kSpill ? V::store(at[0], v) : V::store3(at[0], v);
  } else if constexpr (P == 2) {
    kSpill ? V::storeHalves(at[0], at[1], v) : V::store3Halves(at[0], at[1], v);
  } else {
    kSpill ? V::storeQuarters(at[0], at[1], at[2], at[3], v) : V::store3Quarters(at[0], at[1], at[2], at[3], v);
  }
}

/// The vertices from `first` whose weights a register may load whole, four
/// from each vertex's first of a run of four influences: those up to `safe`
/// (BlendRange::safe). With kTail, vertices from `end` on are not there
/// (their parts read zeros), and those from `safe` on load their weights
/// through a copy of what there is.
template <class V, bool kTail>
struct Vertices {
  std::size_t first, end, safe;

  /// Whether the vertex of part p is there.
  ZE_BLEND_INLINE bool live(int p) const { return !kTail || first + p < end; }

  ZE_BLEND_INLINE typename V::F source(const BlendInputs& in) const {
    if constexpr (!kTail) {
      return V::load(in.source + 4 * first);
    } else {
      const float* at[kVerticesPer<V>];
      for (int p = 0; p < kVerticesPer<V>; ++p) at[p] = live(p) ? in.source + 4 * (first + p) : kZeroBlock;
      return loadParts<V>(at);
    }
  }

  /// Influences 4c to 4c + 3 of each part's vertex (what follows them where
  /// the vertex has fewer), zeros for a vertex that is not there. `copies`
  /// holds what a vertex near the end of the weights has of them.
  ZE_BLEND_INLINE typename V::F weights(const BlendInputs& in, std::size_t c, float (*copies)[4]) const {
    const float* at[kVerticesPer<V>];
    for (int p = 0; p < kVerticesPer<V>; ++p) {
      const std::size_t from = (first + p) * in.perVertex + 4 * c;
      at[p] = in.weights + from;
      if (!kTail) continue;
      if (!live(p)) {
        at[p] = kZeroBlock;
      } else if (first + p >= safe) {
        const std::size_t there = in.count * in.perVertex - from;
        for (int k = 0; k < 4; ++k) copies[p][k] = std::size_t(k) < there ? in.weights[from + k] : 0.0f;
        at[p] = copies[p];
      }
    }
    return loadParts<V>(at);
  }

  /// Where the index of influence k of part p's vertex is.
  ZE_BLEND_INLINE const unsigned char* index(const BlendInputs& in, int p, std::size_t k) const {
    return live(p) ? in.indices + (first + p) * in.perVertex + k : &kZeroIndex;
  }
};

/// `a` where `bits` has a bit of `which`, `b` where not. Whether an
/// influence counts is as good as random on real meshes: a conditional
/// move, never a branch.
ZE_BLEND_INLINE const float* choose(unsigned int bits, unsigned int which, const float* a, const float* b) {
  __asm__("test %3, %2\n\tcmovz %1, %0" : "+r"(a) : "r"(b), "r"(bits), "ri"(which) : "cc");
  return a;
}

/// Influences 4c + j for j < `of` of a register of vertices, added to `sum`
/// (kJ counts j up from 0 at compile time, so that the shuffles that spread
/// each weight take immediates).
template <class V, bool kTail, int kJ = 0>
ZE_BLEND_INLINE void addInfluences(const BlendInputs& in, const Vertices<V, kTail>& at, const Point<V>& p,
                                   std::size_t c, int of, typename V::F w, unsigned int counted, typename V::F& sum) {
  if constexpr (kJ < 4) {
    if (kJ >= of) return;
    constexpr int P = kVerticesPer<V>;
    const float* m[P];
    for (int v = 0; v < P; ++v) {
      const float* named = in.matrices + 16 * std::size_t(*at.index(in, v, 4 * c + kJ));
      m[v] = choose(counted, 1u << (4 * v + kJ), named, kZeroBlock);
    }
    const typename V::F wj = spread<V, kJ>(w);
    const typename V::Mask counts = V::greater(wj, V::set1(kBlendThreshold));
    // Parts whose influence does not count keep their sum as it was (adding
    // a zero would turn -0 into +0).
    sum = V::select(counts, V::add(sum, V::mul(transformed<V>(p, m), wj)), sum);
    addInfluences<V, kTail, kJ + 1>(in, at, p, c, of, w, counted, sum);
  }
}

/// One register of vertices: their outputs, x, y, z in lanes 0 to 2 of
/// each part. kInfluences is the number per vertex when it is 1 to 4, 0
/// when it is only known at run time. With kOneWeight, the first
/// influence of each vertex alone, unweighted.
template <class V, int kInfluences, bool kOneWeight, bool kTail>
ZE_BLEND_INLINE typename V::F blendRegister(const BlendInputs& in, const Vertices<V, kTail>& at) {
  constexpr int P = kVerticesPer<V>;
  const Point<V> p(at.source(in));
  if (kOneWeight) {
    const float* m[P];
    for (int v = 0; v < P; ++v) m[v] = at.live(v) ? in.matrices + 16 * std::size_t(*at.index(in, v, 0)) : kZeroBlock;
    return transformed<V>(p, m);
  }
  typename V::F sum = V::zero();
  const std::size_t influences = kInfluences ? kInfluences : in.perVertex;
  for (std::size_t c = 0; 4 * c < influences; ++c) {
    float copies[kTail ? P : 1][4];
    const typename V::F w = at.weights(in, c, copies);
    // Bit 4p + j: influence 4c + j of part p counts (strictly above the
    // threshold; a NaN weight does not).
    const unsigned int counted = V::maskBits(V::greater(w, V::set1(kBlendThreshold)));
    const int of = influences - 4 * c < 4 ? int(influences - 4 * c) : 4;
    addInfluences<V>(in, at, p, c, of, w, counted, sum);
  }
  return sum;
}

/// Whole registers of vertices from `first` while they end by `end`;
/// returns where they stop. See blendRange.
template <class V, int kInfluences, bool kOneWeight, bool kSpill>
inline std::size_t blendWhole(const BlendInputs& in, std::size_t first, std::size_t end, std::size_t safe,
                              unsigned char* out, std::size_t stride) {
  constexpr int P = kVerticesPer<V>;
  for (; first + P <= end; first += P) {
    prefetch<kOneWeight>(in, first + kPrefetchVertices, P, out, stride);
    const typename V::F sum =
        blendRegister<V, kInfluences, kOneWeight, false>(in, Vertices<V, false>{first, end, safe});
    storeParts<V, kSpill>(sum, out + first * stride, stride, P);
  }
  return first;
}

/// Vertices [first, end) of the arrays in `in`, outputs from `out` (the
/// output of vertex 0) `stride` bytes apart.
template <class V, int kInfluences, bool kOneWeight>
inline void blendRange(const BlendInputs in, std::size_t first, std::size_t end, unsigned char* out,
                       std::size_t stride) {
  constexpr int P = kVerticesPer<V>;
  // A vertex may load four weights from each run of four influences as
  // long as the last such load ends within the weights.
  const std::size_t perVertex = kOneWeight ? 0 : in.perVertex;
  const std::size_t read = 4 * ((perVertex + 3) / 4), all = in.count * perVertex;
  const std::size_t safe = perVertex == 0 ? in.count : all < read ? 0 : (all - read) / perVertex + 1;
  const std::size_t wholeEnd = end < safe ? end : safe;
  // Packed outputs are written whole where another output follows.
  const std::size_t spillEnd = wholeEnd == in.count && wholeEnd > 0 ? wholeEnd - 1 : wholeEnd;
  if (stride == 3 * sizeof(float))
    first = blendWhole<V, kInfluences, kOneWeight, true>(in, first, spillEnd, safe, out, stride);
  first = blendWhole<V, kInfluences, kOneWeight, false>(in, first, wholeEnd, safe, out, stride);
  for (; first < end; first += P) {
    const typename V::F sum = blendRegister<V, kInfluences, kOneWeight, true>(in, Vertices<V, true>{first, end, safe});
    storeParts<V, false>(sum, out + first * stride, stride, end - first < std::size_t(P) ? int(end - first) : P);
  }
}

/// All vertices of a call, with the number of influences per vertex known
/// when compiled where it is 1 to 4.
template <class V, bool kOneWeight>
inline void blendAll(const BlendInputs& in, unsigned char* out, std::size_t stride) {
  switch (kOneWeight ? 0 : in.perVertex) {
    case 1:
      return blendRange<V, 1, kOneWeight>(in, 0, in.count, out, stride);
    case 2:
      return blendRange<V, 2, kOneWeight>(in, 0, in.count, out, stride);
    case 3:
      return blendRange<V, 3, kOneWeight>(in, 0, in.count, out, stride);
    case 4:
      return blendRange<V, 4, kOneWeight>(in, 0, in.count, out, stride);
    default:
      return blendRange<V, 0, kOneWeight>(in, 0, in.count, out, stride);
  }
}

/// A raw skinning path (BlendRawPaths.h) on lanes V.
template <class V, bool kOneWeight>
inline void blendLoop(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                      unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  const BlendInputs in = {source, weights, indices, matrices, weightsPerVertex, count};
  blendAll<V, kOneWeight>(in, out, stride);
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
