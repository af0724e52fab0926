// The library against slow textbook algorithms in Wide, on random curves of every type. The
// largest errors are printed for each type and degree n, in units of size 3^n 2^-52.
// KURVO_TEST_CASES sets the number of curves.
#include <cstdio>
#include <map>
#include <string>

#include "laws/cases.h"

using namespace kurvo_test;

namespace {

constexpr int kCases = 2000;
constexpr int kMaxDegree = 12;
constexpr int kMaxCompositeDegree = 6;

// What the largest errors may be. Positions and pieces: in units of size 3^n 2^-52. Derivatives: of
// the same times (n r / span)^k for the k-th, and k! above the third, r being the ratio of the
// largest to the least weight.
constexpr double kMaxUnits = 16;

// clang-format off
enum Measure { kPosition, kFirst, kSecond, kThird, kBend, kDivision, kConversion, kExtension, kAll };
// clang-format on
constexpr const char* kNames[kAll] = {"position",  "derivative 1", "derivative 2", "3 to 6",
                                      "curvature", "division",     "conversion",   "extension"};

constexpr double kSettled = .001;  // of the length of one part, that is halved until it is settled
constexpr int64_t kLengthsForOneUnsettled = 10000;
constexpr double kMostUnsettled = 2;  // of the error expected

// In how many parts a length is measured.
double MeasuredParts(const Curve& cv) {
  if (IsSpline(cv.type)) return 16 * (SplineCount(cv) - FreeForm(cv).order + 1);
  if (cv.type != CV_SEGCV) return 1;
  const auto& block = *static_cast<KurvoSegcv*>(cv.data);
  double parts = 0;
  for (int i = 0; i < block.count; ++i) parts += 16 * MeasuredParts(block.curves[i]);
  return parts;
}

struct Worst {
  double units[kAll] = {};
  double length = 0;  // error of the length, in its unit
  int64_t curves = 0;
  int64_t lengths = 0;
  int64_t unsettled = 0;  // lengths farther off than the change at which halving stops lets expect
};

class Differential {
 public:
  void Check(Random& random, int32_t type) {
    const Owned cv = Make(random, type);
    degree_ = Degree(*cv);
    worst_ = &table_[{type, degree_}];
    ++worst_->curves;
    unit_ = Size(*cv) * std::pow(3.0, degree_) * 0x1p-52;
    const auto [start, length] = Domain(*cv);
    for (int i = 0; i < 3; ++i) {
      const double t = start + length * (i < 2 ? RandomCut(random, 0, 1) : double(i == 2));
      CheckPoint(*cv, t);
      if (i < 2 || type != CV_SEGCV)  // no piece goes on behind the end of a composite
        CheckDerivatives(*cv, t, i < 2 ? Side::kBehind : Side::kBefore);
    }
    CheckDivision(*cv, random);
    CheckConversions(*cv);
    CheckExtension(*cv, random);
    if (worst_->curves % 16 == 0) CheckLengths(*cv, random);
  }

  void Report() const {
    static const std::map<int32_t, const char*> kTypes = {
        {CV_LINE, "line"},        {CV_ARC, "arc"},
        {CV_BEZIER, "Bezier"},    {CV_RBEZIER, "rational Bezier"},
        {CV_BSPLINE, "B-spline"}, {CV_RBSPLINE, "rational B-spline"},
        {CV_SEGCV, "composite"}};
    std::printf(
        "largest error / (size 3^n 2^-52), derivatives / (n r / span)^k; length: absolute\n");
    std::printf("%-18s %2s %8s", "type", "n", "curves");
    for (const char* name : kNames) std::printf(" %12s", name);
    std::printf(" %9s %9s\n", "length", "unsettled");
    for (const auto& [key, worst] : table_) {
      std::printf("%-18s %2d %8lld", kTypes.at(key.first), key.second,
                  static_cast<long long>(worst.curves));
      for (const double units : worst.units) std::printf(" %12.3g", units);
      std::printf(" %9.2g %9lld\n", worst.length, static_cast<long long>(worst.unsettled));
    }
  }

  // That the last halving changed little proves nothing, but it misleads hardly ever.
  void CheckUnsettled() const {
    int64_t lengths = 0, unsettled = 0;
    for (const auto& [key, worst] : table_) {
      lengths += worst.lengths;
      unsettled += worst.unsettled;
    }
    EXPECT_LE(unsettled, lengths / kLengthsForOneUnsettled);
  }

 private:
  static Owned Make(Random& random, int32_t type) {
    const Owned cv = RandomCurve(random, type, type == CV_SEGCV ? kMaxCompositeDegree : kMaxDegree);
    if (IsSpline(type) && Chance(random, .5)) {  // a domain of its own, in [0, 1] for its cuts
      const FreeForm form(*cv);
      for (int i = 0; i < form.order + form.count; ++i) form.knots[i] = .25 + form.knots[i] / 2;
    }
    return Scaled(*cv, std::exp2(random.Uniform(-10, 10)));
  }

  void Note(Measure what, Wide error, Wide unit) {
    const auto units = static_cast<double>(error / unit);
    double& worst = worst_->units[what];
    if (!(worst >= units)) worst = units;  // NaN stays
    EXPECT_LE(units, kMaxUnits) << kNames[what] << " of degree " << degree_;
  }

  void CheckPoint(const Curve& cv, double t) {
    Globals g;
    Point p;
    KurvocvPosition(&cv, t, p, &g);
    Note(kPosition, Gap({p[0], p[1]}, Oracle(cv).PointAt(t)), unit_);
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }

  void CheckDerivatives(const Curve& cv, double t, Side side) {
    const JetPoint<8> exact = Oracle(cv).JetAt<8>(t, side);
    const Curve* const piece = exact.piece;
    // On a composite derivatives are those of its Bezier pieces only, not of pieces of pieces.
    if (cv.type == CV_SEGCV && piece->type != CV_BEZIER && piece->type != CV_RBEZIER) return;
    const Wide per_order = std::max(degree_, 1) * WeightRatio(*piece) / exact.span;
    for (int n = 1; n <= (IsSpline(cv.type) ? 2 : 6); ++n) {
      Globals g;
      Point d;
      KurvocvNDeriv(&cv, t, d, n, &g);
      const Wide error = Gap({d[0], d[1]}, exact.Derivative(static_cast<std::size_t>(n)));
      const Wide high = n > 3 ? std::tgamma(L(n + 1)) : 1;
      Note(static_cast<Measure>(kPosition + std::min(n, 3)), error,
           unit_ * high * std::pow(per_order, n));
      EXPECT_EQ(KurvoErrGet(&g), 0);
    }
    CheckCurvature(cv, t, exact, per_order);
  }

  // k = (x' y'' - y' x'') / |c'|^3, a vector to the left of travel where that is positive. Its unit
  // is what errors of one unit in c' and c'' make of it.
  void CheckCurvature(const Curve& cv, double t, const JetPoint<8>& p, Wide per_order) {
    const Wide speed = p.Size(1), bend = p.Size(2);
    const Wide unit1 = unit_ * per_order, unit2 = unit1 * per_order;
    if (!(speed > 1e-5L) || !(speed > 1e4L * unit1)) return;
    const auto [dx, dy] = p.Derivative(1);
    const auto [ddx, ddy] = p.Derivative(2);
    const Wide k = (dx * ddy - dy * ddx) / (speed * speed * speed);
    Globals g;
    Point v;
    KurvocvCurvature(&cv, t, v, &g);
    const Wide error = std::hypot(v[0] + k * dy / speed, v[1] - k * dx / speed);
    Note(kBend, error, (unit2 + bend / speed * unit1) / (speed * speed) + 0x1p-52L * std::fabs(k));
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }

  // `piece` runs over its domain along the stretch [from, to] of `whole`.
  void CheckStretch(Measure what, const Curve& piece, const Curve& whole, Wide from, Wide to,
                    Wide factor = 1) {
    const auto [start, length] = Domain(piece);
    EXPECT_TRUE(what == kConversion || (start == 0 && length == 1));
    const Oracle on_piece(piece), on_whole(whole);
    for (const Wide s : {.0517L, .5L - 1 / 3001.0L, .8531L})
      Note(what,
           Gap(on_piece.PointAt(start + s * length), on_whole.PointAt(from + s * (to - from))),
           unit_ * factor);
  }

  // In two, where that is done, and in several; the parts join to the bit.
  void CheckDivision(const Curve& cv, Random& random) {
    const auto [start, length] = Domain(cv);
    Numbers cuts;
    const int count = RandomInt(random, 1, 6);
    for (int i = 1; i <= count; ++i)
      cuts.push_back(start +
                     length * RandomCut(random, (i - .45) / (count + 1), (i + .45) / (count + 1)));
    const CvParam list = {count, cuts.data()};
    Globals g;
    Chain parts;
    KurvocvNDivide(&cv, &list, parts.get(), &g);
    ASSERT_EQ(KurvoErrGet(&g), 0);
    ASSERT_EQ(parts.count(), count + 1);
    if (StandsStill(cv)) return;
    cuts.push_back(start + length);
    Wide from = start;
    Point end, next;
    for (int i = 0; i <= count; from = cuts[static_cast<std::size_t>(i++)]) {
      CheckStretch(kDivision, parts[i], cv, from, cuts[static_cast<std::size_t>(i)]);
      KurvocvStartPoint(&parts[i], next, &g);
      EXPECT_TRUE(i == 0 || next == end) << "at joint " << i;
      KurvocvEndPoint(&parts[i], end, &g);
    }
    if ((cv.type == CV_BEZIER || cv.type == CV_RBEZIER) && (degree_ > 4)) return;  // not divided
    Owned first, second;
    KurvocvDivide(&cv, cuts[0], first.get(), second.get(), &g);
    ASSERT_TRUE(KurvoErrGet(&g) == 0 && first->data && second->data);
    CheckStretch(kDivision, *first, cv, start, cuts[0]);
    CheckStretch(kDivision, *second, cv, cuts[0], L(start) + length);
  }

  // The free-form types share the parameter with what they are made of. Arcs have another one, and
  // the pieces of these composites do not join.
  void CheckConversions(const Curve& cv) {
    if (cv.type == CV_ARC || cv.type == CV_SEGCV) return;
    const auto [start, length] = Domain(cv);
    for (const int32_t type : {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE, CV_SEGCV}) {
      if (type == cv.type) continue;
      Globals g;
      Owned made(type);
      if (KurvocvConvert(&cv, made.get(), &g) != KURVO_CONVERTED) continue;
      CheckStretch(kConversion, *made, cv, start, L(start) + length);
    }
  }

  // By up to the length of the end span: at one length outside control points count 3^n times. The
  // range may lie beside the curve, but for rational ones, whose weights come near 0 there, which
  // divides. Of composites the end pieces go on.
  void CheckExtension(const Curve& cv, Random& random) {
    const auto [start, length] = Domain(cv);
    const auto [before, behind] = EndSpans(cv);
    double a = 0, b = 0;
    if (cv.type == CV_SEGCV) {
      if (StandsStill(cv)) return;
      a = RandomCut(random, -.2, .05), b = RandomCut(random, -.2, .05);
    } else {
      const bool beside = !IsRational(cv.type);
      do {
        a = random.Uniform(beside ? -1 - behind : -.4, before);
        b = random.Uniform(beside ? -1 - before : -.4, behind);
      } while (1 + a + b < .02);
    }
    Globals g;
    Owned longer;
    KurvocvExtendCurve(&cv, a, b, longer.get(), &g);
    if (KurvoErrGet(&g) == KURVO_ERR_WEIGHT) return;
    if (cv.type == CV_ARC && KurvoErrGet(&g) == KURVO_ERR_RANGE) return;  // half a turn and more
    ASSERT_EQ(KurvoErrGet(&g), 0);
    if (!(WeightRatio(*longer) > 0)) return;  // a later weight of a B-spline is negative: a pole
    CheckStretch(kExtension, *longer, cv, start - L(a) * length, start + (1 + L(b)) * length,
                 WeightRatio(*longer));
  }

  void CheckLengths(const Curve& cv, Random& random) {
    const auto [start, length] = Domain(cv);
    CheckLength(cv, start, start + length);
    const double from = start + length * RandomCut(random, 0, .6);
    CheckLength(cv, from, from + length * RandomCut(random, .1, .4));
  }

  void CheckLength(const Curve& cv, double from, double to) {
    Globals g;
    double found = 0, back = 0;
    KurvocvCurveLen(&cv, from, to, &found, &g);
    KurvocvCurveLen(&cv, to, from, &back, &g);
    EXPECT_EQ(KurvoErrGet(&g), 0);
    EXPECT_EQ(back, -found);
    const Wide exact = Oracle(cv).Length(from, to);
    const auto error = static_cast<double>(std::fabs(found - exact));
    worst_->length = std::max(worst_->length, error);
    ++worst_->lengths;
    // Control polygons of m parts are too long by what their next halving gains, times 4 / 3; a
    // part is the last of ten halvings at the latest.
    const double parts = MeasuredParts(cv);
    const double n = degree_;
    const double expected = kSettled * parts + Size(cv) * n * n / (1024 * 1024);
    if (error > expected) ++worst_->unsettled;
    EXPECT_LE(error, kMostUnsettled * expected) << parts << " parts";
  }

  std::map<std::pair<int32_t, int>, Worst> table_;
  Worst* worst_ = nullptr;
  int degree_ = 0;
  double unit_ = 0;
};

TEST(Differential, RandomCurvesOfAllTypes) {
  Differential differential;
  Rounds(Cases(kCases),
         [&](Random& random, int i) { differential.Check(random, kAllTypes[i % 7]); });
  differential.CheckUnsettled();
  differential.Report();
}

}  // namespace
