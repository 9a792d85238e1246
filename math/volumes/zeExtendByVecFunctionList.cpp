#include "math/volumes/zeExtendByVecFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeExtendByVecFunctionList)

}  // namespace Math
}  // namespace Lux
