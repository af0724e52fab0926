// The table of all functions of the interface, each with a way to call it at random.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "robust/call.h"
#include "robust/written_call.h"

namespace kurvo_test {

// What sets a function apart when its calls are judged.
enum Trait : unsigned {
  kAsks = 1,      // asks for as much memory as the caller says
  kSilent = 2,    // has no record to write an error to
  kHeavy = 4,     // works hard on every piece of a curve, so that it gets no long ones
  kSquare = 8,    // on every pair of places where curves cross, so that it gets short ones
  kRecords = 16,  // makes many records, so that fewer of its requests for memory fail
};

// A function, a random call of it, and one that is written down.
struct Called {
  const char* name;
  std::function<void(Call&)> call;
  std::function<std::string(WrittenCall&)> tell;
  bool takes_state = false;  // is given a GlobalVar
};

// A written call that does its work; several curves or numbers stand apart by "/". What is to come
// of that call, of the same one while an error is pending (nullptr: the same), with a null record
// for a curve or chain, and with a curve that has no data, or one that cannot be right, in the
// place of each curve in turn.
struct Work {
  const char *curves = nullptr, *numbers = nullptr, *works = nullptr, *pending = nullptr;
  const char *null = nullptr, *no_data = nullptr, *broken = nullptr;
};

struct Entry : Called, Work {
  Entry(const Called& called, const Work& work = {}, unsigned all = 0)
      : Called(called), Work(work), traits(all) {}
  unsigned traits;
};

// How a test names its parameter.
inline void PrintTo(const Entry& entry, std::ostream* out) { *out << entry.name; }

// Those of one library, in the order of its interface. Programs are linked with the table of the
// kernel or with that of the second library.
const std::vector<Entry>& Table();

// ---- running it

constexpr Mode HostileIf(bool hostile) { return hostile ? Mode::kHostile : Mode::kBenign; }

// Calls the function of `entry` with arguments from `source` and checks what every call owes:
// inputs unchanged, results consistent, nothing leaked, within the limits.
Outcome RunOnce(const Entry& entry, Source& source, const RunOptions& options);

// The call with a number: the same arguments whenever it is made. A complaint about it is a failure
// of the test; a fatal signal or a sanitizer's report names the call.
Outcome RunNumbered(const Entry& entry, uint64_t number, const RunOptions& options);
// How to make it again.
std::string Trace(const Entry& entry, uint64_t number, const RunOptions& options);

// A whole number from the environment.
int64_t Setting(const char* name, int64_t otherwise);
uint64_t Seed();

}  // namespace kurvo_test
