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
// as one array; a two-source permute per pair of inputs, and a blend for each
// pair after the first, reach any lane of up to six inputs. The tables are
// worked out at compile time.
template <class I, int kLanes, int kComponents>
struct Split {
  // Pairs of inputs; an odd count repeats its last input.
  static constexpr int kPairs = (kComponents + 1) / 2;
  // Lane i of component register k is scalar c * i + k of the block.
  static constexpr int fromBlock(int k, int i) { return kComponents * i + k; }
  // Scalar f of the block (lane p of register r) is component f % c of element f / c.
  static constexpr int toBlock(int r, int p) {
    const int f = kLanes * r + p;
    return kLanes * (f % kComponents) + f / kComponents;
  }
  // Per output register: the lane of the inputs for each of its lanes, and
  // per pair of inputs the mask of lanes that come from it (pair 0 takes the
  // lanes no later pair claims).
  struct Table {
    alignas(64) I lanes[kComponents][kLanes];
    unsigned int pair[kComponents][kPairs];
  };
  static constexpr Table make(bool split) {
    Table t{};
    for (int r = 0; r < kComponents; ++r)
      for (int i = 0; i < kLanes; ++i) {
        const int from = split ? fromBlock(r, i) : toBlock(r, i);
        t.lanes[r][i] = I(from);
        t.pair[r][from / (2 * kLanes)] |= 1u << i;
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
  // One output register: lanes from inputs 0 and 1, or where pair[q] says
  // so from inputs 2q and 2q + 1.
  template <int kPairs>
  static F permute(const __m512i lanes, const unsigned int* pair, const F* in) {
    F r = Lanes::permute2(in[0], lanes, in[1]);
    for (int q = 1; q < kPairs; ++q)
      r = Lanes::select(typename Lanes::Mask(pair[q]), Lanes::permute2(in[2 * q], lanes, in[2 * q + 1]), r);
    return r;
  }
  template <int C>
  static void split(const T* p, F* v) {
    typedef Split<typename Lanes::Index, N, C> S;
    F in[2 * S::kPairs];
    for (int k = 0; k < 2 * S::kPairs; ++k) in[k] = Lanes::load(p + (k < C ? k : C - 1) * N);
    for (int k = 0; k < C; ++k) v[k] = permute<S::kPairs>(_mm512_load_si512(S::kSplit.lanes[k]), S::kSplit.pair[k], in);
  }
  template <int C>
  static void join(T* p, const F* v) {
    typedef Split<typename Lanes::Index, N, C> S;
    F in[2 * S::kPairs];
    for (int k = 0; k < 2 * S::kPairs; ++k) in[k] = v[k < C ? k : C - 1];
    for (int r = 0; r < C; ++r)
      Lanes::store(p + r * N, permute<S::kPairs>(_mm512_load_si512(S::kJoin.lanes[r]), S::kJoin.pair[r], in));
  }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
