#include "geometry/offset.h"

#include <cmath>
#include <iterator>
#include <utility>

namespace kurvo::tools {
namespace {

OutlineOffset OffsetOutline(Library& library, std::string label, const Outline& outline,
                            double distance, double tolerance, const CurveDone& done) {
  OutlineOffset offset = {std::move(label), &outline, distance, {}};
  for (const OwnedCurve& curve : outline.curves) {
    std::vector<OwnedCurve> pieces = OwnedCurve::Offset(library, curve, distance, tolerance);
    offset.pieces.insert(offset.pieces.end(), std::make_move_iterator(pieces.begin()),
                         std::make_move_iterator(pieces.end()));
    done();
  }
  return offset;
}

}  // namespace

std::vector<OutlineOffset> OffsetOutlines(Library& library, const Drawing& drawing,
                                          const std::vector<double>& distances,
                                          const std::optional<double>& tolerance,
                                          const CurveDone& done) {
  std::vector<OutlineOffset> offsets;
  ForEachOutline(drawing, [&](const Outline& outline, const std::string& label) {
    for (const double distance : distances) {
      offsets.push_back(OffsetOutline(library, label, outline, distance,
                                      tolerance.value_or(kOffsetTolerance * std::fabs(distance)),
                                      done));
    }
  });
  return offsets;
}

}  // namespace kurvo::tools
