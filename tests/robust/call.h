// One random call of one function: its arguments, what is watched while it runs, what it gives.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "kurvo_outline.h"
#include "robust/allocation.h"
#include "robust/records.h"

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

struct Outcome {
  uint64_t digest = 0;
  int error = 0;
  bool libm = false;   // went through the C library's mathematics
  double seconds = 0;  // of processor time, in the library
  MemoryUse memory;
  std::string complaint;  // what was wrong with it, empty when nothing was
};

class Call {
 public:
  Call(Source& source, const RunOptions& options);

  // ---- arguments
  Source& in() { return in_; }
  bool hostile() const { return options_.mode == Mode::kHostile; }
  double Number() { return inputs_.Number(); }
  double Parameter() { return inputs_.Parameter(); }
  void ShortCurves(int share) { inputs_.ShortCurves(share); }
  double* Point(int size = 3) { return inputs_.Point(size); }
  double* Array(int count);
  // Null now and then when hostile. Inputs are to come back as they were.
  const Curve* AnyCurve(int32_t wanted = 0);
  const Cvseq* AnySequence();
  const CvParam* AnyList();
  const KurvoRegion* AnyRegion();
  const KurvoArc* AnyArc();
  // To be changed in place.
  Curve* OwnCurve();
  double* OwnNumbers(int count) { return own_store_.Numbers(static_cast<std::size_t>(count)); }
  Maker& own() { return own_; }
  Store& own_store() { return own_store_; }
  Store& store() { return store_; }  // of what is to come back as it was
  // Room for results, filled with kUnwritten.
  double* Room(int count);
  static constexpr double kUnwritten = -0x1.23456789ABCDEp40;  // nothing comes out as this

  // What was drawn last of each kind, which later arguments may meet.
  struct {
    double* point;
    const Curve* curve;
    const Cvseq* chain;
    const KurvoRegion* region;
    std::optional<double> number;
    int count;
  } given{};

  // ---- the call
  GlobalVar g;
  // Everything but the error of `g` is to stay as it is, unless `state_may_change` was called.
  void StateMayChange() { state_may_change_ = true; }
  // Results carry attribute words.
  void AttributesStay() { attributes_stay_ = true; }
  template <class Body>
  auto Run(Body&& body) {
    Start();
    if constexpr (std::is_void_v<decltype(body())>) {
      body();
      Stop();
    } else {
      const auto result = body();
      Stop();
      return result;
    }
  }

  // ---- results
  bool OutOfMemory() const { return g.error == KURVO_ERR_MEMORY; }
  void Expect(bool truth, const char* what);
  // What holds when memory has run out.
  void Neutral(bool truth) { Expect(!OutOfMemory() || truth, "result not neutral without memory"); }
  // For in-place functions that fail: the curve and what it owns is as it was.
  void Unchanged() { Expect(own_store_.Checksum() == own_before_, "changed although it failed"); }
  void Add(double x) { digest_.Add(x); }
  void Add(const double* numbers, int count);
  void Code(int64_t result, const std::vector<int64_t>& documented);
  void AddOwn() { own_store_.AddNumbers(digest_); }
  void AddState();
  // New records, which are freed. `bare` says that a type without a block may come out.
  void Take(Curve& curve, bool bare = false);
  template <class List>
  void Take(List& list, bool bare = false);
  // Judges and keeps a result when everything about the call itself has been judged.
  void Afterwards(std::function<void()> judge) { judges_.push_back(std::move(judge)); }
  // Reads the whole of a record that the library made.
  void Read(const Curve& curve, bool bare);
  void Read(double value, bool) { Add(value); }

  Outcome Finish();

 private:
  bool GivesNull() { return hostile() && in_.OneIn(100); }
  void Start();
  void Stop();

  Source& in_;
  const RunOptions& options_;
  Store store_, own_store_;
  Maker inputs_, own_;
  bool state_may_change_ = false, attributes_stay_ = false;
  uint64_t before_ = 0, own_before_ = 0;
  GlobalVar state_before_;
  double started_ = 0;
  Digest digest_;
  Outcome outcome_;
  std::vector<std::function<void()>> judges_;
};

}  // namespace kurvo_test
