// How often a chain of curves winds around a point.
#pragma once

#include <cstddef>
#include <cstdint>

#include "calc/arc_span.h"
#include "records/views.h"
#include "relate/region/bezier_halves.h"

namespace kurvo {

// Counts where a chain crosses the half-line from p to the right: upwards 1, downwards -1
// (Alciatore and Miranda, "A Winding Number and Point-in-Polygon Algorithm", 1995). A height of
// exactly p.y counts as below everywhere, so that vertices, touches and horizontal runs at the
// height of p need no rules of their own. Curves are not crossed: whatever lies beside p altogether
// counts by its ends, the rest is halved until it does or is straight. Where one curve does not end
// exactly where the next one starts, the line between them is part of the chain too, so that the
// sum is a whole number of turns.
class WindingNumber {
 public:
  WindingNumber(Vec2 p, GlobalVar& g) : p_(p), tol_(g.epsilon), g_(g) {}

  // The next curve of the chain. Returns true when p lies in the box of one of its leaves, grown by
  // the tolerance. Records the bad-curve error for a record that cannot be right and a degree above
  // 4095. Throws std::bad_alloc.
  bool Add(const Curve& curve);

  // Passes over the curves from number i on, before the next one is added, as long as they are
  // Bezier curves of a common degree, each all above or all below p, as most of an outline are.
  // Returns the number of the first that is not, or of the end.
  int32_t PassBy(const Cvseq& seq, int32_t i);

  // The line from the end of the last curve to the start of the first one.
  void Close();

  // True when p is within the tolerance of the chain; nothing more is counted then.
  bool OnCurve() const { return on_curve_; }
  // True when curves may reach beyond their boxes: weights are not positive, or the ends of an arc
  // do not lie on its circle.
  bool LeavesBoxes() const { return leaves_boxes_; }
  // False when the halvings were not enough, for records that no number of them makes straight.
  bool Decided() const { return !work_.exhausted(); }
  // The number of turns, counter-clockwise positive, of a chain that is closed.
  int64_t Turns() const { return turns_; }

 private:
  // Where the box of some points lies, grown by the tolerance.
  enum class Side { kAway, kRight, kAround };  // kAway: the half-line does not meet it

  template <std::size_t kDim>
  Side SideOf(const double (*points)[kDim], int32_t count);
  int StepUp(Vec2 a, Vec2 b) const { return (b.y > p_.y) - (a.y > p_.y); }
  // Of a piece that does not lie around p.
  int TurnsBeside(Side side, Vec2 a, Vec2 b) const {
    return side == Side::kRight ? StepUp(a, b) : 0;
  }
  int CrossLine(Vec2 a, Vec2 b) const;
  int MeetLine(Vec2 a, Vec2 b);
  // Tells of p in the box of the line.
  int TurnsOfLine(Vec2 a, Vec2 b, bool& near);

  void AddLine(const KurvoLine& line);
  void AddArc(const KurvoArc& arc);
  template <std::size_t kDim>
  void AddBezier(const BezierView<kDim>& bezier);
  template <std::size_t kDim>
  void AddSpline(const SplineView<kDim>& spline);

  int CrossArc(const KurvoArc& arc, Vec2 start, Vec2 end) const;
  template <std::size_t kDim>
  bool IsStraight(const double (*points)[kDim], int32_t n) const;
  template <std::size_t kDim>
  int CrossBezier(double (*points)[kDim], int32_t n);

  // The next piece, which turns by `turns` from start to end; 0 for one that the half-line does not
  // meet. Such a piece can be skipped when both its neighbours join it but for rounding.
  void Append(Vec2 start, Vec2 end, int turns);
  void Skip() { joined_ = true; }
  void Bridge(Vec2 from, Vec2 to);
  void RecallPassed();

  const Vec2 p_;
  const double tol_;
  GlobalVar& g_;
  int64_t turns_ = 0;
  WorkBudget work_{int64_t{1} << 25};  // hundredths of a second
  bool started_ = false;
  bool joined_ = false;  // the next piece begins where those so far end
  bool near_ = false;
  bool on_curve_ = false;
  bool leaves_boxes_ = false;
  Vec2 first_;                           // of the chain
  Vec2 last_;                            // so far, unless the last one passed by
  const KurvoBezier* passed_ = nullptr;  // that one
  int passed_side_ = 0;                  // 1 above p, -1 below, 0 when it did not
};

}  // namespace kurvo
