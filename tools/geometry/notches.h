// Notches: short lines across outlines at lengths along them.
#pragma once

#include <string>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

// The shapes of this name: a label such as "path#front", or an id. Throws std::runtime_error when
// there is none.
std::vector<std::size_t> ShapesNamed(const Drawing& drawing, const std::string& name);

struct NotchRequest {
  std::string element;  // empty: every one
  std::vector<double> lengths;
};

struct Notch {
  std::size_t element;  // into the shapes of the drawing
  std::string outline;  // its name
  double at;            // length from the start of the outline
  Point point;
  Curve line;  // across the outline, half of it to either side
};

// A notch on each outline that is as long, shape by shape. Throws std::runtime_error when a request
// asks for a length that none of its outlines has.
std::vector<Notch> NotchesOn(Context& context, const Drawing& drawing,
                             const std::vector<NotchRequest>& requests, double notch);

// The drawing, and behind each marked shape one of its notches, drawn in its lines.
Drawing WithNotches(Context& context, const Drawing& drawing, const std::vector<Notch>& notches);

}  // namespace kurvo::tools
