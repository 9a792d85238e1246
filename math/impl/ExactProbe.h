#pragma once

/// \file
/// The probe behind zeCheckExactResults(): a few inline operations of every
/// family, run on inputs whose products need more bits than the type holds,
/// so that contracting a multiply and an add into one fused instruction, or
/// reordering a sum, changes the last bits of the results. The check runs the
/// probe twice, compiled where it is called and as compiled in the library,
/// and compares the bytes family by family.
///
/// The probe itself does no arithmetic: it builds values from the inputs,
/// calls the operations and stores their results.

#include <cstring>

#include "math/ZEMathExport.h"
#include "math/impl/PlaneDistance.h"
#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeQuaterniond.h"
#include "math/zeQuaternionf.h"
#include "math/zeVec2f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "math/zeVec4d.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {
namespace impl {

/// Number of families of the probe; family i has the bit 1 << i.
constexpr int kExactFamilyCount = 6;

/// The inputs of the probe. f[0..15] and d[0..15] are general numbers (also
/// the elements of the matrices), [16..18] a colour as hue in degrees,
/// saturation and value, [19] an interpolation parameter.
struct ExactProbeInputs {
  float f[20];   ///< the float inputs
  double d[20];  ///< the double inputs
};

/// The inputs, read through volatile so that no compiler folds the probe at
/// compile time: it must run as the caller's code runs.
inline const volatile float kExactProbeFloats[20] = {1.1f,  -0.7f, 2.3f,   0.45f, -1.9f, -3.7f, 0.33f,
                                                     -2.2f, 1.7f,  0.9f,   -0.6f, 2.9f,  1.3f,  -1.4f,
                                                     0.77f, 2.05f, 200.7f, 0.61f, 0.83f, 0.3f};
/// The double inputs, read like the float ones.
inline const volatile double kExactProbeDoubles[20] = {1.3,  -0.9, 2.7, 0.55, -1.1, -3.3, 0.37,  -2.6, 1.9,  0.7,
                                                       -0.4, 2.1,  1.7, -1.2, 0.93, 2.35, 147.3, 0.71, 0.67, 0.7};

/// The inputs of the probe, each read once through volatile.
inline ExactProbeInputs loadExactProbeInputs() noexcept {
  ExactProbeInputs in;
  for (int i = 0; i < 20; ++i) {
    in.f[i] = kExactProbeFloats[i];
    in.d[i] = kExactProbeDoubles[i];
  }
  return in;
}

/// The bytes of the results of one run of the probe, family by family.
struct ExactProbeResults {
  static constexpr int kCapacity = 512;               ///< bytes per family
  unsigned char bytes[kExactFamilyCount][kCapacity];  ///< each family's result bytes
  int used[kExactFamilyCount];                        ///< bytes written per family; -1 when the capacity was exceeded
};

/// Appends the bytes of results to one family's block of an ExactProbeResults.
class ExactProbeWriter {
 public:
  /// Starts family's block of results empty.
  ExactProbeWriter(ExactProbeResults& results, int family) noexcept
      : bytes_(results.bytes[family]), used_(results.used[family]) {
    used_ = 0;
  }
  /// Appends the bytes of value.
  template <class T>
  void put(const T& value) noexcept {
    if (used_ < 0 || used_ + int(sizeof(T)) > ExactProbeResults::kCapacity) {
      used_ = -1;
      return;
    }
    std::memcpy(bytes_ + used_, &value, sizeof(T));
    used_ += int(sizeof(T));
  }

 private:
  unsigned char* bytes_;
  int& used_;
};

/// The matrix whose elements, in storage order, are e[0..15].
template <class M, class T>
inline M matrixOf(const T* e) noexcept {
  return M(e[0], e[1], e[2], e[3], e[4], e[5], e[6], e[7], e[8], e[9], e[10], e[11], e[12], e[13], e[14], e[15]);
}

/// Vector arithmetic, cross, lerp, normals, reflection, the single transforms, Bezier.
inline void probeVectors(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  const float* f = in.f;
  const double* d = in.d;
  const zeVec3f a(f[0], f[1], f[2]), b(f[3], f[4], f[5]), c(f[6], f[7], f[8]);
  const zeMatrix44f m = matrixOf<zeMatrix44f>(f);
  zeVec3f r;
  r.cross(a, b);
  out.put(r);
  r.lerp(f[19], a, b);
  out.put(r);
  r.makeNormal(a, b, c);
  out.put(r);
  r.reflect(a, b, f[9]);
  out.put(r);
  r.transformVector(a, m);
  out.put(r);
  r.transformPoint(a, m);
  out.put(r);
  out.put(a.dot(c));

  const zeVec2f p(f[0], f[1]), q(f[2], f[3]);
  zeVec2f r2;
  r2.lerp(f[19], p, q);
  out.put(r2);

  zeVec4f p0(f[0], f[1], f[2], f[3]), p1(f[4], f[5], f[6], f[7]), p2(f[8], f[9], f[10], f[11]),
      p3(f[12], f[13], f[14], f[15]);
  zeVec4f r4;
  r4.bezierInterpolate(f[19], p0, p1, p2, p3);
  out.put(r4);
  r4.transformPoint(p0, m);
  out.put(r4);

  const zeVec3d ad(d[0], d[1], d[2]), bd(d[3], d[4], d[5]), cd(d[6], d[7], d[8]);
  const zeMatrix44d md = matrixOf<zeMatrix44d>(d);
  zeVec3d r3d;
  r3d.cross(ad, bd);
  out.put(r3d);
  r3d.reflect(ad, bd, d[9]);
  out.put(r3d);
  r3d.transformPoint(cd, md);
  out.put(r3d);
  const zeVec4d a4d(d[0], d[1], d[2], d[3]), b4d(d[4], d[5], d[6], d[7]), c4d(d[8], d[9], d[10], d[11]);
  zeVec4d r4d;
  r4d.makeNormal(a4d, b4d, c4d);
  out.put(r4d);
  r4d.lerp(d[19], a4d, b4d);
  out.put(r4d);
}

/// The 4x4 products and the pre- and post-translations.
inline void probeMatrices(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  const float* f = in.f;
  const double* d = in.d;
  const zeMatrix44f a = matrixOf<zeMatrix44f>(f);
  const zeMatrix44f b(f[15], f[3], f[10], f[6], f[1], f[12], f[8], f[5], f[14], f[2], f[7], f[11], f[4], f[9], f[0],
                      f[13]);
  zeMatrix44f r;
  zeMatrix44f::matrixMultiply(&r, &a, &b);
  out.put(r);
  r = a;
  r.preTranslation(zeVec3f(f[4], f[8], f[12]));
  out.put(r);
  r = a;
  r.postTranslation(zeVec3f(f[5], f[9], f[13]));
  out.put(r);

  const zeMatrix44d ad = matrixOf<zeMatrix44d>(d);
  const zeMatrix44d bd(d[15], d[3], d[10], d[6], d[1], d[12], d[8], d[5], d[14], d[2], d[7], d[11], d[4], d[9], d[0],
                       d[13]);
  zeMatrix44d rd;
  rd.multiply(ad, bd);
  out.put(rd);
  rd = ad;
  rd.postTranslation(zeVec3d(d[5], d[9], d[13]));
  out.put(rd);
}

/// Quaternion multiply, invert and lerp, of Q with components v.
template <class Q, class T>
inline void probeQuaternionsOf(const T* v, ExactProbeWriter& out) noexcept {
  const Q a(v[0], v[1], v[2], v[3]), b(v[4], v[5], v[6], v[7]);
  Q r;
  r.multiply(a, b);
  out.put(r);
  r.invert(b);
  out.put(r);
  r.lerp(v[19], a, b);
  out.put(r);
}

/// Quaternion multiply, invert and lerp, float and double.
inline void probeQuaternions(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  probeQuaternionsOf<zeQuaternionf>(in.f, out);
  probeQuaternionsOf<zeQuaterniond>(in.d, out);
}

/// Colour conversion from HSV, the direct form of the 4-component vectors.
inline void probeColors(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  const float* f = in.f;
  const double* d = in.d;
  zeVec4f c(f[16], f[17], f[18], f[19]);
  c.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGB);
  out.put(c);
  zeVec4d cd(d[16], d[17], d[18], d[19]);
  cd.convertColor(ZE_MATH_COLORSPACE_FORMAT_HSV, ZE_MATH_COLORSPACE_FORMAT_RGBA);
  out.put(cd);
}

/// The pixel and model diameters of the screen-space scale.
inline void probeScreenSpace(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  const float* f = in.f;
  const zeVec4f scale(f[0], f[1], f[2], f[3]);
  const zeVec3f p(f[4], f[5], f[6]), q(f[8], f[10], f[12]);
  out.put(scale.computePixelSpaceDiameter(p, f[9]));
  out.put(scale.computeModelSpaceDiameter(q, f[11]));
}

/// The signed distance of the plane.
inline void probeVolumes(const ExactProbeInputs& in, ExactProbeWriter out) noexcept {
  const float* f = in.f;
  out.put(signedPlaneDistance(zeVec3f(f[0], f[1], f[2]), f[9], zeVec3f(f[3], f[4], f[5])));
  out.put(signedPlaneDistance(zeVec3f(f[6], f[7], f[8]), f[15], zeVec3f(f[12], f[13], f[14])));
  // fused in any of the ways a compiler may contract it, this one changes
  out.put(signedPlaneDistance(zeVec3f(f[0], f[1], f[3]), f[9], zeVec3f(f[4], f[5], f[6])));
}

/// Runs every family of the probe on in, compiled where it is called.
inline void runExactProbe(const ExactProbeInputs& in, ExactProbeResults& out) noexcept {
  probeVectors(in, ExactProbeWriter(out, 0));
  probeMatrices(in, ExactProbeWriter(out, 1));
  probeQuaternions(in, ExactProbeWriter(out, 2));
  probeColors(in, ExactProbeWriter(out, 3));
  probeScreenSpace(in, ExactProbeWriter(out, 4));
  probeVolumes(in, ExactProbeWriter(out, 5));
}

/// runExactProbe as compiled in the library's own build, every call inlined
/// there, so no copy of an inline operation in the calling program stands in.
ZEMATH_API void runExactProbeInLibrary(const ExactProbeInputs& in, ExactProbeResults& out) noexcept;

/// The bits (1 << family) of the families whose bytes differ between a and b.
inline unsigned int differingFamilies(const ExactProbeResults& a, const ExactProbeResults& b) noexcept {
  unsigned int differing = 0;
  for (int family = 0; family < kExactFamilyCount; ++family) {
    const int used = a.used[family];
    if (used < 0 || used != b.used[family] || std::memcmp(a.bytes[family], b.bytes[family], std::size_t(used)) != 0)
      differing |= 1u << family;
  }
  return differing;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
