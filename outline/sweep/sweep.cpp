#include "sweep/sweep.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "base/refusal.h"
#include "sweep/assemble.h"
#include "sweep/order.h"
#include "sweep/status.h"
#include "sweep/windings.h"

namespace kurvo::outline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kMostRuns = 32;
constexpr int32_t kBeamsATell = 256;

// Bundles of the status, from one position to before another.
struct Range {
  int32_t from, to;
};

// Whether a crossing that was missed has been added before: looking again is of no use.
bool IsKnown(const Crossing& missed, const Array<Crossing>& added, double tol) {
  return std::any_of(added.begin(), added.end(), [&](const Crossing& other) {
    return other.a == missed.a && other.b == missed.b &&
           tol >= std::fabs(other.height - missed.height);
  });
}

// One run over all beams.
class Run {
 public:
  Run(const Stage& stage, const Array<int32_t>& rules, const FillRule& fill, OrderCheck& check,
      Arrangement& out)
      : stage_(stage),
        fill_(fill),
        check_(check),
        out_(out),
        status_(stage.strands.size()),
        windings_(stage, rules, status_),
        assembler_(stage, fill, out) {
    constexpr std::size_t kUsual = 16;  // strands in what is made anew at once
    for (Row* row : {&lower_, &upper_}) {
      row->strands.reserve(kUsual);
      row->bundles.reserve(kUsual);
    }
    comers_.reserve(kUsual);
    ranges_.reserve(kUsual);
    sides_.reserve(kUsual);
  }

  void AtBeam(int32_t k) {
    k_ = k;
    middle_ = stage_.beams[k].Middle();
    stage_.marks.Set(stage_.beams, k);
    CollectRanges();
    int32_t shift = 0;
    done_ = 0;
    for (std::size_t i = 0; i < ranges_.size();) {
      Range range = {std::max(ranges_[i].from + shift, done_), 0};
      range.to = std::max(ranges_[i].to + shift, range.from);
      ++i;
      shift += Rebuild(range, shift, i);
      done_ = range.to;
    }
  }

  // After the last beam nothing is left, since loops are closed.
  bool IsDone() const { return status_.size() == 0 && missing_ == 0; }

 private:
  // A strand that begins, or a flat one, and the bundles that it begins among.
  struct Comer {
    double least, most;  // sides
    int32_t strand;
    Range range;  // by positions before the beam
    bool is_flat, is_taken;
  };

  double SideOf(int32_t position) const {
    return stage_.strand(status_.LeftMember(position)).At(middle_);
  }

  // The bundles within tol of some sides.
  Range Locate(double least, double most) const {
    const auto first_not = [&](int32_t from, const auto& is_before) {
      int32_t to = status_.size();
      while (from < to) {
        const int32_t i = from + (to - from) / 2;
        if (is_before(SideOf(i))) {
          from = i + 1;
        } else {
          to = i;
        }
      }
      return from;
    };
    const double tol = stage_.tol();
    const int32_t from = first_not(0, [&](double side) { return side < least - tol; });
    return {from, first_not(from, [&](double side) { return side <= most + tol; })};
  }

  void CollectComers() {
    comers_.clear();
    const auto add = [this](int32_t number, bool is_flat) {
      const Strand& s = stage_.strand(number);
      const double least = is_flat ? std::min(s.x_low, s.x_high) : s.x_low;
      const double most = is_flat ? std::max(s.x_low, s.x_high) : s.x_low;
      comers_.push_back({least, most, number, {}, is_flat, false});
    };
    for (const int32_t s : stage_.beams.starts()[k_]) add(s, false);
    for (const int32_t s : stage_.beams.flats()[k_]) add(s, true);
    std::sort(comers_.begin(), comers_.end(), [](const Comer& a, const Comer& b) {
      return std::tuple(a.least, a.most, a.strand) < std::tuple(b.least, b.most, b.strand);
    });
    for (std::size_t i = 0; i < comers_.size(); ++i) {
      Comer& comer = comers_[i];
      const bool is_same =
          i > 0 && comer.least == comers_[i - 1].least && comer.most == comers_[i - 1].most;
      comer.range = is_same ? comers_[i - 1].range : Locate(comer.least, comer.most);
    }
    missing_ += static_cast<int64_t>(comers_.size());
  }

  // The bundles with an event, and those beside what comes; apart, from the left.
  void CollectRanges() {
    CollectComers();
    ranges_.clear();
    for (const int32_t s : stage_.beams.touched()[k_]) {
      const int32_t position = status_.PositionOf(s);
      if (position >= 0) ranges_.push_back({position, position + 1});
    }
    for (const Comer& comer : comers_) ranges_.push_back(comer.range);
    if (ranges_.empty()) return;
    std::sort(ranges_.begin(), ranges_.end(),
              [](Range a, Range b) { return std::tuple(a.from, a.to) < std::tuple(b.from, b.to); });
    std::size_t last = 0;
    for (std::size_t i = 1; i < ranges_.size(); ++i) {
      if (ranges_[i].from <= ranges_[last].to) {
        ranges_[last].to = std::max(ranges_[last].to, ranges_[i].to);
      } else {
        ranges_[++last] = ranges_[i];
      }
    }
    ranges_.resize(last + 1);
  }

  // Makes a range anew, widened by what it comes near to and by the ranges that it then meets
  // (`next` is the first of them). Result: by how much the status grew.
  int32_t Rebuild(Range& range, int32_t shift, std::size_t& next) {
    Misfit misfit;
    for (;;) {
      while (next < ranges_.size() && ranges_[next].from + shift <= range.to)
        range.to = std::max(range.to, ranges_[next++].to + shift);
      status_.Copy(range.from, range.to, lower_);
      misfit = Attach(stage_, k_, true, lower_);
      CollectNew(range, shift);
      if (Widen(range)) continue;
      OrderUpper();
      if (BundleUpper(range)) break;
      Require(range.to < status_.size(), KURVO_ERR_CURVE);  // what is closed balances at the latest
      ++range.to;
    }
    for (Comer& comer : comers_) TakeIfIn(comer, range, shift);
    check_.CheckRow(k_, true, lower_, misfit);
    check_.CheckRow(k_, false, upper_, Attach(stage_, k_, false, upper_));
    const Covered covered = CoveredLeftOf(range.from);
    assembler_.Assemble(k_, lower_, upper_, flats_, covered);
    NoteLeftEdges(range.from);
    CheckNeighbours(range);
    status_.Replace(range.from, range.to, upper_);
    windings_.Replaced(lower_, upper_);
    const auto now = range.from + static_cast<int32_t>(upper_.bundles.size());
    const int32_t grown = now - range.to;
    range.to = now;
    return grown;
  }

  static bool IsIn(const Comer& comer, const Range& range, int32_t shift) {
    return !comer.is_taken && comer.range.from + shift >= range.from &&
           comer.range.to + shift <= range.to;
  }

  void TakeIfIn(Comer& comer, const Range& range, int32_t shift) {
    if (!IsIn(comer, range, shift)) return;
    comer.is_taken = true;
    --missing_;
  }

  // What begins and what is flat in the range, and how far all of it reaches.
  void CollectNew(const Range& range, int32_t shift) {
    starts_.clear();
    flats_.clear();
    least_ = kInfinity;
    most_ = -kInfinity;
    const auto reach = [this](double least, double most) {
      least_ = std::min(least_, least);
      most_ = std::max(most_, most);
    };
    for (const Bundle& bundle : lower_.bundles) reach(bundle.place, bundle.place);
    for (const Comer& comer : comers_) {
      if (!IsIn(comer, range, shift)) continue;
      reach(comer.least, comer.most);
      (comer.is_flat ? flats_ : starts_).push_back(comer.strand);
    }
  }

  bool Widen(Range& range) const {
    const double tol = stage_.tol();
    if (range.to < status_.size() && SideOf(range.to) <= most_ + tol) {
      ++range.to;
      return true;
    }
    if (range.from > done_ && SideOf(range.from - 1) >= least_ - tol) {
      --range.from;
      return true;
    }
    return false;
  }

  // What goes on and what begins, by where it is half-way to the next event of any of it.
  void OrderUpper() {
    upper_.Clear();
    int32_t next = stage_.beams.count();
    const auto add = [&](int32_t s) {
      upper_.strands.push_back(s);
      next = std::min(next, stage_.beams.NextOf(s, k_));
    };
    for (const int32_t s : lower_.strands)
      if (stage_.beams.OfVertex(stage_.strand(s).high) != k_) add(s);
    for (const int32_t s : starts_) add(s);
    if (upper_.strands.empty()) return;
    upper_middle_ = 0.5 * (stage_.beams[k_].high + stage_.beams[next].low);
    sides_.clear();
    for (const int32_t s : upper_.strands)
      sides_.push_back({stage_.strand(s).At(upper_middle_), s});
    std::sort(sides_.begin(), sides_.end());
    for (std::size_t i = 0; i < sides_.size(); ++i) upper_.strands[i] = sides_[i].second;
  }

  // Result: whether what lies to the right of the range is what it was.
  bool BundleUpper(const Range& range) {
    windings_.Begin(range.from, lower_, CoveredLeftOf(range.from));
    const auto count = static_cast<int32_t>(upper_.strands.size());
    const auto strand = [this](int32_t i) { return upper_.strands[static_cast<std::size_t>(i)]; };
    for (int32_t first = 0; first < count;) {
      int32_t last = first + 1;
      while (last < count && stage_.beams.AreTogether(strand(first), strand(last), k_)) ++last;
      Bundle bundle = {};
      bundle.first = first;
      bundle.count = last - first;
      bundle.left = windings_.covered();
      for (int32_t i = first; i < last; ++i) windings_.Cross(strand(i));
      bundle.right = windings_.covered();
      bundle.edge = -1;
      bundle.middle = upper_middle_;
      const bool is_inside = fill_.IsInside(bundle.left);
      bundle.is_kept = is_inside != fill_.IsInside(bundle.right);
      bundle.lead = LeadOf(bundle, bundle.is_kept ? (is_inside ? 1 : -1) : 0);
      upper_.bundles.push_back(bundle);
      first = last;
    }
    return windings_.IsBalanced();
  }

  // The first strand, in the order of the input, that runs in the sense of the edge, else the
  // first.
  int32_t LeadOf(const Bundle& bundle, int32_t direction) const {
    int32_t lead = -1;
    bool runs = false;
    for (const int32_t s : upper_.MembersOf(bundle)) {
      const bool is_right = stage_.strand(s).direction == direction;
      if (lead < 0 || (is_right && !runs) || (is_right == runs && s < lead)) lead = s;
      runs = runs || is_right;
    }
    return lead;
  }

  Covered CoveredLeftOf(int32_t position) const {
    return position > 0 ? status_[position - 1].right : Covered{};
  }

  // Which edge stands beside each new one.
  void NoteLeftEdges(int32_t position) {
    const auto is_kept = [](const Bundle& bundle) { return bundle.is_kept; };
    if (std::none_of(upper_.bundles.begin(), upper_.bundles.end(), is_kept)) return;
    int32_t left = -1;
    while (left < 0 && position-- > 0)
      if (status_[position].is_kept) left = status_[position].edge;
    for (const Bundle& bundle : upper_.bundles) {
      if (!bundle.is_kept) continue;
      out_.edge(bundle.edge).left = left;
      left = bundle.edge;
    }
  }

  void CheckNeighbours(const Range& range) {
    const double high = stage_.beams[k_].high;
    int32_t before = range.from > 0 ? status_.RightMember(range.from - 1) : -1;
    double from = high;
    for (const int32_t s : upper_.strands) {
      if (before >= 0) check_.CheckPair(before, s, from, k_);
      before = s;
      from = upper_middle_;
    }
    if (before >= 0 && range.to < status_.size())
      check_.CheckPair(before, status_.LeftMember(range.to), high, k_);
  }

  const Stage& stage_;
  const FillRule& fill_;
  OrderCheck& check_;
  Arrangement& out_;
  Status status_;
  Windings windings_;
  Assembler assembler_;
  int32_t k_ = 0;
  int32_t done_ = 0;   // bundles of the status that stand above the beam already
  double middle_ = 0;  // of the beam
  double upper_middle_ = 0;
  double least_ = 0, most_ = 0;  // sides that a range reaches
  int64_t missing_ = 0;          // comers that no range took
  Row lower_, upper_;
  Array<Comer> comers_;
  Array<Range> ranges_;
  Array<int32_t> starts_, flats_;
  Array<std::pair<double, int32_t>> sides_;
};

// A corner at each vertex and crossing, and an edge for each of these, are usual.
void Reserve(const Scene& scene, const Events& events, Arrangement& out) {
  const std::size_t corners = scene.vertices.size() + events.crossings.size();
  out.corners.reserve(corners);
  out.first_ray.reserve(corners + 1);
  out.edges.reserve(corners);
  out.rays.reserve(2 * corners);
}

}  // namespace

void RunSweep(Scene& scene, const Array<Strand>& strands, const Array<int32_t>& rules,
              const FillRule& fill, Progress& progress, Events& events, Arrangement& out,
              Counts& counts) {
  Beams beams;
  Array<Crossing> added;
  for (int run = 1;; ++run) {
    beams.Build(scene, strands, events);
    Marks marks(strands.size(), events.crossings);
    const Stage stage = {scene, strands, beams, marks};
    OrderCheck check(stage);
    out.Clear();
    Reserve(scene, events, out);
    Run sweep(stage, rules, fill, check, out);
    for (int32_t k = 0; k < beams.count(); ++k) {
      if (k % kBeamsATell == 0) progress.Tell(0.5 + 0.4 * k / beams.count());
      sweep.AtBeam(k);
    }
    Require(sweep.IsDone(), KURVO_ERR_CURVE);
    out.first_ray.push_back(out.rays.size());
    const std::size_t before = added.size();
    for (const Crossing& missed : check.missed())
      if (!IsKnown(missed, added, scene.tol)) added.push_back(missed);
    const std::size_t news = added.size() - before;
    if (news == 0 || run == kMostRuns) {
      counts.unresolved = check.unresolved() + CountOf(check.missed().size());
      return;
    }
    events.crossings.insert(events.crossings.end(), added.end() - static_cast<std::ptrdiff_t>(news),
                            added.end());
  }
}

}  // namespace kurvo::outline
