#include "geometry/pieces.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "geometry/parallel.h"

namespace kurvo::tools {
namespace {

// Calls split(outline, out) for each outline of the drawing.
template <class Split>
std::vector<SplitOutline> SplitEach(const Drawing& drawing, const Split& split) {
  std::vector<SplitOutline> outlines;
  ForEachOutline(drawing, [&](const Outline& outline, std::string label, std::size_t element) {
    outlines.push_back({std::move(label), {}, element});
    split(outline, outlines.back().pieces);
  });
  return outlines;
}

// Fills in the pieces of the offset.
void OffsetOutline(Context& context, double tolerance, bool y_up, const CurveDone& done,
                   OutlineOffset& offset) {
  const double left = y_up ? offset.distance : -offset.distance;  // of y up
  for (const Curve& curve : offset.source->curves) {
    Chain pieces = curve.Offset(left, tolerance, context).value();
    offset.pieces.insert(offset.pieces.end(), std::make_move_iterator(pieces.begin()),
                         std::make_move_iterator(pieces.end()));
    done();
  }
}

}  // namespace

JoinedCurves JoinCurves(Context& context, const Drawing& drawing, double gap) {
  std::vector<::Curve> curves;  // headers
  ForEachCurve(drawing, [&](const Curve& curve) { curves.push_back(*curve.Get()); });
  KurvoOptions options = {};
  options.size = sizeof options;
  options.gap = gap;
  JoinedCurves joined;
  const auto join = [&](JoinedChains& out, GlobalVar* g) {
    KurvoChainJoin(curves.data(), static_cast<std::int32_t>(curves.size()), &options,
                   out.closed.Get(), out.open.Get(), &joined.report, g);
  };
  JoinedChains made = context.Call<JoinedChains>("KurvoChainJoin", join).value();
  for (Region* chains : {&made.closed, &made.open}) {
    for (Chain& chain : *chains) {
      Piece piece = {Taken(std::move(chain)), 0, chains == &made.closed};
      piece.length = LengthOf(context, piece.curves);
      joined.chains.pieces.push_back(std::move(piece));
    }
  }
  joined.closed = made.closed.size();
  return joined;
}

std::vector<SplitOutline> SplitAt(Context& context, const Drawing& drawing,
                                  const std::vector<double>& parameters, const CurveDone& done) {
  return SplitEach(drawing, [&](const Outline& outline, std::vector<Piece>& pieces) {
    for (const Curve& curve : outline.curves) {
      Chain parts = curve.Split(parameters, context).value();
      for (Curve& part : parts) {
        if (IsPoint(context, part)) continue;
        pieces.emplace_back();
        pieces.back().length = LengthOf(context, part);
        pieces.back().curves.push_back(std::move(part));
      }
      done();
    }
  });
}

std::vector<SplitOutline> SplitIntoParts(Context& context, const Drawing& drawing,
                                         std::size_t count, const CurveDone& done) {
  return SplitEach(drawing, [&](const Outline& outline, std::vector<Piece>& pieces) {
    const ChainView chain(outline.curves);
    const double length = LengthOf(context, chain) / static_cast<double>(count);
    if (length > context.Epsilon()) {
      const Array<Place> places = EqualSteps(context, chain, count);
      for (std::size_t i = 0; i < count; ++i) {
        Piece piece = {Trimmed(context, chain, places[i], places[i + 1]), length, false};
        std::erase_if(piece.curves, [&](const Curve& part) { return IsPoint(context, part); });
        if (!piece.curves.empty()) pieces.push_back(std::move(piece));
      }
    }
    for (std::size_t i = 0; i < outline.curves.size(); ++i) done();
  });
}

std::vector<OutlineOffset> OffsetOutlines(const Drawing& drawing,
                                          const std::vector<double>& distances,
                                          const std::optional<double>& tolerance,
                                          const CurveDone& done) {
  std::vector<OutlineOffset> offsets;
  ForEachOutline(drawing,
                 [&](const Outline& outline, const std::string& label, std::size_t element) {
                   for (const double distance : distances)
                     offsets.push_back({label, &outline, distance, {}, element});
                 });
  ParallelFor(offsets.size(), [&](std::size_t i, Context& context) {
    const double usual = kOffsetTolerance * std::fabs(offsets[i].distance);
    OffsetOutline(context, tolerance.value_or(usual), drawing.sheet.y_up, done, offsets[i]);
  });
  return offsets;
}

Result ResultOf(const Drawing& source, std::span<const SplitOutline> outlines) {
  Result result = {source, {}, Look::kLines};
  for (const SplitOutline& outline : outlines) {
    for (const Piece& piece : outline.pieces)
      result.chains.push_back({piece.curves, piece.closed, outline.element});
  }
  return result;
}

Result ResultOf(Context& context, const Drawing& source, std::span<const OutlineOffset> offsets) {
  Result result = {source, {}, Look::kLines};
  for (const OutlineOffset& offset : offsets)
    AddRuns(context, offset.pieces, offset.element, result.chains);
  return result;
}

}  // namespace kurvo::tools
