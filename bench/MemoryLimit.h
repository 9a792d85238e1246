#pragma once

// The memory limit of a vertex kernel: a loop that moves exactly the bytes
// the kernel moves and does nothing else. It reads every byte of each input
// stream once, element block after element block as the kernel walks them,
// and writes the 12 bytes of each output `stride` bytes apart, leaving the
// bytes between outputs alone. No kernel that reads and writes those bytes
// can beat it; one that does is measured wrongly, or the limit is.
//
// Reads and packed writes go through the widest registers the processor has
// (AVX-512, AVX2 or SSE2, chosen once); outputs are written with normal
// stores or around the caches (non-temporal): a benchmark measures both and
// takes the better.

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace zebench {

/// One input stream of a kernel: `bytesPer` bytes for each element, from `data`.
struct ReadStream {
  const void* data;
  std::size_t bytesPer;
};

/// How the limit loop writes its outputs.
enum class LimitStores { kNormal, kNonTemporal };

namespace limit {

#define ZEBENCH_LIMIT_INLINE inline __attribute__((always_inline))

/// Elements per block: a block of a stream is as many 64-byte chunks as the
/// stream has bytes per element.
constexpr std::size_t kBlock = 64;

/// The most streams a kernel reads.
constexpr std::size_t kMaxStreams = 16;

/// What a block reads is folded into 64 bytes.
struct alignas(64) Fold {
  unsigned char bytes[64];
};

/// The bytes every output gets.
alignas(64) constexpr unsigned char kPattern[64] = {
    1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
    1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

/// Writes the 12 bytes of one output at p.
ZEBENCH_LIMIT_INLINE void writeOutput(unsigned char* p, bool nt) {
  long long low;
  int high;
  std::memcpy(&low, kPattern, 8);
  std::memcpy(&high, kPattern + 8, 4);
  if (nt) {
    _mm_stream_si64(reinterpret_cast<long long*>(p), low);
    _mm_stream_si32(reinterpret_cast<int*>(p + 8), high);
  } else {
    std::memcpy(p, &low, 8);
    std::memcpy(p + 8, &high, 4);
  }
}

/// The loop on registers of type Vec (16, 32 or 64 bytes); inlined into a
/// function built for the instruction set that has them.
template <class Vec>
struct Registers {
  static constexpr int kPer = 64 / sizeof(Vec);

  /// 64 bytes at p (at a 64-byte boundary with nt).
  static ZEBENCH_LIMIT_INLINE void write(unsigned char* p, bool nt) {
    for (int r = 0; r < kPer; ++r) {
      Vec v;
      std::memcpy(&v, kPattern + r * sizeof(Vec), sizeof v);
      unsigned char* at = p + r * sizeof(Vec);
      if (!nt)
        std::memcpy(at, &v, sizeof v);
      else if constexpr (sizeof(Vec) == 16)
        _mm_stream_si128(reinterpret_cast<__m128i*>(at), __m128i(v));
      else if constexpr (sizeof(Vec) == 32)
        __asm__ volatile("vmovntdq %1, %0" : "=m"(*reinterpret_cast<Vec*>(at)) : "x"(v));
      else
        __asm__ volatile("vmovntdq %1, %0" : "=m"(*reinterpret_cast<Vec*>(at)) : "v"(v));
    }
  }

  /// The first `blocks` blocks of kBlock elements of N streams. A block
  /// goes in steps: 64 bytes of every stream in turn (a block of a stream
  /// is as many 64-byte chunks as it has bytes per element), then the
  /// outputs due by then, as a kernel walks its streams all at once.
  template <int N>
  static ZEBENCH_LIMIT_INLINE void run(const ReadStream* streams, std::size_t blocks, unsigned char* out,
                                       std::size_t stride, bool nt, Fold& fold) {
    const unsigned char* at[N];
    std::size_t chunks[N], steps = 0;
    for (int s = 0; s < N; ++s) {
      at[s] = static_cast<const unsigned char*>(streams[s].data);
      chunks[s] = streams[s].bytesPer;
      steps = chunks[s] > steps ? chunks[s] : steps;
    }
    // A packed block of outputs is 12 chunks of 64 bytes; spread ones go
    // one by one.
    const bool packed = stride == 12;
    const std::size_t outputs = packed ? 12 : kBlock;
    Vec acc = {};
    for (std::size_t b = 0; b < blocks; ++b) {
      unsigned char* o = out + b * kBlock * stride;
      std::size_t due = 0;
      for (std::size_t c = 0; c < steps; ++c) {
        for (int s = 0; s < N; ++s) {
          if (c >= chunks[s]) continue;
          for (int r = 0; r < kPer; ++r) {
            Vec v;
            std::memcpy(&v, at[s] + r * sizeof(Vec), sizeof v);
            acc ^= v;
          }
          at[s] += 64;
        }
        for (due += outputs; due >= steps; due -= steps) {
          packed ? write(o, nt) : writeOutput(o, nt);
          o += packed ? 64 : stride;
        }
      }
    }
    Vec folded;
    std::memcpy(&folded, fold.bytes, sizeof folded);
    folded ^= acc;
    std::memcpy(fold.bytes, &folded, sizeof folded);
  }
};

typedef long long Vec16 __attribute__((vector_size(16)));
typedef long long Vec32 __attribute__((vector_size(32)));
typedef long long Vec64 __attribute__((vector_size(64)));

/// The whole blocks of N streams through the registers of one instruction set.
typedef void (*Blocks)(const ReadStream* streams, std::size_t blocks, unsigned char* out, std::size_t stride, bool nt,
                       Fold& fold);

template <int N>
void blocksSse2(const ReadStream* streams, std::size_t blocks, unsigned char* out, std::size_t stride, bool nt,
                Fold& fold) {
  Registers<Vec16>::run<N>(streams, blocks, out, stride, nt, fold);
}

template <int N>
__attribute__((target("avx2"))) void blocksAvx2(const ReadStream* streams, std::size_t blocks, unsigned char* out,
                                                std::size_t stride, bool nt, Fold& fold) {
  Registers<Vec32>::run<N>(streams, blocks, out, stride, nt, fold);
}

template <int N>
__attribute__((target("avx512f"))) void blocksAvx512(const ReadStream* streams, std::size_t blocks, unsigned char* out,
                                                     std::size_t stride, bool nt, Fold& fold) {
  Registers<Vec64>::run<N>(streams, blocks, out, stride, nt, fold);
}

/// The loops of one instruction set for 1 to kMaxStreams streams.
struct Isa {
  Blocks blocks[kMaxStreams];
  const char* name;
};

template <int... N>
constexpr Isa sse2(std::integer_sequence<int, N...>) {
  return {{&blocksSse2<N + 1>...}, "sse2"};
}
template <int... N>
constexpr Isa avx2(std::integer_sequence<int, N...>) {
  return {{&blocksAvx2<N + 1>...}, "avx2"};
}
template <int... N>
constexpr Isa avx512(std::integer_sequence<int, N...>) {
  return {{&blocksAvx512<N + 1>...}, "avx512"};
}

/// The widest registers of this processor.
inline const Isa& widest() {
  typedef std::make_integer_sequence<int, kMaxStreams> Counts;
  static const Isa isa = __builtin_cpu_supports("avx512f") ? avx512(Counts())
                         : __builtin_cpu_supports("avx2")  ? avx2(Counts())
                                                           : sse2(Counts());
  return isa;
}

}  // namespace limit

/// The instruction set the limit loop reads and writes with.
inline const char* memoryLimitRegisters() { return limit::widest().name; }

/// Reads the `count` elements of each of the `n` streams (1 to 16) and
/// writes `count` outputs of 12 bytes `stride` bytes apart from `out`.
/// Packed outputs (stride 12) are written around the caches only from a
/// 64-byte boundary, spread ones from a 4-byte boundary; elsewhere the stores
/// are normal. Returns a fold of everything read, for the caller to keep.
inline std::uint64_t memoryLimit(const ReadStream* streams, std::size_t n, std::size_t count, unsigned char* out,
                                 std::size_t stride, LimitStores stores) {
  limit::Fold fold = {};
  const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(out);
  const bool nt = stores == LimitStores::kNonTemporal && at % (stride == 12 ? 64 : 4) == 0;
  const std::size_t blocks = count / limit::kBlock;
  limit::widest().blocks[n - 1](streams, blocks, out, stride, nt, fold);
  if (nt) _mm_sfence();
  std::size_t i = blocks * limit::kBlock;
  // The last elements, byte by byte.
  std::uint64_t folded = 0;
  for (; i < count; ++i) {
    for (std::size_t s = 0; s < n; ++s) {
      const unsigned char* p = static_cast<const unsigned char*>(streams[s].data) + i * streams[s].bytesPer;
      for (std::size_t b = 0; b < streams[s].bytesPer; ++b) folded += p[b];
    }
    limit::writeOutput(out + i * stride, false);
  }
  for (unsigned char b : fold.bytes) folded = folded * 31 + b;
  return folded;
}

}  // namespace zebench
