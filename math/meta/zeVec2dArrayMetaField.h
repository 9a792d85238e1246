#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec2dMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec2d values in a row; each prints and parses as
/// a zeVec2dMetaField value.
class ZEMATH_API zeVec2dArrayMetaField : public impl::ArrayMetaField<zeVec2dMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec2dArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
