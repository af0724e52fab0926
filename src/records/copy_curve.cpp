// Deep copies of curves.
#include <cstring>
#include <optional>

#include "foundation/error_codes.h"
#include "records/curve_block.h"
#include "records/views.h"

namespace kurvo {
namespace {

enum class CopyResult { kDone, kRefused, kOutOfMemory };

template <class Block>
std::optional<BlockSizes> SplineSizes(const void* data) {
  const auto& block = *static_cast<const Block*>(data);
  if (!block.knots || (block.count > 0 && !block.points)) return std::nullopt;
  return BlockSizes{.order = block.order, .count = block.count};
}

template <class Block>
std::optional<BlockSizes> BezierSizes(const void* data) {
  const auto& block = *static_cast<const Block*>(data);
  if (!block.points) return std::nullopt;
  return BlockSizes{.degree = block.degree};
}

std::optional<BlockSizes> CompositeSizes(const void* data) {
  const auto& block = *static_cast<const KurvoSegcv*>(data);
  if (block.count > 0 && (!block.curves || !block.widths)) return std::nullopt;
  return BlockSizes{.count = block.count};
}

// The sizes a block says it has; nothing when its arrays are missing. A copy, unlike an evaluation,
// takes B-splines that still have too few control points.
std::optional<BlockSizes> SizesOf(const Curve& cv) {
  switch (cv.type) {
    case CV_BEZIER:
      return BezierSizes<KurvoBezier>(cv.data);
    case CV_RBEZIER:
      return BezierSizes<KurvoRBezier>(cv.data);
    case CV_BSPLINE:
      return SplineSizes<KurvoBSpline>(cv.data);
    case CV_RBSPLINE:
      return SplineSizes<KurvoRBSpline>(cv.data);
    case CV_SEGCV:
      return CompositeSizes(cv.data);
    default:
      return BlockSizes{};
  }
}

template <class T>
void CopyArray(const T* from, T* to, std::size_t count) {
  if (count > 0) std::memcpy(to, from, count * sizeof(T));
}

template <class Block>
void CopyBezier(const void* from, void* to, const BlockSizes& sizes) {
  CopyArray(static_cast<const Block*>(from)->points, static_cast<Block*>(to)->points,
            static_cast<std::size_t>(sizes.degree) + 1);
}

template <class Block>
void CopySpline(const void* from, void* to, const BlockSizes& sizes) {
  const auto& source = *static_cast<const Block*>(from);
  const auto& target = *static_cast<Block*>(to);
  const auto count = static_cast<std::size_t>(sizes.count);
  CopyArray(source.points, target.points, count);
  CopyArray(source.knots, target.knots, static_cast<std::size_t>(sizes.order) + count);
}

CopyResult CopyInto(const Curve& src, Curve& dst, int level);

CopyResult CopyComposite(const void* from, void* to, int level) {
  const auto& source = *static_cast<const KurvoSegcv*>(from);
  const auto& target = *static_cast<KurvoSegcv*>(to);
  CopyArray(source.widths, target.widths, static_cast<std::size_t>(source.count));
  for (int32_t i = 0; i < source.count; ++i) {
    const CopyResult result = CopyInto(source.curves[i], target.curves[i], level + 1);
    if (result != CopyResult::kDone) return result;  // the pieces after it stay empty
  }
  return CopyResult::kDone;
}

CopyResult CopyContent(const Curve& src, Curve& dst, const BlockSizes& sizes, int level) {
  switch (src.type) {
    case CV_LINE:  // the two points; the tail of the block is not used
      std::memcpy(dst.data, src.data, 2 * sizeof(Coord));
      return CopyResult::kDone;
    case CV_ARC:
      std::memcpy(dst.data, src.data, kBlockHeader);
      return CopyResult::kDone;
    case CV_BEZIER:
      CopyBezier<KurvoBezier>(src.data, dst.data, sizes);
      return CopyResult::kDone;
    case CV_RBEZIER:
      CopyBezier<KurvoRBezier>(src.data, dst.data, sizes);
      return CopyResult::kDone;
    case CV_BSPLINE:
      CopySpline<KurvoBSpline>(src.data, dst.data, sizes);
      return CopyResult::kDone;
    case CV_RBSPLINE:
      CopySpline<KurvoRBSpline>(src.data, dst.data, sizes);
      return CopyResult::kDone;
    default:
      return CopyComposite(src.data, dst.data, level);
  }
}

// Copies `src` into the empty header `dst`; `level` counts the composites around it.
CopyResult CopyInto(const Curve& src, Curve& dst, int level) {
  dst.type = src.type;
  if (!src.data) return CopyResult::kDone;
  if (src.type == CV_SEGCV && level >= kMaxNesting) return CopyResult::kRefused;
  const auto sizes = SizesOf(src);
  const auto bytes = sizes ? BlockBytes(src.type, *sizes) : std::nullopt;
  if (!bytes) return CopyResult::kRefused;
  if (!AllocateBlock(dst, src.type, *sizes, *bytes)) return CopyResult::kOutOfMemory;
  return CopyContent(src, dst, *sizes, level);
}

}  // namespace
}  // namespace kurvo

extern "C" void* KurvocvCopyCurve(const Curve* src, Curve* dst, GlobalVar* g) noexcept {
  using kurvo::CopyResult;
  if (dst) *dst = Curve{};
  if (kurvo::ErrorPending(*g) || !src || !dst) return nullptr;
  const CopyResult result = kurvo::CopyInto(*src, *dst, 0);
  if (result == CopyResult::kRefused) kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (result == CopyResult::kOutOfMemory) {
    KurvocvFreeCurve(dst);
    kurvo::Fail(*g, KURVO_ERR_MEMORY);
  }
  return dst->data;
}
