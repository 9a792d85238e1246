#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec2fMetaField.h"
#include "math/zeVec2f.h"

namespace Lux {
namespace Math {

/// Growable list of two-component float vectors; "_data" holds zeVec2fMetaField elements.
class ZEMATH_API zeVec2fList : public zeTDataNoOperatorList<zeVec2f> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeVec2fList)
};

}  // namespace Math
}  // namespace Lux
