// What a command leaves: a file, which is complete or not there, notes and a report.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

// Writes `content` to a temporary file in the directory of `path` and renames it to `path`, so that
// nobody ever sees half a file and what was there stays when anything fails. An interrupt waits
// until that is done. Throws std::runtime_error.
void WriteWholeFile(const std::string& path, std::string_view content);

// Prints to standard output; throws when that cannot be written.
void Print(const std::string& text);

// The last part of a path, on one line.
std::string BaseName(const std::string& path);

struct OutputOptions {
  std::string file;  // of the picture; empty for none
  double size = 1000;
  bool json = false;
  bool quiet = false;
};

// A file that was read, and the drawing in it if it is one.
struct Source {
  std::string path;
  const Drawing* drawing;
};

// Writes the picture and prints the report, as far as they are wanted; both are made before
// anything is written. Notes on standard error which elements of the drawings were left out. Throws
// when the file to write is one of those that were read.
void Deliver(const OutputOptions& options, const std::vector<Source>& sources,
             const std::function<std::string()>& picture,
             const std::function<std::string()>& report);

}  // namespace kurvo::tools
