// kurvo distance as its users run it.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "json_reader.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

class DistanceTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
  const std::string first_ =
      directory_.Write("a.svg", "<svg><path id='p' d='M0 0H8V6Z'/><circle cx='50' r='5'/></svg>");
  const std::string second_ = directory_.Write(
      "b.svg",
      "<svg><path id='q' d='M11 0V2 M70 -9Q60 0 70 9'/><rect x='100' width='4' height='4'/></svg>");
};

TEST_F(DistanceTest, PrintsATable) {
  const ProcessResult result = Client({"distance", first_, second_});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "a.svg      curve  type  t  point    b.svg     curve  type    t    point    distance\n"
            "path#p         1  line  1  (8, 0)   path#q.1      1  line    0    (11, 0)  3\n"
            "circle[1]      1  arc   0  (55, 0)  path#q.2      1  Bezier  0.5  (65, 0)  10\n"
            "shortest: 3, from path#p to path#q.1\n");
}

TEST_F(DistanceTest, PrintsJson) {
  const Json json = ReadJson(Client({"distance", "--json", first_, second_}).output);
  ASSERT_EQ(json["links"].Items().size(), 2u);
  const Json& link = json["links"][1];
  EXPECT_EQ(link["first"]["outline"].String(), "circle[1]");
  EXPECT_EQ(link["second"]["outline"].String(), "path#q.2");
  EXPECT_EQ(link["second"]["type"].String(), "Bezier");
  EXPECT_NEAR(link["second"]["parameter"].Number(), .5, 1e-7);
  const double length =
      std::hypot(link["first"]["point"][0].Number() - link["second"]["point"][0].Number(),
                 link["first"]["point"][1].Number() - link["second"]["point"][1].Number());
  EXPECT_NEAR(link["distance"].Number(), length, 1e-9);
  EXPECT_EQ(json["shortest"]["distance"].Number(), 3);
  EXPECT_EQ(json["files"][1].String(), "b.svg");

  const Json back = ReadJson(Client({"distance", "--json", second_, first_}).output);
  EXPECT_EQ(back["links"].Items().size(), 3u);
  EXPECT_EQ(back["shortest"]["distance"].Number(), 3);
}

TEST_F(DistanceTest, OfADrawingToItselfIsNone) {
  const Json json = ReadJson(Client({"distance", "--json", first_, first_}).output);
  for (const Json& link : json["links"].Items()) EXPECT_EQ(link["distance"].Number(), 0);
}

TEST_F(DistanceTest, DrawsTheLinks) {
  const std::string picture = directory_.File("out.svg");
  const ProcessResult result = Client({"distance", first_, second_, "-q", "-o", picture});
  EXPECT_EQ(result.exit_code, 0) << result.errors;
  EXPECT_EQ(result.output, "");
  const std::string svg = FileContent(picture);
  EXPECT_NE(svg.find("M8 0L11 0"), std::string::npos) << svg;
  EXPECT_NE(svg.find("shortest link"), std::string::npos);
}

TEST_F(DistanceTest, WithoutCurvesThereIsNoLink) {
  const std::string empty = directory_.Write("empty.svg", "<svg/>");
  for (const auto& [a, b] :
       {std::pair(empty, first_), std::pair(first_, empty), std::pair(empty, empty)}) {
    const std::string picture = directory_.File("out.svg");
    const ProcessResult result = Client({"distance", a, b, "-o", picture});
    EXPECT_EQ(result.exit_code, 0) << result.errors;
    EXPECT_NE(result.output.find("shortest: nothing\n"), std::string::npos) << result.output;
    EXPECT_TRUE(ReadJson(Client({"distance", "--json", a, b}).output)["shortest"].IsNull());
  }
}

TEST_F(DistanceTest, FaultsAreOneLine) {
  const std::string none = directory_.File("none.svg");
  const std::string broken = directory_.Write("broken.svg", "<svg><path d='M0 0L1'/></svg>");
  const std::size_t files = directory_.FileCount();
  const struct {
    std::vector<std::string> arguments;
    int exit_code;
  } rows[] = {{{first_}, 1},
              {{first_, none}, 2},
              {{none, second_}, 2},
              {{first_, broken}, 2},
              {{first_, second_, "--size", "x"}, 1},
              {{first_, second_, "-o", second_}, 1}};
  for (const auto& row : rows) {
    std::vector<std::string> arguments = {"distance", "-o", directory_.File("out.svg")};
    if (row.arguments.size() > 2 && row.arguments[2] == "-o") arguments.resize(1);
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const ProcessResult result = Client(arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(directory_.FileCount(), files);
  }
}

}  // namespace
}  // namespace kurvo::tools
