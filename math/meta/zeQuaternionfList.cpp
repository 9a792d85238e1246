#include "math/meta/zeQuaternionfList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeQuaternionfList, zeVec4fMetaField)

}  // namespace Math
}  // namespace Lux
