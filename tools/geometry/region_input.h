// What regions are made of: the outlines of a drawing, read and sorted for the library.
#pragma once

#include <cstddef>
#include <vector>

#include "geometry/chain.h"
#include "geometry/regions.h"

namespace kurvo::tools {

inline bool IsFilled(const Shape& shape) { return shape.paint.fill != "none"; }

inline int RuleOf(const Shape& shape) {
  return shape.even_odd ? KURVO_FILL_EVENODD : KURVO_FILL_NONZERO;
}

// Whether the outline takes part in what the shape covers.
bool Surrounds(Context& context, const Shape& shape, const Outline& outline,
               const Closing& closing);

// What the shapes of a drawing surround.
struct Input {
  struct Loop {
    const Outline* outline;
    std::size_t element;
    std::size_t region;
  };
  struct Region {
    int rule;
    int side;  // of what is combined: 0 or 1
  };

  std::vector<Loop> loops;  // region by region
  std::vector<Region> regions;
  std::size_t left_out = 0;

  void Begin(int rule, int side) { regions.push_back({rule, side}); }
  void Add(Context& context, const Drawing& drawing, std::size_t element, const Closing& closing);
};

using Loops = std::vector<Input::Loop>;

// Of the shapes from `begin` to `end`; those that nest come first.
void Read(Context& context, const Drawing& drawing, std::size_t begin, std::size_t end, int side,
          Nesting nesting, const Closing& closing, Input& input);

// The loops in groups that are farther than `reach` apart: what is made of one has nothing to do
// with another. Each is soon done and has a core of its own.
std::vector<Loops> Apart(Context& context, const Loops& loops, double reach);

// The loops of each region by themselves.
std::vector<Loops> ByRegion(const Loops& loops);

double CurveCount(const Loops& loops);

// Loops with the elements that their curves come from, as the library takes them. The curves belong
// to a drawing, or to the record that the library made.
class Operand {
 public:
  explicit Operand(int rule) { made_.Get()->rule = rule; }

  void Add(const std::vector<Curve>& curves, std::size_t element) {
    loops_.push_back(*ChainView(curves)->Get());
    begins_.push_back(elements_.size());
    elements_.resize(elements_.size() + curves.size(), element);
  }
  // What the library writes to, and its sources once it is written.
  Region& Output() { return made_; }
  void TakeElements(const std::vector<const Operand*>& sources);

  KurvoRegion Record() const {
    if (loops_.empty()) return *made_.Get();
    return {static_cast<std::int32_t>(loops_.size()), made_.Get()->rule,
            const_cast<Cvseq*>(loops_.data()), nullptr};
  }
  std::size_t ElementOf(std::size_t loop, std::size_t curve) const {
    return elements_[begins_[loop] + curve];
  }
  std::size_t CurveCount() const { return elements_.size(); }
  bool IsEmpty() const { return elements_.empty(); }

 private:
  std::vector<Cvseq> loops_;  // of curves of others
  Region made_;
  std::vector<std::size_t> begins_;    // of the loops among the curves
  std::vector<std::size_t> elements_;  // by curve
};

void Fill(const Loops& loops, Operand& operand);

}  // namespace kurvo::tools
