#include "math/meta/zeMatrix44fList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeMatrix44fList, zeMatrix44fMetaField)

}  // namespace Math
}  // namespace Lux
