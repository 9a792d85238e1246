#pragma once

/// \file
/// Enum descriptors of the library's namespace-level enums, made on first
/// request and kept for the life of the process.

#include "core/zeMetaEnum.h"
#include "math/ZEMathExport.h"

namespace Lux {
namespace Math {

/// Cached descriptor of ZE_MATH_CONTAINMENT_RESULTS; each cached descriptor
/// is null until its getter first runs.
ZEMATH_API extern zeMetaEnum* ZE_MATH_CONTAINMENT_RESULTS_Meta;
/// Cached descriptor of ZE_MATH_SPATIAL_REGION.
ZEMATH_API extern zeMetaEnum* ZE_MATH_SPATIAL_REGION_Meta;
/// Cached descriptor of ZE_MATH_PLANAR_REGION.
ZEMATH_API extern zeMetaEnum* ZE_MATH_PLANAR_REGION_Meta;
/// Cached descriptor of ZE_MATH_COLORSPACE_FORMAT.
ZEMATH_API extern zeMetaEnum* ZE_MATH_COLORSPACE_FORMAT_Meta;
/// Cached descriptor of ZE_MATH_MATRIX_DECOMPOSITION.
ZEMATH_API extern zeMetaEnum* ZE_MATH_MATRIX_DECOMPOSITION_Meta;

/// Descriptor of ZE_MATH_CONTAINMENT_RESULTS (3 constants).
ZEMATH_API zeMetaEnum* getZE_MATH_CONTAINMENT_RESULTSMetaEnum();
/// Descriptor of ZE_MATH_SPATIAL_REGION (8 constants).
ZEMATH_API zeMetaEnum* getZE_MATH_SPATIAL_REGIONMetaEnum();
/// Descriptor of ZE_MATH_PLANAR_REGION (4 constants).
ZEMATH_API zeMetaEnum* getZE_MATH_PLANAR_REGIONMetaEnum();
/// Descriptor of ZE_MATH_COLORSPACE_FORMAT (7 constants).
ZEMATH_API zeMetaEnum* getZE_MATH_COLORSPACE_FORMATMetaEnum();
/// Descriptor of ZE_MATH_MATRIX_DECOMPOSITION (12 constants).
ZEMATH_API zeMetaEnum* getZE_MATH_MATRIX_DECOMPOSITIONMetaEnum();

}  // namespace Math
}  // namespace Lux
