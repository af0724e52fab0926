#include "report/csv.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace kurvo::tools {
namespace {

using Row = std::vector<std::pair<std::string, std::string>>;  // columns and their cells

constexpr const char* kPointParts[] = {"x", "y"};
constexpr const char* kBoxParts[] = {"min_x", "min_y", "max_x", "max_y"};

bool IsListOfRecords(const Json& value) {
  return value.is_array() && !value.empty() && value.front().is_structured();
}

std::string Cell(const Json& value) {
  if (value.is_null()) return {};
  if (!value.is_string()) return JsonText(value);
  const std::string text = value.get<std::string>();
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? "\"\"" : std::string(1, c));
  return quoted + "\"";
}

std::string Joined(const std::string& prefix, const std::string& name) {
  return prefix.empty() ? name : prefix + "." + name;
}

void AddValue(const std::string& name, const Json& value, Row& row) {
  if (value.is_object()) {
    for (const auto& [key, member] : value.items()) AddValue(Joined(name, key), member, row);
  } else if (value.is_array() && (value.size() == 2 || value.size() == 4)) {
    const char* const* parts = value.size() == 2 ? kPointParts : kBoxParts;
    for (const Json& item : value) AddValue(Joined(name, *parts++), item, row);
  } else if (!value.is_array()) {
    row.emplace_back(name, Cell(value));
  }
}

// The rows of one record: as many as its list has values, one without a list.
void AddRows(const std::string& prefix, const Json& record, Row row, std::vector<Row>& rows) {
  std::vector<std::pair<std::string, const Json*>> lists;
  if (!record.is_object()) {
    AddValue(prefix, record, row);
    return rows.push_back(std::move(row));
  }
  for (const auto& [key, member] : record.items()) {
    if (IsListOfRecords(member) && member.front().is_object()) {
      lists.emplace_back(Joined(prefix, key), &member);
    } else {
      AddValue(Joined(prefix, key), member, row);
    }
  }
  if (lists.empty()) return rows.push_back(std::move(row));
  for (const auto& [name, list] : lists) {
    for (const Json& item : *list) AddRows(name, item, row, rows);
  }
}

}  // namespace

std::string CsvText(const Json& report, const std::string& unit) {
  std::size_t lists = 0;
  for (const Json& member : report) lists += IsListOfRecords(member) ? 1u : 0u;
  std::vector<Row> rows;
  for (const auto& [key, member] : report.items()) {
    if (!IsListOfRecords(member)) continue;
    Row start;
    if (lists > 1) start.emplace_back("list", key);
    for (const Json& record : member) AddRows("", record, start, rows);
  }
  std::map<std::string, std::size_t> columns;
  std::vector<std::string> names;
  for (const Row& row : rows) {
    for (const auto& [name, cell] : row) {
      if (columns.emplace(name, names.size()).second) names.push_back(name);
    }
  }
  if (!unit.empty() && !names.empty()) {
    columns["unit"] = names.size();
    names.push_back("unit");
    for (Row& row : rows) row.emplace_back("unit", Cell(unit));
  }
  std::string text;
  const auto add_line = [&](const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) text.append(i > 0 ? "," : "").append(cells[i]);
    text += "\n";
  };
  if (!names.empty()) add_line(names);
  for (const Row& row : rows) {
    std::vector<std::string> cells(names.size());
    for (const auto& [name, cell] : row) cells[columns[name]] = cell;
    add_line(cells);
  }
  return text;
}

}  // namespace kurvo::tools
