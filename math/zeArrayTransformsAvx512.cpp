// The AVX-512 array transforms: sixteen floats or eight doubles per vector.
// This file alone is built for AVX-512 (F, VL, DQ, BW) and includes nothing
// of the library but the raw loops, so no shared inline function is ever
// emitted with AVX-512 instructions.

// GCC 12's AVX-512 intrinsics seed their vectors from themselves, which
// trips its own uninitialised-use warning inside the system header.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <immintrin.h>

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/ArrayTransformRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// A block of N elements of c components is c whole registers in memory.
// Splitting gives register k component k of every element, in element order;
// joining puts them back. Each output lane names a lane of the c inputs taken
// as one array; two two-source permutes and a blend reach any lane of up to
// four inputs. The tables are worked out at compile time.
template <class I, int kLanes, int kComponents>
struct Split {
  // Lane i of component register k is scalar c * i + k of the block.
  static constexpr int fromBlock(int k, int i) { return kComponents * i + k; }
  // Scalar f of the block (lane p of register r) is component f % c of element f / c.
  static constexpr int toBlock(int r, int p) {
    const int f = kLanes * r + p;
    return kLanes * (f % kComponents) + f / kComponents;
  }
  // Per output register: the lane of the inputs for each of its lanes, and
  // the mask of lanes that come from inputs 2 and 3.
  struct Table {
    alignas(64) I lanes[4][kLanes];
    unsigned int upper[4];
  };
  static constexpr Table make(bool split) {
    Table t{};
    for (int r = 0; r < kComponents; ++r)
      for (int i = 0; i < kLanes; ++i) {
        const int from = split ? fromBlock(r, i) : toBlock(r, i);
        t.lanes[r][i] = I(from);
        if (from >= 2 * kLanes) t.upper[r] |= 1u << i;
      }
    return t;
  }
  static constexpr Table kSplit = make(true);
  static constexpr Table kJoin = make(false);
};

struct Avx512f {
  typedef float T;
  typedef __m512 F;
  typedef __mmask16 Mask;
  static constexpr int N = 16;
  static constexpr int kChunk = 4;
  static constexpr bool kPermutesAcross = true;
  static F load(const T* p) { return _mm512_loadu_ps(p); }
  static void store(T* p, F v) { _mm512_storeu_ps(p, v); }
  static F set1(T v) { return _mm512_set1_ps(v); }
  static F add(F a, F b) { return _mm512_add_ps(a, b); }
  static F mul(F a, F b) { return _mm512_mul_ps(a, b); }
  static F div(F a, F b) { return _mm512_div_ps(a, b); }
  static F abs(F a) { return _mm512_andnot_ps(_mm512_set1_ps(-0.0f), a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ); }
  static Mask equal(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_EQ_OQ); }
  static F select(Mask m, F a, F b) { return _mm512_mask_blend_ps(m, b, a); }
  static F unpacklo(F a, F b) { return _mm512_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm512_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm512_shuffle_ps(a, b, kImm);
  }
  // One output register: lanes from inputs 0 and 1, or where `upper` says so
  // from inputs 2 and 3 (for 3-vectors input 3 repeats input 2).
  static F permute(const __m512i lanes, unsigned int upper, const F in[4]) {
    const F lo = _mm512_permutex2var_ps(in[0], lanes, in[1]), hi = _mm512_permutex2var_ps(in[2], lanes, in[3]);
    return _mm512_mask_blend_ps(__mmask16(upper), lo, hi);
  }
  template <int C>
  static void split(const T* p, F* v) {
    typedef Split<int, N, C> S;
    const F in[4] = {load(p), load(p + N), load(p + 2 * N), load(p + (C - 1) * N)};
    for (int k = 0; k < C; ++k) v[k] = permute(_mm512_load_si512(S::kSplit.lanes[k]), S::kSplit.upper[k], in);
  }
  template <int C>
  static void join(T* p, const F* v) {
    typedef Split<int, N, C> S;
    const F in[4] = {v[0], v[1], v[2], v[C - 1]};
    for (int r = 0; r < C; ++r) store(p + r * N, permute(_mm512_load_si512(S::kJoin.lanes[r]), S::kJoin.upper[r], in));
  }
};

struct Avx512d {
  typedef double T;
  typedef __m512d F;
  typedef __mmask8 Mask;
  static constexpr int N = 8;
  static constexpr int kChunk = 2;
  static constexpr bool kPermutesAcross = true;
  static F load(const T* p) { return _mm512_loadu_pd(p); }
  static void store(T* p, F v) { _mm512_storeu_pd(p, v); }
  static F set1(T v) { return _mm512_set1_pd(v); }
  static F add(F a, F b) { return _mm512_add_pd(a, b); }
  static F mul(F a, F b) { return _mm512_mul_pd(a, b); }
  static F div(F a, F b) { return _mm512_div_pd(a, b); }
  static F abs(F a) { return _mm512_andnot_pd(_mm512_set1_pd(-0.0), a); }
  static Mask less(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ); }
  static Mask equal(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
  static F select(Mask m, F a, F b) { return _mm512_mask_blend_pd(m, b, a); }
  static F unpacklo(F a, F b) { return _mm512_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm512_unpackhi_pd(a, b); }
  // The two-bit pattern of one 128-bit quarter, repeated for the others.
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm512_shuffle_pd(a, b, kImm | kImm << 2 | kImm << 4 | kImm << 6);
  }
  static F permute(const __m512i lanes, unsigned int upper, const F in[4]) {
    const F lo = _mm512_permutex2var_pd(in[0], lanes, in[1]), hi = _mm512_permutex2var_pd(in[2], lanes, in[3]);
    return _mm512_mask_blend_pd(__mmask8(upper), lo, hi);
  }
  template <int C>
  static void split(const T* p, F* v) {
    typedef Split<long long, N, C> S;
    const F in[4] = {load(p), load(p + N), load(p + 2 * N), load(p + (C - 1) * N)};
    for (int k = 0; k < C; ++k) v[k] = permute(_mm512_load_si512(S::kSplit.lanes[k]), S::kSplit.upper[k], in);
  }
  template <int C>
  static void join(T* p, const F* v) {
    typedef Split<long long, N, C> S;
    const F in[4] = {v[0], v[1], v[2], v[C - 1]};
    for (int r = 0; r < C; ++r) store(p + r * N, permute(_mm512_load_si512(S::kJoin.lanes[r]), S::kJoin.upper[r], in));
  }
};

}  // namespace

unsigned int transformVectors3fAvx512(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors3Loop<Avx512f>(m, src, dst, count);
}
unsigned int transformPoints3fAvx512(const float* m, const float* src, float* dst, unsigned int count) {
  return points3Loop<Avx512f>(m, src, dst, count);
}
unsigned int transformVectors4fAvx512(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors4Loop<Avx512f>(m, src, dst, count);
}
unsigned int transformPoints4fAvx512(const float* m, const float* src, float* dst, unsigned int count) {
  return points4Loop<Avx512f>(m, src, dst, count);
}
unsigned int transformVectors3dAvx512(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors3Loop<Avx512d>(m, src, dst, count);
}
unsigned int transformPoints3dAvx512(const double* m, const double* src, double* dst, unsigned int count) {
  return points3Loop<Avx512d>(m, src, dst, count);
}
unsigned int transformVectors4dAvx512(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors4Loop<Avx512d>(m, src, dst, count);
}
unsigned int transformPoints4dAvx512(const double* m, const double* src, double* dst, unsigned int count) {
  return points4Loop<Avx512d>(m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
