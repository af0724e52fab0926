// What the client writes of curves is what it reads again.
#include "svg/curve_path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <pugixml.hpp>
#include <random>
#include <span>
#include <tuple>

#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "geometry/elliptical_arc.h"
#include "picture/pictures.h"
#include "support.h"
#include "svg/curve_file.h"
#include "svg/drawing_writer.h"

namespace kurvo::tools {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kBound = 1e-9;  // of the longer side of the outline
constexpr double kNever = std::numeric_limits<double>::infinity();
constexpr double kShortest = 2e-6;  // what is shorter may not be read
constexpr unsigned kSeed = 20261122;

// A parameter from `from` on at which the curve is nearest to a point: the first within the bound
// that is found.
double FollowTo(Context& context, const Curve& curve, Point p, double from, double bound) {
  constexpr int kStarts = 64, kSteps = 20;
  double best = from, least = kNever;
  for (int i = 0; i <= kStarts && !(bound >= least); ++i) {
    double t = from + (1 - from) * i / kStarts, step = 1;
    for (int k = 0; k < kSteps && std::fabs(step) > 1e-14; ++k) {
      const Point d = DerivativeOf(context, curve, t, 1);
      step = Dot(p - PositionOf(context, curve, t), d) / Dot(d, d);
      t = std::clamp(t + step, from, 1.0);
    }
    const double distance = Size(p - PositionOf(context, curve, t));
    if (distance < least) std::tie(best, least) = std::pair(t, distance);
  }
  return best;
}

// How far what was read from `next` on is off the curve, from its start to its end.
double Deviation(Context& context, const Curve& curve, const std::vector<const Curve*>& read,
                 std::size_t& next, double size) {
  if (next == read.size()) return kNever;
  double worst = Size(StartOf(context, *read[next]) - StartOf(context, curve));
  const bool is_exact =
      curve.Type() == CV_LINE || (curve.Type() == CV_BEZIER && curve.Degree(context).value() <= 3);
  double t = 0;
  for (Point end; next < read.size();) {
    const Curve& piece = *read[next++];
    for (const double s : {0.25, 0.5, 0.75, 1.0}) {
      end = PositionOf(context, piece, s);
      t = is_exact ? s : FollowTo(context, curve, end, t, kBound * size);
      worst = std::max(worst, Size(end - PositionOf(context, curve, t)));
    }
    if (kBound * size >= Size(end - EndOf(context, curve))) return worst;
    if (is_exact) break;
  }
  return kNever;
}

// The same of an outline, as a part of its size.
double Deviation(Context& context, const std::vector<Curve>& curves,
                 std::span<const Outline> read) {
  Bounds box;
  for (const Curve& curve : curves) {
    for (int i = 0; i <= 8; ++i) box.Add(PositionOf(context, curve, i / 8.0));
  }
  std::vector<const Curve*> pieces;
  for (const Outline& outline : read) {
    for (const Curve& curve : outline.curves) pieces.push_back(&curve);
  }
  // Of what is smaller than a millionth of its coordinates doubles hold no such part.
  const double size = std::max(box.LongerSide(), 1e-6 * Size(box.Min()));
  double worst = 0;
  std::size_t next = 0;
  for (const Curve& curve : curves)
    worst = std::max(worst, Deviation(context, curve, pieces, next, size));
  return next == pieces.size() ? worst / size : kNever;
}

// Curves of all kinds, each from the end of the one before it where its kind allows that.
class RandomOutline {
 public:
  RandomOutline(Context& context, std::mt19937& random) : context_(context), random_(random) {
    const auto far = random_() % 3;
    size_ = std::pow(10, Draw(-3, 6));
    if (far > 0) pen_ = size_ * std::pow(10, Draw(0, far == 1 ? 1 : 3)) * Direction();
    for (std::size_t count = 1 + random_() % 4; curves_.size() < count;) Append();
  }

  std::vector<Curve> Take() { return std::move(curves_); }

 private:
  double Draw(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  Point Direction() {
    const double angle = Draw(-kPi, kPi);
    return {std::cos(angle), std::sin(angle)};
  }
  Point Next() { return pen_ + size_ * Draw(0.05, 1) * Direction(); }

  void Append() {
    const Point from = pen_;
    const std::size_t kind = random_() % 8;
    const bool small = size_ < 100;
    if (kind == 0) return Add(Curve::Line(from, Next()).value());
    if (kind == 1) return Add(Curve::Bezier({from, Next(), Next()}).value());
    if (kind == 2) return Add(Curve::Bezier({from, Next(), Next(), Next()}).value());
    if (kind == 3)
      return Add(Conic(Draw(0, small ? 6 : 9), std::pow(10, Draw(small ? -1 : -5, 0.46))));
    if (kind == 4) {  // weights other than 1 at the ends
      const Curve conic = Conic(Draw(0, 2), Draw(0.2, 1.5));
      return Add(std::move(conic.Split(Draw(0.2, 0.8), context_).value().second));
    }
    if (kind == 5 && size_ >= 1) return AddFreeForm(from);
    Add(Arc(from));
  }

  Curve Arc(Point from) {
    const double near = std::pow(10, Draw(-12, -3));
    const double sweeps[] = {
        Draw(0.1, 2 * kPi), std::pow(10, Draw(-6, 0)),          kPi, kPi - near,
        kPi + near,         2 * kPi - std::pow(10, Draw(-5, 0))};
    const double sweep = sweeps[random_() % std::size(sweeps)];
    const double chord = size_ * Draw(0.05, 1);
    const double radius = sweep < kPi ? chord / (2 * std::sin(sweep / 2)) : chord / 2;
    const bool positive = random_() % 2 == 0;
    const double start = Draw(-kPi, kPi), end = positive ? start + sweep : start - sweep;
    const Point centre = from - radius * Point{std::cos(start), std::sin(start)};
    return ArcOf(centre, radius, positive, from,
                 centre + radius * Point{std::cos(end), std::sin(end)});
  }

  // A part of an ellipse whose axes are to each other as 10^aspect.
  Curve Conic(double aspect, double sweep) {
    const Point u = size_ * Draw(0.1, 1) * Direction();
    const Point v = std::pow(10, -aspect) * Point{-u.y, u.x};
    const double start = Draw(-kPi, kPi);
    EllipticalArc arc = {{}, u, v, start, random_() % 2 == 0 ? sweep : -sweep};
    arc.centre = pen_ - arc.At(start);
    const MiddleControl middle = RationalMiddle(arc, start, start + arc.sweep);
    return ConicOf(pen_, middle.point, middle.weight, arc.At(start + arc.sweep));
  }

  // B-splines, Bezier curves of degree 4, rational ones of degree 3 and hyperbolas.
  void AddFreeForm(Point from) {
    const std::size_t kind = random_() % 4;
    const double half = size_ / 2;
    if (kind == 0) {
      std::vector<Point> points = {from};
      for (int i = 0; i < 7; ++i) points.push_back(points.back() + half * Direction());
      return Add(*SplineThrough(context_, points, 2 + static_cast<int>(random_() % 6)));
    }
    if (kind == 1) return Add(ConicOf(from, Next(), Draw(1.5, 3), Next()));
    const Curve source =
        kind == 2 ? Curve::Bezier({from, from + half * Point{1, 1}, from + half * Point{2, 1},
                                   from + half * Point{3, Draw(-1, 0)}})
                        .value()
                  : Conic(Draw(0, 1), Draw(0.5, 1.5));
    Add(std::move(source.Offset(-size_ / 50, size_ / 50, context_).value()[0]));
  }

  void Add(Curve curve) {
    if (IsPoint(context_, curve)) return;  // would not be read
    const bool is_arc = curve.Type() == CV_ARC;
    const Point start = is_arc ? pen_ : StartOf(context_, curve);
    const double gap = Size(pen_ - start);
    if (gap > kBound * size_ && gap < kShortest) return;
    if (gap >= kShortest) curves_.push_back(Curve::Line(pen_, start).value());
    const double* end = is_arc ? curve.As<KurvoArc>()->end : nullptr;
    pen_ = is_arc ? Point{end[0], end[1]} : EndOf(context_, curve);
    curves_.push_back(std::move(curve));
  }

  Context& context_;
  std::mt19937& random_;
  double size_;
  Point pen_;
  std::vector<Curve> curves_;
};

TEST(PathData, RandomOutlinesReadBack) {
  constexpr int kOutlines = 10000;
  std::mt19937 random(kSeed);
  Context context;
  std::vector<std::vector<Curve>> outlines;
  std::string svg = "<svg>";
  for (int i = 0; i < kOutlines; ++i) {
    outlines.push_back(RandomOutline(context, random).Take());
    svg += "<path d='" + PathData(context, outlines.back()) + "'/>";
  }
  const TemporaryDirectory directory;
  const Drawing read = ReadDrawing(context, directory.Write("in.svg", svg + "</svg>"));
  ASSERT_EQ(read.shapes.size(), outlines.size());
  int failures = 0;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const double deviation = Deviation(context, outlines[i], read.shapes[i].outlines);
    if (kBound >= deviation) continue;
    if (++failures <= 5) ADD_FAILURE() << deviation << " of the size, outline " << i;
  }
  EXPECT_EQ(failures, 0) << "seed " << kSeed;
}

// "a/b" for a group b in a group a.
std::string GroupPath(const Drawing& drawing, std::size_t group) {
  const Group& at = drawing.groups[group];
  return group == 0 ? "" : GroupPath(drawing, at.parent) + "/" + at.id + at.layer;
}

// Drawings written are the drawings, for every icon too, and pictures of them are well-formed.
TEST(DrawingText, DrawingsReadBack) {
  std::vector<std::string> files = DrawingsIn(kIconTheme);
  EXPECT_TRUE(files.empty() || files.size() > 200) << kIconTheme;
  for (const std::string& sample : DrawingsIn(KURVO_SAMPLES)) files.push_back(sample);
  files.push_back(KURVO_TEST_DATA "/features.svg");
  const TemporaryDirectory directory;
  Context context;
  for (const std::string& file : files) {
    const Drawing drawing = ReadDrawing(context, file);
    const std::string text = DrawingText(context, ResultOf(drawing), {});
    const Drawing read = ReadDrawing(context, directory.Write("out.svg", text));
    const std::string json = CurveFileText(context, ResultOf(drawing));
    const Drawing records = ReadDrawing(context, directory.Write("out.json", json));
    EXPECT_EQ(CurveFileText(context, ResultOf(records)), json) << file;
    EXPECT_EQ(DrawingText(context, ResultOf(records), {}), text) << file;
    const std::string full = DrawingPicture(context, drawing, {}, 1000);
    EXPECT_TRUE(pugi::xml_document().load_string(full.c_str())) << file;
    EXPECT_TRUE(full.find("nan") == full.npos && full.find("inf") == full.npos) << file;
    EXPECT_NEAR(read.sheet.mm_per_unit / drawing.sheet.mm_per_unit, 1, 1e-10) << file;
    ASSERT_EQ(read.shapes.size(), drawing.shapes.size()) << file;
    for (std::size_t i = 0; i < drawing.shapes.size(); ++i) {
      const Shape& shape = drawing.shapes[i];
      const Shape& again = read.shapes[i];
      ASSERT_EQ(again.outlines.size(), shape.outlines.size()) << file;
      EXPECT_EQ(again.even_odd, shape.even_odd) << file;
      EXPECT_EQ(again.paint.fill, shape.paint.fill) << file;
      EXPECT_EQ(again.paint.stroke, shape.paint.stroke) << file;
      if (shape.label.find("use") == shape.label.npos) {  // of two with one id one keeps it
        EXPECT_EQ(GroupPath(read, again.group), GroupPath(drawing, shape.group)) << file;
        EXPECT_EQ(again.id, shape.id) << file;
      }
      for (std::size_t k = 0; k < shape.outlines.size(); ++k) {
        const Outline& got = again.outlines[k];
        EXPECT_LE(Deviation(context, shape.outlines[k].curves, {&got, 1}), kBound)
            << file << " " << OutlineLabel(shape, k);
        EXPECT_EQ(got.closed, shape.outlines[k].closed) << file;
      }
    }
  }
}

TEST(PathData, IsWrittenAs) {
  Context context;
  const auto arc = [](Point from, Point to) { return ArcOf({}, 5, true, from, to); };
  const Curve line = Curve::Line({0, -5}, {1.0 / 3, 1e-7}).value();
  const Curve gap = Curve::Line({1.0 / 3, 3e-7}, {1, 1}).value();
  const Curve half = arc({0, -5}, {0, 5}), full = arc({5, 0}, {5, 0});
  const Curve quarter = arc({5, 0}, {0, 5});
  const Curve tiny = ArcOf({}, 3e-7, false, {3e-7, 0}, {-3e-7, 0});
  const Curve flat = ArcOf({-6e8, -8e8}, 1e9, true, {0, 0}, {-8, 6});
  const Curve to_flat = Curve::Line({-1, -1}, {0, 0}).value();
  const Curve hairpin = ConicOf({0, 0}, {6, 0}, 0.5, {0, 0});
  const Curve parabola = ConicOf({0, 0}, {1, 2}, 1, {2, 0});
  const struct {
    std::vector<const Curve*> pieces;
    const char* data;
  } rows[] = {
      {{&line}, "M0 -5L0.3333333333333333 1e-07"},
      {{&line, &gap}, "M0 -5L0.3333333333333333 1e-07L0.3333333333333333 3e-07L1 1"},
      {{&gap, &line}, "M0.3333333333333333 3e-07L1 1M0 -5L0.3333333333333333 1e-07"},
      {{&quarter}, "M5 0A5 5 0 0 1 0 5"},
      {{&half}, "M0 -5A5 5 0 0 1 5 0A5 5 0 0 1 0 5"},
      {{&full}, "M5 0A5 5 0 0 1 0 5A5 5 0 0 1 -5 0A5 5 0 0 1 0 -5A5 5 0 0 1 5 0"},
      {{&tiny}, "M3e-07 0A3e-07 3e-07 0 0 0 -3e-07 0"},
      {{&to_flat, &flat}, "M-1 -1L0 0A1000000000 1000000000 0 0 1 -8 6"},
      {{&hairpin}, "M0 0L2 0L0 0"},
      {{&parabola}, "M0 0Q1 2 2 0"},
  };
  for (const auto& row : rows) {
    std::vector<Curve> pieces;
    for (const Curve* piece : row.pieces) pieces.push_back(piece->Copy(context).value());
    EXPECT_EQ(PathData(context, Curve::Composite(pieces).value()), row.data);
  }
  // Few cubics do for what has no form of its own.
  const Curve bow = Curve::Bezier({{0, 0}, {1, 1}, {2, 1}, {3, 0}}).value();
  const Curve offset = std::move(bow.Offset(-0.1, 0.1, context).value()[0]);
  ASSERT_EQ(offset.Degree(context).value(), 4);
  const std::string cubics = PathData(context, offset);
  EXPECT_LE(std::count(cubics.begin(), cubics.end(), 'C'), 8) << cubics;
}

}  // namespace
}  // namespace kurvo::tools
