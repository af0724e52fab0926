#include "dxf/entity_writer.h"

#include <cmath>

namespace kurvo::tools {

void DxfEntityWriter::Begin(const std::string& layer, int colour) {
  layer_ = layer;
  colour_ = colour;
}

void DxfEntityWriter::BeginEntity(std::string_view name, std::string_view record) {
  out_.Pair(0, name);
  if (!is_old_) {
    out_.Handle(5, out_.NextHandle());
    out_.Handle(330, DxfHandle::kModel);
    out_.Pair(100, "AcDbEntity");
  }
  out_.Pair(8, layer_);
  out_.Integer(62, colour_);
  if (!is_old_) out_.Pair(100, record);
}

void DxfEntityWriter::Write(const DxfRun& run) {
  if (run.IsSpline()) return WriteSpline(run);
  const DxfSegment& first = run.segments.front();
  if (run.IsCircle()) {
    BeginEntity("CIRCLE", "AcDbCircle");
    out_.At(10, first.centre);
    out_.Number(40, first.radius);
  } else if (run.segments.size() > 1) {
    WritePolyline(run);
  } else if (first.sweep == 0) {
    BeginEntity("LINE", "AcDbLine");
    out_.At(10, first.from);
    out_.At(11, first.to);
  } else {
    WriteArc(first);
  }
}

void DxfEntityWriter::WriteArc(const DxfSegment& arc) {
  const auto degrees = [&](Point p) {
    const double angle = Degrees(std::atan2(p.y - arc.centre.y, p.x - arc.centre.x));
    return angle < 0 ? angle + 360 : angle;
  };
  BeginEntity("ARC", "AcDbCircle");
  out_.At(10, arc.centre);
  out_.Number(40, arc.radius);
  if (!is_old_) out_.Pair(100, "AcDbArc");
  out_.Number(50, degrees(arc.sweep > 0 ? arc.from : arc.to));
  out_.Number(51, degrees(arc.sweep > 0 ? arc.to : arc.from));
}

void DxfEntityWriter::WritePolyline(const DxfRun& run) {
  const int count = static_cast<int>(run.segments.size()) + (run.closed ? 0 : 1);
  BeginEntity(is_old_ ? "POLYLINE" : "LWPOLYLINE", "AcDbPolyline");
  if (is_old_) {
    out_.Integer(66, 1);
    out_.At(10, {});
  } else {
    out_.Integer(90, count);
  }
  out_.Integer(70, run.closed ? kDxfClosed : 0);
  for (const DxfSegment& segment : run.segments)
    WriteVertex(segment.from, std::tan(segment.sweep / 4));
  if (!run.closed) WriteVertex(run.segments.back().to, 0);
  if (!is_old_) return;
  out_.Pair(0, "SEQEND");
  out_.Pair(8, layer_);
}

void DxfEntityWriter::WriteVertex(Point p, double bulge) {
  if (is_old_) {
    out_.Pair(0, "VERTEX");
    out_.Pair(8, layer_);
    out_.At(10, p);
  } else {
    out_.Number(10, p.x);
    out_.Number(20, p.y);
  }
  if (bulge != 0) out_.Number(42, bulge);
}

void DxfEntityWriter::WriteSpline(const DxfRun& run) {
  const DxfSpline& spline = run.spline;
  BeginEntity("SPLINE", "AcDbSpline");
  out_.Integer(
      70, kDxfPlanar + (spline.weights.empty() ? 0 : kDxfRational) + (run.closed ? kDxfClosed : 0));
  out_.Integer(71, spline.degree);
  out_.Integer(72, static_cast<int>(spline.knots.size()));
  out_.Integer(73, static_cast<int>(spline.points.size()));
  out_.Integer(74, 0);
  for (const double knot : spline.knots) out_.Number(40, knot);
  for (const double weight : spline.weights) out_.Number(41, weight);
  for (const Point p : spline.points) out_.At(10, p);
}

}  // namespace kurvo::tools
