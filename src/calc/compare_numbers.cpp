// Comparison of single numbers within the tolerances.
#include <cmath>

#include "kurvo.h"

extern "C" {

int KurvoclCompare(double a, double b, const GlobalVar* g) noexcept {
  if (a > b + g->epsilon) return 1;
  return b - g->epsilon > a ? -1 : 0;
}

int KurvoclPositive(double a, const GlobalVar* g) noexcept { return int{a > g->epsilon}; }

int KurvoclNegative(double a, const GlobalVar* g) noexcept { return int{-g->epsilon > a}; }

int KurvoclSame(double a, double b, const GlobalVar* g) noexcept {
  return int{g->epsilon >= std::fabs(a - b)};
}

int KurvoclZero2(double a, const GlobalVar* g) noexcept { return int{g->epsilon2 >= std::fabs(a)}; }

double KurvoclFabs(double a) noexcept { return std::fabs(a); }

}  // extern "C"
