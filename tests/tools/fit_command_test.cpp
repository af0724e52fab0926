// kurvo fit as its users run it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "json_reader.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

class FitTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
};

TEST_F(FitTest, PassesThroughThePoints) {
  const std::string input = directory_.Write("points.csv", "# a corner\n0,0\n3,0\n3,4\n");
  const std::string picture = directory_.File("curve.svg");
  const ProcessResult result = Client({"fit", input, "--order", "2", "-o", picture});
  EXPECT_EQ(result.exit_code, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "B-spline of order 2 through 3 points, length 7\n");
  const std::string svg = FileContent(picture);
  EXPECT_NE(svg.find("M0 0L3 0L3 4"), std::string::npos) << svg;
  std::size_t circles = 0;
  for (std::size_t at = 0; (at = svg.find("<circle", at)) != std::string::npos; ++at) ++circles;
  EXPECT_EQ(circles, 4u) << svg;  // the last one in the legend

  const Json json = ReadJson(Client({"fit", input, "--order", "3", "--json"}).output);
  EXPECT_EQ(json["order"].Number(), 3);
  ASSERT_EQ(json["knots"].Items().size(), 6u);
  EXPECT_EQ(json["knots"][3].Number(), 1);
  ASSERT_EQ(json["control_points"].Items().size(), 3u);
  EXPECT_EQ(json["control_points"][2][1].Number(), 4);
  EXPECT_EQ(Client({"fit", input, "--order", "3", "-q"}).output, "");
}

TEST_F(FitTest, TakesPointsAsTablesHaveThem) {
  const std::string plain =
      Client({"fit", "--json", directory_.Write("a", "0,0\n1,2\n3,1\n4,4\n")}).output;
  EXPECT_NE(plain, "");
  for (const char* text : {"0 0\n1 2\n3 1\n4 4",
                           "\xef\xbb\xbf"
                           "0,0\r\n1,2\r\n3,1\r\n4,4\r\n",
                           " 0 , 0 \n\n1\t2\n# x\n3,1\n\n4e0,.4e1\n"})
    EXPECT_EQ(Client({"fit", "--json", directory_.Write("b", text)}).output, plain) << text;
}

TEST_F(FitTest, FaultsAreOneLineAndLeaveNoFile) {
  const struct {
    const char* text;
    std::vector<std::string> options;
    int exit_code;
    const char* message;
  } rows[] = {
      {"x,y\n0,0\n1,1\n", {}, 2, "in.csv: offset 0 in line 1: expected a number, found 'x'"},
      {"0,0\n1\n2,2\n", {}, 2, "in.csv: offset 1 in line 2: expected a number, found the end"},
      {"0,0\n1,2,3\n",
       {},
       2,
       "in.csv: offset 3 in line 2: expected the end of the line, found ','"},
      {"0,0\n\n1,1e99\n", {}, 2, "in.csv: offset 2 in line 3: number out of range: 1e99"},
      {"0,0\nnan,1\n", {}, 2, "in.csv: offset 0 in line 2: expected a number, found 'n'"},
      {"0,0\n1,1\n1,1\n", {}, 2, "in.csv: line 3: the same point as the one before"},
      {"0,0\n1,1\n2,0\n", {}, 2, "in.csv: 3 points are too few for order 4"},
      {"0,0\n", {"--order", "2"}, 2, "in.csv: fewer than two points"},
      {"", {}, 2, "in.csv: fewer than two points"},
      {"0,0\n1,1\n", {"--order", "1"}, 1, nullptr},
      {"0,0\n1,1\n", {"--order", "41"}, 1, nullptr},
      {"0,0\n1,1\n", {"--order", "two"}, 1, nullptr},
      {"0,0\n1,1\n", {"--order", "2", "--size", "1"}, 1, nullptr},
  };
  for (const auto& row : rows) {
    const std::string input = directory_.Write("in.csv", row.text);
    std::vector<std::string> arguments = {"fit", input, "-o", directory_.File("out.svg")};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    const ProcessResult result = Client(arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << row.text;
    if (row.message != nullptr) {
      EXPECT_EQ(result.errors, "kurvo: " + directory_.File(row.message) + "\n");
    }
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(directory_.FileCount(), 1u) << row.text;
  }
  const std::string none = directory_.File("none.csv");
  const ProcessResult result = Client({"fit", none});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.errors, "kurvo: " + none + ": cannot be opened\n");
  const std::string input = directory_.Write("in.csv", "0,0\n1,1\n");
  EXPECT_EQ(Client({"fit", input, "--order", "2", "-o", input}).exit_code, 1);
  EXPECT_EQ(FileContent(input), "0,0\n1,1\n");
}

TEST_F(FitTest, TellsOfPointsThatNoSplinePassesThrough) {
  std::string text;
  for (int i = 0; i < 40; ++i)
    text += std::to_string(i) + "," + std::to_string(i * 7919 % 13) + "\n";
  const std::string input = directory_.Write("in.csv", text);
  const ProcessResult result = Client({"fit", input, "--order", "40"});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.errors,
            "kurvo: " + input + ": no B-spline of order 40 passes through these points\n");
}

}  // namespace
}  // namespace kurvo::tools
