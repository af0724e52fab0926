#include "chain/duplicates.h"

#include <algorithm>
#include <cmath>

#include "strand/check.h"
#include "strand/grid.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

constexpr double kSameNumber = 0x1p-30;  // of knots, weights and widths, of their range
constexpr int kMostInCell = 64;

class Comparison {
 public:
  Comparison(const Frame& frame, double tol) : frame_(frame), tol_(tol) {}

  bool AreSame(const Curve& a, const Curve& b, bool backwards) const {
    if (a.type != b.type) return false;
    switch (a.type) {
      case CV_LINE: {
        const auto &x = BlockOf<KurvoLine>(a), &y = BlockOf<KurvoLine>(b);
        return SameEnds(x, y, backwards);
      }
      case CV_ARC: {
        const auto &x = BlockOf<KurvoArc>(a), &y = BlockOf<KurvoArc>(b);
        return SameEnds(x, y, backwards) && Same(x.centre, y.centre) &&
               tol_ >= frame_.LengthInwards(std::fabs(x.radius - y.radius)) &&
               ((x.normal[2] < 0) == (y.normal[2] < 0)) != backwards;
      }
      case CV_BEZIER: {
        const auto &x = BlockOf<KurvoBezier>(a), &y = BlockOf<KurvoBezier>(b);
        return x.degree == y.degree && SamePoints(x, y, x.degree + 1, backwards);
      }
      case CV_RBEZIER: {
        const auto &x = BlockOf<KurvoRBezier>(a), &y = BlockOf<KurvoRBezier>(b);
        return x.degree == y.degree && SamePoints(x, y, x.degree + 1, backwards);
      }
      case CV_BSPLINE:
        return SameSplines(BlockOf<KurvoBSpline>(a), BlockOf<KurvoBSpline>(b), backwards);
      case CV_RBSPLINE:
        return SameSplines(BlockOf<KurvoRBSpline>(a), BlockOf<KurvoRBSpline>(b), backwards);
      default:
        return SameComposites(BlockOf<KurvoSegcv>(a), BlockOf<KurvoSegcv>(b), backwards);
    }
  }

 private:
  bool Same(const double* p, const double* q) const {
    return tol_ >= Length(frame_.Inwards(p) - frame_.Inwards(q));
  }

  template <class Record>
  bool SameEnds(const Record& a, const Record& b, bool backwards) const {
    return backwards ? Same(a.start, b.end) && Same(a.end, b.start)
                     : Same(a.start, b.start) && Same(a.end, b.end);
  }

  template <class Record>
  bool SamePoints(const Record& a, const Record& b, int count, bool backwards) const {
    constexpr bool kRational = sizeof a.points[0] == sizeof(HCoord);
    for (int i = 0; i < count; ++i) {
      const auto &p = a.points[i], &q = b.points[backwards ? count - 1 - i : i];
      if (!Same(p, q)) return false;
      if constexpr (kRational) {
        if (!(kSameNumber * std::fabs(p[3]) >= std::fabs(p[3] - q[3]))) return false;
      }
    }
    return true;
  }

  // Domains may differ: knots are compared as shares of them.
  template <class Record>
  bool SameSplines(const Record& a, const Record& b, bool backwards) const {
    if (a.order != b.order || a.count != b.count || !SamePoints(a, b, a.count, backwards))
      return false;
    const int count = a.order + a.count;
    const auto share = [](const Record& spline, int i) {
      const double start = spline.knots[spline.order - 1];
      return (spline.knots[i] - start) / (spline.knots[spline.count] - start);
    };
    for (int i = 0; i < count; ++i) {
      const double other = backwards ? 1 - share(b, count - 1 - i) : share(b, i);
      if (!(kSameNumber >= std::fabs(share(a, i) - other))) return false;
    }
    return true;
  }

  bool SameComposites(const KurvoSegcv& a, const KurvoSegcv& b, bool backwards) const {
    if (a.count != b.count) return false;
    for (int i = 0; i < a.count; ++i) {
      const int k = backwards ? a.count - 1 - i : i;
      if (!(kSameNumber >= std::fabs(a.widths[i] - b.widths[k])) ||
          !AreSame(a.curves[i], b.curves[k], backwards))
        return false;
    }
    return true;
  }

  const Frame& frame_;
  const double tol_;
};

}  // namespace

// Curves that are the same have the same middle between their ends.
Array<bool> FindDuplicates(const Curve* curves, int32_t count, const Frame& frame, double tol) {
  const auto size = static_cast<std::size_t>(count);
  Array<Vec2> middles(size, Vec2{0, 0});
  Array<int32_t> numbers;
  for (int32_t i = 0; i < count; ++i) {
    Ends ends;
    if (!EndsOf(curves[i], ends)) continue;
    middles[static_cast<std::size_t>(i)] =
        0.5 * (frame.Inwards(ends.start) + frame.Inwards(ends.end));
    numbers.push_back(i);
  }
  Array<bool> is_duplicate(size, false);
  const Comparison comparison(frame, tol);
  Grid(middles, numbers, tol).ForEachPair(kMostInCell, [&](int32_t i, int32_t k, double) {
    if (is_duplicate[static_cast<std::size_t>(i)] || is_duplicate[static_cast<std::size_t>(k)])
      return;
    is_duplicate[static_cast<std::size_t>(k)] = comparison.AreSame(curves[i], curves[k], false) ||
                                                comparison.AreSame(curves[i], curves[k], true);
  });
  return is_duplicate;
}

}  // namespace kurvo::outline
