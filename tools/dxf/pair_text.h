// The text of a DXF file, pair by pair.
#pragma once

#include <string>
#include <string_view>

#include "geometry/plane.h"

namespace kurvo::tools {

// Flags of SPLINE and polylines.
inline constexpr int kDxfClosed = 1, kDxfRational = 4, kDxfPlanar = 8;

// Handles of what all files have; entities are numbered from kFirstFree on.
enum class DxfHandle : unsigned {
  kNone,
  kRoot,
  kGroups,
  kModel,
  kPaper,
  kModelBlock,
  kModelEnd,
  kPaperBlock,
  kPaperEnd,
  kTables = 0x10,
  kFirstFree = 0x100
};

class DxfPairText {
 public:
  void Pair(int code, std::string_view value);
  void Integer(int code, int value);
  void Number(int code, double value);
  void At(int code, Point p);
  void Handle(int code, DxfHandle handle);
  void BeginSection(std::string_view name);

  DxfHandle NextHandle();
  DxfHandle FirstFree() const { return next_; }

  std::string text;

 private:
  DxfHandle next_ = DxfHandle::kFirstFree;
};

}  // namespace kurvo::tools
