// Points of free-form curves by the textbook recursion in long double, as an independent reference.
#pragma once

#include <cmath>
#include <vector>

#include "build/curves.h"

namespace kurvo_test {

class Reference {
 public:
  explicit Reference(const Curve& cv) {
    const FreeForm form(cv);
    const bool bezier = cv.type == CV_BEZIER || cv.type == CV_RBEZIER;
    const int count = bezier ? form.order : SplineCount(cv);
    order_ = form.order;
    for (int i = 0; i < count; ++i) {
      const double* p = form.points + i * form.stride;
      const long double w = form.stride == 4 ? p[3] : 1.0;
      points_.push_back({w * p[0], w * p[1], w});
    }
    for (int i = 0; i < order_ + count; ++i) knots_.push_back(bezier ? i >= order_ : form.knots[i]);
  }

  double start() const { return knots_[At(order_ - 1)]; }
  double end() const { return knots_[points_.size()]; }

  struct LongPoint {
    long double x, y;
  };

  // The planar distance of p from the point at t.
  long double DistanceAt(long double t, const Point& p) const {
    const LongPoint q = PointAt(t);
    return std::hypot(q.x - L(p[0]), q.y - L(p[1]));
  }

  // The point at t, by de Boor's algorithm on the last span that begins before t.
  LongPoint PointAt(long double t) const {
    const int n = order_ - 1, count = static_cast<int>(points_.size());
    int span = -1;
    for (int i = n; i < count; ++i)
      if (knots_[At(i)] < knots_[At(i + 1)] && (span < 0 || L(knots_[At(i)]) < t)) span = i;
    std::vector<Weighted> d(points_.begin() + span - n, points_.begin() + span + 1);
    for (int level = 1; level <= n; ++level) {
      for (int j = n; j >= level; --j) {
        const long double left = knots_[At(span - n + j)], right = knots_[At(span + j - level + 1)];
        const long double s = (t - left) / (right - left);
        const Weighted &a = d[At(j - 1)], &b = d[At(j)];
        d[At(j)] = {(1 - s) * a.x + s * b.x, (1 - s) * a.y + s * b.y, (1 - s) * a.w + s * b.w};
      }
    }
    const Weighted& q = d.back();
    return {q.x / q.w, q.y / q.w};
  }

 private:
  struct Weighted {
    long double x, y, w;
  };
  static std::size_t At(int i) { return static_cast<std::size_t>(i); }

  int order_;
  std::vector<Weighted> points_;
  Numbers knots_;
};

}  // namespace kurvo_test
