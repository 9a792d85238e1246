#include "math/volumes/zeExtendByRayFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeExtendByRayFunctionList)

}  // namespace Math
}  // namespace Lux
