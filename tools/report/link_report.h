// Links between outlines as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "geometry/links.h"

namespace kurvo::tools {

struct LinkReport {
  std::string first_name;  // of the file
  std::string second_name;
  const CurveList& first;
  const CurveList& second;
  const std::vector<Link>& links;
};

// One line for each link, then the shortest. Curves are counted from 1.
std::string LinkTable(const LinkReport& report);

// The same with all digits.
std::string LinkJson(const LinkReport& report);

}  // namespace kurvo::tools
