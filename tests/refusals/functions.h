// The functions and the codes that the tables of refusals are about.
#pragma once

#include <string>
#include <vector>

#include "refusals/call.h"

namespace kurvo_test {

struct Code {
  const char* name;  // without KURVO_ERR_ and KURVO_WARN_
  int code;
};

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

extern const std::vector<Function> kFunctions;
extern const std::vector<Row> kRows;
extern const std::vector<Limit> kLimits;
extern const std::vector<std::string> kWithoutRecord;
extern const std::vector<Code> kCodes;

}  // namespace kurvo_test
