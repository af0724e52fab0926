#include "geometry/library.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <string>

namespace kurvo::tools {
namespace {

void Put(Coord out, Point p) { KurvoclSetCoord(out, p.x, p.y, 0); }

Point Take(const Coord p) { return {p[0], p[1]}; }

}  // namespace

std::string ErrorText(const Error& error) {
  return fmt::format("the library reports error 0x{:06X}{}", static_cast<unsigned>(error.code),
                     error.code == KURVO_ERR_MEMORY ? " (out of memory)" : "");
}

void* OwnedCurve::Allocate(int type, int size, int count) {
  void* block = KurvocvMallocCurve(&curve_, type, size, count);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

OwnedCurve OwnedCurve::Line(Point start, Point end) {
  OwnedCurve curve;
  auto* line = static_cast<KurvoLine*>(curve.Allocate(CV_LINE, 0));
  Put(line->start, start);
  Put(line->end, end);
  return curve;
}

OwnedCurve OwnedCurve::Arc(Point centre, double radius, bool counter_clockwise, Point start,
                           Point end) {
  OwnedCurve curve;
  auto* arc = static_cast<KurvoArc*>(curve.Allocate(CV_ARC, 0));
  arc->radius = radius;
  Put(arc->centre, centre);
  KurvoclSetCoord(arc->normal, 0, 0, counter_clockwise ? 1 : -1);
  Put(arc->start, start);
  Put(arc->end, end);
  return curve;
}

OwnedCurve OwnedCurve::Quadratic(Point p0, Point p1, Point p2) {
  OwnedCurve curve;
  auto* bezier = static_cast<KurvoBezier*>(curve.Allocate(CV_BEZIER, 2));
  Put(bezier->points[0], p0);
  Put(bezier->points[1], p1);
  Put(bezier->points[2], p2);
  return curve;
}

OwnedCurve OwnedCurve::Cubic(Point p0, Point p1, Point p2, Point p3) {
  OwnedCurve curve;
  auto* bezier = static_cast<KurvoBezier*>(curve.Allocate(CV_BEZIER, 3));
  Put(bezier->points[0], p0);
  Put(bezier->points[1], p1);
  Put(bezier->points[2], p2);
  Put(bezier->points[3], p3);
  return curve;
}

OwnedCurve OwnedCurve::RationalQuadratic(Point p0, Point p1, double weight1, Point p2) {
  OwnedCurve curve;
  auto* bezier = static_cast<KurvoRBezier*>(curve.Allocate(CV_RBEZIER, 2));
  KurvoclSetHCoord(bezier->points[0], p0.x, p0.y, 0, 1);
  KurvoclSetHCoord(bezier->points[1], p1.x, p1.y, 0, weight1);
  KurvoclSetHCoord(bezier->points[2], p2.x, p2.y, 0, 1);
  return curve;
}

OwnedCurve OwnedCurve::FreeForm(const std::vector<Point>& points,
                                const std::vector<double>& weights,
                                const std::vector<double>& knots) {
  OwnedCurve curve;
  const int count = static_cast<int>(points.size());
  const auto fill = [&](auto* block) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      auto& p = block->points[i];
      p[0] = points[i].x;
      p[1] = points[i].y;
      p[2] = 0;
      if constexpr (sizeof p > sizeof(Coord)) p[3] = weights[i];
    }
    if constexpr (requires { block->knots; }) std::copy(knots.begin(), knots.end(), block->knots);
  };
  if (knots.empty()) {
    if (weights.empty()) fill(static_cast<KurvoBezier*>(curve.Allocate(CV_BEZIER, count - 1)));
    if (!weights.empty()) fill(static_cast<KurvoRBezier*>(curve.Allocate(CV_RBEZIER, count - 1)));
    return curve;
  }
  const int order = static_cast<int>(knots.size()) - count;
  if (weights.empty()) {
    fill(static_cast<KurvoBSpline*>(curve.Allocate(CV_BSPLINE, order, count)));
  } else {
    fill(static_cast<KurvoRBSpline*>(curve.Allocate(CV_RBSPLINE, order, count)));
  }
  return curve;
}

std::optional<OwnedCurve> OwnedCurve::Through(Context& context, const std::vector<Point>& points,
                                              int order) {
  std::vector<double> coordinates;
  coordinates.reserve(3 * points.size());
  for (const Point p : points) coordinates.insert(coordinates.end(), {p.x, p.y, 0});
  OwnedCurve curve;
  KurvocvGenBspl(coordinates.data(), static_cast<int32_t>(points.size()), order, &curve.curve_,
                 context.Get());
  if (KurvoErrGet(context.Get()) == KURVO_ERR_FIT_POINTS) {
    context.Clear();
    return std::nullopt;
  }
  Check(context);
  return curve;
}

OwnedCurve OwnedCurve::Copied(Context& context, const OwnedCurve& source) {
  OwnedCurve copy;
  KurvocvCopyCurve(source.Get(), &copy.curve_, context.Get());
  Check(context);
  return copy;
}

OwnedCurve OwnedCurve::Composite(Context& context, const std::vector<const OwnedCurve*>& pieces) {
  OwnedCurve curve;
  auto* block = static_cast<KurvoSegcv*>(
      curve.Allocate(CV_SEGCV, static_cast<int>(pieces.size())));  // its pieces are empty so far
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    block->widths[i] = 1;
    KurvocvCopyCurve(pieces[i]->Get(), block->curves + i, context.Get());
    Check(context);
  }
  return curve;
}

OwnedCurve OwnedCurve::Converted(Context& context, const OwnedCurve& source, int type) {
  OwnedCurve curve;
  curve.curve_.type = type;
  const std::uint32_t result = KurvocvConvert(source.Get(), &curve.curve_, context.Get());
  Check(context);
  if (result != KURVO_CONVERTED) throw BadResult(Error{KURVO_ERR_CURVE, "KurvocvConvert"});
  return curve;
}

std::vector<OwnedCurve> OwnedCurve::Pieces(Context& context, const OwnedCurve& source) {
  const OwnedCurve composite = Converted(context, source, CV_SEGCV);
  const auto& block = composite.Block<KurvoSegcv>();
  std::vector<OwnedCurve> pieces(static_cast<std::size_t>(block.count));
  for (std::size_t i = 0; i < pieces.size(); ++i) std::swap(pieces[i].curve_, block.curves[i]);
  return pieces;
}

std::vector<OwnedCurve> OwnedCurve::Divided(Context& context, const OwnedCurve& source,
                                            std::vector<double> parameters) {
  const CvParam list = {static_cast<std::int32_t>(parameters.size()), parameters.data()};
  Cvseq pieces;
  KurvocvNDivide(source.Get(), &list, &pieces, context.Get());
  return TakeAll(context, pieces);
}

std::vector<OwnedCurve> OwnedCurve::Offset(Context& context, const OwnedCurve& source,
                                           double distance, double tolerance) {
  const Coord into_the_picture = {0, 0, -1};
  Cvseq sequence;
  KurvocvOffsetCurve(source.Get(), into_the_picture, distance, tolerance, &sequence, context.Get());
  return TakeAll(context, sequence);
}

void OwnedCurve::Move(Context& context, Point by) {
  const Coord delta = {by.x, by.y, 0};
  KurvocvMove(&curve_, delta, context.Get());
  Check(context);
}

void OwnedCurve::TurnOver(Context& context) {
  const Coord origin = {}, y_axis = {0, 1, 0};
  KurvocvMirror(&curve_, origin, y_axis, context.Get());
  Check(context);
}

std::vector<OwnedCurve> OwnedCurve::TakeAll(Context& context, Cvseq& sequence) {
  std::vector<OwnedCurve> curves(static_cast<std::size_t>(sequence.count));
  for (std::size_t i = 0; i < curves.size(); ++i) std::swap(curves[i].curve_, sequence.curves[i]);
  KurvocvFreeCvseq(&sequence);
  Check(context);
  return curves;
}

Point PositionOf(Context& context, const OwnedCurve& curve, double t) {
  Coord p;
  KurvocvPosition(curve.Get(), t, p, context.Get());
  Check(context);
  return Take(p);
}

Point StartOf(Context& context, const OwnedCurve& curve) {
  Coord p = {0, 0, 0};
  KurvocvStartPoint(curve.Get(), p, context.Get());
  Check(context);
  return Take(p);
}

Point EndOf(Context& context, const OwnedCurve& curve) {
  Coord p = {0, 0, 0};
  KurvocvEndPoint(curve.Get(), p, context.Get());
  Check(context);
  return Take(p);
}

int DegreeOf(Context& context, const OwnedCurve& curve) {
  const int degree = KurvocvDegree(curve.Get(), context.Get());
  Check(context);
  return degree;
}

bool IsPoint(Context& context, const OwnedCurve& curve) {
  Coord p;
  const bool is_point = KurvocvDegenerate(curve.Get(), p, context.Get()) == 1;
  Check(context);
  return is_point;
}

bool AreSame(Context& context, Point p, Point q) {
  Coord a, b;
  Put(a, p);
  Put(b, q);
  return KurvoclSameCoord(a, b, context.Get()) == 1;
}

std::optional<double> ParameterOf(Context& context, const OwnedCurve& curve, Point p) {
  Coord point;
  Put(point, p);
  double t = 0;
  const int result = KurvocvParameter(curve.Get(), point, &t, context.Get());
  Check(context);
  if (result != KURVO_ON_CURVE) return std::nullopt;
  return t;
}

Point DerivativeOf(Context& context, const OwnedCurve& curve, double t, int n) {
  Coord v = {0, 0, 0};
  KurvocvNDeriv(curve.Get(), t, v, n, context.Get());
  Check(context);
  return Take(v);
}

std::optional<Point> CurvatureOf(Context& context, const OwnedCurve& curve, double t) {
  Coord v = {0, 0, 0};
  KurvocvCurvature(curve.Get(), t, v, context.Get());
  if (KurvoErrGet(context.Get()) == KURVO_ERR_SHORT_TANGENT) {
    context.Clear();
    return std::nullopt;
  }
  Check(context);
  return Take(v);
}

Closest ClosestOn(Context& context, const OwnedCurve& first, const OwnedCurve& second) {
  Closest closest = {0, 0, 0};
  closest.distance =
      KurvocvDistCurve(first.Get(), second.Get(), &closest.first, &closest.second, context.Get());
  Check(context);
  return closest;
}

std::string_view TypeName(int type) {
  switch (type) {
    case CV_LINE:
      return "line";
    case CV_ARC:
      return "arc";
    case CV_BEZIER:
      return "Bezier";
    case CV_RBEZIER:
      return "rational Bezier";
    case CV_BSPLINE:
      return "B-spline";
    case CV_RBSPLINE:
      return "rational B-spline";
    default:
      return "composite";
  }
}

}  // namespace kurvo::tools
