#pragma once

/// \file
/// What every instruction-set unit of this folder shares: the table of its
/// raw kernels, built from the loops that every family writes once over a
/// lanes struct (math/impl/lanes/). Each unit is built for its instruction
/// set alone (cmake/ZEMathIsa.cmake) and includes nothing of the library but
/// its lanes, the loop headers and the raw declarations, so no inline
/// function of the library is ever emitted with wider instructions than its
/// caller may have. Everything here is local to the unit that includes it.

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/IsaRawPaths.h"
#include "math/kernels/impl/MorphLoop.h"
#include "math/volumes/impl/CullLoop.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// The kernels of one instruction set: the two skinning kernels, the
/// morphing pass on Float lanes, and the array transforms and the culling
/// passes on the lanes TransformFloat and TransformDouble. A new family adds
/// its members to RawKernels and its loops here.
template <class Float, class TransformFloat, class TransformDouble>
constexpr RawKernels rawKernels(RawBlend blend, RawBlend blendOneWeight) {
  return {blend,
          blendOneWeight,
          &morphPassLoop<Float>,
          &vectorsLoop<TransformFloat, 3>,
          &points3Loop<TransformFloat>,
          &vectorsLoop<TransformFloat, 4>,
          &points4Loop<TransformFloat>,
          &vectorsLoop<TransformDouble, 3>,
          &points3Loop<TransformDouble>,
          &vectorsLoop<TransformDouble, 4>,
          &points4Loop<TransformDouble>,
          &cullLoop<TransformFloat, CullBoxLanes>,
          &cullLoop<TransformFloat, CullSphereLanes>};
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
