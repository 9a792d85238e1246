#include "math/meta/zeVec4fList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeVec4fList, zeVec4fMetaField)

}  // namespace Math
}  // namespace Lux
