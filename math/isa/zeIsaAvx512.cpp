// The vector paths built for AVX-512 (F, VL, BW, DQ); the families run them
// only where all four are detected.

// GCC 12's AVX-512 intrinsics seed their vectors from themselves, which
// trips its own uninitialised-use warnings inside the system header.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif

#include "math/impl/ArrayTransformAvx512Loop.h"
#include "math/impl/lanes/Avx512Lanes.h"
#include "math/isa/IsaUnit.h"
#include "math/kernels/impl/BlendAvx512Loop.h"

namespace Lux {
namespace Math {
namespace impl {

const RawKernels kAvx512Kernels = rawKernels<Avx512Float, Avx512Blocks<Avx512Float>, Avx512Blocks<Avx512Double>>(
    &blendAvx512::blend<false>, &blendAvx512::blend<true>);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
