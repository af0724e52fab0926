#include <fmt/format.h>

#include <algorithm>

#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

std::string OutlinesText(const LocateReport& report, const LocatedPoint& at) {
  std::string text;
  for (std::size_t i = 0; i < at.outlines.size(); ++i) {
    if (at.outlines[i] == Where::kOutside) continue;
    if (!text.empty()) text += ", ";
    text += (at.outlines[i] == Where::kOn ? "on " : "in ") + report.outlines[i];
  }
  return text;
}

std::string GridText(const std::vector<LocatedPoint>& grid) {
  const auto count = [&](Where place) {
    return std::count_if(grid.begin(), grid.end(),
                         [&](const LocatedPoint& at) { return at.place == place; });
  };
  return fmt::format("grid of {} points: {} inside, {} on, {} outside\n", grid.size(),
                     count(Where::kInside), count(Where::kOn), count(Where::kOutside));
}

Json PointRecord(const LocateReport& report, const LocatedPoint& at) {
  Json record;  // member by member, which is faster than a list of pairs
  record["point"] = at.point;
  record["place"] = PlaceName(at.place);
  if (at.outlines.empty()) return record;
  Json& outlines = record["outlines"] = Json::array();
  for (std::size_t i = 0; i < at.outlines.size(); ++i) {
    if (at.outlines[i] == Where::kOutside) continue;
    outlines.push_back({{"outline", report.outlines[i]}, {"place", PlaceName(at.outlines[i])}});
  }
  return record;
}

}  // namespace

std::string LocateTable(const LocateReport& report) {
  TextTable table({{"point"}, {"place"}, {"outlines"}});
  for (const LocatedPoint& at : report.points) {
    table.Add({PointText(at.point), std::string(PlaceName(at.place)), OutlinesText(report, at)});
  }
  return (report.points.empty() ? "" : table.Text()) +
         (report.grid.empty() ? "" : GridText(report.grid));
}

std::string LocateJson(const LocateReport& report) {
  const auto record = [&](const LocatedPoint& at, std::size_t) { return PointRecord(report, at); };
  JsonLines json;
  json.Add("file", report.name);
  json.AddList("points", report.points, record);
  json.AddList("grid", report.grid, record);
  return json.Take();
}

}  // namespace kurvo::tools
