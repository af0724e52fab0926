// The pieces that kurvo split writes and prints are the outlines; JSON reads back.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "report/json.h"
#include "support.h"

namespace kurvo::tools {
namespace {

constexpr const char* kDrawing =
    "<svg><path id='p' d='M0 0H8V6Z'/><path id='q' d='M20 0Q25 10 30 0C40 -9 31 22 60 3'/>"
    "<circle cx='50' cy='50' r='5'/>"
    "<ellipse id='e' rx='40' ry='10' transform='rotate(30)'/></svg>";

class SplitTest : public testing::Test {
 protected:
  // The outlines of a file as measured.
  static Json Measured(const std::string& file) {
    return Json::parse(Client("measure --json " + file))["outlines"];
  }
  Json MeasuredPieces(const std::string& file, const std::string& how) const {
    EXPECT_EQ(Client("split " + file + " " + how + " -q -o " + output_), "");
    return Measured(output_);
  }

  const TemporaryDirectory directory_;
  const std::string input_ = directory_.Write("in.svg", kDrawing);
  const std::string output_ = directory_.File("out.svg");
};

void ExpectSame(const Json& p, const Json& q) {
  EXPECT_NEAR(p[0].get<double>(), q[0].get<double>(), 1e-12);
  EXPECT_NEAR(p[1].get<double>(), q[1].get<double>(), 1e-12);
}

double Number(const Json& record, const char* key) { return record[key].get<double>(); }

// What is written is read as pieces that follow each other along the same outlines; circles stay
// circles, however large the rest of the drawing is.
TEST_F(SplitTest, PiecesAreTheOutlinesInPartsOfEqualLength) {
  const std::string sheet =
      directory_.Write("sheet.svg",
                       "<svg><circle cx='1500' cy='1500' r='50'/><circle cx='7.3' cy='2e3' r='.1'/>"
                       "<path d='M0 0H3000'/></svg>");
  for (const std::string& file : {input_, sheet, KURVO_SAMPLES + std::string("/bracket.svg")}) {
    const Json outlines = Measured(file);
    for (const std::size_t parts : {1u, 2u, 7u, 100u}) {
      const Json pieces = MeasuredPieces(file, "--parts " + std::to_string(parts));
      ASSERT_EQ(pieces.size(), parts * outlines.size());
      for (std::size_t i = 0; i < outlines.size(); ++i) {
        const bool circle = outlines[i]["outline"].get<std::string>().find("circle") == 0;
        const double length = Number(outlines[i], "length") / static_cast<double>(parts);
        Json at = outlines[i]["start"];
        for (std::size_t k = 0; k < parts; ++k) {
          const Json& piece = pieces[i * parts + k];
          EXPECT_NEAR(Number(piece, "length"), length, 1e-11 * Number(outlines[i], "length"));
          ExpectSame(piece["start"], at);
          at = piece["end"];
          const double greatest = Number(outlines[i]["greatest"], "curvature");
          for (const Json& arc : circle ? piece["curves"] : Json::array())
            EXPECT_NEAR(Number(arc["greatest"], "curvature") / greatest, 1, 1e-12);
        }
        ExpectSame(outlines[i]["end"], at);
      }
    }
  }
}

TEST_F(SplitTest, CurvesKeepTheirKindAndTheirBend) {
  const Json pieces = MeasuredPieces(input_, "--at .3,.9");
  std::size_t next = 0;
  for (const Json& outline : Measured(input_)) {
    for (const Json& curve : outline["curves"]) {
      double turning = 0, length = 0;
      for (int k = 0; k < 3; ++k) {
        const Json& parts = pieces[next++]["curves"];
        ASSERT_EQ(parts.size(), 1u);
        EXPECT_EQ(parts[0]["type"], curve["type"]);
        turning += Number(parts[0], "turning");
        length += Number(parts[0], "length");
        EXPECT_LE(Number(parts[0]["greatest"], "curvature"),
                  Number(curve["greatest"], "curvature") + 1e-9);
      }
      EXPECT_NEAR(turning, Number(curve, "turning"), 1e-6);  // degrees
      EXPECT_NEAR(length, Number(curve, "length"), 1e-11 * length);
    }
  }
  EXPECT_EQ(pieces.size(), next);
}

// ---- JSON as written, read back

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
