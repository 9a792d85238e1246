#include "math/meta/zeVec2fList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeVec2fList, zeVec2fMetaField)

}  // namespace Math
}  // namespace Lux
