#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec4fMetaField.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

/// Growable list of four-component float vectors; "_data" holds zeVec4fMetaField elements.
class ZEMATH_API zeVec4fList : public zeTDataNoOperatorList<zeVec4f> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeVec4fList)
};

}  // namespace Math
}  // namespace Lux
