#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec4fList.h"

namespace Lux {
namespace Math {

/// List of counted references to zeVec4fList objects.
class ZEMATH_API zeVec4fListList : public zeTObjectList<zeVec4fList> {
  ZE_MATH_DECLARE_CLASS(zeVec4fListList)
};

}  // namespace Math
}  // namespace Lux
