#include "math/volumes/zeContainsRayFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeContainsRayFunctionList)

}  // namespace Math
}  // namespace Lux
