#pragma once

/// \file
/// SSE2 lanes: four floats or two doubles per register, behind the names the
/// vector loops are written with. Included only by the instruction-set units
/// (math/isa/). Everything here lives in an anonymous namespace so that each
/// unit keeps its own copy: an inline function shared across units could be
/// emitted with wider instructions and picked by the linker for a caller
/// that runs without them.

#include <emmintrin.h>

#include <cstring>

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// Four floats per register.
struct Sse2Float {
  typedef float T;
  typedef __m128 F;
  typedef __m128 Mask;
  static constexpr int N = 4;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 4;
  /// Permutes stay within each 128 bits.
  static constexpr bool kPermutesAcross = false;
  static F zero() { return _mm_setzero_ps(); }
  static F set1(T v) { return _mm_set1_ps(v); }
  static F load(const T* p) { return _mm_loadu_ps(p); }
  static void store(T* p, F v) { _mm_storeu_ps(p, v); }
  /// Lanes 0 to 2 to p, which need not be aligned; nothing after them is
  /// written.
  static void store3(T* p, F v) {
    _mm_storel_pi(reinterpret_cast<__m64*>(p), v);
    const T z = _mm_cvtss_f32(_mm_movehl_ps(v, v));
    std::memcpy(p + 2, &z, sizeof z);
  }
  /// Non-temporal store to 16-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm_add_ps(a, b); }
  static F sub(F a, F b) { return _mm_sub_ps(a, b); }
  static F mul(F a, F b) { return _mm_mul_ps(a, b); }
  static F div(F a, F b) { return _mm_div_ps(a, b); }
  static F abs(F a) { return _mm_andnot_ps(_mm_set1_ps(-0.0f), a); }
  /// The sign bit flipped, as a scalar negation does.
  static F neg(F a) { return _mm_xor_ps(_mm_set1_ps(-0.0f), a); }
  // Ordered: false when either side is NaN.
  static Mask less(F a, F b) { return _mm_cmplt_ps(a, b); }
  static Mask lessEqual(F a, F b) { return _mm_cmple_ps(a, b); }
  static Mask greater(F a, F b) { return _mm_cmpgt_ps(a, b); }
  static Mask equal(F a, F b) { return _mm_cmpeq_ps(a, b); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm_or_ps(_mm_and_ps(m, a), _mm_andnot_ps(m, b)); }
  /// Bit i set where lane i of the mask is.
  static unsigned int maskBits(Mask m) { return unsigned(_mm_movemask_ps(m)); }
  static F unpacklo(F a, F b) { return _mm_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm_shuffle_ps(a, b, kImm);
  }
};

/// Two doubles per register.
struct Sse2Double {
  typedef double T;
  typedef __m128d F;
  typedef __m128d Mask;
  static constexpr int N = 2;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 2;
  /// Permutes stay within each 128 bits.
  static constexpr bool kPermutesAcross = false;
  static F zero() { return _mm_setzero_pd(); }
  static F set1(T v) { return _mm_set1_pd(v); }
  static F load(const T* p) { return _mm_loadu_pd(p); }
  static void store(T* p, F v) { _mm_storeu_pd(p, v); }
  /// Non-temporal store to 16-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm_stream_pd(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm_add_pd(a, b); }
  static F mul(F a, F b) { return _mm_mul_pd(a, b); }
  static F div(F a, F b) { return _mm_div_pd(a, b); }
  static F abs(F a) { return _mm_andnot_pd(_mm_set1_pd(-0.0), a); }
  // Ordered: false when either side is NaN.
  static Mask less(F a, F b) { return _mm_cmplt_pd(a, b); }
  static Mask greater(F a, F b) { return _mm_cmpgt_pd(a, b); }
  static Mask equal(F a, F b) { return _mm_cmpeq_pd(a, b); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm_or_pd(_mm_and_pd(m, a), _mm_andnot_pd(m, b)); }
  static F unpacklo(F a, F b) { return _mm_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm_unpackhi_pd(a, b); }
  /// kImm is the two-bit pattern of _mm_shuffle_pd.
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm_shuffle_pd(a, b, kImm);
  }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
