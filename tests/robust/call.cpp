#include "robust/call.h"

#include <time.h>

#include <algorithm>
#include <cstring>

#include "robust/written_call.h"

namespace kurvo_test {
namespace {

double ProcessorSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <class Record>
Record* Kept(Store& store, const Record& record) {
  Record* const kept = store.Zeroed<Record>();
  *kept = record;
  return kept;
}

}  // namespace

Call::Call(Source& source, Mode mode, const Gallery* gallery, const MemoryFailure& failure,
           uint8_t fill)
    : in_(source),
      mode_(mode),
      gallery_(gallery),
      failure_(failure),
      fill_(fill),
      inputs_(source, mode, store_),
      own_(source, mode, own_store_) {
  KurvoInitGlobalVar(&g);
  if (in_.OneIn(8)) KurvoclSetEpsilon(in_.Pick({1e-6, 1e-4, .01}), 1e-5, &g);
  if (in_.OneIn(8)) KurvoclSetEpsilon0(in_.Pick({1e-6, 1e-4, .01}), &g);
  if (in_.OneIn(8)) g.error = KURVO_WARN_SHORT_VECTOR;
  if (!hostile()) return;
  if (in_.OneIn(16)) KurvoclPushEpsilon(in_.Pick({1e-300, 5e-324, 1e-12, .01}), &g);
  if (in_.OneIn(16)) KurvoclPushEpsilon0(in_.Pick({1e-300, 5e-324, 1e-12, .01}), &g);
  while (in_.OneIn(64) && g.depth < KURVO_STACK_SIZE)
    for (int i = 0; i < 63; ++i) KurvoclPushEpsilon(1e-5, &g);
  if (in_.OneIn(32)) g.error = in_.Pick({int{KURVO_ERR_CURVE}, int{KURVO_ERR_TOLERANCE}});
}

double* Call::Array(int count) {
  double* const numbers = store_.Numbers(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) numbers[i] = Number();
  return numbers;
}

const Curve* Call::AnyCurve(unsigned wanted) {
  if (GivesNull()) return nullptr;
  if (gallery_) return &gallery_->curve(in_, mode_, wanted);
  return Kept(store_, inputs_.CurveOf(wanted));
}

const Cvseq* Call::AnySequence() {
  if (GivesNull()) return nullptr;
  return gallery_ ? &gallery_->sequence(in_, mode_) : Kept(store_, inputs_.Sequence());
}

const CvParam* Call::AnyList() {
  return GivesNull() ? nullptr : Kept(store_, inputs_.Parameters());
}

const KurvoArc* Call::AnyArc() {
  return GivesNull() ? nullptr : static_cast<const KurvoArc*>(inputs_.Arc().data);
}

Curve* Call::OwnCurve() { return GivesNull() ? nullptr : Kept(own_store_, own_.Curve()); }

double* Call::Room(int count) {
  double* const room = OwnNumbers(count);
  for (int i = 0; i < count; ++i) room[i] = kUnwritten;
  return room;
}

void Call::Start() {
  before_ = store_.Checksum();
  own_before_ = own_store_.Checksum();
  state_before_ = g;
  UsedLibm();
  started_ = ProcessorSeconds();
  WatchMemory(failure_, fill_);
}

void Call::Stop() {
  outcome_.memory = UnwatchMemory();
  outcome_.seconds = ProcessorSeconds() - started_;
  outcome_.libm = UsedLibm();
  Expect(store_.Checksum() == before_, "input changed");
  Expect(NameOf(g.error) || g.error == state_before_.error, "unknown error code");
  state_before_.error = g.error;
  Expect(state_may_change_ || std::memcmp(&g, &state_before_, sizeof g) == 0, "tolerances changed");
}

void Call::Expect(bool truth, const char* what) {
  if (!truth && outcome_.complaint.empty()) outcome_.complaint = what;
}

void Call::Add(const double* numbers, int count) {
  for (int i = 0; i < count; ++i) digest_.Add(numbers[i]);
}

void Call::Code(int64_t result, const std::vector<int64_t>& documented) {
  Expect(std::find(documented.begin(), documented.end(), result) != documented.end(),
         "undocumented result");
  digest_.Add(static_cast<uint64_t>(result));
}

void Call::AddState() {
  for (const double x : {g.epsilon, g.epsilon_1, g.epsilon2, g.epsilon0}) Add(x);
  digest_.Add(g.depth);
  digest_.Add(g.depth0);
  Add(g.stack, g.depth);
  Add(g.stack0, g.depth0);
}

// The blocks of the four free-form kinds are laid out alike: sizes, points, knots.
void Call::ReadFreeForm(const Curve& curve) {
  const auto& block = *static_cast<const KurvoRBSpline*>(curve.data);
  const bool spline = curve.type == CV_BSPLINE || curve.type == CV_RBSPLINE;
  const int size = curve.type == CV_RBEZIER || curve.type == CV_RBSPLINE ? 4 : 3;
  digest_.Add(block.order);
  if (spline) digest_.Add(block.count);
  if (block.order < int{spline} || (spline && block.count < 0))
    return Expect(false, "sizes of a result");
  Add(reinterpret_cast<const double*>(block.points),
      size * (spline ? block.count : block.order + 1));
  if (spline) Add(block.knots, block.order + block.count);
}

void Call::Read(const Curve& curve, bool bare) {
  digest_.Add(curve.type);
  Expect(curve.attr == 0 && curve.attr_p1 == 0 && curve.attr_p2 == 0, "attribute of a result");
  if (!curve.data) return Expect(bare || curve.type == 0, "type without data");
  switch (curve.type) {
    case CV_LINE:
      return Add(static_cast<const KurvoLine*>(curve.data)->start, 6);
    case CV_ARC:
      return Add(&static_cast<const KurvoArc*>(curve.data)->radius, 13);
    case CV_BEZIER:
    case CV_RBEZIER:
    case CV_BSPLINE:
    case CV_RBSPLINE:
      return ReadFreeForm(curve);
    case CV_SEGCV: {
      const auto& block = *static_cast<const KurvoSegcv*>(curve.data);
      digest_.Add(block.count);
      Expect(block.count >= 0, "pieces of a result");
      for (int32_t i = 0; i < block.count; ++i) Read(block.curves[i], bare);
      return Add(block.widths, block.count);
    }
    default:
      return Expect(false, "data without a known type");
  }
}

void Call::Take(Curve& curve, bool bare) {
  Read(curve, bare);
  Neutral(!curve.data);
  KurvocvFreeCurve(&curve);
}

void Call::Take(Cvseq& seq, bool bare) {
  digest_.Add(seq.count);
  Expect((seq.count > 0) == (seq.curves != nullptr) && seq.count >= 0, "count without an array");
  for (int32_t i = 0; seq.curves && i < seq.count; ++i) Read(seq.curves[i], bare);
  Neutral(seq.count == 0);
  KurvocvFreeCvseq(&seq);
}

void Call::Take(CvParam& list, bool) {
  digest_.Add(list.count);
  Expect((list.count > 0) == (list.values != nullptr) && list.count >= 0, "count without an array");
  if (list.values) Add(list.values, list.count);
  Neutral(list.count == 0);
  KurvocrFreeCvParam(&list);
}

Outcome Call::Finish() {
  for (const auto& judge : judges_) judge();
  digest_.Add(g.error);
  outcome_.digest = digest_.value();
  outcome_.error = g.error;
  return std::move(outcome_);
}

}  // namespace kurvo_test
