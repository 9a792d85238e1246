#pragma once

#include "core/zeObject.h"
#include "math/kernels/zeVectorMorphingKernels.h"
#include "math/meta/zeMathClassRegistration.h"

namespace Lux {
namespace Math {

/// Publishes the morphing kernel: the engine calls whatever kernel the two
/// pointers hold, and may install its own. A registered class without fields.
class ZEMATH_API zeVectorMorphing : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeVectorMorphing)

 public:
  /// A kernel with the arguments of morphNonAligned.
  typedef void (*MorphingFunction)(const zeVec3f* base, const zeVec3f** targets, const float* weights,
                                   unsigned int count, unsigned int targetCount, zeVec3f* destination,
                                   unsigned int destinationStride);

  /// The morphing kernel; morphNonAligned once the class has registered.
  static MorphingFunction _vectorMorphingFunction;
  /// The kernel for aligned data; also morphNonAligned once the class has registered.
  static MorphingFunction _vectorMorphingAlignedFunction;

  /// Installs morphNonAligned in both pointers.
  static void userRegister();
  /// Registration: userRegister().
  static void bayRegisterUser();
};

}  // namespace Math
}  // namespace Lux
