// The grammar of path data: what each text means in absolute coordinates, and where bad text is
// bad.
#include "path_data.h"

#include <gtest/gtest.h>

#include <string>

#include "input_error.h"
#include "number_text.h"

namespace kurvo::tools {
namespace {

std::string Pair(Point p) { return ShortNumber(p.x) + "," + ShortNumber(p.y); }

std::string Text(const PathStep& step) {
  switch (step.kind) {
    case PathStep::Kind::kMove:
      return "M " + Pair(step.end);
    case PathStep::Kind::kLine:
      return "L " + Pair(step.end);
    case PathStep::Kind::kQuadratic:
      return "Q " + Pair(step.control1) + " " + Pair(step.end);
    case PathStep::Kind::kCubic:
      return "C " + Pair(step.control1) + " " + Pair(step.control2) + " " + Pair(step.end);
    case PathStep::Kind::kArc:
      return "A " + Pair({step.arc.rx, step.arc.ry}) + " " + ShortNumber(step.arc.rotation) +
             (step.arc.large_arc ? " large" : " small") +
             (step.arc.positive_sweep ? " + " : " - ") + Pair(step.end);
    case PathStep::Kind::kClose:
      return "Z " + Pair(step.end);
  }
  return "?";
}

std::string Steps(const std::string& data) {
  std::string text;
  for (const PathStep& step : ParsePathData("d", data)) {
    text += (text.empty() ? "" : " ") + Text(step);
  }
  return text;
}

TEST(ParsePathData, WritesEveryCommandInAbsoluteCoordinates) {
  const struct {
    const char* data;
    const char* steps;
  } rows[] = {
      {"", ""},
      {" \t\r\n", ""},
      {"M1 2", "M 1,2"},
      {"m1,2", "M 1,2"},
      {"M1 2 3 4 5 6", "M 1,2 L 3,4 L 5,6"},
      {"m1 2 3 4 5 6", "M 1,2 L 4,6 L 9,12"},
      {"M1 2m3 4", "M 1,2 M 4,6"},
      {"M1 2L3 4 5 6l7 8 -9 10", "M 1,2 L 3,4 L 5,6 L 12,14 L 3,24"},
      {"M1 2H5 6h7v1-1V9", "M 1,2 L 5,2 L 6,2 L 13,2 L 13,3 L 13,2 L 13,9"},
      // A close moves the pen to the start of the subpath, where the next one begins.
      {"M1 2h3v4zh5zl1 1", "M 1,2 L 4,2 L 4,6 Z 1,2 L 6,2 Z 1,2 L 2,3"},
      {"M1 1ZZ", "M 1,1 Z 1,1 Z 1,1"},
      {"M10 20zm3 4l1 1z", "M 10,20 Z 10,20 M 13,24 L 14,25 Z 13,24"},
      {"M1 1C2 3 4 5 6 7c1 1 2 2 3 3", "M 1,1 C 2,3 4,5 6,7 C 7,8 8,9 9,10"},
      {"M1 1c1 0 2 1 3 3 1 0 2 1 3 3", "M 1,1 C 2,1 3,2 4,4 C 5,4 6,5 7,7"},
      {"M0 0C1 2 3 4 5 5S9 9 10 8s1 1 2 0", "M 0,0 C 1,2 3,4 5,5 C 7,6 9,9 10,8 C 11,7 11,9 12,8"},
      // S after anything but C and S starts with the current point.
      {"M1 1S2 3 4 5", "M 1,1 C 1,1 2,3 4,5"},
      {"M0 0Q1 2 3 3S5 5 6 6", "M 0,0 Q 1,2 3,3 C 3,3 5,5 6,6"},
      {"M0 0Q1 2 4 4T6 6 8 0t1 1", "M 0,0 Q 1,2 4,4 Q 7,6 6,6 Q 5,6 8,0 Q 11,-6 9,1"},
      {"M0 0q1 2 4 4 1 2 4 4", "M 0,0 Q 1,2 4,4 Q 5,6 8,8"},
      {"M1 1T3 3T5 1", "M 1,1 Q 1,1 3,3 Q 5,5 5,1"},
      {"M0 0C1 2 3 4 5 5T6 6", "M 0,0 C 1,2 3,4 5,5 Q 5,5 6,6"},
      {"M1 1A2 3 45 0 1 6 7", "M 1,1 A 2,3 45 small + 6,7"},
      {"M1 1a2 3-45 1 0 6 7 1 1 0 0 1 .5-.5",
       "M 1,1 A 2,3 -45 large - 7,8 A 1,1 0 small + 7.5,7.5"},
  };
  for (const auto& row : rows) EXPECT_EQ(Steps(row.data), row.steps) << '"' << row.data << '"';
}

TEST(ParsePathData, SplitsNumbersThatRunTogether) {
  const struct {
    const char* data;
    const char* steps;
  } rows[] = {
      {"M.5.5", "M 0.5,0.5"},
      {"M.5.5.25.125", "M 0.5,0.5 L 0.25,0.125"},
      {"M1e-3-2", "M 0.001,-2"},
      {"M1E3+2e+1", "M 1000,20"},
      {"M-1-1-2-3", "M -1,-1 L -2,-3"},
      {"M1.2.3e1.4.5", "M 1.2,3 L 0.4,0.5"},
      {"M5.-6.", "M 5,-6"},
      {"M+1+2", "M 1,2"},
      {"M00 01", "M 0,1"},
      {"M 1,2,3,4", "M 1,2 L 3,4"},
      {"M1 ,2\n,\t3 , 4 ", "M 1,2 L 3,4"},
      {"M1e-999 0", "M 0,0"},
      {"M0 0a25,25 0 1125,25", "M 0,0 A 25,25 0 large + 25,25"},
      {"M0 0a25 25 0 01-25.5.5", "M 0,0 A 25,25 0 small + -25.5,0.5"},
      {"M0 0a1 1 0 0,0 2 2", "M 0,0 A 1,1 0 small - 2,2"},
      {"M0 0a1 1 0 10.5.5 1 1 0 013 4", "M 0,0 A 1,1 0 large - 0.5,0.5 A 1,1 0 small + 3.5,4.5"},
      {"M0 0a.5.5.5 11.5.5", "M 0,0 A 0.5,0.5 0.5 large + 0.5,0.5"},
  };
  for (const auto& row : rows) EXPECT_EQ(Steps(row.data), row.steps) << '"' << row.data << '"';
}

TEST(ParsePathData, NamesTheOffsetOfEveryFault) {
  const struct {
    const char* data;
    const char* message;
  } rows[] = {
      {"L1 1", "offset 0 in d: path data must begin with M or m, found 'L'"},
      {"  10 10", "offset 2 in d: path data must begin with M or m, found '1'"},
      {"M", "offset 1 in d: expected a number, found the end"},
      {"M1", "offset 2 in d: expected a number, found the end"},
      {"M1 2 3", "offset 6 in d: expected a number, found the end"},
      {"M1 2,", "offset 5 in d: expected a number, found the end"},
      {"M1,,2", "offset 3 in d: expected a number, found ','"},
      {"M,1 2", "offset 1 in d: expected a number, found ','"},
      {"M1 2,L3 4", "offset 5 in d: expected a number, found 'L'"},
      {"M1 2LL3 4", "offset 5 in d: expected a number, found 'L'"},
      {"M1 2 x", "offset 5 in d: expected a path command, found 'x'"},
      {"M1 2Z3 4", "offset 5 in d: expected a path command, found '3'"},
      {"M1 2L3 4e", "offset 8 in d: expected a path command, found 'e'"},
      {"M1 2H", "offset 5 in d: expected a number, found the end"},
      {"M1 2C1 2 3 4 5", "offset 14 in d: expected a number, found the end"},
      {"M1 2L- 3", "offset 5 in d: expected a number, found '-'"},
      {"M1 2L. 3", "offset 5 in d: expected a number, found '.'"},
      {"M1 2Lnan 3", "offset 5 in d: expected a number, found 'n'"},
      {"M1 2L0x10 3", "offset 6 in d: expected a number, found 'x'"},
      {"M0 0A1 1 0 2 0 3 4", "offset 11 in d: expected an arc flag (0 or 1), found '2'"},
      {"M0 0A1 1 0 0 -1 3 4", "offset 13 in d: expected an arc flag (0 or 1), found '-'"},
      {"M0 0A1 1 0 0 1 3", "offset 16 in d: expected a number, found the end"},
      {"M1e999 0", "offset 1 in d: number out of range: 1e999"},
      {"M0 -1e16", "offset 3 in d: number out of range: -1e16"},
      {"M0 0\x01", "offset 4 in d: expected a path command, found byte 0x01"},
      {"M0 0\xc3\xa9", "offset 4 in d: expected a path command, found byte 0xc3"},
  };
  for (const auto& row : rows) {
    try {
      FAIL() << '"' << row.data << "\" was read as " << Steps(row.data);
    } catch (const ElementError& error) {
      EXPECT_STREQ(error.what(), row.message) << '"' << row.data << '"';
    }
  }
}

}  // namespace
}  // namespace kurvo::tools
