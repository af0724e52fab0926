// kurvo locate as its users run it.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "json_reader.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

// A square with a hole that runs the other way, the same by fill rule with one that does not, one
// whose hole is filled, and an open angle.
constexpr const char* kDrawing =
    "<svg><path id='a' d='M0 0H9V9H0Z M3 3V6H6V3Z'/>"
    "<path id='b' fill-rule='evenodd' d='M20 0H29V9H20Z M23 3H26V6H23Z'/>"
    "<path id='c' d='M40 0H49V9H40Z M43 3H46V6H43Z'/><path id='d' d='M60 0H69V9'/></svg>";

class LocateTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
  const std::string input_ = directory_.Write("in.svg", kDrawing);
};

TEST_F(LocateTest, PrintsATable) {
  const ProcessResult result =
      Client({"locate", input_, "1,1", "4,4", "24 4", "44,4", "62,1", "62,0", "3,4", "-1,-2.5"});
  EXPECT_EQ(result.exit_code, 0) << result.errors;
  EXPECT_EQ(result.output,
            "point       place    outlines\n"
            "(1, 1)      inside   in path#a.1\n"
            "(4, 4)      outside  in path#a.1, in path#a.2\n"
            "(24, 4)     outside  in path#b.1, in path#b.2\n"
            "(44, 4)     inside   in path#c.1, in path#c.2\n"
            "(62, 1)     outside\n"
            "(62, 0)     on       on path#d\n"
            "(3, 4)      on       in path#a.1, on path#a.2\n"
            "(-1, -2.5)  outside\n");
}

TEST_F(LocateTest, CountsAGrid) {
  const std::string disc = directory_.Write("disc.svg", "<svg><circle r='10'/></svg>");
  const std::string picture = directory_.File("out.svg");
  const ProcessResult result = Client({"locate", disc, "--grid", "101", "-o", picture});
  EXPECT_EQ(result.exit_code, 0) << result.errors;
  // Lattice points with i^2 + j^2 below and equal to 50^2.
  EXPECT_EQ(result.output, "grid of 10201 points: 7825 inside, 20 on, 2356 outside\n");
  EXPECT_TRUE(std::filesystem::exists(picture));
}

TEST_F(LocateTest, PrintsJson) {
  const Json json = ReadJson(Client({"locate", input_, "4,4", "--grid", "3", "--json"}).output);
  ASSERT_EQ(json["points"].Items().size(), 1u);
  EXPECT_EQ(json["points"][0]["place"].String(), "outside");
  ASSERT_EQ(json["points"][0]["outlines"].Items().size(), 2u);
  EXPECT_EQ(json["points"][0]["outlines"][1]["outline"].String(), "path#a.2");
  EXPECT_EQ(json["grid"].Items().size(), 3u);
  const Json middle = ReadJson(Client({"locate", input_, "--grid", "1", "--json"}).output);
  ASSERT_EQ(middle["grid"].Items().size(), 1u);
  EXPECT_EQ(middle["grid"][0]["point"][0].Number(), 34.5);
  EXPECT_EQ(middle["grid"][0]["point"][1].Number(), 4.5);
}

TEST_F(LocateTest, WrongUseIsOneLine) {
  const struct {
    std::vector<std::string> arguments;
    int exit_code;
  } rows[] = {
      {{"locate", input_}, 1},
      {{"locate", input_, "1;2"}, 1},
      {{"locate", input_, "--grid", "0"}, 1},
      {{"locate", input_, "--grid", "1e9"}, 1},
      {{"locate", directory_.File("none.svg"), "1,2"}, 2},
      {{"locate", directory_.Write("cut.svg", "<svg><path d='M0 0"), "1,2"}, 2},
      {{"locate", input_, "1,2", "-o", input_}, 1},
  };
  for (const auto& row : rows) {
    const ProcessResult result = Client(row.arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << row.arguments.back();
    EXPECT_EQ(result.output, "") << row.arguments.back();
    EXPECT_EQ(result.errors.find('\n') + 1, result.errors.size()) << result.errors;
  }
}

}  // namespace
}  // namespace kurvo::tools
