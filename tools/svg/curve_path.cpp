#include "svg/curve_path.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "geometry/elliptical_arc.h"
#include "svg/input.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

// radians: a wider arc is written in parts. Where its ends are off the circle by some rounding, the
// circle through them is off by tan(sweep / 2) times as much.
constexpr double kWidestArc = 2.1;

// From 1, the middle weight of a parabola: taken for one, the middle of the curve moves by a
// quarter of this in heights of the control triangle.
constexpr double kParabolaTolerance = 1e-10;

// The lesser axis of an ellipse in parts of the greater: what is flatter is a line, there and back.
constexpr double kFlatEllipse = 1e-10;

// Of the deviation, so that it holds too where the size of a curve is judged by points of it.
constexpr double kFitShare = 0.5;

// Of the coordinates: what evaluation may round.
constexpr double kRounding = 16 * std::numeric_limits<double>::epsilon();

constexpr double kShortestHalved = 2.5;  // length tolerances

// Of a part of an ellipse; at the cap it is written as any other curve.
constexpr int kMostHalvings = 12;

// A fit with pieces that would be lost when they are read is made again, so much coarser, up to so
// many times.
constexpr double kCoarser = 8;
constexpr int kMostFits = 20;

double Rounding(Point p) { return kRounding * Size(p); }

// The semi-axes of the ellipse with the conjugate half diameters u and v, by the singular value
// decomposition of the matrix with these columns (closed form for 2 by 2).
EndpointArc WithAxes(Point u, Point v, Point to) {
  const Point even = {(u.x + v.y) / 2, (u.y - v.x) / 2};
  const Point odd = {(u.x - v.y) / 2, (u.y + v.x) / 2};
  const double major = std::hypot(even.x, even.y) + std::hypot(odd.x, odd.y);
  const double rotation = (std::atan2(even.y, even.x) + std::atan2(odd.y, odd.x)) / 2;
  return {major, std::fabs(Cross(u, v)) / major, Degrees(rotation), false, Cross(u, v) > 0, to};
}

// The quadratic rational Bezier curve with outer weights 1.
struct Conic {
  Point from;
  Point control;
  double weight;
  Point to;

  Point Middle() const {
    return (0.5 / (1 + weight)) * (from + to) + (weight / (1 + weight)) * control;
  }
};

Conic StandardForm(const KurvoRBezier& bezier) {
  const auto& p = bezier.points;
  return {Load(p[0]), Load(p[1]), p[1][3] / std::sqrt(p[0][3] * p[2][3]), Load(p[2])};
}

// An ellipse by two conjugate half diameters, of which `u` leads to the middle of a conic.
struct Diameters {
  Point u;
  Point v;
};

// The affine image of the arc of the unit circle from angle -a to a, whose control points are
// (cos a, -sin a), (1 / cos a, 0) and (cos a, sin a) with the middle weight cos a: the images u and
// v of (1, 0) and (0, 1) follow from the chord and from its distance to the middle control point.
Diameters EllipseThrough(const Conic& conic) {
  const double sine2 = (1 - conic.weight) * (1 + conic.weight);
  return {(conic.weight / sine2) * (conic.control - 0.5 * (conic.from + conic.to)),
          (0.5 / std::sqrt(sine2)) * (conic.to - conic.from)};
}

// Where a conic as flat as a line turns back: cos(t) u + sin(t) v from the centre is farthest along
// the line where its derivative is at right angles to it. Its end when that is not on the way.
Point TurningPoint(const Conic& conic, const Diameters& ellipse) {
  const auto& [u, v] = ellipse;
  const Point along = Size(u) > Size(v) ? u : v;
  const double tangent = Dot(v, along) / Dot(u, along);
  const double cosine = 1 / std::hypot(1, tangent);
  if (!(cosine > conic.weight)) return conic.to;
  const Point centre = 0.5 * (conic.from + conic.to) - conic.weight * u;
  return centre + cosine * u + (cosine * tangent) * v;
}

// Of the part of an arc from one point of it to another: the chord, turned by a quarter, points
// there from the centre. The points of a circle are the same.
Point MiddleOf(const KurvoArc& arc, bool positive, Point from, Point to) {
  const Point centre = Load(arc.centre);
  const Point chord = positive ? to - from : from - to;
  const double length = Size(chord);
  if (length == 0) return 2 * centre - from;
  return centre + (arc.radius / length) * Point{chord.y, -chord.x};
}

class PathWriter {
 public:
  PathWriter(Context& context, const PathAccuracy& accuracy)
      : context_(context), accuracy_(accuracy) {}

  void Append(const Curve& curve) {
    const Point start = Start(curve);
    if (data_.empty()) {
      Write('M', {start});
    } else if (!(Rounding(at_) >= Size(start - at_))) {
      Write('L', {start});
    }
    WriteCurve(curve, 0);
  }

  std::string Take() { return std::move(data_); }

 private:
  // Of an arc as it is recorded: worked out from the centre it is off by the rounding of the
  // radius.
  Point Start(const Curve& curve) const {
    return curve.Type() == CV_ARC ? Point(Load(curve.As<KurvoArc>()->start))
                                  : StartOf(context_, curve);
  }

  // The pen is at the start of the curve.
  void WriteCurve(const Curve& curve, int halvings) {
    switch (curve.Type()) {
      case CV_LINE:
        return Write('L', {Load(curve.As<KurvoLine>()->end)});
      case CV_ARC:
        return WriteCircular(curve);
      case CV_BEZIER:
        return WriteBezier(curve);
      case CV_RBEZIER:
        return WriteRational(curve, halvings);
      default:
        return WritePieces(curve);
    }
  }

  // Those of a composite need not meet; the spans of a B-spline are of one curve.
  void WritePieces(const Curve& whole) {
    const Curve pieces = whole.Converted(CV_SEGCV, context_).value();
    if (whole.Type() != CV_SEGCV) {
      Bounds ends;
      for (const Curve& span : pieces) {
        ends.Add(StartOf(context_, span));
        ends.Add(EndOf(context_, span));
      }
      least_size_ = ends.LongerSide();
    }
    for (const Curve& piece : pieces) {
      const Point start = Start(piece);
      if (!Same(at_, start, context_)) Write('M', {start});
      Append(piece);
    }
    least_size_ = 0;
  }

  void WriteHalves(const Curve& curve, int halvings) {
    const Chain halves = curve.Split(std::array{0.5}, context_).value();
    for (const Curve& half : halves) WriteCurve(half, halvings + 1);
  }

  void WriteCircular(const Curve& curve) {
    const KurvoArc& arc = *curve.As<KurvoArc>();
    const Point start = Load(arc.start);
    const bool is_circle = start.x == arc.end[0] && start.y == arc.end[1];
    WriteParts(arc, start, Load(arc.end),
               is_circle ? 2 * std::numbers::pi : LengthOf(context_, curve) / arc.radius);
  }

  // Parts within the length tolerance would be lost when they are read.
  double ShortestHalved() const { return kShortestHalved * context_.Epsilon(); }
  bool CanHalve(double length) const { return length > ShortestHalved(); }

  // The part of the arc between two points of it.
  void WriteParts(const KurvoArc& arc, Point from, Point to, double sweep) {
    const bool positive = !(arc.normal[2] < 0);
    if (sweep > kWidestArc && CanHalve(sweep * arc.radius)) {
      const Point middle = MiddleOf(arc, positive, from, to);
      WriteParts(arc, from, middle, sweep / 2);
      WriteParts(arc, middle, to, sweep / 2);
      return;
    }
    WriteArc({arc.radius, arc.radius, 0, sweep > std::numbers::pi, positive, to});
  }

  void WriteBezier(const Curve& curve) {
    const KurvoBezier& bezier = *curve.As<KurvoBezier>();
    if (bezier.degree > 3) return WriteCubics(curve);
    std::vector<Point> points;
    for (int i = std::min(1, bezier.degree); i <= bezier.degree; ++i)
      points.push_back(Load(bezier.points[i]));
    Write("LLQC"[bezier.degree], points);
  }

  void WriteRational(const Curve& curve, int halvings) {
    const KurvoRBezier& bezier = *curve.As<KurvoRBezier>();
    if (bezier.degree < 2) return Write('L', {Load(bezier.points[bezier.degree])});
    if (bezier.degree > 2) return WriteCubics(curve);
    const Conic conic = StandardForm(bezier);
    if (kParabolaTolerance >= std::fabs(conic.weight - 1))
      return Write('Q', {conic.control, conic.to});
    if (!(conic.weight < 1)) return WriteCubics(curve);  // a hyperbola, or no curve
    const bool is_wide = conic.weight < std::cos(kWidestArc / 2);
    if (is_wide && halvings < kMostHalvings) return WriteHalves(curve, halvings);
    if (is_wide) return WriteCubics(curve);
    const Diameters ellipse = EllipseThrough(conic);
    const EndpointArc arc = WithAxes(ellipse.u, ellipse.v, conic.to);
    if (arc.ry > kFlatEllipse * arc.rx && kLargestNumber >= arc.rx) return WriteArc(arc);
    Write('L', {TurningPoint(conic, ellipse)});
    Write('L', {conic.to});
  }

  void WriteCubics(const Curve& curve) {
    const Bounds box = BoundsOf(context_, curve);
    const double size = std::max(box.LongerSide(), least_size_);
    const double rounding = std::max(Rounding(box.Min()), Rounding(box.Max()));
    const double wanted = accuracy_.length > 0 ? accuracy_.length : accuracy_.share * size;
    double deviation = kFitShare * wanted + rounding;
    std::vector<Curve> cubics;
    for (int i = 0; i < kMostFits; ++i, deviation *= kCoarser) {
      cubics = Fitted(context_, curve, Form::kCubics, deviation);
      if (cubics.size() < 2 || std::all_of(cubics.begin(), cubics.end(), [&](const auto& piece) {
            return CanHalve(2 * Size(EndOf(context_, piece) - StartOf(context_, piece)));
          }))
        break;
    }
    for (const Curve& piece : cubics) WriteCurve(piece, 0);
  }

  void WriteArc(const EndpointArc& arc) {
    data_ += "A" + ExactNumber(arc.rx) + " " + ExactNumber(arc.ry) + " " +
             ExactNumber(arc.rotation) + (arc.large_arc ? " 1" : " 0") +
             (arc.positive_sweep ? " 1 " : " 0 ");
    WritePoint(arc.to);
  }

  void Write(char command, const std::vector<Point>& points) {
    data_ += command;
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (i > 0) data_ += ' ';
      WritePoint(points[i]);
    }
  }

  void WritePoint(Point p) {
    data_ += ExactNumber(p.x) + " " + ExactNumber(p.y);
    at_ = p;
  }

  Context& context_;
  const PathAccuracy accuracy_;
  std::string data_;
  Point at_;               // of the pen
  double least_size_ = 0;  // of the curve that the next one is a span of
};

}  // namespace

std::string PathData(Context& context, std::span<const Curve> curves,
                     const PathAccuracy& accuracy) {
  PathWriter writer(context, accuracy);
  for (const Curve& curve : curves) writer.Append(curve);
  return writer.Take();
}

std::string PathData(Context& context, const Curve& curve) {
  PathWriter writer(context, {});
  writer.Append(curve);
  return writer.Take();
}

}  // namespace kurvo::tools
