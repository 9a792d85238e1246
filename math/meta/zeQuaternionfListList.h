#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeQuaternionfList.h"

namespace Lux {
namespace Math {

/// List of counted references to zeQuaternionfList objects.
class ZEMATH_API zeQuaternionfListList : public zeTObjectList<zeQuaternionfList> {
  ZE_MATH_DECLARE_CLASS(zeQuaternionfListList)
};

}  // namespace Math
}  // namespace Lux
