// Open CASCADE Technology, by the classes of its geometry in the plane.
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepLib.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <Geom2dAPI_InterCurveCurve.hxx>
#include <Geom2dAPI_ProjectPointOnCurve.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <Geom2dConvert_ApproxCurve.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_BezierCurve.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_OffsetCurve.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <Geom_Plane.hxx>
#include <Standard_Failure.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Ax22d.hxx>
#include <gp_Pln.hxx>
#include <memory>
#include <utility>

#include "driver.h"

namespace {

using peers::Common;
using peers::Point;

gp_Pnt2d G(Point p) { return {p.x, p.y}; }
Point P(const gp_Pnt2d& p) { return {p.X(), p.Y()}; }

TColgp_Array1OfPnt2d Poles(const std::vector<Point>& points) {
  TColgp_Array1OfPnt2d poles(1, static_cast<int>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i)
    poles.SetValue(static_cast<int>(i) + 1, G(points[i]));
  return poles;
}

using CurveHandle = Handle(Geom2d_Curve);

// Curves of kinds that the driver tells apart.
struct Line {
  CurveHandle curve;
};
struct Arc {
  CurveHandle curve;
};
struct Bezier {
  Handle(Geom2d_BezierCurve) curve;
  Geom2dAdaptor_Curve adaptor;
};
struct Spline {
  Handle(Geom2d_BSplineCurve) curve;
  Geom2dAdaptor_Curve adaptor;
};

struct Region {
  TopoDS_Face face;
  std::unique_ptr<BRepTopAdaptor_FClass2d> classifier;
};

// A parameter as a share of the curve's own range.
double Share(const CurveHandle& curve, double u) {
  const double first = curve->FirstParameter();
  return (u - first) / (curve->LastParameter() - first);
}
double Own(const CurveHandle& curve, double t) {
  const double first = curve->FirstParameter();
  return first + t * (curve->LastParameter() - first);
}

template <class Curve>
std::pair<Curve, Curve> Halves(const Curve& curve, double t) {
  Curve first = Curve::DownCast(curve->Copy()), second = Curve::DownCast(curve->Copy());
  first->Segment(0.0, t);
  second->Segment(t, 1.0);
  return {first, second};
}

class Occt {
 public:
  static constexpr const char* kName = "occt";

  static Line MakeLine(const peers::Segment& s) {
    const gp_Vec2d along(G(s.start), G(s.end));
    const Handle(Geom2d_Line) line = new Geom2d_Line(G(s.start), gp_Dir2d(along));
    return {new Geom2d_TrimmedCurve(line, 0.0, along.Magnitude())};
  }
  static Arc MakeArc(const peers::Arc& a) {
    const gp_Ax22d axes(G(a.centre), gp_Dir2d(1, 0), gp_Dir2d(0, 1));
    const Handle(Geom2d_Circle) circle = new Geom2d_Circle(axes, a.radius);
    return {new Geom2d_TrimmedCurve(circle, a.from, a.from + a.sweep)};
  }
  static Bezier MakeCubic(const peers::Bezier& b) {
    const Handle(Geom2d_BezierCurve) curve = new Geom2d_BezierCurve(Poles(b));
    return {curve, Geom2dAdaptor_Curve(curve)};
  }
  static Bezier MakeQuadratic(const peers::Bezier& b) { return MakeCubic(b); }
  static Spline MakeSpline(const peers::Spline& s) {
    const int count = static_cast<int>(s.points.size());
    TColStd_Array1OfReal knots(1, count - 2);
    TColStd_Array1OfInteger times(1, count - 2);
    for (int i = 1; i <= count - 2; ++i) {
      knots.SetValue(i, s.knots[static_cast<std::size_t>(i) + 2]);
      times.SetValue(i, i == 1 || i == count - 2 ? 4 : 1);
    }
    const Handle(Geom2d_BSplineCurve) curve =
        new Geom2d_BSplineCurve(Poles(s.points), knots, times, 3);
    return {curve, Geom2dAdaptor_Curve(curve)};
  }
  static Region MakeGlyph(const peers::Glyph& glyph) {
    const Handle(Geom_Plane) plane = new Geom_Plane(gp_Pln());
    BRepBuilderAPI_MakeWire wire;
    for (const peers::Bezier& b : glyph)
      wire.Add(BRepBuilderAPI_MakeEdge(MakeQuadratic(b).curve, plane).Edge());
    BRepLib::BuildCurves3d(wire.Wire());
    const TopoDS_Face face = BRepBuilderAPI_MakeFace(gp_Pln(), wire.Wire(), true).Face();
    return {face, std::make_unique<BRepTopAdaptor_FClass2d>(face, peers::kTolerance)};
  }

  // Of the curve without its ends, which are looked at here.
  template <class Curve>
  static double NearestOf(const Curve& curve, Point p) {
    const gp_Pnt2d point = G(p);
    const double at_start = point.SquareDistance(curve->StartPoint());
    const double at_end = point.SquareDistance(curve->EndPoint());
    const double end = at_start <= at_end ? 0.0 : 1.0;
    const Geom2dAPI_ProjectPointOnCurve feet(point, curve);
    if (feet.NbPoints() == 0) return end;
    const double distance = feet.LowerDistance();
    return distance * distance <= std::min(at_start, at_end) ? feet.LowerDistanceParameter() : end;
  }
  static double Nearest(const Bezier& b, Point p) { return NearestOf(b.curve, p); }
  static double Nearest(const Spline& s, Point p) { return NearestOf(s.curve, p); }

  template <class A, class B>
  static Geom2dAPI_InterCurveCurve Intersect(const A& a, const B& b) {
    return Geom2dAPI_InterCurveCurve(a.curve, b.curve, peers::kTolerance);
  }
  template <class A, class B>
  static std::vector<Common> ReadCommon(const A& a, const B& b,
                                        const Geom2dAPI_InterCurveCurve& found) {
    std::vector<Common> common;
    for (int i = 1; i <= found.NbPoints(); ++i) {
      const IntRes2d_IntersectionPoint& x = found.Intersector().Point(i);
      common.push_back({Share(a.curve, x.ParamOnFirst()), Share(b.curve, x.ParamOnSecond())});
    }
    return common;
  }

  static double Length(const Bezier& b, double tolerance) {
    return GCPnts_AbscissaPoint::Length(b.adaptor, tolerance);
  }
  static double Length(const Spline& s, double tolerance) {
    return GCPnts_AbscissaPoint::Length(s.adaptor, tolerance);
  }

  static Point Position(const Line& line, double t) {
    return P(line.curve->Value(Own(line.curve, t)));
  }
  static Point Position(const Arc& arc, double t) { return P(arc.curve->Value(Own(arc.curve, t))); }
  static Point Position(const Bezier& b, double t) { return P(b.curve->Value(t)); }
  static Point Derivative(const Bezier& b, double t) {
    gp_Pnt2d p;
    gp_Vec2d d;
    b.curve->D1(t, p, d);
    return {d.X(), d.Y()};
  }

  static auto Split(const Bezier& b, double t) { return Halves(b.curve, t); }
  static auto Split(const Spline& s, double t) { return Halves(s.curve, t); }
  template <class Curve>
  static Point SampleHalf(const std::pair<Curve, Curve>& halves, int half, double s) {
    const CurveHandle curve(half == 0 ? halves.first : halves.second);
    return P(curve->Value(Own(curve, s)));
  }

  static Handle(Geom2d_BSplineCurve) Offset(const Bezier& b, double distance, double tolerance) {
    constexpr int kPieces = 1000, kDegree = 8;
    const Handle(Geom2d_OffsetCurve) offset = new Geom2d_OffsetCurve(b.curve, -distance);
    const Geom2dConvert_ApproxCurve fit(offset, tolerance, GeomAbs_C1, kPieces, kDegree);
    return fit.HasResult() ? fit.Curve() : Handle(Geom2d_BSplineCurve)();
  }
  static std::vector<Point> SampleOffset(const Handle(Geom2d_BSplineCurve) & curve) {
    std::vector<Point> samples;
    if (curve.IsNull()) return samples;
    for (int k = 1; k < curve->NbKnots(); ++k)
      for (int i = 0; i <= 32; ++i) {
        const double u = curve->Knot(k), v = curve->Knot(k + 1);
        samples.push_back(P(curve->Value(u + (v - u) * i / 32.0)));
      }
    return samples;
  }

  static bool Inside(const Region& region, Point p) {
    return region.classifier->Perform(G(p)) == TopAbs_IN;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Occt>::Main(argc, argv); }
