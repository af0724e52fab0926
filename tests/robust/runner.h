// Runs entries of the table.
#pragma once

#include <cstdint>
#include <string>

#include "robust/table.h"

namespace kurvo_test {

// Limits of a single call.
constexpr double kMaxSeconds = 1;
constexpr int64_t kMaxBytes = int64_t{256} << 20;

struct RunOptions {
  Mode mode = Mode::kBenign;
  const Gallery* gallery = nullptr;
  MemoryFailure failure = {};
  uint8_t fill = 0xA5;
  double max_seconds = kMaxSeconds;
};

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
