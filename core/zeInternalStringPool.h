#pragma once

#include <cstddef>

#include "core/LuxCoreExport.h"
#include "core/zeStringPoolContainer.h"

namespace Lux {

/// Pool of shared, reference-counted texts. Equal texts share one copy;
/// each setString() adds a reference that releaseString() drops, and the copy
/// is freed when its count reaches 0. Field names and the texts that field
/// descriptors print are pooled here.
class LUXCORE_API zeInternalStringPool {
 public:
  /// The pool that field names and printed values use; null until first use
  /// (getDefault() creates it).
  static zeInternalStringPool* _defaultStringPool;

  /// An empty pool.
  zeInternalStringPool() = default;
  zeInternalStringPool(const zeInternalStringPool&) = delete;
  zeInternalStringPool& operator=(const zeInternalStringPool&) = delete;

  /// Pool memory comes from the C heap; null when memory runs out.
  static void* operator new(std::size_t size) noexcept;
  /// Gives pool memory back to the C heap.
  static void operator delete(void* memory) noexcept;

  /// The default pool, created on first use; null when memory runs out.
  static zeInternalStringPool* getDefault();

  /// The pooled copy of `text`, carrying one reference for the caller; null
  /// for null text or when memory runs out.
  const char* setString(const char* text);

  /// Adds one reference to a pooled text and returns it; null stays null.
  static const char* addReference(const char* pooled);

  /// Drops one reference of a pooled text; at 0 its container frees it.
  /// Null does nothing.
  static void releaseString(const char* pooled);

  /// The reference count of a pooled text.
  static unsigned int getReferenceCount(const char* pooled);

  /// Number of distinct texts held.
  int getStringCount() const;

 private:
  static constexpr int kContainerCount = 64;
  zeStringPoolContainer _containers[kContainerCount];
};

}  // namespace Lux
