#include "math/kernels/zeVectorMorphing.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_CLASS(zeVectorMorphing, ::Lux::zeObject, nullptr, &zeVectorMorphing::bayRegisterUser)

zeVectorMorphing::MorphingFunction zeVectorMorphing::_vectorMorphingFunction = nullptr;
zeVectorMorphing::MorphingFunction zeVectorMorphing::_vectorMorphingAlignedFunction = nullptr;

void zeVectorMorphing::bayRegisterUser() { userRegister(); }

void zeVectorMorphing::userRegister() {
  _vectorMorphingFunction = &morphNonAligned;
  // There is no separate aligned kernel: aligned data takes the same one.
  _vectorMorphingAlignedFunction = &morphNonAligned;
}

}  // namespace Math
}  // namespace Lux
