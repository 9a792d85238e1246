#include "core/zeMemoryPool.h"

#include <cstdlib>

namespace Lux {

namespace {

// Every block is preceded by this header; its size is the alignment, so the
// block behind it keeps the alignment of the allocation.
struct BlockHeader {
  zeMemoryPool* pool;
  unsigned int size;
  unsigned int tag;
};
static_assert(sizeof(BlockHeader) == zeMemoryPool::kAlignment, "the header keeps blocks aligned");

BlockHeader* headerOf(const void* block) {
  return reinterpret_cast<BlockHeader*>(const_cast<char*>(static_cast<const char*>(block)) - sizeof(BlockHeader));
}

}  // namespace

void* zeMemoryPool::allocate(std::size_t size, unsigned long tag) {
  if (size > 0xffffffffu - 2 * kAlignment) return nullptr;
  const std::size_t total = (sizeof(BlockHeader) + size + kAlignment - 1) & ~(kAlignment - 1);
  void* raw = std::aligned_alloc(kAlignment, total);
  if (!raw) return nullptr;
  BlockHeader* header = static_cast<BlockHeader*>(raw);
  header->pool = this;
  header->size = static_cast<unsigned int>(size);
  header->tag = static_cast<unsigned int>(tag);
  ++_liveBlocks;
  _liveBytes += size;
  return header + 1;
}

void zeMemoryPool::deallocate(void* block) {
  if (!block) return;
  BlockHeader* header = headerOf(block);
  zeMemoryPool* pool = header->pool;
  --pool->_liveBlocks;
  pool->_liveBytes -= header->size;
  std::free(header);
}

zeMemoryPool* zeMemoryPool::getPoolOf(const void* block) { return block ? headerOf(block)->pool : nullptr; }

unsigned long zeMemoryPool::getTagOf(const void* block) { return block ? headerOf(block)->tag : 0; }

}  // namespace Lux
