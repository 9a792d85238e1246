#pragma once

#include "core/zeObject.h"
#include "math/kernels/zeVectorBlendingKernels.h"
#include "math/meta/zeMathClassRegistration.h"

namespace Lux {
namespace Math {

/// Publishes the skinning kernels: the engine calls whatever kernel the two
/// pointers hold, and may install its own. A registered class without fields.
class ZEMATH_API zeVectorBlending : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeVectorBlending)

 public:
  /// A kernel with the arguments of indexedBlendAligned4Vectors.
  typedef void (*BlendingFunction)(const zeVec4f* source, unsigned int count, const float* weights,
                                   const unsigned char* indices, unsigned int weightsPerVertex,
                                   const zeMatrix44f* matrices, zeVec3f* destination, unsigned int destinationStride);

  /// The weighted kernel; indexedBlendAligned4Vectors once the class has registered.
  static BlendingFunction _vectorBlendingFunction;
  /// The single-influence kernel; indexedBlendAligned4VectorsOneWeight once the class has registered.
  static BlendingFunction _vectorBlendingOneWeightFunction;

  /// Installs the library's two kernels in the pointers.
  static void userRegister();
  /// Registration: userRegister().
  static void bayRegisterUser();
};

}  // namespace Math
}  // namespace Lux
