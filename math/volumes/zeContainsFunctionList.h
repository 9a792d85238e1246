#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"
#include "math/zeMathEnums.h"

namespace Lux {
namespace Math {

class zeVolume;

/// How much of volume b lies inside volume a.
typedef ZE_MATH_CONTAINMENT_RESULTS (*zeContainsFunction)(const zeVolume* a, const zeVolume* b);

/// Dispatch table of containment tests, one entry per ordered pair of volume types.
class ZEMATH_API zeContainsFunctionList : public zeTDataList<zeContainsFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeContainsFunctionList, zeContainsFunction)
};

}  // namespace Math
}  // namespace Lux
