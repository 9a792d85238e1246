#pragma once

#include "core/zeMetaField.h"

namespace Lux {

class zeMetaEnum;

/// Field of an enum type: a 32-bit value described by a zeMetaEnum, printed
/// as the constant's name (or the number when no constant has the value) and
/// parsed from a name or a number.
class LUXCORE_API zeEnumMetaField : public zeMetaField {
  ZE_DECLARE_FIELD_CLASS(LUXCORE_API, zeEnumMetaField)

 public:
  /// The enum that describes the values; null: none (numbers only).
  zeMetaEnum* getMetaEnum() const { return _metaEnum; }
  /// Sets the enum that describes the values.
  void setMetaEnum(zeMetaEnum* metaEnum) { _metaEnum = metaEnum; }
  /// Makes `value` the field's default.
  void setDefault(int value) { setDefaultMemory(&value); }

  /// 4 bytes.
  unsigned int computeSize() override;
  /// Reverses the byte order of `count` consecutive 4-byte values.
  void endianSwapMemory(void* memory, int count) const override;
  /// Parses a constant's name or a number; characters consumed, 0 on failure.
  int setMemoryByString(void* memory, const char* text, const zeDirectory* directory) override;
  /// The constant's name, or the number, as pooled text.
  const char* getStringFromMemory(const void* memory, const zeDirectory* directory) override;

  void userCopyDeep(const zeObject* source) override;
  void userCopyShallow(const zeObject* source) override;

 private:
  zeMetaEnum* _metaEnum;
};

}  // namespace Lux
