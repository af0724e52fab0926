// The control points of a B-spline that passes through given points.
#include "build/interpolate_solve.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>

#include "eval/basis_polynomials.h"
#include "foundation/clamped_size.h"
#include "foundation/new_array.h"
#include "foundation/parallel_for.h"
#include "foundation/point.h"

namespace kurvo {
namespace {

// From how many products on, order * order a row, basis values are worth other threads.
constexpr std::ptrdiff_t kManyProducts = 2000000;

// The collocation matrix, entry (i, j) the basis function j at t[i], is totally positive, so that
// elimination without pivoting is stable (de Boor and Pinkus, Numerische Mathematik 27, 1977). With
// averaged knots of degree p the span s of an inner t[i] has i < s < i + p: what is not 0 lies in
// the columns s - p to s, fewer than p away from the diagonal, and elimination fills nothing in
// outside them.
//
// Crout's form: of each eliminated row, divided by its pivot, the entries right of the diagonal are
// kept, and the right-hand side. Order is a number or, for loops that the compiler unrolls, an
// integral constant.
template <class Order>
class Elimination {
 public:
  Elimination(Order order, const KnotVector& knots, const double* t, const double* points,
              double scale)
      : order_(order),
        knots_(knots),
        last_(knots.count - 1),
        t_(t),
        points_(points),
        scale_(scale),
        storage_(NewArray<double>(StorageSize(knots.count))),
        rows_(storage_.get() + Offset(p() - 1)),
        band_(kFixedLength ? nullptr
                           : std::make_unique<double[]>(2 * static_cast<std::size_t>(order))) {
    std::fill(storage_.get(), rows_ + order, 0.0);
  }

  // False for a pivot that is not positive.
  bool Eliminate() {
    SetRightSide(Row(0), Point(0));  // the ends of the clamped curve: rows of the identity
    // Elimination goes from row to row, but the basis values of each are its own affair.
    const std::ptrdiff_t many = kManyProducts / (order_ * order_);
    const bool ahead = !kFixedLength && RunsParallel(last_ - 1, many);
    if (ahead)
      ParallelFor(last_ - 1, many, [this](std::ptrdiff_t begin, std::ptrdiff_t end) {
        int32_t s = std::max(static_cast<int32_t>(begin), p());
        for (auto i = static_cast<int32_t>(begin) + 1; i <= end; ++i) {
          s = SpanOf(i, s);
          FillBasisOf(i, s, Row(i));
        }
      });
    int32_t s = p();
    for (int32_t i = 1; i < last_; ++i) {
      s = SpanOf(i, s);
      if (!EliminateRow(i, s, ahead)) return false;
    }
    SetRightSide(Row(last_), Point(last_));
    return true;
  }

  // False for a coordinate beyond the limit.
  bool Substitute(double limit, double (*out)[3]) {
    const double unscale = 1.0 / scale_;
    bool within = true;
    for (int32_t i = last_; i >= 0; --i) {
      double* row = Row(i);
      Vec2 x = RightSide(row);
      // From the far end, so that the nearest one, which has only just been found, comes last.
      for (int32_t m = std::min(p() - 1, last_ - i); m >= 1; --m)
        x = x - row[m - 1] * RightSide(Row(i + m));
      SetRightSide(row, x);
      within = within && limit >= std::fabs(x.x) && limit >= std::fabs(x.y);
      Store(OnPlane(unscale * x), out[i]);
    }
    return within;
  }

 private:
  // Elimination over all rows of the band, zeros included: loops of fixed length are faster.
  static constexpr bool kFixedLength = !std::is_same_v<Order, int32_t>;
  static constexpr std::size_t kLocalBand = [] {
    if constexpr (kFixedLength)
      return std::size_t{2 * Order::value};
    else
      return std::size_t{1};
  }();

  int32_t p() const { return order_ - 1; }  // degree
  // A row for each of `count` points, and the p - 1 rows of zeros before them.
  std::size_t StorageSize(int32_t count) const {
    const auto rows = static_cast<std::size_t>(count) + static_cast<std::size_t>(order_) - 2;
    return (ClampedSize(rows) * static_cast<std::size_t>(order_)).value();
  }
  std::ptrdiff_t Offset(int32_t i) const { return static_cast<std::ptrdiff_t>(order_) * i; }
  // p - 1 entries right of the diagonal, then the right-hand side.
  double* Row(int32_t i) { return rows_ + Offset(i); }
  Vec2 RightSide(const double* row) const { return {row[p() - 1], row[p()]}; }
  void SetRightSide(double* row, Vec2 value) const {
    row[p() - 1] = value.x;
    row[p()] = value.y;
  }
  Vec2 Point(int32_t i) const {
    return scale_ * Planar(points_ + 3 * static_cast<std::ptrdiff_t>(i));
  }

  // The span of parameter i; `s` is that of an earlier one, or p, or any up to i.
  int32_t SpanOf(int32_t i, int32_t s) const {
    while (s < last_ && t_[i] >= knots_.u[s + 1]) ++s;
    // Rounding may put a parameter on the wrong side of a knot.
    return std::clamp(s, std::max(i + 1, p()), std::min(i + p() - 1, last_));
  }

  // The basis values of row i, whose parameter lies on span s.
  void FillBasisOf(int32_t i, int32_t s, double* out) const {
    const BasisValues basis(knots_, s, t_[i]);
    for (int32_t j = 0; j <= p(); ++j) out[j] = basis[j];
  }

  // Row i, whose parameter lies on span s; its basis values lie in it when they were found ahead.
  bool EliminateRow(int32_t i, int32_t s, bool ahead) {
    double local[kLocalBand];  // in registers, where the order is fixed
    double* band = kFixedLength ? local : band_.get();
    const int32_t first = s - i - 1;
    FillBand(i, s, ahead, first, band);
    Vec2 right = Point(i);
    for (int32_t q = kFixedLength ? 0 : first; q < p() - 1; ++q) {
      const double* above = Row(i - p() + 1 + q);
      const double factor = band[q];
      for (int32_t m = 1; m < p(); ++m) band[q + m] -= factor * above[m - 1];
      right = right - factor * RightSide(above);
    }
    const double pivot = band[p() - 1];
    if (!(pivot > 0.0)) return false;
    const double inverse = 1.0 / pivot;
    double* row = Row(i);
    for (int32_t m = 1; m < p(); ++m) row[m - 1] = band[p() - 1 + m] * inverse;
    SetRightSide(row, inverse * right);
    return true;
  }

  // Place q of the band is the column q places after that p - 1 left of the diagonal; the basis
  // values of span s begin at place `first`.
  void FillBand(int32_t i, int32_t s, bool ahead, int32_t first, double* band) {
    if constexpr (kFixedLength) {
      double left[Order()], right[Order()];
      FillBasis(order_, knots_.u + s, t_[i], band, left, right);
      std::fill_n(band + order_, p() - 2, 0.0);
      for (int32_t shift = 0; shift < p() - 2; ++shift) {
        const bool stays = shift >= first;
        for (int32_t q = 2 * p() - 2; q > 0; --q) band[q] = stays ? band[q] : band[q - 1];
        band[0] = stays ? band[0] : 0.0;
      }
    } else {
      std::fill_n(band, 2 * p() - 1, 0.0);
      if (ahead)
        std::copy_n(Row(i), order_, band + first);
      else
        FillBasisOf(i, s, band + first);
    }
  }

  const Order order_;
  const KnotVector& knots_;
  const int32_t last_;
  const double* const t_;
  const double* const points_;
  const double scale_;
  const std::unique_ptr<double[]> storage_;
  double* const rows_;  // row 0; p - 1 rows of zeros lie before it
  const std::unique_ptr<double[]> band_;
};

}  // namespace

bool SolveInterpolation(const KnotVector& knots, const double* t, const double* points,
                        double scale, double limit, double (*out)[3]) {
  return WithOrder(knots.order, [&](auto order) {
    Elimination<decltype(order)> elimination(order, knots, t, points, scale);
    return elimination.Eliminate() && elimination.Substitute(limit, out);
  });
}

}  // namespace kurvo
