#include "report/link_report.h"

#include <string_view>

#include "report/json.h"
#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;
constexpr auto kLines = JsonWriter::Layout::kLines;

void AddCells(const CurveList& list, std::size_t number, double t, Point p,
              std::vector<std::string>& row) {
  const ListedCurve& curve = list.curves[number];
  row.insert(row.end(), {list.outlines[curve.outline], std::to_string(curve.index + 1),
                         std::string(TypeName(curve.curve->Type())), ShortNumber(t), PointText(p)});
}

void WriteEnd(std::string_view key, const CurveList& list, std::size_t number, double t, Point p,
              JsonWriter& json) {
  BeginCurve(key, list, number, json);
  json.Key("parameter");
  json.Number(t);
  json.Key("point");
  json.Coordinates(p);
  json.EndObject();
}

void WriteLink(const LinkReport& report, const Link& link, JsonWriter& json) {
  json.BeginObject();
  WriteEnd("first", report.first, link.first, link.at.first, link.from, json);
  WriteEnd("second", report.second, link.second, link.at.second, link.to, json);
  json.Key("distance");
  json.Number(link.at.distance);
  json.EndObject();
}

}  // namespace

std::string LinkTable(const LinkReport& report) {
  TextTable table({{report.first_name},
                   {"curve", kRight},
                   {"type"},
                   {"t"},
                   {"point"},
                   {report.second_name},
                   {"curve", kRight},
                   {"type"},
                   {"t"},
                   {"point"},
                   {"distance"}});
  for (const Link& link : report.links) {
    std::vector<std::string> row;
    AddCells(report.first, link.first, link.at.first, link.from, row);
    AddCells(report.second, link.second, link.at.second, link.to, row);
    row.push_back(ShortNumber(link.at.distance));
    table.Add(row);
  }
  const Link* shortest = Shortest(report.links);
  if (shortest == nullptr) return table.Text() + "shortest: nothing\n";
  return table.Text() + "shortest: " + ShortNumber(shortest->at.distance) + ", from " +
         report.first.outlines[report.first.curves[shortest->first].outline] + " to " +
         report.second.outlines[report.second.curves[shortest->second].outline] + "\n";
}

std::string LinkJson(const LinkReport& report) {
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("files");
  json.BeginArray();
  json.String(report.first_name);
  json.String(report.second_name);
  json.EndArray();
  json.Key("links");
  json.BeginArray(kLines);
  for (const Link& link : report.links) WriteLink(report, link, json);
  json.EndArray();
  json.Key("shortest");
  if (const Link* shortest = Shortest(report.links)) {
    WriteLink(report, *shortest, json);
  } else {
    json.Null();
  }
  json.EndObject();
  return json.Take();
}

}  // namespace kurvo::tools
