#include "report/json.h"

#include <cmath>
#include <cstdio>
#include <utility>

#include "svg/number_text.h"
#include "svg/utf8.h"

namespace kurvo::tools {
namespace {

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : ValidUtf8(text)) {
    if (c == '"' || c == '\\') {
      quoted += {'\\', c};
    } else if (static_cast<unsigned char>(c) < ' ') {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      quoted += escape;
    } else {
      quoted += c;
    }
  }
  return quoted + "\"";
}

}  // namespace

void JsonWriter::NewLine() { text_ += "\n" + std::string(2 * levels_.size(), ' '); }

void JsonWriter::Separate() {
  if (std::exchange(after_key_, false) || levels_.empty()) return;
  Level& level = levels_.back();
  const bool first = !std::exchange(level.has_values, true);
  if (!first) text_ += ',';
  if (level.on_lines) {
    NewLine();
  } else if (!first) {
    text_ += ' ';
  }
}

void JsonWriter::Begin(char bracket, Layout layout) {
  Separate();
  text_ += bracket;
  levels_.push_back({layout == Layout::kLines, false});
}

void JsonWriter::End(char bracket) {
  const Level level = levels_.back();
  levels_.pop_back();
  if (level.on_lines && level.has_values) NewLine();
  text_ += bracket;
}

void JsonWriter::Key(std::string_view name) {
  Separate();
  text_ += Quoted(name) + ": ";
  after_key_ = true;
}

void JsonWriter::Number(double value) {
  if (!std::isfinite(value)) return Null();
  Separate();
  text_ += ExactNumber(value);
}

void JsonWriter::Count(std::size_t value) {
  Separate();
  text_ += std::to_string(value);
}

void JsonWriter::String(std::string_view text) {
  Separate();
  text_ += Quoted(text);
}

void JsonWriter::Bool(bool value) {
  Separate();
  text_ += value ? "true" : "false";
}

void JsonWriter::Null() {
  Separate();
  text_ += "null";
}

void JsonWriter::Coordinates(Point p) {
  BeginArray();
  Number(p.x);
  Number(p.y);
  EndArray();
}

std::string JsonWriter::Take() { return std::move(text_) + "\n"; }

}  // namespace kurvo::tools
