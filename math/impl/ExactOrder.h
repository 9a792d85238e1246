#pragma once

/// \file
/// Keeps the inline floating-point code of the public headers in its written
/// order in the translation units of the library's users.
///
/// A public header with inline floating-point code includes this header and
/// encloses everything after its own includes between
/// ZEMATH_EXACT_ORDER_BEGIN and ZEMATH_EXACT_ORDER_END:
///
///     #include "math/impl/ExactOrder.h"
///
///     ZEMATH_EXACT_ORDER_BEGIN
///     namespace Lux { ... }
///     ZEMATH_EXACT_ORDER_END
///
/// clang then compiles that code without contracting a multiply and an add
/// into one fused instruction, whatever the contraction of the file that
/// includes the header (its default fuses within an expression), and the
/// functions still inline into their callers. clang ignores the pragmas under
/// an explicit -ffp-contract=fast. g++ has no scoped form that keeps a
/// function inlinable (its optimize pragma turns such functions into calls):
/// it relies on the -ffp-contract=off that the installed package passes.
/// zeCheckExactResults() (math/zeExactResults.h) tells, in the user's own
/// build, whether these inline operations give the library's bits.

#if defined(__clang__)
/// Opens a region whose floating-point code keeps its written order.
#define ZEMATH_EXACT_ORDER_BEGIN _Pragma("float_control(push)") _Pragma("clang fp contract(off)")
/// Closes the region that ZEMATH_EXACT_ORDER_BEGIN opened.
#define ZEMATH_EXACT_ORDER_END _Pragma("float_control(pop)")
#else
/// Opens a region whose floating-point code keeps its written order.
#define ZEMATH_EXACT_ORDER_BEGIN
/// Closes the region that ZEMATH_EXACT_ORDER_BEGIN opened.
#define ZEMATH_EXACT_ORDER_END
#endif

// Fast-math lets the compiler reorder, fuse and approximate anything; no
// pragma of either compiler undoes it for the inline operations.
#if defined(__FAST_MATH__) && !defined(ZEMATH_ALLOW_FAST_MATH)
#pragma GCC warning \
    "ZEMath: -ffast-math changes the results of the inline operations (define ZEMATH_ALLOW_FAST_MATH to accept that)"
#endif
