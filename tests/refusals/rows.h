// The tables of what single functions refuse.
#pragma once

#include <string>
#include <vector>

#include "kurvo.h"

namespace kurvo_test {

// Calls of functions, and what is to come of each. Several of them stand apart by a blank, several
// curves or numbers by "/"; no numbers are those of the function's own call.
struct Row {
  std::string functions, curves, numbers, want;
  int pending = 0;
};

// The highest degree of free-form curves, of some kinds, that a function works on, with these
// curves beside it or those of its own call.
struct Limit {
  const char *function, *kinds;
  int degree;
  const char* curves = nullptr;
};

extern const std::vector<Row> kRows;
extern const std::vector<Limit> kLimits;

}  // namespace kurvo_test
