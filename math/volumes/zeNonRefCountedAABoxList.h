#pragma once

#include "core/zeNonRefCountedObjectList.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/volumes/zeAABox.h"

namespace Lux {
namespace Math {

/// List of plain pointers to boxes, holding no references; registering it
/// registers zeAABox too.
class ZEMATH_API zeNonRefCountedAABoxList : public zeNonRefCountedObjectList {
  ZE_MATH_DECLARE_CLASS(zeNonRefCountedAABoxList)

 public:
  /// zeAABox's class descriptor.
  zeMetaObject* getElementType() const override { return zeAABox::_Meta; }

  /// Element `i`, or null out of range.
  zeAABox* get(int i) const { return static_cast<zeAABox*>(zeNonRefCountedObjectList::get(i)); }
  zeAABox* operator[](int i) const { return get(i); }  ///< Element `i`, or null out of range.
  /// Stores `box` (or null) in element `i`; kFailure out of range.
  int set(int i, zeAABox* box) { return zeNonRefCountedObjectList::set(i, box); }
};

}  // namespace Math
}  // namespace Lux
