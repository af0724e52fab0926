// A chain of curves as one composite that runs in proportion to arc length.
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "build/convert.h"
#include "foundation/error_codes.h"
#include "foundation/guard.h"
#include "foundation/point.h"
#include "records/domain.h"
#include "records/widths.h"

namespace kurvo {
namespace {

Vec3 PointAt(const Curve& curve, double t, GlobalVar& g) {
  Coord p;
  KurvocvPosition(&curve, t, p, &g);
  return Spatial(p);
}

// Fixed behaviour: whether the first curve is a point is not asked. Do not unify.
bool IsDegenerate(const Cvseq& seq, GlobalVar& g) {
  for (int32_t i = 1; i < seq.count; ++i) {
    Coord point;
    if (!KurvocvDegenerate(seq.curves + i, point, &g)) return false;
  }
  return true;
}

bool IsContinuous(const Cvseq& seq, GlobalVar& g) {
  for (int32_t i = 1; i < seq.count; ++i) {
    const Curve& before = seq.curves[i - 1];
    const Curve& after = seq.curves[i];
    const Vec3 end = PointAt(before, DomainOf(before).end, g);
    const Vec3 start = PointAt(after, DomainOf(after).start, g);
    if (!SamePoint(end, start, g.epsilon)) return false;
  }
  return true;
}

// A curve of the chain as a composite of Bezier curves, with its length.
struct Member {
  OwnedCurve composite;
  double length = 0.0;
};

// Nothing when the curve cannot be one. Fixed behaviour: that is an error of arcs and B-splines
// only. Do not unify.
std::optional<Member> MemberOf(const Curve& curve, GlobalVar& g) {
  Member member;
  const Domain domain = DomainOf(curve);
  KurvocvCurveLen(&curve, domain.start, domain.end, &member.length, &g);
  if (ErrorPending(g)) return std::nullopt;
  member.composite = Converted(curve, CV_SEGCV, g, LinePiece::kLinear);
  if (member.composite.curve().data) return member;
  if (curve.type == CV_ARC || curve.type == CV_BSPLINE) Fail(g, KURVO_ERR_CHAIN_CONVERT);
  return std::nullopt;
}

// The share of a member's length up to the end of piece j, its widths up to there being `sum`;
// equal shares when the widths have no finite sum above 0.
double ShareUpTo(int32_t j, double sum, const KurvoSegcv& member, double total) {
  if (total > 0.0 && std::isfinite(total)) return sum / total;
  return static_cast<double>(j + 1) / static_cast<double>(member.count);
}

// Takes the pieces of all members into one composite, each with its share of the whole length.
OwnedCurve Joined(std::vector<Member>& members, GlobalVar& g) {
  int64_t count = 0;
  double length = 0.0;
  for (Member& member : members) {
    count += member.composite.block<KurvoSegcv>().count;
    length += member.length;
  }
  if (!(length > 0.0 && std::isfinite(length)) || count > kMaxIndex) {
    Fail(g, KURVO_ERR_CHAIN_DEGENERATE);
    return {};
  }
  OwnedCurve joined(CV_SEGCV, {.count = static_cast<int32_t>(count)});
  auto& out = joined.block<KurvoSegcv>();
  Widths widths;
  double before = 0.0;
  int32_t n = 0;
  for (Member& member : members) {
    auto& from = member.composite.block<KurvoSegcv>();
    const double total = DomainOf(member.composite.curve()).end;
    double sum = 0.0;
    for (int32_t j = 0; j < from.count; ++j, ++n) {
      sum += from.widths[j];
      out.curves[n] = std::exchange(from.curves[j], Curve{});
      const double up_to = before + member.length * ShareUpTo(j, sum, from, total);
      out.widths[n] = widths.UpTo(up_to / length);
    }
    before += member.length;
  }
  return joined;
}

// An empty handle, mostly with the error recorded, when the curves do not make one composite.
OwnedCurve Segmented(const Cvseq& seq, GlobalVar& g) {
  const bool degenerate = seq.count < 2 || IsDegenerate(seq, g);
  if (ErrorPending(g)) return {};
  if (degenerate) {
    Fail(g, KURVO_ERR_CHAIN_DEGENERATE);
    return {};
  }
  const bool continuous = IsContinuous(seq, g);
  if (ErrorPending(g)) return {};
  if (!continuous) {
    Fail(g, KURVO_ERR_CHAIN_ENDS);
    return {};
  }
  std::vector<Member> members;
  members.reserve(static_cast<std::size_t>(seq.count));
  for (int32_t i = 0; i < seq.count; ++i) {
    auto member = MemberOf(seq.curves[i], g);
    if (!member) return {};
    members.push_back(std::move(*member));
  }
  return Joined(members, g);
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCvseqToSegcv(const Cvseq* seq, Curve* out, GlobalVar* g) noexcept {
  if (!out) return;
  *out = Curve{};
  if (kurvo::ErrorPending(*g) || !seq || seq->count < 1) return;
  if (!seq->curves) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const auto segment = [&] { return kurvo::Segmented(*seq, *g).Release(); };
  *out = kurvo::Guard(*g, Curve{}, segment);
}
