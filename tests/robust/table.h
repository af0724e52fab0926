// The table of all functions of the interface, each with a way to call it at random.
#pragma once

#include <functional>
#include <iosfwd>
#include <vector>

#include "robust/call.h"

namespace kurvo_test {

// What sets a function apart when its calls are judged.
enum Trait : unsigned {
  kAsks = 1,    // asks for as much memory as the caller says
  kSilent = 2,  // has no record to write an error to
  kHeavy = 4,   // works hard on every piece of a curve, so that it gets no long ones
};

struct Entry {
  const char* name;
  std::function<void(Call&)> call;
  unsigned traits = 0;
};

// How a test names its parameter.
void PrintTo(const Entry& entry, std::ostream* out);

// In the order of the interface.
const std::vector<Entry>& Table();

}  // namespace kurvo_test
