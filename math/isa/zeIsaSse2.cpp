// The vector paths built for SSE2, which every x86-64 processor has.

#include "math/impl/lanes/Sse2Lanes.h"
#include "math/isa/IsaUnit.h"
#include "math/kernels/impl/BlendLoop.h"

namespace Lux {
namespace Math {
namespace impl {

const RawKernels kSse2Kernels =
    rawKernels<Sse2Float, Sse2Float, Sse2Double>(&blendLoop<Sse2Float, false>, &blendLoop<Sse2Float, true>);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
