// Intersections of random curves against brute force: every pair of kinds, size and mode.
#include "relate/brute_force.h"
#include "relate/random_curves.h"

namespace kurvo_test {
namespace {

constexpr double kSteep = 1e-3;  // radians: crossings at more must be found

// How curves are asked for that differs from how they are.
struct Form {
  bool swapped = false, reversed_a = false, reversed_b = false;
};

// One pair of curves with everything they have in common.
class Pair {
 public:
  Pair(const std::string& a, const std::string& b, double size)
      : a_(Make(a)), b_(Make(b)), size_(size), text_(a + "\n" + b + "\n") {}

  void Check() {
    for (const int mode : {3, 0, 1, 2}) {
      const bool bounded_a = mode == 1 || mode == 3, bounded_b = mode == 2 || mode == 3;
      const bool differs = (!bounded_a && Elementary(*a_)) || (!bounded_b && Elementary(*b_));
      if (mode != 3 && !differs) continue;
      const double reach = Elementary(*a_) && Elementary(*b_) ? 1e4 * size_ : 4 * size_;
      const auto brute_force = [&](const Owned& cv_a, const Owned& cv_b) {
        wide_a_ = Pieces(*cv_a, bounded_a, reach);
        wide_b_ = Pieces(*cv_b, bounded_b, reach);
        want_ = BruteForce(wide_a_, wide_b_);
      };
      brute_force(a_, b_);
      const int swapped_mode = mode == 1 || mode == 2 ? 3 - mode : mode;
      const std::size_t count = Compare(*a_, *b_, mode, "as they are");
      EXPECT_EQ(Compare(*b_, *a_, swapped_mode, "swapped", {true}), count) << text_;
      if (mode != 3) continue;
      EXPECT_EQ(Compare(*Backwards(a_), *b_, mode, "first reversed", {false, true}), count)
          << text_;
      EXPECT_EQ(Compare(*a_, *Backwards(b_), mode, "second reversed", {false, false, true}), count)
          << text_;
      const Similarity moves[] = {{.7, 3 * size_, -size_}, {2, -1e4, 7e3, 1, true}};
      for (const Similarity& move : moves) {  // anew: far away coordinates are rounded
        const Owned moved_a = Moved(a_, move), moved_b = Moved(b_, move);
        brute_force(moved_a, moved_b);
        rounding_ = 8 * kUlp * std::fabs(move.x);
        Compare(*moved_a, *moved_b, mode, "moved");
      }
    }
  }

 private:
  static bool Elementary(const Curve& cv) { return cv.type == CV_LINE || cv.type == CV_ARC; }

  static Owned Copy(const Owned& cv) {
    Owned copy;
    Globals g;
    KurvocvCopyCurve(cv.get(), copy.get(), &g);
    return copy;
  }
  static Owned Backwards(const Owned& cv) {
    Owned copy = Copy(cv);
    Reverse(*copy.get());
    return copy;
  }
  static Owned Moved(const Owned& cv, const Similarity& move) {
    Owned copy = Copy(cv);
    Apply(move, *copy.get());
    return copy;
  }

  // Asks for the common points and holds them against brute force, as parameters of the curves as
  // they are. Returns their number.
  std::size_t Compare(const Curve& a, const Curve& b, int mode, const char* name, Form form = {}) {
    Globals g;
    Answer answer = Intersect(a, b, mode, g);
    trace_ = text_ + name + ", mode " + std::to_string(mode);
    EXPECT_EQ(KurvoErrGet(&g), 0) << trace_;
    EXPECT_NE(answer.result, static_cast<uint32_t>(KURVO_OVERLAP)) << trace_;
    const bool sorted = std::is_sorted(answer.hits.begin(), answer.hits.end(),
                                       [](const Hit& p, const Hit& q) { return p.a < q.a; });
    EXPECT_TRUE(sorted || (a.type == CV_ARC && b.type == CV_ARC)) << trace_;
    for (Hit& hit : answer.hits) {
      if (form.swapped) std::swap(hit.a, hit.b);
      if (form.reversed_a) hit.a = Mirrored(*a_, hit.a);
      if (form.reversed_b) hit.b = Mirrored(*b_, hit.b);
    }
    CheckHits(answer.hits);
    return answer.hits.size();
  }

  // Parameters of one arc, but by turns.
  static Wide Apart(const WideCurve& curve, Wide s, Wide t) {
    if (!curve[0].points.empty()) return std::fabs(s - t);
    const Wide turn = 2 * kPiL / std::fabs(curve[0].sweep);
    return std::fabs(std::remainder(s - t, turn));
  }

  // What rounding of coordinates moves a crossing by counts in full, what it does to parameters of
  // an unbounded line relative to their size.
  bool Same(const WideHit& want, const Hit& hit) const {
    const Wide off = rounding_ / want.angle;
    const Wide domain_a = std::max(L(Domain(*a_).second), std::fabs(want.a));
    const Wide domain_b = std::max(L(Domain(*b_).second), std::fabs(want.b));
    return 1e-8L * domain_a + off / Speed(want.at_a) >= Apart(wide_a_, want.a, hit.a) &&
           1e-8L * domain_b + off / Speed(want.at_b) >= Apart(wide_b_, want.b, hit.b);
  }

  // Next to another one: where a corner just reaches a curve both may count as one.
  bool Crowded(const WideHit& want) const {
    return std::any_of(want_.begin(), want_.end(), [&](const WideHit& other) {
      return &other != &want && 1.5e-6L >= Gap(other.at_a, want.at_a);
    });
  }

  static std::string Listed(const std::vector<Hit>& hits) {
    Numbers numbers;
    for (const Hit& hit : hits) numbers.insert(numbers.end(), {hit.a, hit.b});
    return Text(" among", numbers);
  }

  void CheckHits(const std::vector<Hit>& hits) const {
    std::vector<int> meant(hits.size());
    for (const WideHit& want : want_) {
      int found = 0;
      for (std::size_t i = 0; i < hits.size(); ++i) {
        if (!Same(want, hits[i])) continue;
        ++found;
        ++meant[i];
      }
      EXPECT_TRUE(found == 1 || !want.inside || want.angle <= kSteep || Crowded(want))
          << trace_ << "\nat " << want.a << ' ' << want.b << ", angle " << want.angle << ": found "
          << found << " times" << Listed(hits);
    }
    for (std::size_t i = 0; i < hits.size(); ++i) {
      if (meant[i] > 0 || CrossAt(wide_a_, wide_b_, hits[i].a, hits[i].b, kSteep)) continue;
      // A contact within the tolerance, then.
      EXPECT_LE(GapAt(wide_a_, wide_b_, hits[i].a, hits[i].b), 1.5e-6)
          << trace_ << "\nat " << hits[i].a << ' ' << hits[i].b;
      const bool twice = std::any_of(hits.begin(), hits.end(), [&](const Hit& other) {
        return &other != &hits[i] && OneContact(hits[i], other);
      });
      EXPECT_FALSE(twice) << trace_ << "\nagain at " << hits[i].a << ' ' << hits[i].b;
      if (twice) return;
    }
  }

  // True when the curves stay together all the way from one hit to the other.
  bool OneContact(const Hit& p, const Hit& q) const {
    for (int i = 1; i < 16; ++i) {
      const double share = i / 16.0;
      if (GapAt(wide_a_, wide_b_, p.a + share * (q.a - p.a), p.b + share * (q.b - p.b)) > 1e-6)
        return false;
    }
    return true;
  }

  const Owned a_, b_;
  const double size_;
  const std::string text_;
  std::string trace_;
  double rounding_ = 0;  // of coordinates
  WideCurve wide_a_, wide_b_;
  std::vector<WideHit> want_;
};

class IntersectRandom : public testing::TestWithParam<double> {};

TEST_P(IntersectRandom, AgreesWithBruteForce) {
  constexpr int kPairs = 6;
  Generator generator(GetParam());
  SCOPED_TRACE(generator.Trace());
  for (const char a : kKinds)
    for (const char b : kKinds)
      for (int i = 0; i < kPairs && !HasFailure(); ++i)
        Pair(generator.Curve(a), generator.Curve(b), GetParam()).Check();
}

INSTANTIATE_TEST_SUITE_P(Sizes, IntersectRandom, testing::Values(.01, .1, 1, 100, 1e4));

}  // namespace
}  // namespace kurvo_test
