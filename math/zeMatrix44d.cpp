// The out-of-line members of zeMatrix44d: the shared matrix algorithms
// instantiated for double precision, and the members only the double class has.

#include "math/zeMatrix44d.h"

#include "math/zeVec3d.h"
#include "math/zeVec4d.h"

namespace Lux {
namespace Math {

}  // namespace Math
}  // namespace Lux
