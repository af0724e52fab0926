// Curve records as short text, so that tables of tests can say what they expect.
#pragma once

#include <string>

#include "outline.h"

namespace kurvo::tools {

// "L 0,0 10,0" a line, "A+ 0,0 r5 5,0 -5,0" a counter-clockwise arc about 0,0 from 5,0 to -5,0
// ("A-" clockwise), "B 0,0 1,1 2,0" a Bezier, "R 0,0 1,1*0.5 2,0" a rational one with its weights
// but 1. Six significant digits.
std::string Describe(const OwnedCurve& curve);

// Curves with "; " between them and " z" after the last when the outline is closed.
std::string Describe(const Outline& outline);

}  // namespace kurvo::tools
