#pragma once

/// \file
/// The skinning loops on AVX-512: sixteen vertices per register, the float
/// work written with the AVX-512 lanes (math/impl/lanes/Avx512Lanes.h).
/// Included only by the unit built for AVX-512 (math/isa/); blend<> has the
/// shape of a raw skinning path (BlendRawPaths.h).
///
/// Everything per lane stays in vectors: the weights and indices of sixteen
/// vertices are picked out of whole-vector loads and a lane mask says which
/// influences count. Matrices 0 to 63 are copied, each the first time a
/// counting influence names it and never otherwise, into one table per
/// element, and a lane's element is a permute out of its table. A block of
/// sixteen vertices where a counting influence names a matrix from 64 up,
/// short meshes, and vertices with more than four influences go by the rows
/// of their matrices instead (BlendLoop.h, four vertices per register).
/// Either way a skipped influence's matrix is never read, and masked adds
/// leave the sums of skipped lanes as they were: each lane computes exactly
/// what the scalar loop computes for its vertex, in the same order. One
/// block is in flight at a time (two spill registers), and the inputs and
/// outputs of the blocks ahead are fetched early.

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "math/impl/lanes/Avx512Lanes.h"
#include "math/kernels/impl/BlendLoop.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {
namespace blendAvx512 {

/// The float lanes; the index and address bookkeeping stays in integer
/// intrinsics.
typedef Avx512Float L;
typedef L::F F;
typedef L::Mask Mask;

constexpr int kLanes = 16;

/// The first `live` lanes.
ZE_AVX512_INLINE Mask liveMask(int live) { return Mask((1u << live) - 1u); }

/// Bits [16 * part, 16 * part + 16) of the first `n` bits of a 64-bit mask.
ZE_AVX512_INLINE Mask partOfFirst(unsigned n, int part) {
  const std::uint64_t all = n >= 64 ? ~std::uint64_t(0) : (std::uint64_t(1) << n) - 1u;
  return Mask(all >> (16 * part));
}

/// x, y, z of sixteen source vertices (16 bytes each), one vertex per lane.
struct Source {
  F x, y, z;
};

ZE_AVX512_INLINE Source loadSource(const float* p, int live) {
  const unsigned floats = 4u * unsigned(live);
  const F v0 = L::loadMasked(partOfFirst(floats, 0), p);
  const F v1 = L::loadMasked(partOfFirst(floats, 1), p + 16);
  const F v2 = L::loadMasked(partOfFirst(floats, 2), p + 32);
  const F v3 = L::loadMasked(partOfFirst(floats, 3), p + 48);
  const __m512i xy = _mm512_setr_epi32(0, 4, 8, 12, 16, 20, 24, 28, 1, 5, 9, 13, 17, 21, 25, 29);
  const __m512i zw = _mm512_setr_epi32(2, 6, 10, 14, 18, 22, 26, 30, 3, 7, 11, 15, 19, 23, 27, 31);
  const F xy0 = L::permute2(v0, xy, v1), xy1 = L::permute2(v2, xy, v3);
  const F zw0 = L::permute2(v0, zw, v1), zw1 = L::permute2(v2, zw, v3);
  return {L::shuffle128<0x44>(xy0, xy1), L::shuffle128<0xEE>(xy0, xy1), L::shuffle128<0x44>(zw0, zw1)};
}

/// Where lane l finds word k of its vertex in a run of K words per vertex:
/// position l * K + k.
struct PickOrder {
  alignas(64) int at[5][4][16];
  constexpr PickOrder() : at() {
    for (int K = 1; K <= 4; ++K)
      for (int k = 0; k < K; ++k)
        for (int l = 0; l < 16; ++l) at[K][k][l] = l * K + k;
  }
};

constexpr PickOrder kPick;

/// The K (1 to 4) words per vertex of sixteen vertices, as loaded whole, and
/// the choice of word k of each lane's vertex out of them.
template <int K>
struct Strided {
  __m512i r[K];

  /// Lane l = word k of vertex l (word l * K + k of the loaded run).
  ZE_AVX512_INLINE __m512i pick(int k) const {
    if (K == 1) return r[0];
    const __m512i at = _mm512_load_si512(kPick.at[K][k]);
    const __m512i low = _mm512_permutex2var_epi32(r[0], at, r[K > 1 ? 1 : 0]);
    if (K <= 2) return low;
    const __m512i high = _mm512_permutex2var_epi32(r[K > 2 ? 2 : 0], at, r[K > 3 ? 3 : (K > 2 ? 2 : 0)]);
    // Positions 32 and up come from the second pair of vectors.
    return _mm512_mask_blend_epi32(_mm512_test_epi32_mask(at, _mm512_set1_epi32(32)), low, high);
  }
};

/// The weights of `live` vertices, K per vertex.
template <int K>
ZE_AVX512_INLINE Strided<K> loadWeights(const float* w, int live) {
  Strided<K> s;
  const unsigned n = unsigned(K * live);
  for (int j = 0; j < K; ++j) s.r[j] = L::bits(L::loadMasked(partOfFirst(n, j), w + 16 * j));
  return s;
}

/// How many index bytes a block of `live` vertices, K per vertex, may read:
/// all of them, or with kFirstOnly up to the last vertex's first.
template <int K, bool kFirstOnly>
ZE_AVX512_INLINE unsigned indexBytes(int live) {
  return live == 0 ? 0u : unsigned(K * live - (kFirstOnly ? K - 1 : 0));
}

/// The first `n` of 64 bytes.
ZE_AVX512_INLINE __mmask64 firstBytes(unsigned n) { return n >= 64 ? ~__mmask64(0) : (__mmask64(1) << n) - 1u; }

/// The indices of `live` vertices, K per vertex, and the choice of index k
/// of each lane's vertex, widened to 32 bits. With kFirstOnly the last
/// vertex's indices after its first are not read.
template <int K, bool kFirstOnly>
struct Indices {
  /// Three per vertex: widened whole, then picked like the weights.
  Strided<K> run;

  ZE_AVX512_INLINE Indices(const unsigned char* idx, int live) {
    const __m512i bytes = load(idx, live);
    static_assert(K <= 3, "two and four per vertex come packed");
    run.r[0] = _mm512_cvtepu8_epi32(_mm512_castsi512_si128(bytes));
    if constexpr (K > 1) run.r[1] = _mm512_cvtepu8_epi32(_mm512_extracti32x4_epi32(bytes, 1));
    if constexpr (K > 2) run.r[2] = _mm512_cvtepu8_epi32(_mm512_extracti32x4_epi32(bytes, 2));
  }
  ZE_AVX512_INLINE __m512i pick(int k) const { return run.pick(k); }

  static ZE_AVX512_INLINE __m512i load(const unsigned char* idx, int live) {
    return _mm512_maskz_loadu_epi8(firstBytes(indexBytes<K, kFirstOnly>(live)), idx);
  }
};

/// One per vertex: each byte widened in place.
template <bool kFirstOnly>
struct Indices<1, kFirstOnly> {
  __m512i index;
  ZE_AVX512_INLINE Indices(const unsigned char* idx, int live)
      : index(_mm512_cvtepu8_epi32(_mm_maskz_loadu_epi8(liveMask(live), idx))) {}
  ZE_AVX512_INLINE __m512i pick(int) const { return index; }
};

/// Two or four per vertex: the vertex's indices as one 32-bit word per lane,
/// each picked out by a shift and a mask.
template <int K, bool kFirstOnly>
struct PackedIndices {
  __m512i word;
  ZE_AVX512_INLINE __m512i pick(int k) const {
    const __m512i shifted = k == 0 ? word : _mm512_srli_epi32(word, 8 * k);
    return k == K - 1 && K == 4 ? shifted : _mm512_and_si512(shifted, _mm512_set1_epi32(0xFF));
  }
};

template <bool kFirstOnly>
struct Indices<2, kFirstOnly> : PackedIndices<2, kFirstOnly> {
  ZE_AVX512_INLINE Indices(const unsigned char* idx, int live) {
    this->word =
        _mm512_cvtepu16_epi32(_mm256_maskz_loadu_epi8(__mmask32(firstBytes(indexBytes<2, kFirstOnly>(live))), idx));
  }
};

template <bool kFirstOnly>
struct Indices<4, kFirstOnly> : PackedIndices<4, kFirstOnly> {
  ZE_AVX512_INLINE explicit Indices(__m512i word) { this->word = word; }
  ZE_AVX512_INLINE Indices(const unsigned char* idx, int live) { this->word = loadWords(idx, live); }
  static ZE_AVX512_INLINE __m512i loadWords(const unsigned char* idx, int live) {
    return _mm512_maskz_loadu_epi8(firstBytes(indexBytes<4, kFirstOnly>(live)), idx);
  }
};

/// Rows 0 to 3, columns 0 to 2 of up to 64 matrices, one table per element:
/// element (r, c) of matrix j at t[3 * r + c][j]. A matrix is copied in the
/// first time a counting influence names it, and never otherwise.
struct Palette {
  alignas(64) float t[12][64];
  /// All bits set for each matrix copied in.
  alignas(64) int present[64];
  /// How many matrices have been copied in.
  int copied;
  /// Whether a matrix from 32 up has been copied in.
  bool wide;

  void clear() {
    std::memset(t, 0, sizeof t);
    std::memset(present, 0, sizeof present);
    copied = 0;
    wide = false;
  }
  /// Copies in matrix j of the palette.
  void load(const float* matrices, int j) {
    for (int e = 0; e < 12; ++e) t[e][j] = matrices[16 * j + 4 * (e / 3) + e % 3];
    present[j] = -1;
    copied += 1;
    wide = wide || j >= 32;
  }
};

/// The lane of vertex v: lane v itself, or in quad order, where four
/// vertices' four values are transposed within each 128-bit part, lane
/// 4q + i holds vertex 4i + q.
constexpr int laneOfVertex(int v, bool quads) { return quads ? 4 * (v % 4) + v / 4 : v; }

/// Where the packed (stride 12) store finds each float of its three output
/// vectors: x and y through one two-source permute, z merged in after.
struct PackedOrder {
  alignas(64) int xy[3][16];
  alignas(64) int z[3][16];
  Mask isZ[3];
  constexpr explicit PackedOrder(bool quads) : xy(), z(), isZ() {
    for (int j = 0; j < 3; ++j) {
      for (int p = 0; p < 16; ++p) {
        const int at = 16 * j + p, lane = laneOfVertex(at / 3, quads), component = at % 3;
        xy[j][p] = component == 1 ? 16 + lane : lane;
        z[j][p] = lane;
        if (component == 2) isZ[j] = Mask(isZ[j] | (1u << p));
      }
    }
  }
};

constexpr PackedOrder kPacked[2] = {PackedOrder(false), PackedOrder(true)};

/// The vertex of each lane in quad order.
alignas(64) constexpr int kQuadVertex[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};

/// Four vectors of four values for each of sixteen vertices (vertex 4j + q
/// in part q of v[j]) turned into four vectors of one value per vertex, in
/// quad order.
ZE_AVX512_INLINE void transposeQuads(F v[4]) {
  const F t0 = L::unpacklo(v[0], v[1]), t1 = L::unpackhi(v[0], v[1]);
  const F t2 = L::unpacklo(v[2], v[3]), t3 = L::unpackhi(v[2], v[3]);
  v[0] = L::shuffle<0x44>(t0, t2);
  v[1] = L::shuffle<0xEE>(t0, t2);
  v[2] = L::shuffle<0x44>(t1, t3);
  v[3] = L::shuffle<0xEE>(t1, t3);
}

/// The 64 floats from p on, the first `floats` of them read and the rest zero.
ZE_AVX512_INLINE void loadQuads(const float* p, unsigned floats, F v[4]) {
  for (int j = 0; j < 4; ++j) v[j] = L::loadMasked(partOfFirst(floats, j), p + 16 * j);
}

/// Writes vertex v's (x, y, z) at out + v * stride for the first `live`
/// vertices, in vertex order (so overlapping outputs end as the scalar loop
/// leaves them); kQuads when the lanes are in quad order.
template <bool kQuads = false>
ZE_AVX512_INLINE void store(F x, F y, F z, unsigned char* out, std::size_t stride, int live) {
  if (stride == 12) {
    // Packed outputs: three whole vectors of x y z x y z ...
    const unsigned floats = 3u * unsigned(live);
    for (int j = 0; j < 3; ++j) {
      const PackedOrder& order = kPacked[kQuads];
      const F xy = L::permute2(x, _mm512_load_si512(order.xy[j]), y);
      const F v = L::permuteWhere(xy, order.isZ[j], _mm512_load_si512(order.z[j]), z);
      L::storeMasked(reinterpret_cast<float*>(out + 64 * j), partOfFirst(floats, j), v);
    }
    return;
  }
  // One 12-byte store per lane: (x, y, z, 0) of lane 4q + i sits in part q of r[i].
  const F t0 = L::unpacklo(x, y), t1 = L::unpackhi(x, y);
  const F t2 = L::unpacklo(z, L::zero()), t3 = L::unpackhi(z, L::zero());
  const F r[4] = {L::shuffle<0x44>(t0, t2), L::shuffle<0xEE>(t0, t2), L::shuffle<0x44>(t1, t3),
                  L::shuffle<0xEE>(t1, t3)};
  alignas(64) float lanes[kLanes][4];
  for (int i = 0; i < 4; ++i) {
    L::storePart<0>(lanes[i], r[i]);
    L::storePart<1>(lanes[4 + i], r[i]);
    L::storePart<2>(lanes[8 + i], r[i]);
    L::storePart<3>(lanes[12 + i], r[i]);
  }
  for (int v = 0; v < live; ++v) _mm_mask_storeu_ps(out + v * stride, 0x7, _mm_load_ps(lanes[laneOfVertex(v, kQuads)]));
}

/// Lane l's entry of a 64-entry table: one permute per 32 entries; kWide
/// when an index may reach 32 to 63. Lanes whose influence does not count
/// pick whatever their index names; their results are never added.
template <bool kWide>
ZE_AVX512_INLINE F lookUp(const F table[4], __m512i index) {
  const F low = L::permute2(table[0], index, table[1]);
  if (!kWide) return low;
  const F high = L::permute2(table[2], index, table[3]);
  return L::select(_mm512_test_epi32_mask(index, _mm512_set1_epi32(32)), high, low);
}

/// What a block of sixteen vertices needs before its matrices: sources, and
/// per influence the indices, weights and the lanes where the influence
/// counts.
template <int K, bool kOneWeight>
struct Block {
  static constexpr int kInfluences = kOneWeight ? 1 : K;
  /// Four influences per vertex: the sources and weights come through
  /// in-lane transposes, so the lanes are in quad order.
  static constexpr bool kQuads = K == 4;
  int live;
  Source s;
  __m512i index[kInfluences];
  F w[kInfluences];
  Mask counts[kInfluences];

  /// Vertices [first, end), at most sixteen.
  ZE_AVX512_INLINE Block(std::size_t first, std::size_t end, const BlendInputs& in) : live(int(end - first)) {
    if constexpr (kQuads) {
      quads(in.source + 4 * first, in.weights + 4 * first, in.indices + 4 * first);
    } else {
      const Mask lanes = liveMask(live);
      s = loadSource(in.source + 4 * first, live);
      const Indices<K, kOneWeight> picked(in.indices + K * first, live);
      for (int k = 0; k < kInfluences; ++k) index[k] = picked.pick(k);
      if (kOneWeight) {
        w[0] = L::zero();
        counts[0] = lanes;
        return;
      }
      const Strided<K> weight = loadWeights<K>(in.weights + K * first, live);
      for (int k = 0; k < kInfluences; ++k) {
        w[k] = L::fromBits(weight.pick(k));
        // Strictly above; a NaN weight is not (ordered, quiet compare).
        counts[k] = L::greaterWhere(lanes, w[k], L::set1(kBlendThreshold));
      }
    }
  }

  /// The block in quad order.
  ZE_AVX512_INLINE void quads(const float* source, const float* weights, const unsigned char* indices) {
    const __m512i vertex = _mm512_load_si512(kQuadVertex);
    const Mask lanes = _mm512_cmplt_epi32_mask(vertex, _mm512_set1_epi32(live));
    F v[4];
    loadQuads(source, 4u * unsigned(live), v);
    transposeQuads(v);
    s = {v[0], v[1], v[2]};
    const Indices<4, kOneWeight> picked(indices, live);
    const Indices<4, kOneWeight> inQuads{_mm512_permutexvar_epi32(vertex, picked.word)};
    for (int k = 0; k < kInfluences; ++k) index[k] = inQuads.pick(k);
    if (kOneWeight) {
      w[0] = L::zero();
      counts[0] = lanes;
      return;
    }
    loadQuads(weights, 4u * unsigned(live), v);
    transposeQuads(v);
    for (int k = 0; k < kInfluences; ++k) {
      w[k] = v[k];
      counts[k] = L::greaterWhere(lanes, w[k], L::set1(kBlendThreshold));
    }
  }

  /// Copies into the palette the matrices that counting influences name for
  /// the first time; false when one names a matrix from 64 up, which the
  /// tables cannot hold.
  ZE_AVX512_INLINE bool fillPalette(Palette& palette, const float* matrices) const {
    const __m512i limit = _mm512_set1_epi32(64);
    if (palette.copied == 64) {
      Mask beyond = 0;
      for (int k = 0; k < kInfluences; ++k)
        beyond = Mask(beyond | _mm512_mask_cmpge_epu32_mask(counts[k], index[k], limit));
      return beyond == 0;
    }
    const F present[4] = {L::loadAligned(reinterpret_cast<const float*>(palette.present)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 16)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 32)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 48))};
    for (int k = 0; k < kInfluences; ++k) {
      if (_mm512_mask_cmpge_epu32_mask(counts[k], index[k], limit)) return false;
      const __m512i there = L::bits(lookUp<true>(present, index[k]));
      const Mask missing = _mm512_mask_testn_epi32_mask(counts[k], there, there);
      if (missing == 0) continue;
      alignas(64) int j[kLanes];
      _mm512_store_si512(j, index[k]);
      // `present` was read before this block's first copy: look again.
      for (unsigned m = missing; m != 0; m &= m - 1)
        if (!palette.present[j[__builtin_ctz(m)]]) palette.load(matrices, j[__builtin_ctz(m)]);
    }
    return true;
  }

  /// Skins the block out of the palette. The work goes element by element:
  /// each table is loaded once and serves every influence, and each column
  /// is built row by row in the written order.
  template <bool kWide>
  ZE_AVX512_INLINE void blend(const Palette& palette, unsigned char* out, unsigned int stride) const {
    F sum[3];
#pragma GCC unroll 4
    for (int c = 0; c < 3; ++c) {
      F q[kInfluences];
#pragma GCC unroll 4
      for (int r = 0; r < 4; ++r) {
        const float* e = palette.t[3 * r + c];
        const F table[4] = {L::loadAligned(e), L::loadAligned(e + 16), L::loadAligned(e + 32), L::loadAligned(e + 48)};
#pragma GCC unroll 4
        for (int k = 0; k < kInfluences; ++k) {
          const F m = lookUp<kWide>(table, index[k]);
          if (r == 0) q[k] = L::mul(s.x, m);
          if (r == 1) q[k] = L::add(q[k], L::mul(s.y, m));
          if (r == 2) q[k] = L::add(q[k], L::mul(s.z, m));
          if (r == 3) q[k] = L::add(q[k], m);
        }
      }
      if (kOneWeight) {
        sum[c] = q[0];
        continue;
      }
      // Skipped lanes keep their sums as they were (adding a zero would turn -0 into +0).
      sum[c] = L::zero();
#pragma GCC unroll 4
      for (int k = 0; k < kInfluences; ++k) sum[c] = L::addWhere(counts[k], sum[c], L::mul(q[k], w[k]));
    }
    store<kQuads>(sum[0], sum[1], sum[2], out, stride, live);
  }
};

/// Meshes shorter than this go by rows alone: clearing the palette would
/// cost more than it saves.
constexpr std::size_t kPaletteFrom = 64;

/// K (1 to 4) influences per vertex. Blocks whose counting influences name
/// only matrices below 64 go through the palette; the others by rows.
template <int K, bool kOneWeight>
void blendFixed(const BlendInputs& in, unsigned char* out, unsigned int stride) {
  if (in.count < kPaletteFrom) return blendRange<L, K, kOneWeight>(in, 0, in.count, out, stride);
  Palette palette;
  palette.clear();
  for (std::size_t first = 0; first < in.count; first += kLanes) {
    const std::size_t end = in.count - first < std::size_t(kLanes) ? in.count : first + kLanes;
    prefetch<kOneWeight>(in, first + kPrefetchVertices, kLanes, out, stride);
    const Block<K, kOneWeight> block(first, end, in);
    if (!block.fillPalette(palette, in.matrices))
      blendRange<L, K, kOneWeight>(in, first, end, out, stride);
    else if (palette.wide)
      block.template blend<true>(palette, out + first * stride, stride);
    else
      block.template blend<false>(palette, out + first * stride, stride);
  }
}

/// The skinning kernels: `weightsPerVertex` 1 to 4 with whole loads, any
/// other count by rows; with kOneWeight the first influence alone.
template <bool kOneWeight>
void blend(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
           unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  const BlendInputs in = {source, weights, indices, matrices, weightsPerVertex, count};
  switch (weightsPerVertex) {
    case 1:
      return blendFixed<1, kOneWeight>(in, out, stride);
    case 2:
      return blendFixed<2, kOneWeight>(in, out, stride);
    case 3:
      return blendFixed<3, kOneWeight>(in, out, stride);
    case 4:
      return blendFixed<4, kOneWeight>(in, out, stride);
    default:
      return blendRange<L, 0, kOneWeight>(in, 0, count, out, stride);
  }
}

}  // namespace blendAvx512
}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
