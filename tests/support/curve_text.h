// Curves written down in one line each, and looked at as numbers.
//   l x y x y         line                      b x y ...             Bezier
//   a x y r a s       arc from angle a by s     r x y w ...           rational Bezier
//   e                 line without data         B x y ... | knots     B-spline
//   c widths (..)..   composite of the curves   R x y w ... | knots   rational B-spline
//   deep n            n composites of one piece, one in the other, around a line
//   b^n, r^n, ..      some curve of degree n of that free-form kind
#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "support/basics.h"
#include "support/owned.h"

namespace kurvo_test {

using Numbers = std::vector<double>;

constexpr int32_t kAllTypes[] = {CV_LINE,    CV_ARC,      CV_BEZIER, CV_RBEZIER,
                                 CV_BSPLINE, CV_RBSPLINE, CV_SEGCV};
inline bool IsRational(int32_t type) { return type == CV_RBEZIER || type == CV_RBSPLINE; }
inline bool IsSpline(int32_t type) { return type == CV_BSPLINE || type == CV_RBSPLINE; }

// ---- From text and from numbers ----

Owned Make(const std::string& text);
Owned Make(std::istream& text);
Owned Copy(const Curve& cv);

Owned Line(double x0, double y0, double x1, double y1);
Owned Arc(double x, double y, double r, double angle, double sweep);
// Points are x, y, or x, y, weight for rational kinds; knots only for B-splines.
Owned MakeFreeForm(int32_t type, const Numbers& points, const Numbers& knots = {});
Owned MakeComposite(const Numbers& widths, std::vector<Owned>&& pieces);

// "head n n n", of numbers that are read again to the bit.
std::string Text(const std::string& head, const Numbers& numbers);

// ---- To numbers ----

// The arrays of a free-form curve, whose four blocks begin alike.
struct FreeForm {
  explicit FreeForm(const Curve& cv);
  double* point(int i) const { return points + i * stride; }

  int32_t order, count;  // count of points
  double* points;
  double* knots;  // null for Bezier curves
  int stride;
};

inline int SplineCount(const Curve& cv) { return FreeForm(cv).count; }
Numbers Knots(const Curve& cv);
Numbers ControlPoints(const Curve& cv);  // as they are stored, x, y, z and weight

// All numbers that a curve is made of, radii, normals, weights, knots and widths among them.
Numbers AllNumbers(const Curve& cv);
double LargestGap(const Numbers& a, const Numbers& b);

// The same type and structure, and numbers within `bound`.
testing::AssertionResult IsCurve(const Curve& cv, const Curve& want, double bound = 0);
testing::AssertionResult IsCurve(const Curve& cv, const std::string& want, double bound = 0);

// Calls use(x, y, z) for all points that a curve is defined by, and use_radius for those of arcs.
template <class Use, class UseRadius>
void ForEachPoint(const Curve& cv, const Use& use, const UseRadius& use_radius) {
  if (cv.type == CV_LINE) {
    auto& line = *static_cast<KurvoLine*>(cv.data);
    for (double* p : {line.start, line.end}) use(p);
  } else if (cv.type == CV_ARC) {
    auto& arc = *static_cast<KurvoArc*>(cv.data);
    for (double* p : {arc.centre, arc.start, arc.end}) use(p);
    use_radius(arc.radius);
  } else if (cv.type == CV_SEGCV) {
    auto& block = *static_cast<KurvoSegcv*>(cv.data);
    for (int i = 0; i < block.count; ++i) ForEachPoint(block.curves[i], use, use_radius);
  } else {
    const FreeForm form(cv);
    for (int i = 0; i < form.count; ++i) use(form.point(i));
  }
}

// ---- As the library sees it ----

// The start and the length of the domain.
std::pair<double, double> Domain(const Curve& cv);
Point At(const Curve& cv, double t);              // its own parameter
Point PointAt(const Curve& cv, double fraction);  // of the domain

}  // namespace kurvo_test
