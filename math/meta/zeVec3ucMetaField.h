#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec3uc.h"

namespace Lux {
namespace Math {

/// Field type of zeVec3uc: 3 bytes, aligned to 1, printed "%uc,%uc,%uc": each
/// channel as a decimal followed by the letter c, which the parser does not
/// take back. Bytes are not swapped.
class ZEMATH_API zeVec3ucMetaField : public impl::ValueMetaField<zeVec3ucMetaField, zeVec3uc, unsigned char, 1> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec3ucMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%uc,%uc,%uc";
};

}  // namespace Math
}  // namespace Lux
