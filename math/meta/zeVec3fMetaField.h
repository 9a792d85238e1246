#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

/// Field type of zeVec3f: 12 bytes, aligned to 16 like every float type, printed
/// "%f,%f,%f", byte-swapped as float words.
class ZEMATH_API zeVec3fMetaField : public impl::ValueMetaField<zeVec3fMetaField, zeVec3f, float, 16> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec3fMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%f,%f,%f";
};

}  // namespace Math
}  // namespace Lux
