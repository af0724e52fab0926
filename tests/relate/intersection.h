// What the tests of intersection share: the call, and curves made, moved and reversed by hand.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "support/curve_text.h"
#include "support/oracle.h"

namespace kurvo_test {

constexpr double kPi = std::numbers::pi;
constexpr double kAnswerSeconds = 1.0;  // more than any call may take

struct Hit {
  double a, b;  // parameters on the first and the second curve
};

struct Answer {
  uint32_t result;
  std::vector<Hit> hits;
};

inline Answer Intersect(const Curve& a, const Curve& b, int mode, GlobalVar& g) {
  double stale = 0;
  Parameters on_a, on_b;
  *on_a = *on_b = {7, &stale};
  const Stopwatch watch;
  Answer answer{KurvocrCurveCurve(&a, &b, on_a.get(), on_b.get(), mode, &g), {}};
  EXPECT_LT(watch.Seconds(), kAnswerSeconds);
  EXPECT_EQ(on_a.count(), on_b.count());
  EXPECT_EQ(on_a.count() > 0, answer.result == KURVO_FOUND);
  EXPECT_EQ(on_a->values != nullptr, on_a.count() > 0);
  EXPECT_EQ(on_b->values != nullptr, on_b.count() > 0);
  for (int i = 0; i < std::min(on_a.count(), on_b.count()); ++i)
    answer.hits.push_back({on_a[i], on_b[i]});
  return answer;
}

inline std::string Listed(const std::vector<Hit>& hits) {
  Numbers numbers;
  for (const Hit& hit : hits) numbers.insert(numbers.end(), {hit.a, hit.b});
  return Text(":", numbers);
}

inline bool IsElementary(const Curve& cv) { return cv.type == CV_LINE || cv.type == CV_ARC; }

// The Bezier curve of polynomials in s over [-1, 1], lowest power first; its parameter is
// (s + 1) / 2. Point j holds the blossom at j times 1 and n - j times -1: of s^i that is the
// coefficient of z^i in (1 + z)^j (1 - z)^(n - j), divided by C(n, i).
inline std::string Poly(Numbers x, Numbers y) {
  const std::size_t n = std::max(x.size(), y.size()) - 1;
  x.resize(n + 1);
  y.resize(n + 1);
  Numbers points;
  for (std::size_t j = 0; j <= n; ++j) {
    std::vector<Wide> symmetric(n + 1), binomial(n + 1);
    symmetric[0] = binomial[0] = 1;
    for (std::size_t k = 0; k < n; ++k)
      for (std::size_t i = n; i > 0; --i) {
        symmetric[i] += (k < j ? 1 : -1) * symmetric[i - 1];
        binomial[i] += binomial[i - 1];
      }
    Wide px = 0, py = 0;
    for (std::size_t i = 0; i <= n; ++i) {
      px += x[i] * symmetric[i] / binomial[i];
      py += y[i] * symmetric[i] / binomial[i];
    }
    points.insert(points.end(), {static_cast<double>(px), static_cast<double>(py)});
  }
  return Text("b", points);
}

// The points of the Bezier curve `text` between two of its parameters as a curve of its own.
inline std::string Part(const std::string& text, double from, double to) {
  const std::vector<WidePoint> whole = Oracle(*Make(text)).Parts()[0].points;
  Numbers points;
  for (std::size_t j = 0; j < whole.size(); ++j) {
    std::vector<WidePoint> work = whole;
    for (std::size_t level = 1; work.size() > 1; work.pop_back(), ++level)
      for (std::size_t i = 0; i + 1 < work.size(); ++i)
        work[i] = Between(work[i], work[i + 1], level <= j ? to : from);
    const auto [px, py, w] = work[0];
    points.insert(points.end(), {static_cast<double>(px / w), static_cast<double>(py / w)});
    if (text[0] == 'r') points.push_back(static_cast<double>(w));
  }
  return Text(text.substr(0, 1), points);
}

// From (0, 0) to (n, 0) at even speed, of degree n and the kind of `letter`; all weights are 2.
inline std::string Even(char letter, int n) {
  std::string text(1, letter), knots = " |";
  for (int i = 0; i <= n; ++i)
    text += Text("", {1. * i, 0}) + (letter == 'r' || letter == 'R' ? " 2" : "");
  for (int i = 0; i <= 2 * n + 1; ++i) knots += i <= n ? " 0" : " 1";
  return letter == 'b' || letter == 'r' ? text : text + knots;
}

struct Similarity {
  double turn = 0, x = 0, y = 0, scale = 1;
  bool mirror = false;

  void operator()(double* p) const {
    const double c = scale * std::cos(turn), s = scale * std::sin(turn);
    const double px = p[0], py = mirror ? -p[1] : p[1];
    p[0] = c * px - s * py + x;
    p[1] = s * px + c * py + y;
  }
};

inline void FlipArcs(const Curve& cv) {
  if (cv.type == CV_ARC) static_cast<KurvoArc*>(cv.data)->normal[2] *= -1;
  if (cv.type != CV_SEGCV) return;
  auto& block = *static_cast<KurvoSegcv*>(cv.data);
  std::for_each(block.curves, block.curves + block.count, FlipArcs);
}

inline void Apply(const Similarity& move, const Curve& cv) {
  ForEachPoint(cv, move, [&](double& radius) { radius *= move.scale; });
  if (move.mirror) FlipArcs(cv);
}

// What was at t is then at start + end - t of the same domain.
inline void Reverse(const Curve& cv) {
  if (cv.type == CV_LINE) {
    auto& line = *static_cast<KurvoLine*>(cv.data);
    std::swap(line.start, line.end);
  } else if (cv.type == CV_ARC) {
    auto& arc = *static_cast<KurvoArc*>(cv.data);
    std::swap(arc.start, arc.end);
    FlipArcs(cv);
  } else if (cv.type == CV_SEGCV) {
    auto& block = *static_cast<KurvoSegcv*>(cv.data);
    std::reverse(block.curves, block.curves + block.count);
    std::reverse(block.widths, block.widths + block.count);
    std::for_each(block.curves, block.curves + block.count, Reverse);
  } else {
    const FreeForm form(cv);
    for (int i = 0, j = form.count - 1; i < j; ++i, --j)
      std::swap_ranges(form.point(i), form.point(i + 1), form.point(j));
    if (!form.knots) return;
    const auto [start, length] = Domain(cv);
    std::reverse(form.knots, form.knots + form.order + form.count);
    for (int i = 0; i < form.order + form.count; ++i)
      form.knots[i] = start + (start + length) - form.knots[i];
  }
}

inline double Mirrored(const Curve& cv, double t) {
  const auto [start, length] = Domain(cv);
  return start + (start + length) - t;
}

// ---- tables with planted answers

struct Case {
  const char* name;
  std::string a, b;
  std::vector<Hit> hits;     // with nothing bounded
  const char* results = "";  // of modes 0 to 3, where the hits do not tell
  double reach = 1e-9;       // of parameters
  bool movable = true;       // false where rounding of moved coordinates decides
};

// Asks in every mode, both ways round, reversed, mirrored, turned and moved far away.
class CaseCheck {
 public:
  explicit CaseCheck(const Case& row) : row_(row) {}

  void Run() {
    const Similarity moves[] = {{}, {.7, 3, -2}, {2.1, -1e4, 7e3, 1, true}};
    for (const Similarity& move : moves) {
      if (&move != moves && !row_.movable) break;
      for (const bool reverse_a : {false, true})
        for (const bool reverse_b : {false, true})
          for (const bool swap : {false, true})
            for (int mode = 0; mode < 4; ++mode)
              if (!Ask(move, reverse_a, reverse_b, swap, mode)) return;
    }
  }

 private:
  // False when the answer is wrong, which is enough for one case.
  bool Ask(const Similarity& move, bool reverse_a, bool reverse_b, bool swap, int mode) {
    Owned a = Make(row_.a), b = Make(row_.b);
    Apply(move, *a.get());
    Apply(move, *b.get());
    if (reverse_a) Reverse(*a.get());
    if (reverse_b) Reverse(*b.get());
    const int asked_mode = swap && (mode == 1 || mode == 2) ? 3 - mode : mode;
    Globals g;
    Answer got = swap ? Intersect(*b, *a, asked_mode, g) : Intersect(*a, *b, mode, g);
    const bool sorted = std::is_sorted(got.hits.begin(), got.hits.end(),
                                       [](const Hit& p, const Hit& q) { return p.a < q.a; });
    for (Hit& hit : got.hits) {
      if (swap) std::swap(hit.a, hit.b);
      if (reverse_a) hit.a = Mirrored(*a, hit.a);
      if (reverse_b) hit.b = Mirrored(*b, hit.b);
    }
    Answer want = Expected(*a, *b, mode);
    const bool same = KurvoErrGet(&g) == 0 &&
                      (sorted || (a->type == CV_ARC && b->type == CV_ARC)) &&
                      got.result == want.result && SameHits(got.hits, want.hits, *a, *b);
    EXPECT_TRUE(same) << row_.name << ", mode " << mode << (swap ? ", swapped" : "")
                      << (reverse_a ? ", first reversed" : "")
                      << (reverse_b ? ", second reversed" : "") << ", at " << move.x << '\n'
                      << row_.a << '\n'
                      << row_.b << "\ngot " << got.result << Listed(got.hits) << "\nwant "
                      << want.result << Listed(want.hits);
    return same;
  }

  Answer Expected(const Curve& a, const Curve& b, int mode) const {
    Answer want{KURVO_NOTHING, {}};
    if (*row_.results) {
      want.result = static_cast<uint32_t>(row_.results[mode] - '0');
      if (want.result != KURVO_FOUND) return want;
    }
    const auto inside = [](const Curve& cv, double t) {
      const auto [start, length] = Domain(cv);
      return t >= start - 1e-6 && t <= start + length + 1e-6;
    };
    for (const Hit& hit : row_.hits) {
      if ((mode == 1 || mode == 3) && !inside(a, hit.a)) continue;
      if ((mode == 2 || mode == 3) && !inside(b, hit.b)) continue;
      want.hits.push_back(hit);
    }
    if (!want.hits.empty()) want.result = KURVO_FOUND;
    return want;
  }

  // In any order.
  bool SameHits(std::vector<Hit> got, const std::vector<Hit>& want, const Curve& a,
                const Curve& b) const {
    const auto same = [&](double turn, double s, double t) {
      return row_.reach >= std::fabs(turn > 0 ? std::remainder(s - t, turn) : s - t);
    };
    const double turn_a = Turn(a), turn_b = Turn(b);
    for (const Hit& hit : want) {
      const auto at = std::find_if(got.begin(), got.end(), [&](const Hit& h) {
        return same(turn_a, h.a, hit.a) && same(turn_b, h.b, hit.b);
      });
      if (at == got.end()) return false;
      got.erase(at);
    }
    return got.empty();
  }

  // After which the parameters of an arc and of a closed curve stand for the same points again.
  static double Turn(const Curve& cv) {
    const Oracle oracle(cv);
    if (cv.type == CV_ARC) return 2 * kPi / std::fabs(static_cast<double>(oracle.Parts()[0].sweep));
    const double gap = Distance(oracle.PointAt(oracle.start()), oracle.PointAt(oracle.end()));
    return gap < 1e-6 ? Domain(cv).second : 0;
  }

  const Case& row_;
};

}  // namespace kurvo_test
