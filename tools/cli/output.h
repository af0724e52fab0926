// What a command leaves: a drawing, a picture, notes and a report.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/input.h"
#include "geometry/result.h"

namespace kurvo::tools {

// Exit statuses.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;   // wrong options, or an output could not be written
inline constexpr int kBadInput = 2;  // an input cannot be read
inline constexpr int kLeftOut = 3;   // done, but without elements that cannot be read

// The last part of a path, on one line.
std::string BaseName(const std::string& path);

// What drawings are written as.
inline constexpr const char* kFormats[] = {"svg", "svgz", "json", "dxf"};

struct OutputOptions {
  std::string drawing;  // files; empty for none, "-" for standard output
  std::string picture;
  std::string format;  // of the drawing: one of kFormats; empty: what its name ends with says it
  bool r12 = false;    // of DXF: the older version
  double size = 1000;  // of the picture
  LengthOption deviation;  // of curves that the drawing has no form for; 0: a part of their size
  LengthOption grid;       // that points are rounded to; 0: none
  bool json = false;
  bool csv = false;
  bool quiet = false;
};

// A file that was read, and the drawing in it if it is one.
struct Source {
  std::string path;
  const Drawing* drawing;
};

// One of several drawings that a command makes.
struct Part {
  std::string name;
  Result result;
};

// What a command makes; what it never makes is missing.
struct Products {
  std::function<Result()> drawing = {};
  std::function<std::string()> text = {};  // what is written in place of a drawing
  // Written where a file is named for each, "part-%.svg".
  std::function<std::vector<Part>()> parts = {};
  std::function<std::string()> picture;
  std::function<std::string()> table;
  std::function<std::string()> json;
};

// Writes the drawing, its points on the grid where there is one, and the picture and prints the
// report, as far as they are wanted; all are made before anything is written. A report is not
// printed where a file goes to standard output. Notes on standard error what is to be said of the
// drawings that were read. Result: the exit status. Throws when a file to write is one of those
// that were read.
int Deliver(Context& context, const InputOptions& input, const OutputOptions& options,
            const std::vector<Source>& sources, const Products& products);

}  // namespace kurvo::tools
