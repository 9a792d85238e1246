#pragma once

#include <cstddef>

#include "core/LuxCoreExport.h"

namespace Lux {

class zeInternalStringPool;
class zeStringPoolContainer;

/// Header in front of every pooled text: the owning container, then the
/// 32-bit reference count. The text follows the header directly.
struct zeStringPoolItem {
  zeStringPoolContainer* _container;  ///< The container the text lives in.
  unsigned int _count;                ///< References to the text.
  unsigned int _hash;                 ///< Hash of the text.

  /// The pooled text behind the header.
  char* text() { return reinterpret_cast<char*>(this + 1); }

  /// The header in front of a pooled text.
  static zeStringPoolItem* fromText(const char* text) {
    return reinterpret_cast<zeStringPoolItem*>(const_cast<char*>(text)) - 1;
  }
};
static_assert(sizeof(zeStringPoolItem) == 16, "pooled texts sit 16 bytes behind their container pointer");

/// One bucket of a string pool: the items whose texts hash to it.
class LUXCORE_API zeStringPoolContainer {
 public:
  /// An empty bucket.
  zeStringPoolContainer() = default;
  /// Frees every item of the bucket.
  ~zeStringPoolContainer();
  zeStringPoolContainer(const zeStringPoolContainer&) = delete;
  zeStringPoolContainer& operator=(const zeStringPoolContainer&) = delete;

  /// The item holding `text` with hash `hash`, or null.
  zeStringPoolItem* find(const char* text, unsigned int hash) const;

  /// A new item holding a copy of `text` with a count of 1; null when memory runs out.
  zeStringPoolItem* add(const char* text, unsigned int hash);

  /// Removes `item`, whose count has reached 0, and frees it.
  void internalRelease(zeStringPoolItem* item);

  /// Number of items held.
  int getCount() const { return _count; }

 private:
  zeStringPoolItem** _items = nullptr;
  int _count = 0;
  int _capacity = 0;
};

}  // namespace Lux
