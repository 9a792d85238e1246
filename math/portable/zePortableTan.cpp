// The portable tangent: reduction to [-pi/4, pi/4], then tan(a + h) from
// tabulated tan(a) at a = i/64 and a short series of tan h, combined as
// (tan a + tan h) / (1 - tan a tan h) in double-double arithmetic.

#include <cmath>

#include "math/portable/detail/Horner.h"
#include "math/portable/detail/PiConstants.h"
#include "math/portable/detail/ReduceHalfPi.h"
#include "math/portable/zePortableTrig.h"

namespace Lux {
namespace Math {

namespace {

using portable::DoubleDouble;

/// tan(i/64) for i = 0..50, as pairs (tools/trig_coefficients.py).
constexpr DoubleDouble kTanTable[51] = {
    {0x0.0p+0, 0x0.0p+0},
    {0x1.0005557778549p-6, -0x1.4792827ea2e3ep-60},
    {0x1.00155777aec08p-5, 0x1.5f48b25fa0262p-59},
    {0x1.80481036e4452p-5, 0x1.3d85e10c65fcep-60},
    {0x1.005577854df01p-4, -0x1.f35b10671bea1p-58},
    {0x1.40a71317603a9p-4, 0x1.e341cf23dfe5cp-58},
    {0x1.8121042019d39p-4, 0x1.e53de54163d36p-58},
    {0x1.c1cb884ae7ce3p-4, -0x1.91f3cfab70c67p-60},
    {0x1.01577af1511a5p-3, -0x1.fba60a478d2b0p-59},
    {0x1.21e9e01751d9cp-3, -0x1.8f2e9b85cdb48p-60},
    {0x1.42a13df7bb968p-3, -0x1.981948de81ac0p-57},
    {0x1.6381f20021d08p-3, -0x1.9360ee39e7d86p-58},
    {0x1.84906f1132568p-3, 0x1.20efcd2f809c3p-60},
    {0x1.a5d13ffc776f5p-3, 0x1.b89182a3a38d7p-57},
    {0x1.c7490a1d1e12dp-3, 0x1.d2fc0e48d3694p-58},
    {0x1.e8fc900f0376bp-3, -0x1.b971a98dc7fb0p-57},
    {0x1.05785a43c4c56p-2, -0x1.9c6bfe7769a3dp-58},
    {0x1.16953ea9fb257p-2, 0x1.06b03f377d8f0p-59},
    {0x1.27d78b40b7704p-2, 0x1.f391de0df335dp-56},
    {0x1.3941ead97b329p-2, -0x1.736dee67c7385p-57},
    {0x1.4ad71ed51ce39p-2, -0x1.b8c42b22fff4bp-56},
    {0x1.5c9a01043014bp-2, -0x1.8a3aeeb99c243p-57},
    {0x1.6e8d85a6493e1p-2, -0x1.80e8ea578b238p-56},
    {0x1.80b4bd8b3bdd9p-2, 0x1.5a80279094351p-59},
    {0x1.9312d859bf8b0p-2, -0x1.de9ddeb7d4180p-57},
    {0x1.a5ab26ff403edp-2, -0x1.522f5c7d91fa7p-59},
    {0x1.b8811e4d009c3p-2, -0x1.2f8192327ea6bp-58},
    {0x1.cb9859c724099p-2, -0x1.923f8a8057bf7p-57},
    {0x1.def49eaab37a1p-2, 0x1.1e48c7a265428p-56},
    {0x1.f299df303cebbp-2, -0x1.925b4a577d0aap-58},
    {0x1.03461f08a685dp-1, -0x1.71d22a449a2eap-55},
    {0x1.0d68092bdb64ep-1, -0x1.9115b88532a0ap-55},
    {0x1.17b4f5bf3474ap-1, 0x1.0c5e59201e209p-55},
    {0x1.222f4af63cacdp-1, 0x1.5ffe451c2abd6p-56},
    {0x1.2cd98fea0ab88p-1, 0x1.bf004c33955cbp-57},
    {0x1.37b66f4018e8ep-1, -0x1.1899339e50c0ep-56},
    {0x1.42c8ba0e9537ap-1, -0x1.1817d3747956ap-56},
    {0x1.4e136b0504b5fp-1, -0x1.cfa9c233bbb31p-56},
    {0x1.5999a9e0f5129p-1, -0x1.ebf504ca1c5d4p-56},
    {0x1.655ecf3776ef1p-1, -0x1.a80657cbfeeb6p-55},
    {0x1.7166689d41ef0p-1, -0x1.f44ffce65ed2bp-55},
    {0x1.7db43d38b62cap-1, 0x1.489d3c731da14p-55},
    {0x1.8a4c52ca75a77p-1, 0x1.4d66e6bea4d61p-55},
    {0x1.9732f33b14612p-1, 0x1.c2d4507fd437ap-57},
    {0x1.a46cb2be6a0b2p-1, -0x1.29a64ecb1df2ep-56},
    {0x1.b1fe769f7154ep-1, 0x1.32aa55fd9947dp-56},
    {0x1.bfed7cca66b49p-1, 0x1.8d237cd4d9245p-55},
    {0x1.ce3f642e15af6p-1, -0x1.98cfacf28c6b2p-55},
    {0x1.dcfa36110eeecp-1, -0x1.f3cf665127fd2p-57},
    {0x1.ec24707bf6687p-1, 0x1.8cb6d1fadd1dap-55},
    {0x1.fbc511df5917fp-1, 0x1.4e6ef3dde2f07p-55},
};

/// Taylor coefficients of (tan h - h) / h^3 = 1/3 + 2/15 h^2 + 17/315 h^4 +
/// 62/2835 h^6: for |h| <= 1/128 the next term is below 2^-60 of tan h.
constexpr double kTanSeries[4] = {0x1.5555555555555p-2, 0x1.1111111111111p-3, 0x1.ba1ba1ba1ba1cp-5,
                                  0x1.664f4882c10fap-6};

/// Below this |x|, tan x rounds to x.
constexpr double kTiny = 0x1p-27;

}  // namespace

double zePortableTan(double x) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 0x1.fffffffffffffp1023)) return x - x;  // inf or NaN: NaN
  if (a < kTiny) return x;
  DoubleDouble r = {a, 0.0};
  int n = 0;
  if (a > portable::kQuarterPiBelow) n = portable::reduceHalfPi(a, r);
  // tan and -cot are odd: work on |r| and give the result r's sign.
  const bool negative = (r.hi < 0.0) != (x < 0.0);
  if (r.hi < 0.0) r = {-r.hi, -r.lo};

  // r = i/64 + h with h exact and |h| <= 1/128; tan h as a pair.
  const int i = static_cast<int>(r.hi * 64.0 + 0.5);
  const double h = r.hi - static_cast<double>(i) * 0x1p-6;
  const double z = h * h;
  const double series = portable::horner(kTanSeries, z);
  const DoubleDouble t = portable::twoSum(h, r.lo * (1.0 + z) + (h * z) * series);

  // tan r = num / den and -cot r = -den / num.
  const DoubleDouble& table = kTanTable[i];
  const DoubleDouble num = portable::add(table, t);
  const DoubleDouble product = portable::twoProduct(table.hi, t.hi);
  const DoubleDouble one = portable::twoSum(1.0, -product.hi);
  const DoubleDouble den = {one.hi, one.lo - ((product.lo + table.hi * t.lo) + table.lo * t.hi)};
  const double v = (n & 1) ? -portable::divideRounded(den, num) : portable::divideRounded(num, den);
  return negative ? -v : v;
}

// Evaluated in double and rounded once: within 0.5 + 2^-29 float ulp.
float zePortableTan(float x) noexcept { return static_cast<float>(zePortableTan(static_cast<double>(x))); }

}  // namespace Math
}  // namespace Lux
