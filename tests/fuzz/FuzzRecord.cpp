// Fuzzes reading an object back from its byte record, in either byte order.
// The object has a field of every value type, a two-element array field of
// every type and a list of every kind, so nested records of variable size
// are read too. The first input byte picks the byte order and whether the
// rest is a whole record or only the body behind a header made valid here
// (so that the fuzzer gets past the checksum); the input is read from a
// buffer of exactly its length, so a read past it is caught.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <vector>

#include "FuzzSupport.h"

using namespace Lux;
using namespace Lux::Math;

namespace zefuzz {

#define ZE_FUZZ_VALUE_FIELDS(X)                        \
  X(zeVec2f, _v2f, zeVec2fMetaField, 1)                \
  X(zeVec3f, _v3f, zeVec3fMetaField, 1)                \
  X(zeVec4f, _v4f, zeVec4fMetaField, 1)                \
  X(zeVec2d, _v2d, zeVec2dMetaField, 1)                \
  X(zeVec3d, _v3d, zeVec3dMetaField, 1)                \
  X(zeVec4d, _v4d, zeVec4dMetaField, 1)                \
  X(zeVec3uc, _v3uc, zeVec3ucMetaField, 1)             \
  X(zeVec4uc, _v4uc, zeVec4ucMetaField, 1)             \
  X(zeMatrix44f, _m44f, zeMatrix44fMetaField, 1)       \
  X(zeMatrix44d, _m44d, zeMatrix44dMetaField, 1)       \
  X(zeVec2f, _v2fs, zeVec2fArrayMetaField, 2)          \
  X(zeVec3f, _v3fs, zeVec3fArrayMetaField, 2)          \
  X(zeVec4f, _v4fs, zeVec4fArrayMetaField, 2)          \
  X(zeVec2d, _v2ds, zeVec2dArrayMetaField, 2)          \
  X(zeVec3d, _v3ds, zeVec3dArrayMetaField, 2)          \
  X(zeVec4d, _v4ds, zeVec4dArrayMetaField, 2)          \
  X(zeVec3uc, _v3ucs, zeVec3ucArrayMetaField, 2)       \
  X(zeVec4uc, _v4ucs, zeVec4ucArrayMetaField, 2)       \
  X(zeMatrix44f, _m44fs, zeMatrix44fArrayMetaField, 2) \
  X(zeMatrix44d, _m44ds, zeMatrix44dArrayMetaField, 2)

#define ZE_FUZZ_LISTS(X)                  \
  X(zeVec2fList, _v2fList)                \
  X(zeVec3fList, _v3fList)                \
  X(zeVec3ucList, _v3ucList)              \
  X(zeVec4fList, _v4fList)                \
  X(zeVec4ucList, _v4ucList)              \
  X(zeQuaternionfList, _quatList)         \
  X(zeMatrix44fList, _m44fList)           \
  X(zeVec2fListList, _v2fListList)        \
  X(zeVec3fListList, _v3fListList)        \
  X(zeVec4fListList, _v4fListList)        \
  X(zeQuaternionfListList, _quatListList) \
  X(zeMatrix44fListList, _m44fListList)

class Everything : public zeObject {
  ZE_DECLARE_CLASS(, Everything)

 public:
#define ZE_MEMBER(T, NAME, FIELD, N) T NAME[N];
  ZE_FUZZ_VALUE_FIELDS(ZE_MEMBER)
#undef ZE_MEMBER
#define ZE_MEMBER(L, NAME) L* NAME;
  ZE_FUZZ_LISTS(ZE_MEMBER)
#undef ZE_MEMBER

  static void bayRegisterInitialize();
};

void Everything::bayRegisterInitialize() {
  zeMetaObject::FieldInstantiateFunction make[] = {
#define ZE_MAKE(T, NAME, FIELD, N) &FIELD::_instantiateFromPool,
      ZE_FUZZ_VALUE_FIELDS(ZE_MAKE)
#undef ZE_MAKE
#define ZE_MAKE(L, NAME) &zeObjectReferenceMetaField::_instantiateFromPool,
          ZE_FUZZ_LISTS(ZE_MAKE)
#undef ZE_MAKE
  };
  static const char* const names[] = {
#define ZE_NAME(T, NAME, FIELD, N) #NAME,
      ZE_FUZZ_VALUE_FIELDS(ZE_NAME)
#undef ZE_NAME
#define ZE_NAME(L, NAME) #NAME,
          ZE_FUZZ_LISTS(ZE_NAME)
#undef ZE_NAME
  };
  int offsets[] = {
#define ZE_OFFSET(T, NAME, FIELD, N) static_cast<int>(offsetof(Everything, NAME)),
      ZE_FUZZ_VALUE_FIELDS(ZE_OFFSET)
#undef ZE_OFFSET
#define ZE_OFFSET(L, NAME) static_cast<int>(offsetof(Everything, NAME)),
          ZE_FUZZ_LISTS(ZE_OFFSET)
#undef ZE_OFFSET
  };
  static const int nums[] = {
#define ZE_NUM(T, NAME, FIELD, N) N,
      ZE_FUZZ_VALUE_FIELDS(ZE_NUM)
#undef ZE_NUM
  };
  constexpr int kCount = static_cast<int>(sizeof offsets / sizeof offsets[0]);
  zeMetaField** slots[kCount] = {};
  const int first = _Meta->getMetaFieldCount();
  _Meta->instantiateAndAppendFields(make, kCount);
  for (int i = 0; i < static_cast<int>(sizeof nums / sizeof nums[0]); ++i) {
    if (nums[i] == 1) continue;
    zeMetaField* field = _Meta->getIndexedMetaField(first + i);
    field->getMetaObject()->getMetaField("_num")->setFromMemory(field, &nums[i]);
  }
  _Meta->setMetaFieldBasicPropertiesAndValidateAll(names, slots, offsets, first);
}

ZE_IMPLEMENT_CLASS(Everything, zeObject, zeNoLibraryInit, &Everything::bayRegisterInitialize, nullptr)

namespace {

/// A new list of class L holding two values, or for a list of lists one list.
template <class L>
L* newList() {
  L* list = static_cast<L*>(L::_instantiateFromPool(nullptr));
  if constexpr (std::is_base_of_v<zeObjectList, L>) {
    using Element = std::remove_pointer_t<decltype(list->get(0))>;
    Element* element = newList<Element>();
    list->append(element);
    element->release();
  } else {
    list->resize(2);
  }
  return list;
}

/// The first three header words (magic, class hash, field count) of a real
/// record in each byte order, made once.
struct Headers {
  unsigned char native[12];
  unsigned char swapped[12];
};

const Headers& headers() {
  static Headers h = [] {
    Headers made{};
    Everything* o = static_cast<Everything*>(Everything::_instantiateFromPool(nullptr));
#define ZE_FILL(L, NAME)                                             \
  zeObjectReferenceMetaField::setReferenced(&o->NAME, newList<L>()); \
  o->NAME->release();
    ZE_FUZZ_LISTS(ZE_FILL)
#undef ZE_FILL
    std::vector<unsigned char> record(o->getRecordSize());
    if (o->writeRecord(record.data(), static_cast<unsigned int>(record.size()), false) != kSuccess) std::abort();
    std::memcpy(made.native, record.data(), 12);
    if (o->writeRecord(record.data(), static_cast<unsigned int>(record.size()), true) != kSuccess) std::abort();
    std::memcpy(made.swapped, record.data(), 12);
    o->release();
    return made;
  }();
  return h;
}

void putWord(unsigned char* at, std::uint32_t value, bool swap) {
  if (swap) value = __builtin_bswap32(value);
  std::memcpy(at, &value, 4);
}

std::uint32_t fnv1a(const unsigned char* bytes, std::size_t length) {
  std::uint32_t hash = 2166136261u;
  for (std::size_t i = 0; i < length; ++i) hash = (hash ^ bytes[i]) * 16777619u;
  return hash;
}

}  // namespace
}  // namespace zefuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > (1u << 20)) return 0;
  const bool swap = (data[0] & 1) != 0;
  const bool makeHeader = (data[0] & 2) != 0;
  std::vector<unsigned char> record;
  if (makeHeader) {
    const zefuzz::Headers& h = zefuzz::headers();
    record.resize(20 + size - 1);
    std::memcpy(record.data(), swap ? h.swapped : h.native, 12);
    zefuzz::putWord(record.data() + 12, static_cast<std::uint32_t>(record.size()), swap);
    std::memcpy(record.data() + 20, data + 1, size - 1);
    zefuzz::putWord(record.data() + 16, zefuzz::fnv1a(data + 1, size - 1), swap);
  } else {
    record.assign(data + 1, data + size);
  }

  zefuzz::Everything* object = static_cast<zefuzz::Everything*>(zefuzz::Everything::_instantiateFromPool(nullptr));
  if (!object) std::abort();
  const int result = object->readRecord(record.data(), static_cast<unsigned int>(record.size()), swap);
  if (result != Lux::kSuccess && result != Lux::kFailure) std::abort();
  if (result == Lux::kSuccess) {
    // What was read can be written again.
    std::vector<unsigned char> again(object->getRecordSize());
    if (!again.empty()) object->writeRecord(again.data(), static_cast<unsigned int>(again.size()), swap);
  }
  object->release();
  return 0;
}
