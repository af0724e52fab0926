// Common points of a line or an arc with a free-form curve.
#include "relate/carrier_crossings.h"

#include <cmath>

#include "eval/parc2d.h"
#include "eval/pline2d.h"
#include "relate/carrier_contacts.h"
#include "relate/free_form_pieces.h"

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
    const FreeFormPiece* piece;
    CarrierContact contact;
  };

  explicit ContactList(double tol) : tol_(tol) {}

  void Add(const FreeFormPiece& piece, const CarrierContacts& contacts) {
    if (!last_ || !Joined(*last_, piece)) open_ = false;
    last_ = &piece;
    bool any = false;
    for (const CarrierContact& contact : contacts) {
      Append({&piece, contact});
      any = true;
    }
    if (!any) open_ = false;
    if (contacts.along) along_.push_back(&piece);
  }

  const std::vector<Hit>& hits() const { return hits_; }
  const std::vector<const FreeFormPiece*>& along() const { return along_; }

 private:
  bool Joined(const FreeFormPiece& before, const FreeFormPiece& after) const {
    const Vec2 gap =
        Planar(before.bezier.points[before.bezier.degree]) - Planar(after.bezier.points[0]);
    return tol_ >= std::fabs(gap.x) && tol_ >= std::fabs(gap.y);
  }

  // An approach that goes on across a joint counts once: as the crossing it holds, else where it is
  // nearest.
  void Append(const Hit& hit) {
    const bool goes_on = open_ && hit.contact.from_start;
    open_ = hit.contact.to_end;
    if (!goes_on) return hits_.push_back(hit);
    const CarrierContact& kept = hits_.back().contact;
    if (kept.crosses && hit.contact.crosses) return hits_.push_back(hit);
    if (hit.contact.crosses || (!kept.crosses && hit.contact.dist < kept.dist)) hits_.back() = hit;
  }

  const double tol_;
  std::vector<Hit> hits_;
  std::vector<const FreeFormPiece*> along_;
  const FreeFormPiece* last_ = nullptr;
  bool open_ = false;  // the last approach reaches the end of the last piece
};

double Size(const PlanarBox& box) { return Length(box.max - box.min); }

// Whether the pieces that run along the carrier are more than the neighbourhood of a contact.
bool LongEnough(const FreeFormPieces& pieces, const std::vector<const FreeFormPiece*>& along) {
  if (along.size() == pieces.size()) return true;
  PlanarBox whole;
  for (const FreeFormPiece& piece : pieces) whole.Widen(piece.box);
  double run = 0.0;
  const FreeFormPiece* last = nullptr;
  for (const FreeFormPiece* piece : along) {
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
  CarrierSearch(const Carrier& carrier, const Evaluator& evaluator, bool bounded, double tol)
      : carrier_(carrier), evaluator_(evaluator), bounded_(bounded), tol_(tol) {}

  Common Run(const FreeFormPieces& pieces, Crossings& found) const {
    ContactList list(tol_);
    for (const FreeFormPiece& piece : pieces)
      list.Add(piece, FindContacts(carrier_, piece.bezier, tol_));
    if (!list.along().empty() && LongEnough(pieces, list.along())) {
      if (!bounded_ || Covers(list.along())) return Common::kStretch;
      for (const FreeFormPiece* piece : list.along()) {  // the bounded carrier may end at one end
        Append(pieces, *piece, 0.0, found);
        Append(pieces, *piece, 1.0, found);
      }
    }
    for (const auto& hit : list.hits()) Append(pieces, *hit.piece, hit.contact.t, found);
    return found.empty() ? Common::kNothing : Common::kPoints;
  }

 private:
  double ParameterOf(Vec2 p) const {
    double t = 0.0;
    evaluator_.Parameter(OnPlane(p), t);
    return t;
  }

  void Append(const FreeFormPieces& pieces, const FreeFormPiece& piece, double t,
              Crossings& found) const {
    const auto source = static_cast<std::size_t>(&piece - pieces.begin());
    found.push_back({ParameterOf(PointAt(piece.bezier, t)), piece.ToCurve(t), false, source});
  }

  // On the carrier between its ends and away from them.
  bool OnCarrier(Vec2 p) const {
    const double u = ParameterOf(p);
    return u >= 0.0 && 1.0 >= u && Length(Planar(evaluator_.Position(0.0)) - p) > tol_ &&
           Length(Planar(evaluator_.Position(1.0)) - p) > tol_;
  }

  // True when pieces that run along the carrier share more than an end with its bounded part.
  bool Covers(const std::vector<const FreeFormPiece*>& along) const {
    const Vec2 middle = Planar(evaluator_.Position(0.5));
    for (const FreeFormPiece* piece : along) {
      for (int i = 0; i <= kRunSamples; ++i)
        if (OnCarrier(PointAt(piece->bezier, static_cast<double>(i) / kRunSamples))) return true;
      const double t = NearestParameter(piece->bezier, middle);
      if (tol_ >= Length(PointAt(piece->bezier, t) - middle)) return true;
    }
    return false;
  }

  const Carrier& carrier_;
  const Evaluator& evaluator_;
  const bool bounded_;
  const double tol_;
};

template <class Carrier, class Evaluator, class Record>
Common Cross(const Record& record, const Curve& free_form, bool bounded, GlobalVar& g,
             Crossings& found) {
  const FreeFormPieces pieces(free_form, CompositePieces::kBezierRecords, Carrier::kMaxDegree, g);
  const Carrier carrier(record);
  const Evaluator evaluator(record, g);
  return CarrierSearch<Carrier, Evaluator>(carrier, evaluator, bounded, g.epsilon)
      .Run(pieces, found);
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
