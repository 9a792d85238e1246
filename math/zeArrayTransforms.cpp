// The matrix array transforms: the scalar loops, the table of instruction-set
// paths and the functions the matrix members call.

#include "math/impl/ArrayTransforms.h"

#include <cstddef>

#include "math/impl/ArrayTransformPaths.h"
#include "math/impl/IsaRawPaths.h"
#include "math/impl/PathTable.h"

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

// The vector paths take raw memory: matrices and vectors are plain scalars.
template <class V>
const typename V::Scalar* raw(const V* v) {
  return reinterpret_cast<const typename V::Scalar*>(v);
}
template <class V>
typename V::Scalar* raw(V* v) {
  return reinterpret_cast<typename V::Scalar*>(v);
}

// An instruction set's kernel over the whole blocks, the scalar loop over the rest.
template <bool kPoints, class M, class V, RawTransform<typename V::Scalar> RawKernels::*kKernel, const RawKernels& kIsa>
void onPath(const M& m, const V* src, V* dst, unsigned int count) {
  const unsigned int done = (kIsa.*kKernel)(m.data(), raw(src), raw(dst), count);
  scalarLoop<kPoints>(m, src + done, dst + done, count - done);
}

typedef zeMatrix44f Mf;
typedef zeMatrix44d Md;
typedef RawKernels K;

template <const RawKernels& kIsa>
constexpr ArrayTransformPath vectorPath(const char* name, ZE_MATH_INSTRUCTION_SET level) {
  return {{&onPath<false, Mf, zeVec3f, &K::vectors3f, kIsa>, &onPath<true, Mf, zeVec3f, &K::points3f, kIsa>,
           &onPath<false, Mf, zeVec4f, &K::vectors4f, kIsa>, &onPath<true, Mf, zeVec4f, &K::points4f, kIsa>,
           &onPath<false, Md, zeVec3d, &K::vectors3d, kIsa>, &onPath<true, Md, zeVec3d, &K::points3d, kIsa>,
           &onPath<false, Md, zeVec4d, &K::vectors4d, kIsa>, &onPath<true, Md, zeVec4d, &K::points4d, kIsa>},
          name,
          level};
}

constexpr ArrayTransformPath kPaths[] = {
    {{&scalarLoop<false, Mf, zeVec3f>, &scalarLoop<true, Mf, zeVec3f>, &scalarLoop<false, Mf, zeVec4f>,
      &scalarLoop<true, Mf, zeVec4f>, &scalarLoop<false, Md, zeVec3d>, &scalarLoop<true, Md, zeVec3d>,
      &scalarLoop<false, Md, zeVec4d>, &scalarLoop<true, Md, zeVec4d>},
     "scalar",
     ZE_MATH_INSTRUCTION_SET_SCALAR},
    vectorPath<kSse2Kernels>("sse2", ZE_MATH_INSTRUCTION_SET_SSE2),
    vectorPath<kAvx2Kernels>("avx2", ZE_MATH_INSTRUCTION_SET_AVX2),
    vectorPath<kAvx512Kernels>("avx512", ZE_MATH_INSTRUCTION_SET_AVX512),
};

// What the members choose from: the paths themselves, except that on
// AVX-512 three double kernels stay on AVX2, which runs them faster (Zen 4,
// 100000 elements, bench/TransformBench medians: d3Vectors 68 against 78 us,
// d4Points 113 against 119, d4Vectors 80 against 91; d3Points keeps AVX-512,
// 139 against 145). The paths keep every kernel for the tests and benchmarks.
constexpr ArrayTransformPath avx512WithAvx2Doubles() {
  ArrayTransformPath p = kPaths[3];
  p.name = "avx512 (avx2 for d3Vectors, d4Points, d4Vectors)";
  p.vectors3d = kPaths[2].vectors3d;
  p.points4d = kPaths[2].points4d;
  p.vectors4d = kPaths[2].vectors4d;
  return p;
}

constexpr ArrayTransformPath kChoices[] = {kPaths[0], kPaths[1], kPaths[2], avx512WithAvx2Doubles()};

const PathTable<ArrayTransformKernels> kTable(kPaths, kChoices);

// The vector paths read a block of elements before writing any of it; the
// scalar loop reads each element just before writing it. The two agree when
// src is dst or apart from it, but not for arrays that overlap with a shift,
// which therefore get the scalar loop.
template <class V>
bool overlapsWithShift(const V* src, const V* dst, unsigned int count) {
  const std::size_t bytes = std::size_t(count) * sizeof(V);
  return src != dst && bytesOverlap(src, bytes, dst, bytes);
}

template <class M, class V>
void published(ArrayTransformFunction<M, V> ArrayTransformKernels::*kernel, const M& m, const V* src, V* dst,
               unsigned int count) {
  (kTable.pathFor(overlapsWithShift(src, dst, count)).*kernel)(m, src, dst, count);
}

}  // namespace

const PathTable<ArrayTransformKernels>& arrayTransformPaths() noexcept { return kTable; }

void transformVectorArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::vectors3f, m, src, dst, count);
}
void transformPointArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::points3f, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::vectors4f, m, src, dst, count);
}
void transformPointArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::points4f, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::vectors3d, m, src, dst, count);
}
void transformPointArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::points3d, m, src, dst, count);
}
void transformVectorArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::vectors4d, m, src, dst, count);
}
void transformPointArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst, unsigned int count) noexcept {
  published(&ArrayTransformKernels::points4d, m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
