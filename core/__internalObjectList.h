#pragma once

#include "core/zeClassRegistration.h"

namespace Lux {

/// The core's own list of counted object references: what a registration
/// returns, and the global list of shared field-type instances. Its storage
/// comes from the default pool.
class LUXCORE_API __internalObjectList : public zeObject {
  ZE_DECLARE_CLASS(LUXCORE_API, __internalObjectList)

 public:
  /// Appends `object`, adding a reference; null is appended as null.
  /// False when memory runs out.
  bool append(zeObject* object);
  /// Number of elements.
  int getCount() const { return _count; }
  /// Element `i`, or null out of range.
  zeObject* get(int i) const { return i >= 0 && i < _count ? _items[i] : nullptr; }
  /// Releases every element and empties the list.
  void clear();

  void userDestruct() override;

 private:
  int _count;
  int _capacity;
  zeObject** _items;
};

}  // namespace Lux
