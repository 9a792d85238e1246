#pragma once

/// \file
/// Registration of the volume dispatch tables. Each table is a registered
/// list class of its own, derived from zeTDataList<F> for a plain
/// function-pointer type F. It keeps the "_data" it inherits, whose elements
/// are plain bytes: there is no field type of function pointers to retype it
/// with.

#include "core/zeDataList.h"
#include "core/zeTDataList.h"
#include "math/ZEMathExport.h"
#include "math/meta/zeMathClassRegistration.h"

/// Registration statics of dispatch table class C, whose entries have the
/// function-pointer type F (published as C::Function).
#define ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(C, F) \
  ZE_MATH_DECLARE_CLASS(C)                        \
  using Function = F;

/// Registration of dispatch table class C: a data list of 8-byte function
/// pointers adding no data of its own.
#define ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(C)                                         \
  static_assert(sizeof(C) == sizeof(::Lux::zeDataList), #C " adds no data to the list"); \
  static_assert(sizeof(C::Function) == 8, #C " holds 8-byte function pointers");         \
  ZE_MATH_IMPLEMENT_CLASS(C, ::Lux::zeDataList, nullptr, nullptr)
