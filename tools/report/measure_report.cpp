#include "report/measure_report.h"

#include <optional>
#include <string_view>

#include "report/json.h"
#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;
constexpr auto kLines = JsonWriter::Layout::kLines;

std::vector<TextTable::Column> Columns(bool near) {
  std::vector<TextTable::Column> columns = {
      {"outline"}, {"curve", kRight}, {"type"},           {"degree", kRight}, {"start"},
      {"end"},     {"box"},           {"length", kRight}, {"curvature"},      {"turning", kRight}};
  if (near) columns.insert(columns.end(), {{"distance", kRight}, {"t"}, {"nearest point"}});
  return columns;
}

void AddNearest(const NearestPoint& nearest, std::vector<std::string>& row) {
  row.insert(row.end(), {ShortNumber(nearest.distance), ShortNumber(nearest.parameter),
                         PointText(nearest.point)});
}

std::string CurvatureText(const std::optional<CurvatureAt>& least,
                          const std::optional<CurvatureAt>& greatest) {
  if (!least || !greatest) return "-";
  const std::string from = ShortNumber(least->curvature);
  const std::string to = ShortNumber(greatest->curvature);
  return from == to ? from : from + " .. " + to;
}

void AddBending(double length, const std::optional<CurvatureAt>& least,
                const std::optional<CurvatureAt>& greatest, double turning,
                std::vector<std::string>& row) {
  row.insert(row.end(),
             {ShortNumber(length), CurvatureText(least, greatest), ShortNumber(Degrees(turning))});
}

// An extreme among the curves of an outline.
std::optional<CurvatureAt> Extreme(const OutlineMeasures& outline, std::optional<std::size_t> curve,
                                   std::optional<CurvatureAt> Bending::*extreme) {
  if (!curve) return std::nullopt;
  return outline.curves[*curve].bending.*extreme;
}

void AddOutline(const OutlineMeasures& outline, bool near, TextTable& table) {
  std::vector<std::string> row = {outline.label,
                                  "",
                                  outline.closed ? "closed" : "open",
                                  "",
                                  PointText(outline.curves.front().start),
                                  PointText(outline.curves.back().end),
                                  BoundsText(outline.box)};
  AddBending(outline.length, Extreme(outline, LeastCurved(outline), &Bending::least),
             Extreme(outline, MostCurved(outline), &Bending::greatest), outline.turning, row);
  if (near) {
    const NearestPoint& nearest = NearestIn(outline);
    row.insert(row.end(), {ShortNumber(nearest.distance), "", PointText(nearest.point)});
  }
  table.Add(std::move(row));
  for (std::size_t i = 0; i < outline.curves.size(); ++i) {
    const CurveMeasures& curve = outline.curves[i];
    row = {"",
           std::to_string(i + 1),
           std::string(TypeName(curve.type)),
           std::to_string(curve.degree),
           PointText(curve.start),
           PointText(curve.end),
           BoundsText(curve.box)};
    AddBending(curve.length, curve.bending.least, curve.bending.greatest, curve.bending.turning,
               row);
    if (near) AddNearest(*curve.nearest, row);
    table.Add(std::move(row));
  }
}

std::string NearestText(const MeasureReport& report) {
  const OutlineMeasures* outline = NearestOutline(report.outlines);
  const std::string start = "nearest to " + PointText(*report.near) + ": ";
  if (outline == nullptr) return start + "nothing\n";
  const NearestPoint& nearest = NearestIn(*outline);
  return start + outline->label + ", curve " + std::to_string(outline->nearest_curve + 1) + " (" +
         std::string(TypeName(outline->curves[outline->nearest_curve].type)) +
         ") at t = " + ShortNumber(nearest.parameter) + ", " + PointText(nearest.point) +
         ", distance " + ShortNumber(nearest.distance) + "\n";
}

void WritePoint(std::string_view key, Point p, JsonWriter& json) {
  json.Key(key);
  json.Coordinates(p);
}

// [least x, least y, greatest x, greatest y]
void WriteBox(const Bounds& box, JsonWriter& json) {
  json.Key("box");
  json.BeginArray();
  for (const double side : {box.min_x, box.min_y, box.max_x, box.max_y}) json.Number(side);
  json.EndArray();
}

// The members of an object that say where the nearest point is.
void WriteNearest(const NearestPoint& nearest, JsonWriter& json) {
  json.Key("parameter");
  json.Number(nearest.parameter);
  WritePoint("point", nearest.point, json);
  json.Key("distance");
  json.Number(nearest.distance);
}

// The curvature and where it is, on which curve of an outline; null when it is nowhere.
void WriteExtreme(std::string_view key, const std::optional<CurvatureAt>& extreme,
                  std::optional<std::size_t> curve, JsonWriter& json) {
  json.Key(key);
  if (!extreme) return json.Null();
  json.BeginObject();
  json.Key("curvature");
  json.Number(extreme->curvature);
  if (curve) {
    json.Key("curve");
    json.Count(*curve + 1);
  }
  json.Key("parameter");
  json.Number(extreme->parameter);
  json.EndObject();
}

void WriteLengthAndTurning(double length, double turning, JsonWriter& json) {
  json.Key("length");
  json.Number(length);
  json.Key("turning");
  json.Number(Degrees(turning));
}

void WriteCurve(std::size_t number, const CurveMeasures& curve, JsonWriter& json) {
  json.BeginObject();
  json.Key("curve");
  json.Count(number);
  json.Key("type");
  json.String(TypeName(curve.type));
  json.Key("degree");
  json.Count(static_cast<std::size_t>(curve.degree));
  WritePoint("start", curve.start, json);
  WritePoint("end", curve.end, json);
  WriteBox(curve.box, json);
  WriteLengthAndTurning(curve.length, curve.bending.turning, json);
  WriteExtreme("least", curve.bending.least, std::nullopt, json);
  WriteExtreme("greatest", curve.bending.greatest, std::nullopt, json);
  if (curve.nearest) {
    json.Key("nearest");
    json.BeginObject();
    WriteNearest(*curve.nearest, json);
    json.EndObject();
  }
  json.EndObject();
}

void WriteOutline(const OutlineMeasures& outline, bool near, JsonWriter& json) {
  json.BeginObject(kLines);
  json.Key("outline");
  json.String(outline.label);
  json.Key("closed");
  json.Bool(outline.closed);
  WritePoint("start", outline.curves.front().start, json);
  WritePoint("end", outline.curves.back().end, json);
  WriteBox(outline.box, json);
  WriteLengthAndTurning(outline.length, outline.turning, json);
  const auto least = LeastCurved(outline);
  const auto most = MostCurved(outline);
  WriteExtreme("least", Extreme(outline, least, &Bending::least), least, json);
  WriteExtreme("greatest", Extreme(outline, most, &Bending::greatest), most, json);
  if (near) {
    json.Key("nearest");
    json.BeginObject();
    json.Key("curve");
    json.Count(outline.nearest_curve + 1);
    WriteNearest(NearestIn(outline), json);
    json.EndObject();
  }
  json.Key("curves");
  json.BeginArray(kLines);
  for (std::size_t i = 0; i < outline.curves.size(); ++i)
    WriteCurve(i + 1, outline.curves[i], json);
  json.EndArray();
  json.EndObject();
}

// The nearest point of all; null without curves.
void WriteOverallNearest(const MeasureReport& report, JsonWriter& json) {
  WritePoint("near", *report.near, json);
  json.Key("nearest");
  const OutlineMeasures* outline = NearestOutline(report.outlines);
  if (outline == nullptr) return json.Null();
  json.BeginObject();
  json.Key("outline");
  json.String(outline->label);
  json.Key("curve");
  json.Count(outline->nearest_curve + 1);
  WriteNearest(NearestIn(*outline), json);
  json.EndObject();
}

}  // namespace

std::string MeasureTable(const MeasureReport& report) {
  TextTable table(Columns(report.near.has_value()));
  for (const OutlineMeasures& outline : report.outlines) {
    AddOutline(outline, report.near.has_value(), table);
  }
  return table.Text() + (report.near ? NearestText(report) : "");
}

std::string MeasureJson(const MeasureReport& report) {
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("file");
  json.String(report.name);
  if (report.near) WriteOverallNearest(report, json);
  json.Key("outlines");
  json.BeginArray(kLines);
  for (const OutlineMeasures& outline : report.outlines) {
    WriteOutline(outline, report.near.has_value(), json);
  }
  json.EndArray();
  json.EndObject();
  return json.Take();
}

}  // namespace kurvo::tools
