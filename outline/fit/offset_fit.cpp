#include "fit/offset_fit.h"

#include <algorithm>
#include <cmath>

#include "fit/cell_run.h"
#include "fit/cell_strips.h"
#include "fit/cubic_cells.h"
#include "fit/spline_fit.h"
#include "strand/arc_sweep.h"

namespace kurvo::outline {
namespace {

constexpr double kCellShare = 0.5;     // of the tolerance, for cubics in place of other curves
constexpr double kFineShare = 0.25;    // of that, for many cubics before they are fitted by few
constexpr double kPointShare = 0.125;  // of the tolerance: an arc with such a radius is a point
constexpr double kCoarse = 0x1p-20;    // the tolerance from there on, in the frame
constexpr double kFinest = 0x1p-36;    // and at best: below it fits are told from rounding no more

OffsetPiece LinePiece(Vec2 start, Vec2 end, double from, double to) {
  return {OffsetPiece::Kind::kLine, false, {start, {}, {}, end}, {}, 0, from, to};
}

void AppendLine(const Span& span, double distance, StripList& list) {
  const Vec2 start = span.Start(), end = span.End();
  const double length = Length(end - start);
  if (!(length > 0)) return;
  const Vec2 along = (1 / length) * (end - start), off = distance * Right(along);
  list.strips.push_back({start, end, along, along, distance, distance, span.from, span.to,
                         span.curve, true, list.pieces.size(), 1});
  list.pieces.push_back(LinePiece(start + off, end + off, span.from, span.to));
}

void AppendArc(const Span& span, double distance, double tol, StripList& list) {
  const double sense = span.sweep < 0 ? -1 : 1;
  if (!(span.radius * std::fabs(span.sweep) > 0)) return;
  double radius = span.radius + sense * distance;
  const bool is_point = kPointShare * tol >= radius && distance != 0;
  const double reach = is_point ? -sense * span.radius : distance;
  Strip strip = {span.Start(), span.End(), TangentAt(span, 0), TangentAt(span, 1),
                 reach,        reach,      span.from,          span.to,
                 span.curve,   false,      list.pieces.size(), 0};
  // Pieces below half a turn have ends apart.
  const int count = is_point ? 0 : static_cast<int>(std::ceil(std::fabs(span.sweep) / 3));
  Vec2 start = strip.First();
  for (int i = 1; i <= count; ++i) {
    const double angle = span.angle + span.sweep * i / count;
    const Vec2 end =
        i == count ? strip.Last() : span.centre + radius * Vec2{std::cos(angle), std::sin(angle)};
    list.pieces.push_back({OffsetPiece::Kind::kArc,
                           sense < 0,
                           {start, {}, {}, end},
                           span.centre,
                           radius,
                           span.ParameterAt(static_cast<double>(i - 1) / count),
                           span.ParameterAt(static_cast<double>(i) / count)});
    start = end;
  }
  strip.piece_count = static_cast<std::size_t>(count);
  list.strips.push_back(strip);
}

// Cubics within `error` of a span: cells beside it at equal parameters, whose error falls with the
// fourth power of their number, and where these go on smoothly cubics fitted to them, whose error
// falls with the sixth. Result: whether they are the span itself.
bool AppendFewCells(const Span& span, double error, Array<CubicCell>& cells) {
  Array<CubicCell> fine;
  const bool is_exact = AppendCells(span, 0, kFineShare * error, fine);
  if (fine.size() == 1) {
    cells.swap(fine);
    return is_exact;
  }
  CutAtCusps(fine);
  for (std::size_t i = 0; i < fine.size();) {
    std::size_t next = i + 1;
    while (next < fine.size() && GoesOn(fine[next - 1], fine[next])) ++next;
    CellRun run;
    run.cells.assign(fine.begin() + static_cast<std::ptrdiff_t>(i),
                     fine.begin() + static_cast<std::ptrdiff_t>(next));
    run.first_tangent = DirectionAtStart(fine[i]);
    run.last_tangent = DirectionAtEnd(fine[next - 1]);
    double from = fine[i].from;
    FitCubics(run, (1 - kFineShare) * error, [&](const Vec2* points, double s) {
      const CubicCell& last = run.cells[run.CellOf(s)];
      const double share = s - static_cast<double>(run.CellOf(s));
      const double to = last.from + share * (last.to - last.from);
      cells.push_back({{points[0], points[1], points[2], points[3]}, last.span, from, to});
      from = to;
    });
    i = next;
  }
  return false;
}

}  // namespace

void AppendStrips(const Span& span, double distance, double tol, StripList& list) {
  if (span.kind == Span::Kind::kLine) return AppendLine(span, distance, list);
  if (span.kind == Span::Kind::kArc) return AppendArc(span, distance, tol, list);
  const std::size_t first = list.strips.size();
  const bool is_coarse = list.extra > kMostExtra && kCoarse > tol;
  if (is_coarse) ++list.capped;
  const double off = is_coarse ? kCoarse : std::max(tol, kFinest);
  Array<CubicCell> cells;
  const bool is_exact = AppendFewCells(span, kCellShare * off, cells);
  const double left = is_exact ? off : (1 - kCellShare) * off;
  for (const CubicCell& cell : cells) {
    const std::size_t had = list.pieces.size();
    AppendStrips(span, cell, distance, left, list);
    const std::size_t made = list.pieces.size() - had;
    if (made > kUsualPieces) list.extra += made - kUsualPieces;
  }
  for (std::size_t i = first + 1; i < list.strips.size(); ++i) list.strips[i].is_within = true;
}

}  // namespace kurvo::outline
