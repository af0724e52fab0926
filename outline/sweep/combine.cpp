#include "sweep/combine.h"

#include <algorithm>

#include "strand/joints.h"
#include "sweep/clear.h"
#include "sweep/gather.h"
#include "sweep/sweep.h"

namespace kurvo::outline {
namespace {

constexpr double kCoordinate = 0x1p-49;  // of the largest coordinate: what its rounding makes

// Most curves are one source.
void Reserve(const Array<Operand>& operands, Scene& scene) {
  std::size_t curves = 0;
  for (const Operand& operand : operands)
    for (int32_t i = 0; i < operand.count; ++i)
      curves += static_cast<std::size_t>(operand.loops[i].count);
  scene.sources.reserve(curves);
  scene.vertices.reserve(curves + curves / 2);
}

}  // namespace

Emitted Combine(Request& request, KurvoReport& report) {
  Progress& progress = request.settings.progress;
  progress.Tell(0);
  Scene scene;
  scene.frame = Frame(request.box);
  const double rounding = kCoordinate * request.box.Farthest();
  scene.tol = scene.frame.LengthInwards(std::max(request.settings.tol, rounding));
  Reserve(request.operands, scene);
  Array<int32_t> rules;
  for (std::size_t i = 0; i < request.operands.size(); ++i) {
    AddLoops(request.operands[i], CountOf(i), request.settings.gap, scene);
    rules.push_back(request.operands[i].rule);
  }
  report.gaps = scene.gaps;
  Array<Strand> strands;
  CutIntoStrands(scene, strands);
  Events events;
  FindEvents(scene, strands, progress, events);
  report.capped = events.capped;
  const FillRule fill(request.operation, CountOf(rules.size()));
  ResultLoops result;
  const double closed = std::min(request.epsilon, kClosingShare * scene.frame.size());
  if (!FindClearLoops(scene, strands, events, rules, fill, closed, report, result)) {
    Arrangement arrangement;
    Counts counts;
    RunSweep(scene, strands, rules, fill, progress, events, arrangement, counts);
    report.unresolved = counts.unresolved;
    GatherLoops(scene, arrangement, closed, report, result);
    report.moved = std::max(report.moved, scene.frame.LengthOutwards(arrangement.worst_bridge));
  }
  Emitted emitted = Emit(scene, request.operands, result, request.keeps_given);
  progress.Tell(1);
  return emitted;
}

}  // namespace kurvo::outline
