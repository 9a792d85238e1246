// The AVX2 skinning path: eight vertices per vector. This file alone is
// built for AVX2 and includes nothing of the library but its lanes and the
// raw loop, so no shared inline function is ever emitted with AVX2
// instructions.

#include "math/impl/lanes/Avx2Lanes.h"
#include "math/kernels/impl/BlendLoop.h"
#include "math/kernels/impl/BlendRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

// The skinning loop's own part: group g holds lane g in the low half and
// lane g + 4 in the high half, so the in-half transpose leaves the lanes in
// order.
struct Avx2 : Avx2Float {
  static F loadGroup(const float* const* p, int g) { return loadHalves(p[g], p[g + 4]); }
  static void storeGroups(const F r[4], float (*lanes)[4]) {
    for (int g = 0; g < 4; ++g) storeHalves(lanes[g], lanes[g + 4], r[g]);
  }
};

}  // namespace

void blendRawAvx2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  blendLoop<Avx2, false>(source, count, weights, indices, weightsPerVertex, matrices, out, stride);
}

void blendOneWeightRawAvx2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride) {
  blendLoop<Avx2, true>(source, count, nullptr, indices, weightsPerVertex, matrices, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
