// Memory comes through the kernel's functions alone: arrays that grow, and an arena of values that
// stay where they are.
#pragma once

#include <kurvo.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/refusal.h"

namespace kurvo::outline {

// `size` bytes from KurvoMalloc; throws std::bad_alloc, or Refusal above 4 GiB. KurvoFree frees.
inline void* Allocate(std::size_t size) {
  Require(size <= std::numeric_limits<uint32_t>::max(), KURVO_ERR_TOO_LARGE);
  GlobalVar unused;  // takes the code of a failure, and nothing reads it
  unused.error = KURVO_ERR_NONE;
  void* block = KurvoMalloc(static_cast<uint32_t>(std::max<std::size_t>(size, 1)), &unused);
  if (!block) throw std::bad_alloc();
  return block;
}

template <class T>
struct KernelAllocator {
  using value_type = T;

  KernelAllocator() = default;
  template <class U>
  KernelAllocator(const KernelAllocator<U>&) {}

  T* allocate(std::size_t n) {
    Require(n <= std::numeric_limits<uint32_t>::max() / sizeof(T), KURVO_ERR_TOO_LARGE);
    return static_cast<T*>(Allocate(n * sizeof(T)));
  }
  void deallocate(T* block, std::size_t) { KurvoFree(block); }
  // resize() leaves plain numbers as they are.
  template <class U>
  void construct(U* at) {
    ::new (static_cast<void*>(at)) U;
  }
  template <class U, class... A>
  void construct(U* at, A&&... arguments) {
    ::new (static_cast<void*>(at)) U(std::forward<A>(arguments)...);
  }

  bool operator==(const KernelAllocator&) const { return true; }
};

template <class T>
using Array = std::vector<T, KernelAllocator<T>>;

// Room for so many values more; an array that is full at least doubles, as when they are added one
// by one.
template <class T>
void ReserveMore(Array<T>& array, std::size_t more) {
  const std::size_t wanted = array.size() + more;
  if (wanted > array.capacity()) array.reserve(std::max(wanted, 2 * array.size()));
}

struct FreeBlock {
  void operator()(void* block) const { KurvoFree(block); }
};

// An array that is handed to the caller, who frees it with KurvoFree.
template <class T>
class Handed {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit Handed(const Array<T>& from)
      : block_(static_cast<T*>(Allocate(from.size() * sizeof(T)))) {
    std::copy(from.begin(), from.end(), block_.get());
  }
  T* Release() { return block_.release(); }

 private:
  std::unique_ptr<T, FreeBlock> block_;
};

// A count of the interface.
inline int32_t CountOf(std::size_t n) {
  Require(n <= std::numeric_limits<int32_t>::max(), KURVO_ERR_TOO_LARGE);
  return static_cast<int32_t>(n);
}

// Many small arrays that are freed together and never move; the first few need no allocation.
class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;
  ~Arena() {
    while (blocks_) KurvoFree(std::exchange(blocks_, blocks_->before));
  }

  // n values, uninitialised.
  template <class T>
  T* New(std::size_t n) {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(double));
    const std::size_t size = (n * sizeof(T) + alignof(double) - 1) & ~(alignof(double) - 1);
    if (size > left_) Grow(size);
    left_ -= size;
    return reinterpret_cast<T*>(std::exchange(next_, next_ + size));
  }
  // Takes back all that was made, and keeps the first bytes only.
  void Clear() {
    while (blocks_) KurvoFree(std::exchange(blocks_, blocks_->before));
    next_ = first_;
    left_ = sizeof first_;
  }

 private:
  struct Block {
    Block* before;
  };
  static constexpr std::size_t kFirstBytes = 2048;
  static constexpr std::size_t kBlockBytes = 65536;

  void Grow(std::size_t size) {
    const std::size_t room = std::max(size, kBlockBytes);
    auto* block = static_cast<Block*>(Allocate(sizeof(Block) + room));
    block->before = blocks_;
    blocks_ = block;
    next_ = reinterpret_cast<std::byte*>(block + 1);
    left_ = room;
  }

  alignas(double) std::byte first_[kFirstBytes];
  std::byte* next_ = first_;
  std::size_t left_ = sizeof first_;
  Block* blocks_ = nullptr;
};

}  // namespace kurvo::outline
