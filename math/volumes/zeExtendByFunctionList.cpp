#include "math/volumes/zeExtendByFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeExtendByFunctionList)

}  // namespace Math
}  // namespace Lux
