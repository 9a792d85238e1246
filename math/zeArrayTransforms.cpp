// The matrix array transforms: the scalar loops, the table of instruction-set
// paths and the functions the matrix members call.

#include "math/impl/ArrayTransforms.h"

#include <cstddef>
#include <cstdint>

#include "math/impl/ArrayTransformPaths.h"
#include "math/impl/ArrayTransformRawPaths.h"

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

bool hasAvx512() {
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
         __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}

const ArrayTransformPath* paths() {
  static const ArrayTransformPath table[] = {
      {"scalar", true, &scalarLoop<false, Mf, zeVec3f>, &scalarLoop<true, Mf, zeVec3f>, &scalarLoop<false, Mf, zeVec4f>,
       &scalarLoop<true, Mf, zeVec4f>, &scalarLoop<false, Md, zeVec3d>, &scalarLoop<true, Md, zeVec3d>,
       &scalarLoop<false, Md, zeVec4d>, &scalarLoop<true, Md, zeVec4d>},
      {"sse2", true, &onPath<false, Mf, zeVec3f, &transformVectors3fSse2>,
       &onPath<true, Mf, zeVec3f, &transformPoints3fSse2>, &onPath<false, Mf, zeVec4f, &transformVectors4fSse2>,
       &onPath<true, Mf, zeVec4f, &transformPoints4fSse2>, &onPath<false, Md, zeVec3d, &transformVectors3dSse2>,
       &onPath<true, Md, zeVec3d, &transformPoints3dSse2>, &onPath<false, Md, zeVec4d, &transformVectors4dSse2>,
       &onPath<true, Md, zeVec4d, &transformPoints4dSse2>},
      {"avx2", __builtin_cpu_supports("avx2") != 0, &onPath<false, Mf, zeVec3f, &transformVectors3fAvx2>,
       &onPath<true, Mf, zeVec3f, &transformPoints3fAvx2>, &onPath<false, Mf, zeVec4f, &transformVectors4fAvx2>,
       &onPath<true, Mf, zeVec4f, &transformPoints4fAvx2>, &onPath<false, Md, zeVec3d, &transformVectors3dAvx2>,
       &onPath<true, Md, zeVec3d, &transformPoints3dAvx2>, &onPath<false, Md, zeVec4d, &transformVectors4dAvx2>,
       &onPath<true, Md, zeVec4d, &transformPoints4dAvx2>},
      {"avx512", hasAvx512(), &onPath<false, Mf, zeVec3f, &transformVectors3fAvx512>,
       &onPath<true, Mf, zeVec3f, &transformPoints3fAvx512>, &onPath<false, Mf, zeVec4f, &transformVectors4fAvx512>,
       &onPath<true, Mf, zeVec4f, &transformPoints4fAvx512>, &onPath<false, Md, zeVec3d, &transformVectors3dAvx512>,
       &onPath<true, Md, zeVec3d, &transformPoints3dAvx512>, &onPath<false, Md, zeVec4d, &transformVectors4dAvx512>,
       &onPath<true, Md, zeVec4d, &transformPoints4dAvx512>},
  };
  return table;
}

constexpr unsigned int kPathCount = 4;

// The vector paths read a block of elements before writing any of it; the
// scalar loop reads each element just before writing it. The two agree when
// src is dst or apart from it, but not for arrays that overlap with a shift,
// which therefore get the scalar loop.
template <class V>
bool overlapsWithShift(const V* src, const V* dst, unsigned int count) {
  if (src == dst) return false;
  const std::uintptr_t s = reinterpret_cast<std::uintptr_t>(src), d = reinterpret_cast<std::uintptr_t>(dst);
  const std::uintptr_t bytes = std::uintptr_t(count) * sizeof(V);
  return s < d + bytes && d < s + bytes;
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
  static const ArrayTransformPath* const chosen = [] {
    const ArrayTransformPath* best = paths();
    for (unsigned int i = 1; i < kPathCount; ++i)
      if (paths()[i].available) best = paths() + i;
    return best;
  }();
  return *chosen;
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
