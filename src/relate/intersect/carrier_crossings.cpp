// Common points of a line or an arc with a free-form curve.
#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "eval/parc2d.h"
#include "eval/pline2d.h"
#include "relate/intersect/carrier_contacts.h"
#include "relate/intersect/free_form_pieces.h"
#include "relate/intersect/pair_crossings.h"
#include "relate/intersect/within_ends.h"

namespace kurvo {
namespace {

// A run along the carrier this long, of the size of the curve, is a common stretch; a shorter one
// may be the neighbourhood of a point of contact, cut into spans so short that they look straight.
constexpr double kRunShare = 0.01;
// Of each piece of a run, to see whether the bounded carrier covers it.
constexpr int kRunSamples = 8;

// What the pieces of one curve, taken in order, have in common with a carrier.
class ContactList {
 public:
  struct Hit {
    const BezierPiece* piece;
    CarrierContact contact;
    bool goes_on;  // the approach of the hit before, across a joint or on one piece
  };
  using Hits = ShortVector<Hit, 8>;
  using Along = ShortVector<const BezierPiece*, 4>;

  explicit ContactList(double tol) : tol_(tol) {}

  void Add(const BezierPiece& piece, const CarrierContacts& contacts) {
    if (!last_ || !Joined(*last_, piece)) open_ = false;
    last_ = &piece;
    if (contacts.begin() == contacts.end()) open_ = false;
    for (const CarrierContact& contact : contacts) {
      const bool same = &contact != contacts.begin() && (&contact - 1)->low == contact.low;
      hits_.push_back({&piece, contact, same || (open_ && contact.from_start)});
      open_ = contact.to_end;
    }
    if (contacts.along) along_.push_back(&piece);
  }

  const Hits& hits() const { return hits_; }
  const Along& along() const { return along_; }

 private:
  bool Joined(const BezierPiece& before, const BezierPiece& after) const {
    const Vec2 gap = Planar(before.points[before.degree]) - Planar(after.points[0]);
    return tol_ >= std::fabs(gap.x) && tol_ >= std::fabs(gap.y);
  }

  const double tol_;
  Hits hits_;
  Along along_;
  const BezierPiece* last_ = nullptr;
  bool open_ = false;  // the last approach reaches the end of the last piece
};

double Size(const PlanarBox& box) { return Length(box.max - box.min); }

// Whether the pieces that run along the carrier are more than the neighbourhood of a contact.
bool LongEnough(const FreeFormPieces& pieces, const ContactList::Along& along) {
  if (along.size() == pieces.size()) return true;
  PlanarBox whole;
  for (const BezierPiece& piece : pieces) whole.Widen(piece.box);
  double run = 0.0;
  const BezierPiece* last = nullptr;
  for (const BezierPiece* piece : along) {
    run = (last && piece == last + 1 ? run : 0.0) + Size(piece->box);
    if (run >= kRunShare * Size(whole)) return true;
    last = piece;
  }
  return false;
}

// The intersection of one carrier record, through its evaluator, with the pieces of a curve.
template <class Carrier, class Evaluator>
class CarrierSearch {
 public:
  template <class Record>
  CarrierSearch(const Record& record, bool bounded, GlobalVar& g)
      : carrier_(record),
        evaluator_(record, g),
        ends_{Planar(record.start), Planar(record.end)},
        bounded_(bounded),
        tol_(g.epsilon) {}

  Common Run(const FreeFormPieces& pieces, Crossings& found) const {
    ContactList list(tol_);
    for (const BezierPiece& piece : pieces) list.Add(piece, FindContacts(carrier_, piece, tol_));
    if (!list.along().empty() && LongEnough(pieces, list.along())) {
      if (!bounded_ || Covers(list.along())) return Common::kStretch;
      for (const BezierPiece* piece : list.along()) {  // the bounded carrier may end at one end
        Append(*piece, 0.0, found);
        Append(*piece, 1.0, found);
      }
    }
    for (auto first = list.hits().begin(); first != list.hits().end();) {
      const auto last =
          std::find_if(first + 1, list.hits().end(), [](const Hit& hit) { return !hit.goes_on; });
      AppendApproach({first, last}, found);
      first = last;
    }
    return found.empty() ? Common::kNothing : Common::kPoints;
  }

 private:
  using Hit = ContactList::Hit;
  using Approach = std::span<const Hit>;

  double ParameterOf(Vec2 p) const {
    double t = 0.0;
    evaluator_.Parameter(OnPlane(p), t);
    return t;
  }

  // An approach counts as the crossings it holds, else where it is nearest. That may be beyond an
  // end of the bounded carrier, while the end is within the tolerance of the pieces: then the end
  // counts. So does an end that the carrier has in common with a piece.
  void AppendApproach(Approach hits, Crossings& found) const {
    const std::size_t before = found.size();
    const auto at = [&](const Hit& hit) { Append(*hit.piece, hit.contact.t, found); };
    const auto crosses = [](const Hit& hit) { return hit.contact.crosses; };
    const bool crossing = std::any_of(hits.begin(), hits.end(), crosses);
    if (crossing) {
      for (const Hit& hit : hits)
        if (hit.contact.crosses) at(hit);
    } else {
      at(*std::min_element(hits.begin(), hits.end(), [](const Hit& x, const Hit& y) {
        return x.contact.dist < y.contact.dist;
      }));
    }
    if (!bounded_) return;
    if (const Place shared = SharedEnd(hits); shared.piece)
      AppendShared(CrossingAt(*shared.piece, shared.t), crossing, before, found);
    if (std::any_of(found.begin() + before, found.end(),
                    [&](const Crossing& c) { return InBounds(c.first); }))
      return;
    if (const Place end = FootOfEnd(hits); end.piece) {
      found.shrink(before);
      Append(*end.piece, end.t, found);
    }
  }

  struct Place {
    const BezierPiece* piece = nullptr;
    double t = 0.0;
    double gap = 0.0;  // from an end of the carrier
  };

  // Calls use(end of a piece) for those that the approach reaches.
  template <class Use>
  static void ForEachPieceEnd(const Hit& hit, Use&& use) {
    if (hit.contact.from_start) use(0.0);
    if (hit.contact.to_end) use(1.0);
  }

  Place SharedEnd(Approach hits) const {
    Place shared;
    for (const Hit& hit : hits) {
      const BezierPiece& piece = *hit.piece;
      ForEachPieceEnd(hit, [&](double t) {
        const Vec2 p = Planar(piece.points[t == 0.0 ? 0 : piece.degree]);
        for (const Vec2 end : ends_)
          if (!shared.piece && Within(OnPlane(end - p), tol_)) shared = {hit.piece, t};
      });
    }
    return shared;
  }

  // An end in common, unless one of the crossings from `before` on is that point. Touches make way
  // for it, as do crossings that by their parameters are the same but not the point itself.
  void AppendShared(const Crossing& end, bool crossing, std::size_t before,
                    Crossings& found) const {
    Crossing* const first = found.begin() + before;
    const auto is_end = [&](const Crossing& at) {
      return Within(OnPlane(at.place - end.place), tol_);
    };
    found.erase(std::remove_if(first, found.end(),
                               [&](const Crossing& at) {
                                 return !is_end(at) && (!crossing || SameParameters(at, end, tol_));
                               }),
                found.end());
    if (std::none_of(first, found.end(), is_end)) found.push_back(end);
  }

  // As the filter by ends sees it.
  bool InBounds(double u) const {
    if (u >= -kEndSlack && 1.0 + kEndSlack >= u) return true;
    return Within(OnPlane(Planar(evaluator_.Position(u)) - ends_[u < 0.0 ? 0 : 1]), tol_);
  }

  // Where the pieces pass an end of the carrier on this approach; nowhere if they do not.
  Place FootOfEnd(Approach hits) const {
    Place best;
    for (const Hit& hit : hits) {
      const auto try_from = [&](double start) {
        for (const Vec2 end : ends_) {
          if (!Contains(hit.piece->box, end, tol_)) continue;
          const double t = RefineNearest(*hit.piece, end, start);
          const double gap = Length(PointAt(*hit.piece, t) - end);
          if (t >= hit.contact.low && hit.contact.high >= t && tol_ >= gap &&
              !(best.piece && gap >= best.gap))
            best = {hit.piece, t, gap};
        }
      };
      ForEachPieceEnd(hit, try_from);
      try_from(hit.contact.t);
    }
    return best;
  }

  Crossing CrossingAt(const BezierPiece& piece, double t) const {
    const Vec2 p = PointAt(piece, t);
    return {ParameterOf(p), piece.ToCurve(t), false, p};
  }

  void Append(const BezierPiece& piece, double t, Crossings& found) const {
    found.push_back(CrossingAt(piece, t));
  }

  // On the carrier between its ends and away from them.
  bool OnCarrier(Vec2 p) const {
    const double u = ParameterOf(p);
    return u >= 0.0 && 1.0 >= u && Length(Planar(evaluator_.Position(0.0)) - p) > tol_ &&
           Length(Planar(evaluator_.Position(1.0)) - p) > tol_;
  }

  // True when pieces that run along the carrier share more than an end with its bounded part.
  bool Covers(const ContactList::Along& along) const {
    const Vec2 middle = Planar(evaluator_.Position(0.5));
    for (const BezierPiece* piece : along) {
      for (int i = 0; i <= kRunSamples; ++i)
        if (OnCarrier(PointAt(*piece, static_cast<double>(i) / kRunSamples))) return true;
      const double t = NearestParameter(*piece, middle);
      if (tol_ >= Length(PointAt(*piece, t) - middle)) return true;
    }
    return false;
  }

  const Carrier carrier_;
  const Evaluator evaluator_;
  const std::array<Vec2, 2> ends_;
  const bool bounded_;
  const double tol_;
};

template <class Carrier, class Evaluator, class Record>
Common Cross(const Record& record, const Curve& free_form, bool bounded, GlobalVar& g,
             Crossings& found) {
  const FreeFormPieces pieces(free_form, CompositePieces::kBezierRecords, Carrier::kMaxDegree, g);
  return CarrierSearch<Carrier, Evaluator>(record, bounded, g).Run(pieces, found);
}

}  // namespace

Common CrossLineFreeForm(const KurvoLine& line, const Curve& free_form, bool line_bounded,
                         GlobalVar& g, Crossings& found) {
  return Cross<LineCarrier, PLine2D>(line, free_form, line_bounded, g, found);
}

Common CrossArcFreeForm(const KurvoArc& arc, const Curve& free_form, bool arc_bounded, GlobalVar& g,
                        Crossings& found) {
  return Cross<CircleCarrier, PArc2D>(arc, free_form, arc_bounded, g, found);
}

}  // namespace kurvo
