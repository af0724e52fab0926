// The library's records as C++ values: they free themselves, and errors become exceptions.
#pragma once

#include <kurvo.h>

#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// An error code of the library: a fault of this program or of the machine, not of the input.
class LibraryError : public std::runtime_error {
 public:
  explicit LibraryError(int code);
};

// The tolerances and the error state of one thread.
class Library {
 public:
  Library() { KurvoInitGlobalVar(&state_); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  GlobalVar* State() { return &state_; }
  double Tolerance() const { return GetEpsilon(&state_); }  // length
  // Throws LibraryError when an error is pending.
  void Check() const;

 private:
  GlobalVar state_;
};

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

  const Curve* Get() const { return &curve_; }
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
  // nothing when none in doubles passes through them. Throws LibraryError.
  static std::optional<OwnedCurve> Through(Library& library, const std::vector<Point>& points,
                                           int order);
  static OwnedCurve Copied(Library& library, const OwnedCurve& source);
  // Copies of curves, which need not meet, as one: number i, from 0, has the parameters from i to
  // i + 1. Throws LibraryError.
  static OwnedCurve Composite(Library& library, const std::vector<const OwnedCurve*>& pieces);
  // The same points in a record of another type. Throws LibraryError when there is none.
  static OwnedCurve Converted(Library& library, const OwnedCurve& source, int type);
  // The pieces of a composite, or the spans of a B-spline as Bezier curves.
  static std::vector<OwnedCurve> Pieces(Library& library, const OwnedCurve& source);
  // The parts between the parameters, which ascend from 0 to 1; one that has no length is a point.
  static std::vector<OwnedCurve> Divided(Library& library, const OwnedCurve& source,
                                         std::vector<double> parameters);
  // The pieces of the source `distance` to its left, where y points down. Throws LibraryError.
  static std::vector<OwnedCurve> Offset(Library& library, const OwnedCurve& source, double distance,
                                        double tolerance);

  // Moves it, or mirrors it in the x axis. Both throw LibraryError.
  void Move(Library& library, Point by);
  void TurnOver(Library& library);

  // All curves of a sequence, which is then freed. Throws LibraryError when an error is pending.
  static std::vector<OwnedCurve> TakeAll(Library& library, Cvseq& sequence);

 private:
  // The new data block; throws std::bad_alloc.
  void* Allocate(int type, int size, int count = 0);

  Curve curve_;
};

// Wrappers of the queries; each throws LibraryError.
Point PositionOf(Library& library, const OwnedCurve& curve, double t);
Point StartOf(Library& library, const OwnedCurve& curve);
Point EndOf(Library& library, const OwnedCurve& curve);
int DegreeOf(Library& library, const OwnedCurve& curve);
bool IsPoint(Library& library, const OwnedCurve& curve);
// Whether the points are the same within the length tolerance.
bool AreSame(Library& library, Point p, Point q);
// The parameter of a point that lies on the curve within the length tolerance.
std::optional<double> ParameterOf(Library& library, const OwnedCurve& curve, Point p);

// The derivative of order n.
Point DerivativeOf(Library& library, const OwnedCurve& curve, double t, int n);
// 1 / radius towards the centre of curvature; nothing where the tangent is too short to have one.
std::optional<Point> CurvatureOf(Library& library, const OwnedCurve& curve, double t);

// Where two curves are closest, by a parameter of each.
struct Closest {
  double distance;
  double first;
  double second;
};

Closest ClosestOn(Library& library, const OwnedCurve& first, const OwnedCurve& second);

// "line", "arc", "Bezier", "rational Bezier", "B-spline", "rational B-spline" or "composite".
std::string_view TypeName(int type);

}  // namespace kurvo::tools
