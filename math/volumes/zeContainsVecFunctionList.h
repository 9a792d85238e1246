#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"
#include "math/zeMathEnums.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeVec3f;

/// Whether the point lies inside the volume (ALL) or not (NONE).
typedef ZE_MATH_CONTAINMENT_RESULTS (*zeContainsVecFunction)(const zeVolume* volume, const zeVec3f& point);

/// Dispatch table of point containment tests, one entry per volume type.
class ZEMATH_API zeContainsVecFunctionList : public zeTDataList<zeContainsVecFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeContainsVecFunctionList, zeContainsVecFunction)
};

}  // namespace Math
}  // namespace Lux
