// The SSE2 array transforms: four floats or two doubles per vector.

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/ArrayTransformRawPaths.h"
#include "math/impl/lanes/Sse2Lanes.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// Registers of one 128-bit part: the loops split blocks with shuffles.
struct Sse2f : Sse2Float {
  static constexpr bool kPermutesAcross = false;
};
struct Sse2d : Sse2Double {
  static constexpr bool kPermutesAcross = false;
};

}  // namespace

unsigned int transformVectors3fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectorsLoop<Sse2f, 3>(m, src, dst, count);
}
unsigned int transformPoints3fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return points3Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformVectors4fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectorsLoop<Sse2f, 4>(m, src, dst, count);
}
unsigned int transformPoints4fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return points4Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformVectors3dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectorsLoop<Sse2d, 3>(m, src, dst, count);
}
unsigned int transformPoints3dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return points3Loop<Sse2d>(m, src, dst, count);
}
unsigned int transformVectors4dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectorsLoop<Sse2d, 4>(m, src, dst, count);
}
unsigned int transformPoints4dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return points4Loop<Sse2d>(m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
