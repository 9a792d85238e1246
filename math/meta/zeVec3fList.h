#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec3fMetaField.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

/// Growable list of three-component float vectors; "_data" holds zeVec3fMetaField elements.
class ZEMATH_API zeVec3fList : public zeTDataNoOperatorList<zeVec3f> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeVec3fList)
};

}  // namespace Math
}  // namespace Lux
