// How long spans are.
#pragma once

#include "chain/hodograph.h"
#include "strand/span.h"

namespace kurvo::outline {

// The velocity of a span, made ready to be integrated: to 1e-14 of the length of the span. The span
// must outlive it.
class Speed {
 public:
  explicit Speed(const Span& span);

  // The length from u0 to u1 >= u0, both in [0, 1].
  double Integral(double u0, double u1) const;
  double Whole() const { return Integral(0, 1); }

  // The speed at u, and its derivative; the latter is 0 where the speed vanishes.
  struct Rates {
    double speed, change;
  };
  Rates RatesAt(double u) const;
  // Lines and arcs are run through at one speed.
  bool IsConstant() const { return kind_ == Kind::kConstant; }

 private:
  enum class Kind : uint8_t { kConstant, kQuadratic, kHodograph };

  // A point of the complex plane at which the speed is not analytic; with it its conjugate.
  struct Branch {
    double re, im;  // im >= 0; measured from u = 1/2
  };

  // v(u) = p[0] + p[1] w + p[2] w^2, w = u - 1/2.
  struct Quadratic {
    Vec2 p[3];
    Branch branches[2];
    int branch_count;
  };

  void SetQuadratic(const Span& span);
  double Between(double low, double high, int cuts_left) const;

  const Span& span_;
  Kind kind_;
  double constant_;
  union {
    Quadratic quadratic_;
    Hodograph hodograph_;
  };
};

}  // namespace kurvo::outline
