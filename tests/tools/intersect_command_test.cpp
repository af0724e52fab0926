// kurvo intersect as its users run it.
#include <gtest/gtest.h>

#include <algorithm>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "json_reader.h"
#include "process.h"
#include "raster.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

constexpr const char* kFirst =
    "<svg><path id='bent' d='M0 0H10V5'/><circle id='hole' cx='20' cy='0' r='5'/></svg>";
constexpr const char* kSecond =
    "<svg><path d='M5 -5V5M4 0H-2'/><line x1='20' x2='20' y2='9'/></svg>";

class IntersectTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
  const std::string first_ = directory_.Write("first.svg", kFirst);
  const std::string second_ = directory_.Write("second.svg", kSecond);
  const std::string output_ = directory_.File("out.svg");
};

TEST_F(IntersectTest, PrintsATable) {
  const ProcessResult result = Client({"intersect", first_, second_});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "          first.svg    curve  type  t        second.svg  curve  type  t             "
            "point\n"
            "crossing  path#bent        1  line  0.5      path[1].1       1  line  0.5           "
            "(5, 0)\n"
            "overlap   path#bent        1  line  0 - 0.4  path[1].2       1  line  0.666667 - 0  "
            "(0, 0) - (4, 0)\n"
            "crossing  circle#hole      1  arc   0.5      line[1]         1  line  0.555556      "
            "(20, 5)\n"
            "2 crossings, 1 overlap\n");
  EXPECT_EQ(Client({"intersect", "-q", first_, second_}).output, "");
}

TEST_F(IntersectTest, OneFileAgainstItself) {
  const std::string input =
      directory_.Write("one.svg", "<svg><path d='M0 0H10V9L2 -3'/><path d='M0 1H1'/></svg>");
  const std::string table = Client({"intersect", input}).output;
  EXPECT_NE(table.find("path[1]      1  line  0.4"), std::string::npos) << table;
  EXPECT_NE(table.find("\n1 crossing, 0 overlaps\n"), std::string::npos) << table;
  EXPECT_EQ(Client({"intersect", input, input}).output, table) << "the same file twice";
  const std::string joints = Client({"intersect", "--joints", input}).output;
  EXPECT_NE(joints.find("\n3 crossings, 0 overlaps\n"), std::string::npos) << joints;
}

TEST_F(IntersectTest, PrintsJson) {
  const ProcessResult result = Client({"intersect", "--json", first_, second_});
  EXPECT_EQ(result.exit_code, 0);
  const Json json = ReadJson(result.output);
  EXPECT_EQ(json["files"][0].String(), "first.svg");
  EXPECT_EQ(json["files"][1].String(), "second.svg");
  ASSERT_EQ(json["crossings"].Items().size(), 2u);
  const Json& crossing = json["crossings"][1];
  EXPECT_EQ(crossing["first"]["outline"].String(), "circle#hole");
  EXPECT_EQ(crossing["first"]["curve"].Number(), 1);
  EXPECT_EQ(crossing["first"]["type"].String(), "arc");
  EXPECT_DOUBLE_EQ(crossing["first"]["parameter"].Number(), 0.5);
  EXPECT_EQ(crossing["second"]["outline"].String(), "line[1]");
  EXPECT_DOUBLE_EQ(crossing["second"]["parameter"].Number(), 5. / 9) << "all digits";
  EXPECT_DOUBLE_EQ(crossing["point"][0].Number(), 20);
  EXPECT_DOUBLE_EQ(crossing["point"][1].Number(), 5);
  ASSERT_EQ(json["overlaps"].Items().size(), 1u);
  const Json& overlap = json["overlaps"][0];
  EXPECT_DOUBLE_EQ(overlap["first"]["from"].Number(), 0);
  EXPECT_DOUBLE_EQ(overlap["first"]["to"].Number(), 0.4);
  EXPECT_DOUBLE_EQ(overlap["second"]["from"].Number(), 4. / 6);
  EXPECT_DOUBLE_EQ(overlap["second"]["to"].Number(), 0);
  EXPECT_DOUBLE_EQ(overlap["points"][1][0].Number(), 4);

  // An overlap whose ends are not known, and a name that needs care.
  const std::string input =
      directory_.Write("fold \"1\".svg", "<svg><path d='M0 0H10M5 -9V0C8 0 2 0 5 0V9'/></svg>");
  const Json fold = ReadJson(Client({"intersect", "--json", input}).output);
  EXPECT_EQ(fold["files"][0].String(), "fold \"1\".svg");
  EXPECT_TRUE(fold["overlaps"][0]["first"]["from"].IsNull());
  EXPECT_TRUE(fold["overlaps"][0]["points"].Items().empty());
  const std::string table = Client({"intersect", input}).output;
  EXPECT_NE(table.find("unknown"), std::string::npos) << table;
}

// The picture has a ring at each crossing and a band at each overlap, where the curves are.
TEST_F(IntersectTest, MarksWhatItFinds) {
  const std::string odd = directory_.Write("a&b<c.svg", kFirst);
  ASSERT_EQ(Client({"intersect", odd, second_, "-q", "-o", output_, "--size", "400"}).exit_code, 0);
  pugi::xml_document picture;
  ASSERT_TRUE(picture.load_file(output_.c_str()));
  std::vector<std::string> rings, texts, bands;
  for (const auto& found : picture.select_nodes("/svg/g[@stroke='#dc2626']/circle")) {
    rings.push_back(std::string(found.node().attribute("cx").value()) + "," +
                    found.node().attribute("cy").value());
  }
  for (const auto& found : picture.select_nodes("//text"))
    texts.push_back(found.node().text().get());
  for (const auto& found : picture.select_nodes("/svg/path[@stroke-opacity]")) {
    bands.push_back(found.node().attribute("d").value());
  }
  EXPECT_EQ(rings, (std::vector<std::string>{"5,0", "20,5"}));
  EXPECT_EQ(bands, (std::vector<std::string>{"M0 0L4 0"}));
  EXPECT_EQ(texts,
            (std::vector<std::string>{"a&b<c.svg", "second.svg", "crossing (2)", "overlap (1)"}));
  if (!CanRasterise()) GTEST_SKIP() << "rsvg-convert is not installed";
  const Raster raster = Rasterise(output_, "");
  EXPECT_EQ(raster.width, 400);
  EXPECT_GT(std::count_if(raster.ink.begin(), raster.ink.end(), [](int ink) { return ink > 99; }),
            1000);
}

TEST_F(IntersectTest, WithoutCurvesThereIsNothing) {
  const std::string empty = directory_.Write("empty.svg", "<svg><text>A</text></svg>");
  const ProcessResult result = Client({"intersect", empty, "-o", output_});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "kurvo: " + empty + ": note: 1 text element has no outline\n");
  EXPECT_NE(result.output.find("\n0 crossings, 0 overlaps\n"), std::string::npos);
  EXPECT_TRUE(pugi::xml_document().load_file(output_.c_str()));
}

// Many curves take a while, which only a terminal hears of.
TEST_F(IntersectTest, LongRunsAreSilentInAPipe) {
  std::string body = "<svg><path d='";
  for (int i = 0; i < 400; ++i) {
    const std::string at = std::to_string(i);
    body += "M" + at + " 0C" + at + " 200 " + at + " 200 " + at + " 399M0 " + at + "H399";
  }
  const ProcessResult result =
      Client({"intersect", directory_.Write("grid.svg", body + "'/></svg>")});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_NE(result.output.find("\n160000 crossings, 0 overlaps\n"), std::string::npos)
      << result.output.substr(result.output.size() - 80);
}

TEST_F(IntersectTest, FaultsAreOneLineAndLeaveFilesAlone) {
  const std::string bad = directory_.Write("bad.svg", "<svg><path d='M0 0H1e999'/></svg>");
  const std::string none = directory_.File("none.svg");
  const std::string kept = directory_.Write("kept.svg", "what was there");
  const std::size_t files = directory_.FileCount();
  const struct {
    std::vector<std::string> arguments;
    int exit_code;
    std::string message;  // at the start of the line
  } rows[] = {
      {{first_, bad, "-o", kept}, 2, bad + ": path[1], offset 5 in d: number out of range: 1e999"},
      {{bad, second_, "-o", kept}, 2, bad + ": path[1], offset 5 in d: number out of range"},
      {{first_, none, "-o", kept}, 2, none + ": cannot be opened"},
      {{first_, second_, "-o", second_}, 1, second_ + ": is the input; choose another output"},
      {{first_, second_, "-o", first_}, 1, first_ + ": is the input; choose another output"},
      {{first_, second_, "-o", directory_.File("no/out.svg")},
       1,
       directory_.File("no/out.svg") + ": cannot be written"},
      {{}, 1, "first is required"},
      {{first_, second_, kept}, 1, "The following argument was not expected"},
      {{first_, "--size", "3", "-o", kept}, 1, "--size: not a number from 16 to 32768"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments = {"intersect"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const ProcessResult result = Client(arguments);
    const std::string what = testing::PrintToString(row.arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << what;
    EXPECT_EQ(result.errors.find("kurvo: " + row.message), 0u) << what << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << what << result.errors;
    EXPECT_EQ(result.output, "") << what;
  }
  EXPECT_EQ(FileContent(kept), "what was there");
  EXPECT_EQ(FileContent(first_), kFirst);
  EXPECT_EQ(directory_.FileCount(), files);
}

}  // namespace
}  // namespace kurvo::tools
