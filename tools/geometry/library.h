// Curve records as C++ values: they free themselves, and errors become exceptions.
#pragma once

#include <kurvo.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// The error of the last call in words, for people.
std::string ErrorText(const Error& error);

// Throws BadResult when an error is pending.
inline void Check(const Context& context) {
  if (!context.Ok()) throw BadResult(context.Last());
}

// One curve record and its data block.
class OwnedCurve {
 public:
  OwnedCurve() { KurvocvInitCurve(&curve_); }
  OwnedCurve(OwnedCurve&& other) noexcept : curve_(other.curve_) {
    KurvocvInitCurve(&other.curve_);
  }
  OwnedCurve& operator=(OwnedCurve&& other) noexcept {
    std::swap(curve_, other.curve_);
    return *this;
  }
  ~OwnedCurve() { KurvocvFreeCurve(&curve_); }

  const ::Curve* Get() const { return &curve_; }
  int Type() const { return curve_.type; }
  template <class T>  // KurvoLine ... KurvoSegcv, as fits the type
  const T& Block() const {
    return *static_cast<const T*>(curve_.data);
  }

  static OwnedCurve Line(Point start, Point end);
  static OwnedCurve Arc(Point centre, double radius, bool counter_clockwise, Point start,
                        Point end);
  static OwnedCurve Quadratic(Point p0, Point p1, Point p2);
  static OwnedCurve Cubic(Point p0, Point p1, Point p2, Point p3);
  // Of degree 2, with outer weights 1.
  static OwnedCurve RationalQuadratic(Point p0, Point p1, double weight1, Point p2);
  // A Bezier curve without knots, or else a B-spline; rational where there are weights, one a
  // point.
  static OwnedCurve FreeForm(const std::vector<Point>& points, const std::vector<double>& weights,
                             const std::vector<double>& knots);
  // The spline of this order through at least `order` points, of which no neighbours are the same;
  // nothing when none in doubles passes through them. Throws BadResult.
  static std::optional<OwnedCurve> Through(Context& context, const std::vector<Point>& points,
                                           int order);
  static OwnedCurve Copied(Context& context, const OwnedCurve& source);
  // Copies of curves, which need not meet, as one: number i, from 0, has the parameters from i to
  // i + 1. Throws BadResult.
  static OwnedCurve Composite(Context& context, const std::vector<const OwnedCurve*>& pieces);
  // The same points in a record of another type. Throws BadResult when there is none.
  static OwnedCurve Converted(Context& context, const OwnedCurve& source, int type);
  // The pieces of a composite, or the spans of a B-spline as Bezier curves.
  static std::vector<OwnedCurve> Pieces(Context& context, const OwnedCurve& source);
  // The parts between the parameters, which ascend from 0 to 1; one that has no length is a point.
  static std::vector<OwnedCurve> Divided(Context& context, const OwnedCurve& source,
                                         std::vector<double> parameters);
  // The pieces of the source `distance` to its left, where y points down. Throws BadResult.
  static std::vector<OwnedCurve> Offset(Context& context, const OwnedCurve& source, double distance,
                                        double tolerance);

  // Moves it, or mirrors it in the x axis. Both throw BadResult.
  void Move(Context& context, Point by);
  void TurnOver(Context& context);

  // All curves of a sequence, which is then freed. Throws BadResult when an error is pending.
  static std::vector<OwnedCurve> TakeAll(Context& context, Cvseq& sequence);

 private:
  // The new data block; throws std::bad_alloc.
  void* Allocate(int type, int size, int count = 0);

  ::Curve curve_;
};

// Wrappers of the queries; each throws BadResult.
Point PositionOf(Context& context, const OwnedCurve& curve, double t);
Point StartOf(Context& context, const OwnedCurve& curve);
Point EndOf(Context& context, const OwnedCurve& curve);
int DegreeOf(Context& context, const OwnedCurve& curve);
bool IsPoint(Context& context, const OwnedCurve& curve);
// Whether the points are the same within the length tolerance.
bool AreSame(Context& context, Point p, Point q);
// The parameter of a point that lies on the curve within the length tolerance.
std::optional<double> ParameterOf(Context& context, const OwnedCurve& curve, Point p);

// The derivative of order n.
Point DerivativeOf(Context& context, const OwnedCurve& curve, double t, int n);
// 1 / radius towards the centre of curvature; nothing where the tangent is too short to have one.
std::optional<Point> CurvatureOf(Context& context, const OwnedCurve& curve, double t);

// Where two curves are closest, by a parameter of each.
struct Closest {
  double distance;
  double first;
  double second;
};

Closest ClosestOn(Context& context, const OwnedCurve& first, const OwnedCurve& second);

// "line", "arc", "Bezier", "rational Bezier", "B-spline", "rational B-spline" or "composite".
std::string_view TypeName(int type);

}  // namespace kurvo::tools
