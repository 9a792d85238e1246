#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec2f.h"

namespace Lux {
namespace Math {

/// Field type of zeVec2f: 8 bytes, aligned to 16 like every float type, printed "%f,%f",
/// byte-swapped as float words.
class ZEMATH_API zeVec2fMetaField : public impl::ValueMetaField<zeVec2fMetaField, zeVec2f, float, 16> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec2fMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%f,%f";
};

}  // namespace Math
}  // namespace Lux
