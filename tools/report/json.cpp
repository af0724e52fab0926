#include "report/json.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

namespace kurvo::tools {
namespace {

// Most strings stand as they are; the others cost a serializer each.
void WriteString(const std::string& string, std::string& text) {
  const auto is_plain = [](char c) { return ' ' <= c && c <= '~' && c != '"' && c != '\\'; };
  if (std::all_of(string.begin(), string.end(), is_plain)) {
    text.append("\"").append(string).append("\"");
  } else {
    text += Json(string).dump(-1, ' ', false, Json::error_handler_t::replace);
  }
}

void Write(const Json& value, std::string& text) {
  if (value.is_object()) {
    const char* before = "{";
    for (const auto& [key, member] : value.get_ref<const Json::object_t&>()) {
      WriteString(key, text.append(std::exchange(before, ", ")));
      Write(member, text.append(": "));
    }
    text += value.empty() ? "{}" : "}";
  } else if (value.is_array()) {
    const char* before = "[";
    for (const Json& item : value.get_ref<const Json::array_t&>())
      Write(item, text.append(std::exchange(before, ", ")));
    text += value.empty() ? "[]" : "]";
  } else if (value.is_string()) {
    WriteString(value.get_ref<const std::string&>(), text);
  } else if (value.is_number_float() && std::isfinite(value.get<double>())) {
    fmt::format_to(std::back_inserter(text), "{}", value == 0.0 ? 0.0 : value.get<double>());
  } else if (value.is_number_integer()) {
    text += fmt::to_string(value.get<std::int64_t>());
  } else {
    text += value.dump();
  }
}

}  // namespace

std::string JsonText(const Json& value) {
  std::string text;
  Write(value, text);
  return text;
}

std::string& JsonLines::Begin(std::string_view key) {
  text_ += text_.empty() ? "{" : ",";
  WriteString(std::string(key), NewLine(depth_ + 1));
  return text_ += ": ";
}

std::string& JsonLines::NewLine(std::size_t depth) {
  return text_ += "\n" + std::string(2 * depth, ' ');
}

std::string JsonLines::Take() {
  NewLine(depth_) += depth_ > 0 ? "}" : "}\n";
  return std::move(text_);
}

}  // namespace kurvo::tools
