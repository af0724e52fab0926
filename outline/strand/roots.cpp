#include "strand/roots.h"

#include <algorithm>
#include <cmath>

#include "strand/bernstein.h"
#include "strand/bracket.h"

namespace kurvo::outline {
namespace {

constexpr int kMostHalvings = 48;

// Changes of sign along the coefficients, zeros passed over.
int Variations(const double* c, int n) {
  int variations = 0;
  double last = 0;
  for (int i = 0; i <= n; ++i) {
    if (c[i] == 0) continue;
    if (last != 0 && (c[i] < 0) != (last < 0)) ++variations;
    last = c[i];
  }
  return variations;
}

struct Search {
  const double* whole;
  int n;
  RootList& roots;
  std::size_t first;  // of this polynomial's roots

  // The outer coefficients that are not 0.
  double FirstSign(const double* c) const {
    int i = 0;
    while (i < n && c[i] == 0) ++i;
    return c[i];
  }
  double LastSign(const double* c) const {
    int i = n;
    while (i > 0 && c[i] == 0) --i;
    return c[i];
  }

  void Add(double t) {
    if (t > 0 && t < 1 && (roots.size() == first || t > roots[roots.size() - 1])) roots.Add(t);
  }

  // c: the coefficients between low and high.
  void Run(const double* c, double low, double high, int halvings_left) {
    const int variations = Variations(c, n);
    if (variations == 0) return;
    const bool differ = (c[0] < 0) != (c[n] < 0) && c[0] != 0 && c[n] != 0;
    if (variations == 1 && differ) {
      const auto f = [this](double t) {
        return BernsteinSum(n, t, [this](int i) { return whole[i]; });
      };
      return Add(SignChangeBetween(f, low, high, c[0], c[n]));
    }
    const double middle = 0.5 * (low + high);
    if (halvings_left == 0) {
      if (differ) Add(middle);
      return;
    }
    double left[kMostRootDegree + 1], right[kMostRootDegree + 1];
    SplitBernstein(c, n, 0.5, left, right);
    Run(left, low, middle, halvings_left - 1);
    // A root on the middle belongs to neither half.
    if (right[0] == 0 && (FirstSign(right) < 0) != (LastSign(left) < 0)) Add(middle);
    Run(right, middle, high, halvings_left - 1);
  }
};

}  // namespace

void AddSignChanges(const double* coefficients, int n, RootList& roots) {
  if (n < 1 || Variations(coefficients, n) == 0) return;
  Search{coefficients, n, roots, roots.size()}.Run(coefficients, 0, 1, kMostHalvings);
}

int QuotientNumerator(const double* p, const double* w, int n, double* out) {
  const int degree = 2 * n - 1;
  std::fill(out, out + degree + 1, 0.0);
  double first = n;  // n times (n - 1 over i)
  for (int i = 0; i < n; ++i) {
    double product = first;  // times (n over j)
    for (int j = 0; j <= n; ++j) {
      out[i + j] += product * ((p[i + 1] - p[i]) * w[j] - p[j] * (w[i + 1] - w[i]));
      product = product * (n - j) / (j + 1);
    }
    first = first * (n - 1 - i) / (i + 1);
  }
  double binomial = 1;  // degree over k
  for (int k = 0; k <= degree; ++k) {
    out[k] /= binomial;
    binomial = binomial * (degree - k) / (k + 1);
  }
  return degree;
}

}  // namespace kurvo::outline
