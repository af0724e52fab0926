#include "report/locate_report.h"

#include <algorithm>

#include "report/json.h"
#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kLines = JsonWriter::Layout::kLines;

std::size_t CountOf(const std::vector<LocatedPoint>& points, Place place) {
  return static_cast<std::size_t>(std::count_if(
      points.begin(), points.end(), [place](const LocatedPoint& at) { return at.place == place; }));
}

std::string OutlinesText(const LocateReport& report, const LocatedPoint& at) {
  std::string text;
  for (std::size_t i = 0; i < at.outlines.size(); ++i) {
    if (at.outlines[i] == Place::kOutside) continue;
    if (!text.empty()) text += ", ";
    text += (at.outlines[i] == Place::kOn ? "on " : "in ") + report.outlines[i];
  }
  return text;
}

std::string GridText(const std::vector<LocatedPoint>& grid) {
  std::string text = "grid of " + std::to_string(grid.size()) + " points:";
  for (const Place place : {Place::kInside, Place::kOn, Place::kOutside}) {
    text += (place == Place::kInside ? " " : ", ") + std::to_string(CountOf(grid, place)) + " " +
            std::string(PlaceName(place));
  }
  return text + "\n";
}

void WritePoint(const LocateReport& report, const LocatedPoint& at, JsonWriter& json) {
  json.BeginObject();
  json.Key("point");
  json.Coordinates(at.point);
  json.Key("place");
  json.String(PlaceName(at.place));
  if (!at.outlines.empty()) {
    json.Key("outlines");
    json.BeginArray();
    for (std::size_t i = 0; i < at.outlines.size(); ++i) {
      if (at.outlines[i] == Place::kOutside) continue;
      json.BeginObject();
      json.Key("outline");
      json.String(report.outlines[i]);
      json.Key("place");
      json.String(PlaceName(at.outlines[i]));
      json.EndObject();
    }
    json.EndArray();
  }
  json.EndObject();
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
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("file");
  json.String(report.name);
  json.Key("points");
  json.BeginArray(kLines);
  for (const LocatedPoint& at : report.points) WritePoint(report, at, json);
  json.EndArray();
  json.Key("grid");
  json.BeginArray(kLines);
  for (const LocatedPoint& at : report.grid) WritePoint(report, at, json);
  json.EndArray();
  json.EndObject();
  return json.Take();
}

}  // namespace kurvo::tools
