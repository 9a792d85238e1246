// The out-of-line members of zeMatrix44f: the shared matrix algorithms
// instantiated for single precision, and the members only the float class has.

#include "math/zeMatrix44f.h"

#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

}  // namespace Math
}  // namespace Lux
