// The pieces of composites, and the curves that a curve is made of when composites are taken apart.
#pragma once

#include <algorithm>
#include <type_traits>

#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {

// A piece of a composite and the stretch of the composite's parameters that it covers.
struct Piece {
  const Curve& curve;
  int32_t index;
  double start;  // the sum of the widths before it, added up in order
  double width;

  double end() const { return start + width; }
};

// The pieces in order: for (const Piece piece : PiecesOf(composite)).
class PiecesOf {
 public:
  class Iterator {
   public:
    Iterator(const CompositeView& composite, int32_t i) : composite_(composite), i_(i) {}

    Piece operator*() const { return {composite_.curves[i_], i_, start_, composite_.widths[i_]}; }
    Iterator& operator++() {
      start_ += composite_.widths[i_++];
      return *this;
    }
    bool operator!=(const Iterator& other) const { return i_ != other.i_; }

   private:
    const CompositeView& composite_;
    int32_t i_;
    double start_ = 0.0;
  };

  explicit PiecesOf(const CompositeView& composite) : composite_(composite) {}

  Iterator begin() const { return {composite_, 0}; }
  Iterator end() const { return {composite_, composite_.count}; }

 private:
  const CompositeView& composite_;
};

// Which piece a boundary between two of them belongs to.
enum class Boundary { kEarlierPiece, kLaterPiece };

// A piece and the parameter on it; no piece beyond the end.
struct PieceParameter {
  const Curve* piece = nullptr;
  double t = 0.0;
};

// The first piece whose running sum of widths reaches t, or exceeds it when boundaries belong to
// the later piece. A piece without width is evaluated at its start. Rounding must not carry the
// parameter beyond the end of the piece, where a composite has no point.
inline PieceParameter PieceAt(const CompositeView& composite, double t, Boundary boundary) {
  for (const Piece piece : PiecesOf(composite)) {
    if (boundary == Boundary::kEarlierPiece ? piece.end() >= t : piece.end() > t)
      return {&piece.curve,
              piece.width > 0.0 ? std::min((t - piece.start) / piece.width, 1.0) : 0.0};
  }
  return {};
}

// A stretch of parameters: t on a leaf is start + t width on the whole curve.
struct LeafStretch {
  double start = 0.0;
  double width = 1.0;

  LeafStretch Inner(const Piece& piece) const {
    return {start + piece.start * width, piece.width * width};
  }
};

namespace internal {

struct NoStretch {  // costs nothing
  NoStretch Inner(const Piece&) const { return {}; }
};

template <class Visit, class Stretch>
bool WalkLeaves(const Curve& curve, const Visit& visit, Stretch on, int level) {
  return VisitCurve(curve,
                    Overloaded{[&](const auto& view) { return visit(curve, view, on); },
                               [&](const CompositeView& composite) {
                                 if (level >= kMaxNesting) return visit(curve, Refused{}, on);
                                 for (const Piece piece : PiecesOf(composite))
                                   if (!WalkLeaves(piece.curve, visit, on.Inner(piece), level + 1))
                                     return false;
                                 return true;
                               }});
}

}  // namespace internal

// Calls visit(leaf, view) for the curve itself or, when it is a composite, for its pieces in order
// and theirs, as long as it returns true. A record that cannot be right, and a composite nested too
// deep, is a leaf that is Refused. False when visit has returned false.
template <class Visit>
bool AllLeaves(const Curve& curve, const Visit& visit) {
  const auto without_stretch = [&](const Curve& leaf, const auto& view, internal::NoStretch) {
    return visit(leaf, view);
  };
  return internal::WalkLeaves(curve, without_stretch, internal::NoStretch(), 0);
}

// The same with visit(leaf, view, stretch).
template <class Visit>
bool AllLeafStretches(const Curve& curve, const Visit& visit) {
  return internal::WalkLeaves(curve, visit, LeafStretch(), 0);
}

// Calls visit(leaf, view) for every leaf. Records the bad-curve error for one that is refused.
template <class Visit>
void ForEachLeafView(const Curve& curve, GlobalVar& g, const Visit& visit) {
  AllLeaves(curve, [&]<class View>(const Curve& leaf, const View& view) {
    if constexpr (std::is_same_v<View, Refused>)
      Fail(g, KURVO_ERR_CURVE);
    else
      visit(leaf, view);
    return true;
  });
}

// The same for those who need the record alone: visit(leaf).
template <class Visit>
void ForEachLeaf(const Curve& curve, GlobalVar& g, const Visit& visit) {
  ForEachLeafView(curve, g, [&](const Curve& leaf, const auto&) { visit(leaf); });
}

// Which end of a curve.
enum class End { kStart, kEnd };

// The leaf that the curve starts or ends with; null where composites nest too deep, and the
// composite itself where that has no pieces.
inline const Curve* EndLeaf(const Curve& curve, End end) {
  const Curve* leaf = &curve;
  for (int level = 0;; ++level) {
    const Curve* next =
        VisitCurve(*leaf, Overloaded{[&](const auto&) { return leaf; },
                                     [&](const CompositeView& composite) -> const Curve* {
                                       if (level >= kMaxNesting) return nullptr;
                                       if (composite.count == 0) return leaf;
                                       return composite.curves +
                                              (end == End::kStart ? 0 : composite.count - 1);
                                     }});
    if (next == leaf || !next) return next;
    leaf = next;
  }
}

// The curve itself or, of a composite of a single piece, that piece, however they nest.
inline const Curve& OnlyPieceOf(const Curve& curve) {
  const Curve* only = &curve;
  for (int level = 0; only->type == CV_SEGCV && level <= kMaxNesting; ++level) {
    const auto inner = [&](const auto& view) -> const Curve* {
      if constexpr (std::is_same_v<decltype(view), const CompositeView&>)
        if (view.count == 1 && view.curves->data) return view.curves;
      return nullptr;
    };
    const Curve* piece = VisitCurve(*only, inner);
    if (!piece) break;
    only = piece;
  }
  return *only;
}

}  // namespace kurvo
