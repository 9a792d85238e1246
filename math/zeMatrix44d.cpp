// The out-of-line members of zeMatrix44d: the shared matrix algorithms
// instantiated for double precision, and the members only the double class has.

#include "math/zeMatrix44d.h"

#include "math/zeVec3d.h"
#include "math/zeVec4d.h"

#include "core/zeResult.h"
#include "math/impl/Matrix44Construction.inl"
#include "math/impl/Matrix44Decomposition.inl"
#include "math/impl/Matrix44Inversion.inl"
#include "math/impl/Matrix44Projection.inl"
#include "math/impl/Matrix44QuaternionOps.inl"
#include "math/zeQuaterniond.h"

namespace Lux {
namespace Math {

template class impl::Matrix44Construction<zeMatrix44d, double, zeVec3d, zeVec4d>;
template class impl::Matrix44Decomposition<zeMatrix44d, double, zeVec3d, zeVec4d>;
template class impl::Matrix44Inversion<zeMatrix44d, double, zeVec3d, zeVec4d>;
template class impl::Matrix44Projection<zeMatrix44d, double, zeVec3d, zeVec4d>;
template class impl::Matrix44QuaternionOps<zeMatrix44d, double, zeQuaterniond>;

int zeMatrix44d::decomposeMatrixRadians(zeMatrix44d& m, double* parts) noexcept {
  zeMatrix44d local = m;
  if (!divideByM33(local)) return 0;  // m33 = 0: the plain 0, deliberately not kFailure
  // Column 3 is reset on the copy, and rows, scale and shear come from the
  // copy divided by m33 (the float twin works on itself there).
  setAffineColumn(local);
  if (determinant(local) == 0.0) return kFailure;
  writeParts(local, local, parts);
  return kSuccess;
}

}  // namespace Math
}  // namespace Lux
