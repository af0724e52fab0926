// Tables of intersections with planted answers.
#pragma once

#include "relate/intersection.h"

namespace kurvo_test {

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
