// JSON as written, read back.
#include "report/json.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "json_reader.h"

namespace kurvo::tools {
namespace {

std::string Written(std::string_view text) {
  JsonWriter json;
  json.String(text);
  return json.Take();
}

TEST(JsonWriter, StringsAreEscapedAndValidUtf8) {
  const std::string replaced = "\xEF\xBF\xBD";
  const struct {
    std::string text;
    std::string written;
  } rows[] = {
      {"", "\"\""},
      {"a\"b\\c", R"("a\"b\\c")"},
      {"tab\tline\n", R"("tab\u0009line\u000a")"},
      {std::string("\0", 1), R"("\u0000")"},
      {"\xC3\xA9 \xE2\x82\xAC \xF0\x9D\x84\x9E", "\"\xC3\xA9 \xE2\x82\xAC \xF0\x9D\x84\x9E\""},
      {"\xE9t", "\"" + replaced + "t\""},                                             // Latin-1
      {"\xE2\x82", "\"" + replaced + replaced + "\""},                                // cut short
      {"\xC0\xAF", "\"" + replaced + replaced + "\""},                                // overlong
      {"\xE0\x9F\xBF", "\"" + replaced + replaced + replaced + "\""},                 // overlong
      {"\xED\xA0\x80", "\"" + replaced + replaced + replaced + "\""},                 // surrogate
      {"\xF4\x90\x80\x80", "\"" + replaced + replaced + replaced + replaced + "\""},  // too large
  };
  for (const auto& row : rows) EXPECT_EQ(Written(row.text), row.written + "\n");
}

TEST(JsonWriter, NumbersReadBackAsTheyWere) {
  for (const double value :
       {0.0, -1.5, 0.1, 1.0 / 3, 1e-300, 1.7976931348623157e308, 123456789.0}) {
    JsonWriter json;
    json.Number(value);
    EXPECT_EQ(ReadJson(json.Take()).Number(), value);
  }
  for (const double value :
       {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    JsonWriter json;
    json.Number(value);
    EXPECT_EQ(json.Take(), "null\n");
  }
}

}  // namespace
}  // namespace kurvo::tools
