#pragma once

/// \file
/// The skinning loops on AVX-512: sixteen vertices per register, the float
/// work written with the AVX-512 lanes (math/impl/lanes/Avx512Lanes.h).
/// Included only by the unit built for AVX-512 (math/isa/); blend<> has the
/// shape of a raw skinning path (BlendRawPaths.h).
///
/// Everything per lane stays in vectors: the weights and indices of sixteen
/// vertices are picked out of whole-vector loads and a lane mask says which
/// influences count. A matrix element reaches the lanes in one of two ways.
/// Matrices 0 to 63 are copied, each the first time a counting influence
/// names it and never otherwise, into one table per element, and a lane's
/// element is a permute out of its table. A block where a counting influence
/// names a matrix from 64 up instead loads each counting lane's matrix whole
/// and transposes the sixteen matrices into one vector per element. Either
/// way a skipped influence's matrix is never read, and masked adds leave the
/// sums of skipped lanes as they were: each lane computes exactly what the
/// scalar loop computes for its vertex, in the same order.

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "math/impl/lanes/Avx512Lanes.h"

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

/// The strict threshold of the weighted kernel (bits 0x38D1B717).
constexpr float kThreshold = 0.0001f;

/// What a skipped lane loads instead of its matrix.
alignas(64) const float kZeroMatrix[16] = {};

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

/// The twelve elements (rows 0 to 3, columns 0 to 2) of sixteen matrices,
/// element [row][column] holding lane l's matrix in lane l.
struct Matrices {
  F e[4][3];
};

/// Matrix elements by whole loads and a transpose: lane l loads its matrix
/// from matrices + 16 * index[l] where `counts` has bit l and zeros
/// elsewhere (a skipped lane's matrix is never read).
struct Transposed {
  const float* matrices;
  ZE_AVX512_INLINE Matrices operator()(__m512i index, Mask counts) const;
};

ZE_AVX512_INLINE Matrices Transposed::operator()(__m512i index, Mask counts) const {
  alignas(64) const float* at[kLanes];
  const __m512i base = _mm512_set1_epi64(std::int64_t(reinterpret_cast<std::uintptr_t>(matrices)));
  const __m512i zero = _mm512_set1_epi64(std::int64_t(reinterpret_cast<std::uintptr_t>(kZeroMatrix)));
  const __m512i bytes = _mm512_slli_epi32(index, 6);
  const __m512i lo = _mm512_add_epi64(base, _mm512_cvtepu32_epi64(_mm512_castsi512_si256(bytes)));
  const __m512i hi = _mm512_add_epi64(base, _mm512_cvtepu32_epi64(_mm512_extracti64x4_epi64(bytes, 1)));
  _mm512_store_si512(at, _mm512_mask_blend_epi64(__mmask8(counts), zero, lo));
  _mm512_store_si512(at + 8, _mm512_mask_blend_epi64(__mmask8(counts >> 8), zero, hi));

  F t[kLanes];
  for (int l = 0; l < kLanes; l += 2) {
    const F a = L::load(at[l]), b = L::load(at[l + 1]);
    t[l] = L::unpacklo(a, b);      // per row: a0 b0 a1 b1
    t[l + 1] = L::unpackhi(a, b);  // per row: a2 b2 a3 b3
  }
  // Per group of four lanes and per column c < 3: each 128-bit part (one
  // row) holds the four lanes' elements of that row and column.
  F g[4][3];
  for (int q = 0; q < 4; ++q) {
    g[q][0] = L::shuffle<0x44>(t[4 * q], t[4 * q + 2]);
    g[q][1] = L::shuffle<0xEE>(t[4 * q], t[4 * q + 2]);
    g[q][2] = L::shuffle<0x44>(t[4 * q + 1], t[4 * q + 3]);
  }
  Matrices m;
  for (int c = 0; c < 3; ++c) {
    const F a = L::shuffle128<0x44>(g[0][c], g[1][c]), b = L::shuffle128<0xEE>(g[0][c], g[1][c]);
    const F d = L::shuffle128<0x44>(g[2][c], g[3][c]), e = L::shuffle128<0xEE>(g[2][c], g[3][c]);
    m.e[0][c] = L::shuffle128<0x88>(a, d);
    m.e[1][c] = L::shuffle128<0xDD>(a, d);
    m.e[2][c] = L::shuffle128<0x88>(b, e);
    m.e[3][c] = L::shuffle128<0xDD>(b, e);
  }
  return m;
}

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

/// Column c of (x, y, z, 1)·m per lane, summed left to right.
ZE_AVX512_INLINE F transformed(const Source& s, const Matrices& m, int c) {
  return L::add(L::add(L::add(L::mul(s.x, m.e[0][c]), L::mul(s.y, m.e[1][c])), L::mul(s.z, m.e[2][c])), m.e[3][c]);
}

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

/// The running sums of sixteen vertices.
struct Sums {
  F x = L::zero(), y = L::zero(), z = L::zero();

  /// Adds p'·w in the lanes where `counts` has a bit; the others keep their
  /// sums untouched (adding a zero would turn -0 into +0).
  ZE_AVX512_INLINE void add(const Source& s, const Matrices& m, F w, Mask counts) {
    x = L::addWhere(counts, x, L::mul(transformed(s, m, 0), w));
    y = L::addWhere(counts, y, L::mul(transformed(s, m, 1), w));
    z = L::addWhere(counts, z, L::mul(transformed(s, m, 2), w));
  }
};

/// Blocks of sixteen vertices [first, end) with K (1 to 4) influences each,
/// known when compiled: the weights and indices of a block come in whole loads.
template <int K, bool kOneWeight, class Fetch>
void blendBlocks(std::size_t first, std::size_t end, const float* source, const float* weights,
                 const unsigned char* indices, const Fetch& fetch, unsigned char* out, unsigned int stride) {
  const F threshold = L::set1(kThreshold);
  for (; first < end; first += kLanes) {
    const int live = end - first < std::size_t(kLanes) ? int(end - first) : kLanes;
    const Mask lanes = liveMask(live);
    const Source s = loadSource(source + 4 * first, live);
    const Indices<K, kOneWeight> index(indices + K * first, live);
    unsigned char* at = out + first * stride;
    if (kOneWeight) {
      const Matrices m = fetch(index.pick(0), lanes);
      store(transformed(s, m, 0), transformed(s, m, 1), transformed(s, m, 2), at, stride, live);
      continue;
    }
    const Strided<K> weight = loadWeights<K>(weights + K * first, live);
    Sums sum;
    for (int k = 0; k < K; ++k) {
      const F w = L::fromBits(weight.pick(k));
      // Strictly above; a NaN weight is not (ordered, quiet compare).
      const Mask counts = L::greaterWhere(lanes, w, threshold);
      if (counts == 0) continue;
      sum.add(s, fetch(index.pick(k), counts), w, counts);
    }
    store(sum.x, sum.y, sum.z, at, stride, live);
  }
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

/// What a group of kBlocks blocks of sixteen vertices needs before its
/// matrices: sources, and per influence the indices, weights and the lanes
/// where the influence counts.
template <int K, bool kOneWeight, int kBlocks>
struct Group {
  static constexpr int kInfluences = kOneWeight ? 1 : K;
  /// Four influences per vertex: the sources and weights come through
  /// in-lane transposes, so the lanes are in quad order.
  static constexpr bool kQuads = K == 4;
  int live[kBlocks];
  Source s[kBlocks];
  __m512i index[kBlocks][kInfluences];
  F w[kBlocks][kInfluences];
  Mask counts[kBlocks][kInfluences];

  ZE_AVX512_INLINE Group(std::size_t first, std::size_t end, const float* source, const float* weights,
                         const unsigned char* indices) {
    const F threshold = L::set1(kThreshold);
    for (int b = 0; b < kBlocks; ++b) {
      const std::size_t at = first + b * kLanes;
      live[b] = at >= end ? 0 : end - at < std::size_t(kLanes) ? int(end - at) : kLanes;
      if (live[b] == 0) {
        // Past the end: nothing is read and nothing counts.
        s[b] = {L::zero(), L::zero(), L::zero()};
        for (int k = 0; k < kInfluences; ++k) {
          index[b][k] = _mm512_setzero_si512();
          w[b][k] = L::zero();
          counts[b][k] = 0;
        }
        continue;
      }
      if constexpr (kQuads) {
        quads(b, source + 4 * at, weights + 4 * at, indices + 4 * at);
        continue;
      }
      const Mask lanes = liveMask(live[b]);
      s[b] = loadSource(source + 4 * at, live[b]);
      const Indices<K, kOneWeight> picked(indices + K * at, live[b]);
      for (int k = 0; k < kInfluences; ++k) index[b][k] = picked.pick(k);
      if (kOneWeight) {
        w[b][0] = L::zero();
        counts[b][0] = lanes;
        continue;
      }
      const Strided<K> weight = loadWeights<K>(weights + K * at, live[b]);
      for (int k = 0; k < kInfluences; ++k) {
        w[b][k] = L::fromBits(weight.pick(k));
        // Strictly above; a NaN weight is not (ordered, quiet compare).
        counts[b][k] = L::greaterWhere(lanes, w[b][k], threshold);
      }
    }
  }

  /// Block b in quad order.
  ZE_AVX512_INLINE void quads(int b, const float* source, const float* weights, const unsigned char* indices) {
    const __m512i vertex = _mm512_load_si512(kQuadVertex);
    const Mask lanes = _mm512_cmplt_epi32_mask(vertex, _mm512_set1_epi32(live[b]));
    F v[4];
    loadQuads(source, 4u * unsigned(live[b]), v);
    transposeQuads(v);
    s[b] = {v[0], v[1], v[2]};
    const Indices<4, kOneWeight> picked(indices, live[b]);
    const Indices<4, kOneWeight> inQuads{_mm512_permutexvar_epi32(vertex, picked.word)};
    for (int k = 0; k < kInfluences; ++k) index[b][k] = inQuads.pick(k);
    if (kOneWeight) {
      w[b][0] = L::zero();
      counts[b][0] = lanes;
      return;
    }
    loadQuads(weights, 4u * unsigned(live[b]), v);
    transposeQuads(v);
    for (int k = 0; k < kInfluences; ++k) {
      w[b][k] = v[k];
      counts[b][k] = L::greaterWhere(lanes, w[b][k], L::set1(kThreshold));
    }
  }

  /// Copies into the palette the matrices that counting influences name for
  /// the first time; false when one names a matrix from 64 up, which the
  /// tables cannot hold.
  ZE_AVX512_INLINE bool fillPalette(Palette& palette, const float* matrices) const {
    const __m512i limit = _mm512_set1_epi32(64);
    if (palette.copied == 64) {
      Mask beyond = 0;
      for (int b = 0; b < kBlocks; ++b)
        for (int k = 0; k < kInfluences; ++k)
          beyond = Mask(beyond | _mm512_mask_cmpge_epu32_mask(counts[b][k], index[b][k], limit));
      return beyond == 0;
    }
    const F present[4] = {L::loadAligned(reinterpret_cast<const float*>(palette.present)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 16)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 32)),
                          L::loadAligned(reinterpret_cast<const float*>(palette.present + 48))};
    for (int b = 0; b < kBlocks; ++b)
      for (int k = 0; k < kInfluences; ++k) {
        if (_mm512_mask_cmpge_epu32_mask(counts[b][k], index[b][k], limit)) return false;
        const __m512i there = L::bits(lookUp<true>(present, index[b][k]));
        const Mask missing = _mm512_mask_testn_epi32_mask(counts[b][k], there, there);
        if (missing == 0) continue;
        alignas(64) int j[kLanes];
        _mm512_store_si512(j, index[b][k]);
        // `present` was read before this group's first copy: look again.
        for (unsigned m = missing; m != 0; m &= m - 1)
          if (!palette.present[j[__builtin_ctz(m)]]) palette.load(matrices, j[__builtin_ctz(m)]);
      }
    return true;
  }

  /// Skins the group out of the palette. The work goes element by element:
  /// each table is loaded once and serves every influence of every block,
  /// and each column is built row by row in the written order.
  template <bool kWide>
  ZE_AVX512_INLINE void blend(const Palette& palette, unsigned char* out, unsigned int stride) const {
    F sum[kBlocks][3];
#pragma GCC unroll 4
    for (int c = 0; c < 3; ++c) {
      F q[kBlocks][kInfluences];
#pragma GCC unroll 4
      for (int r = 0; r < 4; ++r) {
        const float* e = palette.t[3 * r + c];
        const F table[4] = {L::loadAligned(e), L::loadAligned(e + 16), L::loadAligned(e + 32), L::loadAligned(e + 48)};
#pragma GCC unroll 4
        for (int b = 0; b < kBlocks; ++b)
#pragma GCC unroll 4
          for (int k = 0; k < kInfluences; ++k) {
            const F m = lookUp<kWide>(table, index[b][k]);
            if (r == 0) q[b][k] = L::mul(s[b].x, m);
            if (r == 1) q[b][k] = L::add(q[b][k], L::mul(s[b].y, m));
            if (r == 2) q[b][k] = L::add(q[b][k], L::mul(s[b].z, m));
            if (r == 3) q[b][k] = L::add(q[b][k], m);
          }
      }
#pragma GCC unroll 4
      for (int b = 0; b < kBlocks; ++b) {
        if (kOneWeight) {
          sum[b][c] = q[b][0];
          continue;
        }
        // Skipped lanes keep their sums as they were (adding a zero would turn -0 into +0).
        sum[b][c] = L::zero();
#pragma GCC unroll 4
        for (int k = 0; k < kInfluences; ++k)
          sum[b][c] = L::addWhere(counts[b][k], sum[b][c], L::mul(q[b][k], w[b][k]));
      }
    }
    for (int b = 0; b < kBlocks && live[b] > 0; ++b)
      store<kQuads>(sum[b][0], sum[b][1], sum[b][2], out + b * kLanes * stride, stride, live[b]);
  }
};

/// Meshes shorter than this go by transposes alone: clearing the palette
/// would cost more than it saves.
constexpr unsigned int kPaletteFrom = 64;

/// K (1 to 4) influences per vertex. Groups whose counting influences name
/// only matrices below 64 go through the palette; the others by transposes.
template <int K, bool kOneWeight>
void blendFixed(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                const float* matrices, unsigned char* out, unsigned int stride) {
  const Transposed transposed{matrices};
  if (count < kPaletteFrom) {
    blendBlocks<K, kOneWeight>(0, count, source, weights, indices, transposed, out, stride);
    return;
  }
  // Each table load serves up to four lookups; more would spill registers.
  constexpr int kBlocks = kOneWeight ? 2 : 2;
  constexpr std::size_t kStep = kBlocks * kLanes;
  Palette palette;
  palette.clear();
  for (std::size_t first = 0; first < count; first += kStep) {
    const std::size_t end = count - first < kStep ? count : first + kStep;
    const Group<K, kOneWeight, kBlocks> group(first, end, source, weights, indices);
    unsigned char* at = out + first * stride;
    if (!group.fillPalette(palette, matrices))
      blendBlocks<K, kOneWeight>(first, end, source, weights, indices, transposed, out, stride);
    else if (palette.wide)
      group.template blend<true>(palette, at, stride);
    else
      group.template blend<false>(palette, at, stride);
  }
}

/// Any number of influences per vertex: each lane's weight and index are
/// gathered one by one, and the matrices come by transposes.
template <bool kOneWeight>
void blendAny(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
              std::size_t perVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  const Transposed fetch{matrices};
  const F threshold = L::set1(kThreshold);
  const std::size_t influences = kOneWeight ? 1 : perVertex;
  for (std::size_t first = 0; first < count; first += kLanes) {
    const int live = count - first < std::size_t(kLanes) ? int(count - first) : kLanes;
    const Mask lanes = liveMask(live);
    const Source s = loadSource(source + 4 * first, live);
    Sums sum;
    for (std::size_t k = 0; k < influences; ++k) {
      alignas(64) float w[kLanes] = {};
      alignas(64) int index[kLanes] = {};
      for (int l = 0; l < live; ++l) {
        const std::size_t at = (first + l) * perVertex + k;
        if (!kOneWeight) w[l] = weights[at];
        index[l] = indices[at];
      }
      const F wv = L::loadAligned(w);
      const Mask counts = kOneWeight ? lanes : L::greaterWhere(lanes, wv, threshold);
      if (counts == 0) continue;
      const Matrices m = fetch(_mm512_load_si512(index), counts);
      if (kOneWeight) {
        sum.x = transformed(s, m, 0);
        sum.y = transformed(s, m, 1);
        sum.z = transformed(s, m, 2);
      } else {
        sum.add(s, m, wv, counts);
      }
    }
    store(sum.x, sum.y, sum.z, out + first * stride, stride, live);
  }
}

/// The skinning kernels: `weightsPerVertex` 1 to 4 with whole loads, any
/// other count lane by lane; with kOneWeight the first influence alone.
template <bool kOneWeight>
void blend(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
           unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  switch (weightsPerVertex) {
    case 1:
      return blendFixed<1, kOneWeight>(source, count, weights, indices, matrices, out, stride);
    case 2:
      return blendFixed<2, kOneWeight>(source, count, weights, indices, matrices, out, stride);
    case 3:
      return blendFixed<3, kOneWeight>(source, count, weights, indices, matrices, out, stride);
    case 4:
      return blendFixed<4, kOneWeight>(source, count, weights, indices, matrices, out, stride);
    default:
      return blendAny<kOneWeight>(source, count, weights, indices, weightsPerVertex, matrices, out, stride);
  }
}

}  // namespace blendAvx512
}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
