// Drawings read from files: how curves meet, what damaged files do, and where transforms take
// points.
#include "svg/reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "support.h"
#include "svg/attributes.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Consecutive curves share their end points to the last bit.
TEST(ReadSvg, CurvesMeetEndToStart) {
  Library library;
  std::vector<std::string> files = DrawingsIn(KURVO_SAMPLES);
  files.push_back(KURVO_TEST_DATA "/features.svg");
  for (const std::string& path : files) {
    const Drawing drawing = ReadSvg(library, path);
    EXPECT_GE(drawing.shapes.size(), 5u) << path;
    ForEachOutline(drawing, [&](const Outline& outline, const std::string& label) {
      const std::size_t count = outline.curves.size();
      for (std::size_t i = 0; i < count; ++i) {
        const std::string what = path + " " + label + " " + std::to_string(i);
        if (i + 1 == count && !outline.closed) continue;
        const Point end = EndOf(library, outline.curves[i]);
        const Point next = StartOf(library, outline.curves[(i + 1) % count]);
        EXPECT_TRUE(next.x == end.x && next.y == end.y) << what << " leaves a gap";
      }
    });
  }
}

// A file cut off or with a wrong byte anywhere is read or refused, with one line that names it.
TEST(ReadSvg, DamagedFilesAreReadOrRefused) {
  const std::string sample = FileContent(KURVO_SAMPLES "/bracket.svg");
  ASSERT_GT(sample.size(), 1000u);
  constexpr unsigned kSeed = 7;
  std::mt19937 random(kSeed);
  const TemporaryDirectory directory;
  Library library;
  int refused = 0;
  const auto read = [&](const std::string& content, const std::string& what) {
    try {
      ReadSvg(library, directory.Write("in.svg", content));
    } catch (const InputError& error) {
      ++refused;
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with(directory.File("in.svg") + ":")) << message << " " << what;
      EXPECT_EQ(message.find('\n'), std::string::npos) << message << " " << what;
    }
  };
  for (std::size_t size = 0; size < sample.size(); size += 3) {
    read(sample.substr(0, size), "cut to " + std::to_string(size));
  }
  EXPECT_GT(refused, static_cast<int>(sample.size() / 3) - 20);
  for (int i = 0; i < 1500; ++i) {
    std::string content = sample;
    content[random() % content.size()] = static_cast<char>(random() % 256);
    read(content, "change " + std::to_string(i) + ", seed " + std::to_string(kSeed));
  }
}

TEST(ParseTransformList, TakesPointsWhereTheyBelong) {
  constexpr double kRounding = 1e-12;  // of a few operations on numbers up to 100
  const double root2 = std::sqrt(2.0), root3 = std::sqrt(3.0);
  const struct {
    const char* list;
    Point origin, unit_x, unit_y;  // where (0, 0), (1, 0) and (0, 1) go
  } rows[] = {
      {"", {0, 0}, {1, 0}, {0, 1}},
      {"matrix(1 2 3 4 5 6)", {5, 6}, {6, 8}, {8, 10}},
      {"matrix(1,2,3,4,5,6)", {5, 6}, {6, 8}, {8, 10}},
      {" translate ( 10 , -5 ) ", {10, -5}, {11, -5}, {10, -4}},
      {"translate(10-5)", {10, -5}, {11, -5}, {10, -4}},
      {"translate(7)", {7, 0}, {8, 0}, {7, 1}},
      {"scale(2)", {0, 0}, {2, 0}, {0, 2}},
      {"scale(2,-3)", {0, 0}, {2, 0}, {0, -3}},
      {"rotate(90)", {0, 0}, {0, 1}, {-1, 0}},
      {"rotate(-450)", {0, 0}, {0, -1}, {1, 0}},
      {"rotate(30)", {0, 0}, {root3 / 2, 0.5}, {-0.5, root3 / 2}},
      {"rotate(90 2 3)", {5, 1}, {5, 2}, {4, 1}},
      {"rotate(45,1,0)", {1 - root2 / 2, -root2 / 2}, {1, 0}, {1 - root2, 0}},
      {"skewX(45)", {0, 0}, {1, 0}, {1, 1}},
      {"skewY(-45)", {0, 0}, {1, -1}, {0, 1}},
      // The last one is applied first.
      {"translate(10 20) scale(2)", {10, 20}, {12, 20}, {10, 22}},
      {"scale(2) translate(10 20)", {20, 40}, {22, 40}, {20, 42}},
      {"translate(1,0),rotate(90)scale(2 3)", {1, 0}, {1, 2}, {-2, 0}},
      {"rotate(20) rotate(25)\n,rotate(-45)", {0, 0}, {1, 0}, {0, 1}},
  };
  for (const auto& row : rows) {
    const Affine map = ParseTransformList("transform", row.list);
    EXPECT_LE(Size(map.Apply({0, 0}) - row.origin), kRounding) << row.list;
    EXPECT_LE(Size(map.Apply({1, 0}) - row.unit_x), kRounding) << row.list;
    EXPECT_LE(Size(map.Apply({0, 1}) - row.unit_y), kRounding) << row.list;
  }
  // Quarter turns keep round numbers.
  const Point turned =
      ParseTransformList("transform", "rotate(90) rotate(180) rotate(-90)").Apply({3.25, 7});
  EXPECT_TRUE(turned.x == -3.25 && turned.y == -7) << turned.x << ", " << turned.y;
}

}  // namespace
}  // namespace kurvo::tools
