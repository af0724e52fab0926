#include "geometry/region_input.h"

#include <algorithm>
#include <numeric>

#include "geometry/box_sweep.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

// Groups of boxes that are apart: the number of the group of each box, in the order of the boxes.
// Empty boxes are alone.
std::vector<std::size_t> GroupsOf(const std::vector<Bounds>& boxes) {
  std::vector<std::size_t> parents(boxes.size());
  std::iota(parents.begin(), parents.end(), std::size_t{0});
  const auto root = [&](std::size_t box) {
    while (parents[box] != box) box = parents[box] = parents[parents[box]];
    return box;
  };
  SweepBoxes(
      boxes,
      [&](std::size_t a, std::size_t b) {
        const std::size_t first = root(a), second = root(b);
        parents[std::max(first, second)] = std::min(first, second);
      },
      [] {});
  std::vector<std::size_t> groups(boxes.size());
  std::size_t count = 0;
  for (std::size_t i = 0; i < boxes.size(); ++i)
    groups[i] = parents[i] == i ? count++ : groups[root(i)];
  return groups;
}

bool Nests(Nesting nesting, const Shape& shape) {
  return nesting == Nesting::kAll || (nesting == Nesting::kUnfilled && !IsFilled(shape));
}

}  // namespace

bool Surrounds(Context& context, const Shape& shape, const Outline& outline,
               const Closing& closing) {
  if (outline.closed || IsFilled(shape)) return true;
  const Point start = StartOf(context, outline.curves.front());
  const Point end = EndOf(context, outline.curves.back());
  return Same(start, end, context) || closing.gap >= Size(end - start);
}

void Input::Add(Context& context, const Drawing& drawing, std::size_t element,
                const Closing& closing) {
  const Shape& shape = drawing.shapes[element];
  for (const Outline& outline : shape.outlines) {
    if (Surrounds(context, shape, outline, closing)) {
      loops.push_back({&outline, element, regions.size() - 1});
    } else {
      ++left_out;
    }
  }
}

void Read(Context& context, const Drawing& drawing, std::size_t begin, std::size_t end, int side,
          Nesting nesting, const Closing& closing, Input& input) {
  input.Begin(KURVO_FILL_EVENODD, side);
  for (std::size_t i = begin; i < end; ++i) {
    if (Nests(nesting, drawing.shapes[i])) input.Add(context, drawing, i, closing);
  }
  for (std::size_t i = begin; i < end; ++i) {
    const Shape& shape = drawing.shapes[i];
    if (Nests(nesting, shape)) continue;
    input.Begin(RuleOf(shape), side);
    input.Add(context, drawing, i, closing);
  }
}

std::vector<Loops> Apart(Context& context, const Loops& loops, double reach) {
  std::vector<Bounds> boxes;
  for (const Input::Loop& loop : loops) {
    Bounds& box = boxes.emplace_back(BoundsOf(context, loop.outline->curves));
    box.Grow(reach / 2);
  }
  const std::vector<std::size_t> numbers = GroupsOf(boxes);
  std::vector<Loops> groups;
  for (std::size_t i = 0; i < loops.size(); ++i) {
    if (numbers[i] >= groups.size()) groups.resize(numbers[i] + 1);
    groups[numbers[i]].push_back(loops[i]);
  }
  return groups;
}

std::vector<Loops> ByRegion(const Loops& loops) {
  std::vector<Loops> parts;
  for (const Input::Loop& loop : loops) {
    if (parts.empty() || parts.back().back().region != loop.region) parts.emplace_back();
    parts.back().push_back(loop);
  }
  return parts;
}

double CurveCount(const Loops& loops) {
  double count = 0;
  for (const Input::Loop& loop : loops) count += static_cast<double>(loop.outline->curves.size());
  return count;
}

void Fill(const Loops& loops, Operand& operand) {
  for (const Input::Loop& loop : loops) operand.Add(loop.outline->curves, loop.element);
}

void Operand::TakeElements(const std::vector<const Operand*>& sources) {
  const KurvoRegion& made = *made_.Get();
  for (std::int32_t loop = 0; loop < made.count; ++loop) {
    begins_.push_back(elements_.size());
    for (std::int32_t i = 0; i < made.loops[loop].count; ++i) {
      const KurvoOrigin& from = made.origins[elements_.size()];
      const bool has_source = from.region >= 0 && from.loop >= 0 && from.curve >= 0;
      elements_.push_back(has_source ? sources[static_cast<std::size_t>(from.region)]->ElementOf(
                                           static_cast<std::size_t>(from.loop),
                                           static_cast<std::size_t>(from.curve))
                                     : kNoElement);
    }
  }
}

}  // namespace kurvo::tools
