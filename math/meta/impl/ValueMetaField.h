#pragma once

/// \file
/// What the field types of the vector and matrix values share. A value of
/// type V is a row of components of type C (float, double or unsigned char)
/// and nothing else, so its size, its parse parameters and the width of its
/// byte swap all follow from V and C. What is left to each concrete field
/// class F is its alignment (a template argument) and its print format
/// (`F::kFormat`, one conversion per component in memory order).

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <type_traits>
#include <utility>

#include "core/zeDoubleMetaField.h"
#include "core/zeFloatMetaField.h"
#include "core/zeInternalStringPool.h"
#include "core/zeMetaField.h"
#include "math/ZEMathExport.h"
#include "math/meta/zeConvertStringToArray.h"
#include "math/meta/zeMathClassRegistration.h"

namespace Lux {
namespace Math {
namespace impl {

/// The core field type whose byte swap serves components of type C; void
/// for bytes, which have no byte order.
template <class C>
struct ComponentWordField {
  using Type = void;  ///< no field type: bytes are not swapped
};
/// Float components swap as the core's float fields do.
template <>
struct ComponentWordField<float> {
  using Type = zeFloatMetaField;  ///< the core's float field type
};
/// Double components swap as the core's double fields do.
template <>
struct ComponentWordField<double> {
  using Type = zeDoubleMetaField;  ///< the core's double field type
};

/// Base of field type F, whose values V are rows of components C and want
/// memory aligned to Alignment.
template <class F, class V, class C, unsigned int Alignment>
class ZEMATH_API ValueMetaField : public zeMetaField {
  static_assert(sizeof(V) % sizeof(C) == 0, "a value is a row of components");

 public:
  using ValueType = V;      ///< The value type of the field.
  using ComponentType = C;  ///< The type of one component of a value.
  /// Components per value (16 for a matrix).
  static constexpr int kComponents = static_cast<int>(sizeof(V) / sizeof(C));
  /// Whether the components parse as floating-point numbers.
  static constexpr bool kFloating = std::is_floating_point_v<C>;

  /// Makes a copy of `value` the field's default.
  void setDefault(const V& value) { setDefaultMemory(&value); }

  /// The bytes of one value.
  unsigned int computeSize() override { return static_cast<unsigned int>(sizeof(V)); }
  /// The alignment of the type's table, not the one its size suggests.
  unsigned int computeRequiredAlignment() override { return Alignment; }
  /// Reverses the byte order of every component of `count` consecutive
  /// values; the words per value come from this descriptor's stored size.
  void endianSwapMemory(void* memory, int count) const override;
  /// Parses one value (kComponents numbers); characters consumed, 0 on
  /// failure, when leading components may already be written.
  int setMemoryByString(void* memory, const char* text, const zeDirectory* directory) override;
  /// One value printed with F::kFormat, as pooled text carrying one
  /// reference for the caller.
  const char* getStringFromMemory(const void* memory, const zeDirectory* directory) override;

 private:
  /// Floats print widened to double, bytes widened to unsigned int.
  using Printed = std::conditional_t<kFloating, double, unsigned int>;
  /// Long enough for sixteen floats of the largest magnitude in "%f".
  static constexpr std::size_t kTextBytes = 1024;

  template <std::size_t... I>
  static void format(char (&text)[kTextBytes], const C (&components)[kComponents], std::index_sequence<I...>) {
    std::snprintf(text, kTextBytes, F::kFormat, static_cast<Printed>(components[I])...);
  }
};

template <class F, class V, class C, unsigned int Alignment>
void ValueMetaField<F, V, C, Alignment>::endianSwapMemory(void* memory, int count) const {
  using WordField = typename ComponentWordField<C>::Type;
  if constexpr (std::is_void_v<WordField>) {
    zeMetaField::endianSwapMemory(memory, count);  // the core's: bytes stay as they are
  } else {
    if (!WordField::_MetaField) WordField::bayRegister();
    if (!WordField::_MetaField) return;
    const int wordsPerValue = static_cast<int>(getSize() / sizeof(C));
    WordField::_MetaField->endianSwapMemory(memory, count * wordsPerValue);
  }
}

template <class F, class V, class C, unsigned int Alignment>
int ValueMetaField<F, V, C, Alignment>::setMemoryByString(void* memory, const char* text, const zeDirectory*) {
  return zeConvertStringToArray(text, memory, kComponents, static_cast<int>(sizeof(C)), kFloating);
}

template <class F, class V, class C, unsigned int Alignment>
const char* ValueMetaField<F, V, C, Alignment>::getStringFromMemory(const void* memory, const zeDirectory*) {
  if (!memory) return nullptr;
  C components[kComponents];
  std::memcpy(components, memory, sizeof components);
  char text[kTextBytes];
  format(text, components, std::make_index_sequence<kComponents>());
  zeInternalStringPool* pool = zeInternalStringPool::getDefault();
  return pool ? pool->setString(text) : nullptr;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux

/// Registration of a vector or matrix field class C: a field type derived
/// directly from zeMetaField that declares no fields of its own.
#define ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(C)                                            \
  static_assert(sizeof(C) == sizeof(::Lux::zeMetaField), #C " adds no data to its base"); \
  ZE_MATH_IMPLEMENT_FIELD_CLASS(C, ::Lux::zeMetaField, nullptr)
