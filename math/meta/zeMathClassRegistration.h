#pragma once

/// \file
/// The registration macros for classes of this library: the core's macros
/// with the library's export macro and its one-time initialisation.

#include "core/zeClassRegistration.h"
#include "math/ZEMathExport.h"
#include "math/meta/zeLibZEMathInit.h"

/// Registration statics of class C of the library.
#define ZE_MATH_DECLARE_CLASS(C) ZE_DECLARE_CLASS(ZEMATH_API, C)
/// Registration statics of field-type class C of the library.
#define ZE_MATH_DECLARE_FIELD_CLASS(C) ZE_DECLARE_FIELD_CLASS(ZEMATH_API, C)
/// The slot publishing the descriptor of reflected field NAME (`_num` gives `k_num`).
#define ZE_MATH_DECLARE_FIELD_SLOT(NAME) ZE_DECLARE_FIELD_SLOT(ZEMATH_API, NAME)

/// Definitions of the registration statics of class C of the library.
#define ZE_MATH_IMPLEMENT_CLASS(C, PARENT, INITIALIZE, USER) \
  ZE_IMPLEMENT_CLASS(C, PARENT, ::Lux::_libZEMath_Init, INITIALIZE, USER)
/// Definitions of the registration statics of abstract class C of the library.
#define ZE_MATH_IMPLEMENT_ABSTRACT_CLASS(C, PARENT, INITIALIZE, USER) \
  ZE_IMPLEMENT_ABSTRACT_CLASS(C, PARENT, ::Lux::_libZEMath_Init, INITIALIZE, USER)
/// ZE_MATH_IMPLEMENT_CLASS with further registration functions.
#define ZE_MATH_IMPLEMENT_CLASS_WITH_FURTHER(C, PARENT, INITIALIZE, USER, ...) \
  ZE_IMPLEMENT_CLASS_WITH_FURTHER(C, PARENT, ::Lux::_libZEMath_Init, INITIALIZE, USER, __VA_ARGS__)
/// Definitions of the registration statics of field-type class C of the library.
#define ZE_MATH_IMPLEMENT_FIELD_CLASS(C, PARENT, INITIALIZE) \
  ZE_IMPLEMENT_FIELD_CLASS(C, PARENT, ::Lux::_libZEMath_Init, INITIALIZE)
