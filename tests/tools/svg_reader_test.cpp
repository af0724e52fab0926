// Elements, transforms and inheritance: which curve records a drawing becomes.
#include "svg_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "describe.h"
#include "input_error.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

std::string Describe(const Drawing& drawing) {
  std::string text;
  for (const Shape& shape : drawing.shapes) {
    text += shape.label + (shape.even_odd ? " evenodd" : "") + "\n";
    for (const Outline& outline : shape.outlines) text += "  " + Describe(outline) + "\n";
  }
  return text;
}

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
  // The shapes of `body` inside an svg element with a viewBox of 200 by 100.
  std::string ReadBody(const std::string& body) {
    return ReadFile("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 200 100'>" + body +
                    "</svg>");
  }
  std::string ReadFile(const std::string& content) {
    return Describe(ReadSvg(library_, directory_.Write("in.svg", content)));
  }

  struct Row {
    const char* body;
    const char* shapes;
  };
  template <std::size_t count>
  void ExpectAll(const Row (&rows)[count]) {
    for (const Row& row : rows) {
      try {
        EXPECT_EQ(ReadBody(row.body), row.shapes) << row.body;
      } catch (const std::exception& error) {
        ADD_FAILURE() << row.body << "\n" << error.what();
      }
    }
  }

  Library library_;
  TemporaryDirectory directory_;
};

TEST_F(ReadSvgTest, EveryShapeBecomesItsCurves) {
  const Row rows[] = {
      {"<line x1='1' y1='2' x2='3' y2='4'/>", "line[1]\n  L 1,2 3,4\n"},
      {"<line x2='5'/>", "line[1]\n  L 0,0 5,0\n"},
      {"<polyline points='0,0 4,0 4,3'/>", "polyline[1]\n  L 0,0 4,0; L 4,0 4,3\n"},
      {"<polygon points='0,0 4,0 4,3'/>", "polygon[1]\n  L 0,0 4,0; L 4,0 4,3; L 4,3 0,0 z\n"},
      {"<polygon points='0,0 4,0 4,3 0 0'/>", "polygon[1]\n  L 0,0 4,0; L 4,0 4,3; L 4,3 0,0 z\n"},
      {"<rect id='r' x='1' y='2' width='4' height='3'/>",
       "rect#r\n  L 1,2 5,2; L 5,2 5,5; L 5,5 1,5; L 1,5 1,2 z\n"},
      {"<rect width='10' height='8' rx='2'/>",
       "rect[1]\n  L 2,0 8,0; A+ 8,2 r2 8,0 10,2; L 10,2 10,6; A+ 8,6 r2 10,6 8,8; L 8,8 2,8; "
       "A+ 2,6 r2 2,8 0,6; L 0,6 0,2; A+ 2,2 r2 0,2 2,0 z\n"},
      // Corners as large as they can be leave no straight part.
      {"<rect width='10' height='4' rx='9' ry='2'/>",
       "rect[1]\n  R 5,0 10,0*0.707107 10,2; R 10,2 10,4*0.707107 5,4; R 5,4 0,4*0.707107 0,2; "
       "R 0,2 0,0*0.707107 5,0 z\n"},
      {"<rect width='10' height='4' ry='9'/>",
       "rect[1]\n  R 5,0 10,0*0.707107 10,2; R 10,2 10,4*0.707107 5,4; R 5,4 0,4*0.707107 0,2; "
       "R 0,2 0,0*0.707107 5,0 z\n"},
      {"<rect width='4' height='3' rx='0' ry='1'/>",
       "rect[1]\n  L 0,0 4,0; L 4,0 4,3; L 4,3 0,3; L 0,3 0,0 z\n"},
      {"<circle cx='5' cy='6' r='3'/>", "circle[1]\n  A+ 5,6 r3 8,6 2,6; A+ 5,6 r3 2,6 8,6 z\n"},
      {"<ellipse rx='2' ry='2'/>", "ellipse[1]\n  A+ 0,0 r2 2,0 -2,0; A+ 0,0 r2 -2,0 2,0 z\n"},
      {"<ellipse cx='1' cy='1' rx='2' ry='1'/>",
       "ellipse[1]\n  R 3,1 3,2*0.707107 1,2; R 1,2 -1,2*0.707107 -1,1; "
       "R -1,1 -1,0*0.707107 1,0; R 1,0 3,0*0.707107 3,1 z\n"},
      {"<path d='M0 0L1 0Q2 0 2 1C2 2 1 3 0 3z'/>",
       "path[1]\n  L 0,0 1,0; B 1,0 2,0 2,1; B 2,1 2,2 1,3 0,3; L 0,3 0,0 z\n"},
      {"<path d='M0 0H1M2 2H3z'/>", "path[1]\n  L 0,0 1,0\n  L 2,2 3,2; L 3,2 2,2 z\n"},
      // An arc above half a turn is two, a quarter of an ellipse one, a bit more two.
      {"<path d='M5 0A5 5 0 10 0 5'/>",
       "path[1]\n  A- 0,0 r5 5,0 -3.53553,-3.53553; A- 0,0 r5 -3.53553,-3.53553 0,5\n"},
      {"<path d='M-5 0a5 5 0 01 10 0'/>", "path[1]\n  A+ 0,0 r5 -5,0 5,0\n"},
      {"<path d='M4 0A4 2 0 01 0 2'/>", "path[1]\n  R 4,0 4,2*0.707107 0,2\n"},
      {"<path d='M2 0A4 2 0 01-2 0'/>", "path[1]\n  R 2,0 0,0.57735*0.866025 -2,0\n"},
      {"<path d='M4 0A4 2 0 01-4 0'/>",
       "path[1]\n  R 4,0 4,2*0.707107 0,2; R 0,2 -4,2*0.707107 -4,0\n"},
      // Arcs that are none.
      {"<path d='M0 0A0 2 0 01 4 0A2 0 0 01 4 4A1 1 0 11 4 4H1'/>",
       "path[1]\n  L 0,0 4,0; L 4,0 4,4; L 4,4 1,4\n"},
      // What has no length is dropped, and outlines of nothing.
      {"<path d='M1 1H1H2V1.0000001L2 1C2 1 2 1 2 1Q2 1 2 1V3Z'/>",
       "path[1]\n  L 1,1 2,1; L 2,1 2,3; L 2,3 1,1 z\n"},
      {"<path d='M0 0A4 2 0 01 1e-7 0A2 2 0 01 2e-7 0'/>", ""},
      {"<path d='M1 1'/><path d='M1 1z'/><path/><path d=''/><polyline/><polygon points=''/>", ""},
      {"<rect width='0' height='1'/><rect/><circle/><ellipse rx='0'/><line x1='1' x2='1'/>", ""},
  };
  ExpectAll(rows);
}

TEST_F(ReadSvgTest, TransformsComeBeforeTheRecords) {
  const Row rows[] = {
      // A similarity keeps circles; one that mirrors turns them round.
      {"<circle r='2' transform='translate(5 5) rotate(90) scale(3)'/>",
       "circle[1]\n  A+ 5,5 r6 5,11 5,-1; A+ 5,5 r6 5,-1 5,11 z\n"},
      {"<circle r='2' transform='scale(-1 1)'/>",
       "circle[1]\n  A- 0,0 r2 -2,0 2,0; A- 0,0 r2 2,0 -2,0 z\n"},
      {"<path d='M-5 0a5 5 0 01 10 0' transform='scale(1 -1)'/>",
       "path[1]\n  A- 0,0 r5 -5,0 5,0\n"},
      {"<circle r='1' transform='scale(2 1)'/>",
       "circle[1]\n  R 2,0 2,1*0.707107 0,1; R 0,1 -2,1*0.707107 -2,0; "
       "R -2,0 -2,-1*0.707107 0,-1; R 0,-1 2,-1*0.707107 2,0 z\n"},
      {"<circle r='1' transform='skewX(45)'/>",
       "circle[1]\n  R 1,0 2,1*0.707107 1,1; R 1,1 0,1*0.707107 -1,0; "
       "R -1,0 -2,-1*0.707107 -1,-1; R -1,-1 0,-1*0.707107 1,0 z\n"},
      // Nearly round is not round.
      {"<path d='M5 0A5 5.00001 0 01-5 0'/>",
       "path[1]\n  R 5,0 5,5.00001*0.707107 0,5.00001; R 0,5.00001 -5,5.00001*0.707107 -5,0\n"},
      // An ellipse that a transform makes round.
      {"<ellipse rx='2' ry='1' transform='scale(1 2)'/>",
       "ellipse[1]\n  A+ 0,0 r2 2,0 -2,0; A+ 0,0 r2 -2,0 2,0 z\n"},
      {"<path d='M2 0A2 1 0 01-2 0' transform='scale(.5 1)'/>", "path[1]\n  A+ 0,0 r1 1,0 -1,0\n"},
      {"<g transform='translate(10)'><g transform='scale(2)'><line x2='1' "
       "transform='rotate(90)'/></g><line x2='1'/></g><line x2='1'/>",
       "line[1]\n  L 10,0 10,2\nline[2]\n  L 10,0 11,0\nline[3]\n  L 0,0 1,0\n"},
      {"<path d='M0 0Q1 0 1 1C1 2 2 2 2 3' transform='matrix(0 1 1 0 0 10)'/>",
       "path[1]\n  B 0,10 0,11 1,11; B 1,11 2,11 2,12 3,12\n"},
      // Nothing is left of what a transform flattens.
      {"<circle r='2' transform='scale(0)'/><line x2='1' transform='scale(1 0)'/>", ""},
      {"<line x2='1' transform='none'/>", "line[1]\n  L 0,0 1,0\n"},
  };
  ExpectAll(rows);
}

TEST_F(ReadSvgTest, LengthsHaveUnits) {
  const Row rows[] = {
      {"<line x1='1in' x2='2px' y1='25.4mm' y2='2.54cm'/>", "line[1]\n  L 96,96 2,96\n"},
      {"<line x1='72pt' x2='1pc' y1='1e1' y2=' -.5e1px '/>", "line[1]\n  L 96,10 16,-5\n"},
      {"<line x2='50%' y2='50%'/>", "line[1]\n  L 0,0 100,50\n"},
      // The diagonal of 200 by 100 over the root of 2.
      {"<circle r='10%'/>",
       "circle[1]\n  A+ 0,0 r15.8114 15.8114,0 -15.8114,0; A+ 0,0 r15.8114 -15.8114,0 15.8114,0 "
       "z\n"},
      {"<rect width='4' height='2' rx='auto'/>",
       "rect[1]\n  L 0,0 4,0; L 4,0 4,2; L 4,2 0,2; L 0,2 0,0 z\n"},
  };
  ExpectAll(rows);
}

TEST_F(ReadSvgTest, WhatIsNotShownIsNotRead) {
  const char* const kLine = "line[1]\n  L 0,0 1,0\n";
  const Row rows[] = {
      {"<line x2='1'/><line x2='2' display='none'/><g style='display : none ;'><line x2='3'/></g>",
       kLine},
      {"<g visibility='hidden'><line x2='1' style='visibility:visible'/><line x2='2'/></g>", kLine},
      {"<line x2='1'/><defs><line x2='2'/></defs><clipPath><line x2='2'/></clipPath><mask><line "
       "x2='2'/></mask><pattern><line x2='2'/></pattern><marker><line x2='2'/></marker><symbol>"
       "<line x2='2'/></symbol><x:line xmlns:x='urn:x' x2='2'/><metadata><line "
       "x2='2'/></metadata>",
       kLine},
      {"<!-- <line x2='2'/> --><line x2='1'/><text transform='?'>A</text><title>T</title>", kLine},
      {"<a><switch><g requiredExtensions='x'><line x2='2'/></g><line id='a' x2='1'/><line "
       "x2='3'/></switch></a>",
       "line#a\n  L 0,0 1,0\n"},
      {"<g fill-rule='evenodd'><line x2='1'/><line id='n' x2='1' style='fill-rule:nonzero'/></g>",
       "line[1] evenodd\n  L 0,0 1,0\nline#n\n  L 0,0 1,0\n"},
      // The style attribute wins, and in it what comes last.
      {"<line x2='1' display='none' style='fill:red;display:none;display:inline!important'/>",
       kLine},
  };
  ExpectAll(rows);
}

TEST_F(ReadSvgTest, UseShowsElementsAgain) {
  const Row rows[] = {
      {"<defs><line id='l' x2='1'/></defs><use href='#l' x='2' y='3'/>",
       "use[1]/line#l\n  L 2,3 3,3\n"},
      {"<use id='u' xmlns:xlink='http://www.w3.org/1999/xlink' xlink:href='#g' "
       "transform='scale(2)' x='1'/><defs><g id='g' transform='translate(0 5)'><line x2='1'/><line "
       "x2='2'/></g></defs>",
       "use#u/line[1]\n  L 2,10 4,10\nuse#u/line[2]\n  L 2,10 6,10\n"},
      {"<defs><use id='b' href='#a' x='1'/><line id='a' x2='1'/></defs><use id='c' href='#b' "
       "y='1'/>",
       "use#c/use#b/line#a\n  L 1,1 2,1\n"},
      {"<use/><use href=''/>", ""},
      // A symbol fits its viewBox into the size of the use element, in the middle.
      {"<symbol id='s' viewBox='0 0 10 10'><line x2='10' y2='10'/></symbol><use href='#s' x='1' "
       "width='40' height='20'/>",
       "use[1]/line[1]\n  L 11,0 31,20\n"},
      {"<symbol id='s' viewBox='5 0 10 10' preserveAspectRatio='xMaxYMin slice'><line x2='10' "
       "y2='10'/></symbol><use href='#s' width='40' height='20'/>",
       "use[1]/line[1]\n  L -20,0 20,40\n"},
      {"<svg x='10' y='20' width='20' height='20' viewBox='0 0 2 4' preserveAspectRatio='none'>"
       "<line x2='1' y2='1'/><line x2='100%'/></svg>",
       "line[1]\n  L 10,20 20,25\nline[2]\n  L 10,20 30,20\n"},
      // Percentages are of the viewBox, also where it does not fill its place.
      {"<svg width='20' height='40' viewBox='0 0 10 10'><line x2='50%' y2='50%'/></svg>",
       "line[1]\n  L 0,10 10,20\n"},
      {"<svg width='20' height='40'><line x2='50%' y2='50%'/></svg>", "line[1]\n  L 0,0 10,20\n"},
      {"<svg width='0'><line x2='1'/></svg>", ""},
  };
  ExpectAll(rows);
}

TEST_F(ReadSvgTest, NamespacePrefixesAreUnderstood) {
  EXPECT_EQ(ReadFile("<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:g><s:line x2='1'/></s:g>"
                     "<o:line xmlns:o='urn:other' x2='2'/></s:svg>"),
            "line[1]\n  L 0,0 1,0\n");
}

TEST_F(ReadSvgTest, NestingIsLimitedByMemoryAlone) {
  std::string content = "<svg>";
  constexpr int kDepth = 200000;
  for (int i = 0; i < kDepth; ++i) content += "<g>";
  content += "<line x2='1'/>";
  for (int i = 0; i < kDepth; ++i) content += "</g>";
  EXPECT_EQ(ReadFile(content + "</svg>"), "line[1]\n  L 0,0 1,0\n");
}

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
          const std::string what = std::string(path) + " " + shape.label + " " + Describe(curve);
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
