// Parameter widths of the pieces of a composite.
#pragma once

#include <algorithm>

namespace kurvo {

// Hands out widths whose running sum, added up in order, ends at exactly 1.
class Widths {
 public:
  // The width of the piece that ends at `fraction` of the whole, 1 for the last one.
  double UpTo(double fraction) {
    const double width = std::max(fraction - sum_, 0.0);
    sum_ += width;
    return width;
  }

 private:
  double sum_ = 0.0;
};

}  // namespace kurvo
