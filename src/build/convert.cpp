// Conversion of a curve to another type: the record, and the choice of the rule.
#include "build/convert.h"

#include <cmath>
#include <limits>
#include <new>

#include "build/convert_from.h"
#include "foundation/error_codes.h"
#include "foundation/guard.h"
#include "records/copied_curve.h"
#include "records/views.h"

namespace kurvo {
namespace {

// Conversions tell of refusals by their result alone. This takes back what the queries they are
// made of report, all but a failed allocation.
class SilentErrors {
 public:
  explicit SilentErrors(GlobalVar& g) : g_(g), error_(g.error) { g.error = KURVO_ERR_NONE; }
  ~SilentErrors() { g_.error = error_; }
  SilentErrors(const SilentErrors&) = delete;
  SilentErrors& operator=(const SilentErrors&) = delete;

  void ThrowIfOutOfMemory() const {
    if (g_.error == KURVO_ERR_MEMORY) throw std::bad_alloc();
  }

 private:
  GlobalVar& g_;
  const int32_t error_;
};

// A curve whose control points run straight ahead. In a composite only Bezier pieces are looked at,
// so that one of arcs and Bezier curves becomes the line between its ends.
OwnedCurve ToLine(const Curve& source, GlobalVar& g) {
  if (KurvocvIsLine(&source, &g) <= 0) return {};
  OwnedCurve line(CV_LINE, {});
  auto& block = line.block<KurvoLine>();
  block.start[0] = std::numeric_limits<double>::quiet_NaN();
  KurvocvStartPoint(&source, block.start, &g);
  KurvocvEndPoint(&source, block.end, &g);
  if (ErrorPending(g) || std::isnan(block.start[0])) return {};  // unwritten: it has no pieces
  return line;
}

OwnedCurve ToOtherType(const Curve& source, int32_t type, LinePiece line_piece, GlobalVar& g) {
  return VisitCurve(
      source,
      Overloaded{[&](const KurvoLine& line) { return ConvertFrom(line, type, line_piece, g); },
                 [&](const KurvoArc& arc) { return ConvertFrom(arc, type); },
                 [&](const BezierView<3>& bezier) { return ConvertFrom(bezier, type); },
                 [&](const SplineView<3>& spline) { return ConvertFrom(spline, type); },
                 [&](const auto& view) { return ConvertFrom(view, type, source, g); },
                 [](Refused) { return OwnedCurve(); }});
}

}  // namespace

OwnedCurve Converted(const Curve& source, int32_t type, GlobalVar& g, LinePiece line_piece) {
  if (!source.data) return {};
  const SilentErrors silent(g);
  OwnedCurve result = type == source.type ? CopyOf(source, g)
                      : type == CV_LINE   ? ToLine(source, g)
                                          : ToOtherType(source, type, line_piece, g);
  silent.ThrowIfOutOfMemory();
  return result;
}

}  // namespace kurvo

extern "C" uint32_t KurvocvConvert(const Curve* source, Curve* target, GlobalVar* g) noexcept {
  using kurvo::Converted;
  if (kurvo::ErrorPending(*g) || !source || !source->data || !target ||
      !kurvo::IsTypeCode(target->type))
    return KURVO_REFUSED;
  const auto convert = [&] { return Converted(*source, target->type, *g).Release(); };
  *target = kurvo::Guard(*g, Curve{}, convert);
  return target->data ? KURVO_CONVERTED : KURVO_NOT_CONVERTED;
}
