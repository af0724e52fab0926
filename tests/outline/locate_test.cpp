// Where points lie in regions, against turns that are summed as angles in long double. A long run:
// KURVO_TEST_CASES=20000 asks a million questions.
#include <kurvo_outline.h>

#include <optional>

#include "outline/random_chain.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

// The angles that the loops turn by as seen from a point: stretches short enough to stay on one
// side of it as they look from there.
class AngleSum {
 public:
  explicit AngleSum(const KurvoRegion& region) {
    for (int i = 0; i < region.count; ++i)
      for (int k = 0; k < region.loops[i].count; ++k)
        for (const Oracle::Part& part : Oracle(region.loops[i].curves[k]).Parts())
          parts_.push_back({part, SpeedOf(part)});
  }

  struct Answer {
    Wide turns, distance;
  };
  // Stretches nearer than `near` are not told apart from the point.
  Answer From(LongPoint q, Wide near) const {
    Answer answer = {0, kInfinity};
    for (const auto& [part, speed] : parts_)
      Add(part, speed, q, near, 0, 1, At(part, 0), At(part, 1), answer);
    answer.turns /= 2 * kPiL;
    return answer;
  }

 private:
  static LongPoint At(const Oracle::Part& part, Wide s) {
    if (part.points.empty()) {
      const Wide angle = part.angle + s * part.sweep;
      return {part.cx + part.r * std::cos(angle), part.cy + part.r * std::sin(angle)};
    }
    WidePoint d[16];
    std::copy(part.points.begin(), part.points.end(), d);
    for (std::size_t n = part.points.size() - 1; n > 0; --n)
      for (std::size_t i = 0; i < n; ++i) d[i] = Between(d[i], d[i + 1], s);
    return {d[0].x / d[0].w, d[0].y / d[0].w};
  }

  static Wide SpeedOf(const Oracle::Part& part) {
    constexpr int kSteps = 256;
    Wide most = 0;
    for (int i = 0; i < kSteps; ++i)
      most = std::max(most, Gap(At(part, Wide(i) / kSteps), At(part, Wide(i + 1) / kSteps)));
    return 1.5L * kSteps * most;
  }

  static void Add(const Oracle::Part& part, Wide speed, LongPoint q, Wide near, Wide s, Wide width,
                  LongPoint from, LongPoint to, Answer& answer) {
    const Wide distance = Gap(from, q);
    answer.distance = std::min(answer.distance, distance);
    if (speed * width < .9L * distance || speed * width < near) {
      const LongPoint a = {from.x - q.x, from.y - q.y}, b = {to.x - q.x, to.y - q.y};
      answer.turns += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
      return;
    }
    const LongPoint middle = At(part, s + width / 2);
    Add(part, speed, q, near, s, width / 2, from, middle, answer);
    Add(part, speed, q, near, s + width / 2, width / 2, middle, to, answer);
  }

  std::vector<std::pair<Oracle::Part, Wide>> parts_;
};

int Where(int turns, int rule) {
  return IsFilled(turns, rule) ? KURVO_REGION_INSIDE : KURVO_REGION_OUTSIDE;
}

TEST(RegionLocate, TurnsAreSumsOfAngles) {
  constexpr int kQuestions = 50;
  int on = 0, off = 0, skipped = 0;
  Rounds(Cases(60), [&](Random& random, int round) {
    constexpr double kScales[] = {1, 1, 1e-9, 1e-3, 1e8};
    const double scale = kScales[round % 5], far = round % 7 == 0 ? 1e6 * scale : 0;
    Globals g(1e-9 * scale);
    Region region = RandomRegion(random, scale, far);
    const AngleSum sum(*region);
    const int rule = round % 4;
    region->rule = rule;

    std::vector<Point> points;
    Box box = {kInfinity, kInfinity, 0, -kInfinity, -kInfinity, 0};
    for (int i = 0; i < region->count; ++i) {
      Box loop;
      ASSERT_EQ(KurvoChainTightBox(&region->loops[i], loop, &g), 1);
      for (std::size_t c = 0; c < 2 && region->loops[i].count > 0; ++c) {
        box[c] = std::min(box[c], loop[c]);
        box[c + 3] = std::max(box[c + 3], loop[c + 3]);
      }
    }
    const double size = std::max(box[3] - box[0], box[4] - box[1]);
    if (!(size > 0)) return;
    for (int i = 0; i < kQuestions; ++i) {
      Point q;
      q = {random.Uniform(box[0], box[3]), random.Uniform(box[1], box[4]), 0};
      const Cvseq& loop = region->loops[RandomInt(random, 0, region->count - 1)];
      if (i % 3 == 0 && loop.count) {
        q = PointAt(loop.curves[RandomInt(random, 0, loop.count - 1)], random.Uniform(0, 1));
        const double reach = size * std::pow(10, -random.Uniform(1, 12));
        q[0] += random.Uniform(-reach, reach);
        q[1] += random.Uniform(-reach, reach);
      }
      if (i % 8 == 1 && loop.count) q[1] = PointAt(loop.curves[0], 0)[1];  // level with a joint
      points.push_back(q);
    }
    int where[kQuestions], turns[kQuestions], where_alone, turns_alone;
    ASSERT_EQ(KurvoRegionLocate(region.get(), points[0], kQuestions, where, turns, &g), 1);
    // The size that the library knows is that of control points and circles: wider bands.
    const Wide band = std::max(1e-9 * scale, 0x1p-30 * size);
    for (std::size_t i = 0; i < kQuestions && !testing::Test::HasFailure(); ++i) {
      ASSERT_EQ(KurvoRegionLocate(region.get(), points[i], 1, &where_alone, &turns_alone, &g), 1);
      const auto [want, distance] = sum.From({points[i][0], points[i][1]}, 1e-2L * band);
      SCOPED_TRACE(Text("at", {points[i][0], points[i][1], double(distance / band)}));
      const Wide slack = 4 * kUlp * far;
      if (distance < .98L * band - slack) {
        ++on;
        EXPECT_EQ(where[i], KURVO_REGION_ON);
        EXPECT_EQ(turns[i], 0);
      } else if (distance > 64 * band + slack) {
        ++off;
        const int whole = static_cast<int>(std::lround(want));
        ASSERT_NEAR(static_cast<double>(want), whole, 1e-6);
        EXPECT_EQ(turns[i], whole);
        EXPECT_EQ(where[i], Where(whole, rule));
      } else {
        ++skipped;
        continue;
      }
      EXPECT_EQ(where_alone, where[i]);
      EXPECT_EQ(turns_alone, turns[i]);
    }
  });
  EXPECT_LT(20 * skipped, on + off);
  EXPECT_GT(20 * on, off);
}

TEST(RegionLocate, OddLoops) {
  struct Row {
    std::vector<const char*> loops;
    int rule;
    double x, y;
    int where, turns, code;
  };
  constexpr int kOn = KURVO_REGION_ON, kIn = KURVO_REGION_INSIDE, kOut = KURVO_REGION_OUTSIDE;
  const char* const square = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)";
  const char* const clockwise = "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)";
  const char* const rough = "(l 0 0 4 0)(l 4 9e-7 4 4)(l 4 4 0 4)(l 0 4 0 -9e-7)";
  // clang-format off
  const Row rows[] = {
      {{square},                                       0, 1, 2,        kIn,  1, 0},
      {{square},                                       3, 1, 2,        kOut, 1, 0},
      {{clockwise},                                    3, 1, 2,        kIn, -1, 0},
      {{clockwise},                                    2, 1, 2,        kOut,-1, 0},
      {{square, square},                               1, 1, 2,        kOut, 2, 0},
      {{square, clockwise},                            0, 1, 2,        kOut, 0, 0},
      {{square},                                       0, -1, 0,       kOut, 0, 0},
      {{square},                                       0, -1, 4,       kOut, 0, 0},
      {{square},                                       0, 4, 4,        kOn,  0, 0},
      {{square},                                       0, 2, 9e-7,     kOn,  0, 0},
      {{square},                                       0, 2, 1.1e-6,   kIn,  1, 0},
      {{square},                                       0, 2, -1.1e-6,  kOut, 0, 0},
      {{square},                                       0, 1e300, 2,    kOut, 0, 0},
      {{rough},                                        0, -1, 4e-7,    kOut, 0, 0},
      {{rough},                                        0, -1, -4e-7,   kOut, 0, 0},
      {{rough},                                        0, 2, 2e-6,     kIn,  1, 0},
      {{"", square, "(l 1 1 1 1)", "(l 1 2 3 2)(l 3 2 1 2)", "(b 1 1)"}, 0, 1, 3, kIn, 1, 0},
      {{"(l 1 2 3 2)(l 3 2 1 2)"},                     0, 2, 2,        kOn,  0, 0},
      {{"(l 1 2 3 2)(l 3 2 1 2)"},                     0, 0, 2,        kOut, 0, 0},
      {{"(l 1 2 3 4)(l 3 4 1 2)"},                     0, 0, 3,        kOut, 0, 0},
      {{"(l 1 1 1 1)"},                                0, 1, 1,        kOn,  0, 0},
      {{},                                             0, 1, 1,        kOut, 0, 0},
      {{"(a 0 0 2 0 6.283185307179586)"},              2, 1, 1,        kIn,  1, 0},
      {{"(a 0 0 2 0 -6.283185307179586)"},             2, 1, 1,        kOut,-1, 0},
      {{"(a 0 0 2 1 6.283185307179586)"},              0, -3, 2,       kOut, 0, 0},
      {{"(a 0 0 2 1 6.283185307179586)"},              0, 0, -2,       kOn,  0, 0},
      {{"(a 0 0 2 0 3.141592653589793)(l -2 0 2 0)"},  0, 0, 1.99,     kIn,  1, 0},
      {{"(b 0 0 4 4 -4 4 0 0)"},                       0, 0, 2.9,      kIn,  1, 0},
      {{"(b 0 0 4 4 -4 4 0 0)"},                       0, 0, 3.1,      kOut, 0, 0},
      {{"(b 0 0 9 9 9 0 0 9 -9 0 0 0)"},               0, 1e-3, 1e-3 - 1e-5, kOut, 0, 0},
      {{"(r 0 0 1 2 3 -.2 4 0 1)(l 4 0 0 0)"},         0, 2, -.3,      kIn,  1, 0},
      // Jumps within a curve count as lines.
      {{"(c .5 .5 (l 0 0 4 0)(l 4 4 0 4))(l 0 4 0 0)"},            0, 3, 2, kIn,  1, 0},
      {{"(c .5 .5 (l 0 0 4 0)(l 4 4 0 4))(l 0 4 0 0)"},            0, 5, 2, kOut, 0, 0},
      {{"(B 0 0 4 0 4 4 0 4 | 0 0 1 1 2 2)(l 0 4 0 0)"},           0, 3, 2, kIn,  1, 0},
      {{"(B 0 0 4 0 4 4 0 4 | 0 0 1 1 2 2)(l 0 4 0 0)"},           0, 4, 2, kOn,  0, 0},
      {{"(B 0 0 4 0 4 4 0 4 | 0 0 0 1 2 2)(l 0 4 0 0)"},           0, 1, .5, kIn, 1, 0},
      {{"(B 0 0 4 0 4 4 0 4 | 0 0 1 2 2 2)(l 0 4 0 0)"},           0, 1, 3.5, kIn, 1, 0},
      {{"(B 0 0 1 9 2 0 9 -1 3 -2 0 0 | 0 0 1 2 3 4 5 5)"},        0, 2, -1, kIn, -1, 0},
      {{"(B 0 0 1 9 2 0 9 -1 3 -2 0 0 | 0 0 1 2 3 4 5 5)"},        0, 0, -1, kOut, 0, 0},
      {{"(l 0 0 4 0)(l 4 2e-6 0 0)"},                  0, 1, 1,        0,    0, KURVO_ERR_CHAIN_ENDS},
      {{square, "(l 0 0 4 0)(l 4 0 4 4)"},             0, 1, 1,        0,    0, KURVO_ERR_CHAIN_ENDS},
      {{square, "(e)"},                                0, 1, 1,        0,    0, KURVO_ERR_CURVE},
      {{square, "(r 0 0 1 1 1 -3 0 0 1)"},             0, 2, 0,        0,    0, KURVO_ERR_WEIGHT},
      {{square},                                       4, 1, 1,        0,    0, KURVO_ERR_OPTION},
      {{square},                                      -1, 1, 1,        0,    0, KURVO_ERR_OPTION},
      {{square},                                       0, kNaN, 1,     0,    0, KURVO_ERR_NOT_FINITE},
  };
  // clang-format on
  for (const Row& row : rows) {
    std::vector<Chain> chains;
    std::vector<Cvseq> loops;
    for (const char* text : row.loops) chains.emplace_back(text);
    for (const Chain& chain : chains) loops.push_back(*chain);
    const KurvoRegion region = {static_cast<int>(loops.size()), row.rule, loops.data(), nullptr};
    SCOPED_TRACE(Text(row.loops.empty() ? "" : row.loops[0], {row.x, row.y}));
    const double points[] = {row.x, row.y, 0, row.x, row.y, 9};
    for (const int n : {1, 2}) {
      Globals g;
      int where[2] = {}, turns[2] = {};
      EXPECT_EQ(KurvoRegionLocate(&region, points, n, where, turns, &g), !row.code);
      EXPECT_EQ(KurvoErrGet(&g), row.code);
      EXPECT_EQ(where[n - 1], row.where);
      EXPECT_EQ(turns[n - 1], row.turns);
      KurvoErrReset(&g);
      EXPECT_EQ(KurvoRegionLocate(&region, points, -n, nullptr, nullptr, &g), 0);
      EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
    }
  }
}

}  // namespace
}  // namespace kurvo_test
