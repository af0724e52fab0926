#include "arc_length.h"

#include <algorithm>

namespace kurvo::tools {
namespace {

constexpr int kHalvings = 30;

}  // namespace

ArcLength::ArcLength(Library& library, const OwnedCurve& curve)
    : library_(library), curve_(curve), lengths_{} {
  for (std::size_t i = 0; i < kStretches; ++i) {
    const double from = static_cast<double>(i) / kStretches;
    lengths_[i + 1] = lengths_[i] + LengthOf(library, curve, from, from + 1.0 / kStretches);
  }
}

double ArcLength::ParameterAt(double length) const {
  const auto after = std::upper_bound(lengths_.begin(), lengths_.end(), length);
  if (after == lengths_.begin()) return 0;
  if (after == lengths_.end()) return 1;
  const double start = static_cast<double>(after - 1 - lengths_.begin()) / kStretches;
  double low = start;
  double high = start + 1.0 / kStretches;
  for (int i = 0; i < kHalvings; ++i) {
    const double middle = 0.5 * (low + high);
    (*(after - 1) + LengthOf(library_, curve_, start, middle) < length ? low : high) = middle;
  }
  return 0.5 * (low + high);
}

}  // namespace kurvo::tools
