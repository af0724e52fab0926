// Intersections of curves of every pair of kinds and many sizes that share a planted point, or
// nearly, against brute force: ends in common, ends on the other curve, touches and near touches.
//   KURVO_PAIRS=1000000  as many pairs, for the long form
#include <cstdlib>
#include <iostream>

#include "relate/brute_force.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

constexpr Wide kTol = 1e-6L;    // epsilon
constexpr Wide kSteep = 1e-3L;  // radians: crossings at more must be found
constexpr Wide kSharp = 1e-9L;  // of the largest coordinate: how right they must be

struct Tally {
  int64_t pairs = 0, overlaps = 0, wanted = 0, found = 0, hits = 0, wrong = 0, repeated = 0;

  void Print() const {
    std::cout << pairs << " pairs, " << overlaps << " overlaps; of " << wanted << " common points "
              << found << " found; of " << hits << " points listed " << wrong << " wrong, "
              << repeated << " listed twice\n";
  }
};

// One pair of curves asked for in one mode.
class Question {
 public:
  Question(const Owned& a, const Owned& b, int mode, double size, Tally& tally)
      : a_(a), b_(b), mode_(mode), tally_(tally) {
    const double reach = 4 * size;
    wide_a_ = Pieces(*a_, mode == 1 || mode == 3, reach);
    wide_b_ = Pieces(*b_, mode == 2 || mode == 3, reach);
    reach_ = std::max(Reach(wide_a_), Reach(wide_b_));
    rounding_ = 8 * kUlp * reach_;
    limit_ = 1.05L * kTol + rounding_;
    Globals g;
    answer_ = Intersect(*a_, *b_, mode, g);
    EXPECT_EQ(KurvoErrGet(&g), 0) << Trace();
    ++tally_.pairs;
    tally_.hits += std::ssize(answer_.hits);
  }

  // A place where the curves come within the tolerance: some point of that run must be listed, the
  // place itself where a free-form curve has an end in common.
  void Wants(const Hit& place, bool common_end) {
    if (Overlaps()) return;
    const bool itself = common_end && !(IsElementary(*a_) && IsElementary(*b_));
    Note(AnyHit([&](const Hit& hit) {
           return SamePlace(hit, place, 1.5L * limit_) || (!itself && OneRun(place, hit));
         }),
         place, "planted");
  }

  // All steep crossings by brute force, each once.
  void WantsCrossings() {
    if (Overlaps()) return;
    const std::vector<WideHit> wanted = BruteForce(wide_a_, wide_b_);
    for (const WideHit& want : wanted) {
      const Hit place{static_cast<double>(want.a), static_cast<double>(want.b)};
      if (!want.inside || want.angle <= kSteep) continue;
      // Lines and circles that run into each other by less than the tolerance touch.
      const bool touch = IsElementary(*a_) && IsElementary(*b_);
      // Right to rounding; next to another one, or where an end is near, both may count as one.
      const bool alone = std::none_of(wanted.begin(), wanted.end(), [&](const WideHit& other) {
        return &other != &want && Apart(wide_a_, place.a, static_cast<double>(other.a)) < 3 * kTol;
      });
      const Wide reach = rounding_ / want.angle + (alone ? kSharp * reach_ : 1.5L * limit_);
      Note(AnyHit([&](const Hit& hit) {
             return SamePlace(hit, place, reach) || (touch && OneRun(place, hit));
           }),
           place, "crossing");
    }
    for (const Hit& hit : answer_.hits) {
      const Wide gap = GapAt(wide_a_, wide_b_, hit.a, hit.b);
      if (gap <= 1.5L * kTol) continue;
      ++tally_.wrong;
      ADD_FAILURE() << Trace() << "\nwrong at " << hit.a << ' ' << hit.b << ", gap " << gap;
    }
    std::vector<Hit> hits = answer_.hits;
    for (Hit& hit : hits) hit = {Folded(*a_, hit.a), Folded(*b_, hit.b)};
    for (const Hit& hit : hits) {
      const auto once = std::none_of<const Hit*>(hits.data(), &hit, [&](const Hit& other) {
        return StaysAt(wide_a_, hit.a, other.a) && StaysAt(wide_b_, hit.b, other.b);
      });
      tally_.repeated += once ? 0 : 1;
      EXPECT_TRUE(once) << Trace() << "\nlisted twice: " << hit.a << ' ' << hit.b;
    }
  }

 private:
  // The end of a closed curve is its start.
  static double Folded(const Curve& cv, double t) {
    const auto [start, length] = Domain(cv);
    const WideCurve wide = Pieces(cv);
    const bool closed = !IsElementary(cv) && Apart(wide, start, start + length) < kTol;
    return closed && t > start + (1 - 1e-9) * length ? start : t;
  }

  template <class Is>
  bool AnyHit(Is&& is) const {
    return std::any_of(answer_.hits.begin(), answer_.hits.end(), is);
  }

  static WideJet At(const WideCurve& curve, double t) {
    WideJet at{};
    AtParameter(curve, t, [&](const WidePiece& piece, Wide local) { at = piece(local); });
    return at;
  }
  static Wide Apart(const WideCurve& curve, double s, double t) {
    return Gap(At(curve, s), At(curve, t));
  }
  bool SamePlace(const Hit& p, const Hit& q, Wide reach) const {
    return Apart(wide_a_, p.a, q.a) <= reach && Apart(wide_b_, p.b, q.b) <= reach;
  }
  // The largest coordinate that comes up.
  static Wide Reach(const WideCurve& curve) {
    Wide reach = 0;
    for (const WidePiece& piece : curve) {
      reach = std::max(reach, std::fabs(piece.cx) + std::fabs(piece.cy) + piece.r);
      for (const WidePoint& p : piece.points)
        reach = std::max({reach, std::fabs(p.x / p.w), std::fabs(p.y / p.w)});
    }
    return reach;
  }
  // No further than the tolerance from one parameter to another.
  static bool StaysAt(const WideCurve& curve, double s, double t) {
    constexpr int kSteps = 16;
    for (int i = kSteps; i > 0; --i)
      if (!(Apart(curve, s, s + (t - s) * i / kSteps) < .9L * kTol)) return false;
    return true;
  }
  // The parameter on an arc that is `t` but for full turns, and next to `near`.
  static double Unwound(const WideCurve& curve, double t, double near) {
    if (!curve[0].points.empty()) return t;
    return near + std::remainder(t - near, static_cast<double>(2 * kPiL / curve[0].sweep));
  }
  bool OneRun(const Hit& p, Hit q) const {
    q = {Unwound(wide_a_, q.a, p.a), Unwound(wide_b_, q.b, p.b)};
    return StayTogether(wide_a_, wide_b_, p, q, limit_) &&
           StayTogether(wide_b_, wide_a_, {p.b, p.a}, {q.b, q.a}, limit_);
  }

  // Some stretch that the curves have in common, longer than the tolerance, is there when they are
  // said to overlap.
  bool Overlaps() {
    if (answer_.result != KURVO_OVERLAP) return false;
    if (judged_) return true;
    judged_ = true;
    ++tally_.overlaps;
    constexpr int kSamples = 512;
    const auto [start, length] = Domain(*a_);
    int run = 0;
    for (int i = 0; i <= kSamples && run < 2; ++i) {
      const WideJet p = At(wide_a_, start + length * i / kSamples);
      run = GapFrom(wide_b_, p) <= limit_ ? run + 1 : 0;
    }
    tally_.wrong += run < 2 ? 1 : 0;
    EXPECT_GE(run, 2) << Trace() << "\nno overlap";
    return true;
  }

  void Note(bool found, const Hit& place, const char* what) {
    ++tally_.wanted;
    tally_.found += found ? 1 : 0;
    EXPECT_TRUE(found) << Trace() << "\nlost: " << what << " at " << place.a << ' ' << place.b;
  }

  std::string Trace() const {
    const auto text = [](const Owned& cv) {
      return Text(std::to_string(cv->type), AllNumbers(*cv)) + '\n';
    };
    return text(a_) + text(b_) + "mode " + std::to_string(mode_) + ", result " +
           std::to_string(answer_.result) + Listed(answer_.hits);
  }

  const Owned &a_, &b_;
  const int mode_;
  Tally& tally_;
  WideCurve wide_a_, wide_b_;
  Wide reach_ = 0;     // the largest coordinate
  Wide rounding_ = 0;  // of coordinates
  Wide limit_ = kTol;
  Answer answer_;
  bool judged_ = false;
};

// Where and how a curve passes through a point, at an angle of `turn`. It goes on for about `size`,
// bending away from its tangent by `bend` of that, and starts there or passes through, splines and
// composites at a joint. A free-form curve that starts there may end there, too.
struct Passage {
  double x = 0, y = 0, turn = 0, size = 1, bend = .3;
  bool inside = false, closed = false;

  Numbers At(double along, double aside) const {
    const double c = std::cos(turn), s = std::sin(turn);
    return {x + size * (along * c - aside * s), y + size * (along * s + aside * c)};
  }
};

// One after the other; with weights of 1 at both ends and of `weight` between.
Numbers Joined(const std::vector<Numbers>& points, double weight = 0) {
  Numbers all;
  for (const Numbers& p : points) {
    all.insert(all.end(), p.begin(), p.end());
    if (weight > 0) all.push_back(&p == &points.front() || &p == &points.back() ? 1 : weight);
  }
  return all;
}

std::string Through(char kind, const Passage& pass) {
  constexpr double kWeight = .8;
  const double bend = pass.bend, inner = kind == 'r' ? bend / kWeight : bend;
  const Numbers here = pass.At(0, 0), ahead = pass.At(.5, 0), end = pass.At(1, bend);
  const Numbers behind = pass.At(-.5, 0), start = pass.At(-1, bend);
  const Numbers last = pass.closed ? here : pass.At(1.3, 2 * bend);
  std::vector<Numbers> bow = {here, ahead, end, last};
  if (pass.inside) bow = {start, pass.At(0, -inner), end};
  switch (kind) {
    case 'l':
      return Text("l", Joined({pass.inside ? pass.At(-1, 0) : here, pass.At(1, 0)}));
    case 'a': {
      const Numbers centre = pass.At(0, 1 / bend);
      const double way = bend > 0 ? 1 : -1;
      return Text("a", {centre[0], centre[1], pass.size / std::fabs(bend),
                        pass.turn - way * (kPi / 2 + (pass.inside ? .5 : 0)), way});
    }
    case 'b':
      return Text("b", Joined(bow));
    case 'r':
      return Text("r", Joined(bow, kWeight));
    case 'B':
    case 'R':
      if (pass.inside) bow = {start, behind, ahead, end};
      return Text({kind}, Joined(bow, kind == 'R' ? kWeight : 0)) + " | 2 2 2 3.5 5 5 5";
    default:
      bow = {here, ahead, end, end, last};
      if (pass.inside) bow = {start, behind, here, here, ahead, end};
      return Text("c 2 3 (b", Joined({bow.begin(), bow.begin() + 3})) + ")" +
             Text("(b", Joined({bow.begin() + 3, bow.end()})) + ")";
  }
}

// The parameter of that point on the curve.
double ParameterThrough(const Curve& cv, const Passage& pass) {
  const auto [start, length] = Domain(cv);
  if (!pass.inside) return start;
  return cv.type == CV_SEGCV ? 2 : start + length / 2;
}

double Decade(Random& random, double low, double high) {
  return std::pow(10, random.Uniform(low, high)) * (Chance(random, .5) ? -1 : 1);
}

constexpr char kKinds[] = "labrBRc";  // of kAllTypes, as in their descriptions

// Of a composite only Bezier pieces meet lines and arcs, and only free-form ones meet other curves.
Owned RandomOf(Random& random, int kind, int other) {
  if (kAllTypes[kind] != CV_SEGCV) return RandomCurve(random, kAllTypes[kind], 6, 1, 1);
  Numbers widths;
  std::vector<Owned> pieces;
  for (int i = RandomInt(random, 1, 3); i > 0; --i) {
    widths.push_back(random.Uniform(.2, 2));
    pieces.push_back(RandomOf(random, RandomInt(random, 2, other < 2 ? 3 : 5), other));
  }
  return MakeComposite(widths, std::move(pieces));
}

// Random curves, some far away, some much smaller than the other.
void AskRandom(Random& random, int kind_a, int kind_b, double size, Tally& tally) {
  const Owned a = RandomOf(random, kind_a, kind_b), b = RandomOf(random, kind_b, kind_a);
  const double shrunk = std::max(1e-3, size * std::pow(10, random.Uniform(-3, 0)));
  const double size_b = Chance(random, .25) ? shrunk : size;
  const XY at = Chance(random, .25) ? XY{-1e4, 7e3} : XY{0, 0};
  Apply({2, at.x, at.y, size / 10, Chance(random, .5)}, *a);
  Apply({1, at.x, at.y, size_b / 10}, *b);
  Question(a, b, Chance(random, .5) ? 3 : RandomInt(random, 0, 3), size, tally).WantsCrossings();
}

// Through one random point, with a common end, an end on the other curve, a crossing at any angle,
// a touch, or nearly one.
void AskPlanted(Random& random, int kind_a, int kind_b, double size, Tally& tally) {
  const int relation = RandomInt(random, 0, 4);
  const double angle = relation >= 3 ? 0 : Decade(random, -9, 0);
  // Lines at an angle of less than epsilon run together, whatever their size.
  if (kKinds[kind_a] == 'l' && kKinds[kind_b] == 'l' && std::fabs(angle) < 2e-6) return;
  const auto bend = [&] { return random.Uniform(.1, .6) * (Chance(random, .5) ? -1 : 1); };
  const auto [x, y] = RandomPlace(random, size);
  const double turn = random.Uniform(-3, 3), back = Chance(random, .5) ? kPi : 0;
  const Passage through_a{x, y, turn, size, bend(), relation >= 1, Chance(random, .3)};
  const double gap = relation == 4 ? Decade(random, -8, -4) * std::max(1., size * 1e-3) : 0;
  const Passage through_b{x - gap * std::sin(turn),
                          y + gap * std::cos(turn),
                          turn + angle + back,
                          size * random.Uniform(.3, 3),
                          bend(),
                          relation >= 2};
  const Owned a = Make(Through(kKinds[kind_a], through_a)),
              b = Make(Through(kKinds[kind_b], through_b));
  Hit place{ParameterThrough(*a, through_a), ParameterThrough(*b, through_b)};
  for (const auto& [cv, t] : {std::pair(&a, &place.a), std::pair(&b, &place.b)}) {
    if (Chance(random, .5)) continue;
    Reverse(**cv);
    *t = Mirrored(**cv, *t);
  }
  Question question(a, b, 3, size, tally);
  if (std::fabs(gap) < .9e-6) question.Wants(place, relation == 0);
  question.WantsCrossings();
}

TEST(IntersectPlanted, RandomPairs) {
  const char* const wanted = std::getenv("KURVO_PAIRS");
  const int64_t pairs = wanted ? std::atoll(wanted) : 8000;
  Random random;
  SCOPED_TRACE(random.Trace());
  Tally tally;
  for (int64_t i = 0; i < pairs; ++i) {
    SCOPED_TRACE(testing::Message() << "pair " << i);
    const int kind_a = RandomInt(random, 0, 6), kind_b = RandomInt(random, 0, 6);
    const double size = std::pow(10, random.Uniform(-3, 6));
    (i % 2 == 0 ? AskPlanted : AskRandom)(random, kind_a, kind_b, size, tally);
  }
  tally.Print();
}

}  // namespace
}  // namespace kurvo_test
