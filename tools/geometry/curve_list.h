// The curves of a drawing in one list, for searches among all of them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/library.h"
#include "report/json.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

struct ListedCurve {
  const OwnedCurve* curve;  // of the drawing, which must outlive the list
  std::size_t outline;      // into CurveList::outlines
  std::size_t index;        // in its outline, from 0
  Bounds box;
  // Numbers of the places where it begins and ends. Where one curve of an outline meets the next,
  // also where the last one meets the first, both have the same number; no other two do.
  std::size_t start_joint;
  std::size_t end_joint;
};

struct CurveList {
  std::vector<std::string> outlines;  // their names
  std::vector<ListedCurve> curves;    // in drawing order
};

CurveList ListCurves(Library& library, const Drawing& drawing);

// Opens an object under `key` that names a curve of the list: outline, number in it from 1, type.
void BeginCurve(std::string_view key, const CurveList& list, std::size_t number, JsonWriter& json);

}  // namespace kurvo::tools
