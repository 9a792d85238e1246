// The projections of both matrix classes that take a plane object: they read
// its _norm and _offset and hand them to the shared plane templates.

#include "math/impl/Matrix44Projection.h"
#include "math/volumes/zePlane.h"
#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

namespace {

// The plane's float normal as doubles; every float is exact in double.
zeVec3d widenedNormal(const zePlane* plane) { return zeVec3d(plane->_norm.x, plane->_norm.y, plane->_norm.z); }

}  // namespace

void zeMatrix44f::makeOrthographicProjection(const zePlane* plane, const zeVec3f& direction) noexcept {
  impl::projectAlongOntoPlane(*this, plane->_norm, plane->_offset, direction);
}

void zeMatrix44f::makeShadowMatrix(const zePlane* plane, const zeVec3f& light) noexcept {
  impl::shadowOntoPlane(*this, plane->_norm, plane->_offset, light);
}

// The double class widens the plane's float fields exactly and computes every
// product and sum in double.
void zeMatrix44d::makeOrthographicProjection(const zePlane* plane, const zeVec3d& direction) noexcept {
  impl::projectAlongOntoPlane(*this, widenedNormal(plane), static_cast<double>(plane->_offset), direction);
}

void zeMatrix44d::makeShadowMatrix(const zePlane* plane, const zeVec3d& light) noexcept {
  impl::shadowOntoPlane(*this, widenedNormal(plane), static_cast<double>(plane->_offset), light);
}

}  // namespace Math
}  // namespace Lux
