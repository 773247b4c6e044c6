#include "tests/support/counting_heap.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define COUNTS_OPERATOR_NEW 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define COUNTS_OPERATOR_NEW 1
#endif
#endif

namespace {

std::atomic<long long> liveBytes{0};
std::atomic<long long> liveBlocks{0};

// Plain data only: these are used before constructors run.
thread_local bool armed = false;
thread_local bool failsAll = false;
thread_local bool failed = false;
thread_local unsigned long long left = 0;

bool shallFail() {
  if (!armed) return false;
  if (left > 0) {
    --left;
    return false;
  }
  if (failed && !failsAll) return false;
  failed = true;
  return true;
}

void add(std::size_t size) {
  liveBytes += static_cast<long long>(size);
  ++liveBlocks;
}

void remove(std::size_t size) {
  liveBytes -= static_cast<long long>(size);
  --liveBlocks;
}

}  // namespace

namespace counting_heap {

Live live() {
  return {liveBytes, liveBlocks};
}

bool countsMalloc() {
#ifdef COUNTS_OPERATOR_NEW
  return false;
#else
  return true;
#endif
}

void failAfter(unsigned long long count, bool all) {
  left = count;
  failsAll = all;
  failed = false;
  armed = true;
}

bool stopFailing() {
  armed = false;
  return failed;
}

}  // namespace counting_heap

#ifdef COUNTS_OPERATOR_NEW

void* operator new(std::size_t size) {
  void* const block = shallFail() ? nullptr : std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  add(malloc_usable_size(block));
  return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* const block = shallFail() ? nullptr : std::malloc(size);
  if (block != nullptr) add(malloc_usable_size(block));
  return block;
}

void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  remove(malloc_usable_size(block));
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

#else

// The C library's own allocator, below the names that this file takes over.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);
extern "C" void __libc_free(void* block);

namespace {

/// Stands before every block.
struct alignas(16) Header {
  std::size_t size;    ///< as asked for
  std::size_t offset;  ///< from the allocator's block to the one handed out
};

Header* headerOf(void* block) {
  return static_cast<Header*>(block) - 1;
}

void* take(std::size_t size, std::size_t alignment = sizeof(Header)) {
  const std::size_t offset = std::max(alignment, sizeof(Header));
  char* base = nullptr;
  if (!shallFail() && size < PTRDIFF_MAX - offset) {
    base =
        static_cast<char*>(alignment <= sizeof(Header) ? __libc_malloc(size + offset)
                                                       : __libc_memalign(alignment, size + offset));
  }
  if (base == nullptr) {
    errno = ENOMEM;
    return nullptr;
  }
  add(size);
  *headerOf(base + offset) = {size, offset};
  return base + offset;
}

void give(void* block) {
  if (block == nullptr) return;
  const Header header = *headerOf(block);
  remove(header.size);
  __libc_free(static_cast<char*>(block) - header.offset);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  return take(size);
}

void free(void* block) {
  give(block);
}

void* calloc(std::size_t count, std::size_t each) {
  std::size_t size = 0;
  if (__builtin_mul_overflow(count, each, &size)) return nullptr;
  void* const block = take(size);
  return block == nullptr ? nullptr : std::memset(block, 0, size);
}

void* realloc(void* block, std::size_t size) {
  if (block != nullptr && size != 0 && size <= headerOf(block)->size) {  // never fails
    remove(headerOf(block)->size);
    add(size);
    headerOf(block)->size = size;
    return block;
  }
  void* const next = take(size);
  if (next == nullptr || block == nullptr) return next;
  std::memcpy(next, block, std::min(size, headerOf(block)->size));
  give(block);
  return next;
}

void* memalign(std::size_t alignment, std::size_t size) {
  return take(size, alignment);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return take(size, alignment);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = take(size, alignment);
  return *block == nullptr ? ENOMEM : 0;
}

std::size_t malloc_usable_size(void* block) {
  return block == nullptr ? 0 : headerOf(block)->size;
}

}  // extern "C"

#endif
