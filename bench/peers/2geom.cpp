// lib2geom. Splines are paths of cubic Bezier curves; offsets are made as its users make them, of
// the symbolic form of the normal.
#include <2geom/2geom.h>
#include <2geom/bezier-curve.h>
#include <2geom/elliptical-arc.h>
#include <2geom/intersection-graph.h>
#include <2geom/path.h>
#include <2geom/pathvector.h>
#include <2geom/sbasis-geometric.h>
#include <2geom/sbasis-to-bezier.h>

#include <cmath>
#include <numbers>
#include <utility>

#include "driver.h"

namespace {

using peers::Common;
using peers::Point;

Geom::Point G(Point p) { return {p.x, p.y}; }
Point P(const Geom::Point& p) { return {p[Geom::X], p[Geom::Y]}; }

// lib2geom takes its precision in parameters: this one is within the tolerance on all curves here.
constexpr double kPrecision = 1e-4 * peers::kTolerance;

class Lib2geom {
 public:
  static constexpr const char* kName = "2geom";

  static Geom::LineSegment MakeLine(const peers::Segment& s) { return {G(s.start), G(s.end)}; }
  static Geom::EllipticalArc MakeArc(const peers::Arc& a) {
    const auto at = [&a](double angle) {
      return Geom::Point(a.centre.x + a.radius * std::cos(angle),
                         a.centre.y + a.radius * std::sin(angle));
    };
    const bool large = a.sweep > std::numbers::pi;
    return {at(a.from), a.radius, a.radius, 0.0, large, true, at(a.from + a.sweep)};
  }
  static Geom::CubicBezier MakeCubic(const peers::Bezier& b) {
    return {G(b[0]), G(b[1]), G(b[2]), G(b[3])};
  }
  static Geom::QuadraticBezier MakeQuadratic(const peers::Bezier& b) {
    return {G(b[0]), G(b[1]), G(b[2])};
  }
  static Geom::Path MakeSpline(const peers::Spline& spline) {
    const auto pieces = peers::BezierPieces(spline);
    Geom::Path path(G(pieces[0][0]));
    for (const peers::Bezier& b : pieces) path.append(MakeCubic(b));
    return path;
  }
  static Geom::Path MakeGlyph(const peers::Glyph& glyph) {
    Geom::Path path(G(glyph[0][0]));
    for (const peers::Bezier& b : glyph) path.append(MakeQuadratic(b));
    path.close();
    return path;
  }

  static double Nearest(const Geom::CubicBezier& curve, Point p) { return curve.nearestTime(G(p)); }

  static auto Intersect(const Geom::Curve& a, const Geom::Curve& b) {
    return a.intersect(b, kPrecision);
  }
  static auto Intersect(const Geom::Path& a, const Geom::Path& b) {
    return a.intersect(b, kPrecision);
  }
  static std::vector<Common> ReadCommon(const Geom::Curve&, const Geom::Curve&,
                                        const std::vector<Geom::CurveIntersection>& found) {
    std::vector<Common> common;
    for (const auto& x : found) common.push_back({x.first, x.second});
    return common;
  }
  static std::vector<Common> ReadCommon(const Geom::Path& a, const Geom::Path& b,
                                        const std::vector<Geom::PathIntersection>& found) {
    const auto pieces_of_a = static_cast<double>(a.size());  // the knots are uniform over [0, 1]
    const auto pieces_of_b = static_cast<double>(b.size());
    std::vector<Common> common;
    for (const auto& x : found)
      common.push_back({x.first.asFlatTime() / pieces_of_a, x.second.asFlatTime() / pieces_of_b});
    return common;
  }

  static double Length(const Geom::Curve& curve, double tolerance) {
    return curve.length(tolerance);
  }
  static double Length(const Geom::Path& path, double tolerance) {
    double length = 0.0;
    for (const Geom::Curve& curve : path)
      length += curve.length(tolerance / static_cast<double>(path.size()));
    return length;
  }

  static Point Position(const Geom::LineSegment& line, double t) { return P(line.pointAt(t)); }
  static Point Position(const Geom::CubicBezier& curve, double t) { return P(curve.pointAt(t)); }
  static Point Position(const Geom::EllipticalArc& arc, double t) { return P(arc.pointAt(t)); }
  static Point Derivative(const Geom::CubicBezier& curve, double t) {
    return P(curve.pointAndDerivatives(t, 1)[1]);
  }

  static auto Split(const Geom::CubicBezier& curve, double t) { return curve.subdivide(t); }
  static Point SampleHalf(const std::pair<Geom::CubicBezier, Geom::CubicBezier>& halves, int half,
                          double s) {
    return P((half == 0 ? halves.first : halves.second).pointAt(s));
  }

  static Geom::PathVector Offset(const Geom::Curve& curve, double distance, double tolerance) {
    const Geom::D2<Geom::SBasis> b = curve.toSBasis();
    const Geom::Piecewise<Geom::D2<Geom::SBasis>> normal =
        Geom::rot90(Geom::unitVector(Geom::derivative(b), tolerance / std::abs(distance)));
    return Geom::path_from_piecewise(Geom::Piecewise<Geom::D2<Geom::SBasis>>(b) + normal * distance,
                                     tolerance);
  }
  static std::vector<Point> SampleOffset(const Geom::PathVector& paths) {
    std::vector<Point> samples;
    for (const Geom::Path& path : paths)
      for (const Geom::Curve& curve : path)
        for (int i = 0; i <= 32; ++i) samples.push_back(P(curve.pointAt(i / 32.0)));
    return samples;
  }

  static Geom::PathVector MakeOutline(const peers::Outline& outline) {
    Geom::PathVector paths;
    for (const peers::Glyph& contour : outline) {
      Geom::Path path(G(contour[0][0]));
      for (const peers::Bezier& b : contour) {
        if (b.size() == 2) path.appendNew<Geom::LineSegment>(G(b[1]));
        if (b.size() == 3) path.appendNew<Geom::QuadraticBezier>(G(b[1]), G(b[2]));
        if (b.size() == 4) path.appendNew<Geom::CubicBezier>(G(b[1]), G(b[2]), G(b[3]));
      }
      path.close();
      paths.push_back(path);
    }
    return paths;
  }
  static Geom::PathVector Combine(const Geom::PathVector& a, const Geom::PathVector& b,
                                  int operation) {
    try {
      Geom::PathIntersectionGraph graph(a, b);
      switch (operation) {
        case 0:
          return graph.getUnion();
        case 1:
          return graph.getIntersection();
        case 2:
          return graph.getAminusB();
        default:
          return graph.getXOR();
      }
    } catch (...) {  // some of what it throws is no exception of the standard
      return {};
    }
  }
  static peers::Outline ReadOutline(const Geom::PathVector& paths) {
    peers::Outline outline;
    for (const Geom::Path& path : paths) {
      peers::Glyph contour;
      const auto add = [&contour](const Geom::BezierCurve& curve) {
        peers::Bezier b;
        for (unsigned i = 0; i < curve.size(); ++i) b.push_back(P(curve.controlPoint(i)));
        contour.push_back(b);
      };
      for (const Geom::Curve& curve : path)
        if (const auto* bezier = dynamic_cast<const Geom::BezierCurve*>(&curve)) add(*bezier);
      if (path.initialPoint() != path.finalPoint())
        contour.push_back({P(path.finalPoint()), P(path.initialPoint())});
      outline.push_back(contour);
    }
    return outline;
  }

  static bool Inside(const Geom::Path& glyph, Point p) { return glyph.winding(G(p)) != 0; }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Lib2geom>::Main(argc, argv); }
