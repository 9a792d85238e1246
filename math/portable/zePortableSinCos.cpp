// The portable sine and cosine: reduction to [-pi/4, pi/4], then a minimax
// polynomial of the sine or the cosine of the reduced argument.

#include <cmath>

#include "math/portable/detail/Horner.h"
#include "math/portable/detail/PiConstants.h"
#include "math/portable/detail/ReduceHalfPi.h"
#include "math/portable/zePortableTrig.h"

namespace Lux {
namespace Math {

namespace {

using portable::DoubleDouble;

/// sin r = r + r^3 S(r^2) on |r| <= 0.7854; S contributes at most 2^-63.2
/// relative error to the sine (tools/trig_coefficients.py).
constexpr double kSin[7] = {-0x1.5555555555555p-3, 0x1.1111111111068p-7,   -0x1.a01a019ffe08bp-13,
                            0x1.71de3a332c267p-19, -0x1.ae642b992ba23p-26, 0x1.61093a0a0e85ap-33,
                            -0x1.9fb6744ed1114p-41};
/// cos r = 1 - r^2/2 + r^4 C(r^2) on |r| <= 0.7854; C contributes at most
/// 2^-63.9 relative error to the cosine.
constexpr double kCos[6] = {0x1.555555555554bp-5,   -0x1.6c16c16c15015p-10, 0x1.a01a019c8f254p-16,
                            -0x1.27e4f7f191520p-22, 0x1.1ee9dbcf05d44p-29,  -0x1.8fa6848e3882fp-37};

/// Below this |x|, sin x rounds to x and cos x to 1.
constexpr double kTiny = 0x1p-27;

/// sin(r.hi + r.lo) for |r| <= 0.7854: sin hi + lo cos hi, cos hi taken as
/// 1 - hi^2/2. Within about 0.7 ulp.
double sinKernel(DoubleDouble r) noexcept {
  const double z = r.hi * r.hi;
  const double s = portable::horner(kSin, z);
  return r.hi + ((z * r.hi) * s + r.lo * (1.0 - 0.5 * z));
}

/// cos(r.hi + r.lo) for |r| <= 0.7854: cos hi - lo sin hi. hi^2 is formed
/// exactly and 1 - hi^2/2 keeps its rounding error, so the one rounding that
/// counts is the last addition. Within about 0.55 ulp.
double cosKernel(DoubleDouble r) noexcept {
  const DoubleDouble z = portable::twoProduct(r.hi, r.hi);
  const double half = 0.5 * z.hi;
  const double w = 1.0 - half;
  const double c = portable::horner(kCos, z.hi);
  const double tail = (((1.0 - w) - half) - 0.5 * z.lo) + ((z.hi * z.hi) * c - r.hi * r.lo);
  return w + tail;
}

/// The reduced argument of |x| (finite, above kTiny) and its quadrant n mod 4.
int reduce(double a, DoubleDouble& r) noexcept {
  if (a <= portable::kQuarterPiBelow) {
    r = {a, 0.0};
    return 0;
  }
  return portable::reduceHalfPi(a, r);
}

/// sin |x| from the quadrant n and the reduced argument r.
double sinOfReduced(int n, DoubleDouble r) noexcept {
  const double v = (n & 1) ? cosKernel(r) : sinKernel(r);
  return (n & 2) ? -v : v;
}

/// cos |x| from the quadrant n and the reduced argument r.
double cosOfReduced(int n, DoubleDouble r) noexcept {
  const double v = (n & 1) ? sinKernel(r) : cosKernel(r);
  return ((n + 1) & 2) ? -v : v;
}

}  // namespace

double zePortableSin(double x) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 0x1.fffffffffffffp1023)) return x - x;  // inf or NaN: NaN
  if (a < kTiny) return x;
  DoubleDouble r;
  const int n = reduce(a, r);
  const double s = sinOfReduced(n, r);
  return x < 0.0 ? -s : s;
}

double zePortableCos(double x) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 0x1.fffffffffffffp1023)) return x - x;
  if (a < kTiny) return 1.0;
  DoubleDouble r;
  const int n = reduce(a, r);
  return cosOfReduced(n, r);
}

void zePortableSinCos(double x, double& s, double& c) noexcept {
  const double a = std::fabs(x);
  if (!(a <= 0x1.fffffffffffffp1023)) {
    s = c = x - x;
    return;
  }
  if (a < kTiny) {
    s = x;
    c = 1.0;
    return;
  }
  DoubleDouble r;
  const int n = reduce(a, r);
  const double sine = sinOfReduced(n, r);
  s = x < 0.0 ? -sine : sine;
  c = cosOfReduced(n, r);
}

// The float forms evaluate in double, which is exact for a float argument and
// within 0.7 double ulp, and round once: within 0.5 + 2^-29 float ulp.
float zePortableSin(float x) noexcept { return static_cast<float>(zePortableSin(static_cast<double>(x))); }

float zePortableCos(float x) noexcept { return static_cast<float>(zePortableCos(static_cast<double>(x))); }

void zePortableSinCos(float x, float& s, float& c) noexcept {
  double sd, cd;
  zePortableSinCos(static_cast<double>(x), sd, cd);
  s = static_cast<float>(sd);
  c = static_cast<float>(cd);
}

}  // namespace Math
}  // namespace Lux
