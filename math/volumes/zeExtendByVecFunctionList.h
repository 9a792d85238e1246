#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeVec3f;

/// Grows the volume to enclose the point.
typedef void (*zeExtendByVecFunction)(zeVolume* volume, const zeVec3f& point);

/// Dispatch table of extensions by a point, one entry per volume type.
class ZEMATH_API zeExtendByVecFunctionList : public zeTDataList<zeExtendByVecFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeExtendByVecFunctionList, zeExtendByVecFunction)
};

}  // namespace Math
}  // namespace Lux
