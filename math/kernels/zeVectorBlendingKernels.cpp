#include "math/kernels/zeVectorBlendingKernels.h"

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

void indexedBlendAligned4Vectors(const zeVec4f* source, unsigned int count, const float* weights,
                                 const unsigned char* indices, unsigned int weightsPerVertex,
                                 const zeMatrix44f* matrices, zeVec3f* destination, unsigned int destinationStride) {
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

void indexedBlendAligned4VectorsOneWeight(const zeVec4f* source, unsigned int count, const float* /*weights*/,
                                          const unsigned char* indices, unsigned int weightsPerVertex,
                                          const zeMatrix44f* matrices, zeVec3f* destination,
                                          unsigned int destinationStride) {
  if (count == 0) return;
  impl::StridedOutput out(destination, destinationStride);
  for (unsigned int i = 0; i < count; ++i, indices += weightsPerVertex) {
    const Point q = transformPoint(sourcePoint(source[i]), matrices[*indices]);
    out.write(q.x, q.y, q.z);
    out.next();
  }
}

}  // namespace Math
}  // namespace Lux
