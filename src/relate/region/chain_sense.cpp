// The centre of a chain of curves, and the sense in which it runs around it.
#include "relate/region/chain_sense.h"

#include <algorithm>
#include <optional>

#include "calc/directions.h"
#include "calc/lines.h"
#include "foundation/guard.h"
#include "records/pieces.h"
#include "relate/region/winding_angle.h"

namespace kurvo {
namespace {

Vec3 StartOf(const Curve& curve, GlobalVar& g) {
  Coord p = {};
  KurvocvStartPoint(&curve, p, &g);
  return Spatial(p);
}

// `otherwise` for a composite without pieces.
Vec3 EndOf(const Curve& curve, Vec3 otherwise, GlobalVar& g) {
  Coord p = {otherwise.x, otherwise.y, otherwise.z};
  KurvocvEndPoint(&curve, p, &g);
  return Spatial(p);
}

struct Centre {
  Vec3 mean;  // of the vertices
  Vec3 start;
  Vec3 end;
};

Centre CentreOf(const Cvseq& seq, GlobalVar& g) {
  const Vec3 start = StartOf(seq.curves[0], g);
  Vec3 vertex = start;
  Vec3 sum = start;
  for (int32_t i = 0; i < seq.count; ++i) {
    vertex = EndOf(seq.curves[i], vertex, g);
    const bool closes = i == seq.count - 1 && SamePoint(vertex, start, g.epsilon);
    if (closes) return {sum / seq.count, start, vertex};
    sum = sum + vertex;
  }
  return {sum / (seq.count + 1.0), start, vertex};
}

// Takes the leaves of a chain one after the other and tells whether all is straight: the leaves
// themselves, and any three vertices that follow each other, equal ones left out.
class Straightness {
 public:
  explicit Straightness(GlobalVar& g) : g_(g) {}

  void Add(const Curve& leaf) {
    if (!straight_) return;
    straight_ = IsStraight(leaf) && Extend(StartOf(leaf, g_)) && Extend(EndOf(leaf, last_, g_));
  }
  bool straight() const { return straight_; }

 private:
  bool IsStraight(const Curve& leaf) {
    Coord point;
    if (leaf.type == CV_ARC) return KurvocvDegenerate(&leaf, point, &g_) != 0;
    return KurvocvIsLine(&leaf, &g_) > 0;
  }

  bool Extend(Vec3 vertex) {
    if (count_ > 0 && SamePoint(vertex, last_, g_.epsilon)) return true;
    // One of the two outer points has the others ahead of it when the middle one turns back.
    const bool on_line =
        count_ < 2 || OnOneRay(before_, last_, vertex, g_) || OnOneRay(vertex, last_, before_, g_);
    before_ = last_;
    last_ = vertex;
    count_ = std::min(count_ + 1, 2);
    return on_line;
  }

  GlobalVar& g_;
  bool straight_ = true;
  int count_ = 0;
  Vec3 before_;
  Vec3 last_;
};

// Calls visit(leaf) for all curves of a chain.
template <class Visit>
void ForEachLeafOf(const Cvseq& seq, GlobalVar& g, const Visit& visit) {
  for (int32_t i = 0; i < seq.count && !ErrorPending(g); ++i) ForEachLeaf(seq.curves[i], g, visit);
}

}  // namespace

bool IsStraight(const Cvseq& seq, GlobalVar& g) {
  Straightness straightness(g);
  for (int32_t i = 0; i < seq.count && straightness.straight() && !ErrorPending(g); ++i)
    ForEachLeaf(seq.curves[i], g, [&](const Curve& leaf) { straightness.Add(leaf); });
  return straightness.straight();
}

namespace {

bool RunsCounterClockwise(const Cvseq& seq, const Centre& centre, GlobalVar& g) {
  const Vec2 q = Planar(centre.mean);
  WorkBudget work(kWindingWork);
  double angle = 0.0;
  ForEachLeafOf(seq, g, [&](const Curve& leaf) { angle += WindingAngle(leaf, q, work, g); });
  if (std::fabs(angle) >= kPi) return angle > 0.0;
  // The centre lies on the chain or outside.
  work = WorkBudget(kWindingWork);
  double area = 0.5 * Cross(Planar(centre.end) - q, Planar(centre.start) - q);
  ForEachLeafOf(seq, g, [&](const Curve& leaf) { area += SweptArea(leaf, q, work, g); });
  return area > 0.0;
}

struct Orientation {
  Vec3 centre;
  Vec3 normal;
};

// Nothing, with the error or the warning recorded, when there is none.
std::optional<Orientation> OrientationOf(const Cvseq& seq, GlobalVar& g) {
  const Centre centre = CentreOf(seq, g);
  const bool straight = IsStraight(seq, g);
  if (ErrorPending(g)) return std::nullopt;
  if (straight) return Refuse(g, KURVO_WARN_NO_ORIENTATION, std::nullopt);
  const double z = RunsCounterClockwise(seq, centre, g) ? 1.0 : -1.0;
  if (ErrorPending(g)) return std::nullopt;
  return Orientation{centre.mean, {0.0, 0.0, z}};
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCvseqNormal(const Cvseq* seq, Coord centre, Coord normal,
                                   GlobalVar* g) noexcept {
  kurvo::Store({}, centre);
  kurvo::Store({}, normal);
  if (kurvo::ErrorPending(*g)) return;
  if (!seq || (seq->count > 0 && !seq->curves)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (seq->count < 1) return kurvo::Fail(*g, KURVO_WARN_NO_ORIENTATION);
  const auto orient = [&] { return kurvo::OrientationOf(*seq, *g); };
  const auto orientation = kurvo::Guard(*g, std::optional<kurvo::Orientation>(), orient);
  if (!orientation) return;
  kurvo::Store(orientation->centre, centre);
  kurvo::Store(orientation->normal, normal);
}
