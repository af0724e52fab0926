// Conversion of line segments.
#include "build/convert_from.h"
#include "eval/pline2d.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

OwnedCurve FromCubic(const KurvoLine& line, int32_t type, GlobalVar& g) {
  const PLine2D evaluator(line, g);
  Coord points[4];
  FlattenPoint(line.start, points[0]);
  Store(evaluator.Position(1.0 / 3.0), points[1]);
  Store(evaluator.Position(2.0 / 3.0), points[2]);
  FlattenPoint(line.end, points[3]);
  if (type == CV_BEZIER) return CopiedBezier(points, 3);
  if (type == CV_BSPLINE) return CopiedSingleSpan(points, 3);
  return NewComposite(CopiedBezier(points, 3));
}

OwnedCurve FromRationalQuadratic(const KurvoLine& line, int32_t type) {
  HCoord points[3];
  const Vec3 middle = 0.5 * (Spatial(line.start) + Spatial(line.end));
  FlattenPoint(line.start, points[0]);
  KurvoclSetHCoord(points[1], middle.x, middle.y, 0.0, 1.0);
  FlattenPoint(line.end, points[2]);
  return type == CV_RBEZIER ? CopiedBezier(points, 2) : CopiedSingleSpan(points, 2);
}

OwnedCurve LinearComposite(const KurvoLine& line) {
  Coord points[2];
  FlattenPoint(line.start, points[0]);
  FlattenPoint(line.end, points[1]);
  return NewComposite(CopiedBezier(points, 1));
}

}  // namespace

OwnedCurve ConvertFrom(const KurvoLine& line, int32_t type, LinePiece line_piece, GlobalVar& g) {
  switch (type) {
    case CV_SEGCV:
      if (line_piece == LinePiece::kLinear) return LinearComposite(line);
      [[fallthrough]];
    case CV_BEZIER:
    case CV_BSPLINE:
      return FromCubic(line, type, g);
    case CV_RBEZIER:
    case CV_RBSPLINE:
      return FromRationalQuadratic(line, type);
    default:
      return {};
  }
}

}  // namespace kurvo
