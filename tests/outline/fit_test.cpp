// Fits: as near as asked in both directions, tangents kept, few pieces, and what has the form
// stays.
#include <kurvo_outline.h>

#include <optional>

#include "outline/moved.h"
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

// A chain by dense points, and the distance to the chain itself from the nearest chords on.
class Path {
 public:
  explicit Path(const Chain& chain, int usual = 64) {
    for (const Curve& curve : chain) curves_.emplace_back(curve);
    for (const Oracle& curve : curves_) {
      for (const Oracle::Part& part : curve.Parts()) {
        const int dense = part.points.size() > 2 ? usual : 12;  // arcs and lines need few
        parts_.push_back({&curve, part.start, part.width / dense, {}});
        for (int k = 0; k <= dense; ++k)
          parts_.back().points.push_back(curve.PointAt(part.start + k * parts_.back().step,
                                                       k ? Side::kBefore : Side::kBehind));
      }
    }
  }
  // The farthest that a point of this path is from the other.
  double FarthestFrom(const Path& other) const {
    Wide farthest = 0;
    for (const Part& part : parts_)
      for (const LongPoint& point : part.points) farthest = std::max(farthest, other.To(point));
    return static_cast<double>(farthest);
  }

 private:
  struct Part {
    const Oracle* curve;
    Wide start, step;
    std::vector<LongPoint> points;
  };
  Wide To(const LongPoint& p) const {
    constexpr Wide kChordOff = .03L;  // that chords may be off the curve
    struct Chord {
      const Part* part;
      Wide t, gap;
    };
    std::vector<Chord> chords;
    Wide least = std::numeric_limits<Wide>::infinity();
    for (const Part& part : parts_) {
      for (std::size_t k = 0; k + 1 < part.points.size(); ++k) {
        const LongPoint a = part.points[k], v = part.points[k + 1] - a;
        const Wide square = Dot(v, v), along = square > 0 ? Dot(p - a, v) / square : 0;
        const Wide share = std::clamp(along, Wide{0}, Wide{1});
        const Wide gap = Gap(p - a, share * v);
        least = std::min(least, gap);
        if (gap <= least + kChordOff)
          chords.push_back({&part, part.start + (static_cast<Wide>(k) + share) * part.step, gap});
      }
    }
    Wide best = std::numeric_limits<Wide>::infinity();
    for (const Chord& chord : chords)
      if (chord.gap <= least + kChordOff) best = std::min(best, Improve(*chord.part, chord.t, p));
    return best;
  }
  // By the golden section around there.
  static Wide Improve(const Part& part, Wide t, const LongPoint& p) {
    constexpr Wide kShare = 0.6180339887498948482L;
    Wide low = std::max(part.start, t - part.step);
    Wide high =
        std::min(part.start + static_cast<Wide>(part.points.size() - 1) * part.step, t + part.step);
    const auto gap = [&](Wide at) { return Gap(part.curve->PointAt(at), p); };
    Wide a = high - kShare * (high - low), b = low + kShare * (high - low);
    Wide gap_a = gap(a), gap_b = gap(b);
    for (int i = 0; i < 40; ++i) {
      const bool left = gap_a < gap_b;
      (left ? high : low) = left ? b : a;
      (left ? b : a) = left ? a : b;
      (left ? gap_b : gap_a) = left ? gap_a : gap_b;
      Wide& fresh = left ? a : b;
      fresh = left ? high - kShare * (high - low) : low + kShare * (high - low);
      (left ? gap_a : gap_b) = gap(fresh);
    }
    return std::min(gap_a, gap_b);
  }

  std::vector<Oracle> curves_;
  std::vector<Part> parts_;
};

// In both directions. Chords around a tight bend may hide the nearest point, so what is beyond the
// limit is measured again with more of them.
double FarthestApart(const Chain& a, const Chain& b, double limit) {
  const auto apart = [&](int dense) {
    const Path first(a, dense), second(b, dense);
    return std::max(first.FarthestFrom(second), second.FarthestFrom(first));
  };
  const double farthest = apart(64);
  return limit >= farthest ? farthest : apart(640);
}

struct Fit {
  Fit(const Chain& chain, int form, double deviation, Globals& g) {
    made = KurvoChainFit(chain.get(), form, deviation, out.get(), &g);
  }
  Chain out;
  int made;
};

// The direction at an end, of zero handles too.
LongPoint Direction(const Curve& curve, bool at_end) {
  const Oracle oracle(curve);
  if (curve.type == CV_ARC)
    return Unit(oracle.JetAt<4>(at_end ? oracle.end() : oracle.start()).Derivative(1));
  const auto parts = oracle.Parts();
  std::vector<WidePoint> points = at_end ? parts.back().points : parts.front().points;
  if (at_end) std::reverse(points.begin(), points.end());
  const auto at = [&](std::size_t i) {
    return LongPoint{points[i].x / points[i].w, points[i].y / points[i].w};
  };
  for (std::size_t i = 1; i < points.size(); ++i)
    if (Gap(at(i), at(0)) > 0) return (at_end ? Wide{-1} : Wide{1}) * Unit(at(i) - at(0));
  return {0, 0};
}

// Pieces follow each other to the bit, begin and end where the chain does, have its directions
// there and turn nowhere but where it turns, and are of the form.
void ExpectFormed(const Chain& chain, const Fit& fit, int form, double rounding = 1e-9) {
  const auto ends = [](const Curve& curve) {
    if (curve.type == CV_ARC) {
      const auto& arc = *static_cast<KurvoArc*>(curve.data);
      return std::array{XY{arc.start[0], arc.start[1]}, XY{arc.end[0], arc.end[1]}};
    }
    if (curve.type == CV_LINE) {
      const auto& line = *static_cast<KurvoLine*>(curve.data);
      return std::array{XY{line.start[0], line.start[1]}, XY{line.end[0], line.end[1]}};
    }
    const auto points = ControlPoints(curve);
    return std::array{XY{points[0], points[1]},
                      XY{points[points.size() - 3], points[points.size() - 2]}};
  };
  const auto same = [](XY a, XY b) { return a.x == b.x && a.y == b.y; };
  int corners = 0;
  for (int i = 0; i < fit.out.count(); ++i) {
    const Curve& curve = fit.out[i];
    if (i > 0) {
      EXPECT_TRUE(same(ends(fit.out[i - 1])[1], ends(curve)[0])) << i;
      const LongPoint in = Direction(fit.out[i - 1], true), out = Direction(curve, false);
      corners += !(Dot(in, out) > 0 && static_cast<Wide>(rounding) >= std::fabs(Cross(in, out)));
    }
    if (curve.type == CV_LINE) continue;
    if (form == KURVO_FIT_ARCS) {
      ASSERT_EQ(curve.type, CV_ARC);
      EXPECT_LT(std::fabs(Turn(*static_cast<KurvoArc*>(curve.data)).sweep), kPiL);
    } else {
      ASSERT_EQ(curve.type, CV_BEZIER);
      EXPECT_EQ(static_cast<KurvoBezier*>(curve.data)->degree, form == KURVO_FIT_CUBICS ? 3 : 2);
    }
  }
  int allowed = 0;
  for (int i = 1; i < chain.count(); ++i) {
    const LongPoint in = Direction(chain[i - 1], true), out = Direction(chain[i], false);
    allowed += !(Dot(in, out) > 0 && 1e-9L >= std::fabs(Cross(in, out)));
  }
  EXPECT_LE(corners, allowed);
  const LongPoint first = Direction(chain[0], false), began = Direction(fit.out[0], false);
  EXPECT_LE(std::fabs(Cross(first, began)), rounding);
}

constexpr const char* kForms[] = {"arcs", "quadratics", "cubics"};

TEST(ChainFit, KeepsDeviationAndTangents) {
  Globals g;
  Rounds(Cases(30), [&](Random& random, int round) {
    const int32_t type = kAllTypes[round % 6];
    std::vector<Owned> curves;
    curves.push_back(RandomCurve(random, type, round % 5 == 0 ? 9 : 5, 2, 2));
    const Chain chain(std::move(curves));
    const double deviation = std::pow(10, random.Uniform(-5, -1));
    const double limit = deviation * (1 + 1e-9);
    for (const int form : {KURVO_FIT_ARCS, KURVO_FIT_QUADRATICS, KURVO_FIT_CUBICS}) {
      SCOPED_TRACE(testing::Message() << kForms[form] << " of " << type << " to " << deviation);
      const Fit fit(chain, form, deviation, g);
      ASSERT_EQ(fit.made, 1) << KurvoErrGet(&g);
      EXPECT_LE(FarthestApart(chain, fit.out, limit), limit);
      if (!IsSpline(type)) ExpectFormed(chain, fit, form);
    }
  });
}

// ---- Arcs against the optimum on a grid ----

// The deviation of the biarc with its joint on the curve, by dense points; nothing when it has none
// with arcs below half a turn.
std::optional<Wide> BiarcOff(const Oracle& curve, Wide from, Wide to) {
  const auto at = [&](Wide t) { return curve.PointAt(t); };
  const auto tangent = [&](Wide t) { return Unit(curve.JetAt<4>(t).Derivative(1)); };
  const LongPoint a = at(from), b = at(to), leaves = tangent(from), arrives = tangent(to);
  const Wide half = std::atan2(Cross(leaves, arrives), Dot(leaves, arrives)) / 2;
  const auto off = [&](Wide t) {
    const LongPoint in = at(t) - a, out = b - at(t);
    return std::atan2(Cross(in, out), Dot(in, out)) - half;
  };
  Wide low = from + (to - from) / 1000, high = to - (to - from) / 1000;
  const bool rises = off(low) < 0;
  for (int i = 0; i < 40; ++i)
    ((off((low + high) / 2) < 0) == rises ? low : high) = (low + high) / 2;
  const LongPoint joint = at(low);
  if (Dot(leaves, joint - a) <= 0 || Dot(arrives, b - joint) <= 0) return {};
  const auto radial = [&](const LongPoint& p, const LongPoint& direction, Wide t) {
    const LongPoint left = {-direction.y, direction.x}, chord = joint - p;
    const Wide bend = 2 * Dot(chord, left) / Dot(chord, chord);
    const LongPoint w = at(t) - p;
    return std::fabs(Gap(bend * w, left) - 1) / std::fabs(bend);
  };
  Wide worst = 0;
  for (int k = 1; k < 10; ++k) {
    worst = std::max(worst, radial(a, leaves, from + (low - from) * k / 10));
    worst = std::max(worst, radial(b, arrives, low + (to - low) * k / 10));
  }
  return worst;
}

TEST(ChainFit, ArcsAreAsFewAsTheOptimum) {
  constexpr int kGrid = 64;
  Globals g;
  int all = 0, all_best = 0;
  Rounds(50, [&](Random& random, int) {
    std::vector<Owned> curves;
    curves.push_back(RandomBezier(random, false, 3));
    const Chain chain(std::move(curves));
    const Oracle curve(chain[0]);
    const double deviation = std::pow(10, random.Uniform(-3, -1.3));
    std::vector<int> best(kGrid + 1, 1 << 20);
    best[0] = 0;
    for (std::size_t i = 0; i < kGrid; ++i) {
      int misses = 0;
      for (std::size_t j = i + 1; j <= kGrid && misses < 10; ++j) {
        const auto off =
            BiarcOff(curve, static_cast<Wide>(i) / kGrid, static_cast<Wide>(j) / kGrid);
        const bool fits = off && *off <= deviation;
        misses += !fits;
        if (fits) best[j] = std::min(best[j], best[i] + 2);
      }
    }
    if (best[kGrid] > 1 << 16) return;  // the grid is too coarse
    const Fit fit(chain, KURVO_FIT_ARCS, deviation, g);
    EXPECT_LE(fit.out.count(), std::max(1.2 * best[kGrid], best[kGrid] + 2.0));  // one biarc more
    all += fit.out.count();
    all_best += best[kGrid];
  });
  EXPECT_LE(all, 1.1 * all_best);
}

// ---- One by one ----

TEST(ChainFit, KeepsWhatHasTheForm) {
  struct Row {
    const char* chain;
    int form;
    const char* want;
  };
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 9 8)(l 9 8 1 0)",                    KURVO_FIT_ARCS,       "(l 0 0 9 8)(l 9 8 1 0)"},
      {"(l 0 0 9 8)",                               KURVO_FIT_CUBICS,     "(l 0 0 9 8)"},
      {"(a 1 2 3 4 2)",                             KURVO_FIT_ARCS,       "(a 1 2 3 4 2)"},
      {"(a 1 2 3 4 -3.14)",                         KURVO_FIT_ARCS,       "(a 1 2 3 4 -3.14)"},
      {"(a 1 2 3 4 3.15)",                          KURVO_FIT_ARCS,       "(a 1 2 3 4 1.05)(a 1 2 3 5.05 1.05)(a 1 2 3 6.1 1.05)"},
      {"(b 1 2 3 4)",                               KURVO_FIT_QUADRATICS, "(l 1 2 3 4)"},
      {"(r 1 2 1 3 4 2)",                           KURVO_FIT_CUBICS,     "(l 1 2 3 4)"},
      {"(b 0 0 1 5 4 0)",                           KURVO_FIT_QUADRATICS, "(b 0 0 1 5 4 0)"},
      {"(b 0 0 3 6 6 0)",                           KURVO_FIT_CUBICS,     "(b 0 0 2 4 4 4 6 0)"},
      {"(b 0 0 1 5 4 5 3 1)",                       KURVO_FIT_CUBICS,     "(b 0 0 1 5 4 5 3 1)"},
      {"(b 0 0 1 0 2 0 4 0)",                       KURVO_FIT_ARCS,       "(l 0 0 4 0)"},
      {"(b 0 0 0 0 4 4 4 4)",                       KURVO_FIT_ARCS,       "(l 0 0 4 4)"},
      {"(r 1 0 1 1 1 .70710678118654752 0 1 1)",    KURVO_FIT_ARCS,       "(a 0 0 1 0 1.5707963267948966)"},
      {"(B 0 0 2 2 4 2 6 0 | 0 0 0 1 2 2 2)",       KURVO_FIT_QUADRATICS, "(b 0 0 2 2 3 2)(b 3 2 4 2 6 0)"},
      {"(B 0 0 2 2 4 0 | 0 0 1 2 2)",               KURVO_FIT_ARCS,       "(l 0 0 2 2)(l 2 2 4 0)"},
      {"(c .5 .5 (l 0 0 1 0)(c .25 .75 (a 1 1 1 -1.5707963267948966 1)(l 1.8414709848078965 .45969769413186023 0 0)))",
       KURVO_FIT_ARCS, "(l 0 0 1 0)(a 1 1 1 -1.5707963267948966 1)(l 1.8414709848078965 .45969769413186023 0 0)"},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    Globals g;
    Chain chain(row.chain);
    for (Curve& curve : chain) {
      curve.attr = 7;
      curve.attr_p2 = 1u + static_cast<unsigned>(&curve - chain.begin());
    }
    const Fit fit(chain, row.form, 1e-6, g);
    ASSERT_EQ(fit.made, 1) << KurvoErrGet(&g);
    const Chain want(row.want);
    ASSERT_EQ(fit.out.count(), want.count());
    for (int i = 0; i < want.count(); ++i) {
      EXPECT_TRUE(IsCurve(fit.out[i], want[i], 1e-14)) << i;
      EXPECT_EQ(fit.out[i].attr, 7);
      EXPECT_EQ(fit.out[i].attr_p2,
                chain.count() == want.count() ? static_cast<unsigned>(i) + 1 : 1u);
    }
  }
}

TEST(ChainFit, TakesTrouble) {
  struct Row {
    const char* chain;
    int arcs, quadratics, cubics;  // at most
  };
  // clang-format off
  const Row rows[] = {
      {"(b 0 0 2 0 -1 0 1 0)",                    3,   4,  1},  // there and back
      {"(b 0 0 3 3 0 3 3 0)",                     16,  8,  1},  // a cusp
      {"(b 0 0 3 3 0 3 3.0001 0)",                18,  9,  1},  // nearly one
      {"(b 0 0 1 3 -1 3 0 0)",                    16,  8,  1},  // closed
      {"(b 0 0 0 0 9 0 9 9)",                     12,  6,  1},  // a handle of no length
      {"(b 0 0 1 3 1 3 2 0)",                     14,  6,  1},
      {"(b 2 2 2 2 2 2 2 2)",                     1,   1,  1},  // a point
      {"(b 0 0 1 1 2 -1 3 1 4 -1 5 0)",           16,  9,  5},
      {"(b^9)",                                   60,  30, 12},
      {"(r 0 0 1 1 1 1e-6 2 0 1)",                6,   5,  5},
      {"(r 0 0 1 1 1 1e6 2 0 1)",                 12,  8,  8},
      {"(r 0 0 1 1 1 -.5 2 0 1)",                 40,  20, 10},
      {"(a 0 0 1 0 6)",                           4,   14, 7},
      {"(B 0 0 1 1 2 0 3 1 4 0 | 0 0 0 0 1 2 2 2 2)", 16, 8, 2},
  };
  // clang-format on
  for (const Row& row : rows) {
    for (const Move& move : kMoves) {
      SCOPED_TRACE(testing::Message() << row.chain << ' ' << move.scale << ' ' << move.shift);
      Globals g(EpsilonOf(move));
      const Chain chain = Moved(row.chain, move);
      const int most[] = {row.arcs, row.quadratics, row.cubics};
      for (int form = KURVO_FIT_ARCS; form <= KURVO_FIT_CUBICS; ++form) {
        SCOPED_TRACE(kForms[form]);
        const double deviation = 1e-3 * move.scale;
        const Fit fit(chain, form, deviation, g);
        ASSERT_EQ(fit.made, 1) << KurvoErrGet(&g);
        EXPECT_LE(fit.out.count(), most[form]);
        EXPECT_GE(fit.out.count(), 1);
        if (&move != kMoves) continue;
        const Path path(chain), fitted(fit.out);
        EXPECT_LE(path.FarthestFrom(fitted), deviation * (1 + 1e-9));
        EXPECT_LE(fitted.FarthestFrom(path), deviation * (1 + 1e-9));
      }
    }
  }
}

TEST(ChainFit, EndsInTimeForAnyDeviation) {
  std::vector<Owned> curves;
  Random random;
  XY at = {0, 0};
  for (int i = 0; i < 1000; ++i) {
    const XY next = RandomPlace(random);
    curves.push_back(RandomBetween(random, at, next));
    at = next;
  }
  const Chain chain(std::move(curves));
  Globals g;
  for (int form = KURVO_FIT_ARCS; form <= KURVO_FIT_CUBICS; ++form) {
    const Stopwatch watch;
    EXPECT_EQ(Fit(chain, form, 1e-3, g).made, 1);
    EXPECT_LE(watch.Seconds(), 2) << kForms[form];  // a second where it is not watched
    EXPECT_EQ(Fit(chain, form, 1e300, g).made, 1);
    EXPECT_EQ(Fit(Chain("(r 0 0 1 1 4 3 2 0 1)"), form, 1e-300, g).made, 1);
    EXPECT_EQ(Fit(Chain("(b^63)"), form, 1e-9, g).made, 1);
    EXPECT_EQ(Fit(Chain("(r 0 0 4e-12 9 9 9e5 3 7 5e3 8 1 3e7)"), form, 1e-4, g).made, 1);
  }
}

TEST(ChainFit, Refuses) {
  struct Row {
    const char* chain;
    int form;
    double deviation;
    int code;
  };
  // clang-format off
  const Row rows[] = {{"(l 0 0 1 1)",                0,  0,         KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)",                0,  -1,        KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)",                0,  kNaN,      KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)",                1,  kInfinity, KURVO_ERR_NOT_FINITE},
                      {"(l 0 0 1 1)",                3,  1,         KURVO_ERR_OPTION},
                      {"(l 0 0 1 1)",                -1, 1,         KURVO_ERR_OPTION},
                      {"(e)",                        0,  1,         KURVO_ERR_CURVE},
                      {"(r 0 0 1 1 1 -2 2 0 1)",     2,  1,         KURVO_ERR_WEIGHT},
                      {"(l 0 0 1 1)(l 1 1.1 2 2)",   0,  1,         KURVO_ERR_CHAIN_ENDS}};
  // clang-format on
  for (const Row& row : rows) {
    Globals g;
    const Fit fit(Chain(row.chain), row.form, row.deviation, g);
    EXPECT_EQ(fit.made, 0) << row.chain;
    EXPECT_EQ(KurvoErrGet(&g), row.code) << row.chain;
    EXPECT_EQ(fit.out.count(), 0);
  }
  Globals g;
  Chain chain("(l 0 0 1 1)");
  EXPECT_EQ(KurvoChainFit(chain.get(), 0, 1, chain.get(), &g), 0);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
  EXPECT_EQ(chain.count(), 1);
  KurvoErrReset(&g);
  EXPECT_EQ(Fit(Chain(), KURVO_FIT_ARCS, 1, g).made, 1);
}

}  // namespace
}  // namespace kurvo_test
