#include "math/kernels/zeVectorBlending.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_CLASS(zeVectorBlending, ::Lux::zeObject, nullptr, &zeVectorBlending::bayRegisterUser)

zeVectorBlending::BlendingFunction zeVectorBlending::_vectorBlendingFunction = nullptr;
zeVectorBlending::BlendingFunction zeVectorBlending::_vectorBlendingOneWeightFunction = nullptr;

void zeVectorBlending::bayRegisterUser() { userRegister(); }

void zeVectorBlending::userRegister() {
  _vectorBlendingFunction = &indexedBlendAligned4Vectors;
  _vectorBlendingOneWeightFunction = &indexedBlendAligned4VectorsOneWeight;
}

}  // namespace Math
}  // namespace Lux
