// The bounding box of a sequence.
#include <algorithm>
#include <optional>

#include "calc/boxes.h"
#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {
namespace {

// The piece of a composite of one piece, which has no box of its own; else the curve itself. Null
// when composites nest too deep.
const Curve* Unwrapped(const Curve* cv) {
  for (int level = 0; level <= kMaxNesting; ++level) {
    const Curve* piece =
        VisitCurve(*cv, Overloaded{[](const CompositeView& composite) -> const Curve* {
                                     return composite.count == 1 ? composite.curves : nullptr;
                                   },
                                   [](const auto&) -> const Curve* { return nullptr; }});
    if (!piece) return cv;
    cv = piece;
  }
  return nullptr;
}

// Both corners, z included; nothing for a curve that has no box.
struct Corners {
  Vec3 min;
  Vec3 max;
};

std::optional<Corners> CornersOf(const Curve& cv, GlobalVar& g) {
  const PlanarBox empty;
  Box box = {empty.min.x, empty.min.y, 0.0, empty.max.x, empty.max.y, 0.0};
  KurvocvBoundBox(Unwrapped(&cv), box, &g);  // a null curve is its error
  if (!(box[0] <= box[3] && box[1] <= box[4])) return std::nullopt;
  return Corners{Spatial(box), Spatial(box + 3)};
}

Corners BoxOfSequence(const Cvseq& seq, GlobalVar& g) {
  std::optional<Corners> box;
  for (int32_t i = 0; i < seq.count; ++i) {
    const auto next = CornersOf(seq.curves[i], g);
    if (ErrorPending(g)) return {};
    if (box && next) {
      box->min = {std::min(box->min.x, next->min.x), std::min(box->min.y, next->min.y), box->min.z};
      box->max = {std::max(box->max.x, next->max.x), std::max(box->max.y, next->max.y), box->max.z};
    } else if (next) {
      box = next;
    }
  }
  return box.value_or(Corners{});
}

// An unknown type is an error; a header of type 0 that is empty is not.
bool IsCurve(const Curve& cv) { return IsTypeCode(cv.type) || (cv.type == 0 && !cv.data); }

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCvseqBoundBox(const Cvseq* seq, Box box, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g)) return;
  std::fill_n(box, 6, 0.0);
  if (!seq || (seq->count > 0 && !seq->curves)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const Curve* first = seq->curves;
  const Curve* last = first + std::max(seq->count, 0);
  if (!std::all_of(first, last, kurvo::IsCurve)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (std::any_of(first, last, [](const Curve& cv) { return !cv.data; })) return;
  const kurvo::Corners corners = kurvo::BoxOfSequence(*seq, *g);
  kurvo::Store(corners.min, box);
  kurvo::Store(corners.max, box + 3);
}
