// The curve record: emptying a header, giving it a block, freeing what it owns.
#include <cstdarg>
#include <cstdlib>

#include "records/curve_block.h"

namespace kurvo {
namespace {

// Blocks of composites that wait to be freed, linked through their own `widths` field, so that
// freeing takes no memory and no stack, however deep composites nest.
class PendingComposites {
 public:
  void Push(KurvoSegcv* block) {
    block->widths = static_cast<double*>(static_cast<void*>(head_));
    head_ = block;
  }
  KurvoSegcv* Pop() {
    KurvoSegcv* block = head_;
    if (block) head_ = static_cast<KurvoSegcv*>(static_cast<void*>(block->widths));
    return block;
  }

 private:
  KurvoSegcv* head_ = nullptr;
};

void FreeBlock(const Curve& cv, PendingComposites& pending) {
  if (cv.type == CV_SEGCV && cv.data)
    pending.Push(static_cast<KurvoSegcv*>(cv.data));
  else
    std::free(cv.data);
}

void FreeAllBlocks(const Curve& cv) {
  PendingComposites pending;
  FreeBlock(cv, pending);
  while (KurvoSegcv* block = pending.Pop()) {
    const int32_t count = block->curves ? block->count : 0;
    for (int32_t i = 0; i < count; ++i) FreeBlock(block->curves[i], pending);
    std::free(block);
  }
}

}  // namespace
}  // namespace kurvo

extern "C" {

void KurvocvInitCurve(Curve* cv) noexcept {
  if (cv) *cv = Curve{};
}

void* KurvocvMallocCurve(Curve* cv, int32_t type, ...) noexcept {
  if (!cv) return nullptr;
  kurvo::BlockSizes sizes;
  va_list arguments;  // exactly as many are read as the type has
  va_start(arguments, type);
  if (type == CV_BEZIER || type == CV_RBEZIER) sizes.degree = va_arg(arguments, int32_t);
  if (type == CV_BSPLINE || type == CV_RBSPLINE) sizes.order = va_arg(arguments, int32_t);
  if (type == CV_BSPLINE || type == CV_RBSPLINE || type == CV_SEGCV)
    sizes.count = va_arg(arguments, int32_t);
  va_end(arguments);

  const auto bytes = kurvo::BlockBytes(type, sizes);
  if (!bytes) return nullptr;
  return kurvo::AllocateBlock(*cv, type, sizes, *bytes) ? cv->data : nullptr;
}

void KurvocvFreeCurve(Curve* cv) noexcept {
  if (!cv) return;
  kurvo::FreeAllBlocks(*cv);
  cv->data = nullptr;
  cv->type = 0;
}

}  // extern "C"
