// kurvo locate as its users run it.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <random>
#include <string>

#include "json_reader.h"
#include "locate.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

// A square with a hole that runs the other way, the same by fill rule with one that does not, one
// whose hole is filled, and an open angle, which a line closes.
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
  const ProcessResult result = Client({"locate", input_, "1,1", "4,4", "24 4", "44,4", "62,1",
                                       "62,0", "63,3", "63,4", "3,4", "-1,-2.5"});
  EXPECT_EQ(result.exit_code, 0) << result.errors;
  EXPECT_EQ(result.output,
            "point       place    outlines\n"
            "(1, 1)      inside   in path#a.1\n"
            "(4, 4)      outside  in path#a.1, in path#a.2\n"
            "(24, 4)     outside  in path#b.1, in path#b.2\n"
            "(44, 4)     inside   in path#c.1, in path#c.2\n"
            "(62, 1)     inside   in path#d\n"
            "(62, 0)     on       on path#d\n"
            "(63, 3)     on       on path#d\n"
            "(63, 4)     outside\n"
            "(3, 4)      on       in path#a.1, on path#a.2\n"
            "(-1, -2.5)  outside\n");
}

// Outlines that cross themselves fill as a renderer fills them, by how often they go around.
TEST_F(LocateTest, FollowsTheFillRuleWhereOutlinesCrossThemselves) {
  const struct {
    const char* content;
    const char* point;
    const char* place;
  } rows[] = {
      {"<path d='M50 5L77 90L5 37H95L23 90Z'/>", "50,50", "inside"},
      {"<path fill-rule='evenodd' d='M50 5L77 90L5 37H95L23 90Z'/>", "50,50", "outside"},
      {"<path fill-rule='evenodd' d='M50 5L77 90L5 37H95L23 90Z'/>", "50,20", "inside"},
      // A figure eight in a square that runs as one half of it does.
      {"<path d='M10 10L30 30V10L10 30ZM5 5h30v30h-30z'/>", "13,20", "inside"},
      {"<path d='M10 10L30 30V10L10 30ZM5 5h30v30h-30z'/>", "27,20", "outside"},
      {"<path d='M10 10L30 30V10L10 30ZM5 5h30v30h-30z'/>", "20,12", "inside"},
      // At the height of all ends: three times around a disc, and a disc of one half and quarters.
      {"<path fill-rule='evenodd' d='M0 5a5 5 0 0 1 10 0a5 5 0 0 1-10 0a5 5 0 0 1 10 0"
       "a5 5 0 0 1-10 0a5 5 0 0 1 10 0a5 5 0 0 1-10 0z'/>",
       "3,5", "inside"},
      {"<path fill-rule='evenodd' d='M0 5a5 5 0 0 1 10 0a5 5 0 0 1-5 5a5 5 0 0 1-5-5z'/>", "3,5",
       "inside"},
      // A loop within one curve.
      {"<path fill-rule='evenodd' d='M0 0C30 20-20 20 10 0V-9H0Z'/>", "5,8", "inside"},
      // Its ends meet within the tolerance, though it is not closed by Z; the point looks between.
      {"<polyline points='9 5 0 9 0 0 9 5.0000004'/>", "3,5.0000002", "inside"},
      // A line closes what is open, an arc alone too; closed, a line has no inside.
      {"<path d='M0 0A5 5 0 0 1 10 0'/>", "5,-3", "inside"},
      {"<path d='M0 0A5 5 0 0 1 10 0'/>", "5,1", "outside"},
      {"<path d='M0 0A5 5 0 1 1 9 3L4 6'/>", "3,5", "outside"},
      {"<path d='M0 0H9'/>", "3,1", "outside"},
      {"<path fill-rule='evenodd' d='M0 0H9V9M1 0H9V8'/>", "8,2", "outside"},
  };
  for (const auto& row : rows) {
    const std::string file =
        directory_.Write("row.svg", "<svg>" + std::string(row.content) + "</svg>");
    const Json json = ReadJson(Client({"locate", file, row.point, "--json"}).output);
    EXPECT_EQ(json["points"][0]["place"].String(), row.place) << row.content << " " << row.point;
  }
}

// Closed and open paths through points of a lattice, by segments of every kind.
std::string RandomPath(std::mt19937& random) {
  const auto number = [&] { return " " + std::to_string(random() % 13); };
  const auto point = [&] { return number() + number(); };
  std::string data;
  for (int outline = 0; outline < 3; ++outline) {
    data += "M" + point();
    for (int i = 0; i < 4; ++i) {
      const std::string segments[] = {"L" + point(),
                                      "H" + number(),
                                      "V" + number(),
                                      "Q" + point() + point(),
                                      "C" + point() + point() + point(),
                                      "A" + std::string(random() % 2 == 0 ? "5 5 0" : "7 3 30") +
                                          (random() % 2 == 0 ? " 0" : " 1") +
                                          (random() % 2 == 0 ? " 0" : " 1") + point()};
      data += segments[random() % std::size(segments)];
    }
    if (random() % 2 == 0) data += "Z";
  }
  return data;
}

// What fills a point, by the angles under which it sees small steps along the outlines, which is
// told only where none comes near.
Place PlaceByAngles(const std::vector<std::vector<Point>>& outlines, bool even_odd, Point p) {
  constexpr double kNear = 0.02;
  int turns = 0;
  for (const std::vector<Point>& outline : outlines) {
    double angle = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
      const Point from = outline[i] - p;
      const Point to = outline[(i + 1) % outline.size()] - p;
      if (std::hypot(from.x, from.y) < kNear) return Place::kOn;
      angle += std::atan2(Cross(from, to), Dot(from, to));
    }
    turns += static_cast<int>(std::lround(angle / (2 * std::numbers::pi)));
  }
  return (even_odd ? turns % 2 : turns) != 0 ? Place::kInside : Place::kOutside;
}

TEST_F(LocateTest, AgreesWithAngles) {
  constexpr int kSteps = 1500;  // along a curve: each is shorter than what is near
  std::mt19937 random(20261121);
  for (int i = 0; i < 24; ++i) {
    const bool even_odd = i % 2 == 1;
    const std::string path = RandomPath(random);
    const std::string file = directory_.Write("random.svg", std::string("<svg><path fill-rule='") +
                                                                (even_odd ? "evenodd" : "nonzero") +
                                                                "' d='" + path + "'/></svg>");
    Library library;
    const Drawing drawing = ReadSvg(library, file);
    std::vector<std::vector<Point>> outlines;
    for (const Outline& outline : drawing.shapes.at(0).outlines) {
      std::vector<Point>& points = outlines.emplace_back();
      for (const OwnedCurve& curve : outline.curves) {
        for (int k = 0; k < kSteps; ++k) {
          points.push_back(PositionOf(library, curve, static_cast<double>(k) / kSteps));
        }
      }
      const Point start = points.front(), end = EndOf(library, outline.curves.back());
      for (int k = 0; k < kSteps; ++k)  // the line that closes it
        points.push_back(end + static_cast<double>(k) / kSteps * (start - end));
    }
    const Locator locator(library, drawing);
    for (int k = 0; k < 60; ++k) {
      const Point p = {0.5 * static_cast<double>(random() % 27),
                       0.5 * static_cast<double>(random() % 27)};
      const Place expected = PlaceByAngles(outlines, even_odd, p);
      if (expected == Place::kOn) continue;
      EXPECT_EQ(PlaceName(locator.InDrawing(p)), PlaceName(expected))
          << path << (even_odd ? " evenodd" : "") << " at " << p.x << "," << p.y;
    }
  }
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
