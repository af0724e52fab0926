#include <algorithm>
#include <array>
#include <cmath>

#include "chain/foot.h"
#include "strand/arc_sweep.h"
#include "strand/bernstein.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

constexpr int kMostHalvings = 40;      // of a span: then its parts are points
constexpr int kMostPieces = 4096;      // looked at in one span; only hostile ones need so many
constexpr int kMostSteps = 64;         // of the root finder: bisection alone needs no more
constexpr double kLastStep = 0x1p-27;  // Newton's next step is about its square
// A part is a point, or an arc around q, when its squared distances differ by no more.
constexpr double kFlatShare = 0x1p-46;
constexpr double kFlatSquare = 0x1p-100;

void SearchLine(const Span& line, std::size_t number, Vec2 q, Feet& feet) {
  const Vec2 along = line.points[1] - line.points[0];
  const double squared = SquaredLength(along);
  const double u = squared > 0 ? Dot(q - line.points[0], along) / squared : 0;
  const double at = std::clamp(u, 0.0, 1.0);
  feet.Consider(line, number, at, SquaredLength(PointAt(line, at) - q));
}

// Where the ray from the centre through q leaves, and the ends.
void SearchArc(const Span& arc, std::size_t number, Vec2 q, Feet& feet) {
  const auto consider = [&](double u) {
    feet.Consider(arc, number, u, SquaredLength(PointAt(arc, u) - q));
  };
  consider(0);
  consider(1);
  const Vec2 out = q - arc.centre;
  double turn = std::remainder(std::atan2(out.y, out.x) - arc.angle, kTurn);
  if (arc.sweep < 0) turn = -turn;
  if (turn < 0) turn += kTurn;
  const double sweep = std::fabs(arc.sweep);
  if (turn < sweep) consider(turn / sweep);
}

// Row n of Pascal's triangle.
template <std::size_t kCount>
constexpr std::array<double, kCount> Binomials(int n) {
  std::array<double, kCount> row{};
  row[0] = 1;
  for (int k = 1; k <= n; ++k) {
    const auto at = static_cast<std::size_t>(k);
    row[at] = row[at - 1] * (n - k + 1) / k;
  }
  return row;
}

// The points of a Bezier span from q, P = W / w over w = 1 or weights > 0. The squared distance is
//
//   D = sum N_k B_k / sum M_k B_k,   N_k = sum W_i.W_j c_ij,  M_k = sum w_i w_j c_ij  over i + j =
//   k
//
// with c_ij = (n over i) (n over j) / (2n over k) and B_k of degree 2n. As the variation of
// rational Bezier functions is no larger than that of their control values (Farin, NURB Curves and
// Surfaces, 1995, section 8.4), D has no value below the least level N_k / M_k, and falls and rises
// as often as the levels do at the most. So parts whose levels are all beyond what is known are
// left out, where they fall and then rise there is one foot, where they rise and then fall the ends
// are nearest, and the others are halved. All is worked out from points about q, which keep their
// digits where the span is near to q.
template <int kDegree, bool kRational>  // degree 0: any
class BezierSearch {
 public:
  BezierSearch(const Span& span, std::size_t number, Vec2 q, Feet& feet)
      : span_(span),
        local_(span),
        number_(number),
        feet_(feet),
        n_(kDegree ? kDegree : span.degree) {
    for (int i = 0; i <= n(); ++i)
      points_[i] = span.points[i] - (kRational ? span.weights[i] : 1.0) * q;
    local_.points = points_;
    if constexpr (kDegree == 0) {
      choose_ = Binomials<kRoom>(n());
      choose_twice_ = Binomials<kLevels>(2 * n());
    }
  }

  void Run() {
    Consider(0, SquaredLength(local_.Start()));
    Consider(1, SquaredLength(local_.End()));
    Piece& whole = pieces_[0];
    whole.from = 0;
    whole.to = 1;
    std::copy(points_, points_ + n() + 1, whole.points);
    if constexpr (kRational) std::copy(span_.weights, span_.weights + n() + 1, whole.weights);
    int count = 1;
    for (int looked_at = 0; count > 0 && looked_at < kMostPieces; ++looked_at)
      if (IsDone(pieces_[count - 1]) || count > kMostHalvings)
        --count;
      else
        Halve(pieces_[count - 1], pieces_[count]), ++count;
  }

 private:
  static constexpr std::size_t kRoom = (kDegree ? kDegree : kMostDegree) + 1;  // for coefficients
  static constexpr std::size_t kLevels = 2 * kRoom - 1;
  static constexpr double kLeastPiece = 0x1p-40;

  struct Piece {
    double from, to;
    Vec2 points[kRoom];
    double weights[kRational ? kRoom : 1];
  };

  int n() const { return kDegree ? kDegree : n_; }
  const auto& choose() const {
    if constexpr (kDegree == 0)
      return choose_;
    else
      return kChoose;
  }

  void Consider(double u, double squared) { feet_.Consider(span_, number_, u, squared); }

  // The levels of a piece; the binomials of degree 2n matter only where nothing divides them out.
  void LevelsOf(const Piece& piece, double* levels) const {
    Vec2 scaled[kRoom];
    for (int i = 0; i <= n(); ++i)
      scaled[i] = choose()[static_cast<std::size_t>(i)] * piece.points[i];
    Products(
        scaled, [](Vec2 a, Vec2 b) { return Dot(a, b); }, levels);
    if constexpr (kRational) {
      double weights[kRoom], squares[kLevels];
      for (int i = 0; i <= n(); ++i)
        weights[i] = choose()[static_cast<std::size_t>(i)] * piece.weights[i];
      Products(
          weights, [](double a, double b) { return a * b; }, squares);
      for (int k = 0; k <= 2 * n(); ++k) levels[k] /= squares[k];
    } else if constexpr (kDegree == 0) {
      for (int k = 0; k <= 2 * n(); ++k) levels[k] /= choose_twice_[static_cast<std::size_t>(k)];
    } else {
      for (int k = 1; k < 2 * kDegree; ++k) levels[k] *= kShares[static_cast<std::size_t>(k)];
    }
  }

  template <class T, class Product>
  void Products(const T* values, const Product& product, double* sums) const {
    std::fill(sums, sums + 2 * n() + 1, 0.0);
    for (int i = 0; i <= n(); ++i) {
      sums[2 * i] += product(values[i], values[i]);
      for (int j = i + 1; j <= n(); ++j) sums[i + j] += 2 * product(values[i], values[j]);
    }
  }

  // Whether all is known of a piece.
  bool IsDone(const Piece& piece) {
    double levels[kLevels];
    LevelsOf(piece, levels);
    const int last = 2 * n();
    double least = levels[0], most = levels[0];
    for (int k = 1; k <= last; ++k) {
      least = std::min(least, levels[k]);
      most = std::max(most, levels[k]);
    }
    if (!(least <= feet_.limit()) || kFlatShare * most + kFlatSquare >= most - least ||
        piece.to - piece.from <= kLeastPiece)
      return true;
    int bottom = 0;
    while (bottom < last && levels[bottom + 1] <= levels[bottom]) ++bottom;
    int top = bottom;
    while (top < last && levels[top + 1] >= levels[top]) ++top;
    if (top == last) {
      if (bottom > 0 && bottom < last) FindFoot(piece, double(bottom) / last);
      return true;
    }
    if (bottom > 0) return false;
    while (top < last && levels[top + 1] <= levels[top]) ++top;
    return top == last;
  }

  // The second half stays, the first one comes behind it: it is next.
  void Halve(Piece& piece, Piece& first) {
    SplitBernstein(piece.points, n(), 0.5, first.points, piece.points);
    double weight = 1;
    if constexpr (kRational) {
      SplitBernstein(piece.weights, n(), 0.5, first.weights, piece.weights);
      weight = piece.weights[0];
    }
    const double middle = 0.5 * (piece.from + piece.to);
    first.from = piece.from;
    first.to = piece.from = middle;
    Consider(middle, SquaredLength(piece.points[0]) / (weight * weight));
  }

  Jet JetOf(double u) const {
    if constexpr (kRational || kDegree != 3) {
      return JetAt(local_, u);
    } else {
      const Vec2 a = Mix(points_[0], points_[1], u), b = Mix(points_[1], points_[2], u),
                 c = Mix(points_[2], points_[3], u);
      const Vec2 d = Mix(a, b, u), e = Mix(b, c, u);
      return {Mix(d, e, u), 3 * (e - d), 6 * ((c - b) - (b - a))};
    }
  }

  // Newton's method on P.P' between the ends of a piece in which it changes its sign once, with
  // bisection where that does not halve the steps (Press et al., Numerical Recipes, section 9.4).
  void FindFoot(const Piece& piece, double guess) {
    double low = piece.from, high = piece.to;
    double u = low + guess * (high - low), before = high - low;
    for (int i = 0; i < kMostSteps; ++i) {
      const Jet jet = JetOf(u);
      const double slope = Dot(jet.point, jet.first);
      const double bend = SquaredLength(jet.first) + Dot(jet.point, jet.second);
      (slope < 0 ? low : high) = u;
      double next = u - slope / bend;
      if (!(next >= low && next <= high && std::fabs(next - u) <= 0.5 * before))
        next = 0.5 * (low + high);
      before = std::fabs(next - u);
      u = next;
      if (before <= kLastStep) break;
    }
    Consider(u, SquaredLength(PointAt(local_, u)));
  }

  static constexpr auto kChoose = Binomials<kDegree + 1>(kDegree);
  static constexpr auto kShares = [] {
    auto row = Binomials<2 * kDegree + 1>(2 * kDegree);
    for (double& share : row) share = 1 / share;
    return row;
  }();

  const Span& span_;
  Span local_;  // the span about q
  const std::size_t number_;
  Feet& feet_;
  const int n_;
  Vec2 points_[kRoom];
  std::array<double, kRoom> choose_;          // of any degree: n over i
  std::array<double, kLevels> choose_twice_;  // and 2n over k
  Piece pieces_[kMostHalvings + 1];
};

// One frame on the stack for each kind: those of high degree are large.
template <int kDegree, bool kRational>
[[gnu::noinline]] void SearchBezier(const Span& span, std::size_t number, Vec2 q, Feet& feet) {
  BezierSearch<kDegree, kRational>(span, number, q, feet).Run();
}

}  // namespace

void SearchSpan(const Span& span, std::size_t number, Vec2 q, Feet& feet) {
  switch (span.kind) {
    case Span::Kind::kLine:
      return SearchLine(span, number, q, feet);
    case Span::Kind::kArc:
      return SearchArc(span, number, q, feet);
    case Span::Kind::kBezier:
      if (span.degree == 2) return SearchBezier<2, false>(span, number, q, feet);
      if (span.degree == 3) return SearchBezier<3, false>(span, number, q, feet);
      return SearchBezier<0, false>(span, number, q, feet);
    default:
      if (span.degree == 2) return SearchBezier<2, true>(span, number, q, feet);
      return SearchBezier<0, true>(span, number, q, feet);
  }
}

}  // namespace kurvo::outline
