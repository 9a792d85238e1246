#pragma once

#include "core/LuxCoreExport.h"

namespace Lux {

/// Enum descriptor: the name of an enum type and its constants (name and
/// value) in order. Descriptors live until the core is unloaded.
class LUXCORE_API zeMetaEnum {
 public:
  /// A new descriptor holding copies of `name` and the `count` constant
  /// names and values; null when a name is missing, `count` is negative or
  /// memory runs out. A count of 0 gives an enum without constants.
  static zeMetaEnum* createMetaEnum(const char* name, const char* const* names, int* values, int count);

  /// The first descriptor made with that name, or null.
  static zeMetaEnum* find(const char* name);

  /// Frees every descriptor; the core does this when it is unloaded.
  static void destroyAll();

  zeMetaEnum(const zeMetaEnum&) = delete;
  zeMetaEnum& operator=(const zeMetaEnum&) = delete;

  /// The enum type's name.
  const char* getName() const { return _name; }
  /// Number of constants.
  int getCount() const { return _count; }
  /// Name of constant `i`, or null out of range.
  const char* getValueName(int i) const { return i >= 0 && i < _count ? _names[i] : nullptr; }
  /// Value of constant `i`, or 0 out of range.
  int getValue(int i) const { return i >= 0 && i < _count ? _values[i] : 0; }
  /// Index of the constant called `name`, or -1.
  int findName(const char* name) const;
  /// Index of the first constant with `value`, or -1.
  int findValue(int value) const;
  /// Name of the first constant with `value`, or null.
  const char* getNameOfValue(int value) const { return getValueName(findValue(value)); }

 private:
  zeMetaEnum() = default;
  ~zeMetaEnum() = default;

  const char* _name = nullptr;
  const char** _names = nullptr;
  int* _values = nullptr;
  int _count = 0;
  zeMetaEnum* _next = nullptr;  // the list of all descriptors
};

}  // namespace Lux
