#pragma once

#include <cstddef>

#include "core/LuxCoreExport.h"

namespace Lux {

/// A source of object memory. Every block it hands out is aligned for 16-byte
/// fields and remembers its pool, so a block is returned without naming the
/// pool again. The pool counts what is live, which lets tests and tools see
/// that everything made has been given back.
///
/// The pool keeps no list of its blocks: destroying a pool that still has live
/// blocks is the caller's error. The default pool (BayCore::getDefaultPool())
/// lives as long as the process.
class LUXCORE_API zeMemoryPool {
 public:
  /// A pool with the given name (not copied; pass a string literal or text
  /// that outlives the pool).
  constexpr explicit zeMemoryPool(const char* name) : _name(name) {}

  zeMemoryPool(const zeMemoryPool&) = delete;
  zeMemoryPool& operator=(const zeMemoryPool&) = delete;

  /// Alignment of every block handed out, in bytes.
  static constexpr std::size_t kAlignment = 16;

  /// A block of `size` bytes aligned to kAlignment, or null when memory runs
  /// out. `tag` is kept with the block for memory tracking.
  void* allocate(std::size_t size, unsigned long tag = 0);

  /// Returns a block to the pool that allocated it; null does nothing.
  static void deallocate(void* block);

  /// The pool that allocated `block`.
  static zeMemoryPool* getPoolOf(const void* block);

  /// The tracking tag `block` was allocated with.
  static unsigned long getTagOf(const void* block);

  /// The pool's name.
  const char* getName() const { return _name; }

  /// Number of blocks handed out and not yet returned.
  std::size_t getAllocationCount() const { return _liveBlocks; }

  /// Bytes in the blocks handed out and not yet returned (as requested).
  std::size_t getAllocatedBytes() const { return _liveBytes; }

 private:
  const char* _name;
  std::size_t _liveBlocks = 0;
  std::size_t _liveBytes = 0;
};

}  // namespace Lux
