#include "report/json.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
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
  const auto end = value.end();
  if (value.is_object()) {
    for (auto member = value.begin(); member != end; ++member) {
      text += member == value.begin() ? "{" : ", ";
      WriteString(member.key(), text);
      text += ": ";
      Write(*member, text);
    }
    text += value.empty() ? "{}" : "}";
  } else if (value.is_array()) {
    for (auto item = value.begin(); item != end; ++item) {
      text += item == value.begin() ? "[" : ", ";
      Write(*item, text);
    }
    text += value.empty() ? "[]" : "]";
  } else if (value.is_string()) {
    WriteString(value.get_ref<const std::string&>(), text);
  } else if (value.is_number_float() && std::isfinite(value.get<double>())) {
    fmt::format_to(std::back_inserter(text), "{}", value == 0.0 ? 0.0 : value.get<double>());
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
