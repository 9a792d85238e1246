// The vector paths built for AVX2; the families run them only where AVX2 is
// detected.

#include "math/impl/lanes/Avx2Lanes.h"
#include "math/isa/IsaUnit.h"
#include "math/kernels/impl/BlendLoop.h"

namespace Lux {
namespace Math {
namespace impl {

const RawKernels kAvx2Kernels =
    rawKernels<Avx2Float, Avx2Float, Avx2Double>(&blendLoop<Avx2Float, false>, &blendLoop<Avx2Float, true>);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
