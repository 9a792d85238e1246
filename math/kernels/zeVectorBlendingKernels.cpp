#include "math/kernels/zeVectorBlendingKernels.h"

#include <cstddef>

#include "math/impl/IsaRawPaths.h"
#include "math/impl/PathTable.h"
#include "math/kernels/impl/BlendingPaths.h"
#include "math/kernels/impl/StridedOutput.h"

namespace Lux {
namespace Math {

namespace {

// (x, y, z, 1)·m without the fourth column, each sum from left to right.
struct Point {
  float x, y, z;
};

inline Point transformPoint(const Point& p, const zeMatrix44f& m) {
  return {p.x * m(0, 0) + p.y * m(1, 0) + p.z * m(2, 0) + m(3, 0),
          p.x * m(0, 1) + p.y * m(1, 1) + p.z * m(2, 1) + m(3, 1),
          p.x * m(0, 2) + p.y * m(1, 2) + p.z * m(2, 2) + m(3, 2)};
}

// Only x, y, z of a source vertex are read; its w counts as 1.
inline Point sourcePoint(const zeVec4f& v) { return {v.x, v.y, v.z}; }

}  // namespace

namespace impl {

void blendScalar(const zeVec4f* source, unsigned int count, const float* weights, const unsigned char* indices,
                 unsigned int weightsPerVertex, const zeMatrix44f* matrices, zeVec3f* destination,
                 unsigned int destinationStride) {
  if (count == 0) return;
  impl::StridedOutput out(destination, destinationStride);
  for (unsigned int i = 0; i < count; ++i) {
    // The source is read before the output is written, so the destination
    // may overlay the source.
    const Point p = sourcePoint(source[i]);
    Point sum = {0.0f, 0.0f, 0.0f};
    for (unsigned int k = 0; k < weightsPerVertex; ++k, ++weights, ++indices) {
      const float w = *weights;
      // Strictly above the threshold; a skipped influence never reads its matrix.
      if (!(w > zeBlendWeightThreshold)) continue;
      const Point q = transformPoint(p, matrices[*indices]);
      sum.x = sum.x + q.x * w;
      sum.y = sum.y + q.y * w;
      sum.z = sum.z + q.z * w;
    }
    out.write(sum.x, sum.y, sum.z);
    out.next();
  }
}

void blendOneWeightScalar(const zeVec4f* source, unsigned int count, const float* /*weights*/,
                          const unsigned char* indices, unsigned int weightsPerVertex, const zeMatrix44f* matrices,
                          zeVec3f* destination, unsigned int destinationStride) {
  if (count == 0) return;
  impl::StridedOutput out(destination, destinationStride);
  for (unsigned int i = 0; i < count; ++i, indices += weightsPerVertex) {
    const Point q = transformPoint(sourcePoint(source[i]), matrices[*indices]);
    out.write(q.x, q.y, q.z);
    out.next();
  }
}

namespace {

// The vector paths take raw memory: zeVec4f and zeMatrix44f are plain floats.
const float* raw(const zeVec4f* v) { return reinterpret_cast<const float*>(v); }
const float* raw(const zeMatrix44f* m) { return reinterpret_cast<const float*>(m); }
unsigned char* raw(zeVec3f* v) { return reinterpret_cast<unsigned char*>(v); }

/// An instruction set's weighted kernel behind the kernel's arguments.
template <const RawKernels& kIsa>
void weighted(const zeVec4f* source, unsigned int count, const float* weights, const unsigned char* indices,
              unsigned int weightsPerVertex, const zeMatrix44f* matrices, zeVec3f* destination,
              unsigned int destinationStride) {
  kIsa.blend(raw(source), count, weights, indices, weightsPerVertex, raw(matrices), raw(destination),
             destinationStride);
}

/// An instruction set's one-weight kernel behind the kernel's arguments; it
/// reads no weight.
template <const RawKernels& kIsa>
void oneWeight(const zeVec4f* source, unsigned int count, const float* /*weights*/, const unsigned char* indices,
               unsigned int weightsPerVertex, const zeMatrix44f* matrices, zeVec3f* destination,
               unsigned int destinationStride) {
  kIsa.blendOneWeight(raw(source), count, nullptr, indices, weightsPerVertex, raw(matrices), raw(destination),
                      destinationStride);
}

template <const RawKernels& kIsa>
constexpr BlendPath vectorPath(const char* name, ZE_MATH_INSTRUCTION_SET level) {
  return {{&weighted<kIsa>, &oneWeight<kIsa>}, name, level};
}

constexpr BlendPath kPaths[] = {
    {{&blendScalar, &blendOneWeightScalar}, "scalar", ZE_MATH_INSTRUCTION_SET_SCALAR},
    vectorPath<kSse2Kernels>("sse2", ZE_MATH_INSTRUCTION_SET_SSE2),
    vectorPath<kAvx2Kernels>("avx2", ZE_MATH_INSTRUCTION_SET_AVX2),
    vectorPath<kAvx512Kernels>("avx512", ZE_MATH_INSTRUCTION_SET_AVX512),
};

const PathTable<BlendKernels> kTable(kPaths);

// Outputs that share bytes with an input take the scalar loop.
bool outputsOverlapInputs(const zeVec4f* source, unsigned int count, const float* weights, const unsigned char* indices,
                          unsigned int weightsPerVertex, const zeVec3f* destination, unsigned int destinationStride) {
  const std::size_t n = count;
  const std::size_t outBytes = (n - 1) * destinationStride + sizeof(zeVec3f);
  const std::size_t influences = n * weightsPerVertex;
  return bytesOverlap(destination, outBytes, source, n * sizeof(zeVec4f)) ||
         (weights && bytesOverlap(destination, outBytes, weights, influences * sizeof(float))) ||
         bytesOverlap(destination, outBytes, indices, influences);
}

}  // namespace

const PathTable<BlendKernels>& blendPaths() noexcept { return kTable; }

}  // namespace impl

// The published kernels run the path the table chooses; every path yields
// the scalar loop's bits.
void indexedBlendAligned4Vectors(const zeVec4f* source, unsigned int count, const float* weights,
                                 const unsigned char* indices, unsigned int weightsPerVertex,
                                 const zeMatrix44f* matrices, zeVec3f* destination, unsigned int destinationStride) {
  if (count == 0) return;
  const bool shared =
      impl::outputsOverlapInputs(source, count, weights, indices, weightsPerVertex, destination, destinationStride);
  impl::kTable.pathFor(shared).weighted(source, count, weights, indices, weightsPerVertex, matrices, destination,
                                        destinationStride);
}

void indexedBlendAligned4VectorsOneWeight(const zeVec4f* source, unsigned int count, const float* weights,
                                          const unsigned char* indices, unsigned int weightsPerVertex,
                                          const zeMatrix44f* matrices, zeVec3f* destination,
                                          unsigned int destinationStride) {
  if (count == 0) return;
  const bool shared =
      impl::outputsOverlapInputs(source, count, nullptr, indices, weightsPerVertex, destination, destinationStride);
  impl::kTable.pathFor(shared).oneWeight(source, count, weights, indices, weightsPerVertex, matrices, destination,
                                         destinationStride);
}

}  // namespace Math
}  // namespace Lux
