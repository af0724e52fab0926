// The pairs that a DXF file is made of, group codes and their values, and entities as runs of them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

struct DxfPair {
  int code = 0;
  std::string_view value;  // without spaces at its ends
  std::size_t line = 0;    // of the code, from 1
};

struct DxfPairs {
  std::vector<DxfPair> pairs;
  std::size_t broken_at = 0;  // the line where there is no group code; 0: they are whole
};

// `bytes` must outlive the pairs. Comments are left out.
DxfPairs SplitIntoPairs(std::string_view bytes);

// What stands under a code 0, with that name, up to the next one.
class DxfEntity {
 public:
  explicit DxfEntity(std::span<const DxfPair> pairs) : pairs_(pairs) {}

  std::string_view Name() const { return pairs_.front().value; }
  std::size_t Line() const { return pairs_.front().line; }
  // Without the code 0.
  std::span<const DxfPair> Pairs() const { return pairs_.subspan(1); }

  // The first value with that code. Numbers that are none throw ElementError.
  std::string_view Text(int code) const;
  double Number(int code, double fallback) const;
  // The same where there must be one.
  double Number(int code) const;
  int Integer(int code, int fallback) const;
  // Of the codes `code` and `code` + 10; must be there.
  Point At(int code) const;
  // All values with that code, and all points, of which y follows x.
  std::vector<double> Numbers(int code) const;
  std::vector<Point> Points(int code) const;

 private:
  const DxfPair* Find(int code) const;

  std::span<const DxfPair> pairs_;
};

// Throws ElementError.
double NumberOf(const DxfPair& pair);

}  // namespace kurvo::tools
