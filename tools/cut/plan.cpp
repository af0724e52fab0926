#include "cut/plan.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <utility>

#include "cut/order.h"
#include "geometry/curve_make.h"
#include "geometry/locate.h"
#include "geometry/pieces.h"

namespace kurvo::tools {
namespace {

// Of the deviation: what offsetting, and what fitting arcs may take; the rest is for rounding.
constexpr double kOffsetShare = 0.25;
constexpr double kFitShare = 0.5;

// A lead-in that does not fit is halved so often, and left out then.
constexpr int kMostHalvings = 5;
constexpr int kProbes = 8;  // points of it that must lie in the waste

Affine MachineMap(const Sheet& sheet) {
  const double mm = sheet.mm_per_unit;
  const Affine size = Scaling(mm, sheet.y_up ? mm : -mm);
  if (sheet.view.IsEmpty()) return size;
  return size * Translation(-sheet.view.min_x, sheet.y_up ? -sheet.view.min_y : -sheet.view.max_y);
}

// Closed chains as elements without a fill.
Drawing LoopsOf(const Drawing& drawing, JoinedCurves& joined) {
  Drawing loops;
  loops.sheet = drawing.sheet;
  for (std::size_t i = 0; i < joined.closed; ++i) {
    Shape& shape = loops.shapes.emplace_back();
    shape.paint = {"none", "#000", 0};
    shape.outlines.push_back({std::move(joined.chains.pieces[i].curves), true});
  }
  return loops;
}

class Planner {
 public:
  Planner(Context& context, const Drawing& drawing, const CutOptions& options)
      : context_(context),
        drawing_(drawing),
        options_(options),
        map_(MachineMap(drawing.sheet)),
        mm_(drawing.sheet.mm_per_unit) {}

  CutPlan Plan(const CurveDone& done) {
    JoinedCurves joined = JoinCurves(context_, drawing_, options_.gap);
    plan_.map = map_;
    plan_.report = joined.report;
    plan_.closed = joined.closed;
    plan_.open = joined.chains.pieces.size() - joined.closed;
    const Drawing loops = LoopsOf(drawing_, joined);
    AddLoops(loops, done);
    Nest();
    for (std::size_t i = joined.closed; i < joined.chains.pieces.size(); ++i)
      AddPath(joined.chains.pieces[i].curves, false);
    PlaceOpen();
    for (const CutStep& step : OrderOf(paths_, {0, 0})) {
      const CutPath& path = paths_[step.path];
      plan_.cuts.push_back({{}, SegmentsFrom(path, step.start), path.closed});
    }
    if (options_.lead_in > 0) AddLeadIns();
    Measure();
    return std::move(plan_);
  }

 private:
  void AddLoops(const Drawing& loops, const CurveDone& done) {
    if (options_.kerf == 0) {
      ForEachOutline(loops, [&](const Outline& outline, const std::string&) {
        AddPath(outline.curves, true);
      });
    } else {
      const PenOptions pen = {.tolerance = kOffsetShare * options_.deviation};
      const Regions grown = Offset(loops, {options_.kerf / 2}, Nesting::kAll, {}, pen, done);
      for (const RegionLoop& loop : grown.loops) AddPath(loop.curves, true);
      plan_.report.unresolved += grown.report.unresolved;
    }
    plan_.closed_cuts = paths_.size();
  }

  void AddPath(const std::vector<Curve>& curves, bool closed) {
    const std::vector<Curve> fitted =
        Fitted(context_, curves, Form::kArcs, kFitShare * options_.deviation);
    for (DxfRun& run : RunsOf(context_, {fitted, closed}, map_)) {
      std::erase_if(run.segments,
                    [](const DxfSegment& segment) { return !(LengthOf(segment) > 0); });
      if (!run.segments.empty()) paths_.push_back({std::move(run.segments), closed && run.closed});
    }
  }

  // The closed paths as a region, and which of them lies in which.
  void Nest() {
    waste_.SetRule(Fill::kEvenOdd);
    for (const CutPath& path : paths_) {
      std::vector<Curve> curves;
      for (const DxfSegment& s : path.segments) {
        curves.push_back(s.sweep == 0 ? Curve::Line(s.from, s.to).value()
                                      : ArcOf(s.centre, s.radius, s.sweep > 0, s.from, s.to));
      }
      waste_.Add(*ChainView(curves), context_, INFINITY).value();
    }
    const Array<std::int32_t> parents = waste_.Nesting(context_).value();
    for (std::size_t i = 0; i < parents.size(); ++i)
      if (parents[i] >= 0) paths_[i].around = static_cast<std::size_t>(parents[i]);
  }

  // Open paths lie in the narrowest loop that their middle lies in.
  void PlaceOpen() {
    const std::size_t loops = plan_.closed_cuts;
    std::vector<Point> middles;
    for (std::size_t i = loops; i < paths_.size(); ++i)
      middles.push_back(PointOn(paths_[i].segments[paths_[i].segments.size() / 2], 0.5));
    std::vector<double> areas(middles.size(), INFINITY);
    for (std::size_t loop = 0; loop < loops && !middles.empty(); ++loop) {
      const Bounds box = BoxAround(paths_[loop]);
      std::vector<std::size_t> near;
      std::vector<Point> points;
      for (std::size_t i = 0; i < middles.size(); ++i) {
        if (!box.Contains(middles[i])) continue;
        near.push_back(i);
        points.push_back(middles[i]);
      }
      if (near.empty()) continue;
      const KurvoRegion one = {1, KURVO_FILL_EVENODD, waste_[loop].Get(), nullptr};
      const Moments moments =
          context_.Ask<Moments>("KurvoRegionMoments", KurvoRegionMoments, &one).value();
      const std::vector<Where> where = WhereIn(context_, one, points);
      for (std::size_t k = 0; k < near.size(); ++k) {
        const double area = std::fabs(moments.area);
        if (where[k] == Where::kOutside || !(area < areas[near[k]])) continue;
        areas[near[k]] = area;
        paths_[loops + near[k]].around = loop;
      }
    }
  }

  // All of the circles that arcs are of included.
  static Bounds BoxAround(const CutPath& path) {
    Bounds box;
    for (const DxfSegment& segment : path.segments) {
      box.Add(segment.from);
      if (segment.sweep == 0) continue;
      const Point corner = {segment.radius, segment.radius};
      box.Add(segment.centre - corner);
      box.Add(segment.centre + corner);
    }
    return box;
  }

  // A quarter turn of that radius that ends along the first segment, on its left or right.
  static DxfSegment LeadIn(const MachineCut& cut, double radius, bool on_left) {
    const Point along = DirectionAtStart(cut.segments.front());
    const Point side = (on_left ? 1 : -1) * Point{-along.y, along.x};
    const Point at = cut.segments.front().from, centre = at + radius * side;
    const double sweep = (on_left ? 1 : -1) * std::numbers::pi / 2;
    return {centre - radius * along, at, sweep, centre, radius};
  }

  // The waste is what the loops do not cover; on both sides of none there is any.
  void AddLeadIns() {
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < plan_.cuts.size(); ++i)
      if (plan_.cuts[i].closed) open.push_back(i);
    double radius = mm_ * options_.lead_in;
    for (int half = 0; half <= kMostHalvings && !open.empty(); ++half, radius /= 2) {
      std::vector<DxfSegment> tried;
      std::vector<Point> points;
      for (const std::size_t i : open) {
        for (const bool on_left : {true, false}) {
          const DxfSegment& arc = tried.emplace_back(LeadIn(plan_.cuts[i], radius, on_left));
          for (int k = 0; k < kProbes; ++k) {
            points.push_back(PointOn(arc, static_cast<double>(k) / kProbes));
          }
        }
      }
      const std::vector<Where> where = WhereIn(context_, *waste_.Get(), points);
      std::vector<std::size_t> left;
      for (std::size_t n = 0; n < tried.size(); ++n) {
        const auto first = where.begin() + static_cast<std::ptrdiff_t>(n) * kProbes;
        const bool fits =
            std::all_of(first, first + kProbes, [](Where w) { return w == Where::kOutside; });
        std::vector<DxfSegment>& lead_in = plan_.cuts[open[n / 2]].lead_in;
        if (fits && lead_in.empty()) lead_in.push_back(tried[n]);
        if (n % 2 == 1 && lead_in.empty()) left.push_back(open[n / 2]);
      }
      open = std::move(left);
    }
  }

  void Measure() {
    Point at;
    for (const MachineCut& cut : plan_.cuts) {
      const Point from = cut.lead_in.empty() ? cut.segments.front().from : cut.lead_in[0].from;
      plan_.way += Size(from - at);
      for (const auto* segments : {&cut.lead_in, &cut.segments})
        for (const DxfSegment& segment : *segments) plan_.length += LengthOf(segment);
      at = cut.segments.back().to;
    }
  }

  Context& context_;
  const Drawing& drawing_;
  const CutOptions options_;
  const Affine map_;
  const double mm_;  // of a unit of the drawing
  CutPlan plan_;
  std::vector<CutPath> paths_;  // closed ones first
  Region waste_;                // the closed ones: what lies outside is waste
};

}  // namespace

CutPlan PlanCuts(Context& context, const Drawing& drawing, const CutOptions& options,
                 const CurveDone& done) {
  return Planner(context, drawing, options).Plan(done);
}

}  // namespace kurvo::tools
