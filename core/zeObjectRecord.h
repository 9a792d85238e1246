#pragma once

// Internal to the core: the byte record of an object's reflected fields,
// behind zeObject::getRecordSize(), writeRecord() and readRecord(). Not
// exported.

#include <cstdint>

namespace Lux {

class zeMetaField;
class zeObject;

/// The record of an object: a header of five 32-bit words (magic, hash of the
/// class name, field count, record length in bytes, checksum of the bytes
/// behind the header), then the stored form of each reflected field in field
/// order. Every word, the header's included, is in the record's byte order,
/// so a record written swapped reads back only swapped.
///
/// A record refers to other objects only through fields that nest their
/// records; nesting deeper than kMaxNesting is refused, so a reference cycle
/// makes writing fail instead of recursing without end.
class zeObjectRecord {
 public:
  /// Bytes of the header.
  static constexpr unsigned int kHeaderBytes = 20;
  /// First word of every record.
  static constexpr std::uint32_t kMagic = 0x5a455243u;
  /// Records nested deeper than this are refused.
  static constexpr int kMaxNesting = 32;

  /// Bytes of the record of `object`; 0 when it cannot be written.
  static unsigned int getSize(const zeObject* object);

  /// Runs preWrite() on `object`, then writes its record to `buffer`.
  /// kSuccess, or kFailure when `length` is too small or a field cannot be written.
  static int write(zeObject* object, void* buffer, unsigned int length, bool swap);

  /// Reads the record at `buffer` (at most `length` bytes) into `object`, then
  /// runs postRead(). The fields are read into a fresh instance first and
  /// taken over only when all of them were read, so a refused record (kFailure)
  /// leaves `object` as it was.
  static int read(zeObject* object, const void* buffer, unsigned int length, bool swap);

  /// Sets `size` to the bytes that the stored form of `field` of `object`
  /// takes at `stored`: its I/O size, or for a field of variable I/O size the
  /// length in its first word. False when that does not fit in `remaining`.
  static bool storedSizeOf(const zeMetaField* field, const zeObject* object, const void* stored, unsigned int remaining,
                           bool swap, unsigned int& size);

  /// Stores `value` at `at`, byte-swapped when `swap`.
  static void putWord(void* at, std::uint32_t value, bool swap);
  /// The 32-bit word at `at`, byte-swapped when `swap`.
  static std::uint32_t getWord(const void* at, bool swap);
  /// FNV-1a hash of `length` bytes.
  static std::uint32_t hashOf(const void* bytes, unsigned int length);
};

}  // namespace Lux
