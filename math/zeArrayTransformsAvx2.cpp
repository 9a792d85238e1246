// The AVX2 array transforms: eight floats or four doubles per vector. This
// file alone is built for AVX2 and includes nothing of the library but its
// lanes and the raw loops, so no shared inline function is ever emitted with
// AVX2 instructions.

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/ArrayTransformRawPaths.h"
#include "math/impl/lanes/Avx2Lanes.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The loops move a register as two 128-bit halves and shuffle within them.
struct Avx2f : Avx2Float {
  static constexpr bool kPermutesAcross = false;
};
struct Avx2d : Avx2Double {
  static constexpr bool kPermutesAcross = false;
};

}  // namespace

unsigned int transformVectors3fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectorsLoop<Avx2f, 3>(m, src, dst, count);
}
unsigned int transformPoints3fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return points3Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformVectors4fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectorsLoop<Avx2f, 4>(m, src, dst, count);
}
unsigned int transformPoints4fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return points4Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformVectors3dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectorsLoop<Avx2d, 3>(m, src, dst, count);
}
unsigned int transformPoints3dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return points3Loop<Avx2d>(m, src, dst, count);
}
unsigned int transformVectors4dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectorsLoop<Avx2d, 4>(m, src, dst, count);
}
unsigned int transformPoints4dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return points4Loop<Avx2d>(m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
