#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec2fMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec2f values in a row; each prints and parses as
/// a zeVec2fMetaField value.
class ZEMATH_API zeVec2fArrayMetaField : public impl::ArrayMetaField<zeVec2fMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec2fArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
