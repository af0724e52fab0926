// Sequences of curves for tests.
#pragma once

#include <sstream>
#include <string>

#include "build/curves.h"

namespace kurvo_test {

// A sequence that frees itself.
class Chain {
 public:
  explicit Chain(std::vector<Owned>&& curves) {
    KurvocvMallocCvseq(&seq_, static_cast<int32_t>(curves.size()));
    for (std::size_t i = 0; i < curves.size(); ++i) seq_.curves[i] = curves[i].Release();
  }
  explicit Chain(const std::string& description) : Chain(MakeAll(description)) {}  // "(..)(..)"
  ~Chain() { KurvocvFreeCvseq(&seq_); }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;

  Cvseq* get() { return &seq_; }
  int count() const { return seq_.count; }
  Curve& operator[](int i) { return seq_.curves[i]; }

 private:
  static std::vector<Owned> MakeAll(const std::string& description) {
    std::vector<Owned> curves;
    std::istringstream text(description);
    while ((text >> std::ws).peek() == '(') {
      text.ignore();
      curves.push_back(Make(text));
      text >> std::ws;
      text.ignore();
    }
    return curves;
  }

  Cvseq seq_{};
};

}  // namespace kurvo_test
