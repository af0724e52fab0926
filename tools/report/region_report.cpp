// Regions that were made: their loops, and what was done besides.
#include <fmt/format.h>

#include <array>
#include <string_view>

#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

using Kind = RegionLoop::Kind;

constexpr auto kRight = TextTable::Align::kRight;
constexpr std::string_view kKinds[] = {"outline", "hole", "open", "kept"};  // by Kind
constexpr std::string_view kNoElementLabel = "-";

std::size_t Index(Kind kind) { return static_cast<std::size_t>(kind); }
std::size_t Count(std::int32_t count) { return static_cast<std::size_t>(count); }

// As the drawing of the regions names its outlines; those of a second file with its name.
std::vector<std::string> Labels(const RegionReport& report) {
  const std::vector<RegionLoop>& loops = report.regions.loops;
  std::vector<std::string> labels;
  for (std::size_t begin = 0, end; begin < loops.size(); begin = end) {
    const std::size_t element = loops[begin].element;
    for (end = begin + 1; end < loops.size() && loops[end].element == element;) ++end;
    for (std::size_t i = begin; i < end; ++i) {
      std::string& label = labels.emplace_back(kNoElementLabel);
      if (element != kNoElement) label = report.drawing.shapes[element].label;
      if (element != kNoElement && element >= report.second)
        label = report.names.back() + ": " + label;
      if (end - begin > 1) label += fmt::format(".{}", i - begin + 1);
    }
  }
  return labels;
}

std::array<std::size_t, std::size(kKinds)> CountKinds(const Regions& regions) {
  std::array<std::size_t, std::size(kKinds)> counts = {};
  for (const RegionLoop& loop : regions.loops) ++counts[Index(loop.kind)];
  return counts;
}

double AreaOf(const Regions& regions) {
  double area = 0;
  for (const RegionLoop& loop : regions.loops)
    if (loop.kind == Kind::kOutline || loop.kind == Kind::kHole) area += loop.moments.area;
  return area;
}

std::string Summary(const Regions& regions) {
  const auto counts = CountKinds(regions);
  const KurvoReport& report = regions.report;
  std::string text = CountText(counts[Index(Kind::kOutline)], "outline") + ", " +
                     CountText(counts[Index(Kind::kHole)], "hole") + ", area " +
                     ShortNumber(AreaOf(regions)) + "\n";
  text += CountText(Count(report.gaps), "gap") + " closed, " +
          CountText(Count(report.dropped), "loop") + " dropped, ";
  const std::string moved = ShortNumber(report.moved);
  text += moved == "0" ? "nothing moved, " : "moved by " + moved + " at most, ";
  text += report.unresolved > 0 ? CountText(Count(report.unresolved), "place") + " unresolved"
                                : "nothing unresolved";
  if (report.capped > 0) text += fmt::format(", {} taken at a limit of work", report.capped);
  text += "\n";
  if (counts[Index(Kind::kOpen)] > 0)
    text += CountText(counts[Index(Kind::kOpen)], "open outline") + " left alone\n";
  if (counts[Index(Kind::kKept)] > 0)
    text += CountText(counts[Index(Kind::kKept)], "outline") + " kept\n";
  if (regions.left_out > 0) text += CountText(regions.left_out, "open outline") + " left out\n";
  return text;
}

}  // namespace

std::string RegionTable(const RegionReport& report) {
  std::vector<TextTable::Column> columns = {
      {"outline"}, {""}, {"curves", kRight}, {"length", kRight}, {"area", kRight}, {"box"}};
  if (report.with_distances) columns.insert(columns.begin() + 1, {"distance", kRight});
  TextTable table(columns);
  const std::vector<std::string> labels = Labels(report);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const RegionLoop& loop = report.regions.loops[i];
    std::vector<std::string> row = {labels[i]};
    if (report.with_distances) row.push_back(ShortNumber(loop.distance));
    row.insert(row.end(), {loop.kind == Kind::kOutline ? "" : std::string(kKinds[Index(loop.kind)]),
                           std::to_string(loop.curves.size()), ShortNumber(loop.moments.length),
                           ShortNumber(loop.kind == Kind::kOpen ? 0 : loop.moments.area),
                           BoundsText(loop.box)});
    table.Add(std::move(row));
  }
  return table.Text() + Summary(report.regions);
}

std::string RegionJson(const RegionReport& report) {
  const Regions& regions = report.regions;
  JsonLines json;
  json.Add("file", report.names.front());
  if (report.names.size() > 1) json.Add("other", report.names.back());
  json.Add("operation", report.operation);
  const Json done[] = {{{"area", AreaOf(regions)},
                        {"gaps", regions.report.gaps},
                        {"dropped", regions.report.dropped},
                        {"dropped_area", regions.report.dropped_area},
                        {"moved", regions.report.moved},
                        {"unresolved", regions.report.unresolved},
                        {"capped", regions.report.capped},
                        {"left_out", regions.left_out}}};
  json.AddList("report", done, [](const Json& record, std::size_t) { return record; });
  const std::vector<std::string> labels = Labels(report);
  json.AddList("outlines", regions.loops, [&](const RegionLoop& loop, std::size_t i) {
    Json record = {{"outline", labels[i]}, {"kind", kKinds[Index(loop.kind)]}};
    if (report.with_distances) record["distance"] = loop.distance;
    record["curves"] = loop.curves.size();
    record["length"] = loop.moments.length;
    record["area"] = loop.kind == Kind::kOpen ? 0 : loop.moments.area;
    record["box"] = loop.box;
    return record;
  });
  return json.Take();
}

}  // namespace kurvo::tools
