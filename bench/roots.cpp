// The polynomial root finder by degree: names are roots/<kind>/<degree>.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
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

// Polynomials with roots near those given, in turn; multiple ones stay together.
void Find(benchmark::State& state, const std::vector<double>& like) {
  constexpr std::size_t kPolynomials = 64;
  constexpr double kMove = 0.09;
  std::mt19937_64 random(20240917);
  std::vector<Polynomial> polynomials;
  while (polynomials.size() < kPolynomials) {
    std::vector<double> roots = like;
    double move = 0.0;
    for (std::size_t i = 0; i < roots.size(); ++i) {
      const bool multiple = i > 0 && like[i] == like[i - 1];
      if (!multiple) move = kMove * (2.0 * static_cast<double>(random() >> 11) * 0x1p-53 - 1.0);
      roots[i] += move;
    }
    polynomials.push_back(FromRoots(roots));
  }
  std::size_t i = 0;
  for (auto _ : state) {
    kurvo::RootList roots = kurvo::FindRoots(polynomials[i++ % kPolynomials], 0.0, 1.0);
    benchmark::DoNotOptimize(roots);
  }
}

// Up to five roots inside, the others well outside.
void Simple(benchmark::State& state) {
  std::vector<double> roots;
  for (std::size_t i = 0; i < Degree(state); ++i)
    roots.push_back(i < 5 ? 0.1 + 0.2 * static_cast<double>(i) : 1.5 + static_cast<double>(i));
  Find(state, roots);
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
  Find(state, roots);
}
BENCHMARK(None)->Name("roots/none")->Arg(3)->Arg(13)->Arg(39);

// A triple and a double root: the worst case for isolation.
void Multiple(benchmark::State& state) {
  std::vector<double> roots = {0.3, 0.3, 0.3, 0.7, 0.7};
  for (std::size_t i = roots.size(); i < Degree(state); ++i)
    roots.push_back(1.5 + static_cast<double>(i));
  Find(state, roots);
}
BENCHMARK(Multiple)->Name("roots/multiple")->Arg(5)->Arg(13)->Arg(39);

}  // namespace
