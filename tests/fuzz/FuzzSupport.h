#pragma once

// What the fuzz targets share: registering the value and array field types
// once for the life of the process, and walking over them.

#include <math/ZEMath.h>

namespace zefuzz {

/// One value field type with the shared instances of it and of its array type.
struct FieldTypes {
  const char* name;
  Lux::zeMetaField* value;
  Lux::zeMetaField* array;
  unsigned int valueBytes;
  unsigned int componentBytes;  // 4 for float, 8 for double, 1 for byte channels
};

#define ZE_FUZZ_FIELD_TYPES(X)                          \
  X(zeVec2fMetaField, zeVec2fArrayMetaField, 4)         \
  X(zeVec3fMetaField, zeVec3fArrayMetaField, 4)         \
  X(zeVec4fMetaField, zeVec4fArrayMetaField, 4)         \
  X(zeVec2dMetaField, zeVec2dArrayMetaField, 8)         \
  X(zeVec3dMetaField, zeVec3dArrayMetaField, 8)         \
  X(zeVec4dMetaField, zeVec4dArrayMetaField, 8)         \
  X(zeVec3ucMetaField, zeVec3ucArrayMetaField, 1)       \
  X(zeVec4ucMetaField, zeVec4ucArrayMetaField, 1)       \
  X(zeMatrix44fMetaField, zeMatrix44fArrayMetaField, 4) \
  X(zeMatrix44dMetaField, zeMatrix44dArrayMetaField, 8)

constexpr int kFieldTypeCount = 10;

/// The field types, registered on first use.
inline const FieldTypes* fieldTypes() {
  static FieldTypes types[kFieldTypeCount];
  static bool registered = false;
  if (!registered) {
    int i = 0;
#define ZE_FUZZ_REGISTER(V, A, COMPONENT)                               \
  Lux::Math::V::bayRegister();                                          \
  Lux::Math::A::bayRegister();                                          \
  types[i++] = {#V, Lux::Math::V::_MetaField, Lux::Math::A::_MetaField, \
                static_cast<unsigned int>(sizeof(Lux::Math::V::ValueType)), COMPONENT};
    ZE_FUZZ_FIELD_TYPES(ZE_FUZZ_REGISTER)
#undef ZE_FUZZ_REGISTER
    registered = true;
  }
  return types;
}

}  // namespace zefuzz
