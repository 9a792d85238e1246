#pragma once

/// \file
/// What each instruction-set unit (math/isa/) builds: the raw kernels of
/// every family of vector paths for its instruction set. The families' path
/// tables put typed adapters around them. Declared without the library's
/// types so that the units, built for wider instructions, include nothing
/// else of the library.

#include "math/impl/ArrayTransformRawPaths.h"
#include "math/kernels/impl/BlendRawPaths.h"
#include "math/kernels/impl/MorphRawPaths.h"
#include "math/volumes/impl/CullRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {

/// The raw kernels of one instruction set, family by family.
struct RawKernels {
  RawBlend blend;
  RawBlend blendOneWeight;
  MorphPass morphPass;
  RawTransform<float> vectors3f, points3f, vectors4f, points4f;
  RawTransform<double> vectors3d, points3d, vectors4d, points4d;
  RawCull cullBoxes, cullSpheres;
};

/// SSE2: four floats or two doubles per register; every x86-64 processor.
extern const RawKernels kSse2Kernels;
/// AVX2: eight floats or four doubles; called only where AVX2 is detected.
extern const RawKernels kAvx2Kernels;
/// AVX-512: sixteen floats or eight doubles; called only where AVX-512 is detected.
extern const RawKernels kAvx512Kernels;

}  // namespace impl
}  // namespace Math
}  // namespace Lux
