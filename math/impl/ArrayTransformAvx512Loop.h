#pragma once

/// \file
/// The array-transform loops' own part on AVX-512: registers that permute
/// across their whole width split a block of c-vectors into c component
/// registers, and join them back, themselves. Included only by the unit
/// built for AVX-512 (math/isa/), after its lanes.

#include <immintrin.h>

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

// Whole blocks of c-vectors split into and joined from component registers
// by permutes across the register.
template <class Lanes>
struct Avx512Blocks : Lanes {
  typedef typename Lanes::T T;
  typedef typename Lanes::F F;
  static constexpr int N = Lanes::N;
  static constexpr bool kPermutesAcross = true;
  // One output register: lanes from inputs 0 and 1, or where `upper` says so
  // from inputs 2 and 3 (for 3-vectors input 3 repeats input 2).
  static F permute(const __m512i lanes, unsigned int upper, const F in[4]) {
    const F lo = Lanes::permute2(in[0], lanes, in[1]), hi = Lanes::permute2(in[2], lanes, in[3]);
    return Lanes::select(typename Lanes::Mask(upper), hi, lo);
  }
  template <int C>
  static void split(const T* p, F* v) {
    typedef Split<typename Lanes::Index, N, C> S;
    const F in[4] = {Lanes::load(p), Lanes::load(p + N), Lanes::load(p + 2 * N), Lanes::load(p + (C - 1) * N)};
    for (int k = 0; k < C; ++k) v[k] = permute(_mm512_load_si512(S::kSplit.lanes[k]), S::kSplit.upper[k], in);
  }
  template <int C>
  static void join(T* p, const F* v) {
    typedef Split<typename Lanes::Index, N, C> S;
    const F in[4] = {v[0], v[1], v[2], v[C - 1]};
    for (int r = 0; r < C; ++r)
      Lanes::store(p + r * N, permute(_mm512_load_si512(S::kJoin.lanes[r]), S::kJoin.upper[r], in));
  }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
