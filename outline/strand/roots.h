// Where polynomials in Bernstein form change their sign.
#pragma once

#include <array>
#include <cstddef>

#include "strand/check.h"

namespace kurvo::outline {

// The numerator of a derivative of a rational Bezier has the highest degree that is asked for.
inline constexpr int kMostRootDegree = 2 * kMostDegree;

// Room for the roots of four such polynomials.
class RootList {
 public:
  const double* begin() const { return roots_.data(); }
  const double* end() const { return roots_.data() + size_; }
  std::size_t size() const { return size_; }
  double operator[](std::size_t i) const { return roots_[i]; }
  void Add(double root) {
    if (size_ < roots_.size()) roots_[size_++] = root;
  }

 private:
  std::array<double, 4 * kMostRootDegree> roots_;
  std::size_t size_ = 0;
};

// Adds the parameters inside (0, 1) at which the polynomial of degree n with these Bernstein
// coefficients changes its sign, to the last bits; ascending. Of roots closer together than 2^-48
// one is found when their number is odd. Cost: O(n^2) for each halving that isolates them.
void AddSignChanges(const double* coefficients, int n, RootList& roots);

// The numerator p' w - p w' of the derivative of p / w, both of degree n, in Bernstein form.
// Result: its degree, 2 n - 1; `out` has room for kMostRootDegree + 1 coefficients. Products in
// Bernstein form: Farouki and Rajan, Algorithms for polynomials in Bernstein form, 1988.
int QuotientNumerator(const double* p, const double* w, int n, double* out);

}  // namespace kurvo::outline
