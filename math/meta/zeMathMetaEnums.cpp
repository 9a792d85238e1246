#include "math/meta/zeMathMetaEnums.h"

namespace Lux {
namespace Math {

zeMetaEnum* ZE_MATH_CONTAINMENT_RESULTS_Meta = nullptr;
zeMetaEnum* ZE_MATH_SPATIAL_REGION_Meta = nullptr;
zeMetaEnum* ZE_MATH_PLANAR_REGION_Meta = nullptr;
zeMetaEnum* ZE_MATH_COLORSPACE_FORMAT_Meta = nullptr;
zeMetaEnum* ZE_MATH_MATRIX_DECOMPOSITION_Meta = nullptr;

namespace {

// The descriptor in `cache`, made on first request; the values run from 0.
template <int N>
zeMetaEnum* cachedMetaEnum(zeMetaEnum*& cache, const char* name, const char* const (&names)[N]) {
  if (cache) return cache;
  int values[N];
  for (int i = 0; i < N; ++i) values[i] = i;
  cache = zeMetaEnum::createMetaEnum(name, names, values, N);
  return cache;
}

}  // namespace

zeMetaEnum* getZE_MATH_CONTAINMENT_RESULTSMetaEnum() {
  static const char* const names[] = {"ZE_MATH_CONTAINMENT_RESULTS_NONE", "ZE_MATH_CONTAINMENT_RESULTS_PARTIAL",
                                      "ZE_MATH_CONTAINMENT_RESULTS_ALL"};
  return cachedMetaEnum(ZE_MATH_CONTAINMENT_RESULTS_Meta, "ZE_MATH_CONTAINMENT_RESULTS", names);
}

zeMetaEnum* getZE_MATH_SPATIAL_REGIONMetaEnum() {
  static const char* const names[] = {"ZE_MATH_SPATIAL_REGION_XP_YP_ZP", "ZE_MATH_SPATIAL_REGION_XP_YP_ZN",
                                      "ZE_MATH_SPATIAL_REGION_XP_YN_ZP", "ZE_MATH_SPATIAL_REGION_XP_YN_ZN",
                                      "ZE_MATH_SPATIAL_REGION_XN_YP_ZP", "ZE_MATH_SPATIAL_REGION_XN_YP_ZN",
                                      "ZE_MATH_SPATIAL_REGION_XN_YN_ZP", "ZE_MATH_SPATIAL_REGION_XN_YN_ZN"};
  return cachedMetaEnum(ZE_MATH_SPATIAL_REGION_Meta, "ZE_MATH_SPATIAL_REGION", names);
}

zeMetaEnum* getZE_MATH_PLANAR_REGIONMetaEnum() {
  static const char* const names[] = {"ZE_MATH_PLANAR_REGION_XP_YP", "ZE_MATH_PLANAR_REGION_XP_YN",
                                      "ZE_MATH_PLANAR_REGION_XN_YP", "ZE_MATH_PLANAR_REGION_XN_YN"};
  return cachedMetaEnum(ZE_MATH_PLANAR_REGION_Meta, "ZE_MATH_PLANAR_REGION", names);
}

zeMetaEnum* getZE_MATH_COLORSPACE_FORMATMetaEnum() {
  static const char* const names[] = {"ZE_MATH_COLORSPACE_FORMAT_ABGR", "ZE_MATH_COLORSPACE_FORMAT_RGBA",
                                      "ZE_MATH_COLORSPACE_FORMAT_ARGB", "ZE_MATH_COLORSPACE_FORMAT_BGR",
                                      "ZE_MATH_COLORSPACE_FORMAT_RGB",  "ZE_MATH_COLORSPACE_FORMAT_HSV",
                                      "ZE_MATH_COLORSPACE_FORMAT_BGRA"};
  return cachedMetaEnum(ZE_MATH_COLORSPACE_FORMAT_Meta, "ZE_MATH_COLORSPACE_FORMAT", names);
}

zeMetaEnum* getZE_MATH_MATRIX_DECOMPOSITIONMetaEnum() {
  static const char* const names[] = {
      "ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X", "ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Y",
      "ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Z", "ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X",
      "ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y",    "ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z",
      "ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X",     "ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Y",
      "ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Z",     "ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XY",
      "ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_XZ",    "ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ"};
  return cachedMetaEnum(ZE_MATH_MATRIX_DECOMPOSITION_Meta, "ZE_MATH_MATRIX_DECOMPOSITION", names);
}

}  // namespace Math
}  // namespace Lux
