// JSON (RFC 8259) as reports print it.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "geometry/plane.h"

namespace kurvo::tools {

using Json = nlohmann::ordered_json;

// [x, y], and [least x, least y, greatest x, greatest y].
inline void to_json(Json& json, const Point& p) { json = Json::array_t{p.x, p.y}; }
inline void to_json(Json& json, const Bounds& box) {
  json = Json::array_t{box.min_x, box.min_y, box.max_x, box.max_y};
}

// The value on one line. Read back, numbers are the same doubles, written with the fewest digits;
// what is not finite becomes null, and bytes that are not UTF-8 become U+FFFD.
std::string JsonText(const Json& value);

// An object with a line for each member, and in its lists one for each value. Written as it comes,
// since lists may be long.
class JsonLines {
 public:
  // `depth` is how many objects and lists it stands in.
  explicit JsonLines(std::size_t depth = 0) : depth_(depth) {}

  void Add(std::string_view key, const Json& value) { Begin(key) += JsonText(value); }
  // make(item, i) is the value for item number i: a Json, or the text of a JsonLines at depth + 2.
  template <class Items, class Make>
  void AddList(std::string_view key, const Items& items, const Make& make) {
    Begin(key) += '[';
    std::size_t i = 0;
    for (const auto& item : items) {
      if (i > 0) text_ += ',';
      NewLine(depth_ + 2) += Text(make(item, i++));
    }
    if (i > 0) NewLine(depth_ + 1);
    text_ += ']';
  }

  std::string Take();

 private:
  static std::string Text(const Json& value) { return JsonText(value); }
  static std::string Text(std::string text) { return text; }
  std::string& Begin(std::string_view key);
  std::string& NewLine(std::size_t depth);

  std::size_t depth_;
  std::string text_;
};

}  // namespace kurvo::tools
