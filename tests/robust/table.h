// The table of all functions of the interface, each with a way to call it at random.
#pragma once

#include <iosfwd>
#include <span>
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
  void (*call)(Call&);
  unsigned traits = 0;
};

// How a test names its parameter.
void PrintTo(const Entry& entry, std::ostream* out);

// In the order of the interface. The parts of the table, by the sections of kurvo.h.
std::span<const Entry> StateEntries();
std::span<const Entry> RecordEntries();
std::span<const Entry> VectorEntries();
std::span<const Entry> IncidenceEntries();
std::span<const Entry> QueryEntries();
std::span<const Entry> BuildEntries();
std::span<const Entry> ChangeEntries();
std::span<const Entry> RelationEntries();

// All of it.
const std::vector<Entry>& Table();

}  // namespace kurvo_test
