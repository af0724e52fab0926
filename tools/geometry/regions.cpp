#include "geometry/regions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <list>
#include <utility>

#include "geometry/parallel.h"
#include "geometry/region_input.h"

namespace kurvo::tools {
namespace {

// Of the drawing: what is farther apart has nothing to do with each other.
constexpr double kApart = 1e-6;

constexpr double kLeastTolerance = 0x1p-30;  // that the library works to, of the size of its input

// Tells of the curves that are done while the library works.
class Steps {
 public:
  Steps(const CurveDone& done, double count, KurvoOptions& options) : done_(done), count_(count) {
    options.user = this;
    options.proceed = [](double part, void* steps) {
      static_cast<Steps*>(steps)->Reach(part);
      return 1;
    };
  }
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;
  ~Steps() { Reach(1); }

 private:
  void Reach(double part) {
    for (; reached_ < part * count_; ++reached_) done_();
  }

  const CurveDone& done_;
  const double count_;
  double reached_ = 0;
};

void Add(const KurvoReport& report, KurvoReport& sum) {
  sum.gaps += report.gaps;
  sum.dropped += report.dropped;
  sum.unresolved += report.unresolved;
  sum.capped += report.capped;
  sum.moved = std::max(sum.moved, report.moved);
  sum.dropped_area += report.dropped_area;
}

// Outlines that may not be closed have been left out before.
KurvoOptions ClosingAll(KurvoOptions options) {
  options.gap = INFINITY;
  return options;
}

// Runs make(options, out, report, g) on the sources. `out` is written.
template <class Make>
void Run(Library& library, const KurvoOptions& options, const std::vector<const Operand*>& sources,
         double steps, const CurveDone& done, const Make& make, Operand& out, KurvoReport& sum) {
  KurvoOptions record = options;
  record.size = sizeof record;
  record.flags = KURVO_WITH_ORIGINS;
  KurvoReport report = {};
  {
    const Steps told(done, steps, record);
    const WiderTolerance wider(library);
    make(record, out.Output(), &report, library.State());
  }
  library.Check();
  out.TakeElements(sources);
  Add(report, sum);
}

void Combine(Library& library, int operation, const std::vector<const Operand*>& sources,
             double steps, const CurveDone& done, Operand& out, KurvoReport& report) {
  std::vector<KurvoRegion> records;
  for (const Operand* source : sources) records.push_back(source->Record());
  std::vector<const KurvoRegion*> regions;
  for (const KurvoRegion& record : records) regions.push_back(&record);
  Run(
      library, ClosingAll({}), sources, steps, done,
      [&](const KurvoOptions& options, KurvoRegion* made, KurvoReport* own, GlobalVar* g) {
        KurvoRegionCombineMany(operation, regions.data(), static_cast<std::int32_t>(regions.size()),
                               &options, made, own, g);
      },
      out, report);
}

// The loops of a region that was made. Holes go with the element around them where that is filled.
void TakeLoops(Library& library, const Drawing& drawing, double distance, Operand& made,
               Regions& regions) {
  KurvoRegion* record = made.Output();
  std::size_t around = kNoElement;
  for (std::int32_t i = 0; i < record->count; ++i) {
    const auto number = static_cast<std::size_t>(i);
    const auto count = static_cast<std::size_t>(record->loops[i].count);
    RegionLoop loop;
    for (std::size_t k = 0; k < count && loop.element == kNoElement; ++k)
      loop.element = made.ElementOf(number, k);
    loop.curves = OwnedCurve::TakeAll(library, record->loops[i]);
    loop.moments = MomentsOf(library, loop.curves);
    loop.box = BoundsOf(library, Chain(loop.curves));
    loop.distance = distance;
    if (loop.moments.area < 0) loop.kind = RegionLoop::Kind::kHole;
    const bool is_hole = loop.kind == RegionLoop::Kind::kHole;
    if (!is_hole) around = loop.element;
    if (is_hole && around != kNoElement && IsFilled(drawing.shapes[around])) loop.element = around;
    regions.loops.push_back(std::move(loop));
  }
}

void Append(Regions& part, Regions& all) {
  std::move(part.loops.begin(), part.loops.end(), std::back_inserter(all.loops));
  all.left_out += part.left_out;
  Add(part.report, all.report);
}

void SortByElement(Regions& regions) {
  std::stable_sort(regions.loops.begin(), regions.loops.end(),
                   [](const RegionLoop& a, const RegionLoop& b) { return a.element < b.element; });
}

// The parts that step(i, library, part) makes, in order.
template <class Step>
Regions OnAllCores(std::size_t count, const Step& step) {
  std::vector<Regions> parts(count);
  ParallelFor(count, [&](std::size_t i, Library& library) { step(i, library, parts[i]); });
  Regions all;
  for (Regions& part : parts) Append(part, all);
  SortByElement(all);
  return all;
}

void KeepOpen(Library& library, const Outline& outline, std::size_t element, Regions& regions) {
  RegionLoop kept;
  for (const OwnedCurve& curve : outline.curves)
    kept.curves.push_back(OwnedCurve::Copied(library, curve));
  kept.element = element;
  kept.kind = RegionLoop::Kind::kOpen;
  kept.moments = MomentsOf(library, kept.curves);
  kept.box = BoundsOf(library, Chain(kept.curves));
  regions.loops.push_back(std::move(kept));
}

// The sides of a group are made one region each before they are combined, unless that comes to the
// same.
void CombineGroup(Library& library, const Drawing& drawing, const Input& input, const Loops& group,
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
    Combine(library, KURVO_UNION, sides[side], steps, done, united, part.report);
    sides[side] = {&united};
  }
  sides[0].insert(sides[0].end(), sides[1].begin(), sides[1].end());
  Operand made(KURVO_FILL_NONZERO);
  Combine(library, operation, sides[0], steps, done, made, part.report);
  TakeLoops(library, drawing, 0, made, part);
}

KurvoOptions WithTolerance(const PenOptions& pen, double distance, double size) {
  KurvoOptions record = pen.record;
  record.tol = pen.tolerance.value_or(
      std::min(kPartOfDistance * std::fabs(distance), kPartOfDrawing * size));
  record.tol = std::max(record.tol, kLeastTolerance * size);
  return record;
}

// How far apart outlines must be, so that their offsets do not meet.
double ReachOf(const PenOptions& pen, double distance, double size) {
  constexpr double kUsualLimit = 4;
  const double limit = pen.record.miter_limit > 0 ? pen.record.miter_limit : kUsualLimit;
  const double corner = pen.record.join == KURVO_JOIN_MITER ? limit : 1;
  return 2 * corner * std::max(distance, 0.0) + kApart * size;
}

void OffsetGroup(Library& library, const Operand& source, double distance,
                 const KurvoOptions& options, const CurveDone& done, Operand& made,
                 KurvoReport& sum) {
  const KurvoRegion record = source.Record();
  Run(
      library, ClosingAll(options), {&source}, static_cast<double>(source.CurveCount()), done,
      [&](const KurvoOptions& all, KurvoRegion* out, KurvoReport* report, GlobalVar* g) {
        KurvoRegionOffset(&record, distance, &all, out, report, g);
      },
      made, sum);
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
  Library library;
  Input input;
  Read(library, drawing, 0, count, 0, nesting, closing, input);
  Read(library, drawing, count, drawing.shapes.size(), 1, nesting, closing, input);
  const std::vector<Loops> groups =
      Apart(library, input.loops, kApart * Extent(library, {&drawing}));
  Regions regions = OnAllCores(groups.size(), [&](std::size_t i, Library& own, Regions& part) {
    CombineGroup(own, drawing, input, groups[i], operation, done, part);
  });
  regions.left_out = input.left_out;
  return regions;
}

Regions Cleaned(const Drawing& drawing, const Closing& closing, const CurveDone& done) {
  return OnAllCores(drawing.shapes.size(), [&](std::size_t i, Library& library, Regions& part) {
    const Shape& shape = drawing.shapes[i];
    Operand outlines(RuleOf(shape));
    for (const Outline& outline : shape.outlines) {
      const bool is_line = !outline.closed && shape.paint.stroke != "none";
      const bool surrounds = Surrounds(library, shape, outline, closing);
      const bool meets = surrounds && AreSame(library, StartOf(library, outline.curves.front()),
                                              EndOf(library, outline.curves.back()));
      if (surrounds && (meets || !is_line || !IsFilled(shape))) {
        outlines.Add(outline.curves, i);
      } else {
        KeepOpen(library, outline, i, part);
      }
    }
    if (outlines.IsEmpty()) return;
    outlines.Close();
    Operand made(KURVO_FILL_NONZERO);
    Combine(library, KURVO_UNION, {&outlines}, static_cast<double>(outlines.CurveCount()), done,
            made, part.report);
    TakeLoops(library, drawing, 0, made, part);
  });
}

Regions Offset(const Drawing& drawing, const std::vector<double>& distances, Nesting nesting,
               const Closing& closing, const PenOptions& pen, const CurveDone& done) {
  Library library;
  Input input;
  Read(library, drawing, 0, drawing.shapes.size(), 0, nesting, closing, input);
  const double size = Extent(library, {&drawing});
  struct Job {
    double distance;
    Loops loops;
  };
  std::vector<Job> jobs;
  for (const double distance : distances) {
    for (const Loops& group : Apart(library, input.loops, ReachOf(pen, distance, size))) {
      for (Loops& loops : ByRegion(group)) jobs.push_back({distance, std::move(loops)});
    }
  }
  Regions regions = OnAllCores(jobs.size(), [&](std::size_t i, Library& own, Regions& part) {
    const auto& [distance, loops] = jobs[i];
    Operand source(input.regions[loops.front().region].rule), made(KURVO_FILL_NONZERO);
    Fill(loops, source);
    OffsetGroup(own, source, distance, WithTolerance(pen, distance, size), done, made, part.report);
    TakeLoops(own, drawing, distance, made, part);
  });
  regions.left_out = input.left_out;
  return regions;
}

Regions Stroked(const Drawing& drawing, double left, double right, const PenOptions& pen,
                const CurveDone& done) {
  Library library;
  const double size = Extent(library, {&drawing});
  KurvoOptions pen_options = WithTolerance(pen, std::max(left, right), size);
  pen_options.dash_count = static_cast<std::int32_t>(pen.dashes.size());
  pen_options.dashes = pen.dashes.data();
  // The library's y points up.
  const std::pair sides = drawing.sheet.y_up ? std::pair(left, right) : std::pair(right, left);
  return OnAllCores(drawing.shapes.size(), [&](std::size_t i, Library& own, Regions& part) {
    Operand outlines(KURVO_FILL_NONZERO), made(KURVO_FILL_NONZERO);
    for (const Outline& outline : drawing.shapes[i].outlines) outlines.Add(outline.curves, i);
    outlines.Close();
    const KurvoRegion chains = outlines.Record();
    Run(
        own, pen_options, {&outlines}, static_cast<double>(outlines.CurveCount()), done,
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
