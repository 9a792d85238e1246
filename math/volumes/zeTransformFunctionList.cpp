#include "math/volumes/zeTransformFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeTransformFunctionList)

}  // namespace Math
}  // namespace Lux
