// Options and arguments that several commands take.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "cli/output.h"
#include "geometry/plane.h"

namespace kurvo::tools {

// Takes numbers from `low` to `high`; not a number is none of them.
CLI::Validator Between(double low, double high);

// "x,y" or "x y". Throws CLI::ValidationError, which names the option or argument.
Point ParsePoint(const std::string& name, const std::string& text);

// The drawing to read, and two of them.
void AddDrawing(CLI::App& command, std::string& input);
void AddDrawings(CLI::App& command, std::string& first, std::string& second,
                 const std::string& about_second, bool needs_second);

// The file to write, which is empty when it is not given; the longer side of the picture in pixels;
// JSON in place of the table; no table.
void AddOutput(CLI::App& command, OutputOptions& options, const std::string& about);
CLI::Option* AddSize(CLI::App& command, OutputOptions& options);
void AddJson(CLI::App& command, OutputOptions& options,
             const std::string& about = "Print JSON with all digits in place of the table");
void AddQuiet(CLI::App& command, OutputOptions& options,
              const std::string& about = "Do not print the table");

}  // namespace kurvo::tools
