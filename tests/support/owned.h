// Records that free themselves.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kurvo.h"

namespace kurvo_test {

template <class Record, void (*kFree)(Record*)>
class Owner {
 public:
  Owner() = default;
  Owner(Owner&& other) noexcept : record_(other.Release()) {}
  Owner& operator=(Owner&& other) noexcept {
    std::swap(record_, other.record_);
    return *this;
  }
  ~Owner() { kFree(&record_); }

  Record* get() { return &record_; }
  const Record* get() const { return &record_; }
  Record* operator->() { return &record_; }
  const Record* operator->() const { return &record_; }
  Record& operator*() { return record_; }
  const Record& operator*() const { return record_; }
  Record Release() { return std::exchange(record_, Record{}); }

 protected:
  Record record_{};
};

class Owned : public Owner<Curve, KurvocvFreeCurve> {
 public:
  Owned() = default;
  explicit Owned(int32_t type) { record_.type = type; }
  template <class Block>
  Block& block() const {
    return *static_cast<Block*>(record_.data);
  }
};

class Chain : public Owner<Cvseq, KurvocvFreeCvseq> {
 public:
  Chain() = default;
  explicit Chain(const std::string& text);  // "(..)(..)", as in curve_text.h
  explicit Chain(std::vector<Owned>&& curves) {
    KurvocvMallocCvseq(&record_, static_cast<int32_t>(curves.size()));
    for (std::size_t i = 0; i < curves.size(); ++i) record_.curves[i] = curves[i].Release();
  }
  int count() const { return record_.count; }
  Curve& operator[](int i) const { return record_.curves[i]; }
  Curve* begin() const { return record_.curves; }
  Curve* end() const { return record_.curves + record_.count; }
};

class Parameters : public Owner<CvParam, KurvocrFreeCvParam> {
 public:
  int count() const { return record_.count; }
  double& operator[](int i) const { return record_.values[i]; }
  operator std::vector<double>() const { return {record_.values, record_.values + count()}; }
};

}  // namespace kurvo_test
