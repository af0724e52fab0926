// Real roots of a polynomial in an interval.
#include "eval/root_finder.h"

#include <cmath>
#include <optional>

#include "eval/sign_variations.h"
#include "eval/sturm_chain.h"

namespace kurvo {
namespace {

constexpr double kNarrowest = 1e-5;   // a narrower interval is not split further
constexpr double kNewtonStep = 1e-5;  // a step below this ends Newton's iteration
constexpr int kNewtonSteps = 150;
constexpr int kBisectionSteps = 100;       // enough for any interval down to one ulp
constexpr std::size_t kTrustedChain = 14;  // coefficients up to which a Sturm count of 0 is final
constexpr double kDoubtedWidth = 0.02;     // intervals from which on a longer one's is questioned
constexpr int kMaxDepth = 100;             // halvings of the search interval
constexpr int kMaxSplits = 4096;           // in all: a chain of noise ends here at the latest

struct Bracket {
  double a, b;
  double fa, fb;
  int changes_a, changes_b;

  bool SignChange() const { return (fa < 0.0 && fb > 0.0) || (fa > 0.0 && fb < 0.0); }
  // Moves to t, where f is `value`, the end at which f has the same sign.
  void Shrink(double t, double value) {
    if ((value < 0.0) == (fa < 0.0)) {
      a = t;
      fa = value;
    } else {
      b = t;
      fb = value;
    }
  }
  // Distinct roots inside. A sign change is a root whatever rounding made of the chain.
  int Roots() const {
    const int count = changes_a - changes_b;
    return count < 1 && SignChange() ? 1 : count;
  }
};

class Isolation {
 public:
  explicit Isolation(const Polynomial& f) : f_(f), derivative_(Derivative(f)) {}

  void Run(double a, double b, RootList& roots) {
    const SignVariations variations = VariationsOn(f_, a, b);
    if (variations == SignVariations::kNone) return;
    Bracket bracket{a, b, Value(f_, a), Value(f_, b), 0, 0};
    if (variations == SignVariations::kOne && bracket.SignChange())
      return AppendSingle(bracket, roots);
    chain_.emplace(f_);
    bracket.changes_a = chain_->SignChanges(a);
    bracket.changes_b = chain_->SignChanges(b);
    Search(bracket, 0, roots);
  }

 private:
  void Search(const Bracket& bracket, int depth, RootList& roots) {
    const int count = bracket.Roots();
    if (count < 1 && RulesOut(bracket)) return;
    if (count == 1 && (bracket.SignChange() || bracket.fb == 0.0 || Narrow(bracket)))
      return AppendSingle(bracket, roots);
    const double m = 0.5 * (bracket.a + bracket.b);
    if (Narrow(bracket) || m <= bracket.a || m >= bracket.b || depth >= kMaxDepth ||
        ++splits_ > kMaxSplits) {
      // A cluster too tight to be separated: an odd one still changes the sign of f and is one
      // root; an even one is left to the roots of the derivative.
      if (bracket.SignChange()) roots.Append(Bisect(bracket));
      return;
    }
    const double fm = Value(f_, m);
    const int changes = chain_->SignChanges(m);
    Search({bracket.a, m, bracket.fa, fm, bracket.changes_a, changes}, depth + 1, roots);
    Search({m, bracket.b, fm, bracket.fb, changes, bracket.changes_b}, depth + 1, roots);
  }

  static bool Narrow(const Bracket& bracket) { return !(bracket.b - bracket.a >= kNarrowest); }

  // Whether a count of 0 can be relied on. The remainders of long chains lose their last digits, so
  // that for high degrees a second opinion is asked before roots are given up.
  bool RulesOut(const Bracket& bracket) const {
    return f_.count() <= kTrustedChain || !(bracket.b - bracket.a >= kDoubtedWidth) ||
           VariationsOn(f_, bracket.a, bracket.b) == SignVariations::kNone;
  }

  // Newton's method from the midpoint of an interval that holds one root; each step shrinks the
  // interval to the side where f changes sign, and bisection finishes what Newton's method leaves.
  // Where the derivative is exactly 0, or 150 steps do not settle, the root is reported as 0.
  void AppendSingle(Bracket bracket, RootList& roots) const {
    double t = 0.5 * (bracket.a + bracket.b);
    for (int step = 0; step < kNewtonSteps; ++step) {
      const double value = Value(f_, t);
      if (value == 0.0) return roots.Append(t);
      const double slope = Value(derivative_, t);
      if (slope == 0.0) break;
      const double next = t - value / slope;
      if (kNewtonStep > std::fabs(t - next)) return roots.Append(next);
      if (bracket.SignChange()) bracket.Shrink(t, value);
      if (!(next >= bracket.a && bracket.b >= next)) return AppendBisected(bracket, roots);
      t = next;
    }
    roots.Append(0.0);
  }

  void AppendBisected(const Bracket& bracket, RootList& roots) const {
    if (bracket.fb == 0.0) return roots.Append(bracket.b);
    if (bracket.SignChange()) return roots.Append(Bisect(bracket));
    const double root = BisectByCount(bracket);
    if (kMultipleRootValue >= std::fabs(Value(f_, root))) roots.Append(root);
  }

  double Bisect(Bracket bracket) const {
    for (int step = 0; step < kBisectionSteps; ++step) {
      const double m = 0.5 * (bracket.a + bracket.b);
      if (m <= bracket.a || m >= bracket.b) break;
      const double value = Value(f_, m);
      if (value == 0.0) return m;
      bracket.Shrink(m, value);
    }
    return 0.5 * (bracket.a + bracket.b);
  }

  double BisectByCount(Bracket bracket) const {
    while (bracket.b - bracket.a >= kNarrowest) {
      const double m = 0.5 * (bracket.a + bracket.b);
      if (m <= bracket.a || m >= bracket.b) break;
      const int changes = chain_->SignChanges(m);
      if (bracket.changes_a - changes >= 1)
        bracket.b = m;
      else
        bracket.a = m;
    }
    return 0.5 * (bracket.a + bracket.b);
  }

  const Polynomial& f_;
  const Polynomial derivative_;
  std::optional<SturmChain>
      chain_;  // built only when the signs of the Bernstein form do not decide
  int splits_ = 0;
};

// Sorts and keeps one of roots that lie within kSameRoot of each other: the one where |f| is
// smallest.
void Merge(const Polynomial& f, RootList& roots) {
  if (roots.size() < 2) return;
  roots.Sort();
  std::size_t kept = 0;
  for (std::size_t i = 1; i < roots.size(); ++i) {
    if (!(kSameRoot >= roots[i] - roots[kept]))
      roots[++kept] = roots[i];
    else if (std::fabs(Value(f, roots[i])) < std::fabs(Value(f, roots[kept])))
      roots[kept] = roots[i];
  }
  roots.Truncate(kept + 1);
}

}  // namespace

RootList FindRoots(const Polynomial& f, double a, double b) {
  RootList roots;
  const Polynomial clean = WithoutNoise(f);
  if (clean.count() < 2) return roots;
  const double low = a - kRootMargin;
  const double high = b + kRootMargin;

  if (clean.count() > 2) {
    const Polynomial derivative = WithoutNoise(Derivative(f));
    if (derivative.count() > 1) {
      RootList turning;
      Isolation(derivative).Run(low, high, turning);
      for (const double t : turning)
        if (kMultipleRootValue >= std::fabs(Value(f, t))) roots.Append(t);
    }
  }
  Isolation(clean).Run(low, high, roots);
  Merge(f, roots);
  return roots;
}

}  // namespace kurvo
