#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"
#include "math/zeMathEnums.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeRay;

/// How much of the ray lies inside the volume.
typedef ZE_MATH_CONTAINMENT_RESULTS (*zeContainsRayFunction)(const zeVolume* volume, const zeRay* ray);

/// Dispatch table of ray containment tests, one entry per volume type.
class ZEMATH_API zeContainsRayFunctionList : public zeTDataList<zeContainsRayFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeContainsRayFunctionList, zeContainsRayFunction)
};

}  // namespace Math
}  // namespace Lux
