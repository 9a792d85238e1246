#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

/// Field type of zeVec4f: 16 bytes, aligned to 16, printed "%f,%f,%f,%f", byte-swapped
/// as float words.
class ZEMATH_API zeVec4fMetaField : public impl::ValueMetaField<zeVec4fMetaField, zeVec4f, float, 16> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec4fMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%f,%f,%f,%f";
};

}  // namespace Math
}  // namespace Lux
