#pragma once

/// \file
/// AVX-512 lanes: sixteen floats or eight doubles per register, behind the
/// names the vector loops are written with. Only AVX-512F instructions.
/// Included only by the unit built for AVX-512 (math/isa/). Everything here
/// lives in an anonymous namespace so that each unit keeps its own copy: an
/// inline function shared across units could be emitted with AVX-512
/// instructions and picked by the linker for a caller that runs without them.

#include <immintrin.h>

// The lanes, like the intrinsics they name, melt into the loops that use
// them before those loops are optimised, so that a loop written with them
// is the loop written with the intrinsics.
#define ZE_AVX512_INLINE inline __attribute__((always_inline))

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// Sixteen floats per register.
struct Avx512Float {
  typedef float T;
  typedef __m512 F;
  typedef __mmask16 Mask;
  /// A lane number, as the cross-lane permutes read it.
  typedef int Index;
  static constexpr int N = 16;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 4;
  ZE_AVX512_INLINE static F zero() { return _mm512_setzero_ps(); }
  ZE_AVX512_INLINE static F set1(T v) { return _mm512_set1_ps(v); }
  ZE_AVX512_INLINE static F load(const T* p) { return _mm512_loadu_ps(p); }
  ZE_AVX512_INLINE static void store(T* p, F v) { _mm512_storeu_ps(p, v); }
  /// Non-temporal store to 64-byte aligned p; fence() orders it.
  ZE_AVX512_INLINE static void stream(T* p, F v) { _mm512_stream_ps(p, v); }
  ZE_AVX512_INLINE static void fence() { _mm_sfence(); }
  ZE_AVX512_INLINE static F add(F a, F b) { return _mm512_add_ps(a, b); }
  ZE_AVX512_INLINE static F sub(F a, F b) { return _mm512_sub_ps(a, b); }
  ZE_AVX512_INLINE static F mul(F a, F b) { return _mm512_mul_ps(a, b); }
  ZE_AVX512_INLINE static F div(F a, F b) { return _mm512_div_ps(a, b); }
  // Clears the sign bit, like and-not with -0.
  ZE_AVX512_INLINE static F abs(F a) { return _mm512_abs_ps(a); }
  /// The sign bit flipped, as a scalar negation does.
  ZE_AVX512_INLINE static F neg(F a) { return _mm512_xor_ps(_mm512_set1_ps(-0.0f), a); }
  // Ordered and quiet: false when either side is NaN.
  ZE_AVX512_INLINE static Mask less(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ); }
  ZE_AVX512_INLINE static Mask lessEqual(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_LE_OQ); }
  ZE_AVX512_INLINE static Mask greater(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_GT_OQ); }
  ZE_AVX512_INLINE static Mask equal(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  ZE_AVX512_INLINE static F select(Mask m, F a, F b) { return _mm512_mask_blend_ps(m, b, a); }
  // Within each 128-bit quarter.
  ZE_AVX512_INLINE static F unpacklo(F a, F b) { return _mm512_unpacklo_ps(a, b); }
  ZE_AVX512_INLINE static F unpackhi(F a, F b) { return _mm512_unpackhi_ps(a, b); }
  template <int kImm>
  ZE_AVX512_INLINE static F shuffle(F a, F b) {
    return _mm512_shuffle_ps(a, b, kImm);
  }
  /// Lane i is lane lanes[i] of a and b taken as one array of 2N.
  ZE_AVX512_INLINE static F permute2(F a, __m512i lanes, F b) { return _mm512_permutex2var_ps(a, lanes, b); }

  // What the skinning loop adds: masked lanes, whole 128-bit parts, bits.
  /// The lanes of m from p, zeros elsewhere; nothing is read for the others.
  ZE_AVX512_INLINE static F loadMasked(Mask m, const T* p) { return _mm512_maskz_loadu_ps(m, p); }
  /// From 64-byte aligned p.
  ZE_AVX512_INLINE static F loadAligned(const T* p) { return _mm512_load_ps(p); }
  /// Writes the lanes of m; nothing is written for the others.
  ZE_AVX512_INLINE static void storeMasked(T* p, Mask m, F v) { _mm512_mask_storeu_ps(p, m, v); }
  /// 128-bit part kPart of v to 16-byte aligned p.
  template <int kPart>
  ZE_AVX512_INLINE static void storePart(T* p, F v) {
    if constexpr (kPart == 0)
      _mm_store_ps(p, _mm512_castps512_ps128(v));
    else
      _mm_store_ps(p, _mm512_extractf32x4_ps(v, kPart));
  }
  /// Bit i set where lane i of the mask is.
  ZE_AVX512_INLINE static unsigned int maskBits(Mask m) { return m; }
  /// The 128 bits at a, b, c and d in parts 0 to 3.
  ZE_AVX512_INLINE static F loadQuarters(const T* a, const T* b, const T* c, const T* d) {
    const F low = _mm512_insertf32x4(_mm512_castps128_ps512(_mm_loadu_ps(a)), _mm_loadu_ps(b), 1);
    return _mm512_insertf32x4(_mm512_insertf32x4(low, _mm_loadu_ps(c), 2), _mm_loadu_ps(d), 3);
  }
  /// Parts 0 to 3 to a, b, c and d, in that order.
  ZE_AVX512_INLINE static void storeQuarters(T* a, T* b, T* c, T* d, F v) {
    _mm_storeu_ps(a, _mm512_castps512_ps128(v));
    _mm_storeu_ps(b, _mm512_extractf32x4_ps(v, 1));
    _mm_storeu_ps(c, _mm512_extractf32x4_ps(v, 2));
    _mm_storeu_ps(d, _mm512_extractf32x4_ps(v, 3));
  }
  /// Lanes 0 to 2 of parts 0 to 3 to a, b, c and d; nothing after them is written.
  ZE_AVX512_INLINE static void store3Quarters(T* a, T* b, T* c, T* d, F v) {
    _mm_mask_storeu_ps(a, 0x7, _mm512_castps512_ps128(v));
    _mm_mask_storeu_ps(b, 0x7, _mm512_extractf32x4_ps(v, 1));
    _mm_mask_storeu_ps(c, 0x7, _mm512_extractf32x4_ps(v, 2));
    _mm_mask_storeu_ps(d, 0x7, _mm512_extractf32x4_ps(v, 3));
  }
  /// a + b in the lanes of m, a in the others (untouched, so -0 stays -0).
  ZE_AVX512_INLINE static F addWhere(Mask m, F a, F b) { return _mm512_mask_add_ps(a, m, a, b); }
  /// greater(a, b) within the lanes of m.
  ZE_AVX512_INLINE static Mask greaterWhere(Mask m, F a, F b) { return _mm512_mask_cmp_ps_mask(m, a, b, _CMP_GT_OQ); }
  /// 128-bit parts: two of a (the low two bit pairs of kImm), then two of b.
  template <int kImm>
  ZE_AVX512_INLINE static F shuffle128(F a, F b) {
    return _mm512_shuffle_f32x4(a, b, kImm);
  }
  /// Lane i is lane lanes[i] of a in the lanes of m, and src's lane elsewhere.
  ZE_AVX512_INLINE static F permuteWhere(F src, Mask m, __m512i lanes, F a) {
    return _mm512_mask_permutexvar_ps(src, m, lanes, a);
  }
  /// The same bits as floats, and back.
  ZE_AVX512_INLINE static F fromBits(__m512i v) { return _mm512_castsi512_ps(v); }
  ZE_AVX512_INLINE static __m512i bits(F v) { return _mm512_castps_si512(v); }
};

/// Eight doubles per register.
struct Avx512Double {
  typedef double T;
  typedef __m512d F;
  typedef __mmask8 Mask;
  /// A lane number, as the cross-lane permutes read it.
  typedef long long Index;
  static constexpr int N = 8;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 2;
  ZE_AVX512_INLINE static F zero() { return _mm512_setzero_pd(); }
  ZE_AVX512_INLINE static F set1(T v) { return _mm512_set1_pd(v); }
  ZE_AVX512_INLINE static F load(const T* p) { return _mm512_loadu_pd(p); }
  ZE_AVX512_INLINE static void store(T* p, F v) { _mm512_storeu_pd(p, v); }
  /// Non-temporal store to 64-byte aligned p; fence() orders it.
  ZE_AVX512_INLINE static void stream(T* p, F v) { _mm512_stream_pd(p, v); }
  ZE_AVX512_INLINE static void fence() { _mm_sfence(); }
  ZE_AVX512_INLINE static F add(F a, F b) { return _mm512_add_pd(a, b); }
  ZE_AVX512_INLINE static F mul(F a, F b) { return _mm512_mul_pd(a, b); }
  ZE_AVX512_INLINE static F div(F a, F b) { return _mm512_div_pd(a, b); }
  // Clears the sign bit, like and-not with -0.
  ZE_AVX512_INLINE static F abs(F a) { return _mm512_abs_pd(a); }
  // Ordered and quiet: false when either side is NaN.
  ZE_AVX512_INLINE static Mask less(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ); }
  ZE_AVX512_INLINE static Mask greater(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_GT_OQ); }
  ZE_AVX512_INLINE static Mask equal(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  ZE_AVX512_INLINE static F select(Mask m, F a, F b) { return _mm512_mask_blend_pd(m, b, a); }
  // Within each 128-bit quarter.
  ZE_AVX512_INLINE static F unpacklo(F a, F b) { return _mm512_unpacklo_pd(a, b); }
  ZE_AVX512_INLINE static F unpackhi(F a, F b) { return _mm512_unpackhi_pd(a, b); }
  /// kImm is the two-bit pattern of one 128-bit quarter, repeated for the others.
  template <int kImm>
  ZE_AVX512_INLINE static F shuffle(F a, F b) {
    return _mm512_shuffle_pd(a, b, kImm | kImm << 2 | kImm << 4 | kImm << 6);
  }
  /// Lane i is lane lanes[i] of a and b taken as one array of 2N.
  ZE_AVX512_INLINE static F permute2(F a, __m512i lanes, F b) { return _mm512_permutex2var_pd(a, lanes, b); }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
