#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;
class zeMatrix44f;

/// Transforms the volume by m.
typedef void (*zeTransformFunction)(zeVolume* volume, const zeMatrix44f& m);

/// Dispatch table of transforms, one entry per volume type.
class ZEMATH_API zeTransformFunctionList : public zeTDataList<zeTransformFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeTransformFunctionList, zeTransformFunction)
};

}  // namespace Math
}  // namespace Lux
