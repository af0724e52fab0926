// Where plain Bezier curves of low degree take a shorter way than others: the same curve asked in a
// form that takes the long way gives the same answer. KURVO_TEST_CASES sets the number of curves.
#include "support/generator.h"

namespace kurvo_test {
namespace {

constexpr double kSizes[] = {1, 100, 1000};

struct Inputs {
  const Curve& curve;  // plain Bezier, of degree 2 or 3, or its twin
  const Curve& other;  // line or cubic
  Point p;
  double t;
};

struct Answer {
  Numbers lengths;  // and coordinates
  Numbers parameters;
};

using Ask = void (*)(const Inputs& in, GlobalVar& g, Answer& answer);

void Position(const Inputs& in, GlobalVar& g, Answer& answer) {
  answer.lengths.resize(3);
  KurvocvPosition(&in.curve, in.t, answer.lengths.data(), &g);
}

void Derivative(const Inputs& in, GlobalVar& g, Answer& answer) {
  answer.lengths.resize(3);
  KurvocvDeriv(&in.curve, in.t, answer.lengths.data(), &g);
}

void Split(const Inputs& in, GlobalVar& g, Answer& answer) {
  Owned halves[2];
  KurvocvDivide(&in.curve, in.t, halves[0].get(), halves[1].get(), &g);
  for (const Owned& half : halves) {
    const FreeForm form(*half);
    for (int i = 0; i < form.count; ++i)
      answer.lengths.insert(answer.lengths.end(), form.point(i), form.point(i) + 3);
  }
}

void FirstFoot(const Inputs& in, GlobalVar& g, Answer& answer) {
  answer.parameters = {0};
  answer.lengths = {KurvocvDistPoint(&in.curve, in.p, answer.parameters.data(), &g)};
}

void CurveLength(const Inputs& in, GlobalVar& g, Answer& answer) {
  answer.lengths = {0};
  KurvocvCurveLen(&in.curve, 0, 1, answer.lengths.data(), &g);
}

void Crossings(const Inputs& in, GlobalVar& g, Answer& answer) {
  Parameters a, b;
  KurvocrCurveCurve(&in.curve, &in.other, a.get(), b.get(), 3, &g);
  answer.parameters = a;
  std::sort(answer.parameters.begin(), answer.parameters.end());
}

// The form that takes the long way: a composite of that one piece, or weights that are not all 1.
enum class Twin { kComposite, kWeights };
enum class Other { kNone, kLine, kCubic, kAlongside };

Owned TwinOf(const Owned& plain, Twin twin) {
  if (twin == Twin::kComposite) {
    std::vector<Owned> pieces;
    pieces.push_back(Copy(*plain));
    return MakeComposite({1}, std::move(pieces));
  }
  Owned rational(CV_RBEZIER);
  Globals g;
  KurvocvConvert(plain.get(), rational.get(), &g);
  rational.block<KurvoRBezier>().points[1][3] += kUlp;
  return rational;
}

Owned SomeOther(Random& random, Other other, const Owned& plain, double scale) {
  if (other == Other::kNone) return {};
  if (other == Other::kLine)
    return LineBetween(RandomPlace(random, scale), RandomPlace(random, scale));
  if (other == Other::kCubic) {
    Numbers points = RandomPoints(random, 4, false);
    for (double& x : points) x *= scale / kSize;
    return MakeFreeForm(CV_BEZIER, points);
  }
  Owned turned = Copy(*plain);
  Globals g;
  const Point axis{0, 0, 1}, centre = random.Planar(scale), by = random.Planar(scale * 1e-3);
  KurvocvRotate(turned.get(), centre, axis, random.Uniform(1e-3, 1e-2), &g);
  KurvocvMove(turned.get(), by, &g);
  return turned;
}

TEST(FastPaths, GiveWhatTheLongWayGives) {
  const struct {
    const char* name;
    Ask ask;
    Twin twin;
    Other other;
    int share;          // of the curves, one in so many
    double length_tol;  // of the size
    double parameter_tol;
  } rows[] = {
      // clang-format off
      {"position",   Position,    Twin::kComposite, Other::kNone,       1, 0,     0},
      {"derivative", Derivative,  Twin::kComposite, Other::kNone,       1, 0,     0},
      {"split",      Split,       Twin::kWeights,   Other::kNone,       1, 1e-15, 0},
      {"first foot", FirstFoot,   Twin::kWeights,   Other::kNone,       1, 1e-12, 2e-8},
      {"length",     CurveLength, Twin::kWeights,   Other::kNone,       1, 1e-13, 0},
      {"line",       Crossings,   Twin::kWeights,   Other::kLine,       1, 0,     1e-10},
      {"cubic",      Crossings,   Twin::kWeights,   Other::kCubic,      1, 0,     1e-10},
      {"alongside",  Crossings,   Twin::kWeights,   Other::kAlongside, 10, 0,     1e-10},
      // clang-format on
  };
  for (const auto& row : rows) {
    double length_gap = 0, parameter_gap = 0;
    std::size_t numbers = 0;
    Rounds(Cases(100000) / row.share, [&](Random& random, int round) {
      const double size = kSizes[round % 3];
      Numbers points = RandomPoints(random, 3 + round % 2, false);
      for (double& x : points) x *= size / kSize;
      const Owned plain = MakeFreeForm(CV_BEZIER, points), twin = TwinOf(plain, row.twin);
      const Owned other = SomeOther(random, row.other, plain, size);
      const Point p = random.Planar(round % 5 == 0 ? 20 * size : 1.5 * size);
      const double t = random.Uniform(.001, .999);
      Globals g;
      Answer quick, slow;
      row.ask({*plain, *other, p, t}, g, quick);
      row.ask({*twin, *other, p, t}, g, slow);
      EXPECT_EQ(KurvoErrGet(&g), 0);
      numbers += quick.lengths.size() + quick.parameters.size();
      const double lengths = LargestGap(quick.lengths, slow.lengths) / size;
      const double parameters = LargestGap(quick.parameters, slow.parameters);
      EXPECT_TRUE(row.length_tol >= lengths && row.parameter_tol >= parameters)
          << row.name << ": " << lengths << ", " << parameters << Text(" of b", points)
          << Text(" p, t", {p[0], p[1], t});
      length_gap = std::max(length_gap, lengths);
      parameter_gap = std::max(parameter_gap, parameters);
    });
    std::printf("%-10s %7zu numbers, lengths within %.2g of the size, parameters within %.2g\n",
                row.name, numbers, length_gap, parameter_gap);
    EXPECT_GT(numbers, 0U);
  }
}

}  // namespace
}  // namespace kurvo_test
