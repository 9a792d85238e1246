#pragma once

/// \file
/// The matrix array transforms written once over a vector of lanes (one
/// array element per lane). Each lane computes exactly what the scalar
/// single-vector transform computes for its element, in the same order, with
/// separate multiplies and adds. Included only by the instruction-set units
/// (math/isa/); it works on raw scalars so that those units, some built for
/// wider instructions, share no inline function with the rest of
/// the library.
///
/// A lane-traits struct L (one of math/impl/lanes) supplies the scalar T, the
/// register F, the compare result Mask, the lane count N, kChunk (scalars per
/// 128 bits), load and store of a whole register, set1, add, mul, div, abs,
/// less, equal, select(mask, ifTrue, ifFalse), unpacklo, unpackhi and
/// shuffle<imm> (within each 128 bits; for doubles imm is the two-bit pattern
/// of one 128-bit half); registers of two 128-bit halves also loadHalves and
/// storeHalves, and kPermutesAcross false. Traits whose permutes reach across
/// the whole register (ArrayTransformAvx512Loop.h) set kPermutesAcross and
/// split<c>/join<c> the c component registers of a block of N c-vectors
/// themselves (3-vectors, and 4-vectors of doubles); for the others
/// loadGroups/storeGroups below move the c registers and the shuffles here
/// split them.

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

/// The c registers of a block of N c-vectors at p, where 128-bit part j of
/// register k is the 128 bits at p + (j * c + k) * kChunk.
template <class L, int C>
ZE_XFORM_INLINE void loadGroups(const typename L::T* p, typename L::F g[C]) {
  for (int k = 0; k < C; ++k) {
    if constexpr (L::N == L::kChunk)
      g[k] = L::load(p + k * L::kChunk);
    else
      g[k] = L::loadHalves(p + k * L::kChunk, p + (C + k) * L::kChunk);
  }
}

/// Writes back what loadGroups reads.
template <class L, int C>
ZE_XFORM_INLINE void storeGroups(typename L::T* p, const typename L::F g[C]) {
  for (int k = 0; k < C; ++k) {
    if constexpr (L::N == L::kChunk)
      L::store(p + k * L::kChunk, g[k]);
    else
      L::storeHalves(p + k * L::kChunk, p + (C + k) * L::kChunk, g[k]);
  }
}

/// Splits the next N 3-vectors at p into one register per component.
template <class L>
ZE_XFORM_INLINE void load3(const typename L::T* p, typename L::F v[3]) {
  using F = typename L::F;
  if constexpr (L::kPermutesAcross) {
    L::template split<3>(p, v);
  } else if constexpr (L::kChunk == 4) {
    // a = x0 y0 z0 x1, b = y1 z1 x2 y2, c = z2 x3 y3 z3
    F g[3];
    loadGroups<L, 3>(p, g);
    const F a = g[0], b = g[1], c = g[2];
    v[0] = L::template shuffle<pick(0, 3, 0, 2)>(a, L::template shuffle<pick(2, 3, 1, 2)>(b, c));
    v[1] = L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(1, 1, 0, 0)>(a, b),
                                                 L::template shuffle<pick(3, 3, 2, 2)>(b, c));
    v[2] = L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(2, 2, 1, 1)>(a, b),
                                                 L::template shuffle<pick(0, 0, 3, 3)>(c, c));
  } else {
    // g = x0 y0, z0 x1, y1 z1
    F g[3];
    loadGroups<L, 3>(p, g);
    v[0] = L::template shuffle<2>(g[0], g[1]);
    v[1] = L::template shuffle<1>(g[0], g[2]);
    v[2] = L::template shuffle<2>(g[1], g[2]);
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
    const F g[3] = {L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(0, 1, 0, 1)>(x, y),
                                                          L::template shuffle<pick(0, 0, 1, 1)>(z, x)),
                    L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(1, 1, 1, 1)>(y, z),
                                                          L::template shuffle<pick(2, 2, 2, 2)>(x, y)),
                    L::template shuffle<pick(0, 2, 0, 2)>(L::template shuffle<pick(2, 2, 3, 3)>(z, x),
                                                          L::template shuffle<pick(3, 3, 3, 3)>(y, z))};
    storeGroups<L, 3>(p, g);
  } else {
    const F g[3] = {L::template shuffle<0>(v[0], v[1]), L::template shuffle<2>(v[2], v[0]),
                    L::template shuffle<3>(v[1], v[2])};
    storeGroups<L, 3>(p, g);
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
    // g = x0 y0, z0 w0, x1 y1, z1 w1
    F g[4];
    loadGroups<L, 4>(p, g);
    v[0] = L::unpacklo(g[0], g[2]);
    v[1] = L::unpackhi(g[0], g[2]);
    v[2] = L::unpacklo(g[1], g[3]);
    v[3] = L::unpackhi(g[1], g[3]);
  }
}

/// Writes one register per component back as N 4-vectors at p.
template <class L>
ZE_XFORM_INLINE void store4(typename L::T* p, const typename L::F v[4]) {
  using F = typename L::F;
  if constexpr (L::kChunk == 4) {
    const F t0 = L::unpacklo(v[0], v[1]), t1 = L::unpackhi(v[0], v[1]), t2 = L::unpacklo(v[2], v[3]),
            t3 = L::unpackhi(v[2], v[3]);
    L::store(p, L::template shuffle<pick(0, 1, 0, 1)>(t0, t2));
    L::store(p + L::N, L::template shuffle<pick(2, 3, 2, 3)>(t0, t2));
    L::store(p + 2 * L::N, L::template shuffle<pick(0, 1, 0, 1)>(t1, t3));
    L::store(p + 3 * L::N, L::template shuffle<pick(2, 3, 2, 3)>(t1, t3));
  } else if constexpr (L::kPermutesAcross) {
    L::template join<4>(p, v);
  } else {
    const F g[4] = {L::unpacklo(v[0], v[1]), L::unpacklo(v[2], v[3]), L::unpackhi(v[0], v[1]), L::unpackhi(v[2], v[3])};
    storeGroups<L, 4>(p, g);
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

/// Runs body(v, r) on the whole blocks of N c-vectors in count: v the
/// component registers of a block of src, r those written to dst in its
/// place. Returns the number of elements done.
template <class L, int C, class Body>
ZE_XFORM_INLINE unsigned int forBlocks(const typename L::T* src, typename L::T* dst, unsigned int count,
                                       const Body& body) {
  using F = typename L::F;
  const unsigned int n = wholeBlocks<L>(count);
  for (std::size_t i = 0; i < n; i += L::N) {
    F v[C], r[C];
    if constexpr (C == 3)
      load3<L>(src + 3 * i, v);
    else
      load4<L>(src + 4 * i, v);
    body(v, r);
    if constexpr (C == 3)
      store3<L>(dst + 3 * i, r);
    else
      store4<L>(dst + 4 * i, r);
  }
  return n;
}

/// Direction transform of c-vectors by the 3x3 block; a fourth component w
/// is carried over bit for bit.
template <class L, int C>
unsigned int vectorsLoop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  return forBlocks<L, C>(src, dst, count, [&](const F v[C], F r[C]) {
    for (int j = 0; j < 3; ++j) r[j] = column3(k, j, v);
    if constexpr (C == 4) r[3] = v[3];
  });
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
  return forBlocks<L, 3>(src, dst, count, [&](const F v[3], F r[3]) {
    F p[3];
    for (int j = 0; j < 3; ++j) p[j] = L::add(column3(k, j, v), k.e[12 + j]);
    const F w = L::add(column3(k, 3, v), k.e[15]);
    // Ordered compares: a NaN w is no tiny w and no 1, so it divides.
    const F divisor = L::select(L::less(L::abs(w), small), small, w);
    const F inverse = L::div(one, divisor);
    const auto affine = L::equal(w, one);
    for (int j = 0; j < 3; ++j) r[j] = L::select(affine, p[j], L::mul(p[j], inverse));
  });
}

/// Full product of 4-vectors with m, no divide.
template <class L>
unsigned int points4Loop(const typename L::T* m, const typename L::T* src, typename L::T* dst, unsigned int count) {
  using F = typename L::F;
  const Broadcast<L> k(m);
  return forBlocks<L, 4>(src, dst, count, [&](const F v[4], F r[4]) {
    for (int j = 0; j < 4; ++j) r[j] = L::add(column3(k, j, v), L::mul(v[3], k.e[12 + j]));
  });
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
