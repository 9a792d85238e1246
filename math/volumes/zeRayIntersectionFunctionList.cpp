#include "math/volumes/zeRayIntersectionFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeRayIntersectionFunctionList)

}  // namespace Math
}  // namespace Lux
