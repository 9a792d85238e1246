#pragma once

// Lets the AVX-512 unit run on a processor without AVX-512, for the tests:
// forced into that unit alone (-include) when ZEMATH_EMULATE_AVX512 is on,
// it maps every AVX-512 intrinsic the unit names to a portable version built
// from AVX2 (SIMDe, and below the few SIMDe lacks), so the path suites hold
// the AVX-512 loops to the scalar loop byte for byte on any machine.
//
// The versions written here follow the instructions' definitions lane by
// lane: a masked load reads only the lanes its mask selects (the
// guarded-page tests rely on it), a masked store writes only those.

#pragma GCC diagnostic ignored "-Wignored-attributes"
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/avx512.h>

#include <cstdint>
#include <cstring>

namespace zeEmulatedAvx512 {

template <class V, class T, int N>
struct Lanes {
  T v[N];
  static Lanes of(V x) {
    Lanes l;
    std::memcpy(l.v, &x, sizeof x);
    return l;
  }
  V get() const {
    V x;
    std::memcpy(&x, v, sizeof x);
    return x;
  }
};

template <class V, class T, int N, class M>
inline V maskzLoad(M k, const void* p) {
  Lanes<V, T, N> r{};
  for (int i = 0; i < N; ++i)
    if ((k >> i) & 1) std::memcpy(&r.v[i], static_cast<const char*>(p) + i * sizeof(T), sizeof(T));
  return r.get();
}

template <class V, class T, int N, class M>
inline void maskStore(void* p, M k, V x) {
  const Lanes<V, T, N> l = Lanes<V, T, N>::of(x);
  for (int i = 0; i < N; ++i)
    if ((k >> i) & 1) std::memcpy(static_cast<char*>(p) + i * sizeof(T), &l.v[i], sizeof(T));
}

template <class To, class ToT, class From, class FromT, int N>
inline To widen(From x) {
  const Lanes<From, FromT, sizeof(From) / sizeof(FromT)> a = Lanes<From, FromT, sizeof(From) / sizeof(FromT)>::of(x);
  Lanes<To, ToT, N> r;
  for (int i = 0; i < N; ++i) r.v[i] = static_cast<ToT>(a.v[i]);
  return r.get();
}

inline __mmask16 cmpltEpi32(__m512i a, __m512i b) {
  const auto x = Lanes<__m512i, std::int32_t, 16>::of(a), y = Lanes<__m512i, std::int32_t, 16>::of(b);
  __mmask16 m = 0;
  for (int i = 0; i < 16; ++i) m = static_cast<__mmask16>(m | ((x.v[i] < y.v[i]) << i));
  return m;
}

inline __mmask16 testnEpi32(__mmask16 k, __m512i a, __m512i b) {
  const auto x = Lanes<__m512i, std::uint32_t, 16>::of(a), y = Lanes<__m512i, std::uint32_t, 16>::of(b);
  __mmask16 m = 0;
  for (int i = 0; i < 16; ++i) m = static_cast<__mmask16>(m | (((x.v[i] & y.v[i]) == 0) << i));
  return static_cast<__mmask16>(m & k);
}

inline __m512d shufflePd(__m512d a, __m512d b, int imm) {
  const auto x = Lanes<__m512d, double, 8>::of(a), y = Lanes<__m512d, double, 8>::of(b);
  Lanes<__m512d, double, 8> r;
  for (int i = 0; i < 8; i += 2) {
    r.v[i] = x.v[i + ((imm >> i) & 1)];
    r.v[i + 1] = y.v[i + ((imm >> (i + 1)) & 1)];
  }
  return r.get();
}

}  // namespace zeEmulatedAvx512

#undef _mm512_mask_cmpge_epu32_mask
#define _mm512_mask_cmpge_epu32_mask(k, a, b) simde_mm512_mask_cmpge_epu32_mask((k), (a), (b))
#define _mm512_shuffle_f32x4(a, b, imm) simde_mm512_shuffle_f32x4((a), (b), (imm))
#define _mm512_mask_cmp_ps_mask(k, a, b, imm) static_cast<__mmask16>((k)&simde_mm512_cmp_ps_mask((a), (b), (imm)))
#define _mm512_cmplt_epi32_mask(a, b) zeEmulatedAvx512::cmpltEpi32((a), (b))
#define _mm512_mask_testn_epi32_mask(k, a, b) zeEmulatedAvx512::testnEpi32((k), (a), (b))
#define _mm512_shuffle_pd(a, b, imm) zeEmulatedAvx512::shufflePd((a), (b), (imm))
#define _mm512_cvtepu8_epi32(x) (zeEmulatedAvx512::widen<__m512i, std::int32_t, __m128i, std::uint8_t, 16>(x))
#define _mm512_cvtepu16_epi32(x) (zeEmulatedAvx512::widen<__m512i, std::int32_t, __m256i, std::uint16_t, 16>(x))
#define _mm512_cvtepu32_epi64(x) (zeEmulatedAvx512::widen<__m512i, std::int64_t, __m256i, std::uint32_t, 8>(x))
#define _mm512_maskz_loadu_ps(k, p) (zeEmulatedAvx512::maskzLoad<__m512, float, 16>((k), (p)))
#define _mm512_maskz_loadu_epi8(k, p) (zeEmulatedAvx512::maskzLoad<__m512i, std::uint8_t, 64>((k), (p)))
#define _mm256_maskz_loadu_epi8(k, p) (zeEmulatedAvx512::maskzLoad<__m256i, std::uint8_t, 32>((k), (p)))
#define _mm_maskz_loadu_epi8(k, p) (zeEmulatedAvx512::maskzLoad<__m128i, std::uint8_t, 16>((k), (p)))
#define _mm512_mask_storeu_ps(p, k, x) (zeEmulatedAvx512::maskStore<__m512, float, 16>((p), (k), (x)))
#define _mm_mask_storeu_ps(p, k, x) (zeEmulatedAvx512::maskStore<__m128, float, 4>((p), (k), (x)))
#define _mm512_stream_ps(p, x) _mm512_storeu_ps((p), (x))
#define _mm512_stream_pd(p, x) _mm512_storeu_pd((p), (x))
