#include "geometry/regions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <list>
#include <utility>

#include "geometry/curve_ask.h"
#include "geometry/parallel.h"
#include "geometry/region_work.h"

namespace kurvo::tools {
namespace {

// Of the drawing: what is farther apart has nothing to do with each other.
constexpr double kApart = 1e-6;

// The parts that step(i, library, part) makes, in order.
template <class Step>
Regions OnAllCores(std::size_t count, const Step& step) {
  std::vector<Regions> parts(count);
  ParallelFor(count, [&](std::size_t i, Context& context) { step(i, context, parts[i]); });
  Regions all;
  for (Regions& part : parts) Append(part, all);
  SortByElement(all);
  return all;
}

// The sides of a group are made one region each before they are combined, unless that comes to the
// same.
void CombineGroup(Context& context, const Drawing& drawing, const Input& input, const Loops& group,
                  int operation, const CurveDone& done, Regions& part) {
  const double steps = CurveCount(group) / 3;
  std::list<Operand> operands;
  std::vector<const Operand*> sides[2];
  for (const Loops& loops : ByRegion(group)) {
    const Input::Region& region = input.regions[loops.front().region];
    Fill(loops, operands.emplace_back(region.rule));
    sides[region.side].push_back(&operands.back());
  }
  for (const int side : {0, 1}) {
    const bool is_one_by_one = operation == KURVO_UNION || sides[side].size() == 1 ||
                               (operation == KURVO_DIFFERENCE && side == 1);
    if (is_one_by_one) continue;
    Operand& united = operands.emplace_back(KURVO_FILL_NONZERO);
    Combine(context, KURVO_UNION, sides[side], steps, done, united, part.report);
    sides[side] = {&united};
  }
  sides[0].insert(sides[0].end(), sides[1].begin(), sides[1].end());
  Operand made(KURVO_FILL_NONZERO);
  Combine(context, operation, sides[0], steps, done, made, part.report);
  TakeLoops(context, drawing, 0, made, part);
}

// How far apart outlines must be, so that their offsets do not meet.
double ReachOf(const PenOptions& pen, double distance, double size) {
  constexpr double kUsualLimit = 4;
  const double limit = pen.record.miter_limit > 0 ? pen.record.miter_limit : kUsualLimit;
  const double corner = pen.record.join == KURVO_JOIN_MITER ? limit : 1;
  return 2 * corner * std::max(distance, 0.0) + kApart * size;
}

}  // namespace

Drawing Together(Drawing first, Drawing second) {
  const std::size_t groups = first.groups.size();
  for (std::size_t i = 1; i < second.groups.size(); ++i) {
    Group& group = first.groups.emplace_back(std::move(second.groups[i]));
    if (group.parent > 0) group.parent += groups - 1;
  }
  for (Shape& shape : second.shapes) {
    if (shape.group > 0) shape.group += groups - 1;
    first.shapes.push_back(std::move(shape));
  }
  return first;
}

Regions Combined(const Drawing& drawing, std::size_t count, int operation, Nesting nesting,
                 const Closing& closing, const CurveDone& done) {
  Context context;
  Input input;
  Read(context, drawing, 0, count, 0, nesting, closing, input);
  Read(context, drawing, count, drawing.shapes.size(), 1, nesting, closing, input);
  const std::vector<Loops> groups =
      Apart(context, input.loops, kApart * Extent(context, {&drawing}));
  Regions regions = OnAllCores(groups.size(), [&](std::size_t i, Context& own, Regions& part) {
    CombineGroup(own, drawing, input, groups[i], operation, done, part);
  });
  regions.left_out = input.left_out;
  return regions;
}

Regions Cleaned(const Drawing& drawing, const Closing& closing, const CurveDone& done) {
  return OnAllCores(drawing.shapes.size(), [&](std::size_t i, Context& context, Regions& part) {
    const Shape& shape = drawing.shapes[i];
    Operand outlines(RuleOf(shape));
    for (const Outline& outline : shape.outlines) {
      const bool is_line = !outline.closed && shape.paint.stroke != "none";
      const bool surrounds = Surrounds(context, shape, outline, closing);
      const bool meets =
          surrounds && Follows(context, outline.curves.back(), outline.curves.front());
      if (surrounds && (meets || !is_line || !IsFilled(shape))) {
        outlines.Add(outline.curves, i);
      } else {
        Keep(context, outline, i, RegionLoop::Kind::kOpen, part);
      }
    }
    if (outlines.IsEmpty()) return;
    Operand made(KURVO_FILL_NONZERO);
    Combine(context, KURVO_UNION, {&outlines}, static_cast<double>(outlines.CurveCount()), done,
            made, part.report);
    TakeLoops(context, drawing, 0, made, part);
  });
}

Regions Offset(const Drawing& drawing, const std::vector<double>& distances, Nesting nesting,
               const Closing& closing, const PenOptions& pen, const CurveDone& done) {
  Context context;
  Input input;
  Read(context, drawing, 0, drawing.shapes.size(), 0, nesting, closing, input);
  const double size = Extent(context, {&drawing});
  struct Job {
    double distance;
    Loops loops;
  };
  std::vector<Job> jobs;
  for (const double distance : distances) {
    for (const Loops& group : Apart(context, input.loops, ReachOf(pen, distance, size))) {
      for (Loops& loops : ByRegion(group)) jobs.push_back({distance, std::move(loops)});
    }
  }
  Regions regions = OnAllCores(jobs.size(), [&](std::size_t i, Context& own, Regions& part) {
    const auto& [distance, loops] = jobs[i];
    Operand source(input.regions[loops.front().region].rule), made(KURVO_FILL_NONZERO);
    Fill(loops, source);
    OffsetGroup(own, source, distance, WithTolerance(pen, distance, size), done, made, part.report);
    TakeLoops(own, drawing, distance, made, part);
  });
  regions.left_out = input.left_out;
  return regions;
}

void KeepOutlines(const Drawing& drawing, Keeping keeping, const Closing& closing,
                  const std::vector<bool>* only, Regions& regions) {
  if (keeping == Keeping::kNone) return;
  Context context;
  for (std::size_t i = 0; i < drawing.shapes.size(); ++i) {
    if (only != nullptr && !(*only)[i]) continue;
    const Shape& shape = drawing.shapes[i];
    for (const Outline& outline : shape.outlines) {
      const bool surrounds = Surrounds(context, shape, outline, closing);
      if (surrounds && keeping == Keeping::kOpen) continue;
      const auto kind = outline.closed ? RegionLoop::Kind::kKept : RegionLoop::Kind::kOpen;
      Keep(context, outline, i, kind, regions);
      if (!surrounds && regions.left_out > 0) --regions.left_out;
    }
  }
  SortByElement(regions);
}

Regions Stroked(const Drawing& drawing, double left, double right, const PenOptions& pen,
                const CurveDone& done) {
  Context context;
  const double size = Extent(context, {&drawing});
  KurvoOptions pen_options = WithTolerance(pen, std::max(left, right), size);
  pen_options.dash_count = static_cast<std::int32_t>(pen.dashes.size());
  pen_options.dashes = pen.dashes.data();
  // The library's y points up.
  const std::pair sides = drawing.sheet.y_up ? std::pair(left, right) : std::pair(right, left);
  return OnAllCores(drawing.shapes.size(), [&](std::size_t i, Context& own, Regions& part) {
    Operand outlines(KURVO_FILL_NONZERO), made(KURVO_FILL_NONZERO);
    for (const Outline& outline : drawing.shapes[i].outlines) outlines.Add(outline.curves, i);
    const KurvoRegion chains = outlines.Record();
    Run(
        own, pen_options, {&outlines}, static_cast<double>(outlines.CurveCount()), done,
        "KurvoChainStroke",
        [&](const KurvoOptions& options, KurvoRegion* out, KurvoReport* report, GlobalVar* g) {
          KurvoChainStroke(chains.loops, chains.count, sides.first, sides.second, &options, out,
                           report, g);
        },
        made, part.report);
    TakeLoops(own, drawing, 0, made, part);
  });
}

Result ResultOf(const Drawing& source, const Regions& regions, Look look) {
  Result result = {source, {}, look};
  for (const RegionLoop& loop : regions.loops)
    result.chains.push_back({loop.curves, loop.kind != RegionLoop::Kind::kOpen, loop.element});
  return result;
}

}  // namespace kurvo::tools
