#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeMatrix44fList.h"

namespace Lux {
namespace Math {

/// List of counted references to zeMatrix44fList objects.
class ZEMATH_API zeMatrix44fListList : public zeTObjectList<zeMatrix44fList> {
  ZE_MATH_DECLARE_CLASS(zeMatrix44fListList)
};

}  // namespace Math
}  // namespace Lux
