// The library's own trigonometric functions: within 1 ulp of MPFR's exact
// values on a sample that holds the awkward inputs, the C library's special
// values, sinCos as sin and cos, the symmetries, golden bits that catch a
// changed constant or order of operations, and the choice the build made.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <tuple>

#include "math/ZEMath.h"
#include "math/impl/Trig.h"
#include "trig/TrigReference.h"

using namespace Lux::Math;
using namespace trigref;

namespace {

/// The awkward inputs of f and random ones, 300,000 in all.
std::vector<Input> sample(Function f) {
  std::vector<Input> inputs;
  if (f == kAtan2) {
    inputs = hardPairs();
  } else {
    for (double x : hardArguments(f, 2000)) inputs.push_back({0.0, x});
  }
  std::mt19937_64 random(static_cast<unsigned>(f) + 17u);
  while (inputs.size() < 300000) inputs.push_back({randomArgument(f, random), randomArgument(f, random)});
  return inputs;
}

template <class T>
void expectWithinOneUlp(Function f) {
  Reference reference;
  double worst = 0.0;
  Input at = {0.0, 0.0};
  for (const Input& in : sample(f)) {
    const T y = narrow<T>(in.y), x = narrow<T>(in.x);
    const Input exact = {static_cast<double>(y), static_cast<double>(x)};
    const double e = reference.ulps(f, exact, portable<T>(f, y, x));
    if (e > worst) {
      worst = e;
      at = exact;
    }
  }
  EXPECT_LT(worst, 1.0) << functionName(f) << " at y = " << at.y << ", x = " << at.x;
}

class PortableTrigAccuracy : public ::testing::TestWithParam<Function> {};

TEST_P(PortableTrigAccuracy, DoubleWithinOneUlpOfMpfr) { expectWithinOneUlp<double>(GetParam()); }
TEST_P(PortableTrigAccuracy, FloatWithinOneUlpOfMpfr) { expectWithinOneUlp<float>(GetParam()); }

INSTANTIATE_TEST_SUITE_P(EachFunction, PortableTrigAccuracy,
                         ::testing::Values(kSin, kCos, kTan, kAsin, kAcos, kAtan, kAtan2),
                         [](const ::testing::TestParamInfo<Function>& info) { return functionName(info.param); });

TEST(PortableTrig, SpecialValuesAsTheCLibrary) {
  // Signed zeros, infinities, NaN, the ends of the domains, subnormals (and
  // for atan2 every pair of them): the C library's results are exact here,
  // so the bits must agree (any NaN matches any NaN).
  const double inf = std::numeric_limits<double>::infinity();
  const double specials[] = {0.0,        -0.0,  inf, -inf, std::numeric_limits<double>::quiet_NaN(),
                             1.0,        -1.0,  2.0, -2.0, 0x1p-1074,
                             -0x1p-1074, 1e-300};
  for (int f = 0; f < kFunctionCount; ++f) {
    const Function fn = static_cast<Function>(f);
    for (double x : specials) {
      const bool ordinary = (std::fabs(x) == 1.0 || std::fabs(x) == 2.0) && fn != kAsin && fn != kAcos;
      if (ordinary && fn != kAtan2) continue;
      for (double y : specials) {
        if (fn != kAtan2 && y != 0.0) continue;
        EXPECT_TRUE(sameBits(portable<double>(fn, y, x), system<double>(fn, y, x)))
            << functionName(fn) << "(" << y << ", " << x << ")";
        const float fy = narrow<float>(y), fx = narrow<float>(x);
        EXPECT_TRUE(sameBits(portable<float>(fn, fy, fx), system<float>(fn, fy, fx)))
            << functionName(fn) << "f(" << fy << ", " << fx << ")";
      }
    }
  }
}

TEST(PortableTrig, SinCosGivesTheBitsOfSinAndCosAndTheSymmetriesHold) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 20000; ++i) {
    const double x = randomArgument(kSin, random);
    double s, c;
    zePortableSinCos(x, s, c);
    ASSERT_TRUE(sameBits(s, zePortableSin(x)) && sameBits(c, zePortableCos(x))) << x;
    const float xf = narrow<float>(x);
    float sf, cf;
    zePortableSinCos(xf, sf, cf);
    ASSERT_TRUE(sameBits(sf, zePortableSin(xf)) && sameBits(cf, zePortableCos(xf))) << xf;

    ASSERT_TRUE(sameBits(zePortableSin(-x), -zePortableSin(x))) << x;
    ASSERT_TRUE(sameBits(zePortableCos(-x), zePortableCos(x))) << x;
    ASSERT_TRUE(sameBits(zePortableTan(-x), -zePortableTan(x))) << x;
    ASSERT_TRUE(sameBits(zePortableAtan(-x), -zePortableAtan(x))) << x;
    const double y = randomArgument(kAtan2, random);
    ASSERT_TRUE(sameBits(zePortableAtan2(-y, x), -zePortableAtan2(y, x))) << y << ", " << x;
    const double u = std::fmod(x, 1.0);
    ASSERT_TRUE(sameBits(zePortableAsin(-u), -zePortableAsin(u))) << u;
  }
}

// Golden bits: any change of a coefficient, a table entry or the order of
// the operations changes some of these.
struct Golden {
  Function f;
  double y, x;
  std::uint64_t doubleBits;
  std::uint32_t floatBits;
};

const Golden kGolden[] = {
    {kSin, 0x0p+0, 0x1.999999999999ap-4, 0x3fb98eaecb8bcb2cULL, 0x3dcc7577U},
    {kCos, 0x0p+0, 0x1.999999999999ap-4, 0x3fefd712f9a817c1ULL, 0x3f7eb898U},
    {kTan, 0x0p+0, 0x1.999999999999ap-4, 0x3fb9af8877430b80ULL, 0x3dcd7c44U},
    {kSin, 0x0p+0, 0x1.6666666666666p-1, 0x3fe49d6e694619b8ULL, 0x3f24eb73U},
    {kCos, 0x0p+0, 0x1.6666666666666p-1, 0x3fe87996529f9d93ULL, 0x3f43ccb3U},
    {kTan, 0x0p+0, 0x1.6666666666666p-1, 0x3feaf406c2fc78aeULL, 0x3f57a036U},
    {kSin, 0x0p+0, 0x1p+0, 0x3feaed548f090ceeULL, 0x3f576aa4U},
    {kCos, 0x0p+0, 0x1p+0, 0x3fe14a280fb5068cULL, 0x3f0a5140U},
    {kTan, 0x0p+0, 0x1p+0, 0x3ff8eb245cbee3a6ULL, 0x3fc75923U},
    {kSin, 0x0p+0, 0x1.4p+1, 0x3fe326af0dcfcab0ULL, 0x3f193578U},
    {kCos, 0x0p+0, 0x1.4p+1, 0xbfe9a2f7ef858b7dULL, 0xbf4d17bfU},
    {kTan, 0x0p+0, 0x1.4p+1, 0xbfe7e79b4e00bb15ULL, 0xbf3f3cdaU},
    {kSin, 0x0p+0, -0x1.8p+1, 0xbfc210386db6d55bULL, 0xbe1081c3U},
    {kCos, 0x0p+0, -0x1.8p+1, 0xbfefae04be85e5d2ULL, 0xbf7d7026U},
    {kTan, 0x0p+0, -0x1.8p+1, 0x3fc23ef71254b86fULL, 0x3e11f7b9U},
    {kSin, 0x0p+0, 0x1.9p+6, 0xbfe03425b78c4db8ULL, 0xbf01a12eU},
    {kCos, 0x0p+0, 0x1.9p+6, 0x3feb981dbf665fdfULL, 0x3f5cc0eeU},
    {kTan, 0x0p+0, 0x1.9p+6, 0xbfe2ca74d62b5d38ULL, 0xbf1653a7U},
    {kSin, 0x0p+0, 0x1.921fbp+19, 0xbfc4f8bacd318ed0ULL, 0xbe27c5d6U},
    {kCos, 0x0p+0, 0x1.921fbp+19, 0x3fef914ccf71fcccULL, 0x3f7c8a66U},
    {kTan, 0x0p+0, 0x1.921fbp+19, 0xbfc54245a7990f25ULL, 0xbe2a122dU},
    {kSin, 0x0p+0, 0x1.2a05f2p+33, 0xbfdf334c7896a4e3ULL, 0xbef99a64U},
    {kCos, 0x0p+0, 0x1.2a05f2p+33, 0x3febf098901c931aULL, 0x3f5f84c5U},
    {kTan, 0x0p+0, 0x1.2a05f2p+33, 0xbfe1de000f443f50ULL, 0xbf0ef000U},
    {kSin, 0x0p+0, 0x1.0f0cf064dd592p+73, 0xbfeb453ab76bf397ULL, 0xbf3becc4U},
    {kCos, 0x0p+0, 0x1.0f0cf064dd592p+73, 0x3fe0be2cef01c8f4ULL, 0x3f2dd6f7U},
    {kTan, 0x0p+0, 0x1.0f0cf064dd592p+73, 0xbffa0f79c1b6b257ULL, 0xbf8a5efeU},
    {kSin, 0x0p+0, 0x1.c363cbf21f28ap+127, 0xbf983f2a8b782f80ULL, 0x3f5ff9c4U},
    {kCos, 0x0p+0, 0x1.c363cbf21f28ap+127, 0x3feffdb40355df0aULL, 0xbef7f57cU},
    {kTan, 0x0p+0, 0x1.c363cbf21f28ap+127, 0xbf9840e8319b93d2ULL, 0xbfe73d2dU},
    {kAsin, 0x0p+0, 0x1.999999999999ap-4, 0x3fb9a49276037884ULL, 0x3dcd2494U},
    {kAcos, 0x0p+0, 0x1.999999999999ap-4, 0x3ff787b22ce3f590ULL, 0x3fbc3d91U},
    {kAsin, 0x0p+0, -0x1.3333333333333p-2, 0xbfd380159e14f6feULL, 0xbe9c00adU},
    {kAcos, 0x0p+0, -0x1.3333333333333p-2, 0x3ffe0200bbc96ad8ULL, 0x3ff01006U},
    {kAsin, 0x0p+0, 0x1.ccccccccccccdp-2, 0x3fdddf7bba8753cdULL, 0x3eeefbddU},
    {kAcos, 0x0p+0, 0x1.ccccccccccccdp-2, 0x3ff1aa1c65a25825ULL, 0x3f8d50e3U},
    {kAsin, 0x0p+0, 0x1.051eb851eb852p-1, 0x3fe1203bda719c39ULL, 0x3f0901dfU},
    {kAcos, 0x0p+0, 0x1.051eb851eb852p-1, 0x3ff091dd670b5efcULL, 0x3f848eebU},
    {kAsin, 0x0p+0, 0x1.8p-1, 0x3feb235315c680dcULL, 0x3f591a99U},
    {kAcos, 0x0p+0, 0x1.8p-1, 0x3fe720a392c1d954ULL, 0x3f39051dU},
    {kAsin, 0x0p+0, -0x1.fae147ae147aep-1, 0xbff6de3c6f33d51dULL, 0xbfb6f1e4U},
    {kAcos, 0x0p+0, -0x1.fae147ae147aep-1, 0x4008001be1bc011bULL, 0x404000dfU},
    {kAsin, 0x0p+0, 0x1.ffffde7210be9p-1, 0x3ff91c306b2c13adULL, 0x3fc8e135U},
    {kAcos, 0x0p+0, 0x1.ffffde7210be9p-1, 0x3f572ba46065af16ULL, 0x3aba9729U},
    {kAtan, 0x0p+0, 0x1.999999999999ap-4, 0x3fb983e282e2cc4dULL, 0x3dcc1f14U},
    {kAtan, 0x0p+0, 0x1.c28f5c28f5c29p-2, 0x3fda8747d793c3dcULL, 0x3ed43a3fU},
    {kAtan, 0x0p+0, -0x1.3333333333333p-1, 0xbfe14b1dd5f90ce1ULL, 0xbf0a58efU},
    {kAtan, 0x0p+0, 0x1.ccccccccccccdp-1, 0x3fe77338a80603beULL, 0x3f3b99c5U},
    {kAtan, 0x0p+0, 0x1.4cccccccccccdp+0, 0x3fed488143ad8c44ULL, 0x3f6a440aU},
    {kAtan, 0x0p+0, -0x1p+1, 0xbff1b6e192ebbe44ULL, 0xbf8db70dU},
    {kAtan, 0x0p+0, 0x1.8p+1, 0x3ff3fc176b7a8560ULL, 0x3f9fe0bbU},
    {kAtan, 0x0p+0, 0x1.86ap+16, 0x3ff921f0d7e968a8ULL, 0x3fc90f87U},
    {kAtan, 0x0p+0, 0x1.93e5939a08ceap+99, 0x3ff921fb54442d18ULL, 0x3fc90fdbU},
    {kAtan2, 0x1p+0, 0x1p+1, 0x3fddac670561bb4fULL, 0x3eed6338U},
    {kAtan2, -0x1.8p+1, 0x1p-1, 0xbff67d8863bc99bdULL, 0xbfb3ec43U},
    {kAtan2, 0x1p-2, -0x1p+2, 0x4008a225e5677921ULL, 0x4045112fU},
    {kAtan2, -0x1.0624dd2f1a9fcp-10, -0x1p+0, 0xc0091fef0a9542ebULL, 0xc048ff78U},
    {kAtan2, 0x1.cp+2, 0x1.ep+2, 0x3fe8079c6293aee0ULL, 0x3f403ce3U},
    {kAtan2, 0x1.79ca10c924223p-66, 0x1.8p+1, 0x3bbf7b816618582fULL, 0x1dfbdc0bU},
    {kAtan2, 0x1.4p+2, -0x1.b7cdfd9d7bdbbp-34, 0x3ff921fb54458cf0ULL, 0x3fc90fdbU},
};

TEST(PortableTrig, GoldenBits) {
  for (const Golden& g : kGolden) {
    const double d = portable<double>(g.f, g.y, g.x);
    const float f = portable<float>(g.f, narrow<float>(g.y), narrow<float>(g.x));
    std::uint64_t db;
    std::uint32_t fb;
    std::memcpy(&db, &d, sizeof db);
    std::memcpy(&fb, &f, sizeof fb);
    EXPECT_EQ(db, g.doubleBits) << functionName(g.f) << "(" << g.y << ", " << g.x << ")";
    EXPECT_EQ(fb, g.floatBits) << functionName(g.f) << "f(" << g.y << ", " << g.x << ")";
  }
}

TEST(PortableTrig, TheOperationsCallWhatTheBuildChose) {
  for (double x : {0.5, -2.0, 1e6, 1e22}) {
    const float xf = static_cast<float>(x);
    const double s = impl::sin(x), c = impl::cos(x), a = impl::atan2(x, 3.0);
    const float sf = impl::sin(xf), tf = impl::tan(xf);
#if ZEMATH_PORTABLE_TRIG
    EXPECT_TRUE(sameBits(s, zePortableSin(x)) && sameBits(c, zePortableCos(x)) && sameBits(a, zePortableAtan2(x, 3.0)));
    EXPECT_TRUE(sameBits(sf, zePortableSin(xf)) && sameBits(tf, zePortableTan(xf)));
#else
    EXPECT_TRUE(sameBits(s, std::sin(x)) && sameBits(c, std::cos(x)) && sameBits(a, std::atan2(x, 3.0)));
    EXPECT_TRUE(sameBits(sf, std::sin(xf)) && sameBits(tf, std::tan(xf)));
#endif
  }
}

}  // namespace
