#pragma once

// Readable pages followed by an inaccessible one: a read past the readable
// bytes faults. `guarded` is the first inaccessible byte; null when the pages
// could not be mapped.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>

struct GuardedPages {
  std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  std::size_t size;
  void* map;
  unsigned char* guarded;

  /// At least `readable` bytes (one page by default) before the guard.
  explicit GuardedPages(std::size_t readable = 0)
      : size(readable > page ? (readable + page - 1) / page * page : page),
        map(mmap(nullptr, size + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)),
        guarded(map == MAP_FAILED ? nullptr : static_cast<unsigned char*>(map) + size) {
    if (guarded) mprotect(guarded, page, PROT_NONE);
  }
  ~GuardedPages() {
    if (guarded) munmap(map, size + page);
  }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  /// The last `n` readable T, ending right at the guard.
  template <class T>
  T* last(std::size_t n) const {
    return reinterpret_cast<T*>(guarded) - n;
  }
};
