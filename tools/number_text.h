// Numbers as text, in the "C" locale.
#pragma once

#include <string>

namespace kurvo::tools {

// Six significant digits at most, for people.
std::string ShortNumber(double value);

// At most `decimals` digits after the point, trailing zeros dropped, never "-0".
std::string FixedNumber(double value, int decimals);

}  // namespace kurvo::tools
