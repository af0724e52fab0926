// Crossings as text and as JSON.
#pragma once

#include <string>

#include "geometry/crossings.h"

namespace kurvo::tools {

// Two lists of curves, which may be the same one, and what they have in common.
struct CrossingReport {
  // The files; the second is empty when there is one only.
  std::string first_name;
  std::string second_name;
  const CurveList& first;
  const CurveList& second;
  const Crossings& found;
};

// One line for each crossing and each overlap, then how many there are. Curves are counted from 1.
std::string CrossingTable(const CrossingReport& report);

// The same with all digits.
std::string CrossingJson(const CrossingReport& report);

}  // namespace kurvo::tools
