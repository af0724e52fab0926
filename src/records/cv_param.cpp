// Lists of curve parameters.
#include <cstddef>
#include <cstdlib>

#include "foundation/clamped_size.h"
#include "kurvo.h"

extern "C" {

void KurvocrInitCvParam(CvParam* list) noexcept {
  if (list) *list = CvParam{};
}

void KurvocrMallocCvParam(CvParam* list) noexcept {
  if (!list || list->count <= 0) return;
  const auto bytes = kurvo::ClampedSize(sizeof(double)) * static_cast<std::size_t>(list->count);
  list->values = static_cast<double*>(std::malloc(bytes.value()));
  if (!list->values) list->count = 0;  // no record claims values that it does not have
}

void KurvocrFreeCvParam(CvParam* list) noexcept {
  if (!list) return;
  if (list->count > 0) std::free(list->values);
  *list = CvParam{};
}

}  // extern "C"
