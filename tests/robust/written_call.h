// Calls written down in text: arguments are taken from it by their types, and what comes of the
// call is told in a few signs.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "robust/records.h"
#include "support/basics.h"

namespace kurvo_test {

// "CURVE" for KURVO_ERR_CURVE, "cleared" for none; null when there is none of that code.
const char* NameOf(int code);

// What stands apart by `between`.
std::deque<std::string> Parts(const std::string& text, char between);
// The curves of a chain, and what follows them.
std::vector<std::string> Split(const std::string& chain);

// A record or an array in blocks of its own: numbers, what Make understands, and
//   (..)(..)   a chain of curves, () an empty one
// Behind a "!" follows what is wrong with it, each a word and a number:
//   type t     its type                       size n     its degree, order or number of pieces
//   data 0     no data                        count n    of control points; of a chain, of curves
//   array i    null; 1 points, pieces or the array of a chain, 2 knots or widths
//   nan i, inf i    number i of its points    knot i     not a number
//   in 0       from here on, with its last piece
//   loop 0     all its pieces are itself
template <class Record>
Record* Read(Store& store, const std::string& text);

// The library may have moved the array of a chain, and put a curve of its own into it.
void Settle(Store& store, const Cvseq& seq, const Cvseq& before);

// What has become of a result, which is freed.
std::string Became(const double* room);
std::string Became(const uint32_t* code);
std::string Became(Curve* cv);
std::string Became(Cvseq* seq);
std::string Became(CvParam* list);

// Records come from `curves`, set apart by ";", numbers and arrays of numbers from `numbers`, set
// apart by ",". A pointer to what may be written gets the next of them too; where none is left, or
// "out" stands, room for a result ("out t": a curve header of type t), and null for "null".
class WrittenCall {
 public:
  WrittenCall(const std::string& curves, const std::string& numbers, int pending)
      : curves_(Parts(curves, ';')), numbers_(Parts(numbers, ',')) {
    g.error = pending;
    before_ = g;
  }

  template <class T>
  T Take() {
    using Target = std::remove_pointer_t<T>;
    using Record = std::remove_const_t<Target>;
    if constexpr (std::is_same_v<Record, GlobalVar>) {
      return &g;
    } else {
      constexpr bool kIsNumber =
          std::is_arithmetic_v<Record> || std::is_void_v<Record> || std::is_same_v<Record, CvParam>;
      const std::string text = Next(kIsNumber ? numbers_ : curves_);
      if constexpr (std::is_arithmetic_v<T>) {
        return static_cast<T>(std::strtod(text.c_str(), nullptr));
      } else {
        if (text == "null") {
          if (!kIsNumber && !std::is_const_v<Target>) states_.emplace_back([] { return "="; });
          return nullptr;
        }
        if constexpr (std::is_void_v<Record>)
          return std::malloc(std::stoul(text));
        else if constexpr (std::is_const_v<Target>)
          return Given<Record>(text, "", "an input has changed");
        else if constexpr (std::is_same_v<Record, uint32_t>)
          return Room<Record>(0);
        else if (text.rfind("out", 0) == 0)
          return Room<Record>(std::atoi(text.c_str() + 3));
        else
          return Given<Record>(text, "=", "*");
      }
    }
  }

  // Result, outputs, error: "=" for an output that is as it was, "0" for one that is empty and for
  // each number that became 0, "T" for a header with a type and no data, "*" for anything else.
  // Frees what was made.
  std::string Outcome(std::string result);
  bool HasOutputs() const { return !states_.empty(); }

  Globals g;
  static constexpr int32_t kMark = 77;
  static constexpr std::size_t kRoom = 6;  // numbers that a function writes at most

 private:
  static std::string Next(std::deque<std::string>& texts);
  template <class Record>
  Record* Given(const std::string& text, const char* same, const char* changed) {
    Store& store = stores_.emplace_back();
    Record* const record = Read<Record>(store, text);
    std::function<void()> settle = [] {};
    if constexpr (std::is_same_v<Record, Cvseq>)
      settle = [=, &store, before = *record] { Settle(store, *record, before); };
    states_.emplace_back([=, &store, before = store.Checksum()] {
      const bool is_same = store.Checksum() == before;
      settle();
      return is_same ? same : changed;
    });
    return record;
  }
  template <class Record>
  Record* Room(int32_t type) {
    Record* const room = stores_.emplace_back().Zeroed<Record>(kRoom);
    if constexpr (std::is_arithmetic_v<Record>) {
      std::fill_n(room, kRoom, Record{kMark});
    } else if constexpr (std::is_same_v<Record, Curve>) {
      *room = {type, this, 5, 6, 7};
    } else {
      auto& [count, array] = *room;
      count = kMark;
      array = reinterpret_cast<std::remove_reference_t<decltype(array)>>(this);
    }
    states_.emplace_back([room, &store = stores_.back(), before = stores_.back().Checksum()] {
      return store.Checksum() == before ? "=" : Became(room);
    });
    return room;
  }

  std::deque<std::string> curves_, numbers_;
  GlobalVar before_;
  std::deque<Store> stores_;
  std::vector<std::function<std::string()>> states_;
};

template <class Result>
std::string Shown(Result result, bool free) {
  if constexpr (std::is_pointer_v<Result>) {
    if constexpr (std::is_void_v<std::remove_pointer_t<Result>>)
      if (free) KurvoFree(result);
    return result ? "block" : "null";
  } else {
    if (std::is_same_v<Result, uint32_t> && result == static_cast<Result>(KURVO_REFUSED))
      return "refused";
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", static_cast<double>(result));
    return text;
  }
}

// The outcome of a call of `function`.
template <class Result, class... Args>
std::string Told(WrittenCall& call, Result (*function)(Args...) noexcept) {
  const std::tuple<Args...> args{call.Take<Args>()...};
  if constexpr (std::is_void_v<Result>) {
    std::apply(function, args);
    return call.Outcome("");
  } else {
    const Result result = std::apply(function, args);
    return call.Outcome(Shown(result, !call.HasOutputs()));
  }
}

}  // namespace kurvo_test
