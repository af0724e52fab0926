#include "dxf/entities.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "svg/curve_file.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Flags (group 70) of polylines and of their vertices.
constexpr int kClosed = 1;
constexpr int kSpaceLine = 8;
constexpr int kMesh = 16 | 64;
constexpr int kFrameVertex = 16;  // of the control polygon of a curve that has vertices of its own

constexpr int kPeriodic = 2;  // flag of splines

// Of an extrusion direction: what tilts a plane by less is rounding.
constexpr double kTilt = 1e-9;

constexpr int kHighestDegree = 63;  // of splines
constexpr int kHighestFit = 39;     // of those through points

constexpr double kFullTurn = 2 * std::numbers::pi;
constexpr double kFullDegrees = 360;

bool IsFromBelow(const DxfEntity& entity) {
  const double x = entity.Number(210, 0), y = entity.Number(220, 0), z = entity.Number(230, 1);
  const bool is_flat = kTilt * std::fabs(z) >= std::max(std::fabs(x), std::fabs(y));
  if (!is_flat || z == 0) throw ElementError("does not lie in the plane of the drawing");
  return z < 0;
}

// From one angle on to the other, more than 0 and up to a full turn, which is where they are the
// same but for rounding.
double SweepBetween(double from, double to, double full) {
  constexpr double kSameAngle = 1e-10;  // of a turn
  double sweep = std::fmod(to - from, full);
  if (sweep < 0) sweep += full;
  const bool is_full = kSameAngle * full >= sweep || kSameAngle * full >= full - sweep;
  return is_full ? full : sweep;
}

double Radius(const DxfEntity& entity) {
  const double radius = entity.Number(40);
  if (radius < 0) throw ElementError("the radius is negative");
  return radius;
}

void DrawTurn(Point centre, double radius, double from, double to, OutlineBuilder& pen) {
  if (radius == 0) return;
  const double sweep = SweepBetween(from, to, kFullDegrees);
  const bool is_full = sweep == kFullDegrees;
  const Point start = OnCircle(centre, radius, from);
  constexpr double kRadians = std::numbers::pi / 180;
  pen.MoveTo(start);
  pen.ArcTo({centre, {radius, 0}, {0, radius}, from * kRadians, sweep * kRadians},
            is_full ? start : OnCircle(centre, radius, to));
  if (is_full) pen.Close();
}

void DrawLine(const DxfItem& item, Context&, OutlineBuilder& pen) {
  pen.MoveTo(item.entity.At(10));
  pen.LineTo(item.entity.At(11));
}

void DrawCircle(const DxfItem& item, Context&, OutlineBuilder& pen) {
  const Point centre = item.entity.At(10);
  DrawTurn(centre, Radius(item.entity), 0, 0, pen);
}

void DrawArc(const DxfItem& item, Context&, OutlineBuilder& pen) {
  const DxfEntity& arc = item.entity;
  const Point centre = arc.At(10);
  const double radius = Radius(arc), from = arc.Number(50), to = arc.Number(51);
  DrawTurn(centre, radius, from, to, pen);
}

void DrawEllipse(const DxfItem& item, Context&, OutlineBuilder& pen) {
  const DxfEntity& ellipse = item.entity;
  const Point major = ellipse.At(11);
  const double ratio = (IsFromBelow(ellipse) ? -1 : 1) * ellipse.Number(40);
  if (Size(major) == 0 || ratio == 0) return;
  const double from = ellipse.Number(41, 0), to = ellipse.Number(42, kFullTurn);
  const double sweep = SweepBetween(from, to, kFullTurn);
  const bool is_full = sweep == kFullTurn;
  const EllipticalArc arc = {ellipse.At(10), major, ratio * Point{-major.y, major.x}, from, sweep};
  const Point start = arc.At(from);
  pen.MoveTo(start);
  pen.ArcTo(arc, is_full ? start : arc.At(from + sweep));
  if (is_full) pen.Close();
}

struct BulgeVertex {
  Point at;
  double bulge = 0;  // the tangent of a quarter of the sweep to the next vertex
};

// With half the chord c and the bulge b = tan(sweep / 4): the sagitta is b c, the centre lies
// c (1 - b^2) / (2 b) to the left of the middle of the chord.
void DrawBulge(const BulgeVertex& from, Point to, OutlineBuilder& pen) {
  const Point half = 0.5 * (to - from.at);
  const double b = from.bulge;
  const bool is_straight = b == 0 || Size(half) == 0;
  if (is_straight) return pen.LineTo(to);
  const double height = (1 - b) * (1 + b) / (2 * b);
  const Point centre = from.at + half + height * Point{-half.y, half.x};
  const Point u = from.at - centre;
  pen.ArcTo({centre, u, {-u.y, u.x}, 0, 4 * std::atan(b)}, to);
}

void DrawBulges(const std::vector<BulgeVertex>& vertices, bool closed, OutlineBuilder& pen) {
  if (vertices.empty()) return;
  pen.MoveTo(vertices.front().at);
  for (std::size_t i = 1; i < vertices.size(); ++i) DrawBulge(vertices[i - 1], vertices[i].at, pen);
  if (!closed) return;
  if (vertices.back().bulge != 0) DrawBulge(vertices.back(), vertices.front().at, pen);
  pen.Close();
}

void DrawLightPolyline(const DxfItem& item, Context&, OutlineBuilder& pen) {
  std::vector<BulgeVertex> vertices;
  std::size_t ordinates = 0;
  for (const DxfPair& pair : item.entity.Pairs()) {
    if (pair.code == 10) vertices.push_back({{NumberOf(pair), 0}});
    if (vertices.empty()) continue;
    if (pair.code == 20) vertices.back().at.y = NumberOf(pair), ++ordinates;
    if (pair.code == 42) vertices.back().bulge = NumberOf(pair);
  }
  if (ordinates != vertices.size()) throw ElementError("a vertex without two coordinates");
  DrawBulges(vertices, (item.entity.Integer(70, 0) & kClosed) != 0, pen);
}

void DrawPolyline(const DxfItem& item, Context&, OutlineBuilder& pen) {
  std::vector<BulgeVertex> vertices;
  for (const DxfEntity& vertex : item.vertices) {
    if ((vertex.Integer(70, 0) & kFrameVertex) != 0) continue;
    vertices.push_back({vertex.At(10), vertex.Number(42, 0)});
  }
  DrawBulges(vertices, (item.entity.Integer(70, 0) & kClosed) != 0, pen);
}

struct SplineData {
  std::vector<Point> points;
  std::vector<double> weights = {};  // none: all are 1
  std::vector<double> knots;
};

// Without knots: clamped ones, or of a periodic spline even ones with the first points again.
void GiveKnots(std::size_t order, bool periodic, SplineData& spline) {
  if (periodic) {
    for (std::size_t i = 0; i + 1 < order; ++i) {
      spline.points.push_back(spline.points[i]);
      if (!spline.weights.empty()) spline.weights.push_back(spline.weights[i]);
    }
  }
  const std::size_t count = spline.points.size();
  for (std::size_t i = 0; i < count + order; ++i) {
    const std::size_t knot = periodic ? i : std::clamp(i + 1, order, count + 1) - order;
    spline.knots.push_back(static_cast<double>(knot));
  }
}

SplineData ThroughPoints(Context& context, std::vector<Point> points, int degree, bool closed) {
  const auto same = [&](Point p, Point q) { return Same(p, q, context); };
  points.erase(std::unique(points.begin(), points.end(), same), points.end());
  if (closed && points.size() > 1 && !same(points.front(), points.back()))
    points.push_back(points.front());
  if (points.size() < 2) return {};
  const int order = std::min({degree, kHighestFit, static_cast<int>(points.size()) - 1}) + 1;
  const std::optional<Curve> fitted = SplineThrough(context, points, order);
  if (!fitted) throw ElementError("no spline passes through its points");
  const auto knots = fitted->KnotVector();
  return {ControlPointsOf(*fitted), {}, {knots.begin(), knots.end()}};
}

SplineData ReadSpline(Context& context, const DxfEntity& entity) {
  const int degree = entity.Integer(71, 3), flags = entity.Integer(70, 0);
  if (degree < 1 || degree > kHighestDegree)
    throw ElementError("a degree that is not from 1 to " + std::to_string(kHighestDegree));
  SplineData spline = {entity.Points(10), entity.Numbers(41), entity.Numbers(40)};
  const auto order = static_cast<std::size_t>(degree) + 1;
  if (spline.points.empty()) {
    return ThroughPoints(context, entity.Points(11), degree, (flags & (kClosed | kPeriodic)) != 0);
  }
  if (!spline.weights.empty() && spline.weights.size() != spline.points.size())
    throw ElementError("not as many weights as points");
  for (const double weight : spline.weights) {
    if (!(weight > 0)) throw ElementError("a weight that is not positive");
  }
  if (spline.points.size() < order) throw ElementError("fewer control points than the order");
  if (spline.knots.empty()) GiveKnots(order, (flags & kPeriodic) != 0, spline);
  if (spline.knots.size() != spline.points.size() + order)
    throw ElementError("not as many knots as points and order");
  return spline;
}

void DrawSpline(const DxfItem& item, Context& context, OutlineBuilder& pen) {
  const SplineData spline = ReadSpline(context, item.entity);
  if (!spline.points.empty())
    pen.Spline(spline.points, spline.weights, KnotsOver01(spline.knots, spline.points.size()));
}

struct OutlineEntity {
  std::string_view name;
  void (*draw)(const DxfItem&, Context&, OutlineBuilder&);
  bool is_plane;  // in coordinates of its own plane
};

constexpr OutlineEntity kEntities[] = {
    {"LINE", DrawLine, false},       {"ARC", DrawArc, true},
    {"CIRCLE", DrawCircle, true},    {"ELLIPSE", DrawEllipse, false},
    {"SPLINE", DrawSpline, false},   {"LWPOLYLINE", DrawLightPolyline, true},
    {"POLYLINE", DrawPolyline, true}};

const OutlineEntity* Known(std::string_view name) {
  const auto* found = std::find_if(std::begin(kEntities), std::end(kEntities),
                                   [&](const OutlineEntity& known) { return known.name == name; });
  return found == std::end(kEntities) ? nullptr : found;
}

}  // namespace

Point OnCircle(Point centre, double radius, double degrees) {
  return centre + Rotation(degrees).ApplyToVector({radius, 0});
}

bool HasOutlines(const DxfEntity& entity) {
  if (Known(entity.Name()) == nullptr) return false;
  return entity.Name() != "POLYLINE" || (entity.Integer(70, 0) & kMesh) == 0;
}

Affine ExtrusionMap(const DxfEntity& entity) {
  return IsFromBelow(entity) ? Scaling(-1, 1) : Affine{};
}

std::vector<Outline> DrawDxfEntity(Context& context, const DxfItem& item, const Affine& map) {
  const OutlineEntity& known = *Known(item.entity.Name());
  const bool is_space_line =
      item.entity.Name() == "POLYLINE" && (item.entity.Integer(70, 0) & kSpaceLine) != 0;
  const bool is_plane = known.is_plane && !is_space_line;
  OutlineBuilder pen(context, is_plane ? map * ExtrusionMap(item.entity) : map);
  known.draw(item, context, pen);
  return pen.Finish();
}

}  // namespace kurvo::tools
