// The pieces that kurvo split writes and prints are the outlines.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "geometry/arc_length.h"
#include "json_reader.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

constexpr const char* kDrawing =
    "<svg><path id='p' d='M0 0H8V6Z'/><path id='q' d='M20 0Q25 10 30 0C40 -9 31 22 60 3'/>"
    "<circle cx='50' cy='50' r='5'/>"
    "<ellipse id='e' rx='40' ry='10' transform='rotate(30)'/></svg>";

class SplitTest : public testing::Test {
 protected:
  ProcessResult Split(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"split", input_});
    return Client(std::move(arguments));
  }
  Json Measured(const std::string& file) const {
    return ReadJson(Client({"measure", "--json", file}).output);
  }

  const TemporaryDirectory directory_;
  const std::string input_ = directory_.Write("in.svg", kDrawing);
  const std::string output_ = directory_.File("out.svg");
};

// What is written is read as pieces that follow each other along the same outlines.
TEST_F(SplitTest, PiecesAreTheOutlinesInPartsOfEqualLength) {
  const Json whole = Measured(input_);
  for (const std::size_t parts : {1u, 2u, 7u, 100u}) {
    const ProcessResult result = Split({"--parts", std::to_string(parts), "-q", "-o", output_});
    EXPECT_EQ(result.exit_code, 0) << result.errors;
    EXPECT_EQ(result.output, "");
    const Json pieces = Measured(output_);
    const auto& outlines = whole["outlines"].Items();
    ASSERT_EQ(pieces["outlines"].Items().size(), parts * outlines.size());
    for (std::size_t i = 0; i < outlines.size(); ++i) {
      const double length = outlines[i]["length"].Number();
      double x = outlines[i]["start"][0].Number(), y = outlines[i]["start"][1].Number();
      for (std::size_t k = 0; k < parts; ++k) {
        const Json& piece = pieces["outlines"][i * parts + k];
        EXPECT_NEAR(piece["length"].Number(), length / static_cast<double>(parts), 2e-3);
        EXPECT_NEAR(piece["start"][0].Number(), x, 1e-12);
        EXPECT_NEAR(piece["start"][1].Number(), y, 1e-12);
        x = piece["end"][0].Number();
        y = piece["end"][1].Number();
      }
      EXPECT_NEAR(outlines[i]["end"][0].Number(), x, 1e-12);
      EXPECT_NEAR(outlines[i]["end"][1].Number(), y, 1e-12);
    }
  }
}

TEST_F(SplitTest, CurvesKeepTheirKindAndTheirBend) {
  Split({"--at", ".3,.9", "-o", output_});
  const Json whole = Measured(input_), pieces = Measured(output_);
  std::size_t next = 0;
  for (const Json& outline : whole["outlines"].Items()) {
    for (const Json& curve : outline["curves"].Items()) {
      double turning = 0, length = 0;
      for (int k = 0; k < 3; ++k) {
        const Json& piece = pieces["outlines"][next++]["curves"];
        ASSERT_EQ(piece.Items().size(), 1u);
        EXPECT_EQ(piece[0]["type"].String(), curve["type"].String());
        turning += piece[0]["turning"].Number();
        length += piece[0]["length"].Number();
        const double greatest = curve["greatest"]["curvature"].Number();
        EXPECT_LE(piece[0]["greatest"]["curvature"].Number(), greatest + 1e-9);
      }
      EXPECT_NEAR(turning, curve["turning"].Number(), 1e-6);  // degrees
      EXPECT_NEAR(length, curve["length"].Number(), 2e-3);
    }
  }
  EXPECT_EQ(pieces["outlines"].Items().size(), next);
}

// However large the rest of the drawing is.
TEST_F(SplitTest, CirclesStayCircles) {
  const std::string sheet =
      directory_.Write("sheet.svg",
                       "<svg><circle cx='1500' cy='1500' r='50'/><circle cx='7.3' cy='2e3' r='.1'/>"
                       "<path d='M0 0H3000'/></svg>");
  for (const std::string& file : {sheet, KURVO_SAMPLES + std::string("/bracket.svg")}) {
    const Json whole = Measured(file);
    for (const std::size_t parts : {1u, 2u, 3u, 12u}) {
      Client({"split", file, "--parts", std::to_string(parts), "-q", "-o", output_});
      const Json pieces = Measured(output_);
      std::size_t next = 0;
      for (const Json& outline : whole["outlines"].Items()) {
        double length = 0;
        for (std::size_t k = 0; k < parts; ++k) {
          const Json& piece = pieces["outlines"][next++];
          length += piece["length"].Number();
          if (outline["outline"].String().find("circle") == std::string::npos) continue;
          for (const Json& arc : piece["curves"].Items()) {
            const double greatest = outline["greatest"]["curvature"].Number();
            EXPECT_NEAR(arc["greatest"]["curvature"].Number() / greatest, 1, 1e-12);
          }
        }
        const std::string name = outline["outline"].String();
        const double bound = name.find("ellipse") == std::string::npos ? 1e-9 : 1e-5;
        EXPECT_NEAR(length / outline["length"].Number(), 1, bound) << name;
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
    const std::string file =
        directory_.Write("row.svg", "<svg><path d='" + std::string(row.data) + "'/></svg>");
    const Json json = ReadJson(Client({"split", file, "--parts", row.parts, "--json"}).output);
    const Json& end = json["outlines"][0]["pieces"][0]["end"];
    EXPECT_DOUBLE_EQ(end[0].Number() + 1, row.x + 1) << row.data;
    EXPECT_DOUBLE_EQ(end[1].Number() + 1, row.y + 1) << row.data;
  }
  Library library;
  const OwnedCurve line = OwnedCurve::Line({0, 0}, {3, 4});
  const OwnedCurve arc = OwnedCurve::Arc({}, 10, true, {10, 0}, {0, 10});
  const OwnedCurve curve = OwnedCurve::Quadratic({0, 0}, {5, 5}, {10, 0});
  const OwnedCurve composite = OwnedCurve::Composite(library, {&line, &curve, &arc});
  const ArcLength length(library, composite);
  EXPECT_DOUBLE_EQ(length.ParameterAt(2), .4);
  EXPECT_DOUBLE_EQ(length.ParameterAt(length.Total() - std::numbers::pi), 2.8);
  EXPECT_NEAR(length.ParameterAt((length.Total() + 5 - 5 * std::numbers::pi) / 2), 1.5, 1e-4);
}

}  // namespace
}  // namespace kurvo::tools
