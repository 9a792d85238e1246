// Colour packing, unpacking and layout conversion; the screen-space scale.

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/Bits.h"

using namespace Lux::Math;
using zetest::kNaNf;

namespace {

constexpr float kHalfStep = 128.0f / 255.0f;  // 0.5 quantised

template <class V>
void expectNear3(const V& v, double x, double y, double z) {
  EXPECT_FLOAT_EQ(static_cast<float>(x), static_cast<float>(v.x));
  EXPECT_FLOAT_EQ(static_cast<float>(y), static_cast<float>(v.y));
  EXPECT_FLOAT_EQ(static_cast<float>(z), static_cast<float>(v.z));
}

}  // namespace

TEST(ColourPack, LayoutsPlaceTheBytesAsNamed) {
  const zeVec4uc c(0x11, 0x22, 0x33, 0x44);
  EXPECT_EQ(0x11223344u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_ABGR));
  EXPECT_EQ(0x44332211u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
  EXPECT_EQ(0x33221144u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_ARGB));
  EXPECT_EQ(0x00112233u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_BGR));
  EXPECT_EQ(0x00332211u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_RGB));
  EXPECT_EQ(0x44112233u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_BGRA));
  EXPECT_EQ(0u, c.packColor(ZE_MATH_COLORSPACE_FORMAT_HSV));
  EXPECT_EQ(0u, c.packColor(static_cast<ZE_MATH_COLORSPACE_FORMAT>(7)));
  EXPECT_EQ(0u, c.packColor(static_cast<ZE_MATH_COLORSPACE_FORMAT>(-1)));

  const zeVec3uc rgb(0x11, 0x22, 0x33);
  EXPECT_EQ(0x00332211u, rgb.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));  // no alpha: byte 0
  EXPECT_EQ(0xFF332211u, rgb.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, 0xFF));
  EXPECT_EQ(0x00332211u, rgb.packColor(ZE_MATH_COLORSPACE_FORMAT_RGB, 0xFF));
}

TEST(ColourPack, FloatChannelsClampAndRoundHalvesUp) {
  EXPECT_EQ(0xFF0080FFu, zeVec3f(1, 0.5f, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, 1.0f));
  EXPECT_EQ(0x4000FF00u, zeVec3f(2, -1, 0.25f).packColor(ZE_MATH_COLORSPACE_FORMAT_ARGB));
  EXPECT_EQ(0x00008000u, zeVec3d(0, 0.5, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));  // RGBA packs like RGB
  EXPECT_EQ(0u, zeVec3f(1, 1, 1).packColor(ZE_MATH_COLORSPACE_FORMAT_HSV, 1.0f));
  // Alpha: above 0 capped at 1, anything else (NaN too) 0.
  EXPECT_EQ(0xFF000000u, zeVec3f(0, 0, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_BGRA, 7.0f));
  EXPECT_EQ(0x00000000u, zeVec3f(0, 0, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_BGRA, kNaNf));
  // A NaN channel clamps to the upper bound.
  EXPECT_EQ(0x000000FFu, zeVec3f(kNaNf, 0, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_RGB));
  // The four-component forms clamp alpha like a channel.
  EXPECT_EQ(0xFF0000FFu, zeVec4f(1, 0, 0, 3).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
  EXPECT_EQ(0x000000FFu, zeVec4d(1, 0, 0, -3).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
}

TEST(ColourPack, ClampBoundsAreReadFromTheNamedConstantsAtCallTime) {
  const zeVec3f saved = zeVec3f::OneVector;
  zeVec3f::OneVector = zeVec3f(0.5f, 1, 1);
  EXPECT_EQ(0x00000080u, zeVec3f(1, 0, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_RGB));
  zeVec3f::OneVector = saved;
  EXPECT_EQ(0x000000FFu, zeVec3f(1, 0, 0).packColor(ZE_MATH_COLORSPACE_FORMAT_RGB));
}

TEST(ColourUnpack, BytesDividedBy255AndAlphaRules) {
  zeVec4f v(9, 9, 9, 9);
  v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_ARGB, 0xFF800040u);
  EXPECT_BITEQ(0.0f, v.x);  // ARGB: red in bits 15-8, green 23-16, blue 31-24
  EXPECT_BITEQ(kHalfStep, v.y);
  EXPECT_BITEQ(1.0f, v.z);
  EXPECT_BITEQ(64.0f / 255.0f, v.w);
  v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGB, 0xFFFFFFFFu);
  EXPECT_EQ(0.0f, v.w);  // layouts without alpha set 0 ...
  v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_BGR, 0x00FF0000u, 0.25f);
  EXPECT_EQ(1.0f, v.x);
  EXPECT_EQ(0.25f, v.w);  // ... or the given alpha
  v.unpackColor(ZE_MATH_COLORSPACE_FORMAT_BGRA, 0x80000000u, 0.25f);
  EXPECT_BITEQ(kHalfStep, v.w);  // the others ignore it

  zeVec3d d(7, 7, 7);
  d.unpackColor(ZE_MATH_COLORSPACE_FORMAT_HSV, 0xFFFFFFFFu);
  d.unpackColor(static_cast<ZE_MATH_COLORSPACE_FORMAT>(9), 0xFFFFFFFFu);
  EXPECT_EQ(7.0, d.x);
  d.unpackColor(ZE_MATH_COLORSPACE_FORMAT_ABGR, 0x01020304u);
  EXPECT_BITEQ(1.0 / 255.0, d.x);
  EXPECT_BITEQ(3.0 / 255.0, d.z);

  zeVec4uc b(1, 2, 3, 4);
  b.unpackColor(ZE_MATH_COLORSPACE_FORMAT_RGB, 0x00332211u, 0x99);
  EXPECT_EQ(zeVec4uc(0x11, 0x22, 0x33, 0x99).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA),
            b.packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA));
}

TEST(ColourConvert, RgbToHsvKeepsTheDominantChannelQuirks) {
  zeVec3f red(1, 0, 0);
  red.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_HSV);
  expectNear3(red, 0, 1, 1);
  zeVec3f grey(0.5f, 0.5f, 0.5f);
  grey.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_HSV);
  EXPECT_EQ(-1.0f, grey.x);
  EXPECT_EQ(0.0f, grey.y);
  EXPECT_BITEQ(kHalfStep, grey.z);
  zeVec3f green(0, 1, 0);  // hue r * 60, saturation overwritten with 2 + rc - bc
  green.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_HSV);
  expectNear3(green, 0, 2, 1);
  zeVec3d blue(0.2, 0, 1);  // value overwritten with 4 + gc - rc
  blue.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_HSV);
  const double r = 51 / 255.0, d = 1 - 0.0;
  expectNear3(blue, r * 60, d / 1.0, 4 + (1 - 0.0) / d - (1 - r) / d);
  zeVec3f black(0, 0, 0);
  black.convertColor(ZE_MATH_COLORSPACE_FORMAT_BGR, ZE_MATH_COLORSPACE_FORMAT_HSV);
  expectNear3(black, -1, 0, 0);
  zeVec3f magenta(1, 0, 0.5f);  // red dominant, negative hue wrapped by 360
  magenta.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_HSV);
  EXPECT_NEAR(360 - 60 * kHalfStep, magenta.x, 1e-4);
}

TEST(ColourConvert, HsvToRgbSectorsGreysAndTheFullTurn) {
  zeVec3f v(120, 1, 1);
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGB);
  expectNear3(v, 0, 1, 0);
  v = zeVec3f(-1, 0, 0.5f);
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGB);
  expectNear3(v, kHalfStep, kHalfStep, kHalfStep);
  v = zeVec3f(30, 0, 1);
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGB);
  expectNear3(v, 0, 0, 0);
  v = zeVec3f(360, 0.5f, 1);  // (v, p, p)
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_BGR);
  expectNear3(v, kHalfStep, kHalfStep, 1);  // BGR order: blue first
  v = zeVec3f(30, 1, 1);                    // sector 0: (v, t, p), to BGR reversed
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_BGR);
  expectNear3(v, 0, kHalfStep, 1);

  // Four components convert directly: no quantisation, w kept, result in r, g, b order.
  zeVec4f w(30, 1, 1, 0.3f);
  w.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_ABGR);
  EXPECT_BITEQ(1.0f, w.x);
  EXPECT_BITEQ((1.0f - (1.0f - 0.5f) * 1.0f) * 1.0f, w.y);
  EXPECT_BITEQ(0.0f, w.z);
  EXPECT_BITEQ(0.3f, w.w);
  zeVec4d sector7(420, 1, 1, 1);  // sector 7: left as it was
  sector7.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGB);
  EXPECT_EQ(420.0, sector7.x);
  zeVec4f direct(0.3f, 0.2f, 0.1f, 1);
  direct.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, ZE_MATH_COLORSPACE_FORMAT_HSV);
  const float d = 0.3f - 0.1f;
  EXPECT_BITEQ(((0.3f - 0.1f) / d - (0.3f - 0.2f) / d) * 60.0f, direct.x);
  EXPECT_BITEQ(0.3f, direct.z);
}

TEST(ColourConvert, ReorderingQuantisesEvenForEqualLayouts) {
  zeVec3f v(0.3f, 0.6f, 0.9f);
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_RGB);
  EXPECT_BITEQ(77.0f / 255.0f, v.x);  // trunc(0.3 * 255 + 0.5) = 77
  v = zeVec3f(0.1f, 0.5f, 1.0f);
  v.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_BGR);
  expectNear3(v, 1, kHalfStep, 26 / 255.0);

  zeVec3uc b(10, 20, 30);
  b.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGB, ZE_MATH_COLORSPACE_FORMAT_BGR);
  EXPECT_EQ(30, b.r);
  EXPECT_EQ(10, b.b);
  zeVec4uc a(10, 20, 30, 40);
  a.convertColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, ZE_MATH_COLORSPACE_FORMAT_ARGB);
  EXPECT_EQ(40, a.r);  // the ARGB word 0x1E140A28 read as RGBA
  EXPECT_EQ(10, a.g);
  EXPECT_EQ(20, a.b);
  EXPECT_EQ(30, a.a);
}

TEST(ScreenScale, OrthographicScaleIsTheSameEverywhere) {
  // Orthographic: P.m11 = 0, P.m15 = 1, 2 units across 100 pixels.
  zeMatrix44f ortho = zeMatrix44f::identityMatrix;
  zeVec4f scale;
  scale.makePixelToModelScale(zeMatrix44f::identityMatrix, ortho, 100, 50);
  EXPECT_EQ(0.0f, scale.x);
  EXPECT_EQ(0.0f, scale.z);
  EXPECT_BITEQ(1.0f / 50.0f, scale.w);  // lx = 50 wins over ly = 25
  EXPECT_BITEQ(3.0f / (1.0f / 50.0f), scale.computePixelSpaceDiameter(zeVec3f(5, 6, 7), 3.0f));
  EXPECT_BITEQ(10.0f * (1.0f / 50.0f), scale.computeModelSpaceDiameter(zeVec3f(-5, 6, 7), 10.0f));

  zeVec4f broken;
  broken.makePixelToModelScale(zeMatrix44f::identityMatrix, ortho, 0, 0);
  EXPECT_TRUE(std::isinf(broken.w));
}

TEST(ScreenScale, PerspectiveScaleGrowsWithDepthAndBreaksAtTheEye) {
  // A perspective-like projection: w' = z (P.m11 = 1, P.m15 = 0).
  const zeMatrix44f perspective(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0);
  zeVec4f scale;
  scale.makePixelToModelScale(zeMatrix44f::identityMatrix, perspective, 200, 200);
  const float near = scale.computeModelSpaceDiameter(zeVec3f(0, 0, 1), 1.0f);
  const float far = scale.computeModelSpaceDiameter(zeVec3f(0, 0, 10), 1.0f);
  EXPECT_FLOAT_EQ(10.0f * near, far);
  EXPECT_FALSE(std::isfinite(scale.computePixelSpaceDiameter(zeVec3f(3, 4, 0), 1.0f)));
}
