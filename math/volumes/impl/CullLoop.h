#pragma once

/// \file
/// The culling pass written once over a vector of lanes: lanes are volumes,
/// lane l of a block holding volume l. Each lane computes its volume's signed
/// distances exactly as CullScalarLoop.h does, multiplies and adds apart, in
/// the same order, and compares them the same way; the planes' answers
/// combine into two bits per lane (every plane said ALL; no plane said NONE),
/// so that a block whose lanes all hold NONE stops early. The volumes left
/// over after the whole blocks go one at a time. Included only by the
/// instruction-set units (math/isa/).
///
/// Besides what ArrayTransformLoop.h asks of a lanes struct L, this asks for
/// sub, neg (the sign flipped), lessEqual (false when either side is NaN) and
/// maskBits (a compare result as one bit per lane, lane 0 lowest). Traits whose
/// permutes reach across the register (kPermutesAcross) split a block of N
/// volumes of c floats into c component registers themselves (split<c>).

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "math/impl/ArrayTransformLoop.h"
#include "math/volumes/impl/CullScalarLoop.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The helpers below work on whole registers: they must melt into the loop.
#define ZE_CULL_INLINE inline __attribute__((always_inline))

/// Byte l of bytes[m] is bit l of m: eight lane bits spread to one byte each.
struct CullSpread {
  std::uint64_t bytes[256];
};

constexpr CullSpread makeCullSpread() {
  CullSpread s{};
  for (unsigned int m = 0; m < 256; ++m)
    for (unsigned int l = 0; l < 8; ++l)
      if (m >> l & 1) s.bytes[m] |= std::uint64_t(1) << (8 * l);
  return s;
}

constexpr CullSpread kCullSpread = makeCullSpread();

/// A bit for each of the N lanes.
template <class L>
constexpr unsigned int kEveryLane = (1u << L::N) - 1;

/// The components of the next N volumes of C floats at p (C is 4 or 6), one
/// register per component, lane l holding volume l.
template <class L, int C>
ZE_CULL_INLINE void loadVolumes(const float* p, typename L::F v[C]) {
  using F = typename L::F;
  if constexpr (L::kPermutesAcross) {
    L::template split<C>(p, v);
  } else {
    // Within each 128 bits, g[k] holds floats 4k to 4k + 3 of its group of
    // four volumes.
    F g[C];
    loadGroups<L, C>(p, g);
    if constexpr (C == 4) {
      // A 4x4 transpose: g[k] is volume k.
      const F t0 = L::unpacklo(g[0], g[1]), t1 = L::unpackhi(g[0], g[1]);
      const F t2 = L::unpacklo(g[2], g[3]), t3 = L::unpackhi(g[2], g[3]);
      v[0] = L::template shuffle<pick(0, 1, 0, 1)>(t0, t2);
      v[1] = L::template shuffle<pick(2, 3, 2, 3)>(t0, t2);
      v[2] = L::template shuffle<pick(0, 1, 0, 1)>(t1, t3);
      v[3] = L::template shuffle<pick(2, 3, 2, 3)>(t1, t3);
    } else {
      // Volumes 0 and 1 fill g[0..2], volumes 2 and 3 g[3..5]. Components
      // 2k and 2k + 1 of the first two come together in one register, those
      // of the last two in another; two shuffles then part them.
      const F first[3] = {L::template shuffle<pick(0, 1, 2, 3)>(g[0], g[1]),
                          L::template shuffle<pick(2, 3, 0, 1)>(g[0], g[2]),
                          L::template shuffle<pick(0, 1, 2, 3)>(g[1], g[2])};
      const F last[3] = {L::template shuffle<pick(0, 1, 2, 3)>(g[3], g[4]),
                         L::template shuffle<pick(2, 3, 0, 1)>(g[3], g[5]),
                         L::template shuffle<pick(0, 1, 2, 3)>(g[4], g[5])};
      for (int k = 0; k < 3; ++k) {
        v[2 * k] = L::template shuffle<pick(0, 2, 0, 2)>(first[k], last[k]);
        v[2 * k + 1] = L::template shuffle<pick(1, 3, 1, 3)>(first[k], last[k]);
      }
    }
  }
}

/// The planes of a pass, each value spread over every lane.
template <class L>
struct CullLanePlanes {
  typename L::F normal[kCullPassPlanes][3];
  typename L::F offset[kCullPassPlanes];
  unsigned int octant[kCullPassPlanes];

  CullLanePlanes(const CullPlane* planes, unsigned int count) {
    for (unsigned int j = 0; j < count; ++j) {
      for (int a = 0; a < 3; ++a) normal[j][a] = L::set1(planes[j].normal[a]);
      offset[j] = L::set1(planes[j].offset);
      octant[j] = planes[j].octant;
    }
  }

  /// Plane j's signed distances of the points (x, y, z).
  ZE_CULL_INLINE typename L::F distance(unsigned int j, typename L::F x, typename L::F y, typename L::F z) const {
    return L::sub(L::add(L::add(L::mul(normal[j][0], x), L::mul(normal[j][1], y)), L::mul(normal[j][2], z)), offset[j]);
  }
};

/// What the planes said so far, one bit per lane: `all` where every plane
/// said ALL, `some` where none said NONE.
struct CullBits {
  unsigned int all;
  unsigned int some;
};

/// The bits of N results from an earlier pass.
template <class L>
ZE_CULL_INLINE CullBits priorBits(const unsigned char* prior) {
  CullBits b{0, 0};
  for (int l = 0; l < L::N; ++l) {
    b.all |= unsigned(prior[l] == kCullAll) << l;
    b.some |= unsigned(prior[l] != kCullNone) << l;
  }
  return b;
}

/// Writes N results: 2 where every plane said ALL, 1 where none said NONE
/// but one said PARTIAL, 0 where one said NONE.
template <class L>
ZE_CULL_INLINE void storeResults(unsigned char* out, CullBits b) {
  constexpr int kBytes = L::N < 8 ? L::N : 8;
  for (int l = 0; l < L::N; l += 8) {
    const std::uint64_t bytes = kCullSpread.bytes[b.all >> l & 0xFF] + kCullSpread.bytes[b.some >> l & 0xFF];
    std::memcpy(out + l, &bytes, kBytes);
  }
}

/// A block of boxes: its corners, `corner[s][a]` holding axis a of the
/// corners that take the max (s = 0) or the min (s = 1) there.
template <class L>
struct CullBoxLanes {
  typedef CullBoxes Rule;
  typename L::F corner[2][3];

  explicit CullBoxLanes(const typename L::F v[6]) : corner{{v[3], v[4], v[5]}, {v[0], v[1], v[2]}} {}
  /// The lanes every plane says NONE for: min.x > max.x.
  ZE_CULL_INLINE unsigned int empty() const { return L::maskBits(L::greater(corner[1][0], corner[0][0])); }
  /// Plane j's answers, added to `b`: ALL where the corner its octant picks
  /// is inside, PARTIAL where only the complementary corner is.
  ZE_CULL_INLINE void answer(const CullLanePlanes<L>& planes, unsigned int j, CullBits& b) const {
    const unsigned int o = planes.octant[j];
    const unsigned int x = o >> 2 & 1, y = o >> 1 & 1, z = o & 1;
    const typename L::F zero = L::zero();
    const unsigned int along =
        L::maskBits(L::lessEqual(planes.distance(j, corner[x][0], corner[y][1], corner[z][2]), zero));
    const unsigned int against =
        L::maskBits(L::lessEqual(planes.distance(j, corner[x ^ 1][0], corner[y ^ 1][1], corner[z ^ 1][2]), zero));
    b.all &= along;
    b.some &= along | against;
  }
};

/// A block of spheres: centres, radii, and the radii negated.
template <class L>
struct CullSphereLanes {
  typedef CullSpheres Rule;
  typename L::F center[3], radius, negativeRadius;

  explicit CullSphereLanes(const typename L::F v[4])
      : center{v[0], v[1], v[2]}, radius(v[3]), negativeRadius(L::neg(v[3])) {}
  /// The lanes every plane says NONE for: a negative radius.
  ZE_CULL_INLINE unsigned int empty() const { return L::maskBits(L::less(radius, L::zero())); }
  /// Plane j's answers, added to `b`: ALL where -r >= e, PARTIAL where r >= e.
  ZE_CULL_INLINE void answer(const CullLanePlanes<L>& planes, unsigned int j, CullBits& b) const {
    const typename L::F e = planes.distance(j, center[0], center[1], center[2]);
    b.all &= L::maskBits(L::lessEqual(e, negativeRadius));
    b.some &= L::maskBits(L::lessEqual(e, radius));
  }
};

/// A pass over boxes or spheres (RawCull), a block of N at a time.
template <class L, template <class> class Block>
inline void cullLoop(const float* volumes, unsigned int count, const CullPlane* planes, unsigned int planeCount,
                     const unsigned char* prior, unsigned char* results) {
  typedef typename Block<L>::Rule Rule;
  constexpr int kFloats = Rule::kFloats;
  const CullLanePlanes<L> lanePlanes(planes, planeCount);
  std::size_t i = 0;
  for (; i + L::N <= count; i += L::N) {
    CullBits b = prior ? priorBits<L>(prior + i) : CullBits{kEveryLane<L>, kEveryLane<L>};
    typename L::F v[kFloats];
    loadVolumes<L, kFloats>(volumes + kFloats * i, v);
    const Block<L> block(v);
    if (planeCount) {
      const unsigned int empty = block.empty();
      b.all &= ~empty;
      b.some &= ~empty;
    }
    for (unsigned int j = 0; j < planeCount && b.some; ++j) block.answer(lanePlanes, j, b);
    storeResults<L>(results + i, b);
  }
  cullEach<Rule>(volumes, i, count, planes, planeCount, prior, results);
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
