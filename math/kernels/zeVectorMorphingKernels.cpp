#include "math/kernels/zeVectorMorphingKernels.h"

#include "math/kernels/impl/StridedOutput.h"

namespace Lux {
namespace Math {

void morphNonAligned(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
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

}  // namespace Math
}  // namespace Lux
