#pragma once

/// \file
/// The text parser behind every vector and matrix field.

#include "math/ZEMathExport.h"

namespace Lux {
namespace Math {

/// Parses `count` numbers from `text` into consecutive elements of
/// `elementBytes` bytes at `destination`; returns the characters consumed,
/// 0 on failure.
///
/// The numbers may be enclosed in one pair of (), [], {} or <>, in which
/// case exactly `count` of them must stand inside. They are separated by
/// commas when a comma follows the first one, otherwise by blanks or by
/// nothing at all ("1-2-3" is three numbers). Floating mode (`floating`)
/// accepts decimals with an optional point and exponent and stores float
/// (4 bytes) or double (8 bytes); integer mode accepts optionally negative
/// digit runs and stores the low 1, 2, 4 bytes of the int or the int
/// sign-extended to 8 bytes. A sign "+", "nan", "inf" or a token of more
/// than 511 characters fails. Text after the last number (or the closer) is
/// left alone; elements stored before a failure stay stored.
ZEMATH_API int zeConvertStringToArray(const char* text, void* destination, int count, int elementBytes, bool floating);

}  // namespace Math
}  // namespace Lux
