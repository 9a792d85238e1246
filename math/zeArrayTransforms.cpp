// The matrix array transforms: the scalar loops, the table of instruction-set
// paths and the functions the matrix members call.

#include "math/impl/ArrayTransforms.h"

#include <cstddef>

#include "math/impl/ArrayTransformPaths.h"
#include "math/impl/ArrayTransformRawPaths.h"
#include "math/impl/PathChoice.h"

namespace Lux {
namespace Math {
namespace impl {

namespace {

// The reference: element by element, each source element read whole by the
// single-vector transform before its destination is written.
template <bool kPoints, class M, class V>
void scalarLoop(const M& m, const V* src, V* dst, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) {
    if constexpr (kPoints)
      dst[i].transformPoint(src[i], m);
    else
      dst[i].transformVector(src[i], m);
  }
}

template <class T>
using RawBlocks = unsigned int (*)(const T* m, const T* src, T* dst, unsigned int count);

// The vector paths take raw memory: matrices and vectors are plain scalars.
template <class V>
const typename V::Scalar* raw(const V* v) {
  return reinterpret_cast<const typename V::Scalar*>(v);
}
template <class V>
typename V::Scalar* raw(V* v) {
  return reinterpret_cast<typename V::Scalar*>(v);
}

// A vector path over the whole blocks, the scalar loop over the rest.
template <bool kPoints, class M, class V, RawBlocks<typename V::Scalar> kBlocks>
void onPath(const M& m, const V* src, V* dst, unsigned int count) {
  const unsigned int done = kBlocks(m.data(), raw(src), raw(dst), count);
  scalarLoop<kPoints>(m, src + done, dst + done, count - done);
}

typedef zeMatrix44f Mf;
typedef zeMatrix44d Md;

// A vector path from its eight raw kernels, in the order of ArrayTransformPath.
template <RawBlocks<float> kVectors3f, RawBlocks<float> kPoints3f, RawBlocks<float> kVectors4f,
          RawBlocks<float> kPoints4f, RawBlocks<double> kVectors3d, RawBlocks<double> kPoints3d,
          RawBlocks<double> kVectors4d, RawBlocks<double> kPoints4d>
ArrayTransformPath vectorPath(const char* name, bool available) {
  return {name,
          available,
          &onPath<false, Mf, zeVec3f, kVectors3f>,
          &onPath<true, Mf, zeVec3f, kPoints3f>,
          &onPath<false, Mf, zeVec4f, kVectors4f>,
          &onPath<true, Mf, zeVec4f, kPoints4f>,
          &onPath<false, Md, zeVec3d, kVectors3d>,
          &onPath<true, Md, zeVec3d, kPoints3d>,
          &onPath<false, Md, zeVec4d, kVectors4d>,
          &onPath<true, Md, zeVec4d, kPoints4d>};
}

bool hasAvx512() {
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
         __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}

const ArrayTransformPath* paths() {
  static const ArrayTransformPath table[] = {
      {"scalar", true, &scalarLoop<false, Mf, zeVec3f>, &scalarLoop<true, Mf, zeVec3f>, &scalarLoop<false, Mf, zeVec4f>,
       &scalarLoop<true, Mf, zeVec4f>, &scalarLoop<false, Md, zeVec3d>, &scalarLoop<true, Md, zeVec3d>,
       &scalarLoop<false, Md, zeVec4d>, &scalarLoop<true, Md, zeVec4d>},
      vectorPath<&transformVectors3fSse2, &transformPoints3fSse2, &transformVectors4fSse2, &transformPoints4fSse2,
                 &transformVectors3dSse2, &transformPoints3dSse2, &transformVectors4dSse2, &transformPoints4dSse2>(
          "sse2", true),
      vectorPath<&transformVectors3fAvx2, &transformPoints3fAvx2, &transformVectors4fAvx2, &transformPoints4fAvx2,
                 &transformVectors3dAvx2, &transformPoints3dAvx2, &transformVectors4dAvx2, &transformPoints4dAvx2>(
          "avx2", __builtin_cpu_supports("avx2") != 0),
      vectorPath<&transformVectors3fAvx512, &transformPoints3fAvx512, &transformVectors4fAvx512,
                 &transformPoints4fAvx512, &transformVectors3dAvx512, &transformPoints3dAvx512,
                 &transformVectors4dAvx512, &transformPoints4dAvx512>("avx512", hasAvx512()),
  };
  return table;
}

constexpr unsigned int kPathCount = 4;
constexpr unsigned int kAvx2 = 2, kAvx512 = 3;

// Three double kernels run faster on AVX2 than on AVX-512 (Zen 4, 100000
// elements, bench/TransformBench medians: d3Vectors 68 against 78 us,
// d4Points 113 against 119, d4Vectors 80 against 91; d3Points keeps AVX-512,
// 139 against 145). The members take those three from the AVX2 path; the
// table keeps every kernel for the tests and benchmarks.
ArrayTransformPath withAvx2Doubles(ArrayTransformPath p) {
  const ArrayTransformPath& avx2 = paths()[kAvx2];
  p.name = "avx512 (avx2 for d3Vectors, d4Points, d4Vectors)";
  p.vectors3d = avx2.vectors3d;
  p.points4d = avx2.points4d;
  p.vectors4d = avx2.vectors4d;
  return p;
}

// The vector paths read a block of elements before writing any of it; the
// scalar loop reads each element just before writing it. The two agree when
// src is dst or apart from it, but not for arrays that overlap with a shift,
// which therefore get the scalar loop.
template <class V>
bool overlapsWithShift(const V* src, const V* dst, unsigned int count) {
  const std::size_t bytes = std::size_t(count) * sizeof(V);
  return src != dst && bytesOverlap(src, bytes, dst, bytes);
}

template <bool kPoints, class M, class V>
void published(ArrayTransformFunction<M, V> ArrayTransformPath::*kernel, const M& m, const V* src, V* dst,
               unsigned int count) {
  if (overlapsWithShift(src, dst, count))
    scalarLoop<kPoints>(m, src, dst, count);
  else
    (selectedArrayTransformPath().*kernel)(m, src, dst, count);
}

}  // namespace

unsigned int arrayTransformPathCount() noexcept { return kPathCount; }

const ArrayTransformPath& arrayTransformPath(unsigned int i) noexcept { return paths()[i < kPathCount ? i : 0]; }

const ArrayTransformPath& selectedArrayTransformPath() noexcept {
  static const ArrayTransformPath chosen = [] {
    const unsigned int best = widestAvailable(paths(), kPathCount);
    return best == kAvx512 ? withAvx2Doubles(paths()[kAvx512]) : paths()[best];
  }();
  return chosen;
}

void transformVectorArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst, unsigned int count) noexcept {
  published<false>(&ArrayTransformPath::vectors3f, m, src, dst, count);
}
void transformPointArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst, unsigned int count) noexcept {
  published<true>(&ArrayTransformPath::points3f, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst, unsigned int count) noexcept {
  published<false>(&ArrayTransformPath::vectors4f, m, src, dst, count);
}
void transformPointArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst, unsigned int count) noexcept {
  published<true>(&ArrayTransformPath::points4f, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
  published<false>(&ArrayTransformPath::vectors3d, m, src, dst, count);
}
void transformPointArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
  published<true>(&ArrayTransformPath::points3d, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
  published<false>(&ArrayTransformPath::vectors4d, m, src, dst, count);
}
void transformPointArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
  published<true>(&ArrayTransformPath::points4d, m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
