// The named constants of the value types. Every constructor used here is
// constexpr, so the constants are constant-initialised: they hold their values
// before any code of the library runs, and they stay assignable.

#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec2d.h"
#include "math/zeVec2f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "math/zeVec4d.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

zeVec2f zeVec2f::ZeroVector(0.0f, 0.0f);
zeVec2f zeVec2f::XVector(1.0f, 0.0f);
zeVec2f zeVec2f::YVector(0.0f, 1.0f);

zeVec2d zeVec2d::ZeroVector(0.0, 0.0);
zeVec2d zeVec2d::XVector(1.0, 0.0);
zeVec2d zeVec2d::YVector(0.0, 1.0);

zeVec3f zeVec3f::ZeroVector(0.0f, 0.0f, 0.0f);
zeVec3f zeVec3f::OneVector(1.0f, 1.0f, 1.0f);
zeVec3f zeVec3f::XVector(1.0f, 0.0f, 0.0f);
zeVec3f zeVec3f::YVector(0.0f, 1.0f, 0.0f);
zeVec3f zeVec3f::ZVector(0.0f, 0.0f, 1.0f);

zeVec3d zeVec3d::ZeroVector(0.0, 0.0, 0.0);
zeVec3d zeVec3d::OneVector(1.0, 1.0, 1.0);
zeVec3d zeVec3d::XVector(1.0, 0.0, 0.0);
zeVec3d zeVec3d::YVector(0.0, 1.0, 0.0);
zeVec3d zeVec3d::ZVector(0.0, 0.0, 1.0);

zeVec4f zeVec4f::ZeroVector(0.0f, 0.0f, 0.0f, 0.0f);
zeVec4f zeVec4f::OneVector(1.0f, 1.0f, 1.0f, 1.0f);
zeVec4f zeVec4f::XVector(1.0f, 0.0f, 0.0f, 0.0f);
zeVec4f zeVec4f::YVector(0.0f, 1.0f, 0.0f, 0.0f);
zeVec4f zeVec4f::ZVector(0.0f, 0.0f, 1.0f, 0.0f);
zeVec4f zeVec4f::TVector(0.0f, 0.0f, 0.0f, 1.0f);

zeVec4d zeVec4d::ZeroVector(0.0, 0.0, 0.0, 0.0);
zeVec4d zeVec4d::OneVector(1.0, 1.0, 1.0, 1.0);
zeVec4d zeVec4d::XVector(1.0, 0.0, 0.0, 0.0);
zeVec4d zeVec4d::YVector(0.0, 1.0, 0.0, 0.0);
zeVec4d zeVec4d::ZVector(0.0, 0.0, 1.0, 0.0);
zeVec4d zeVec4d::TVector(0.0, 0.0, 0.0, 1.0);

zeMatrix44f zeMatrix44f::identityMatrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
zeMatrix44f zeMatrix44f::zeroMatrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);

zeMatrix44d zeMatrix44d::identityMatrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
zeMatrix44d zeMatrix44d::zeroMatrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);

}  // namespace Math
}  // namespace Lux
