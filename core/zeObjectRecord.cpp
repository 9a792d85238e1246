#include "core/zeObjectRecord.h"

#include <cstring>

#include "core/zeMemoryPool.h"
#include "core/zeMetaField.h"
#include "core/zeMetaObject.h"
#include "core/zeObject.h"
#include "core/zeResult.h"

namespace Lux {

namespace {

// Counts the records under way, nested ones included.
class Nesting {
 public:
  Nesting() { ++depth; }
  ~Nesting() { --depth; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
  bool allowed() const { return depth <= zeObjectRecord::kMaxNesting; }

 private:
  static int depth;
};
int Nesting::depth = 0;

std::uint32_t classHashOf(const zeMetaObject* meta) {
  const char* name = meta->getName();
  return zeObjectRecord::hashOf(name, static_cast<unsigned int>(std::strlen(name)));
}

void swapBytes(void* a, void* b, unsigned int count) {
  unsigned char* p = static_cast<unsigned char*>(a);
  unsigned char* q = static_cast<unsigned char*>(b);
  for (unsigned int i = 0; i < count; ++i) {
    const unsigned char t = p[i];
    p[i] = q[i];
    q[i] = t;
  }
}

// Reads every field of `scratch` from the bytes behind the header; false
// when a field is refused or the fields do not fill the record exactly.
bool readFields(zeObject* scratch, const unsigned char* record, unsigned int length, bool swap) {
  const zeMetaObject* meta = scratch->getMetaObject();
  unsigned int cursor = zeObjectRecord::kHeaderBytes;
  for (int i = 0; i < meta->getMetaFieldCount(); ++i) {
    const zeMetaField* field = meta->getIndexedMetaField(i);
    unsigned int size;
    if (!zeObjectRecord::storedSizeOf(field, scratch, record + cursor, length - cursor, swap, size)) return false;
    const int read = field->readRawFieldMemory(field->fieldMemory(scratch), record + cursor, nullptr, swap);
    if (read < 0 || static_cast<unsigned int>(read) != size) return false;
    cursor += size;
  }
  return cursor == length;
}

// Checks the header of the record at `record` for `meta`; the record's
// length, or 0 when the header or the checksum is wrong.
unsigned int checkedLength(const zeMetaObject* meta, const unsigned char* record, unsigned int length, bool swap) {
  if (length < zeObjectRecord::kHeaderBytes) return 0;
  if (zeObjectRecord::getWord(record, swap) != zeObjectRecord::kMagic) return 0;
  if (zeObjectRecord::getWord(record + 4, swap) != classHashOf(meta)) return 0;
  if (zeObjectRecord::getWord(record + 8, swap) != static_cast<std::uint32_t>(meta->getMetaFieldCount())) return 0;
  const std::uint32_t recordLength = zeObjectRecord::getWord(record + 12, swap);
  if (recordLength < zeObjectRecord::kHeaderBytes || recordLength > length) return 0;
  const unsigned int body = recordLength - zeObjectRecord::kHeaderBytes;
  if (zeObjectRecord::getWord(record + 16, swap) !=
      zeObjectRecord::hashOf(record + zeObjectRecord::kHeaderBytes, body)) {
    return 0;
  }
  return recordLength;
}

}  // namespace

unsigned int zeObjectRecord::getSize(const zeObject* object) {
  const Nesting nesting;
  const zeMetaObject* meta = object ? object->getMetaObject() : nullptr;
  if (!meta || !nesting.allowed()) return 0;
  unsigned long long size = kHeaderBytes;
  for (int i = 0; i < meta->getMetaFieldCount(); ++i) {
    const zeMetaField* field = meta->getIndexedMetaField(i);
    const unsigned int fieldSize = field->getIoSize(object);
    if (field->hasVariableIoSize() && fieldSize < 4) return 0;  // a nested value that cannot be written
    size += fieldSize;
  }
  return size <= 0x7fffffffu ? static_cast<unsigned int>(size) : 0u;
}

int zeObjectRecord::write(zeObject* object, void* buffer, unsigned int length, bool swap) {
  const Nesting nesting;
  const zeMetaObject* meta = object ? object->getMetaObject() : nullptr;
  if (!meta || !buffer || !nesting.allowed()) return kFailure;
  object->preWrite();
  const unsigned int size = getSize(object);
  if (size == 0 || size > length) return kFailure;
  unsigned char* record = static_cast<unsigned char*>(buffer);
  unsigned int cursor = kHeaderBytes;
  for (int i = 0; i < meta->getMetaFieldCount(); ++i) {
    const zeMetaField* field = meta->getIndexedMetaField(i);
    const int written = field->writeRawFieldMemory(field->fieldMemory(object), record + cursor, nullptr, swap);
    if (written < 0 || static_cast<unsigned int>(written) != field->getIoSize(object)) return kFailure;
    cursor += static_cast<unsigned int>(written);
  }
  if (cursor != size) return kFailure;
  putWord(record, kMagic, swap);
  putWord(record + 4, classHashOf(meta), swap);
  putWord(record + 8, static_cast<std::uint32_t>(meta->getMetaFieldCount()), swap);
  putWord(record + 12, size, swap);
  putWord(record + 16, hashOf(record + kHeaderBytes, size - kHeaderBytes), swap);
  return kSuccess;
}

int zeObjectRecord::read(zeObject* object, const void* buffer, unsigned int length, bool swap) {
  const Nesting nesting;
  const zeMetaObject* meta = object ? object->getMetaObject() : nullptr;
  if (!meta || !buffer || !nesting.allowed()) return kFailure;
  const unsigned char* record = static_cast<const unsigned char*>(buffer);
  const unsigned int recordLength = checkedLength(meta, record, length, swap);
  if (recordLength == 0) return kFailure;

  zeObject* scratch = meta->createInstance(zeMemoryPool::getPoolOf(object));
  if (!scratch) return kFailure;
  if (!readFields(scratch, record, recordLength, swap)) {
    scratch->release();
    return kFailure;
  }
  // The object takes the fields read; the scratch instance takes the old
  // values and gives them up as it dies.
  for (int i = 0; i < meta->getMetaFieldCount(); ++i) {
    const zeMetaField* field = meta->getIndexedMetaField(i);
    swapBytes(field->fieldMemory(object), field->fieldMemory(scratch), field->getSize());
  }
  scratch->release();
  object->postRead();
  return kSuccess;
}

bool zeObjectRecord::storedSizeOf(const zeMetaField* field, const zeObject* object, const void* stored,
                                  unsigned int remaining, bool swap, unsigned int& size) {
  size = field->getIoSize(object);
  if (field->hasVariableIoSize()) {
    if (remaining < 4) return false;
    size = getWord(stored, swap);
    if (size < 4) return false;
  }
  return size <= remaining;
}

void zeObjectRecord::putWord(void* at, std::uint32_t value, bool swap) {
  if (swap) value = __builtin_bswap32(value);
  std::memcpy(at, &value, sizeof value);
}

std::uint32_t zeObjectRecord::getWord(const void* at, bool swap) {
  std::uint32_t value;
  std::memcpy(&value, at, sizeof value);
  return swap ? __builtin_bswap32(value) : value;
}

std::uint32_t zeObjectRecord::hashOf(const void* bytes, unsigned int length) {
  const unsigned char* p = static_cast<const unsigned char*>(bytes);
  std::uint32_t hash = 2166136261u;
  for (unsigned int i = 0; i < length; ++i) hash = (hash ^ p[i]) * 16777619u;
  return hash;
}

}  // namespace Lux
