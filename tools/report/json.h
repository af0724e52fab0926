// Writes JSON (RFC 8259).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/affine.h"

namespace kurvo::tools {

class JsonWriter {
 public:
  // How the values of an object or an array stand: each on a line of its own, or all on one.
  enum class Layout { kLines, kOneLine };

  void BeginObject(Layout layout = Layout::kOneLine) { Begin('{', layout); }
  void EndObject() { End('}'); }
  void BeginArray(Layout layout = Layout::kOneLine) { Begin('[', layout); }
  void EndArray() { End(']'); }
  // Names the next value of an object.
  void Key(std::string_view name);

  // Read back, the number is the same double; what is not finite becomes null.
  void Number(double value);
  void Count(std::size_t value);
  // Bytes that are not UTF-8 become U+FFFD.
  void String(std::string_view text);
  void Bool(bool value);
  void Null();
  // [x, y]
  void Coordinates(Point p);

  // The whole text, with a line feed at its end.
  std::string Take();

 private:
  struct Level {
    bool on_lines;
    bool has_values;
  };

  void Begin(char bracket, Layout layout);
  void End(char bracket);
  // What goes between the previous value and the next one.
  void Separate();
  void NewLine();

  std::string text_;
  std::vector<Level> levels_;  // the objects and arrays that are open, outermost first
  bool after_key_ = false;
};

}  // namespace kurvo::tools
