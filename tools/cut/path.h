// What a machine cuts in one go, as lines and arcs in its coordinates: millimetres, y pointing up.
#pragma once

#include <cstddef>
#include <vector>

#include "dxf/pieces.h"

namespace kurvo::tools {

inline constexpr std::size_t kNoPath = static_cast<std::size_t>(-1);

struct CutPath {
  std::vector<DxfSegment> segments;  // at least one
  bool closed = false;
  std::size_t around = kNoPath;  // the closed path that it lies in
};

// A place to begin at: the middle of a segment of a closed path, or an end of an open one.
struct CutStart {
  std::size_t segment = 0;
  bool reversed = false;  // of an open path
  Point enter, leave;
};

// Those that are worth a look: of a closed path on its longest segments.
std::vector<CutStart> StartsOf(const CutPath& path);

// The segments from there on.
std::vector<DxfSegment> SegmentsFrom(const CutPath& path, const CutStart& start);

double LengthOf(const DxfSegment& segment);
// At a part of the segment, 0 to 1.
Point PointOn(const DxfSegment& segment, double part);
// Of travel, of unit length.
Point DirectionAtStart(const DxfSegment& segment);
// As many segments of the same length.
std::vector<DxfSegment> Divided(const DxfSegment& segment, int count);

}  // namespace kurvo::tools
