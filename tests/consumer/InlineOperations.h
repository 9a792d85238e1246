#pragma once

// Every inline operation of the public headers that computes with floating
// point (or converts to or from it), as one table: a name and a function that
// runs the operation on the inputs of one sample and writes its results. The
// library's build records the bits (tests/InlineReference.cpp, built with the
// library's flags); an outside build compares its own (InlineCheck.cpp).
//
// The list follows the public headers one by one:
//   math/impl/VecOps.h       vectors of 2, 3 and 4 float and double components:
//                            + - * (both orders) unary - += -= *= == != dot
//                            length normalize lerp getQuadrant; cross (both
//                            forms) getOctant makeNormal reflect
//                            transformVector transformPoint of the 3- and
//                            4-component vectors; the Bezier helper
//   math/zeVec3f.h, zeVec4f.h bezierInterpolate; zeVec4f's pixel and model diameters
//   math/zeVec4d.h           the double 4-vector's own makeNormal
//   math/zeVec3uc.h, zeVec4uc.h lerp, packColor, unpackColor, convertColor
//   math/impl/ColourOps.h    packColor, unpackColor, convertColor of the float
//                            and double 3- and 4-vectors
//   math/impl/Matrix44Ops.h  copyMatrix makeIdentity transpose (both forms)
//                            add subtract divide == getMaxElement, and the
//                            products (zeMatrix44f::matrixMultiply,
//                            zeMatrix44d::multiply, in place too)
//   math/impl/Matrix44Construction.h  make/set/get/pre/post Translation and Scale
//   math/zeMatrix44f.h, zeMatrix44d.h  invert, composeMatrixDegrees
//   math/impl/QuaternionOps.h, zeQuaternion[fd].h  multiply conjugate invert
//                            lerp (both branches), and the float class's
//                            getRotationMatrix and fastInterpolation
//   math/volumes/zePlane.h   signedDistance
// Left out: accessors and constructors (no arithmetic), the array transforms
// and every other member declared inline but defined in the library, and the
// plane projection helpers of math/impl/Matrix44Projection.h, which only the
// library's own sources instantiate.

#include <math/ZEMath.h>

#include "InlineSamples.h"

namespace inline_table {

using namespace Lux::Math;

/// One operation of the table.
struct InlineOperation {
  const char* name;
  void (*run)(const Sample&, Results&);
};

template <class V>
using ScalarOf = typename V::Scalar;

// --- vectors of every float and double type --------------------------------

template <class V>
void plus(const Sample& s, Results& r) {
  r.put(s.get<V>(0) + s.get<V>(1));
}
template <class V>
void minus(const Sample& s, Results& r) {
  r.put(s.get<V>(0) - s.get<V>(1));
}
template <class V>
void timesScalar(const Sample& s, Results& r) {
  r.put(s.get<V>(0) * s.scalar<ScalarOf<V>>(1));
  r.put(s.scalar<ScalarOf<V>>(1) * s.get<V>(0));
}
template <class V>
void negate(const Sample& s, Results& r) {
  r.put(-s.get<V>(0));
}
template <class V>
void compoundAssign(const Sample& s, Results& r) {
  V v = s.get<V>(0);
  v += s.get<V>(1);
  r.put(v);
  v -= s.get<V>(2);
  r.put(v);
  v *= s.scalar<ScalarOf<V>>(3);
  r.put(v);
}
template <class V>
void equality(const Sample& s, Results& r) {
  const V a = s.get<V>(0), b = s.get<V>(1);
  r.put(a == b);
  r.put(a != b);
  r.put(a == a);
  r.put(a != a);
}
template <class V>
void dot(const Sample& s, Results& r) {
  r.put(s.get<V>(0).dot(s.get<V>(1)));
}
template <class V>
void length(const Sample& s, Results& r) {
  r.put(s.get<V>(0).length());
}
template <class V>
void normalize(const Sample& s, Results& r) {
  V v = s.get<V>(0);
  v.normalize();
  r.put(v);
}
template <class V>
void lerp(const Sample& s, Results& r) {
  V v;
  v.lerp(s.parameter<ScalarOf<V>>(2), s.get<V>(0), s.get<V>(1));
  r.put(v);
}
template <class V>
void quadrant(const Sample& s, Results& r) {
  r.put(int(s.get<V>(0).getQuadrant()));
}

// --- the 3- and 4-component float and double vectors -----------------------

template <class V>
void cross(const Sample& s, Results& r) {
  V v;
  v.cross(s.get<V>(0), s.get<V>(1));
  r.put(v);
  v = s.get<V>(0);
  v.cross(s.get<V>(1));
  r.put(v);
}
template <class V>
void octant(const Sample& s, Results& r) {
  r.put(int(s.get<V>(0).getOctant()));
}
template <class V>
void makeNormal(const Sample& s, Results& r) {
  V v;
  v.makeNormal(s.get<V>(0), s.get<V>(1), s.get<V>(2));
  r.put(v);
}
template <class V>
void reflect(const Sample& s, Results& r) {
  V v;
  v.reflect(s.get<V>(0), s.get<V>(1), s.parameter<ScalarOf<V>>(2));
  r.put(v);
}
template <class V, class M>
void transformVector(const Sample& s, Results& r) {
  V v;
  v.transformVector(s.get<V>(0), s.get<M>(1));
  r.put(v);
}
/// A general matrix; one with column 3 = (0, 0, 0, 1); for the 3-vectors also
/// one whose w is below the threshold.
template <class V, class M>
void transformPoint(const Sample& s, Results& r) {
  using T = ScalarOf<M>;
  M m = s.get<M>(1);
  V v;
  v.transformPoint(s.get<V>(0), m);
  r.put(v);
  m[3] = m[7] = m[11] = T(0);
  m[15] = T(1);
  v.transformPoint(s.get<V>(0), m);
  r.put(v);
  if constexpr (V::kComponentCount == 3) {
    m[15] = s.tiny<T>(2);
    v.transformPoint(s.get<V>(0), m);
    r.put(v);
  }
}
template <class V>
void bezierInterpolate(const Sample& s, Results& r) {
  V p0 = s.get<V>(0), p1 = s.get<V>(1), p2 = s.get<V>(2), p3 = s.get<V>(3);
  V v;
  v.bezierInterpolate(s.parameter<float>(4), p0, p1, p2, p3);
  r.put(v);
}

inline void pixelSpaceDiameter(const Sample& s, Results& r) {
  r.put(s.get<zeVec4f>(0).computePixelSpaceDiameter(s.get<zeVec3f>(1), s.scalar<float>(2)));
}
inline void modelSpaceDiameter(const Sample& s, Results& r) {
  r.put(s.get<zeVec4f>(0).computeModelSpaceDiameter(s.get<zeVec3f>(1), s.scalar<float>(2)));
}

// --- colours -----------------------------------------------------------------

constexpr int kLayoutCount = 8;  // the seven layouts and one number that is none
inline ZE_MATH_COLORSPACE_FORMAT layout(int i) { return static_cast<ZE_MATH_COLORSPACE_FORMAT>(i); }

/// Every pair of layouts, from a colour and from a hue-saturation-value triple.
template <class V>
void convertColor(const Sample& s, Results& r) {
  V hsv = s.colour<V>(1);
  hsv[0] = s.hue<ScalarOf<V>>(2);
  for (const V& start : {s.colour<V>(0), hsv}) {
    for (int from = 0; from < kLayoutCount; ++from) {
      for (int to = 0; to < kLayoutCount; ++to) {
        V v = start;
        v.convertColor(layout(from), layout(to));
        r.put(v);
      }
    }
  }
}
template <class V>
void packColor(const Sample& s, Results& r) {
  const V c = s.colour<V>(0);
  for (int f = 0; f < kLayoutCount; ++f) {
    r.put(c.packColor(layout(f)));
    if constexpr (V::kComponentCount == 3) r.put(c.packColor(layout(f), s.channel<ScalarOf<V>>(1, 0)));
  }
}
template <class V>
void unpackColor(const Sample& s, Results& r) {
  for (int f = 0; f < kLayoutCount; ++f) {
    V v = s.colour<V>(0);
    v.unpackColor(layout(f), s.word(1));
    r.put(v);
    if constexpr (V::kComponentCount == 4) {
      v.unpackColor(layout(f), s.word(1), s.channel<ScalarOf<V>>(2, 0));
      r.put(v);
    }
  }
}

template <class V>
V bytes(const Sample& s, int slot) {
  V v;
  for (int i = 0; i < V::kComponentCount; ++i) v[i] = s.byte(slot, i);
  return v;
}
/// Byte colours: lerp with parameters within and beyond [0, 1]; packing,
/// unpacking and conversion in every layout.
template <class V>
void byteLerp(const Sample& s, Results& r) {
  V v;
  v.lerp(s.parameter<float>(2), bytes<V>(s, 0), bytes<V>(s, 1));
  r.put(v);
  v.lerp(s.scalar<float>(3), bytes<V>(s, 0), bytes<V>(s, 1));
  r.put(v);
}
template <class V>
void byteColour(const Sample& s, Results& r) {
  const V c = bytes<V>(s, 0);
  for (int f = 0; f < kLayoutCount; ++f) {
    r.put(c.packColor(layout(f)));
    V v = c;
    v.unpackColor(layout(f), s.word(1));
    r.put(v);
    for (int to = 0; to < kLayoutCount; ++to) {
      v = c;
      v.convertColor(layout(f), layout(to));
      r.put(v);
    }
  }
}

// --- matrices ----------------------------------------------------------------

template <class M>
void elementwise(const Sample& s, Results& r) {
  const M a = s.get<M>(0), b = s.get<M>(1);
  M m;
  M::copyMatrix(m.data(), a.data());
  r.put(m);
  m.makeIdentity();
  r.put(m);
  m = a;
  m.transpose();
  r.put(m);
  m.transpose(a);
  r.put(m);
  m.add(a, b);
  r.put(m);
  m.subtract(a, b);
  r.put(m);
  m.divide(a, b);
  r.put(m);
  r.put(a == b);
  r.put(a == a);
  r.put(a.getMaxElement());
}
/// a·b into a third matrix, into a and into b.
inline void productFloat(const Sample& s, Results& r) {
  const zeMatrix44f a = s.get<zeMatrix44f>(0), b = s.get<zeMatrix44f>(1);
  zeMatrix44f m, left = a, right = b;
  zeMatrix44f::matrixMultiply(&m, &a, &b);
  r.put(m);
  zeMatrix44f::matrixMultiply(&left, &left, &b);
  r.put(left);
  zeMatrix44f::matrixMultiply(&right, &a, &right);
  r.put(right);
}
inline void productDouble(const Sample& s, Results& r) {
  const zeMatrix44d a = s.get<zeMatrix44d>(0), b = s.get<zeMatrix44d>(1);
  zeMatrix44d m;
  m.multiply(a, b);
  r.put(m);
  m = b;
  m.multiply(a);  // a·this
  r.put(m);
  m = a;
  m.multiply(m, b);
  r.put(m);
}
template <class M, class V3>
void translation(const Sample& s, Results& r) {
  const M a = s.get<M>(0);
  const V3 t = s.get<V3>(1);
  M m;
  m.makeTranslation(t);
  r.put(m);
  m = a;
  m.setTranslation(t);
  r.put(m);
  V3 read;
  a.getTranslation(read);
  r.put(read);
  m = s.get<M>(2);
  a.getTranslation(m, true);
  r.put(m);
  m = s.get<M>(2);
  a.getTranslation(m, false);
  r.put(m);
  m = a;
  m.preTranslation(t);
  r.put(m);
  m = a;
  m.postTranslation(t);
  r.put(m);
}
template <class M, class V3>
void scale(const Sample& s, Results& r) {
  const M a = s.get<M>(0);
  const V3 k = s.get<V3>(1), h = s.get<V3>(2);
  M m;
  m.makeScale(k);
  r.put(m);
  m.makeScale(s.scalar<ScalarOf<M>>(3));
  r.put(m);
  m.makeScale(k, h);
  r.put(m);
  m = a;
  m.setScale(k);
  r.put(m);
  m = a;
  m.setScale(k, h);
  r.put(m);
  m = a;
  m.preScale(k);
  r.put(m);
  m = a;
  m.postScale(k);
  r.put(m);
}
/// invert: kFailure leaves the destination as it was.
template <class M>
void invert(const Sample& s, Results& r) {
  M m = s.get<M>(1);
  r.put(m.invert(s.get<M>(0)));
  r.put(m);
}
template <class M>
void composeMatrixDegrees(const Sample& s, Results& r) {
  ScalarOf<M> parts[12];
  for (int i = 0; i < 12; ++i) parts[i] = s.scalar<ScalarOf<M>>(0, i);
  M m = s.get<M>(1);
  m.composeMatrixDegrees(m, parts);
  r.put(m);
}

// --- quaternions ---------------------------------------------------------------

template <class Q>
void quaternionMultiply(const Sample& s, Results& r) {
  Q q;
  q.multiply(s.get<Q>(0), s.get<Q>(1));
  r.put(q);
}
template <class Q>
void quaternionConjugateInvert(const Sample& s, Results& r) {
  Q q;
  q.conjugate(s.get<Q>(0));
  r.put(q);
  q.invert(s.get<Q>(0));
  r.put(q);
}
/// Blends, also of a quaternion with its opposite and (through a NaN dot
/// product) the perpendicular form.
template <class Q>
void quaternionLerp(const Sample& s, Results& r) {
  const Q a = s.get<Q>(0);
  Q q;
  q.lerp(s.parameter<ScalarOf<Q>>(2), a, s.get<Q>(1));
  r.put(q);
  q.lerp(s.parameter<ScalarOf<Q>>(2), a, Q(-a.x, -a.y, -a.z, -a.w));
  r.put(q);
}
inline void quaternionFloatOnly(const Sample& s, Results& r) {
  zeMatrix44f m = s.get<zeMatrix44f>(2);
  s.get<zeQuaternionf>(0).getRotationMatrix(m);
  r.put(m);
  zeQuaternionf b = s.get<zeQuaternionf>(1), q;
  q.fastInterpolation(s.parameter<float>(3), s.get<zeQuaternionf>(0), b);
  r.put(q);
}

// --- volumes -------------------------------------------------------------------

inline void planeSignedDistance(const Sample& s, Results& r) {
  zePlane* plane = s.plane();
  plane->_norm = s.get<zeVec3f>(0);
  plane->_offset = s.scalar<float>(1);
  r.put(plane->signedDistance(s.get<zeVec3f>(2)));
}

// --- the table -------------------------------------------------------------------

#define ZE_INLINE_EVERY_VECTOR(name, fn)                                                          \
  {"zeVec2f " name, fn<zeVec2f>}, {"zeVec2d " name, fn<zeVec2d>}, {"zeVec3f " name, fn<zeVec3f>}, \
      {"zeVec3d " name, fn<zeVec3d>}, {"zeVec4f " name, fn<zeVec4f>}, {                           \
    "zeVec4d " name, fn<zeVec4d>                                                                  \
  }
#define ZE_INLINE_3_AND_4(name, fn)                                                                 \
  {"zeVec3f " name, fn<zeVec3f>}, {"zeVec3d " name, fn<zeVec3d>}, {"zeVec4f " name, fn<zeVec4f>}, { \
    "zeVec4d " name, fn<zeVec4d>                                                                    \
  }
#define ZE_INLINE_3_AND_4_BY_MATRIX(name, fn)                                               \
  {"zeVec3f " name, fn<zeVec3f, zeMatrix44f>}, {"zeVec3d " name, fn<zeVec3d, zeMatrix44d>}, \
      {"zeVec4f " name, fn<zeVec4f, zeMatrix44f>}, {                                        \
    "zeVec4d " name, fn<zeVec4d, zeMatrix44d>                                               \
  }
#define ZE_INLINE_MATRICES(name, fn) \
  {"zeMatrix44f " name, fn<zeMatrix44f>}, { "zeMatrix44d " name, fn<zeMatrix44d> }
#define ZE_INLINE_MATRICES_WITH_VECTOR(name, fn) \
  {"zeMatrix44f " name, fn<zeMatrix44f, zeVec3f>}, { "zeMatrix44d " name, fn<zeMatrix44d, zeVec3d> }
#define ZE_INLINE_QUATERNIONS(name, fn) \
  {"zeQuaternionf " name, fn<zeQuaternionf>}, { "zeQuaterniond " name, fn<zeQuaterniond> }

inline const InlineOperation kInlineOperations[] = {
    ZE_INLINE_EVERY_VECTOR("operator+", plus),
    ZE_INLINE_EVERY_VECTOR("operator-", minus),
    ZE_INLINE_EVERY_VECTOR("operator* (both orders)", timesScalar),
    ZE_INLINE_EVERY_VECTOR("unary operator-", negate),
    ZE_INLINE_EVERY_VECTOR("operator+= -= *=", compoundAssign),
    ZE_INLINE_EVERY_VECTOR("operator== !=", equality),
    ZE_INLINE_EVERY_VECTOR("dot", dot),
    ZE_INLINE_EVERY_VECTOR("length", length),
    ZE_INLINE_EVERY_VECTOR("normalize", normalize),
    ZE_INLINE_EVERY_VECTOR("lerp", lerp),
    ZE_INLINE_EVERY_VECTOR("getQuadrant", quadrant),
    ZE_INLINE_3_AND_4("cross (both forms)", cross),
    ZE_INLINE_3_AND_4("getOctant", octant),
    ZE_INLINE_3_AND_4("makeNormal", makeNormal),
    ZE_INLINE_3_AND_4("reflect", reflect),
    ZE_INLINE_3_AND_4_BY_MATRIX("transformVector", transformVector),
    ZE_INLINE_3_AND_4_BY_MATRIX("transformPoint", transformPoint),
    {"zeVec3f bezierInterpolate", bezierInterpolate<zeVec3f>},
    {"zeVec4f bezierInterpolate", bezierInterpolate<zeVec4f>},
    {"zeVec4f computePixelSpaceDiameter", pixelSpaceDiameter},
    {"zeVec4f computeModelSpaceDiameter", modelSpaceDiameter},
    ZE_INLINE_3_AND_4("convertColor", convertColor),
    ZE_INLINE_3_AND_4("packColor", packColor),
    ZE_INLINE_3_AND_4("unpackColor", unpackColor),
    {"zeVec3uc lerp", byteLerp<zeVec3uc>},
    {"zeVec4uc lerp", byteLerp<zeVec4uc>},
    {"zeVec3uc packColor unpackColor convertColor", byteColour<zeVec3uc>},
    {"zeVec4uc packColor unpackColor convertColor", byteColour<zeVec4uc>},
    ZE_INLINE_MATRICES("copy identity transpose add subtract divide == getMaxElement", elementwise),
    {"zeMatrix44f matrixMultiply", productFloat},
    {"zeMatrix44d multiply", productDouble},
    ZE_INLINE_MATRICES_WITH_VECTOR("translation", translation),
    ZE_INLINE_MATRICES_WITH_VECTOR("scale", scale),
    ZE_INLINE_MATRICES("invert", invert),
    ZE_INLINE_MATRICES("composeMatrixDegrees", composeMatrixDegrees),
    ZE_INLINE_QUATERNIONS("multiply", quaternionMultiply),
    ZE_INLINE_QUATERNIONS("conjugate invert", quaternionConjugateInvert),
    ZE_INLINE_QUATERNIONS("lerp", quaternionLerp),
    {"zeQuaternionf getRotationMatrix fastInterpolation", quaternionFloatOnly},
    {"zePlane signedDistance", planeSignedDistance},
};

#undef ZE_INLINE_EVERY_VECTOR
#undef ZE_INLINE_3_AND_4
#undef ZE_INLINE_3_AND_4_BY_MATRIX
#undef ZE_INLINE_MATRICES
#undef ZE_INLINE_MATRICES_WITH_VECTOR
#undef ZE_INLINE_QUATERNIONS

/// Runs every sample of every operation, handing each line of results to
/// `line(name, sample, text)`. Registers the plane class on its first use.
template <class F>
void runInlineOperations(F line) {
  Lux::zeSmartPointer<zePlane> plane =
      Lux::zeSmartPointer<zePlane>::adopt(static_cast<zePlane*>(zePlane::_instantiateFromPool(nullptr)));
  for (const InlineOperation& op : kInlineOperations) {
    for (int i = 0; i < kSamples; ++i) {
      Results results;
      op.run(Sample(i, plane.get()), results);
      line(op.name, i, results.text());
    }
  }
}

}  // namespace inline_table
