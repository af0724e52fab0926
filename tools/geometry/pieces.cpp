#include "geometry/pieces.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <iterator>
#include <utility>

#include "geometry/arc_length.h"

namespace kurvo::tools {
namespace {

// Calls split(outline, out) for each outline of the drawing.
template <class Split>
std::vector<SplitOutline> SplitEach(const Drawing& drawing, const Split& split) {
  std::vector<SplitOutline> outlines;
  ForEachOutline(drawing, [&](const Outline& outline, std::string label) {
    outlines.push_back({std::move(label), {}});
    split(outline, outlines.back().pieces);
  });
  return outlines;
}

// Parameters that are to ascend may be the same where the measured length jumps.
void AppendAfter(double t, std::vector<double>& parameters) {
  if (!parameters.empty()) t = std::max(t, std::nextafter(parameters.back(), 1.0));
  parameters.push_back(t);
}

// The outline is walked curve by curve. A cut that is at the end of one of them, to within the
// length tolerance, falls between it and the next.
class PartSplitter {
 public:
  PartSplitter(Library& library, const Outline& outline, std::size_t count)
      : library_(library), count_(count) {
    for (const OwnedCurve& curve : outline.curves) {
      lengths_.emplace_back(library, curve);
      total_ += lengths_.back().Total();
    }
  }

  void Run(const Outline& outline, std::vector<Piece>& pieces, const CurveDone& done) {
    if (!(total_ > static_cast<double>(count_) * library_.Tolerance())) return;
    pieces.resize(count_);
    for (std::size_t i = 0; i < outline.curves.size(); ++i) {
      Add(outline.curves[i], lengths_[i], pieces);
      done();
    }
    std::erase_if(pieces, [](const Piece& piece) { return piece.curves.empty(); });
  }

 private:
  // From the start of the outline to the start of piece k.
  double CutAt(std::size_t k) const {
    return total_ * static_cast<double>(k) / static_cast<double>(count_);
  }

  void Add(const OwnedCurve& curve, const ArcLength& length, std::vector<Piece>& pieces) {
    const double end = walked_ + length.Total();
    std::vector<double> parameters;
    const std::size_t first = piece_;
    for (; piece_ + 1 < count_ && end - CutAt(piece_ + 1) > library_.Tolerance(); ++piece_)
      AppendAfter(length.ParameterAt(CutAt(piece_ + 1) - walked_), parameters);
    auto parts = OwnedCurve::Divided(library_, curve, std::move(parameters));
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const std::size_t k = first + i;
      pieces[k].length +=
          std::min(end, i + 1 < parts.size() ? CutAt(k + 1) : end) - std::max(walked_, CutAt(k));
      if (!IsPoint(library_, parts[i])) pieces[k].curves.push_back(std::move(parts[i]));
    }
    walked_ = end;
    if (piece_ + 1 < count_ && !(CutAt(piece_ + 1) - end > library_.Tolerance())) ++piece_;
  }

  Library& library_;
  const std::size_t count_;
  std::deque<ArcLength> lengths_;
  double total_ = 0;
  double walked_ = 0;      // up to the start of the next curve
  std::size_t piece_ = 0;  // that it belongs to
};

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

std::vector<SplitOutline> SplitAt(Library& library, const Drawing& drawing,
                                  const std::vector<double>& parameters, const CurveDone& done) {
  return SplitEach(drawing, [&](const Outline& outline, std::vector<Piece>& pieces) {
    for (const OwnedCurve& curve : outline.curves) {
      for (OwnedCurve& part : OwnedCurve::Divided(library, curve, parameters)) {
        if (IsPoint(library, part)) continue;
        pieces.emplace_back();
        pieces.back().length = ArcLength(library, part).Total();
        pieces.back().curves.push_back(std::move(part));
      }
      done();
    }
  });
}

std::vector<SplitOutline> SplitIntoParts(Library& library, const Drawing& drawing,
                                         std::size_t count, const CurveDone& done) {
  return SplitEach(drawing, [&](const Outline& outline, std::vector<Piece>& pieces) {
    PartSplitter(library, outline, count).Run(outline, pieces, done);
  });
}

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
