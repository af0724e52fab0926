// The order in which paths are cut.
#pragma once

#include <cstddef>
#include <vector>

#include "cut/path.h"

namespace kurvo::tools {

struct CutStep {
  std::size_t path;
  CutStart start;
};

// What lies in a closed path comes before it, and all of that before what lies beside it. Ways are
// short: each path is followed by the nearest, thousands run to and fro in strips, stretches are
// turned round as long as that helps (2-opt; Croes, Operations Research 6, 1958), and each path
// begins where the way to all of them is the shortest. The machine stands at `from`.
std::vector<CutStep> OrderOf(const std::vector<CutPath>& paths, Point from);

}  // namespace kurvo::tools
