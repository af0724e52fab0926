// Parts of chains inside and outside of regions: rows with known answers, random chains and regions
// against windings in long double. A long run: KURVO_TEST_CASES=20000.
#include <kurvo_outline.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "outline/moved.h"
#include "outline/random_chain.h"
#include "outline/winding.h"

namespace kurvo_test {
namespace {

struct Clip {
  Region inside, outside;
  KurvoReport report = {};
  int code = 0;

  const KurvoRegion& side(bool is_inside) const { return is_inside ? *inside : *outside; }
};

Clip ClipOf(const KurvoRegion& region, const std::vector<Cvseq>& chains,
            const KurvoOptions& options = OptionsOf(), double epsilon = 1e-6) {
  Clip clip;
  Globals g(epsilon);
  KurvoRegionClip(&region, chains.data(), static_cast<int32_t>(chains.size()), &options,
                  clip.inside.get(), clip.outside.get(), &clip.report, &g);
  clip.code = KurvoErrGet(&g);
  return clip;
}

// As the record holds it.
Point End(const Curve& curve, bool last) {
  if (curve.type == CV_SEGCV) {
    const auto& composite = *static_cast<const KurvoSegcv*>(curve.data);
    return End(composite.curves[last ? composite.count - 1 : 0], last);
  }
  std::vector<Point> points;
  ForEachPoint(
      curve,
      [&](const double* p) {
        points.push_back({p[0], p[1], 0});
      },
      [](double) {});
  return last ? points.back() : points[curve.type == CV_ARC ? 1 : 0];
}

// The vertices of each chain, and what is between them.
std::string Written(const KurvoRegion& side) {
  std::string text;
  const auto add = [&](const Point& p) {
    char place[60];  // without the sign of 0
    std::snprintf(place, sizeof place, "%.5g %.5g", std::round(p[0] * 1e6) / 1e6 + 0.,
                  std::round(p[1] * 1e6) / 1e6 + 0.);
    text += place;
  };
  for (int i = 0; i < side.count; ++i) {
    text += '(';
    for (int k = 0; k < side.loops[i].count; ++k) {
      const Curve& curve = side.loops[i].curves[k];
      if (k == 0) add(End(curve, false));
      text += curve.type == CV_LINE ? " l " : curve.type == CV_ARC ? " a " : " ~ ";
      add(End(curve, true));
    }
    text += ')';
  }
  return text;
}

TEST(RegionClip, KnownParts) {
  struct Row {
    int32_t rule;
    std::vector<std::string> loops;
    const char *chain, *inside, *outside;
    double gap = 0;
  };
  const std::string square = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)",
                    right = "(l 4 0 8 0)(l 8 0 8 4)(l 8 4 4 4)(l 4 4 4 0)",
                    hole = "(l 1 1 1 3)(l 1 3 3 3)(l 3 3 3 1)(l 3 1 1 1)",
                    spike = "(l 0 0 4 0)(l 4 0 0 0)", disc = "(a 0 0 2 0 6.283185307179586)",
                    open = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 .5)";
  constexpr int32_t kNonzero = KURVO_FILL_NONZERO, kOdd = KURVO_FILL_EVENODD,
                    kPositive = KURVO_FILL_POSITIVE, kNegative = KURVO_FILL_NEGATIVE;
  // clang-format off
  const Row rows[] = {
      {kNonzero, {square}, "(l -1 2 5 2)", "(0 2 l 4 2)", "(-1 2 l 0 2)(4 2 l 5 2)"},
      {kNegative, {square}, "(l -1 2 5 2)", "", "(-1 2 l 5 2)"},
      {kNegative, {disc}, "(l -3 0 3 0)", "", "(-3 0 l 3 0)"},
      {kNonzero, {}, "(l -1 2 5 2)", "", "(-1 2 l 5 2)"},
      {kNonzero, {square}, "", "", ""},
      // along the border
      {kNonzero, {square}, "(l -1 0 5 0)", "(0 0 l 4 0)", "(-1 0 l 0 0)(4 0 l 5 0)"},
      {kNonzero, {square}, "(l 3 4 1 4)", "(3 4 l 1 4)", ""},
      {kNonzero, {square}, square.c_str(), "(0 0 l 4 0 l 4 4 l 0 4 l 0 0)", ""},
      {kNonzero, {square, hole}, "(l 1 0 1 4)", "(1 0 l 1 4)", ""},
      {kOdd, {square, hole}, "(l 1 -1 1 4)", "(1 0 l 1 4)", "(1 -1 l 1 0)"},
      {kOdd, {square, hole}, "(l 2 2 3 3)(l 3 3 3 1)(l 3 1 2 2)", "(3 3 l 3 1)", "(3 1 l 2 2 l 3 3)"},
      {kOdd, {square, square}, "(l -1 0 5 0)", "", "(-1 0 l 5 0)"},
      {kNonzero, {square, right}, "(l 4 -1 4 5)", "(4 0 l 4 4)", "(4 -1 l 4 0)(4 4 l 4 5)"},
      {kPositive, {square, right}, "(l -1 0 9 0)", "(0 0 l 8 0)", "(-1 0 l 0 0)(8 0 l 9 0)"},
      {kNonzero, {spike}, "(l -1 0 5 0)", "", "(-1 0 l 5 0)"},
      {kNonzero, {disc}, "(a 0 0 2 1 3)(l -1.3072872417272239 -1.5136049906158564 -2 -2)", "(1.0806 1.6829 a -1.3073 -1.5136)", "(-1.3073 -1.5136 l -2 -2)"},
      // touches
      {kNonzero, {square}, "(l 0 8 8 0)", "", "(0 8 l 8 0)"},
      {kNonzero, {square}, "(l 0 2 1 1)(l 1 1 2 0)(l 2 0 4 2)(l 4 2 2 4)(l 2 4 0 2)", "(0 2 l 1 1 l 2 0 l 4 2 l 2 4 l 0 2)", ""},
      {kNonzero, {disc}, "(l -3 2 3 2)", "", "(-3 2 l 3 2)"},
      {kNonzero, {disc}, "(a 1 0 1 0 3.141592653589793)", "(2 0 a 0 0)", ""},
      {kNonzero, {disc}, "(a 3 0 1 3 .28318530717958623)", "", "(2.01 0.14112 a 2.01 -0.14112)"},
      {kNonzero, {square}, "(l 4 4 6 6)(l 6 6 2 6)", "", "(4 4 l 6 6 l 2 6)"},
      {kNonzero, {square}, "(l 0 0 4 4)(l 4 4 6 6)", "(0 0 l 4 4)", "(4 4 l 6 6)"},
      {kNonzero, {square}, "(l 2 2 2 2)", "(2 2 l 2 2)", ""},
      {kNonzero, {square}, "(l 4 2 4 2)", "(4 2 l 4 2)", ""},
      {kNonzero, {square}, "(l 5 2 5 2)", "", "(5 2 l 5 2)"},
      // closed chains
      {kNonzero, {square}, "(a 2 2 1 0 6.283185307179586)", "(3 2 a 2 3 a 1 2 a 2 1 a 3 2)", ""},
      {kNonzero, {square}, "(a 0 2 1 0 6.283185307179586)", "(0 1 a 1 2 a 0 3)", "(0 3 a 0 1)"},
      {kNonzero, {square}, "(l 2 2 6 2)(l 6 2 6 3)(l 6 3 2 3)(l 2 3 2 2)", "(4 3 l 2 3 l 2 2 l 4 2)", "(4 2 l 6 2 l 6 3 l 4 3)"},
      {kNonzero, {square}, "(l 4 2 6 2)(l 6 2 6 3)(l 6 3 2 3)(l 2 3 4 2)", "(4 3 l 2 3 l 4 2)", "(4 2 l 6 2 l 6 3 l 4 3)"},
      // one that meets itself, curves of other types
      {kNonzero, {square}, "(l 1 1 6 1)(l 6 1 2 3)(l 2 3 2 -1)", "(1 1 l 4 1)(4 2 l 2 3 l 2 0)", "(4 1 l 6 1 l 4 2)(2 0 l 2 -1)"},
      {kNonzero, {square}, "(b 2 2 6 2 6 3 2 3)", "(2 2 ~ 4 2.1151)(4 2.8849 ~ 2 3)", "(4 2.1151 ~ 4 2.8849)"},
      {kNonzero, {square}, "(B 2 2 6 2 6 4 6 3 6 3 2 3 | 0 0 1 1 2 2 3 3)", "(2 2 ~ 4 2)(4 3 ~ 2 3)", "(4 2 ~ 4 3)"},
      {kNonzero, {square}, "(B 2 2 3 2 6 2 7 2 | 0 0 1 1 2 2)", "(2 2 ~ 3 2)", "(6 2 ~ 7 2)"},
      {kNonzero, {square}, "(c .5 .5 (l 0 0 1 0) (l 1 0 2 0))(l 2 0 2 -2)", "(0 0 ~ 2 0)", "(2 0 l 2 -2)"},
      {kNonzero, {square}, "(c .25 .75 (l 2 2 6 2) (l 6 2 6 6))", "(2 2 ~ 4 2)", "(4 2 ~ 6 6)"},
      // wide joints
      {kNonzero, {open}, "(l -2 .25 2 .25)(l 3 .25 7 .25)", "(0 0.25 l 2 0.25 l 3 0.25 l 4 0.25)", "(-2 0.25 l 0 0.25)(4 0.25 l 7 0.25)", 1.5},
  };
  // clang-format on
  for (const Row& row : rows)
    for (const Move& move : kMoves) {
      SCOPED_TRACE(std::string(row.chain) + " in " + (row.loops.empty() ? "" : row.loops[0]));
      std::vector<Chain> owned;
      std::vector<Cvseq> loops;
      for (const std::string& loop : row.loops) {
        owned.push_back(Moved(loop, move));
        loops.push_back(*owned.back());
      }
      const KurvoRegion region = {int(loops.size()), row.rule, loops.data(), nullptr};
      const Chain chain = Moved(row.chain, move);
      Clip clip = ClipOf(region, {*chain}, OptionsOf(0, row.gap * move.scale), EpsilonOf(move));
      ASSERT_EQ(clip.code, 0);
      for (Region* side : {&clip.inside, &clip.outside})
        ForEachCurve(**side, [&](const Curve& curve) {
          ForEachPoint(
              curve,
              [&](double* p) {
                for (int k = 0; k < 2; ++k) p[k] = (p[k] - move.shift) / move.scale;
              },
              [&](double& radius) { radius /= move.scale; });
        });
      EXPECT_EQ(Written(*clip.inside), row.inside);
      EXPECT_EQ(Written(*clip.outside), row.outside);
      EXPECT_EQ(clip.report.gaps, row.gap > 0 ? 2 : 0);
      EXPECT_EQ(clip.report.unresolved, 0);
    }
}

// ---- Random chains and regions ----

struct Piece {
  KurvoOrigin origin;
  const Curve* curve;
  bool is_inside, is_first, is_last;  // of its part
};

// All curves of both sides in the order of the chains; checks that neighbours of a part meet.
std::vector<Piece> PiecesOf(const Clip& clip) {
  std::vector<Piece> pieces;
  for (const bool is_inside : {true, false}) {
    const KurvoRegion& side = clip.side(is_inside);
    const KurvoOrigin* origin = side.origins;
    for (int i = 0; i < side.count; ++i) {
      const Cvseq& part = side.loops[i];
      for (int k = 0; k < part.count; ++k) {
        pieces.push_back({*origin++, &part.curves[k], is_inside, k == 0, k + 1 == part.count});
        if (k > 0) {
          const Point end = End(part.curves[k - 1], true), start = End(part.curves[k], false);
          EXPECT_GE(1e-6, std::hypot(end[0] - start[0], end[1] - start[1]));
        }
      }
    }
  }
  std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
    return std::tuple(a.origin.loop, a.origin.curve, a.origin.from) <
           std::tuple(b.origin.loop, b.origin.curve, b.origin.from);
  });
  return pieces;
}

// The parts together are the chains: parameters without gaps, ends that are the same bits, sides in
// turn.
void ExpectWhole(const std::vector<Piece>& pieces, const std::vector<Cvseq>& chains) {
  std::size_t next = 0;
  for (int i = 0; i < static_cast<int>(chains.size()); ++i)
    for (int k = 0; k < chains[std::size_t(i)].count; ++k) {
      const auto [start, length] = Domain(chains[std::size_t(i)].curves[k]);
      double reached = start;
      for (;
           next < pieces.size() && pieces[next].origin.loop == i && pieces[next].origin.curve == k;
           ++next) {
        const Piece& piece = pieces[next];
        EXPECT_EQ(piece.origin.region, -1);
        EXPECT_EQ(piece.origin.kind, KURVO_ORIGIN_PART);
        EXPECT_EQ(piece.curve->attr, chains[std::size_t(i)].curves[k].attr);
        EXPECT_EQ(piece.origin.from, reached);
        if (reached > start) {
          const Piece& before = pieces[next - 1];
          const Point end = End(*before.curve, true), begin = End(*piece.curve, false);
          EXPECT_TRUE(end[0] == begin[0] && end[1] == begin[1]);
          EXPECT_EQ(before.is_last, before.is_inside != piece.is_inside);
          EXPECT_EQ(piece.is_first, before.is_last);
        }
        reached = piece.origin.to;
      }
      EXPECT_EQ(reached, start + length);
    }
  EXPECT_EQ(next, pieces.size());
}

TEST(RegionClip, RandomChainsAndRegions) {
  int64_t probes = 0, sides = 0, unresolved = 0;
  Rounds(Cases(120), [&](Random& random, int) {
    Region region = RandomRegion(random, 1);
    region->rule = RandomInt(random, 0, 3);
    std::vector<Chain> owned;
    std::vector<Cvseq> chains;
    for (int left = RandomInt(random, 1, 3); left > 0; --left) {
      owned.push_back(RandomChain(random, Chance(random, .4)));
      for (int i = 0; i < owned.back().count(); ++i) owned.back()[i].attr = 7 * left + i;
      chains.push_back(*owned.back());
    }
    const Clip clip = ClipOf(*region, chains);
    ASSERT_EQ(clip.code, 0);
    EXPECT_EQ(clip.report.capped, 0);
    unresolved += clip.report.unresolved;
    const std::vector<Piece> pieces = PiecesOf(clip);
    ExpectWhole(pieces, chains);
    constexpr Wide kOff = 1e-4;
    const Flattened flat(*region, kOff / 16);
    for (const Piece& piece : pieces) {
      const Curve& source = chains[std::size_t(piece.origin.loop)].curves[piece.origin.curve];
      const auto [from, length] = Domain(*piece.curve);
      const Oracle of_source(source), of_piece(*piece.curve);
      for (const double share : {.02, .25, .5, .75, .98}) {
        const LongPoint q = of_piece.PointAt(from + share * length);
        // Arcs and composites of arcs that are cut run evenly, as all others do.
        const double t = piece.origin.from + share * (piece.origin.to - piece.origin.from);
        EXPECT_GE(1e-7, Distance(q, of_source.PointAt(t)));
        if (flat.IsNear(q, kOff)) continue;
        ++probes;
        sides += piece.is_inside;
        ASSERT_EQ(IsFilled(flat.Turns(q), region->rule), piece.is_inside)
            << double(q.x) << ", " << double(q.y) << " of chain " << piece.origin.loop << " curve "
            << piece.origin.curve << " at " << t;
      }
    }
  });
  EXPECT_GT(sides, probes / 10);
  EXPECT_LT(sides, probes * 9 / 10);
  EXPECT_EQ(unresolved, 0);
  std::printf("%lld probes, %lld inside\n", static_cast<long long>(probes),
              static_cast<long long>(sides));
}

// Parts of the border of a simplified region, forwards and backwards, are inside.
TEST(RegionClip, WhatRunsAlongTheBorderIsInside) {
  Rounds(Cases(60), [](Random& random, int round) {
    Globals g;
    Region raw = RandomRegion(random, 1), region;
    ASSERT_EQ(KurvoRegionSimplify(raw.get(), nullptr, region.get(), nullptr, &g), 1);
    for (int i = 0; i < region->count; ++i) {
      const Cvseq& loop = region->loops[i];
      double length;
      ASSERT_EQ(KurvoChainLength(&loop, &length, &g), 1);
      if (length < 1) continue;
      const double cuts[] = {length * random.Uniform(.1, .4), length * random.Uniform(.6, .9)};
      KurvoPlace places[2];
      ASSERT_EQ(KurvoChainPlaces(&loop, cuts, 2, places, &g), 1);
      Chain part;
      ASSERT_EQ(KurvoChainTrim(&loop, &places[i % 2], &places[1 - i % 2], part.get(), &g), 1);
      if (round % 2) {
        std::reverse(part.begin(), part.end());
        for (Curve& curve : part) KurvocvChgOrder(&curve, &g);
      }
      const Clip clip = ClipOf(*region, {*part, loop});
      EXPECT_EQ(clip.code, 0);
      EXPECT_EQ(clip.inside->count, 2) << i << ' ' << Written(*clip.outside);
      EXPECT_EQ(clip.outside->count, 0) << i;
    }
  });
}

// ---- Many, and what is refused ----

TEST(RegionClip, ManyChainsAndLoops) {
  constexpr int kAcross = 40;
  Region region;
  std::vector<Cvseq> loops;
  std::vector<Chain> owned;
  for (int i = 0; i < kAcross * kAcross; ++i) {
    owned.push_back(Chain("(a " + std::to_string(i % kAcross) + " " + std::to_string(i / kAcross) +
                          " .25 0 6.283185307179586)"));
    loops.push_back(*owned.back());
  }
  Random random;
  std::shuffle(loops.begin(), loops.end(), std::minstd_rand(5));
  std::vector<Cvseq> chains;
  double want = 0;  // length inside
  for (int i = 0; i < kAcross * kAcross; ++i) {
    const double y = random.Uniform(0, kAcross), x = random.Uniform(0, kAcross - 2.);
    std::vector<Owned> line;
    line.push_back(Line(x, y, x + 2, y));
    const double off = y - std::round(y), half = std::sqrt(std::max(0., .0625 - off * off));
    for (double middle = std::floor(x) - 1; middle < x + 4 && std::round(y) < kAcross; ++middle)
      if (middle >= 0 && middle < kAcross)
        want += std::max(0., std::min(x + 2, middle + half) - std::max(x, middle - half));
    owned.push_back(Chain(std::move(line)));
    chains.push_back(*owned.back());
  }
  const KurvoRegion discs = {kAcross * kAcross, KURVO_FILL_NONZERO, loops.data(), nullptr};
  const Clip clip = ClipOf(discs, chains);
  ASSERT_EQ(clip.code, 0);
  double inside = 0, all = 0;
  for (const bool is_inside : {true, false})
    ForEachCurve(clip.side(is_inside), [&](const Curve& curve) {
      const double length = End(curve, true)[0] - End(curve, false)[0];
      all += length;
      if (is_inside) inside += length;
    });
  EXPECT_NEAR(inside, want, 1e-8);
  EXPECT_NEAR(all, 2. * kAcross * kAcross, 1e-8);
  EXPECT_EQ(clip.report.unresolved + clip.report.capped, 0);
}

TEST(RegionClip, Refusals) {
  Region region("(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 0)"), broken, out[2];
  const Chain chain("(l 0 1 9 1)"), apart("(l 0 1 9 1)(l 9 2 9 9)");
  broken.Add(Chain("(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 0)"));
  broken->loops[0].count = 2;
  KurvoOptions flags = OptionsOf(), stops = OptionsOf(), negative = OptionsOf(0, -1);
  flags.flags = 2;
  stops.proceed = [](double, void*) { return 0; };
  struct Row {
    const KurvoRegion* region;
    const Cvseq* chains;
    int32_t n;
    const KurvoOptions* options;
    KurvoRegion *inside, *outside;
    int code;
  };
  KurvoRegion *const in = out[0].get(), *const beyond = out[1].get(), *const shape = region.get();
  // clang-format off
  const Row rows[] = {
      {shape, chain.get(), 1, nullptr, in, beyond, KURVO_ERR_NONE},
      {nullptr, chain.get(), 1, nullptr, in, beyond, KURVO_ERR_OPTION},
      {shape, nullptr, 1, nullptr, in, beyond, KURVO_ERR_OPTION},
      {shape, chain.get(), -1, nullptr, in, beyond, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, &flags, in, beyond, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, &negative, in, beyond, KURVO_ERR_TOLERANCE},
      {shape, chain.get(), 1, &stops, in, beyond, KURVO_ERR_STOPPED},
      {shape, chain.get(), 1, nullptr, in, in, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, nullptr, shape, beyond, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, nullptr, in, shape, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, nullptr, nullptr, beyond, KURVO_ERR_OPTION},
      {shape, chain.get(), 1, nullptr, in, nullptr, KURVO_ERR_OPTION},
      {broken.get(), chain.get(), 1, nullptr, in, beyond, KURVO_ERR_CHAIN_ENDS},
      {shape, apart.get(), 1, nullptr, in, beyond, KURVO_ERR_CHAIN_ENDS},
  };
  // clang-format on
  for (const Row& row : rows) {
    KurvoRegionFree(in), KurvoRegionFree(beyond);
    Globals g;
    KurvoReport report = {1, 1, 1, 1, 1, 1, {}};
    const int made = KurvoRegionClip(row.region, row.chains, row.n, row.options, row.inside,
                                     row.outside, &report, &g);
    EXPECT_EQ(KurvoErrGet(&g), row.code) << &row - rows;
    EXPECT_EQ(made, row.code == KURVO_ERR_NONE);
    EXPECT_EQ(region->count, 1);
    EXPECT_EQ(report.gaps, 0);
    EXPECT_EQ(in->count + beyond->count, made ? 3 : 0);
  }
  ++broken->loops[0].count;
}

}  // namespace
}  // namespace kurvo_test
