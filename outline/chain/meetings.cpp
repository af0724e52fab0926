// Where two chains meet, or one meets itself: pieces whose boxes are near, the stretches over which
// they are near, what belongs together along both chains, and what it is.
#include <kurvo_outline.h>

#include <algorithm>
#include <optional>
#include <tuple>

#include "base/options.h"
#include "base/refusal.h"
#include "chain/crossing.h"
#include "chain/plain_crossing.h"
#include "chain/shared_stretch.h"
#include "pair/box_pairs.h"
#include "pair/oriented_box.h"
#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

constexpr double kExact = 0x1p-44;       // of the size: what rounding makes of equal curves
constexpr double kCoordinate = 0x1p-50;  // of the largest coordinate: what its rounding makes
constexpr double kApart = 8;             // of the tolerance: boxes of pieces that have no contact
constexpr double kJoint = 16;            // of the tolerance: a chain is not asked whether it meets
                                         // itself across less of it

// One entry, or the first of the two of a stretch.
struct Meeting {
  KurvoMeeting entry;
  int32_t run;  // number of the stretch; -1 of a point
};

class Search {
 public:
  Search(const Track& a, const Track& b, bool with_itself, const Nearness& nearness)
      : a_(a), b_(b), with_itself_(with_itself), nearness_(nearness) {}

  void LookAtPairs(Progress& progress) {
    int64_t pairs = 0;
    const double pieces = std::max(1, a_.count());
    const PlainCrossings plain(a_, b_, with_itself_, nearness_.tol);
    const auto narrow = OrientedBoxesOf(a_.pieces());
    const auto others_narrow = with_itself_ ? Array<OrientedBox>() : OrientedBoxesOf(b_.pieces());
    const auto look = [&](int32_t i, int32_t k) {
      if (++pairs % 256 == 0) progress.Tell(0.8 * i / pieces);
      const OrientedBox& box = narrow[static_cast<std::size_t>(i)];
      const OrientedBox& other =
          (with_itself_ ? narrow : others_narrow)[static_cast<std::size_t>(k)];
      if (AreApart(box, other, kApart * nearness_.tol)) return;
      if (const auto crossing = plain.Find(i, k))
        meetings_.push_back({Entry(crossing->a, crossing->b, KURVO_MEET_CROSS), -1});
      else
        AddContacts(a_, i, b_, k, nearness_, work_, contacts_);
    };
    const Array<Bounds> boxes = BoxesOf(a_.pieces());
    const PairTree tree(boxes);
    if (with_itself_) return tree.ForEachPair(nearness_.tol, look);
    const Array<Bounds> others = BoxesOf(b_.pieces());
    tree.ForEachPair(PairTree(others), nearness_.tol, look);
  }

  // All of them in the order of the first chain.
  Array<KurvoMeeting> Entries() {
    JudgeContacts();
    std::sort(meetings_.begin(), meetings_.end(), [](const Meeting& x, const Meeting& y) {
      const auto key = [](const KurvoMeeting& m) {
        return std::tuple(m.index_a, m.a, m.index_b, m.b, m.kind);
      };
      return key(x.entry) < key(y.entry);
    });
    Array<KurvoMeeting> entries;
    entries.reserve(meetings_.size() + run_ends_.size());
    for (const Meeting& meeting : meetings_) {
      entries.push_back(meeting.entry);
      if (meeting.run >= 0) entries.push_back(run_ends_[static_cast<std::size_t>(meeting.run)]);
    }
    return entries;
  }

 private:
  void JudgeContacts() {
    const double gap = kJoined * nearness_.tol;
    for (const ContactGroup& group : GroupContacts(a_, b_, gap, contacts_)) {
      const Contact* contacts = contacts_.data() + group.first;
      const Extent extent = ExtentOf(a_, contacts, group.count, gap);
      if (const auto stretch = SharedStretch(a_, b_, contacts, group.count, extent, nearness_)) {
        AddStretch(*stretch);
      } else if (!IsJoint(contacts, group.count)) {
        AddPoint(contacts, group.count, extent);
      }
    }
  }

  KurvoMeeting Entry(Position on_a, Position on_b, int32_t kind) const {
    const Parameter a = a_.ParameterOf(on_a), b = b_.ParameterOf(on_b);
    const Vec2 point = a_.CallersPointAt(on_a);
    return {a.curve, b.curve, kind, 0, a.t, b.t, {point.x, point.y, 0}};
  }

  // Of two places of one chain the earlier one comes first.
  static bool IsBackwards(const KurvoMeeting& m) {
    return std::tuple(m.index_b, m.b) < std::tuple(m.index_a, m.a);
  }
  static void Swap(KurvoMeeting& m) {
    std::swap(m.index_a, m.index_b);
    std::swap(m.a, m.b);
  }

  // At a joint the curve is named on which the stretch lies: all of a closed chain is from the
  // start of its first curve to the end of its last.
  void AddStretch(const Extent& stretch) {
    const auto end = [&](Position a, Position b, bool is_start, int32_t kind) {
      return Entry(a_.OnSide(a, is_start), b_.OnSide(b, is_start != stretch.is_against), kind);
    };
    meetings_.push_back({end(stretch.a_from, stretch.b_from, true, KURVO_MEET_RUN_FROM),
                         CountOf(run_ends_.size())});
    run_ends_.push_back(end(stretch.a_to, stretch.b_to, false, KURVO_MEET_RUN_TO));
  }

  void AddPoint(const Contact* contacts, std::size_t count, const Extent& extent) {
    const Contact& best = ClosestOf(contacts, count, nearness_);
    Passage on_b = {extent.b_from, extent.b_to};
    if (extent.is_against) std::swap(on_b.from, on_b.to);
    const bool cross =
        CrossAt(a_, {extent.a_from, extent.a_to}, b_, on_b, a_.PointAt(best.a), nearness_.tol);
    KurvoMeeting entry =
        Entry(a_.OnLater(best.a), b_.OnLater(best.b), cross ? KURVO_MEET_CROSS : KURVO_MEET_TOUCH);
    if (with_itself_ && IsBackwards(entry)) Swap(entry);
    meetings_.push_back({entry, -1});
  }

  // Whether a chain only meets itself because it goes on there: between the two parts lies next to
  // nothing of it.
  bool IsJoint(const Contact* contacts, std::size_t count) const {
    if (!with_itself_) return false;
    const double least = kJoint * nearness_.tol;
    for (const Contact* c = contacts; c < contacts + count; ++c) {
      const double from = a_.ChordsTo(c->a_from), to = a_.ChordsTo(c->a_to);
      const double low = std::min(b_.ChordsTo(c->b_from), b_.ChordsTo(c->b_to));
      const double high = std::max(b_.ChordsTo(c->b_from), b_.ChordsTo(c->b_to));
      if (low - to <= least) return true;
      if (a_.IsClosed(0) && from + a_.Chords(0) - high <= least) return true;
    }
    return false;
  }

  const Track& a_;
  const Track& b_;
  const bool with_itself_;
  const Nearness nearness_;
  Work work_;
  Array<Contact> contacts_;
  Array<Meeting> meetings_;
  Array<KurvoMeeting> run_ends_;
};

Array<KurvoMeeting> FindMeetings(const Cvseq* a, const Cvseq* b, const KurvoOptions* options,
                                 double epsilon) {
  Bounds box;
  CheckChain(a, box);
  if (b) CheckChain(b, box);
  const Frame frame(box);
  Settings settings = ReadOptions(options, frame.size(), epsilon);
  settings.progress.Tell(0);
  RequireJoined(*a, settings.gap);
  if (b) RequireJoined(*b, settings.gap);
  if (box.IsEmpty()) return {};

  const double rounding = frame.LengthInwards(kCoordinate * box.Farthest());
  const double tol = std::max(frame.LengthInwards(settings.tol), rounding);
  const Nearness nearness = {tol, std::min(std::max(kExact, rounding), tol)};
  const Track first(*a, frame, IsClosed(*a, frame.size(), epsilon));
  std::optional<Track> second;
  if (b) second.emplace(*b, frame, IsClosed(*b, frame.size(), epsilon));
  Search search(first, second ? *second : first, !b, nearness);
  search.LookAtPairs(settings.progress);
  Array<KurvoMeeting> entries = search.Entries();
  settings.progress.Tell(1);
  return entries;
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainMeetings(const Cvseq* a, const Cvseq* b, const KurvoOptions* options,
                                  KurvoMeeting** list, int32_t* count, GlobalVar* g) noexcept {
  if (list) *list = nullptr;
  if (count) *count = 0;
  return Answer(g, [&] {
    Require(list && count, KURVO_ERR_OPTION);
    const Array<KurvoMeeting> found = FindMeetings(a, b, options, GetEpsilon(g));
    const int32_t n = CountOf(found.size());
    if (n > 0) *list = Handed<KurvoMeeting>(found).Release();
    *count = n;
  });
}
