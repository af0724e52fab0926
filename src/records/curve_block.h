// Allocation of a curve's data block: sizes, and the placement of the arrays behind the header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "kurvo.h"

namespace kurvo {

constexpr std::size_t kBlockHeader = 104;  // bytes before the arrays, for every type

// What the size of a block depends on; unused members stay 0.
struct BlockSizes {
  int32_t degree = 0;  // Bezier kinds
  int32_t order = 0;   // B-spline kinds
  int32_t count = 0;   // control points of B-spline kinds, pieces of a composite
};

// Bytes of the block of a curve; nothing for an unknown type or sizes that cannot be. A block for
// which there is no address space has the largest size_t, which AllocateBlock never gets.
std::optional<std::size_t> BlockBytes(int32_t type, const BlockSizes& sizes);

// Gives `cv`, whatever it held, a new block of `bytes` = BlockBytes(type, sizes) with its sizes and
// array pointers set. Returns false and leaves `cv` empty when memory fails.
bool AllocateBlock(Curve& cv, int32_t type, const BlockSizes& sizes, std::size_t bytes) noexcept;

}  // namespace kurvo
