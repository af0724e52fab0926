#include "geometry/arc_length.h"

#include <algorithm>
#include <numeric>

namespace kurvo::tools {
namespace {

// Measured one by one: the library stops at a thousandth of a unit, which is much for a short curve
// and little for a short stretch of it.
constexpr int kStretches = 128;

constexpr int kHalvings = 30;

double SumOfWidths(const KurvoSegcv& composite) {
  return std::accumulate(composite.widths, composite.widths + composite.count, 0.0);
}

}  // namespace

ArcLength::ArcLength(Library& library, const OwnedCurve& curve) : library_(library), curve_(curve) {
  const bool is_composite = curve.Type() == CV_SEGCV;
  AddStretches(*curve.Get(), 0, is_composite ? SumOfWidths(curve.Block<KurvoSegcv>()) : 1);
}

void ArcLength::AddStretches(const Curve& curve, double start, double end) {
  if (curve.type == CV_LINE || curve.type == CV_ARC) return AddStretch(start, end, true);
  if (curve.type == CV_SEGCV) {
    const auto& composite = *static_cast<const KurvoSegcv*>(curve.data);
    const double scale = (end - start) / SumOfWidths(composite);
    double from = start;
    for (int i = 0; i < composite.count; ++i) {
      const double to = from + scale * composite.widths[i];
      AddStretches(composite.curves[i], from, to);
      from = to;
    }
    return;
  }
  for (int i = 0; i < kStretches; ++i) {
    const double step = (end - start) / kStretches;
    AddStretch(start + i * step, start + (i + 1) * step, false);
  }
}

void ArcLength::AddStretch(double start, double end, bool is_even) {
  stretches_.push_back({start, end, total_, is_even});
  total_ += LengthOf(library_, curve_, start, end);
}

double ArcLength::ParameterAt(double length) const {
  const auto after =
      std::upper_bound(stretches_.begin(), stretches_.end(), length,
                       [](double value, const Stretch& stretch) { return value < stretch.before; });
  if (after == stretches_.begin()) return 0;
  if (!(length < total_)) return stretches_.back().end;
  const Stretch& stretch = *(after - 1);
  const double rest = length - stretch.before;
  if (stretch.is_even) {
    const double whole = (after == stretches_.end() ? total_ : after->before) - stretch.before;
    return stretch.start + (stretch.end - stretch.start) * (rest / whole);
  }
  double low = stretch.start;
  double high = stretch.end;
  for (int i = 0; i < kHalvings; ++i) {
    const double middle = 0.5 * (low + high);
    (LengthOf(library_, curve_, stretch.start, middle) < rest ? low : high) = middle;
  }
  return 0.5 * (low + high);
}

}  // namespace kurvo::tools
