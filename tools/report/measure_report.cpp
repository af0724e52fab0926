#include <fmt/format.h>

#include <optional>

#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

std::vector<TextTable::Column> Columns(bool near) {
  std::vector<TextTable::Column> columns = {{"outline"},      {"curve", kRight},
                                            {"type"},         {"degree", kRight},
                                            {"start"},        {"end"},
                                            {"box"},          {"length", kRight},
                                            {"curvature"},    {"turning", kRight},
                                            {"area", kRight}, {"centroid"}};
  if (near) columns.insert(columns.end(), {{"distance", kRight}, {"t"}, {"nearest point"}});
  return columns;
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

void AddNearest(const NearestPoint& nearest, const std::string& parameter,
                std::vector<std::string>& row) {
  row.insert(row.end(), {ShortNumber(nearest.distance), parameter, PointText(nearest.point)});
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
  row.insert(row.end(), {ShortNumber(outline.area), PointText(outline.centroid)});
  if (near) AddNearest(NearestIn(outline), "", row);
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
    row.insert(row.end(), {"", ""});  // areas are of outlines
    if (near) AddNearest(*curve.nearest, ShortNumber(curve.nearest->parameter), row);
    table.Add(std::move(row));
  }
}

std::string TotalText(const MeasureReport& report) {
  return fmt::format("{}, total length {}\n", CountText(report.outlines.size(), "outline"),
                     ShortNumber(TotalLength(report.outlines)));
}

std::string NearestText(const MeasureReport& report) {
  const OutlineMeasures* outline = NearestOutline(report.outlines);
  const std::string start = "nearest to " + PointText(*report.near) + ": ";
  if (outline == nullptr) return start + "nothing\n";
  const NearestPoint& nearest = NearestIn(*outline);
  return fmt::format(
      "{}{}, curve {} ({}) at t = {}, {}, distance {}\n", start, outline->label,
      outline->nearest_curve + 1, TypeName(outline->curves[outline->nearest_curve].type),
      ShortNumber(nearest.parameter), PointText(nearest.point), ShortNumber(nearest.distance));
}

// The record with what says where the nearest point is.
Json WithNearest(Json record, const NearestPoint& nearest) {
  record["parameter"] = nearest.parameter;
  record["point"] = nearest.point;
  record["distance"] = nearest.distance;
  return record;
}

// The curvature and where it is, on which curve of an outline; null when it is nowhere.
Json ExtremeJson(const std::optional<CurvatureAt>& extreme,
                 std::optional<std::size_t> curve = std::nullopt) {
  if (!extreme) return {};
  Json record;
  record["curvature"] = extreme->curvature;
  if (curve) record["curve"] = *curve + 1;
  record["parameter"] = extreme->parameter;
  return record;
}

Json CurveRecord(const CurveMeasures& curve, std::size_t i) {
  Json record;  // member by member, which is faster than a list of pairs
  record["curve"] = i + 1;
  record["type"] = TypeName(curve.type);
  record["degree"] = curve.degree;
  record["start"] = curve.start;
  record["end"] = curve.end;
  record["box"] = curve.box;
  record["length"] = curve.length;
  record["turning"] = Degrees(curve.bending.turning);
  record["least"] = ExtremeJson(curve.bending.least);
  record["greatest"] = ExtremeJson(curve.bending.greatest);
  if (curve.nearest) record["nearest"] = WithNearest({}, *curve.nearest);
  return record;
}

std::string OutlineRecord(const OutlineMeasures& outline, bool near) {
  const auto least = LeastCurved(outline);
  const auto most = MostCurved(outline);
  JsonLines json(2);
  json.Add("outline", outline.label);
  json.Add("closed", outline.closed);
  json.Add("start", outline.curves.front().start);
  json.Add("end", outline.curves.back().end);
  json.Add("box", outline.box);
  json.Add("length", outline.length);
  json.Add("area", outline.area);
  json.Add("centroid", outline.centroid);
  json.Add("turning", Degrees(outline.turning));
  json.Add("least", ExtremeJson(Extreme(outline, least, &Bending::least), least));
  json.Add("greatest", ExtremeJson(Extreme(outline, most, &Bending::greatest), most));
  if (near) {
    json.Add("nearest", WithNearest({{"curve", outline.nearest_curve + 1}}, NearestIn(outline)));
  }
  json.AddList("curves", outline.curves, CurveRecord);
  return json.Take();
}

// The nearest point of all; null without curves.
Json OverallNearest(const MeasureReport& report) {
  const OutlineMeasures* outline = NearestOutline(report.outlines);
  if (outline == nullptr) return {};
  return WithNearest({{"outline", outline->label}, {"curve", outline->nearest_curve + 1}},
                     NearestIn(*outline));
}

}  // namespace

std::string MeasureTable(const MeasureReport& report) {
  TextTable table(Columns(report.near.has_value()));
  for (const OutlineMeasures& outline : report.outlines) {
    AddOutline(outline, report.near.has_value(), table);
  }
  return table.Text() + TotalText(report) + (report.near ? NearestText(report) : "");
}

std::string MeasureJson(const MeasureReport& report) {
  JsonLines json;
  json.Add("file", report.name);
  if (report.near) {
    json.Add("near", *report.near);
    json.Add("nearest", OverallNearest(report));
  }
  json.Add("length", TotalLength(report.outlines));
  json.AddList("outlines", report.outlines, [&](const OutlineMeasures& outline, std::size_t) {
    return OutlineRecord(outline, report.near.has_value());
  });
  return json.Take();
}

}  // namespace kurvo::tools
