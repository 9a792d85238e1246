#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec3ucMetaField.h"
#include "math/zeVec3uc.h"

namespace Lux {
namespace Math {

/// Growable list of three-channel byte colours; "_data" holds zeVec3ucMetaField elements.
class ZEMATH_API zeVec3ucList : public zeTDataNoOperatorList<zeVec3uc> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeVec3ucList)
};

}  // namespace Math
}  // namespace Lux
