#include "math/kernels/zeVectorMorphingKernels.h"

#include <cstddef>

#include "math/impl/IsaRawPaths.h"
#include "math/impl/PathTable.h"
#include "math/kernels/impl/MorphingPaths.h"
#include "math/kernels/impl/StridedOutput.h"

namespace Lux {
namespace Math {
namespace impl {

void morphScalar(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                 unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride) {
  if (count == 0) return;
  impl::StridedOutput out(destination, destinationStride);
  for (unsigned int i = 0; i < count; ++i) {
    float x = base[i].x, y = base[i].y, z = base[i].z;
    // No threshold: a zero weight still adds (a zero, or a NaN for an
    // infinite target component).
    for (unsigned int t = 0; t < targetCount; ++t) {
      const zeVec3f& d = targets[t][i];
      const float w = weights[t];
      x = x + d.x * w;
      y = y + d.y * w;
      z = z + d.z * w;
    }
    out.write(x, y, z);
    out.next();
  }
}

namespace {

// A vector path adds the targets in passes of at most kMorphPassTargets,
// each pass given its own copy of the target addresses. The first pass
// starts from the base; each later one from the sums so far, which it reads
// back from the outputs. A float stored and read back is the same float, so
// the passes add in exactly the scalar order.
void morphInPasses(MorphPass pass, const zeVec3f* base, const zeVec3f** targets, const float* weights,
                   unsigned int count, unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride) {
  if (count == 0) return;
  const unsigned char* from = reinterpret_cast<const unsigned char*>(base);
  unsigned int fromStride = sizeof(zeVec3f);
  unsigned char* out = reinterpret_cast<unsigned char*>(destination);
  unsigned int done = 0;
  do {
    const unsigned int n = targetCount - done < kMorphPassTargets ? targetCount - done : kMorphPassTargets;
    const float* passTargets[kMorphPassTargets];
    for (unsigned int k = 0; k < n; ++k) passTargets[k] = reinterpret_cast<const float*>(targets[done + k]);
    pass(from, fromStride, passTargets, weights + done, n, count, out, destinationStride);
    from = out;
    fromStride = destinationStride;
    done += n;
  } while (done < targetCount);
}

/// An instruction set's morphing pass behind the kernel's arguments.
template <const RawKernels& kIsa>
void morphOn(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
             unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride) {
  morphInPasses(kIsa.morphPass, base, targets, weights, count, targetCount, destination, destinationStride);
}

constexpr MorphPath kPaths[] = {
    {{&morphScalar}, "scalar", ZE_MATH_INSTRUCTION_SET_SCALAR},
    {{&morphOn<kSse2Kernels>}, "sse2", ZE_MATH_INSTRUCTION_SET_SSE2},
    {{&morphOn<kAvx2Kernels>}, "avx2", ZE_MATH_INSTRUCTION_SET_AVX2},
    {{&morphOn<kAvx512Kernels>}, "avx512", ZE_MATH_INSTRUCTION_SET_AVX512},
};

const PathTable<MorphKernels> kTable(kPaths);

// The vector paths read a block of vectors, and the weights and target
// addresses once, before writing; the scalar loop reads each of them just
// before it is used. When the outputs share bytes with an input the two
// could differ, so the scalar loop serves that case. Writing each output over
// its own base vector (the destination is the base, packed) is the one
// overlap they share: every block reads its base before writing it. Outputs
// closer than 12 bytes overlay one another, which later passes would read
// back; the scalar loop serves those too.
bool outputsShareBytes(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                       unsigned int targetCount, const zeVec3f* destination, unsigned int destinationStride) {
  if (count > 1 && destinationStride < sizeof(zeVec3f)) return true;
  const std::size_t n = count;
  const std::size_t outBytes = (n - 1) * destinationStride + sizeof(zeVec3f);
  const std::size_t vectorBytes = n * sizeof(zeVec3f);
  const bool inPlace = destination == base && destinationStride == sizeof(zeVec3f);
  if (!inPlace && bytesOverlap(destination, outBytes, base, vectorBytes)) return true;
  if (bytesOverlap(destination, outBytes, targets, targetCount * sizeof(*targets))) return true;
  if (bytesOverlap(destination, outBytes, weights, targetCount * sizeof(*weights))) return true;
  for (unsigned int t = 0; t < targetCount; ++t)
    if (bytesOverlap(destination, outBytes, targets[t], vectorBytes)) return true;
  return false;
}

}  // namespace

const PathTable<MorphKernels>& morphPaths() noexcept { return kTable; }

}  // namespace impl

// The published kernel runs the path the table chooses; every path yields
// the scalar loop's bits.
void morphNonAligned(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                     unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride) {
  if (count == 0) return;
  const bool shared =
      impl::outputsShareBytes(base, targets, weights, count, targetCount, destination, destinationStride);
  impl::kTable.pathFor(shared).function(base, targets, weights, count, targetCount, destination, destinationStride);
}

}  // namespace Math
}  // namespace Lux
