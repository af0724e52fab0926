#include "report/json.h"

#include <fmt/format.h>

#include <cmath>
#include <utility>

namespace kurvo::tools {
namespace {

void Write(const Json& value, std::string& text) {
  const auto end = value.end();
  if (value.is_object()) {
    for (auto member = value.begin(); member != end; ++member) {
      text += member == value.begin() ? "{" : ", ";
      Write(member.key(), text);
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
  } else if (value.is_number_float() && std::isfinite(value.get<double>())) {
    fmt::format_to(std::back_inserter(text), "{}", value == 0.0 ? 0.0 : value.get<double>());
  } else {
    text += value.dump(-1, ' ', false, Json::error_handler_t::replace);
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
  return NewLine(depth_ + 1) += JsonText(key) + ": ";
}

std::string& JsonLines::NewLine(std::size_t depth) {
  return text_ += "\n" + std::string(2 * depth, ' ');
}

std::string JsonLines::Take() {
  NewLine(depth_) += depth_ > 0 ? "}" : "}\n";
  return std::move(text_);
}

}  // namespace kurvo::tools
