// Where chains meet: closed forms, random chains against their polylines, planted touches and
// stretches.
#include <kurvo_outline.h>

#include <map>

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

using Meetings = std::vector<KurvoMeeting>;

Meetings MeetingsOf(const Cvseq* a, const Cvseq* b, const KurvoOptions* options = nullptr) {
  Globals g;
  KurvoMeeting* list;
  int32_t count;
  EXPECT_EQ(KurvoChainMeetings(a, b, options, &list, &count, &g), 1) << KurvoErrGet(&g);
  Meetings meetings(list, list + count);
  KurvoFree(list);
  return meetings;
}

std::string Written(const Meetings& meetings) {
  std::string text;
  for (const KurvoMeeting& m : meetings) {
    char entry[80];
    std::snprintf(entry, sizeof entry, "%c %d:%.6g %d:%.6g, ", "xt[]"[m.kind], m.index_a, m.a,
                  m.index_b, m.b);
    text += entry;
  }
  return text;
}

TEST(ChainMeetings, ClosedForms) {
  struct Row {
    const char *a, *b, *want;  // b null: with itself
  };
  const char* circle = "(a 0 0 1 0 6.283185307179586)";
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 2 2)", "(l 0 2 2 0)", "x 0:0.5 0:0.5, "},
      {"(l 0 0 2 0)", "(l 1 0 1 3)", "t 0:0.5 0:0, "},
      {"(l 0 0 2 0)", "(l 1 1e-8 1 3)", ""},
      {"(l 0 0 2 0)", "(l 2 0 1 3)", "t 0:1 0:0, "},
      {"(l 0 0 1 0)(l 1 0 2 0)", "(l 1 -1 1 3)", "x 1:0 0:0.25, "},
      {"(l 0 0 1 0)(l 1 0 2 0)", "(l 1 -1 1 0)(l 1 0 1 4)", "x 1:0 1:0, "},
      {"(l 0 0 1 0)(l 1 0 2 1)", "(l 0 1 1 0)(l 1 0 2 3)", "t 1:0 1:0, "},
      {"(l 0 0 4 0)", "(l 1 0 3 0)", "[ 0:0.25 0:0, ] 0:0.75 0:1, "},
      {"(l 0 0 4 0)", "(l 3 0 1 0)", "[ 0:0.25 0:1, ] 0:0.75 0:0, "},
      {"(l 0 0 4 0)", "(l 4 0 8 0)", "t 0:1 0:0, "},
      {"(l 0 0 4 0)", "(a 2 1 1 0 6.283185307179586)", "t 0:0.5 0:0.75, "},
      {"(l 0 0 4 0)", "(a 2 .5 1 0 6.283185307179586)", "x 0:0.283494 0:0.583333, x 0:0.716506 0:0.916667, "},
      {circle, "(a 2 0 1 0 6.283185307179586)", "t 0:0 0:0.5, "},
      {circle, "(a 1 0 1 0 6.283185307179586)", "x 0:0.166667 0:0.333333, x 0:0.833333 0:0.666667, "},
      {"(a 0 0 1 0 3)", "(a 0 0 1 2 3)", "[ 0:0.666667 0:0, ] 0:1 0:0.333333, "},
      {"(l 0 0 2 0)(a 2 1 1 -1.5707963267948966 2)", "(l 1 0 2 0)(l 2 0 5 0)", "[ 0:0.5 0:0, ] 0:1 0:1, "},
      {"(b -1 1 0 -1 1 1)", "(l -1 0 1 0)", "t 0:0.5 0:0.5, "},
      {"(b 0 0 1 2 2 0)", "(b -1.9999996 -8 3.0000004 22 8.0000004 -48)", "x 0:0.5 0:0.3, "},
      {"(b 0 0 1 2 3 2 4 0)", "(b 4 0 3 2 1 2 0 0)", "[ 0:0 0:1, ] 0:1 0:0, "},
      {"(r 1 0 1 1 1 1 0 1 2)", "(a 0 0 1 0 3.141592653589793)", "[ 0:0 0:0, ] 0:1 0:0.5, "},
      {"(b 0 0 6 4 -2 4 4 0)", nullptr, "x 0:0.172673 0:0.827327, "},
      {"(b 0 0 4 4 2 4 2 0)", nullptr, ""},
      {"(b 0 0 1 1 2 0)(l 2 0 0 0)", nullptr, ""},
      {"(b 5 0 8 0 2 0 5 0)", nullptr, "[ 0:0 0:0.5, ] 0:0.211325 0:0.211325, [ 0:0.5 0:1, ] 0:0.788675 0:0.788675, "},
      {"(l 0 0 9.999999995 0)", "(l 10 -5 10 5)", "t 0:1 0:0.5, "},
      {"(l 0 0 9.99999998 0)", "(l 10 -5 10 5)", ""},
      {"(l 0 0 4 0)(l 4 0 4 4)(l 4 4 2 -2)(l 2 -2 0 0)", nullptr, "x 0:0.666667 2:0.666667, "},
      {"(l 0 0 2 0)(l 2 0 2 2)(l 2 2 2 0)(l 2 0 4 0)", nullptr, "[ 1:0 2:1, ] 1:1 2:0, "},
      {"(l 0 4 0 0)(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)", "(l 0 2 2 3)(l 2 3 2 1)(l 2 1 0 2)", "t 0:0.5 0:0, "},
      {"(l 0 2 2 3)(l 2 3 2 1)(l 2 1 0 2)", "(l 0 4 0 0)(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)", "t 0:0 0:0.5, "},
      {"(l 0 2 2 3)(l 2 3 2 3.5)(l 2 3.5 0 2)", "(l 0 4 0 0)(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)", "t 0:0 0:0.5, "},
      {"(l 0 0 2 0)(l 2 0 0 0)", "(l 0 -1 0 1)", "t 0:0 0:0.5, "},
      {"(l 0 -1 0 1)", "(l 0 0 2 0)(l 2 0 0 0)", "t 0:0.5 0:0, "},
      {"", "(l 0 0 1 1)", ""},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.a) + " with " + (row.b ? row.b : "itself"));
    const Chain a(row.a), b(row.b ? row.b : "");
    EXPECT_EQ(Written(MeetingsOf(a.get(), row.b ? b.get() : nullptr)), row.want);
  }
}

// ---- Random chains against fine polylines ----

Chain RandomChain(Random& random, int curves, double size, XY from) {
  std::vector<Owned> list;
  XY at = from;
  for (int i = 0; i < curves; ++i) {
    const XY next = RandomPlace(random, size);
    list.push_back(RandomBetween(random, at, next));
    at = next;
  }
  return Chain(std::move(list));
}

struct Vertex {
  LongPoint p;
  double t;  // index of the curve and the share of its domain
};

std::vector<Vertex> Vertices(const Chain& chain, int steps) {
  std::vector<Vertex> vertices;
  for (int i = 0; i < chain.count(); ++i) {
    const Oracle oracle(chain[i]);
    for (int k = i ? 1 : 0; k <= steps; ++k) {
      const Wide share = static_cast<Wide>(k) / steps;
      vertices.push_back({oracle.PointAt(oracle.start() + share * (oracle.end() - oracle.start())),
                          i + static_cast<double>(share)});
    }
  }
  return vertices;
}

struct Cut {
  double a, b, sine;
};

// Where two polylines cross; of one, not where neighbours do.
std::vector<Cut> Cuts(const std::vector<Vertex>& a, const std::vector<Vertex>& b, bool is_one) {
  std::vector<Cut> cuts;
  for (std::size_t i = 0; i + 1 < a.size(); ++i) {
    const LongPoint p = a[i].p, u = a[i + 1].p - p;
    const Wide low = std::min(p.x, a[i + 1].p.x), high = std::max(p.x, a[i + 1].p.x);
    for (std::size_t k = is_one ? i + 2 : 0; k + 1 < b.size(); ++k) {
      if (std::max(b[k].p.x, b[k + 1].p.x) < low || std::min(b[k].p.x, b[k + 1].p.x) > high)
        continue;
      const LongPoint q = b[k].p, v = b[k + 1].p - q;
      const Wide by = Cross(u, v);
      const Wide s = Cross(q - p, v) / by, t = Cross(q - p, u) / by;
      if (!(s >= 0 && s < 1 && t >= 0 && t < 1)) continue;
      cuts.push_back({a[i].t + static_cast<double>(s) * (a[i + 1].t - a[i].t),
                      b[k].t + static_cast<double>(t) * (b[k + 1].t - b[k].t),
                      static_cast<double>(by / std::sqrt(Dot(u, u) * Dot(v, v)))});
    }
  }
  return cuts;
}

double ShareOf(const Chain& chain, int32_t index, double t) {
  const auto [start, length] = Domain(chain[index]);
  return index + (t - start) / length;
}

TEST(ChainMeetings, RandomChainsAgreeWithTheirPolylines) {
  int asked = 0, listed = 0;
  Rounds(Cases(60), [&](Random& random, int round) {
    const bool with_itself = round % 3 == 2;
    const Chain a = RandomChain(random, RandomInt(random, 1, 4), 10, RandomPlace(random));
    const Chain b = RandomChain(random, RandomInt(random, 1, 4), 10, RandomPlace(random));
    const Chain& other = with_itself ? a : b;
    const Meetings meetings = MeetingsOf(a.get(), with_itself ? nullptr : b.get());
    std::vector<Cut> found;
    for (const KurvoMeeting& m : meetings) {
      ASSERT_LE(m.kind, KURVO_MEET_TOUCH);
      const Point on_a = At(a[m.index_a], m.a), on_b = At(other[m.index_b], m.b);
      ASSERT_LE(std::hypot(on_a[0] - on_b[0], on_a[1] - on_b[1]), 1e-7);
      ASSERT_LE(std::hypot(on_a[0] - m.point[0], on_a[1] - m.point[1]), 1e-9);
      found.push_back({ShareOf(a, m.index_a, m.a), ShareOf(other, m.index_b, m.b),
                       m.kind == KURVO_MEET_CROSS ? 1. : 0.});
    }
    // Two polylines may pass by a sliver that the curves cut twice.
    constexpr double kReach = 2e-2, kSliver = .1, kShallow = .15, kEnd = 1e-3;
    const auto near = [](const std::vector<Cut>& list, const Cut& c, double reach) {
      return std::count_if(list.begin(), list.end(), [&](const Cut& o) {
        return reach >= std::fabs(o.a - c.a) && reach >= std::fabs(o.b - c.b);
      });
    };
    const auto cuts = Cuts(Vertices(a, 500), Vertices(other, 500), with_itself);
    for (const Cut& cut : cuts) {
      const bool at_end =
          std::min(cut.a, cut.b) < kEnd || a.count() - cut.a < kEnd || other.count() - cut.b < kEnd;
      if (std::fabs(cut.sine) < kShallow || near(cuts, cut, kReach) > 1 || at_end) continue;
      ++asked;
      EXPECT_GE(near(found, cut, kReach), 1) << cut.a << ' ' << cut.b << ' ' << Written(meetings);
    }
    for (const Cut& meeting : found) {
      ++listed;
      EXPECT_TRUE(meeting.sine == 0 || near(found, meeting, kSliver) > 1 ||
                  near(cuts, meeting, kReach) > 0 ||
                  (with_itself && meeting.b - meeting.a < kReach))
          << meeting.a << ' ' << meeting.b;
    }
  });
  EXPECT_GT(asked, listed / 2);
}

// ---- Planted stretches and touches

// A chain against a part of itself that no curve ends, forwards and backwards.
TEST(ChainMeetings, PartsOfAChainAreSharedFromEndToEnd) {
  Rounds(Cases(300), [](Random& random, int round) {
    Globals g;
    const Chain chain = RandomChain(random, 2, 10, RandomPlace(random));
    double length = 0;
    ASSERT_EQ(KurvoChainLength(chain.get(), &length, &g), 1);
    const double cuts[] = {length * random.Uniform(.1, .4), length * random.Uniform(.6, .9)};
    KurvoPlace places[2];
    ASSERT_EQ(KurvoChainPlaces(chain.get(), cuts, 2, places, &g), 1);
    Chain part;
    ASSERT_EQ(KurvoChainTrim(chain.get(), &places[0], &places[1], part.get(), &g), 1);
    if (round % 2) {
      std::reverse(part.begin(), part.end());
      for (Curve& curve : part) KurvocvChgOrder(&curve, &g);
    }
    const Meetings meetings = MeetingsOf(chain.get(), part.get());
    const auto is_at = [&](const KurvoMeeting& m, const KurvoPlace& place) {
      return m.index_a == place.index && 1e-7 >= std::fabs(m.a - place.t);
    };
    int stretches = 0;
    for (std::size_t i = 0; i < meetings.size(); ++i) {
      if (meetings[i].kind != KURVO_MEET_RUN_FROM) continue;
      ASSERT_EQ(meetings[i + 1].kind, KURVO_MEET_RUN_TO);
      stretches += is_at(meetings[i], places[0]) && is_at(meetings[i + 1], places[1]);
      const int32_t start = round % 2 ? part.count() - 1 : 0;
      EXPECT_EQ(meetings[i].index_b, start) << Written(meetings);
    }
    EXPECT_EQ(stretches, 1) << Written(meetings) << places[0].t << ", " << places[1].index << ":"
                            << places[1].t;
  });
}

// An arc that has the tangent of a curve at a point, but is more or less bent.
TEST(ChainMeetings, TangentArcsTouch) {
  Rounds(Cases(300), [](Random& random, int) {
    Globals g;
    std::vector<Owned> one, other;
    const XY start = RandomPlace(random);
    one.push_back(RandomBetween(random, start, RandomPlace(random)));
    const Chain chain(std::move(one));
    double length;
    ASSERT_EQ(KurvoChainLength(chain.get(), &length, &g), 1);
    const double cut = length * random.Uniform(.1, .9);
    const double cuts[] = {cut, cut * .999, cut * 1.001};
    KurvoPlace places[3];
    ASSERT_EQ(KurvoChainPlaces(chain.get(), cuts, 3, places, &g), 1);
    const KurvoPlace& place = places[0];
    // Not beside a corner.
    if (KurvoclInnerProduct(places[1].tangent, places[2].tangent) < .9) return;
    Coord turned;
    KurvoclOuterProduct(places[1].tangent, places[2].tangent, turned);
    const double curvature = std::fabs(turned[2]) / (cuts[2] - cuts[1]);
    const double radius = curvature > .2 ? 2.5 / curvature : random.Uniform(.4, 2);
    if (!(radius < 20)) return;
    const double side = Chance(random, .5) ? 1 : -1;
    const XY centre = {place.point[0] - side * radius * place.tangent[1],
                       place.point[1] + side * radius * place.tangent[0]};
    const double at = std::atan2(place.point[1] - centre.y, place.point[0] - centre.x);
    other.push_back(Arc(centre.x, centre.y, radius, at - .3, .6));
    const Chain arc(std::move(other));
    int touches = 0;
    for (const KurvoMeeting& m : MeetingsOf(chain.get(), arc.get())) {
      const double away = std::hypot(m.point[0] - place.point[0], m.point[1] - place.point[1]);
      touches += m.kind == KURVO_MEET_TOUCH && 1e-5 >= away && 1e-5 >= std::fabs(m.b - .5);
    }
    EXPECT_EQ(touches, 1) << chain[0].type << ' ' << place.t;
  });
}

}  // namespace
}  // namespace kurvo_test
