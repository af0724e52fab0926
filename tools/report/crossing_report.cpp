#include "report/crossing_report.h"

#include <string_view>
#include <vector>

#include "report/json.h"
#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;
constexpr auto kLines = JsonWriter::Layout::kLines;

std::string CountText(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// The cells for one of the two curves.
void AddCells(const CurveList& list, std::size_t number, const std::string& parameter,
              std::vector<std::string>& row) {
  const ListedCurve& curve = list.curves[number];
  row.insert(row.end(), {list.outlines[curve.outline], std::to_string(curve.index + 1),
                         std::string(TypeName(curve.curve->Type())), parameter});
}

std::string RangeText(const std::string& from, const std::string& to) { return from + " - " + to; }

std::vector<std::string> Row(const CrossingReport& report, const Crossing& crossing) {
  std::vector<std::string> row = {"crossing"};
  AddCells(report.first, crossing.first, ShortNumber(crossing.at.first), row);
  AddCells(report.second, crossing.second, ShortNumber(crossing.at.second), row);
  row.push_back(PointText(crossing.point));
  return row;
}

std::vector<std::string> Row(const CrossingReport& report, const Overlap& overlap) {
  const auto [from, to] = overlap.stretch;
  const auto range = [&](double start, double end) {
    return overlap.has_ends ? RangeText(ShortNumber(start), ShortNumber(end)) : "unknown";
  };
  std::vector<std::string> row = {"overlap"};
  AddCells(report.first, overlap.first, range(from.first, to.first), row);
  AddCells(report.second, overlap.second, range(from.second, to.second), row);
  if (overlap.has_ends) row.push_back(RangeText(PointText(overlap.from), PointText(overlap.to)));
  return row;
}

// Calls `write` for the crossings and the overlaps in the order of their curves.
template <typename Write>
void InOrder(const Crossings& found, const Write& write) {
  auto overlap = found.overlaps.begin();
  const auto before = [](const Overlap& a, const Crossing& b) {
    return a.first != b.first ? a.first < b.first : a.second <= b.second;
  };
  for (const Crossing& crossing : found.crossings) {
    while (overlap != found.overlaps.end() && before(*overlap, crossing)) write(*overlap++);
    write(crossing);
  }
  while (overlap != found.overlaps.end()) write(*overlap++);
}

void WriteParameter(double t, JsonWriter& json) {
  json.Key("parameter");
  json.Number(t);
  json.EndObject();
}

void WriteRange(const Overlap& overlap, double from, double to, JsonWriter& json) {
  const auto write = [&](std::string_view key, double t) {
    json.Key(key);
    if (overlap.has_ends) {
      json.Number(t);
    } else {
      json.Null();
    }
  };
  write("from", from);
  write("to", to);
  json.EndObject();
}

void WriteCrossings(const CrossingReport& report, JsonWriter& json) {
  json.Key("crossings");
  json.BeginArray(kLines);
  for (const Crossing& crossing : report.found.crossings) {
    json.BeginObject();
    BeginCurve("first", report.first, crossing.first, json);
    WriteParameter(crossing.at.first, json);
    BeginCurve("second", report.second, crossing.second, json);
    WriteParameter(crossing.at.second, json);
    json.Key("point");
    json.Coordinates(crossing.point);
    json.EndObject();
  }
  json.EndArray();
}

void WriteOverlaps(const CrossingReport& report, JsonWriter& json) {
  json.Key("overlaps");
  json.BeginArray(kLines);
  for (const Overlap& overlap : report.found.overlaps) {
    const auto [from, to] = overlap.stretch;
    json.BeginObject();
    BeginCurve("first", report.first, overlap.first, json);
    WriteRange(overlap, from.first, to.first, json);
    BeginCurve("second", report.second, overlap.second, json);
    WriteRange(overlap, from.second, to.second, json);
    json.Key("points");
    json.BeginArray();
    if (overlap.has_ends) {
      json.Coordinates(overlap.from);
      json.Coordinates(overlap.to);
    }
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace

std::string CrossingTable(const CrossingReport& report) {
  const bool two = !report.second_name.empty();
  TextTable table({{""},
                   {two ? report.first_name : "outline"},
                   {"curve", kRight},
                   {"type"},
                   {"t"},
                   {two ? report.second_name : "outline"},
                   {"curve", kRight},
                   {"type"},
                   {"t"},
                   {"point"}});
  InOrder(report.found, [&](const auto& found) { table.Add(Row(report, found)); });
  return table.Text() + CountText(report.found.crossings.size(), "crossing") + ", " +
         CountText(report.found.overlaps.size(), "overlap") + "\n";
}

std::string CrossingJson(const CrossingReport& report) {
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("files");
  json.BeginArray();
  json.String(report.first_name);
  if (!report.second_name.empty()) json.String(report.second_name);
  json.EndArray();
  WriteCrossings(report, json);
  WriteOverlaps(report, json);
  json.EndObject();
  return json.Take();
}

}  // namespace kurvo::tools
