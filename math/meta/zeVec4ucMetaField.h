#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec4uc.h"

namespace Lux {
namespace Math {

/// Field type of zeVec4uc: 4 bytes, aligned to 1, printed "%uc,%uc,%uc,%uc" (the
/// colour (255, 0, 128, 255) as "255c,0c,128c,255c", which the parser does
/// not take back). Bytes are not swapped.
class ZEMATH_API zeVec4ucMetaField : public impl::ValueMetaField<zeVec4ucMetaField, zeVec4uc, unsigned char, 1> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec4ucMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%uc,%uc,%uc,%uc";
};

}  // namespace Math
}  // namespace Lux
