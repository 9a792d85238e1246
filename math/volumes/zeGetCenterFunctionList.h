#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeVec3f;

/// Writes the centre of the volume to out.
typedef void (*zeGetCenterFunction)(const zeVolume* volume, zeVec3f& out);

/// Dispatch table of centre queries, one entry per volume type.
class ZEMATH_API zeGetCenterFunctionList : public zeTDataList<zeGetCenterFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeGetCenterFunctionList, zeGetCenterFunction)
};

}  // namespace Math
}  // namespace Lux
