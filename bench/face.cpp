// What kurvo.hpp costs over kurvo.h: pairs named face/operation/c and face/operation/cpp, the same
// question to the same curves, errors looked at in both.
#include <benchmark/benchmark.h>

#include <array>
#include <kurvo.hpp>

#include "curves.h"

namespace {

constexpr unsigned kInputs = 64;  // a power of two, so that no branch is learnt by heart

struct Inputs {
  Inputs() {
    bench::Random random;
    const auto point = [&] { return kurvo::Point{random.Unit(), random.Unit(), 0}; };
    for (unsigned i = 0; i < kInputs; ++i) {
      cubics[i] = *kurvo::Curve::Bezier({point(), point(), point(), point()});
      splines[i] = *cubics[i].Converted(CV_BSPLINE, context);
      lines[i] = *kurvo::Curve::Line(point(), point());
      points[i] = point();
      parameters[i] = random.Unit();
    }
  }
  kurvo::Context context;
  std::array<kurvo::Curve, kInputs> cubics, splines, lines;
  std::array<kurvo::Point, kInputs> points;
  std::array<double, kInputs> parameters;
};

// ask(inputs, i): one of the inputs after the other.
template <class Ask>
void Pair(const char* name, Ask ask) {
  benchmark::RegisterBenchmark(name, [ask](benchmark::State& state) {
    Inputs inputs;
    unsigned i = 0;
    for (auto _ : state) ask(inputs, i++ % kInputs);
  });
}

bool Ok(Inputs& in) { return (in.context.Get()->error & 3) < KURVO_SEVERITY_ERROR; }

[[maybe_unused]] const bool kRegistered = [] {
  using benchmark::DoNotOptimize;
  Pair("face/position/c", [](Inputs& in, unsigned i) {
    Coord p;
    KurvocvPosition(in.cubics[i].Get(), in.parameters[i], p, in.context.Get());
    if (Ok(in)) DoNotOptimize(p[0] + p[1]);
  });
  Pair("face/position/cpp", [](Inputs& in, unsigned i) {
    const auto p = in.cubics[i].Position(in.parameters[i], in.context);
    if (p) DoNotOptimize(p->x + p->y);
  });
  Pair("face/derivative/c", [](Inputs& in, unsigned i) {
    Coord p;
    KurvocvDeriv(in.cubics[i].Get(), in.parameters[i], p, in.context.Get());
    if (Ok(in)) DoNotOptimize(p[0] + p[1]);
  });
  Pair("face/derivative/cpp", [](Inputs& in, unsigned i) {
    const auto p = in.cubics[i].Derivative(in.parameters[i], in.context);
    if (p) DoNotOptimize(p->x + p->y);
  });
  // Of splines, where both take the nearest of all points.
  Pair("face/nearest/c", [](Inputs& in, unsigned i) {
    double t = 0;
    const double distance =
        KurvocvDistPoint(in.splines[i].Get(), in.points[i].Data(), &t, in.context.Get());
    if (Ok(in)) DoNotOptimize(distance + t);
  });
  Pair("face/nearest/cpp", [](Inputs& in, unsigned i) {
    const auto nearest = in.splines[i].NearestTo(in.points[i], in.context);
    if (nearest) DoNotOptimize(nearest->distance + nearest->t);
  });
  Pair("face/nearest-bezier/cpp", [](Inputs& in, unsigned i) {
    const auto nearest = in.cubics[i].NearestTo(in.points[i], in.context);
    if (nearest) DoNotOptimize(nearest->distance + nearest->t);
  });
  Pair("face/split/c", [](Inputs& in, unsigned i) {
    Curve first, second;
    KurvocvDivide(in.cubics[i].Get(), in.parameters[i], &first, &second, in.context.Get());
    if (Ok(in)) DoNotOptimize(first.data);
    KurvocvFreeCurve(&second);  // as C++ does: the last made first
    KurvocvFreeCurve(&first);
  });
  Pair("face/split/cpp", [](Inputs& in, unsigned i) {
    const auto parts = in.cubics[i].Split(in.parameters[i], in.context);
    if (parts) DoNotOptimize(parts->first.Get()->data);
  });
  Pair("face/intersect/c", [](Inputs& in, unsigned i) {
    CvParam a, b;
    KurvocrCurveCurve(in.cubics[i].Get(), in.lines[i].Get(), &a, &b, 3, in.context.Get());
    if (Ok(in)) DoNotOptimize(a.count);
    KurvocrFreeCvParam(&a);
    KurvocrFreeCvParam(&b);
  });
  Pair("face/intersect/cpp", [](Inputs& in, unsigned i) {
    const auto meetings = in.cubics[i].Intersect(in.lines[i], in.context);
    if (meetings) DoNotOptimize(meetings->a.size());
  });
  return true;
}();

}  // namespace
