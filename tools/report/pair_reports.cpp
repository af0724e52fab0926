// What lies between the curves of two drawings: crossings and links.
#include <fmt/format.h>

#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

// The cells that name a curve of the list, and more about it.
void AddCells(const CurveList& list, std::size_t number, const std::vector<std::string>& more,
              std::vector<std::string>& row) {
  const ListedCurve& curve = list.curves[number];
  row.insert(row.end(), {list.outlines[curve.outline], std::to_string(curve.index + 1),
                         std::string(TypeName(curve.curve->Type()))});
  row.insert(row.end(), more.begin(), more.end());
}

// The same as an object.
Json CurveJson(const CurveList& list, std::size_t number, const Json& more) {
  const ListedCurve& curve = list.curves[number];
  Json object = {{"outline", list.outlines[curve.outline]},
                 {"curve", curve.index + 1},
                 {"type", TypeName(curve.curve->Type())}};
  object.update(more);
  return object;
}

std::string RangeText(const std::string& from, const std::string& to) { return from + " - " + to; }

std::vector<std::string> Row(const CrossingReport& report, const Crossing& crossing) {
  std::vector<std::string> row = {"crossing"};
  AddCells(report.first, crossing.first, {ShortNumber(crossing.at.first)}, row);
  AddCells(report.second, crossing.second, {ShortNumber(crossing.at.second)}, row);
  row.push_back(PointText(crossing.point));
  return row;
}

std::vector<std::string> Row(const CrossingReport& report, const Overlap& overlap) {
  const auto [from, to] = overlap.stretch;
  const auto range = [&](double start, double end) {
    return overlap.has_ends ? RangeText(ShortNumber(start), ShortNumber(end)) : "unknown";
  };
  std::vector<std::string> row = {"overlap"};
  AddCells(report.first, overlap.first, {range(from.first, to.first)}, row);
  AddCells(report.second, overlap.second, {range(from.second, to.second)}, row);
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

Json CrossingRecord(const CrossingReport& report, const Crossing& crossing) {
  const auto& [first, second, at, point] = crossing;
  return {{"first", CurveJson(report.first, first, {{"parameter", at.first}})},
          {"second", CurveJson(report.second, second, {{"parameter", at.second}})},
          {"point", point}};
}

Json OverlapRecord(const CrossingReport& report, const Overlap& overlap) {
  const auto range = [&](double from, double to) -> Json {
    if (!overlap.has_ends) return {{"from", nullptr}, {"to", nullptr}};
    return {{"from", from}, {"to", to}};
  };
  const auto [from, to] = overlap.stretch;
  Json points = Json::array();
  if (overlap.has_ends) points = {overlap.from, overlap.to};
  return {{"first", CurveJson(report.first, overlap.first, range(from.first, to.first))},
          {"second", CurveJson(report.second, overlap.second, range(from.second, to.second))},
          {"points", points}};
}

Json LinkRecord(const LinkReport& report, const Link& link) {
  const auto& [first, second, at, from, to] = link;
  return {{"first", CurveJson(report.first, first, {{"parameter", at.a}, {"point", from}})},
          {"second", CurveJson(report.second, second, {{"parameter", at.b}, {"point", to}})},
          {"distance", at.distance}};
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
  return fmt::format("{}{}, {}\n", table.Text(),
                     CountText(report.found.crossings.size(), "crossing"),
                     CountText(report.found.overlaps.size(), "overlap"));
}

std::string CrossingJson(const CrossingReport& report) {
  JsonLines json;
  Json files = Json::array({report.first_name});
  if (!report.second_name.empty()) files.push_back(report.second_name);
  json.Add("files", files);
  json.AddList("crossings", report.found.crossings, [&](const Crossing& crossing, std::size_t) {
    return CrossingRecord(report, crossing);
  });
  json.AddList("overlaps", report.found.overlaps,
               [&](const Overlap& overlap, std::size_t) { return OverlapRecord(report, overlap); });
  return json.Take();
}

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
    AddCells(report.first, link.first, {ShortNumber(link.at.a), PointText(link.from)}, row);
    AddCells(report.second, link.second, {ShortNumber(link.at.b), PointText(link.to)}, row);
    row.push_back(ShortNumber(link.at.distance));
    table.Add(row);
  }
  const Link* shortest = Shortest(report.links);
  if (shortest == nullptr) return table.Text() + "shortest: nothing\n";
  return fmt::format("{}shortest: {}, from {} to {}\n", table.Text(),
                     ShortNumber(shortest->at.distance),
                     report.first.outlines[report.first.curves[shortest->first].outline],
                     report.second.outlines[report.second.curves[shortest->second].outline]);
}

std::string LinkJson(const LinkReport& report) {
  JsonLines json;
  json.Add("files", Json::array({report.first_name, report.second_name}));
  json.AddList("links", report.links,
               [&](const Link& link, std::size_t) { return LinkRecord(report, link); });
  const Link* shortest = Shortest(report.links);
  json.Add("shortest", shortest == nullptr ? Json() : LinkRecord(report, *shortest));
  return json.Take();
}

}  // namespace kurvo::tools
