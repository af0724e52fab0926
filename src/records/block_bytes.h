// The size of a curve's data block, for a size type of any width.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "foundation/clamped_size.h"
#include "records/curve_block.h"

namespace kurvo {

// Bytes of a block with arrays of `points` points of `point` bytes and of `numbers` doubles.
template <class Size>
Size ArrayBytes(std::size_t point, ClampedSize<Size> points, ClampedSize<Size> numbers) {
  using Bytes = ClampedSize<Size>;
  return (Bytes(kBlockHeader) + Bytes(static_cast<Size>(point)) * points +
          Bytes(sizeof(double)) * numbers)
      .value();
}

template <class Size>
std::optional<Size> BezierBytes(std::size_t point, int32_t degree) {
  if (degree < 0) return std::nullopt;
  return ArrayBytes<Size>(point, ClampedSize<Size>(static_cast<Size>(degree)) + 1, 0);
}

template <class Size>
std::optional<Size> SplineBytes(std::size_t point, int32_t order, int32_t count) {
  if (order < 1 || count < 0) return std::nullopt;
  const ClampedSize<Size> points = static_cast<Size>(count);
  return ArrayBytes<Size>(point, points, points + static_cast<Size>(order));
}

template <class Size>
std::optional<Size> CompositeBytes(int32_t count) {
  if (count < 0) return std::nullopt;
  const ClampedSize<Size> pieces = static_cast<Size>(count);
  return ArrayBytes<Size>(sizeof(Curve), pieces, pieces);
}

// BlockBytes in numbers of type Size; the largest of them for more than they hold.
template <class Size>
std::optional<Size> BlockBytesIn(int32_t type, const BlockSizes& sizes) {
  switch (type) {
    case CV_LINE:
    case CV_ARC:
      return Size{kBlockHeader};
    case CV_BEZIER:
      return BezierBytes<Size>(sizeof(Coord), sizes.degree);
    case CV_RBEZIER:
      return BezierBytes<Size>(sizeof(HCoord), sizes.degree);
    case CV_BSPLINE:
      return SplineBytes<Size>(sizeof(Coord), sizes.order, sizes.count);
    case CV_RBSPLINE:
      return SplineBytes<Size>(sizeof(HCoord), sizes.order, sizes.count);
    case CV_SEGCV:
      return CompositeBytes<Size>(sizes.count);
    default:
      return std::nullopt;
  }
}

}  // namespace kurvo
