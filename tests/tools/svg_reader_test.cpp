// Drawings read from files: whole records, and what damaged files do.
#include "svg/svg_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "svg/input_error.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

// An arc of at most half a turn with its ends on the circle.
void ExpectWholeArc(const KurvoArc& arc, const std::string& what) {
  const Point from = {arc.start[0] - arc.centre[0], arc.start[1] - arc.centre[1]};
  const Point to = {arc.end[0] - arc.centre[0], arc.end[1] - arc.centre[1]};
  EXPECT_NEAR(std::hypot(from.x, from.y), arc.radius, 1e-12 * arc.radius) << what;
  EXPECT_NEAR(std::hypot(to.x, to.y), arc.radius, 1e-12 * arc.radius) << what;
  const double turn = std::atan2(Cross(from, to), Dot(from, to)) * arc.normal[2];
  EXPECT_TRUE(turn > 0 || turn < -std::numbers::pi + 1e-9) << what << " is above half a turn";
}

// At most a quarter of an ellipse.
void ExpectWholeRational(const KurvoRBezier& bezier, const std::string& what) {
  ASSERT_EQ(bezier.degree, 2) << what;
  EXPECT_EQ(bezier.points[0][3], 1) << what;
  EXPECT_GE(bezier.points[1][3], std::sqrt(0.5) - 1e-9) << what << " is above a quarter";
  EXPECT_EQ(bezier.points[2][3], 1) << what;
}

// What every record must be, whatever drawing it comes from.
void ExpectWhole(Library& library, const OwnedCurve& curve, const std::string& what) {
  EXPECT_FALSE(IsPoint(library, curve)) << what;
  const Point off = PositionOf(library, curve, 1) - EndOf(library, curve);
  EXPECT_LE(std::hypot(off.x, off.y), 1e-10) << what;
  const void* data = curve.Get()->data;
  if (curve.Type() == CV_ARC) ExpectWholeArc(*static_cast<const KurvoArc*>(data), what);
  if (curve.Type() == CV_RBEZIER) {
    ExpectWholeRational(*static_cast<const KurvoRBezier*>(data), what);
  }
}

class ReadSvgTest : public testing::Test {
 protected:
  void ReadFile(const std::string& content) {
    ReadSvg(library_, directory_.Write("in.svg", content));
  }

  Library library_;
  TemporaryDirectory directory_;
};

// Consecutive curves share their end points to the last bit.
TEST_F(ReadSvgTest, RecordsAreWholeAndMeetEndToStart) {
  for (const char* path : {KURVO_SAMPLES "/bracket.svg", KURVO_SAMPLES "/letters.svg",
                           KURVO_SAMPLES "/bodice.svg", KURVO_TEST_DATA "/features.svg"}) {
    const Drawing drawing = ReadSvg(library_, path);
    EXPECT_GE(drawing.shapes.size(), 5u) << path;
    for (const Shape& shape : drawing.shapes) {
      for (const Outline& outline : shape.outlines) {
        const std::size_t count = outline.curves.size();
        for (std::size_t i = 0; i < count; ++i) {
          const OwnedCurve& curve = outline.curves[i];
          const std::string what = std::string(path) + " " + shape.label + " " + std::to_string(i);
          ExpectWhole(library_, curve, what);
          if (i + 1 == count && !outline.closed) continue;
          const Point end = EndOf(library_, curve);
          const Point next = StartOf(library_, outline.curves[(i + 1) % count]);
          EXPECT_TRUE(next.x == end.x && next.y == end.y) << what << " leaves a gap";
        }
      }
    }
  }
}

// A file cut off or with a wrong byte anywhere is read or refused, with one line that names it.
TEST_F(ReadSvgTest, DamagedFilesAreReadOrRefused) {
  const std::string sample = FileContent(KURVO_SAMPLES "/bracket.svg");
  ASSERT_GT(sample.size(), 1000u);
  constexpr unsigned kSeed = 7;
  std::mt19937 random(kSeed);
  int refused = 0;
  const auto read = [&](const std::string& content, const std::string& what) {
    try {
      ReadFile(content);
    } catch (const InputError& error) {
      ++refused;
      const std::string message = error.what();
      EXPECT_EQ(message.rfind(directory_.File("in.svg") + ":", 0), 0u) << message << " " << what;
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

}  // namespace
}  // namespace kurvo::tools
