// Allocation of a curve's data block: sizes, and the placement of the arrays behind the header.
#include "records/curve_block.h"

#include <cstdlib>
#include <new>

#include "records/block_bytes.h"

namespace kurvo {
namespace {

// The array of `T` that begins `offset` bytes into the block.
template <class T>
T* ArrayAt(void* block, std::size_t offset) {
  return static_cast<T*>(static_cast<void*>(static_cast<std::byte*>(block) + offset));
}

template <class Block, class Point>
void LayBezier(void* memory, const BlockSizes& sizes) {
  auto* block = new (memory) Block;
  block->degree = sizes.degree;
  block->points = ArrayAt<Point>(memory, kBlockHeader);
}

template <class Block, class Point>
void LaySpline(void* memory, const BlockSizes& sizes) {
  auto* block = new (memory) Block;
  block->order = sizes.order;
  block->count = sizes.count;
  block->points = ArrayAt<Point>(memory, kBlockHeader);
  block->knots =
      ArrayAt<double>(memory, kBlockHeader + sizeof(Point) * static_cast<std::size_t>(sizes.count));
}

// `memory` is zero, and so the headers of the pieces are empty.
void LayComposite(void* memory, const BlockSizes& sizes) {
  const auto count = static_cast<std::size_t>(sizes.count);
  auto* block = new (memory) KurvoSegcv;
  block->count = sizes.count;
  block->curves = ArrayAt<Curve>(memory, kBlockHeader);
  block->widths = ArrayAt<double>(memory, kBlockHeader + sizeof(Curve) * count);
}

void LayOut(int32_t type, void* memory, const BlockSizes& sizes) {
  switch (type) {
    case CV_BEZIER:
      return LayBezier<KurvoBezier, Coord>(memory, sizes);
    case CV_RBEZIER:
      return LayBezier<KurvoRBezier, HCoord>(memory, sizes);
    case CV_BSPLINE:
      return LaySpline<KurvoBSpline, Coord>(memory, sizes);
    case CV_RBSPLINE:
      return LaySpline<KurvoRBSpline, HCoord>(memory, sizes);
    case CV_SEGCV:
      return LayComposite(memory, sizes);
    default:  // lines and arcs have no arrays
      return;
  }
}

}  // namespace

std::optional<std::size_t> BlockBytes(int32_t type, const BlockSizes& sizes) {
  return BlockBytesIn<std::size_t>(type, sizes);
}

bool AllocateBlock(Curve& cv, int32_t type, const BlockSizes& sizes, std::size_t bytes) noexcept {
  cv = Curve{};
  // Memory that the system hands out is zero already: calloc does not touch it.
  void* block = type == CV_SEGCV ? std::calloc(1, bytes) : std::malloc(bytes);
  if (!block) return false;
  cv.type = type;
  cv.data = block;
  LayOut(type, block, sizes);
  return true;
}

}  // namespace kurvo
