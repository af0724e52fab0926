// Runs as entities of a DXF file: LINE, ARC, CIRCLE, polylines with bulges, SPLINE.
#pragma once

#include <string>

#include "dxf/pair_text.h"
#include "dxf/pieces.h"

namespace kurvo::tools {

class DxfEntityWriter {
 public:
  // R12 has no handles, and polylines of another kind.
  DxfEntityWriter(bool is_old, DxfPairText& out) : is_old_(is_old), out_(out) {}

  // Of what is written from now on.
  void Begin(const std::string& layer, int colour);
  void Write(const DxfRun& run);

 private:
  void BeginEntity(std::string_view name, std::string_view record);
  void WriteArc(const DxfSegment& arc);
  void WritePolyline(const DxfRun& run);
  void WriteVertex(Point p, double bulge);
  void WriteSpline(const DxfRun& run);

  const bool is_old_;
  DxfPairText& out_;
  std::string layer_;
  int colour_ = 7;
};

}  // namespace kurvo::tools
