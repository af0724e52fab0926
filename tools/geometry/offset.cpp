#include "geometry/offset.h"

#include <cmath>
#include <iterator>
#include <utility>

#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

OutlineOffset OffsetOutline(Library& library, std::string label, const Outline& outline,
                            double distance, double tolerance, Progress& progress) {
  OutlineOffset offset = {std::move(label), &outline, distance, {}};
  for (const OwnedCurve& curve : outline.curves) {
    std::vector<OwnedCurve> pieces = OwnedCurve::Offset(library, curve, distance, tolerance);
    offset.pieces.insert(offset.pieces.end(), std::make_move_iterator(pieces.begin()),
                         std::make_move_iterator(pieces.end()));
    progress.Step();
  }
  return offset;
}

}  // namespace

std::vector<OutlineOffset> OffsetOutlines(Library& library, const Drawing& drawing,
                                          const std::vector<double>& distances,
                                          const std::optional<double>& tolerance,
                                          Progress& progress) {
  std::vector<OutlineOffset> offsets;
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      for (const double distance : distances) {
        offsets.push_back(
            OffsetOutline(library, OutlineLabel(shape, i), shape.outlines[i], distance,
                          tolerance.value_or(kOffsetTolerance * std::fabs(distance)), progress));
      }
    }
  }
  return offsets;
}

std::string OffsetTable(Library& library, const std::vector<OutlineOffset>& offsets) {
  TextTable table(
      {{"outline"}, {""}, {"curves", kRight}, {"distance", kRight}, {"pieces", kRight}, {"box"}});
  for (const OutlineOffset& offset : offsets) {
    Bounds box;
    for (const OwnedCurve& piece : offset.pieces) box.Add(BoundsOf(library, piece));
    table.Add({offset.label, offset.source->closed ? "closed" : "open",
               std::to_string(offset.source->curves.size()), ShortNumber(offset.distance),
               std::to_string(offset.pieces.size()), BoundsText(box)});
  }
  return table.Text();
}

}  // namespace kurvo::tools
