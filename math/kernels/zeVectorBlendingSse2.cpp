// The SSE2 skinning path: four vertices per vector.

#include "math/impl/lanes/Sse2Lanes.h"
#include "math/kernels/impl/BlendLoop.h"
#include "math/kernels/impl/BlendRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The skinning loop's own part: group g is the four floats of lane g.
struct Sse2 : Sse2Float {
  static F loadGroup(const float* const* p, int g) { return load(p[g]); }
  static void storeGroups(const F r[4], float (*lanes)[4]) {
    for (int g = 0; g < 4; ++g) store(lanes[g], r[g]);
  }
};

}  // namespace

void blendRawSse2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  blendLoop<Sse2, false>(source, count, weights, indices, weightsPerVertex, matrices, out, stride);
}

void blendOneWeightRawSse2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride) {
  blendLoop<Sse2, true>(source, count, nullptr, indices, weightsPerVertex, matrices, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
