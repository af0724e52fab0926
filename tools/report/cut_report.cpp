// What is cut, and how long that takes.
#include <fmt/format.h>

#include <cmath>

#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

constexpr double kSecondsPerMinute = 60;

struct Counts {
  std::size_t lines = 0, arcs = 0, with_lead_in = 0;
};

Counts CountsOf(const CutPlan& plan) {
  Counts counts;
  for (const MachineCut& cut : plan.cuts) {
    if (!cut.lead_in.empty()) ++counts.with_lead_in;
    for (const DxfSegment& segment : cut.segments)
      ++(segment.sweep == 0 ? counts.lines : counts.arcs);
  }
  return counts;
}

double Minutes(const CutReport& report) {
  return report.plan.length / report.feed + report.plan.way / report.rapid;
}

}  // namespace

std::string CutTable(const CutReport& report) {
  const CutPlan& plan = report.plan;
  const Counts counts = CountsOf(plan);
  const double seconds = std::round(kSecondsPerMinute * Minutes(report));
  std::string text =
      fmt::format("{} of {} closed outlines, {} open, in {}: {} and {}\n", plan.closed_cuts,
                  plan.closed, plan.open, CountText(plan.cuts.size(), "cut"),
                  CountText(counts.lines, "line"), CountText(counts.arcs, "arc"));
  text += fmt::format("joined with {} closed, {} dropped; {} of {} with a lead-in\n",
                      CountText(static_cast<std::size_t>(plan.report.gaps), "gap"),
                      CountText(static_cast<std::size_t>(plan.report.dropped), "duplicate"),
                      counts.with_lead_in, CountText(plan.closed_cuts, "closed cut"));
  return text + fmt::format("cut {:.1f} mm, way {:.1f} mm, time {:.0f}:{:02.0f}\n", plan.length,
                            plan.way, std::floor(seconds / kSecondsPerMinute),
                            std::fmod(seconds, kSecondsPerMinute));
}

std::string CutJson(const CutReport& report) {
  const CutPlan& plan = report.plan;
  const Counts counts = CountsOf(plan);
  JsonLines json;
  json.Add("file", report.name);
  json.Add("closed", plan.closed);
  json.Add("open", plan.open);
  json.Add("gaps", plan.report.gaps);
  json.Add("dropped", plan.report.dropped);
  json.Add("lines", counts.lines);
  json.Add("arcs", counts.arcs);
  json.Add("cut_mm", plan.length);
  json.Add("way_mm", plan.way);
  json.Add("seconds", kSecondsPerMinute * Minutes(report));
  json.AddList("cuts", plan.cuts, [](const MachineCut& cut, std::size_t) {
    Json record = {{"closed", cut.closed}, {"lead_in", !cut.lead_in.empty()}};
    record["start"] = cut.segments.front().from;
    record["segments"] = cut.segments.size();
    return record;
  });
  return json.Take();
}

}  // namespace kurvo::tools
