// The out-of-line members of zeMatrix44f: the shared matrix algorithms
// instantiated for single precision, and the members only the float class has.

#include "math/zeMatrix44f.h"

#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

#include "core/zeResult.h"
#include "math/impl/Matrix44Construction.inl"
#include "math/impl/Matrix44Decomposition.inl"
#include "math/impl/Matrix44Inversion.inl"
#include "math/impl/Matrix44Projection.inl"
#include "math/impl/Matrix44QuaternionOps.inl"
#include "math/zeQuaternionf.h"

namespace Lux {
namespace Math {

template class impl::Matrix44Construction<zeMatrix44f, float, zeVec3f, zeVec4f>;
template class impl::Matrix44Decomposition<zeMatrix44f, float, zeVec3f, zeVec4f>;
template class impl::Matrix44Inversion<zeMatrix44f, float, zeVec3f, zeVec4f>;
template class impl::Matrix44Projection<zeMatrix44f, float, zeVec3f, zeVec4f>;
template class impl::Matrix44QuaternionOps<zeMatrix44f, float, zeQuaternionf>;

void zeMatrix44f::makeQuaternion(const zeQuaternionf& q) noexcept {
  setQuaternion(q);
  // The float class reads the named vectors at every call, so a program that
  // changed them sees its own values here.
  const zeVec3f& zero = zeVec3f::ZeroVector;
  const zeVec4f& lastRow = zeVec4f::TVector;
  float* e = data();
  e[3] = zero.x;
  e[7] = zero.y;
  e[11] = zero.z;
  e[12] = lastRow.x;
  e[13] = lastRow.y;
  e[14] = lastRow.z;
  e[15] = lastRow.w;
}

void zeMatrix44f::makeRotation(const zeVec3f& from, const zeVec3f& to) noexcept {
  const float d = from.x * to.x + from.y * to.y + from.z * to.z;
  if (d >= 0.999999f && d <= 1.000001f) {
    makeIdentity();
    return;
  }
  if (d >= -1.000001f && d <= -0.999999f) {
    // Opposite directions: half a turn about any axis perpendicular to to.
    zeVec3f axis;
    axis.cross(to, zeVec3f(1.0f, 0.0f, 0.0f));
    const float lengthSquared = axis.dot(axis);
    if (lengthSquared >= -1e-6f && lengthSquared <= 1e-6f) axis.cross(to, zeVec3f(0.0f, 1.0f, 0.0f));
    axis.normalize();
    makeRotationRadians(3.1415927f, axis);
    return;
  }
  // B has the rows from, b, n (a frame with from as x axis and the rotation
  // axis n as z axis); G turns x towards to within that frame.
  zeVec3f n;
  n.cross(from, to);
  n.normalize();
  zeVec3f b;
  b.cross(n, from);
  const zeMatrix44f frame(from.x, from.y, from.z, 0.0f, b.x, b.y, b.z, 0.0f, n.x, n.y, n.z, 0.0f, 0.0f, 0.0f, 0.0f,
                          1.0f);
  zeMatrix44f frameT;
  frameT.transpose(frame);
  zeVec3f local;  // to in the frame: (p, q, r)
  local.transformVector(to, frameT);
  const float p = local.x, q = local.y, r = local.z;
  // r lands in both m02 and m12 as the steps have it; it is 0 for exact input.
  const zeMatrix44f turn(p, q, r, 0.0f, -q, p, r, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f);
  matrixMultiply(this, &frameT, &turn);
  matrixMultiply(this, this, &frame);
}

int zeMatrix44f::decomposeMatrixRadians(zeMatrix44f& m, float* parts) noexcept {
  zeMatrix44f local = m;
  if (!divideByM33(local)) return 0;  // m33 = 0: the plain 0, deliberately not kFailure
  // The float class resets column 3 of the matrix it is called on, not of its
  // copy of m, and reads the rows below from itself, undivided. The double
  // twin does both on the copy; the two agree for the usual call m == *this.
  setAffineColumn(*this);
  if (determinant(local) == 0.0f) return kFailure;
  writeParts(local, *this, parts);
  return kSuccess;
}

}  // namespace Math
}  // namespace Lux
