#include "math/volumes/zeRay.h"

#include <cstddef>

#include "core/zeFloatMetaField.h"
#include "core/zeResult.h"
#include "math/meta/zeVec3fMetaField.h"
#include "math/zeMathThreshold.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

ZE_DEFINE_FIELD_SLOT(zeRay, _pos)
ZE_DEFINE_FIELD_SLOT(zeRay, _dir)
ZE_DEFINE_FIELD_SLOT(zeRay, _len)
ZE_MATH_IMPLEMENT_CLASS(zeRay, ::Lux::zeObject, &zeRay::bayRegisterInitialize, nullptr)

zeMetaEnum* zeRay::ISET_SIDES_Meta = nullptr;

void zeRay::bayRegisterInitialize() {
  const int first = _Meta->getMetaFieldCount();
  zeMetaObject::FieldInstantiateFunction make[] = {&zeVec3fMetaField::_instantiateFromPool,
                                                   &zeVec3fMetaField::_instantiateFromPool,
                                                   &zeFloatMetaField::_instantiateFromPool};
  if (_Meta->instantiateAndAppendFields(make, 3) != kSuccess) return;
  // "_len" keeps the float field's own default, 0.
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first))->setDefault(zeVec3f(0.0f, 0.0f, 0.0f));
  static_cast<zeVec3fMetaField*>(_Meta->getIndexedMetaField(first + 1))->setDefault(zeVec3f(0.0f, 1.0f, 0.0f));
  static const char* const names[] = {"_pos", "_dir", "_len"};
  zeMetaField** slots[] = {&k_pos, &k_dir, &k_len};
  int offsets[] = {static_cast<int>(offsetof(zeRay, _pos)), static_cast<int>(offsetof(zeRay, _dir)),
                   static_cast<int>(offsetof(zeRay, _len))};
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

void zeRay::make(const zeVec3f& from, const zeVec3f& to) {
  const zeVec3f start = from;
  const zeVec3f difference = to - from;
  _pos = start;
  _dir = difference;
  _len = difference.length();
  if (_len > zeSmallThreshold<float>) _dir = _dir * (1.0f / _len);
}

void zeRay::transform(const zeMatrix44f& m) {
  zeVec3f end = _pos + _dir * _len;
  _pos.transformPoint(_pos, m);
  end.transformPoint(end, m);
  _dir = end - _pos;
  _len = _dir.length();
  _dir = _dir * (1.0f / _len);
}

zeMetaEnum* zeRay::getISET_SIDESMetaEnum() {
  if (ISET_SIDES_Meta) return ISET_SIDES_Meta;
  static const char* const names[] = {"FRONT_SIDE", "BACK_SIDE", "BOTH_SIDES"};
  int values[] = {FRONT_SIDE, BACK_SIDE, BOTH_SIDES};
  ISET_SIDES_Meta = zeMetaEnum::createMetaEnum("ISET_SIDES", names, values, 3);
  return ISET_SIDES_Meta;
}

}  // namespace Math
}  // namespace Lux
