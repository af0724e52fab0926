#include "geometry/region_work.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "geometry/curve_make.h"

namespace kurvo::tools {
namespace {

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

}  // namespace

KurvoOptions ClosingAll(KurvoOptions options) {
  options.gap = INFINITY;
  return options;
}

KurvoOptions WithTolerance(const PenOptions& pen, double distance, double size) {
  KurvoOptions record = pen.record;
  record.tol = pen.tolerance.value_or(
      std::min(kPartOfDistance * std::fabs(distance), kPartOfDrawing * size));
  record.tol = std::max(record.tol, kLeastTolerance * size);
  return record;
}

void Run(Context& context, const KurvoOptions& options, const std::vector<const Operand*>& sources,
         double steps, const CurveDone& done, const char* function, const MakeRegion& make,
         Operand& out, KurvoReport& sum) {
  KurvoOptions record = options;
  record.size = sizeof record;
  record.flags = KURVO_WITH_ORIGINS;
  KurvoReport report = {};
  {
    const Steps told(done, steps, record);
    const EpsilonScope wider = WiderTolerance(context);
    const auto call = [&](Region& made, GlobalVar* g) { make(record, made.Get(), &report, g); };
    out.Output() = context.Call<Region>(function, call).value();
  }
  out.TakeElements(sources);
  Add(report, sum);
}

void Combine(Context& context, int operation, const std::vector<const Operand*>& sources,
             double steps, const CurveDone& done, Operand& out, KurvoReport& report, double tol) {
  KurvoOptions closing = ClosingAll({});
  closing.tol = tol;
  std::vector<KurvoRegion> records;
  for (const Operand* source : sources) records.push_back(source->Record());
  std::vector<const KurvoRegion*> regions;
  for (const KurvoRegion& record : records) regions.push_back(&record);
  Run(
      context, closing, sources, steps, done, "KurvoRegionCombineMany",
      [&](const KurvoOptions& options, KurvoRegion* made, KurvoReport* own, GlobalVar* g) {
        KurvoRegionCombineMany(operation, regions.data(), static_cast<std::int32_t>(regions.size()),
                               &options, made, own, g);
      },
      out, report);
}

void OffsetGroup(Context& context, const Operand& source, double distance,
                 const KurvoOptions& options, const CurveDone& done, Operand& made,
                 KurvoReport& sum) {
  const KurvoRegion record = source.Record();
  Run(
      context, ClosingAll(options), {&source}, static_cast<double>(source.CurveCount()), done,
      "KurvoRegionOffset",
      [&](const KurvoOptions& all, KurvoRegion* out, KurvoReport* report, GlobalVar* g) {
        KurvoRegionOffset(&record, distance, &all, out, report, g);
      },
      made, sum);
}

void TakeLoops(Context& context, const Drawing& drawing, double distance, Operand& made,
               Regions& regions) {
  Region& region = made.Output();
  std::size_t around = kNoElement;
  for (std::size_t i = 0; i < region.size(); ++i) {
    RegionLoop loop;
    for (std::size_t k = 0; k < region[i].size() && loop.element == kNoElement; ++k)
      loop.element = made.ElementOf(i, k);
    loop.curves = Taken(std::move(region[i]));
    loop.moments = MomentsOf(context, loop.curves);
    loop.box = BoundsOf(context, loop.curves);
    loop.distance = distance;
    if (loop.moments.area < 0) loop.kind = RegionLoop::Kind::kHole;
    const bool is_hole = loop.kind == RegionLoop::Kind::kHole;
    if (!is_hole) around = loop.element;
    if (is_hole && around != kNoElement && IsFilled(drawing.shapes[around])) loop.element = around;
    regions.loops.push_back(std::move(loop));
  }
}

void Keep(Context& context, const Outline& outline, std::size_t element, RegionLoop::Kind kind,
          Regions& regions) {
  RegionLoop kept;
  kept.curves = Copies(context, outline.curves);
  kept.element = element;
  kept.kind = kind;
  kept.moments = MomentsOf(context, kept.curves);
  kept.box = BoundsOf(context, kept.curves);
  regions.loops.push_back(std::move(kept));
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

}  // namespace kurvo::tools
