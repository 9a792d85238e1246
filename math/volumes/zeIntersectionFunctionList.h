#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;

/// Whether volume a intersects volume b.
typedef bool (*zeIntersectionFunction)(const zeVolume* a, const zeVolume* b);

/// Dispatch table of intersection tests, one entry per ordered pair of volume types.
class ZEMATH_API zeIntersectionFunctionList : public zeTDataList<zeIntersectionFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeIntersectionFunctionList, zeIntersectionFunction)
};

}  // namespace Math
}  // namespace Lux
