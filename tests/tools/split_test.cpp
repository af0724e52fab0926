// The pieces that kurvo split writes and prints are the outlines.
#include <gtest/gtest.h>

#include <cmath>

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

// What is written is read as pieces that follow each other along the same outlines.
TEST_F(SplitTest, PiecesAreTheOutlinesInPartsOfEqualLength) {
  const Json outlines = Measured(input_);
  for (const std::size_t parts : {1u, 2u, 7u, 100u}) {
    const Json pieces = MeasuredPieces(input_, "--parts " + std::to_string(parts));
    ASSERT_EQ(pieces.size(), parts * outlines.size());
    for (std::size_t i = 0; i < outlines.size(); ++i) {
      const double length = Number(outlines[i], "length") / static_cast<double>(parts);
      Json at = outlines[i]["start"];
      for (std::size_t k = 0; k < parts; ++k) {
        const Json& piece = pieces[i * parts + k];
        EXPECT_NEAR(Number(piece, "length"), length, 2e-3);
        ExpectSame(piece["start"], at);
        at = piece["end"];
      }
      ExpectSame(outlines[i]["end"], at);
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
      EXPECT_NEAR(length, Number(curve, "length"), 2e-3);
    }
  }
  EXPECT_EQ(pieces.size(), next);
}

// However large the rest of the drawing is.
TEST_F(SplitTest, CirclesStayCircles) {
  const std::string sheet =
      directory_.Write("sheet.svg",
                       "<svg><circle cx='1500' cy='1500' r='50'/><circle cx='7.3' cy='2e3' r='.1'/>"
                       "<path d='M0 0H3000'/></svg>");
  for (const std::string& file : {sheet, KURVO_SAMPLES + std::string("/bracket.svg")}) {
    const Json outlines = Measured(file);
    for (const std::size_t parts : {1u, 2u, 3u, 12u}) {
      const Json pieces = MeasuredPieces(file, "--parts " + std::to_string(parts));
      for (std::size_t i = 0; i < outlines.size(); ++i) {
        const std::string name = outlines[i]["outline"];
        double length = 0;
        for (std::size_t k = 0; k < parts; ++k) {
          const Json& piece = pieces[i * parts + k];
          length += Number(piece, "length");
          if (name.find("circle") == std::string::npos) continue;
          const double greatest = Number(outlines[i]["greatest"], "curvature");
          for (const Json& arc : piece["curves"])
            EXPECT_NEAR(Number(arc["greatest"], "curvature") / greatest, 1, 1e-12);
        }
        const double bound = name.find("ellipse") == std::string::npos ? 1e-9 : 1e-5;
        EXPECT_NEAR(length / Number(outlines[i], "length"), 1, bound) << name;
      }
    }
  }
}

// Where a place falls on a line or an arc there is nothing to search for.
TEST_F(SplitTest, CutsLinesAndArcsExactly) {
  const struct {
    const char* data;
    const char* parts;
    double x, y;  // where the first piece ends
  } rows[] = {
      {"M0 0H104.8", "2", 52.4, 0},
      {"M0 0H104.8", "8", 13.1, 0},
      {"M0 0H10V30", "4", 10, 0},
      {"M0 0H10V30", "2", 10, 10},
      {"M5 0A5 5 0 0 1 -5 0", "2", 0, 5},
      {"M3 0H5A5 5 0 0 1 0 5V3", "2", 5 * std::sqrt(.5), 5 * std::sqrt(.5)},
  };
  for (const auto& row : rows) {
    const std::string file = directory_.Write("row.svg", "<svg>" + Path(row.data) + "</svg>");
    const Json json = Json::parse(Client("split --json " + file + " --parts " + row.parts));
    const Json& end = json["outlines"][0]["pieces"][0]["end"];
    EXPECT_DOUBLE_EQ(end[0].get<double>() + 1, row.x + 1) << row.data;
    EXPECT_DOUBLE_EQ(end[1].get<double>() + 1, row.y + 1) << row.data;
  }
}

}  // namespace
}  // namespace kurvo::tools
