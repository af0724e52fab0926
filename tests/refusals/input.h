// Curves and chains, sound and broken, written down in one line each.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/curve_text.h"

namespace kurvo_test {

// What Make understands, and
//   null       no record at all
//   (..)(..)   a chain of curves, () an empty one
// Behind a "!" follows what is wrong with it, each a word and a number:
//   type t     its type                       size n     its degree, order or number of pieces
//   data 0     no data                        count n    of control points; of a chain, of curves
//   array i    null; 1 points, pieces or the array of a chain, 2 knots or widths
//   nan i, inf i    number i of its points    knot i     not a number
//   in 0       from here on, with its last piece
//   loop 0     all its pieces are itself
// Everything that it owns is compared bit by bit, and set right again before it is freed.
class Input {
 public:
  explicit Input(const std::string& text) : null_(text == "null") {
    if (null_) return;
    const bool chain = text[0] == '(';  // what is wrong with it comes last
    const std::vector<std::string> items = chain ? Split(text) : std::vector{text};
    const std::size_t n = items.size() - (chain ? 1 : 0);
    KurvocvMallocCvseq(&seq_, static_cast<int32_t>(n));
    for (std::size_t i = 0; i < n; ++i) seq_.curves[i] = Make(Before(items[i])).Release();
    Cover(&seq_, sizeof seq_);
    Cover(seq_.curves, n * sizeof(Curve));
    for (std::size_t i = 0; i < n; ++i) Cover(seq_.curves[i]);
    sound_ = Bits();
    for (std::size_t i = 0; i < n; ++i) Break(seq_.curves[i], Behind(items[i]));
    if (chain) BreakChain(Behind(items[n]));
    record_ = seq_;
    before_ = Bits();
  }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input() {
    if (record_.count == seq_.count && record_.curves == seq_.curves) {
      const char* from = sound_.data();
      for (const auto& [to, size] : covered_) {
        std::memcpy(to, from, size);
        from += size;
      }
    }
    KurvocvFreeCvseq(&seq_);
  }

  Curve* curve() { return null_ ? nullptr : seq_.curves; }
  Cvseq* chain() { return null_ ? nullptr : &seq_; }
  bool Changed() const { return Bits() != before_; }

  // The curves of a chain, and what follows them.
  static std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> items;
    std::size_t from = 0;
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '(' && depth++ == 0) from = i + 1;
      if (text[i] != ')' || --depth > 0) continue;
      if (i > from) items.push_back(text.substr(from, i - from));
      from = i + 1;
    }
    items.push_back(text.substr(from));
    return items;
  }

 private:
  static std::string Before(const std::string& text) { return text.substr(0, text.find('!')); }
  static std::string Behind(const std::string& text) {
    return text.find('!') == std::string::npos ? "" : text.substr(text.find('!') + 1);
  }

  static double* Numbered(const Curve& cv) {
    return cv.type == CV_LINE ? static_cast<double*>(cv.data) : FreeForm(cv).points;
  }
  static void Break(Curve& whole, const std::string& faults) {
    std::istringstream text(faults);
    std::string what;
    Curve* cv = &whole;
    for (int32_t n; text >> what >> n;) {
      auto* const sizes = static_cast<int32_t*>(cv->data);
      auto* const pieces =
          cv->type == CV_SEGCV ? static_cast<KurvoSegcv*>(cv->data)->curves : nullptr;
      // clang-format off
      if (what == "type") cv->type = n;
      else if (what == "data") cv->data = nullptr;
      else if (what == "size") sizes[0] = n;
      else if (what == "count") sizes[1] = n;
      else if (what == "array") std::memset(static_cast<char*>(cv->data) + 8 * n, 0, sizeof(void*));
      else if (what == "in") cv = pieces + sizes[0] - 1;
      else if (what == "loop") std::fill_n(pieces, sizes[0], *cv);
      else if (what == "knot") FreeForm(*cv).knots[n] = kNaN;
      else if (what == "nan" || what == "inf") Numbered(*cv)[n] = what == "nan" ? kNaN : kInfinity;
      else throw std::invalid_argument(what);
      // clang-format on
    }
  }
  void BreakChain(const std::string& faults) {
    std::istringstream text(faults);
    std::string what;
    for (int32_t n; text >> what >> n;)
      what == "count" ? void(seq_.count = n) : void(seq_.curves = nullptr);
  }

  void Cover(void* p, std::size_t size) {
    if (size > 0) covered_.emplace_back(static_cast<char*>(p), size);
  }
  void Cover(const Curve& cv) {
    if (!cv.data) return;
    if (cv.type == CV_LINE || cv.type == CV_ARC)
      return Cover(cv.data, cv.type == CV_LINE ? 48 : 104);
    const bool two_arrays = IsSpline(cv.type) || cv.type == CV_SEGCV;
    Cover(cv.data, IsSpline(cv.type) ? 8 : 4);  // what is reserved has no value
    Cover(static_cast<char*>(cv.data) + 8, two_arrays ? 16 : 8);
    if (cv.type == CV_SEGCV) {
      const auto& block = *static_cast<KurvoSegcv*>(cv.data);
      const auto count = static_cast<std::size_t>(block.count);
      Cover(block.curves, count * sizeof(Curve));
      Cover(block.widths, count * sizeof(double));
      for (std::size_t i = 0; i < count; ++i) Cover(block.curves[i]);
      return;
    }
    const FreeForm form(cv);
    const auto size = [](int numbers) {
      return static_cast<std::size_t>(numbers) * sizeof(double);
    };
    Cover(form.points, size(form.count * form.stride));
    if (form.knots) Cover(form.knots, size(form.count + form.order));
  }
  std::string Bits() const {
    std::string bits;
    for (const auto& [from, size] : covered_) bits.append(from, size);
    return bits;
  }

  bool null_;
  Cvseq seq_{}, record_{};
  std::vector<std::pair<char*, std::size_t>> covered_;
  std::string sound_, before_;
};

}  // namespace kurvo_test
