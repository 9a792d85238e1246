#pragma once

/// \file
/// The matrix array transforms written once over a vector of lanes (one
/// array element per lane). Each lane computes exactly what the scalar
/// single-vector transform computes for its element, in the same order, with
/// separate multiplies and adds. Included only by the files that instantiate
/// one instruction set each; it works on raw scalars so that those files, some
/// built for wider instructions, share no inline function with the rest of
/// the library.
///
/// A lane-traits struct L supplies: the scalar T, the register F, the compare
/// result Mask, the lane count N, kChunk (scalars per 128 bits), load and store
/// of a whole register, set1, add, mul, div, abs, less, equal,
/// select(mask, ifTrue, ifFalse), unpacklo, unpackhi, shuffle<imm> (within
/// each 128 bits; for doubles imm is the two-bit pattern of one 128-bit half)
/// and kPermutesAcross. Traits whose permutes reach across the whole register
/// set it and split<c>/join<c> the c component registers of a block of N
/// c-vectors themselves (3-vectors, and 4-vectors of doubles). The others
/// provide loadGroups3/storeGroups3 (c = 3) and, for doubles,
/// loadGroups4/storeGroups4 (c = 4): the c registers of a block of N elements
/// at p, where 128-bit part j of register k is the 128 bits at
/// p + (j * c + k) * kChunk, which the shuffles here split.

#include <cstddef>

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The helpers below work on whole registers: they must melt into the loop.
#define ZE_XFORM_INLINE inline __attribute__((always_inline))

/// The library's small threshold (zeSmallThreshold<float>, bits 0x350637BD),
/// repeated here because these files include nothing of the library.
constexpr float kSmallThreshold = 5e-7f;

/// The immediate that picks elements a, b (first source) and c, d (second).
constexpr int pick(int a, int b, int c, int d) { return a | (b << 2) | (c << 4) | (d << 6); }

/// Splits the next N 3-vectors at p into one register per component.
template <class L>
ZE_XFORM_INLINE void load3(const typename L::T* p, typename L::F v[3]) {
  using F = typename L::F;
  if constexpr (L::kPermutesAcross) {
    L::template split<3>(p, v);
  } else if constexpr (L::kChunk == 4) {
    // a = x0 y0 z0 x1, b = y1 z1 x2 y2, c = z2 x3 y3 z3
    F a, b, c;
    L::loadGroups3(p, a, b, c);
    v[0] = L::template shuffle<pick(0, 3, 0, 2)>(a, L::template shuffle<pick(2, 3, 1, 2)>(b, c));
    v[1] = L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(1, 1, 0, 0)>(a, b),
                                                 L::template shuffle<pick(3, 3, 2, 2)>(b, c));
    v[2] = L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(2, 2, 1, 1)>(a, b),
                                                 L::template shuffle<pick(0, 0, 3, 3)>(c, c));
  } else {
    // a = x0 y0, b = z0 x1, c = y1 z1
    F a, b, c;
    L::loadGroups3(p, a, b, c);
    v[0] = L::template shuffle<2>(a, b);
    v[1] = L::template shuffle<1>(a, c);
    v[2] = L::template shuffle<2>(b, c);
  }
}

/// Writes one register per component back as N 3-vectors at p.
template <class L>
ZE_XFORM_INLINE void store3(typename L::T* p, const typename L::F v[3]) {
  using F = typename L::F;
  if constexpr (L::kPermutesAcross) {
    L::template join<3>(p, v);
  } else if constexpr (L::kChunk == 4) {
    const F x = v[0], y = v[1], z = v[2];
    L::storeGroups3(p,
                    L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(0, 1, 0, 1)>(x, y),
                                                          L::template shuffle<pick(0, 0, 1, 1)>(z, x)),
                    L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(1, 1, 1, 1)>(y, z),
                                                          L::template shuffle<pick(2, 2, 2, 2)>(x, y)),
                    L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(2, 2, 3, 3)>(z, x),
                                                          L::template shuffle<pick(3, 3, 3, 3)>(y, z)));
  } else {
    L::storeGroups3(p, L::template shuffle<0>(v[0], v[1]), L::template shuffle<2>(v[2], v[0]),
                    L::template shuffle<3>(v[1], v[2]));
  }
}

/// Splits the next N 4-vectors at p into one register per component.
template <class L>
ZE_XFORM_INLINE void load4(const typename L::T* p, typename L::F v[4]) {
  using F = typename L::F;
  if constexpr (L::kChunk == 4) {
    // Whole registers: 128-bit part q of register k holds element k + 4q of
    // its part's group, so the lanes come out in a fixed shuffled order that
    // store4 undoes.
    const F a = L::load(p), b = L::load(p + L::N), c = L::load(p + 2 * L::N), d = L::load(p + 3 * L::N);
    const F t0 = L::unpacklo(a, b), t1 = L::unpackhi(a, b), t2 = L::unpacklo(c, d), t3 = L::unpackhi(c, d);
    v[0] = L::template shuffle<pick(0, 1, 0, 1)>(t0, t2);
    v[1] = L::template shuffle<pick(2, 3, 2, 3)>(t0, t2);
    v[2] = L::template shuffle<pick(0, 1, 0, 1)>(t1, t3);
    v[3] = L::template shuffle<pick(2, 3, 2, 3)>(t1, t3);
  } else if constexpr (L::kPermutesAcross) {
    L::template split<4>(p, v);
  } else {
    // a = x0 y0, b = z0 w0, c = x1 y1, d = z1 w1
    F a, b, c, d;
    L::loadGroups4(p, a, b, c, d);
    v[0] = L::unpacklo(a, c);
    v[1] = L::unpackhi(a, c);
    v[2] = L::unpacklo(b, d);
    v[3] = L::unpackhi(b, d);
  }
}

/// Writes one register per component back as N 4-vectors at p.
template <class L>
ZE_XFORM_INLINE void store4(typename L::T* p, const typename L::F v[4]) {
  using F = typename L::F;
  F r[4];
  if constexpr (L::kChunk == 4) {
    const F t0 = L::unpacklo(v[0], v[1]), t1 = L::unpackhi(v[0], v[1]), t2 = L::unpacklo(v[2], v[3]),
            t3 = L::unpackhi(v[2], v[3]);
    r[0] = L::template shuffle<pick(0, 1, 0, 1)>(t0, t2);
    r[1] = L::template shuffle<pick(2, 3, 2, 3)>(t0, t2);
    r[2] = L::template shuffle<pick(0, 1, 0, 1)>(t1, t3);
    r[3] = L::template shuffle<pick(2, 3, 2, 3)>(t1, t3);
    for (int k = 0; k < 4; ++k) L::store(p + k * L::N, r[k]);
  } else if constexpr (L::kPermutesAcross) {
    L::template join<4>(p, v);
  } else {
    r[0] = L::unpacklo(v[0], v[1]);
    r[1] = L::unpacklo(v[2], v[3]);
    r[2] = L::unpackhi(v[0], v[1]);
    r[3] = L::unpackhi(v[2], v[3]);
    L::storeGroups4(p, r[0], r[1], r[2], r[3]);
  }
}

/// The sixteen matrix elements, each broadcast to every lane.
template <class L>
struct Broadcast {
  typename L::F e[16];
  explicit Broadcast(const typename L::T* m) {
    for (int i = 0; i < 16; ++i) e[i] = L::set1(m[i]);
  }
};

/// x m(j) + y m(4+j) + z m(8+j) of v = (x, y, z, ...), summed left to right.
template <class L>
ZE_XFORM_INLINE typename L::F column3(const Broadcast<L>& m, int j, const typename L::F v[]) {
  return L::add(L::add(L::mul(v[0], m.e[j]), L::mul(v[1], m.e[4 + j])), L::mul(v[2], m.e[8 + j]));
}

/// The number of whole blocks of N elements in count, as elements.
template <class L>
constexpr unsigned int wholeBlocks(unsigned int count) {
  return count - count % static_cast<unsigned int>(L::N);
}

/// Direction transform of 3-vectors by the 3x3 block.
template <class L>
unsigned int vectors3Loop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  const unsigned int n = wholeBlocks<L>(count);
  for (std::size_t i = 0; i < n; i += L::N) {
    F v[3];
    load3<L>(src + 3 * i, v);
    const F r[3] = {column3(k, 0, v), column3(k, 1, v), column3(k, 2, v)};
    store3<L>(dst + 3 * i, r);
  }
  return n;
}

/// Projective point transform of 3-vectors: (x, y, z, 1) times m, then unless
/// w is exactly 1, times the reciprocal of w (or of the threshold when |w| is
/// below it).
template <class L>
unsigned int points3Loop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  // The double form widens the single-precision threshold too.
  const F small = L::set1(static_cast<typename L::T>(kSmallThreshold)), one = L::set1(1);
  const unsigned int n = wholeBlocks<L>(count);
  for (std::size_t i = 0; i < n; i += L::N) {
    F v[3];
    load3<L>(src + 3 * i, v);
    const F px = L::add(column3(k, 0, v), k.e[12]);
    const F py = L::add(column3(k, 1, v), k.e[13]);
    const F pz = L::add(column3(k, 2, v), k.e[14]);
    const F w = L::add(column3(k, 3, v), k.e[15]);
    // Ordered compares: a NaN w is no tiny w and no 1, so it divides.
    const F divisor = L::select(L::less(L::abs(w), small), small, w);
    const F inverse = L::div(one, divisor);
    const auto affine = L::equal(w, one);
    const F r[3] = {L::select(affine, px, L::mul(px, inverse)), L::select(affine, py, L::mul(py, inverse)),
                    L::select(affine, pz, L::mul(pz, inverse))};
    store3<L>(dst + 3 * i, r);
  }
  return n;
}

/// Direction transform of x, y, z of 4-vectors; w is carried over bit for bit.
template <class L>
unsigned int vectors4Loop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  const unsigned int n = wholeBlocks<L>(count);
  for (std::size_t i = 0; i < n; i += L::N) {
    F v[4];
    load4<L>(src + 4 * i, v);
    const F r[4] = {column3(k, 0, v), column3(k, 1, v), column3(k, 2, v), v[3]};
    store4<L>(dst + 4 * i, r);
  }
  return n;
}

/// Full product of 4-vectors with m, no divide.
template <class L>
unsigned int points4Loop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  const unsigned int n = wholeBlocks<L>(count);
  for (std::size_t i = 0; i < n; i += L::N) {
    F v[4];
    load4<L>(src + 4 * i, v);
    F r[4];
    for (int j = 0; j < 4; ++j) r[j] = L::add(column3(k, j, v), L::mul(v[3], k.e[12 + j]));
    store4<L>(dst + 4 * i, r);
  }
  return n;
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
