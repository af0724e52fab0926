// Reads JSON, strictly, for tests of what writes it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kurvo::tools {

struct Json {
  using Array = std::vector<Json>;
  using Object = std::map<std::string, Json>;

  std::variant<std::nullptr_t, bool, double, std::string, Array, Object> value;

  double Number() const { return std::get<double>(value); }
  const std::string& String() const { return std::get<std::string>(value); }
  const Array& Items() const { return std::get<Array>(value); }
  bool IsNull() const { return std::holds_alternative<std::nullptr_t>(value); }
  bool Has(const std::string& key) const { return std::get<Object>(value).count(key) == 1; }
  const Json& operator[](const std::string& key) const { return std::get<Object>(value).at(key); }
  const Json& operator[](std::size_t i) const { return Items().at(i); }
};

// The one value of the text. Throws std::runtime_error when it is not JSON (RFC 8259).
Json ReadJson(std::string_view text);

}  // namespace kurvo::tools
