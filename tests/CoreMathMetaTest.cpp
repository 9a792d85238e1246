// The math library's registration entry and enum descriptors.

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace mathmeta {

// A class of the math library's kind, declared with the library's macros.
class zeTestVolumeLike : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeTestVolumeLike)

 public:
  static void bayRegisterUser() { initFlagDuringUser = _libZEMath_InitFlag; }
  static int initFlagDuringUser;
};
int zeTestVolumeLike::initFlagDuringUser = -1;
ZE_MATH_IMPLEMENT_CLASS(zeTestVolumeLike, zeObject, nullptr, &zeTestVolumeLike::bayRegisterUser)

}  // namespace mathmeta

using mathmeta::zeTestVolumeLike;

namespace {

using CoreMathMeta = zetest::CoreTest;

void expectEnum(zeMetaEnum* (*getter)(), zeMetaEnum*& cache, const char* name, std::vector<const char*> suffixes) {
  zeMetaEnum* meta = getter();
  ASSERT_NE(meta, nullptr) << name;
  EXPECT_EQ(getter(), meta) << "made once";
  EXPECT_EQ(cache, meta);
  EXPECT_STREQ(meta->getName(), name);
  ASSERT_EQ(meta->getCount(), static_cast<int>(suffixes.size())) << name;
  for (int i = 0; i < meta->getCount(); ++i) {
    EXPECT_EQ(meta->getValueName(i), std::string(name) + suffixes[static_cast<std::size_t>(i)]);
    EXPECT_EQ(meta->getValue(i), i);
  }
}

}  // namespace

TEST_F(CoreMathMeta, EveryRegistrationRunsTheLibraryInitialisationFirstAndOnce) {
  EXPECT_EQ(_libZEMath_InitFlag, 0) << "cleared when classes were unregistered";
  EXPECT_NE(zeTestVolumeLike::getClassMetaSafe(), nullptr);
  EXPECT_EQ(zeTestVolumeLike::initFlagDuringUser, 1);
  EXPECT_EQ(_libZEMath_InitFlag, 1);
  _libZEMath_Init();
  EXPECT_EQ(_libZEMath_InitFlag, 1);
  BayCore::unregisterAllClasses();
  EXPECT_EQ(_libZEMath_InitFlag, 0);
}

TEST_F(CoreMathMeta, EnumDescriptorsNameEveryConstantInValueOrder) {
  expectEnum(&getZE_MATH_CONTAINMENT_RESULTSMetaEnum, ZE_MATH_CONTAINMENT_RESULTS_Meta, "ZE_MATH_CONTAINMENT_RESULTS",
             {"_NONE", "_PARTIAL", "_ALL"});
  expectEnum(&getZE_MATH_SPATIAL_REGIONMetaEnum, ZE_MATH_SPATIAL_REGION_Meta, "ZE_MATH_SPATIAL_REGION",
             {"_XP_YP_ZP", "_XP_YP_ZN", "_XP_YN_ZP", "_XP_YN_ZN", "_XN_YP_ZP", "_XN_YP_ZN", "_XN_YN_ZP", "_XN_YN_ZN"});
  expectEnum(&getZE_MATH_PLANAR_REGIONMetaEnum, ZE_MATH_PLANAR_REGION_Meta, "ZE_MATH_PLANAR_REGION",
             {"_XP_YP", "_XP_YN", "_XN_YP", "_XN_YN"});
  expectEnum(&getZE_MATH_COLORSPACE_FORMATMetaEnum, ZE_MATH_COLORSPACE_FORMAT_Meta, "ZE_MATH_COLORSPACE_FORMAT",
             {"_ABGR", "_RGBA", "_ARGB", "_BGR", "_RGB", "_HSV", "_BGRA"});
  expectEnum(&getZE_MATH_MATRIX_DECOMPOSITIONMetaEnum, ZE_MATH_MATRIX_DECOMPOSITION_Meta,
             "ZE_MATH_MATRIX_DECOMPOSITION",
             {"_TRANSLATE_X", "_TRANSLATE_Y", "_TRANSLATE_Z", "_ROTATE_X", "_ROTATE_Y", "_ROTATE_Z", "_SCALE_X",
              "_SCALE_Y", "_SCALE_Z", "_SHEAR_XY", "_SHEAR_XZ", "_SHEAR_YZ"});
  // The descriptors agree with the enum types they describe.
  EXPECT_EQ(ZE_MATH_SPATIAL_REGION_Meta->findName("ZE_MATH_SPATIAL_REGION_XN_YP_ZN"), ZE_MATH_SPATIAL_REGION_XN_YP_ZN);
  EXPECT_EQ(ZE_MATH_MATRIX_DECOMPOSITION_Meta->findName("ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ"),
            ZE_MATH_MATRIX_DECOMPOSITION_SHEAR_YZ);
}
