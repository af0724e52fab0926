// kurvo offset as its users run it, and what it does with outlines.
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "describe.h"
#include "offset.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

constexpr const char* kDrawing =
    "<svg><rect width='8' height='6'/><circle cx='50' r='5'/><path id='p' d='M20 0Q25 10 30 0'/>"
    "<path d='M0 9H4V9'/></svg>";

class OffsetTest : public testing::Test {
 protected:
  const TemporaryDirectory directory_;
  const std::string input_ = directory_.Write("in.svg", kDrawing);
};

// Left of travel is outside, as y points down; pieces by hand.
TEST_F(OffsetTest, MovesEveryCurve) {
  Library library;
  const Drawing drawing = ReadSvg(library, input_);
  Progress progress(-1, "offset", 1);
  const auto pieces = [&](double distance, double tolerance) {
    std::vector<std::string> texts;
    for (const OutlineOffset& offset :
         OffsetOutlines(library, drawing, {distance}, tolerance, progress)) {
      texts.emplace_back();
      for (const OwnedCurve& piece : offset.pieces) texts.back() += Describe(piece) + "; ";
    }
    return texts;
  };
  EXPECT_EQ(pieces(2, 100),
            (std::vector<std::string>{
                "L 0,-2 8,-2; L 10,0 10,6; L 8,8 0,8; L -2,6 -2,0; ",
                "A+ 50,0 r7 57,0 43,0; A+ 50,0 r7 43,0 57,0; ",
                "B 21.7889,-0.894427 24.5694,4.66667 25.4306,4.66667 28.2111,-0.894427; ",
                "L 0,7 4,7; "}));
  EXPECT_EQ(pieces(-5, 1)[1], "");  // the radius would be 0
  EXPECT_EQ(pieces(-1, 1)[0], "L 0,1 8,1; L 7,0 7,6; L 8,5 0,5; L 1,6 1,0; ");
  EXPECT_GT(pieces(1, 1e-4)[2].size(), pieces(1, 1e-2)[2].size());
}

TEST_F(OffsetTest, PrintsATable) {
  const ProcessResult result = Client({"offset", input_, "-d", "2", "-d", "-5"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "");
  const std::string head =
      "outline            curves  distance  pieces  box\n"
      "rect[1]    closed       4         2       4  (-2, -2) - (10, 8)\n"
      "rect[1]    closed       4        -5       4  (0, 0) - (8, 6)\n"
      "circle[1]  closed       2         2       2  (43, -7) - (57, 7)\n"
      "circle[1]  closed       2        -5       0\n"
      "path#p     open         1         2 ";
  EXPECT_EQ(result.output.substr(0, head.size()), head);
  EXPECT_EQ(Client({"offset", "-q", input_, "-d", "2"}).output, "");
}

TEST_F(OffsetTest, DrawsSourceAndOffset) {
  const std::string picture = directory_.File("out.svg");
  const ProcessResult result =
      Client({"offset", "-q", input_, "-d", "-2", "--tolerance", "0.5", "-o", picture});
  ASSERT_EQ(result.exit_code, 0) << result.errors;
  EXPECT_EQ(directory_.FileCount(), 2u) << "a temporary file was left";
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(picture.c_str()));
  const std::string content = FileContent(picture);
  EXPECT_NE(content.find("in.svg"), std::string::npos);
  EXPECT_NE(content.find("offset (8 pieces)"), std::string::npos) << content;
  EXPECT_NE(content.find("M0 0L8 0"), std::string::npos) << "the source is missing";
  EXPECT_NE(content.find("M0 2L8 2"), std::string::npos) << "the offset is missing";
}

TEST_F(OffsetTest, DrawsEverySample) {
  for (const char* name : {"bracket", "letters", "bodice"}) {
    const std::string picture = directory_.File("out.svg");
    const ProcessResult result = Client({"offset", std::string(KURVO_SAMPLES) + "/" + name + ".svg",
                                         "-d", "3", "-d", "-3", "-o", picture});
    ASSERT_EQ(result.exit_code, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    const std::string content = FileContent(picture);
    EXPECT_EQ(content.find("nan"), std::string::npos) << name;
    EXPECT_EQ(content.find("inf"), std::string::npos) << name;
  }
}

TEST_F(OffsetTest, FaultsAreOneLineAndLeaveNoOutput) {
  const std::string cut = directory_.Write("cut.svg", "<svg><path d='M0 0H1'");
  const std::string bad = directory_.Write("bad.svg", "<svg><path d='M0 0L1 x'/></svg>");
  const std::string output = directory_.Write("out.svg", "what was there");
  const struct {
    std::vector<std::string> arguments;
    int exit_code;
    std::string message;
  } rows[] = {
      {{cut, "-d", "1", "-o", output},
       2,
       cut + ": offset 20: not well-formed XML: Error parsing start element tag"},
      {{bad, "-d", "1", "-o", output},
       2,
       bad + ": path[1], offset 7 in d: expected a number, found 'x'"},
      {{directory_.File("none.svg"), "-d", "1", "-o", output},
       2,
       directory_.File("none.svg") + ": cannot be opened"},
      {{input_, "-d", "1", "-o", input_}, 1, input_ + ": is the input; choose another output"},
      {{input_, "-o", output}, 1, "--distance is required (try --help)"},
      {{input_, "-d", "nan", "-o", output},
       1,
       "--distance: not a number from -1e+06 to 1e+06 (try --help)"},
      {{input_, "-d", "1", "--tolerance", "0", "-o", output},
       1,
       "--tolerance: not a number from 1e-06 to 1e+06 (try --help)"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments = {"offset"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const ProcessResult result = Client(arguments);
    EXPECT_EQ(result.exit_code, row.exit_code) << result.errors;
    EXPECT_EQ(result.errors, "kurvo: " + row.message + "\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(FileContent(output), "what was there");
  }
  EXPECT_EQ(directory_.FileCount(), 4u) << "an output was left";
}

}  // namespace
}  // namespace kurvo::tools
