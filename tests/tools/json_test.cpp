// JSON as written, read back.
#include "report/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace kurvo::tools {
namespace {

TEST(JsonText, StringsAreEscapedAndValidUtf8) {
  const std::string cut = "\"\xEF\xBF\xBDt\"";  // U+FFFD
  const struct {
    std::string text, written;
  } rows[] = {
      {"", R"("")"},
      {"a\"b\\c\n", R"("a\"b\\c\n")"},
      {{'\0', '\x1f'}, R"("\u0000\u001f")"},
      {"\xC3\xA9 \xE2\x82\xAC \xF0\x9D\x84\x9E", "\"\xC3\xA9 \xE2\x82\xAC \xF0\x9D\x84\x9E\""},
      {"\xE9t", cut},
      {"\xE2\x82t", cut},
  };
  for (const auto& row : rows) EXPECT_EQ(JsonText(row.text), row.written);
}

TEST(JsonText, NumbersReadBackFromTheFewestDigits) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  // clang-format off
  const std::pair<double, const char*> rows[] = {
      {0, "0"}, {-0.0, "0"}, {-1.5, "-1.5"}, {100000, "100000"}, {5e-324, "5e-324"}, {1e23, "1e+23"},
      {2. / 3, "0.6666666666666666"}, {.1 + .2, "0.30000000000000004"}, {kInfinity, "null"},
      {1.7976931348623157e308, "1.7976931348623157e+308"}, {kInfinity - kInfinity, "null"}};
  // clang-format on
  for (const auto& [value, written] : rows) {
    EXPECT_EQ(JsonText(value), written);
    if (std::isfinite(value)) {
      EXPECT_EQ(Json::parse(written).get<double>(), value);
    }
  }
}

}  // namespace
}  // namespace kurvo::tools
