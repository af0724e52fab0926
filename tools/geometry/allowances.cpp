#include "geometry/allowances.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <optional>
#include <stdexcept>

#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "geometry/measure.h"
#include "geometry/notches.h"
#include "geometry/parallel.h"
#include "geometry/region_work.h"

namespace kurvo::tools {
namespace {

constexpr double kBeside = 1e-5;  // of the element: how far beside an edge its side is looked at

constexpr double kUsualMiterLimit = 4;

// Tolerances of stretches: how far the sides of two, and of the element, may be apart along an
// edge.
constexpr double kSameEdges = 2;

Point Turned(Point v) { return {-v.y, v.x}; }  // by a quarter, to the left where y points up
Point Unit(Point v) { return (1 / Size(v)) * v; }

// How far ahead of p along s, and behind q along t, the lines through them meet.
struct Ahead {
  double from_p, from_q;
  bool IsAhead() const { return from_p >= 0 && from_q >= 0; }
};
std::optional<Ahead> WhereLinesMeet(Point p, Point s, Point q, Point t) {
  const double cross = Cross(s, t);
  if (cross == 0) return std::nullopt;
  return Ahead{Cross(q - p, t) / cross, Cross(s, q - p) / cross};
}

// The corner between two stretches, on the side of `outside`: 1 for the left of travel, -1 for the
// right.
class Corner {
 public:
  Corner(Point vertex, Point before, Point after, double outside, double width_before,
         double width_after, const KurvoOptions& pen)
      : vertex_(vertex),
        before_(Unit(before)),
        after_(Unit(after)),
        outside_(outside),
        width_before_(width_before),
        width_after_(width_after),
        pen_(pen) {}

  // What closes it, with the vertex; nothing where the stretches overlap.
  std::vector<Curve> Wedge() {
    const bool opens = outside_ * Cross(before_, after_) < 0;
    if (!opens) return {};
    const Point p = vertex_ + width_before_ * (outside_ * Turned(before_));
    const Point q = vertex_ + width_after_ * (outside_ * Turned(after_));
    curves_.push_back(Curve::Line(vertex_, p).value());
    if (pen_.join == KURVO_JOIN_MITER) {
      AddMiter(p, q);
    } else if (pen_.join == KURVO_JOIN_ROUND) {
      AddRound(p, q);
    } else {
      AddLine(q);
    }
    AddLine(vertex_);
    return std::move(curves_);
  }

 private:
  Point End() const {
    const Curve& last = curves_.back();
    if (const KurvoLine* line = last.AsLine()) return Load(line->end);
    return ControlPointsOf(last).back();
  }

  void AddLine(Point to) {
    const Point from = End();
    if (Size(to - from) > 0) curves_.push_back(Curve::Line(from, to).value());
  }

  void AddMiter(Point p, Point q) {
    const auto meet = WhereLinesMeet(p, before_, q, after_);
    const double limit = pen_.miter_limit > 0 ? pen_.miter_limit : kUsualMiterLimit;
    if (meet && meet->IsAhead()) {
      const Point tip = p + meet->from_p * before_;
      if (limit * std::max(width_before_, width_after_) >= Size(tip - vertex_)) AddLine(tip);
    }
    AddLine(q);
  }

  // A conic that is tangent to both lines, an arc where the widths are the same; of a sharp corner
  // two, between them the normal of the bisector.
  void AddRound(Point p, Point q) {
    const auto meet = WhereLinesMeet(p, before_, q, after_);
    if (meet && !meet->IsAhead()) return AddLine(q);
    const double widest = std::max(width_before_, width_after_);
    if (meet && kUsualMiterLimit * widest >= Size(p + meet->from_p * before_ - vertex_))
      return AddConic(p, before_, q, after_);
    Point middle = outside_ * (Turned(before_) + Turned(after_));
    middle = Size(middle) > 0 ? Unit(middle) : before_;
    const Point along = -outside_ * Turned(middle);
    const Point top = vertex_ + ((width_before_ + width_after_) / 2) * middle;
    AddConic(p, before_, top, along);
    AddConic(top, along, q, after_);
  }

  void AddConic(Point p, Point s, Point q, Point t) {
    const auto meet = WhereLinesMeet(p, s, q, t);
    if (!meet || !meet->IsAhead()) return AddLine(q);
    const double half_turn = std::fabs(TurnBetween(s, t)) / 2;
    curves_.push_back(ConicOf(p, p + meet->from_p * s, std::cos(half_turn), q));
  }

  const Point vertex_, before_, after_;
  const double outside_, width_before_, width_after_;
  const KurvoOptions& pen_;
  std::vector<Curve> curves_;
};

// The stretches along the edges of one element, and the element itself.
class AllowanceMaker {
 public:
  AllowanceMaker(Context& context, const Drawing& drawing, std::size_t element, double size,
                 const PenOptions& pen, const CurveDone& done, Regions& part)
      : context_(context),
        drawing_(drawing),
        element_(element),
        size_(size),
        pen_(pen),
        done_(done),
        part_(part) {}

  void Make(const std::vector<double>& widths, const Closing& closing) {
    const Shape& shape = drawing_.shapes[element_];
    Operand source(IsFilled(shape) ? RuleOf(shape) : KURVO_FILL_EVENODD);
    std::vector<Loop> loops;
    std::size_t first = 0;
    for (const Outline& outline : shape.outlines) {
      if (Surrounds(context_, shape, outline, closing)) {
        source.Add(outline.curves, element_);
        loops.push_back({&outline, first});
      } else {
        ++part_.left_out;
      }
      first += outline.curves.size();
    }
    if (loops.empty()) return;
    const double greatest = *std::max_element(widths.begin(), widths.end());
    Operand made(KURVO_FILL_NONZERO);
    const bool is_uniform =
        std::all_of(widths.begin(), widths.end(), [&](double width) { return width == greatest; });
    if (is_uniform) {
      OffsetGroup(context_, source, greatest, WithTolerance(pen_, greatest, size_), done_, made,
                  part_.report);
    } else {
      Region covered;
      Close(source, covered);
      for (const Loop& loop : loops) AddStretches(covered, loop, widths);
      std::vector<const Operand*> all = {&source};
      for (const Operand& stretch : stretches_) all.push_back(&stretch);
      Combine(context_, KURVO_UNION, all, static_cast<double>(source.CurveCount()), done_, made,
              part_.report, kSameEdges * WithTolerance(pen_, greatest, size_).tol);
    }
    TakeLoops(context_, drawing_, greatest, made, part_);
  }

 private:
  struct Loop {
    const Outline* outline;
    std::size_t first;  // of its edges
  };

  // Its loops with lines where they do not close.
  void Close(const Operand& source, Region& closed) {
    const KurvoRegion open = source.Record();
    closed.Get()->rule = open.rule;
    const EpsilonScope wider = WiderTolerance(context_);
    for (std::int32_t i = 0; i < open.count; ++i) {
      context_.Do("KurvoRegionAdd", KurvoRegionAdd, closed.Get(), &open.loops[i], INFINITY).value();
    }
  }

  // Which side of the loop is not covered: 1 for the left, -1 for the right.
  double OutsideOf(const Region& covered, const Outline& outline) {
    const Curve& edge = outline.curves.front();
    const Point p = PositionOf(context_, edge, kMiddle);
    const Point beside = kBeside * size_ * Unit(Turned(DerivativeOf(context_, edge, kMiddle, 1)));
    return covered.Locate(p + beside, context_).value().where == Where::kInside ? -1 : 1;
  }

  void AddStretches(const Region& covered, const Loop& loop, const std::vector<double>& widths) {
    const std::vector<Curve>& edges = loop.outline->curves;
    const double outside = OutsideOf(covered, *loop.outline);
    const std::size_t count = edges.size();
    const auto width = [&](std::size_t i) { return widths[loop.first + i % count]; };
    // Whether a run of edges of one width begins there; none does where all have the same.
    const auto meets = [&](std::size_t i) {
      return Follows(context_, edges[(i + count - 1) % count], edges[i % count]);
    };
    const auto begins = [&](std::size_t i) {
      return width(i) != width(i + count - 1) || !meets(i);
    };
    std::size_t start = 0;
    while (start < count && !begins(start)) ++start;
    if (start == count) return AddRun(edges, 0, count, width(0), outside);
    for (std::size_t begin = start; begin < start + count;) {
      std::size_t end = begin + 1;
      while (end < start + count && !begins(end)) ++end;
      AddRun(edges, begin, end, width(begin), outside);
      if (meets(end)) {
        AddCorner(edges[(end - 1) % count], edges[end % count], width(end - 1), width(end),
                  outside);
      }
      begin = end;
    }
  }

  void AddRun(const std::vector<Curve>& edges, std::size_t begin, std::size_t end, double width,
              double outside) {
    if (width == 0) return;
    std::vector<Curve> run;
    for (std::size_t i = begin; i < end; ++i)
      run.push_back(edges[i % edges.size()].Copy(context_).value());
    KurvoOptions options = WithTolerance(pen_, width, size_);
    options.cap = KURVO_CAP_BUTT;
    const ChainView chain(run);
    Operand& stretch = stretches_.emplace_back(KURVO_FILL_NONZERO);
    Operand source(KURVO_FILL_NONZERO);
    source.Add(run, element_);
    Run(
        context_, options, {&source}, static_cast<double>(end - begin), [] {}, "KurvoChainStroke",
        [&](const KurvoOptions& all, KurvoRegion* out, KurvoReport* report, GlobalVar* g) {
          KurvoChainStroke(chain->Get(), 1, outside > 0 ? width : 0, outside > 0 ? 0 : width, &all,
                           out, report, g);
        },
        stretch, part_.report);
  }

  void AddCorner(const Curve& before, const Curve& after, double width_before, double width_after,
                 double outside) {
    const auto direction = EndDirection(context_, before, 1);
    const auto next = EndDirection(context_, after, 0);
    if (!direction || !next) return;
    Corner corner(EndOf(context_, before), *direction, *next, outside, width_before, width_after,
                  pen_.record);
    wedges_.push_back(corner.Wedge());
    if (wedges_.back().empty()) return;
    Operand& wedge = stretches_.emplace_back(KURVO_FILL_NONZERO);
    wedge.Add(wedges_.back(), element_);
  }

  static constexpr double kMiddle = 0.5;

  Context& context_;
  const Drawing& drawing_;
  const std::size_t element_;
  const double size_;
  const PenOptions& pen_;
  const CurveDone& done_;
  Regions& part_;
  std::list<Operand> stretches_;
  std::list<std::vector<Curve>> wedges_;
};

std::size_t EdgeCount(const Shape& shape) {
  std::size_t count = 0;
  for (const Outline& outline : shape.outlines) count += outline.curves.size();
  return count;
}

}  // namespace

std::vector<std::vector<double>> WidthsOf(const Drawing& drawing,
                                          const std::vector<Allowance>& allowances, double usual) {
  std::vector<std::vector<double>> widths(drawing.shapes.size());
  for (const Allowance& allowance : allowances) {
    for (const std::size_t i : ShapesNamed(drawing, allowance.element)) {
      const std::size_t count = EdgeCount(drawing.shapes[i]);
      if (widths[i].empty()) widths[i].assign(count, usual);
      if (allowance.edges.empty()) widths[i].assign(count, allowance.width);
      for (const auto& [first, last] : allowance.edges) {
        if (last >= count) {
          throw std::runtime_error(fmt::format("{} has {} edges, from 0 to {}, and no edge {}",
                                               allowance.element, count, count - 1, last));
        }
        for (std::size_t edge = first; edge <= last; ++edge) widths[i][edge] = allowance.width;
      }
    }
  }
  return widths;
}

Regions WithAllowances(const Drawing& drawing, const std::vector<std::vector<double>>& widths,
                       const Closing& closing, const PenOptions& pen, const CurveDone& done) {
  Context context;
  const double size = Extent(context, {&drawing});
  std::vector<Regions> parts(drawing.shapes.size());
  ParallelFor(parts.size(), [&](std::size_t i, Context& own) {
    if (widths[i].empty()) return;
    AllowanceMaker(own, drawing, i, size, pen, done, parts[i]).Make(widths[i], closing);
  });
  Regions all;
  for (Regions& part : parts) Append(part, all);
  return all;
}

}  // namespace kurvo::tools
