#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec4fMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec4f values in a row; each prints and parses as
/// a zeVec4fMetaField value.
class ZEMATH_API zeVec4fArrayMetaField : public impl::ArrayMetaField<zeVec4fMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec4fArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
