#pragma once

#include "core/zeMetaField.h"

namespace Lux {

/// Field of type double: 8 bytes, printed and parsed as a decimal number.
class LUXCORE_API zeDoubleMetaField : public zeMetaField {
  ZE_DECLARE_FIELD_CLASS(LUXCORE_API, zeDoubleMetaField)

 public:
  /// Makes `value` the field's default.
  void setDefault(double value) { setDefaultMemory(&value); }

  /// 8 bytes.
  unsigned int computeSize() override;
  /// Reverses the byte order of `count` consecutive 8-byte values.
  void endianSwapMemory(void* memory, int count) const override;
  /// Parses one double; characters consumed, 0 when no number starts the text.
  int setMemoryByString(void* memory, const char* text, const zeDirectory* directory) override;
  /// The value as pooled text ("%17g"), one reference for the caller.
  const char* getStringFromMemory(const void* memory, const zeDirectory* directory) override;
};

}  // namespace Lux
