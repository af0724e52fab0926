// kurvo measure as its users run it.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "json_reader.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

constexpr const char* kDrawing =
    "<svg><path id='p' d='M0 0H8V6Z M20 0Q25 10 30 0'/><circle cx='50' r='5'/></svg>";

class MeasureTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
  const std::string input_ = directory_.Write("in.svg", kDrawing);
};

TEST_F(MeasureTest, PrintsATable) {
  const ProcessResult result = Client({"measure", input_});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "outline    curve  type    degree  start    end      box                  length  "
            "curvature           turning\n"
            "path#p.1          closed          (0, 0)   (0, 0)   (0, 0) - (8, 6)          24  0    "
            "                   360\n"
            "               1  line         1  (0, 0)   (8, 0)   (0, 0) - (8, 0)           8  0    "
            "                     0\n"
            "               2  line         1  (8, 0)   (8, 6)   (8, 0) - (8, 6)           6  0    "
            "                     0\n"
            "               3  line         1  (8, 6)   (0, 0)   (0, 0) - (8, 6)          10  0    "
            "                     0\n"
            "path#p.2          open            (20, 0)  (30, 0)  (20, 0) - (30, 10)  14.7895  -0.4 "
            ".. -0.0357771  -126.87\n"
            "               1  Bezier       2  (20, 0)  (30, 0)  (20, 0) - (30, 10)  14.7895  -0.4 "
            ".. -0.0357771  -126.87\n"
            "circle[1]         closed          (55, 0)  (55, 0)  (45, -5) - (55, 5)  31.4159  0.2  "
            "                   360\n"
            "               1  arc          2  (55, 0)  (45, 0)  (45, 0) - (55, 5)    15.708  0.2  "
            "                   180\n"
            "               2  arc          2  (45, 0)  (55, 0)  (45, -5) - (55, 0)   15.708  0.2  "
            "                   180\n");
}

// Each point is negative or ends in something that could be taken for an option.
TEST_F(MeasureTest, FindsTheNearestPoint) {
  const struct {
    const char* near;
    const char* last_line;
  } rows[] = {
      {"4,-3", "nearest to (4, -3): path#p.1, curve 1 (line) at t = 0.5, (4, 0), distance 3\n"},
      {"-3,-4", "nearest to (-3, -4): path#p.1, curve 1 (line) at t = 0, (0, 0), distance 5\n"},
      {" 25 , 9 ",
       "nearest to (25, 9): path#p.2, curve 1 (Bezier) at t = 0.5, (25, 5), distance 4\n"},
      {"50 -8", "nearest to (50, -8): circle[1], curve 2 (arc) at t = 0.5, (50, -5), distance 3\n"},
      {"1e1,3", "nearest to (10, 3): path#p.1, curve 2 (line) at t = 0.5, (8, 3), distance 2\n"},
  };
  for (const auto& row : rows) {
    const ProcessResult result = Client({"measure", "--near", row.near, input_});
    EXPECT_EQ(result.exit_code, 0) << result.errors;
    const std::size_t start = result.output.rfind("nearest to");
    ASSERT_NE(start, std::string::npos) << result.output;
    EXPECT_EQ(result.output.substr(start), row.last_line);
  }
}

TEST_F(MeasureTest, PrintsJson) {
  const Json json = ReadJson(Client({"measure", "--json", "--near", "25,9", input_}).output);
  EXPECT_EQ(json["near"][1].Number(), 9);
  EXPECT_EQ(json["nearest"]["outline"].String(), "path#p.2");
  EXPECT_EQ(json["nearest"]["curve"].Number(), 1);
  EXPECT_DOUBLE_EQ(json["nearest"]["distance"].Number(), 4);
  ASSERT_EQ(json["outlines"].Items().size(), 3u);
  const Json& triangle = json["outlines"][0];
  EXPECT_EQ(triangle["outline"].String(), "path#p.1");
  EXPECT_TRUE(std::get<bool>(triangle["closed"].value));
  EXPECT_EQ(triangle["box"][2].Number(), 8);
  EXPECT_EQ(triangle["nearest"]["curve"].Number(), 2);
  EXPECT_DOUBLE_EQ(triangle["nearest"]["distance"].Number(), std::hypot(17, 3));
  ASSERT_EQ(triangle["curves"].Items().size(), 3u);
  const Json& side = triangle["curves"][2];
  EXPECT_EQ(side["type"].String(), "line");
  EXPECT_EQ(side["degree"].Number(), 1);
  EXPECT_EQ(side["start"][0].Number(), 8);
  EXPECT_EQ(side["nearest"]["parameter"].Number(), 0);

  EXPECT_DOUBLE_EQ(triangle["length"].Number(), 24);
  EXPECT_NEAR(triangle["turning"].Number(), 360, 1e-9);
  const Json& parabola = json["outlines"][1]["curves"][0];
  EXPECT_NEAR(parabola["turning"].Number(), -2 * std::atan(2) * 180 / M_PI, 1e-9);
  EXPECT_NEAR(parabola["least"]["curvature"].Number(), -.4, 1e-9);
  EXPECT_NEAR(parabola["least"]["parameter"].Number(), .5, 1e-6);
  EXPECT_EQ(json["outlines"][2]["greatest"]["curve"].Number(), 1);
  EXPECT_DOUBLE_EQ(json["outlines"][2]["greatest"]["curvature"].Number(), .2);

  const Json plain = ReadJson(Client({"measure", "--json", input_}).output);
  EXPECT_FALSE(plain.Has("near"));
  EXPECT_FALSE(plain["outlines"][0]["curves"][0].Has("nearest"));
}

TEST_F(MeasureTest, WithoutCurvesNothingIsNear) {
  const std::string empty = directory_.Write("empty.svg", "<svg/>");
  const ProcessResult result = Client({"measure", "--near", "1,2", empty});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_NE(result.output.find("nearest to (1, 2): nothing\n"), std::string::npos) << result.output;
  EXPECT_TRUE(
      ReadJson(Client({"measure", "--json", "--near", "1,2", empty}).output)["nearest"].IsNull());
}

TEST_F(MeasureTest, FaultsAreOneLine) {
  const struct {
    std::vector<std::string> arguments;
    int exit_code;
    std::string message;
  } rows[] = {
      {{input_, "--near", "1"}, 1, "--near: expected a point x,y, found '1' (try --help)\n"},
      {{input_, "--near", "1,2,3"},
       1,
       "--near: expected a point x,y, found '1,2,3' (try --help)\n"},
      {{input_, "--near", "nan,1"},
       1,
       "--near: expected a point x,y, found 'nan,1' (try --help)\n"},
      {{input_, "--near", "1,2e99"},
       1,
       "--near: expected a point x,y, found '1,2e99' (try --help)\n"},
      {{input_, "--near", ""}, 1, "--near: expected a point x,y, found '' (try --help)\n"},
      {{input_, "--near"}, 1, "--near: 1 required X,Y missing (try --help)\n"},
      {{}, 1, "input is required (try --help)\n"},
      {{directory_.File("none.svg")}, 2, directory_.File("none.svg") + ": cannot be opened\n"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments = {"measure"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const ProcessResult result = Client(arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << result.errors;
    EXPECT_EQ(result.errors, "kurvo: " + row.message);
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
}  // namespace kurvo::tools
