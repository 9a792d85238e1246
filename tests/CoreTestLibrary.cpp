// A small loadable library for the loader test: one class, registered by the
// library object's registration function.

#include <cstddef>

#include "core/LuxCore.h"

#define WIDGETS_API __attribute__((visibility("default")))

namespace widgets {

class Widget : public Lux::zeObject {
  ZE_DECLARE_CLASS(WIDGETS_API, Widget)
  ZE_DECLARE_FIELD_SLOT(WIDGETS_API, _size)

 public:
  int _size;

  static void bayRegisterInitialize() {
    const int first = _Meta->getMetaFieldCount();
    Lux::zeMetaObject::FieldInstantiateFunction make[] = {&Lux::zeIntMetaField::_instantiateFromPool};
    _Meta->instantiateAndAppendFields(make, 1);
    static_cast<Lux::zeIntMetaField*>(_Meta->getIndexedMetaField(first))->setDefault(3);
    const char* const names[] = {"_size"};
    Lux::zeMetaField** slots[] = {&k_size};
    int offsets[] = {offsetof(Widget, _size)};
    _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
  }
};

ZE_DEFINE_FIELD_SLOT(Widget, _size)
ZE_IMPLEMENT_CLASS(Widget, Lux::zeObject, Lux::zeNoLibraryInit, &Widget::bayRegisterInitialize, nullptr)

void registerWidgets() { Widget::bayRegister(); }

}  // namespace widgets

extern "C" WIDGETS_API void createLibraryObject(Lux::zeSmartPointer<Lux::zeLibrary>& result) {
  Lux::zeLibrary* library = static_cast<Lux::zeLibrary*>(Lux::zeLibrary::_instantiateFromPool(nullptr));
  if (!library) return;
  library->setRegisterFunction(&widgets::registerWidgets);
  result = library;
  library->release();
}
