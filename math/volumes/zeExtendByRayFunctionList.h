#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeRay;

/// Grows the volume to enclose the ray from its start to its end point.
typedef void (*zeExtendByRayFunction)(zeVolume* volume, const zeRay* ray);

/// Dispatch table of extensions by a ray, one entry per volume type.
class ZEMATH_API zeExtendByRayFunctionList : public zeTDataList<zeExtendByRayFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeExtendByRayFunctionList, zeExtendByRayFunction)
};

}  // namespace Math
}  // namespace Lux
