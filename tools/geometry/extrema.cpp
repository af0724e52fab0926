#include "geometry/extrema.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

// Of the greatest coefficient: what rounding leaves of a coefficient that is 0.
constexpr double kNoise = 1e-13;

constexpr int kMostHalvings = 48;  // for a root: its place is sure to 2^-48 then

constexpr double kSamePlace = 1e-7;  // parameters

// Coefficients in Bernstein form over [0, 1].
using Bernstein = std::vector<double>;

// Farin, Curves and Surfaces for CAGD, 6.2.
Bernstein Product(const Bernstein& a, const Bernstein& b) {
  const auto binomials = [](std::size_t degree) {
    std::vector<double> row = {1};
    for (std::size_t i = 1; i <= degree; ++i)
      row.push_back(row.back() * static_cast<double>(degree + 1 - i) / static_cast<double>(i));
    return row;
  };
  const std::size_t m = a.size() - 1, n = b.size() - 1;
  const std::vector<double> of_a = binomials(m), of_b = binomials(n), of_both = binomials(m + n);
  Bernstein product(m + n + 1);
  for (std::size_t i = 0; i <= m; ++i) {
    for (std::size_t k = 0; k <= n; ++k)
      product[i + k] += of_a[i] * a[i] * of_b[k] * b[k] / of_both[i + k];
  }
  return product;
}

Bernstein Difference(Bernstein a, const Bernstein& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] -= b[i];
  return a;
}

Bernstein Derivative(const Bernstein& a) {
  Bernstein derivative;
  for (std::size_t i = 1; i < a.size(); ++i)
    derivative.push_back(static_cast<double>(a.size() - 1) * (a[i] - a[i - 1]));
  if (derivative.empty()) derivative = {0};
  return derivative;
}

// Finds where a polynomial changes its sign, between the ends.
class SignChanges {
 public:
  static std::vector<double> Of(const Bernstein& polynomial) {
    double greatest = 0;
    for (const double value : polynomial) greatest = std::max(greatest, std::fabs(value));
    Bernstein clear = polynomial;
    for (double& value : clear) {
      if (kNoise * greatest >= std::fabs(value)) value = 0;
    }
    SignChanges search;
    search.Search(clear, 0, 1, 0);
    return std::move(search.found_);
  }

 private:
  // There are no more roots between the ends than coefficients change their sign, and as many or an
  // even number less (Descartes).
  static int Variations(const Bernstein& part) {
    int variations = 0;
    double before = 0;
    for (const double value : part) {
      if ((value > 0 && before < 0) || (value < 0 && before > 0)) ++variations;
      if (value != 0) before = value;
    }
    return variations;
  }

  void Search(const Bernstein& part, double from, double to, int depth) {
    const int variations = Variations(part);
    if (variations == 0) return;
    const double middle = (from + to) / 2;
    if (depth == kMostHalvings) {
      if (variations % 2 == 1) found_.push_back(middle);
      return;
    }
    // De Casteljau.
    Bernstein left, right = part;
    for (std::size_t i = part.size(); i > 0; --i) {
      left.push_back(right[0]);
      for (std::size_t k = 1; k < i; ++k) right[k - 1] = (right[k - 1] + right[k]) / 2;
    }
    Search(left, from, middle, depth + 1);
    const bool is_root =
        left.back() == 0 && (variations - Variations(left) - Variations(right)) % 2 == 1;
    if (is_root) found_.push_back(middle);
    Search(right, middle, to, depth + 1);
  }

  std::vector<double> found_;
};

// The coordinates of a Bezier curve, times its weight.
struct Homogeneous {
  Bernstein x, y, w;
};

template <class Block>
Homogeneous CoordinatesOf(const Block& bezier, bool is_rational) {
  Homogeneous coordinates;
  for (int i = 0; i <= bezier.degree; ++i) {
    const auto& p = bezier.points[i];
    const double weight = is_rational ? p[std::size(p) - 1] : 1;
    coordinates.x.push_back(weight * p[0]);
    coordinates.y.push_back(weight * p[1]);
    coordinates.w.push_back(weight);
  }
  return coordinates;
}

// Where the curve is to be cut, and which way it runs there.
struct CutPlace {
  double parameter;
  bool is_vertical = false;    // farthest in x
  bool is_horizontal = false;  // farthest in y
};

// Of (x / w)' the numerator.
Bernstein Slope(const Bernstein& x, const Bernstein& w) {
  return Difference(Product(Derivative(x), w), Product(x, Derivative(w)));
}

// det (p, p', p''), p = (x, y, w): 0 where a curve has no bend, whatever its weights.
Bernstein Bend(const Homogeneous& p) {
  const Bernstein* const coordinates[] = {&p.x, &p.y, &p.w};
  Bernstein first[3], second[3], bend;
  for (int i = 0; i < 3; ++i) {
    first[i] = Derivative(*coordinates[i]);
    second[i] = Derivative(first[i]);
  }
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3, k = (i + 2) % 3;
    const Bernstein minor = Difference(Product(first[j], second[k]), Product(first[k], second[j]));
    const Bernstein term = Product(*coordinates[i], minor);
    if (bend.empty()) bend.assign(term.size(), 0);
    for (std::size_t n = 0; n < term.size(); ++n) bend[n] += term[n];
  }
  return bend;
}

std::vector<CutPlace> PlacesOf(const Homogeneous& p, CutPlaces wanted) {
  std::vector<CutPlace> places;
  if (wanted.extrema) {
    for (const double t : SignChanges::Of(Slope(p.x, p.w))) places.push_back({t, true, false});
    for (const double t : SignChanges::Of(Slope(p.y, p.w))) places.push_back({t, false, true});
  }
  if (wanted.inflections && p.x.size() > 2) {
    for (const double t : SignChanges::Of(Bend(p))) places.push_back({t});
  }
  return places;
}

// Of a circle the four points on its axes.
std::vector<CutPlace> PlacesOf(Context& context, const Curve& curve) {
  const auto& arc = *curve.As<KurvoArc>();
  std::vector<CutPlace> places;
  for (const Point side : {Point{1, 0}, Point{0, 1}, Point{-1, 0}, Point{0, -1}}) {
    const Point p = Point(Load(arc.centre)) + arc.radius * side;
    if (const auto t = ParameterOf(context, curve, p)) places.push_back({*t});
  }
  return places;
}

std::vector<CutPlace> PlacesOf(Context& context, const Curve& curve, CutPlaces wanted) {
  std::vector<CutPlace> places;
  if (curve.Type() == CV_ARC && wanted.extrema) {
    places = PlacesOf(context, curve);
  } else if (curve.Type() == CV_BEZIER) {
    places = PlacesOf(CoordinatesOf(*curve.As<KurvoBezier>(), false), wanted);
  } else if (curve.Type() == CV_RBEZIER) {
    places = PlacesOf(CoordinatesOf(*curve.As<KurvoRBezier>(), true), wanted);
  }
  std::erase_if(places, [&](const CutPlace& place) {
    const Point p = PositionOf(context, curve, place.parameter);
    return Same(p, StartOf(context, curve), context) || Same(p, EndOf(context, curve), context);
  });
  std::sort(places.begin(), places.end(),
            [](const CutPlace& a, const CutPlace& b) { return a.parameter < b.parameter; });
  const auto is_same = [](const CutPlace& a, const CutPlace& b) {
    return kSamePlace >= std::fabs(a.parameter - b.parameter);
  };
  places.erase(std::unique(places.begin(), places.end(), is_same), places.end());
  return places;
}

// The part between two places, with handles along the axes where it is farthest. Only those of
// quadratics and cubics are handles.
Curve WithHandles(Curve part, const CutPlace* from, const CutPlace* to) {
  if (part.Type() != CV_BEZIER) return part;
  std::vector<Point> p = ControlPointsOf(part);
  const auto align = [](const CutPlace* place, const Point& end, Point& handle) {
    if (place != nullptr && place->is_vertical) handle.x = end.x;
    if (place != nullptr && place->is_horizontal) handle.y = end.y;
  };
  if (p.size() < 3 || p.size() > 4) return part;
  align(from, p.front(), p[1]);
  align(to, p.back(), p[p.size() - 2]);
  if (p.size() == 3) return Curve::Bezier({p[0], p[1], p[2]}).value();
  return Curve::Bezier({p[0], p[1], p[2], p[3]}).value();
}

void CutCurve(Context& context, const Curve& curve, CutPlaces wanted, std::vector<Curve>& parts) {
  const bool has_spans = curve.Type() != CV_LINE && curve.Type() != CV_ARC &&
                         curve.Type() != CV_BEZIER && curve.Type() != CV_RBEZIER;
  if (has_spans) {
    const Curve spans = curve.Converted(CV_SEGCV, context).value();
    for (const Curve& span : spans) CutCurve(context, span, wanted, parts);
    return;
  }
  const std::vector<CutPlace> places = PlacesOf(context, curve, wanted);
  std::vector<double> parameters;
  for (const CutPlace& place : places) parameters.push_back(place.parameter);
  Chain pieces = curve.Split(parameters, context).value();
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const CutPlace* from = i > 0 ? &places[i - 1] : nullptr;
    const CutPlace* to = i < places.size() ? &places[i] : nullptr;
    if (!IsPoint(context, pieces[i])) parts.push_back(WithHandles(std::move(pieces[i]), from, to));
  }
}

}  // namespace

Drawing Cut(Context& context, const Drawing& drawing, CutPlaces places, const CurveDone& done) {
  return Remade(drawing, [&](const Outline& outline) {
    std::vector<Curve> parts;
    for (const Curve& curve : outline.curves) {
      CutCurve(context, curve, places, parts);
      done();
    }
    return parts;
  });
}

}  // namespace kurvo::tools
