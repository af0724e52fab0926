// Reads drawings and points from files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

struct ReadOptions {
  // Whether an element that cannot be read is an InputError; otherwise it is one of the drawing's
  // faults and left out with what is in it.
  bool strict = false;
  double mm_per_unit = 0;  // of the units that the drawing is taken in; 0: its own
};

// The drawing in a file, SVG or curves as JSON (curve_file.h), packed by gzip or not. Of SVG the
// shapes that are displayed, whatever they are painted with, in the coordinates of the outermost
// viewBox or scaled to other units; y points as in the file. Throws InputError.
Drawing ReadDrawing(Context& context, const std::string& path, const ReadOptions& options = {});

// The same of what was read from it, unpacked. `path` is its name in messages.
Drawing ReadDrawing(Context& context, const std::string& path, std::string_view bytes,
                    const ReadOptions& options);

// The bytes of a file, unpacked. Throws InputError.
std::string ReadUnpacked(const std::string& path);

// The points of a file with one on each line, "x,y", "x;y" or "x y"; empty lines, lines that begin
// with # and a first line of names say nothing. There are at least two, and no neighbours are the
// same. Throws InputError, which names file and line.
std::vector<Point> ReadPoints(Context& context, const std::string& path);

}  // namespace kurvo::tools
