#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeMatrix44fMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeMatrix44f values in a row; each prints and parses as
/// a zeMatrix44fMetaField value.
class ZEMATH_API zeMatrix44fArrayMetaField : public impl::ArrayMetaField<zeMatrix44fMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeMatrix44fArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
