#pragma once

/// \file
/// The enum types shared by the value types, the volumes and the reflection
/// code. Every enum is unscoped with an `int` underlying type, so a field of
/// enum type can hold any 32-bit value; the routines decide what an
/// out-of-range value does.

namespace Lux {
namespace Math {

/// The eight octants of 3-space, named by the sign of each axis
/// (P positive, N negative); value = 4 (x < 0) + 2 (y < 0) + 1 (z < 0).
enum ZE_MATH_SPATIAL_REGION : int {
  ZE_MATH_SPATIAL_REGION_XP_YP_ZP = 0,
  ZE_MATH_SPATIAL_REGION_XP_YP_ZN = 1,
  ZE_MATH_SPATIAL_REGION_XP_YN_ZP = 2,
  ZE_MATH_SPATIAL_REGION_XP_YN_ZN = 3,
  ZE_MATH_SPATIAL_REGION_XN_YP_ZP = 4,
  ZE_MATH_SPATIAL_REGION_XN_YP_ZN = 5,
  ZE_MATH_SPATIAL_REGION_XN_YN_ZP = 6,
  ZE_MATH_SPATIAL_REGION_XN_YN_ZN = 7
};

/// The four quadrants of the plane; value = 2 (x < 0) + 1 (y < 0).
enum ZE_MATH_PLANAR_REGION : int {
  ZE_MATH_PLANAR_REGION_XP_YP = 0,
  ZE_MATH_PLANAR_REGION_XP_YN = 1,
  ZE_MATH_PLANAR_REGION_XN_YP = 2,
  ZE_MATH_PLANAR_REGION_XN_YN = 3
};

/// How much of a second volume lies inside a first one.
enum ZE_MATH_CONTAINMENT_RESULTS : int {
  ZE_MATH_CONTAINMENT_RESULTS_NONE = 0,     ///< nothing of the second lies inside
  ZE_MATH_CONTAINMENT_RESULTS_PARTIAL = 1,  ///< part of it does
  ZE_MATH_CONTAINMENT_RESULTS_ALL = 2       ///< all of it does
};

/// Layouts of a colour packed into a 32-bit word, and HSV.
enum ZE_MATH_COLORSPACE_FORMAT : int {
  ZE_MATH_COLORSPACE_FORMAT_ABGR = 0,
  ZE_MATH_COLORSPACE_FORMAT_RGBA = 1,
  ZE_MATH_COLORSPACE_FORMAT_ARGB = 2,
  ZE_MATH_COLORSPACE_FORMAT_BGR = 3,
  ZE_MATH_COLORSPACE_FORMAT_RGB = 4,
  ZE_MATH_COLORSPACE_FORMAT_HSV = 5,
  ZE_MATH_COLORSPACE_FORMAT_BGRA = 6
};

/// Indices into the twelve-scalar array of a matrix decomposition.
/// Angles are in radians (degrees for composeMatrixDegrees).
enum ZE_MATH_MATRIX_DECOMPOSITION : int {
  ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X = 0,
  ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Y = 1,
  ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Z = 2,
  ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X = 3,
  ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y = 4,
  ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z = 5,
  ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X = 6,
  ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Y = 7,
  ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Z = 8,
  ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XY = 9,   ///< shear of y by x
  ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XZ = 10,  ///< shear of z by x
  ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ = 11   ///< shear of z by y
};

}  // namespace Math
}  // namespace Lux
