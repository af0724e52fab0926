// One call of any function, its arguments taken from text by their types, and what came of it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "refusals/input.h"

namespace kurvo_test {

// "CURVE" for KURVO_ERR_CURVE; "" when there is none of that code.
std::string NameOf(int code);

// Records come from `curves`, set apart by ";", numbers and arrays of numbers from `numbers`, set
// apart by ",". A pointer to what may be written gets the next of them too; where none is left, or
// "out" stands, room for a result ("out t": a curve header of type t), and null for "null".
class Call {
 public:
  Call(const std::string& curves, const std::string& numbers, int pending)
      : curves_(Parts(curves, ';')), numbers_(Parts(numbers, ',')) {
    g.error = pending;
    before_ = g;
  }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() {
    for (Curve& cv : new_curves_)
      if (cv.data != this) KurvocvFreeCurve(&cv);
    for (Cvseq& seq : new_chains_)
      if (seq.count != kMark) KurvocvFreeCvseq(&seq);
    for (CvParam& list : new_lists_)
      if (list.count != kMark) KurvocrFreeCvParam(&list);
  }

  template <class T>
  T Take() {
    using Target = std::remove_pointer_t<T>;
    using Record = std::remove_const_t<Target>;
    if constexpr (std::is_arithmetic_v<T>) {
      return static_cast<T>(std::strtod(Next(numbers_).c_str(), nullptr));
    } else if constexpr (std::is_same_v<Record, GlobalVar>) {
      return &g;
    } else if constexpr (std::is_same_v<T, void*>) {
      const std::string size = Next(numbers_);
      return size == "null" ? nullptr : std::malloc(std::stoul(size));
    } else if constexpr (std::is_same_v<Record, Curve> || std::is_same_v<Record, Cvseq> ||
                         std::is_same_v<Record, KurvoArc>) {
      return TakeRecord<T, Record, std::is_const_v<Target>>();
    } else {
      const std::string text = Next(numbers_);
      if (text == "null") return nullptr;
      if constexpr (!std::is_const_v<Target>)
        if (text == "out") return Room(static_cast<T>(nullptr));
      Numbers& x = arrays_.emplace_back(ReadAll(text));
      if constexpr (std::is_same_v<T, const CvParam*>) {
        CvParam& list = lists_.emplace_back(CvParam{static_cast<int32_t>(x.size()), x.data()});
        if (text == "minus one") list.count = -1;
        if (text == "no values") list = {1, nullptr};
        return &list;
      } else if constexpr (std::is_same_v<Record, double>) {
        if (!std::is_const_v<Target>)
          states_.emplace_back([&x, was = x] { return x == was ? "=" : "*"; });
        return x.data();
      }
      return nullptr;
    }
  }

  // Result, outputs, error: "=" for an output that is as it was, "0" for one that is empty and for
  // each number that became 0, "T" for a header with a type and no data, "*" for anything else.
  std::string Outcome(const std::string& result) {
    std::string all = result, outputs;
    for (const auto& state : states_) outputs += state();
    GlobalVar after = g;
    after.error = before_.error;
    if (std::memcmp(&after, &before_, sizeof after) != 0) outputs += "g";
    for (const std::string& part : {outputs, g.error == before_.error ? "" : NameOf(g.error)})
      if (!part.empty()) all += (all.empty() ? "" : " ") + part;
    return all;
  }

  using Texts = std::deque<std::string>;
  static Texts Parts(const std::string& text, char between) {
    Texts parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in >> std::ws, part, between); parts.push_back(part))
      part.erase(part.find_last_not_of(' ') + 1);
    return parts;
  }

  bool HasOutputs() const { return !states_.empty(); }

  Globals g;

 private:
  static constexpr int32_t kMark = 77;
  static std::string Next(Texts& texts) {
    if (texts.empty()) return "out";
    const std::string first = texts.front();
    texts.pop_front();
    return first;
  }
  static Numbers ReadAll(const std::string& text) {
    Numbers numbers;
    const char* p = text.c_str();
    for (char* end;; p = end) {
      const double x = std::strtod(p, &end);
      if (end == p) return numbers;
      numbers.push_back(x);
    }
  }

  template <class T, class Record, bool kConst>
  T TakeRecord() {
    const std::string text = Next(curves_);
    if constexpr (!kConst)
      if (text.rfind("out", 0) == 0)
        return Room(static_cast<T>(nullptr), std::atoi(text.c_str() + 3));
    Input& input = inputs_.emplace_back(text);
    states_.emplace_back([&input] {
      return kConst ? (input.Changed() ? "an input has changed" : "") : input.Changed() ? "*" : "=";
    });
    if constexpr (std::is_same_v<Record, Cvseq>)
      return input.chain();
    else if constexpr (std::is_same_v<Record, Curve>)
      return input.curve();
    else
      return input.curve() ? static_cast<T>(input.curve()->data) : nullptr;
  }

  double* Room(double*, int = 0) {
    Numbers& x = arrays_.emplace_back(6, kMark);
    states_.emplace_back([&x] {
      std::string zeros;
      for (const double y : x)
        if (y == 0)
          zeros += '0';
        else if (y != kMark)
          return std::string("*");
      return zeros.empty() ? std::string("=") : zeros;
    });
    return x.data();
  }
  uint32_t* Room(uint32_t*, int = 0) {
    uint32_t& code = codes_.emplace_back(kMark);
    states_.emplace_back([&code] { return code == kMark ? "=" : std::to_string(code); });
    return &code;
  }
  Curve* Room(Curve*, int32_t type = 0) {
    Curve& cv = new_curves_.emplace_back(Curve{type, this, 5, 6, 7});
    states_.emplace_back([&cv, type, this] {
      if (cv.data == this) return cv.type == type && cv.attr == 5 && cv.attr_p2 == 7 ? "=" : "*";
      if (cv.data || cv.attr || cv.attr_p1 || cv.attr_p2) return "*";
      return cv.type ? "T" : "0";
    });
    return &cv;
  }
  Cvseq* Room(Cvseq*, int = 0) {
    static Curve left_over = {};
    return Listed(new_chains_.emplace_back(Cvseq{kMark, &left_over}), &Cvseq::curves);
  }
  CvParam* Room(CvParam*, int = 0) {
    static double left_over = 0;
    return Listed(new_lists_.emplace_back(CvParam{kMark, &left_over}), &CvParam::values);
  }
  template <class List, class Array>
  List* Listed(List& list, Array List::*array) {
    states_.emplace_back([&list, array, was = list.*array] {
      if (list.count == kMark && list.*array == was) return "=";
      return list.count == 0 && !(list.*array) ? "0" : "*";
    });
    return &list;
  }

  Texts curves_, numbers_;
  GlobalVar before_;
  std::deque<Input> inputs_;
  std::deque<Numbers> arrays_;
  std::deque<CvParam> lists_, new_lists_;
  std::deque<uint32_t> codes_;
  std::deque<Curve> new_curves_;
  std::deque<Cvseq> new_chains_;
  std::vector<std::function<std::string()>> states_;
};

template <class R>
std::string Shown(R result, bool free) {
  if constexpr (std::is_pointer_v<R>) {
    if constexpr (std::is_same_v<R, void*>)
      if (free) KurvoFree(result);
    return result ? "block" : "null";
  } else {
    if (std::is_same_v<R, uint32_t> && result == static_cast<R>(KURVO_REFUSED)) return "refused";
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", static_cast<double>(result));
    return text;
  }
}

// The outcome of a call of `function`.
template <class R, class... Arguments>
std::string Invoke(R (*function)(Arguments...) noexcept, Call& call) {
  const std::tuple<Arguments...> arguments{call.Take<Arguments>()...};
  if constexpr (std::is_void_v<R>) {
    std::apply(function, arguments);
    return call.Outcome("");
  } else {
    const R result = std::apply(function, arguments);
    return call.Outcome(Shown(result, !call.HasOutputs()));
  }
}
template <auto kFunction>
std::string Of(Call& call) {
  return Invoke(kFunction, call);
}
inline std::string OfMallocCurve(Call& call) {  // as many sizes as there may be
  Curve* const cv = call.Take<Curve*>();
  const int type = call.Take<int>(), size = call.Take<int>(), count = call.Take<int>();
  return call.Outcome(Shown(KurvocvMallocCurve(cv, type, size, count), false));
}

// A function and one call that does its work. What is to come of that call, of the same one while
// an error is pending (nullptr: the same), with a null record for a curve or chain, and with a
// curve that has no data, or one that cannot be right, in the place of each curve in turn.
struct Function {
  const char* name;
  std::string (*call)(Call&);
  const char *curves, *numbers;
  const char* works;
  const char* pending = nullptr;
  const char *null = nullptr, *no_data = nullptr, *broken = nullptr;
};

}  // namespace kurvo_test
