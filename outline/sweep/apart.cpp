#include "sweep/apart.h"

#include <algorithm>
#include <span>

namespace kurvo::outline {
namespace {

constexpr std::size_t kMostLoops = 16, kMostFlats = 32;
constexpr double kShort = 8;       // of tol: sources no larger may join in one corner
constexpr double kMargin = 2;      // of tol: what is so near a level strand may touch it
constexpr double kSteep = 0x1p-6;  // slope of lines that leave a level strand for good
constexpr int32_t kNone = -1;

// What of the scene belongs to one loop, and a strand of it that is higher than others.
struct Loop {
  std::size_t first_source = 0, sources = 0, first_strand = 0, strands = 0;
  Bounds box;
  int32_t highest = kNone;
  bool is_kept = false, is_turned = false, is_outer = false;
};

class Finder {
 public:
  Finder(const Scene& scene, const Array<Strand>& strands) : scene_(scene), strands_(strands) {}

  bool AreApart(const Events& events) {
    if (events.near_pairs > 0 || events.capped > 0 || scene_.gaps > 0) return false;
    if (!CollectLoops() || !AreFlatsApart()) return false;
    return std::none_of(loops_.begin(), loops_.end(), [this](const Loop& loop) {
      return loop.highest == kNone || MayBeSliver(scene_, SourcesOf(loop));
    });
  }

  // Result: whether all of them go around what lies beside them once.
  bool Wind(const Array<int32_t>& rules, const FillRule& fill) {
    Array<int32_t> windings;
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      Loop& loop = loops_[i];
      const Strand& at = strand(loop.highest);
      windings.clear();
      windings.resize(rules.size(), 0);
      for (std::size_t k = 0; k < loops_.size(); ++k) {
        if (k == i) continue;
        const int32_t around = WindingBeside(loops_[k], loop.highest);
        encloses_[k][i] = around != 0;
        windings[static_cast<std::size_t>(OperandOf(loops_[k]))] += around;
      }
      int32_t& own = windings[static_cast<std::size_t>(at.operand)];
      const int32_t left = WindingBeside(loop, loop.highest), right = left - at.direction;
      if (left != 0 && right != 0) return false;
      own += left;
      const bool inside_left = fill.IsInside(CoveredBy(windings, rules));
      own -= at.direction;
      const bool inside_right = fill.IsInside(CoveredBy(windings, rules));
      loop.is_kept = inside_left != inside_right;
      loop.is_turned = inside_left != (at.direction > 0);
      loop.is_outer = left != 0 ? inside_left : inside_right;
    }
    return true;
  }

  // Kept loops alternate, so the innermost outer loop around a hole is next to it.
  void Take(ResultLoops& result) const {
    int32_t number[kMostLoops];
    int32_t count = 0;
    for (std::size_t i = 0; i < loops_.size(); ++i) number[i] = loops_[i].is_kept ? count++ : kNone;
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      const Loop& loop = loops_[i];
      if (!loop.is_kept) continue;
      ResultLoop made;
      made.first_part = result.parts.size();
      AppendWhole(scene_, SourcesOf(loop), loop.is_turned, result.parts);
      made.parts = result.parts.size() - made.first_part;
      made.is_outer = loop.is_outer;
      std::size_t around = loops_.size();
      for (std::size_t k = 0; k < loops_.size() && !loop.is_outer; ++k) {
        if (!encloses_[k][i] || !loops_[k].is_kept || !loops_[k].is_outer) continue;
        if (around == loops_.size() || encloses_[around][k]) around = k;
      }
      if (around < loops_.size()) made.parent = number[around];
      result.loops.push_back(made);
    }
  }

 private:
  const Strand& strand(int32_t i) const { return strands_[static_cast<std::size_t>(i)]; }
  std::span<const Source> SourcesOf(const Loop& loop) const {
    return {&scene_.sources[loop.first_source], loop.sources};
  }
  int32_t OperandOf(const Loop& loop) const { return scene_.sources[loop.first_source].operand; }

  bool CollectLoops() {
    std::size_t at = 0;  // strand
    for (std::size_t i = 0; i < scene_.sources.size();) {
      if (loops_.size() == kMostLoops) return false;
      const Source& first = scene_.sources[i];
      Loop loop;
      loop.first_source = i;
      for (; i < scene_.sources.size(); ++i, ++loop.sources) {
        const Source& source = scene_.sources[i];
        if (source.loop != first.loop || source.operand != first.operand) break;
        if (source.IsBridge() || kShort * scene_.tol >= HullOf(source.span).LongerSide())
          return false;
      }
      loop.first_strand = at;
      for (; at < strands_.size() && static_cast<std::size_t>(strands_[at].source) < i; ++at)
        AddStrand(at, loop);
      loop.strands = at - loop.first_strand;
      loops_.push_back(loop);
    }
    return true;
  }

  static Bounds BoxOf(const Strand& s) { return {{s.least_x, s.y_low}, {s.most_x, s.y_high}}; }

  void AddStrand(std::size_t number, Loop& loop) const {
    const Strand& s = strands_[number];
    const auto height = [](const Strand& t) { return t.y_high - t.y_low; };
    loop.box.Join(BoxOf(s));
    if (!s.is_flat && (loop.highest == kNone || height(s) > height(strand(loop.highest))))
      loop.highest = static_cast<int32_t>(number);
  }

  // Level strands have no events.
  bool AreFlatsApart() const {
    const Strand* flats[kMostFlats];
    std::size_t count = 0;
    for (const Strand& s : strands_) {
      if (!s.is_flat) continue;
      if (count == kMostFlats) return false;
      flats[count++] = &s;
    }
    const double margin = kMargin * scene_.tol;
    for (std::size_t i = 0; i < count; ++i) {
      const Bounds box = BoxOf(*flats[i]);
      for (const Strand& s : strands_)
        if (Near(box, BoxOf(s), margin) && &s != flats[i] && !LeavesFor(s, *flats[i])) return false;
    }
    return true;
  }

  // Whether a strand goes on from the end of a level one and not back along it.
  bool LeavesFor(const Strand& s, const Strand& flat) const {
    const bool at_low = s.low == flat.low || s.low == flat.high;
    const bool at_high = s.high == flat.low || s.high == flat.high;
    if (at_low == at_high) return false;
    const int32_t shared = at_low ? s.low : s.high;
    const double end = shared == flat.low ? flat.x_low : flat.x_high;
    const double to = shared == flat.low ? flat.x_high : flat.x_low;
    // How far it goes back, of which nothing is to count.
    const double back = to > end ? s.most_x - end : end - s.least_x;
    if (kMargin * scene_.tol >= back) return true;
    return s.kind == Span::Kind::kLine && s.y_high - s.y_low >= kSteep * back;
  }

  // How often a loop goes around what is beside a strand, to the left of it at half its height.
  int32_t WindingBeside(const Loop& loop, int32_t beside) const {
    const Strand& other = strand(beside);
    const double height = 0.5 * (other.y_low + other.y_high);
    const double side = other.At(height);
    if (!(loop.box.low.y <= height && height <= loop.box.high.y && loop.box.low.x <= side))
      return 0;
    int32_t winding = 0;
    for (std::size_t i = loop.first_strand; i < loop.first_strand + loop.strands; ++i) {
      const Strand& s = strands_[i];
      if (s.is_flat || !(s.y_low <= height && height < s.y_high) || &s == &other) continue;
      if (s.most_x < side || (s.least_x < side && s.At(height) < side)) winding -= s.direction;
    }
    return winding;
  }

  static Covered CoveredBy(const Array<int32_t>& windings, const Array<int32_t>& rules) {
    Covered covered;
    covered.first = FillRule::Fills(rules[0], windings[0]);
    for (std::size_t i = 1; i < rules.size(); ++i)
      covered.others += FillRule::Fills(rules[i], windings[i]);
    return covered;
  }

  const Scene& scene_;
  const Array<Strand>& strands_;
  Array<Loop> loops_;
  bool encloses_[kMostLoops][kMostLoops] = {};
};

}  // namespace

bool FindApartLoops(const Scene& scene, const Array<Strand>& strands, const Events& events,
                    const Array<int32_t>& rules, const FillRule& fill, ResultLoops& result) {
  Finder finder(scene, strands);
  if (!finder.AreApart(events) || !finder.Wind(rules, fill)) return false;
  finder.Take(result);
  return true;
}

}  // namespace kurvo::outline
