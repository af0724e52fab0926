// The polynomial root finder by degree: names are roots/<kind>/<degree>.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "eval/root_finder.h"

namespace {

using kurvo::Polynomial;

// The product of t - r over the roots.
Polynomial FromRoots(const std::vector<double>& roots) {
  Polynomial f = Polynomial::Constant(1.0);
  for (const double root : roots) {
    Polynomial factor(2);
    factor[0] = -root;
    factor[1] = 1.0;
    f = kurvo::Product(f, factor);
  }
  return kurvo::Normalised(f);
}

std::size_t Degree(const benchmark::State& state) {
  return static_cast<std::size_t>(state.range(0));
}

void Find(benchmark::State& state, const Polynomial& f) {
  for (auto _ : state) {
    kurvo::RootList roots = kurvo::FindRoots(f, 0.0, 1.0);
    benchmark::DoNotOptimize(roots);
  }
}

// Up to five roots inside, the others well outside.
void Simple(benchmark::State& state) {
  std::vector<double> roots;
  for (std::size_t i = 0; i < Degree(state); ++i)
    roots.push_back(i < 5 ? 0.1 + 0.2 * static_cast<double>(i) : 1.5 + static_cast<double>(i));
  Find(state, FromRoots(roots));
}
BENCHMARK(Simple)
    ->Name("roots/simple")
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(9)
    ->Arg(13)
    ->Arg(20)
    ->Arg(39);

void None(benchmark::State& state) {
  std::vector<double> roots;
  for (std::size_t i = 0; i < Degree(state); ++i) roots.push_back(1.5 + static_cast<double>(i));
  Find(state, FromRoots(roots));
}
BENCHMARK(None)->Name("roots/none")->Arg(3)->Arg(13)->Arg(39);

// A triple and a double root: the worst case for isolation.
void Multiple(benchmark::State& state) {
  std::vector<double> roots = {0.3, 0.3, 0.3, 0.7, 0.7};
  for (std::size_t i = roots.size(); i < Degree(state); ++i)
    roots.push_back(1.5 + static_cast<double>(i));
  Find(state, FromRoots(roots));
}
BENCHMARK(Multiple)->Name("roots/multiple")->Arg(5)->Arg(13)->Arg(39);

}  // namespace
