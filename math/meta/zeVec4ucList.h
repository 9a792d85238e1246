#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec4ucMetaField.h"
#include "math/zeVec4uc.h"

namespace Lux {
namespace Math {

/// Growable list of four-channel byte colours; "_data" holds zeVec4ucMetaField elements.
class ZEMATH_API zeVec4ucList : public zeTDataNoOperatorList<zeVec4uc> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeVec4ucList)
};

}  // namespace Math
}  // namespace Lux
