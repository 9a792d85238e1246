#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeRay;

/// Whether the ray meets the volume.
typedef bool (*zeRayIntersectionFunction)(const zeVolume* volume, const zeRay* ray);

/// Dispatch table of ray intersection tests, one entry per volume type.
class ZEMATH_API zeRayIntersectionFunctionList : public zeTDataList<zeRayIntersectionFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeRayIntersectionFunctionList, zeRayIntersectionFunction)
};

}  // namespace Math
}  // namespace Lux
