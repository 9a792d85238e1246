#pragma once

#include "core/zeMetaField.h"

namespace Lux {

/// Field of type float: 4 bytes, printed and parsed as a decimal number.
class LUXCORE_API zeFloatMetaField : public zeMetaField {
  ZE_DECLARE_FIELD_CLASS(LUXCORE_API, zeFloatMetaField)

 public:
  /// Makes `value` the field's default.
  void setDefault(float value) { setDefaultMemory(&value); }

  /// 4 bytes.
  unsigned int computeSize() override;
  /// Reverses the byte order of `count` consecutive 4-byte values.
  void endianSwapMemory(void* memory, int count) const override;
  /// Parses one float; characters consumed, 0 when no number starts the text.
  int setMemoryByString(void* memory, const char* text, const zeDirectory* directory) override;
  /// The value as pooled text ("%9g"), one reference for the caller.
  const char* getStringFromMemory(const void* memory, const zeDirectory* directory) override;
};

}  // namespace Lux
