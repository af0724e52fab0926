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

// The options of all commands that read drawings.
void AddReading(CLI::App& command, InputOptions& options, Stage& stage);

// A length with or without a unit, whose number is from `low` to `high`.
CLI::Option* AddLength(CLI::App& command, const std::string& name, LengthOption& length, double low,
                       double high, const std::string& about);

// The options of what a command leaves. `drawing` and `picture` say what they hold; nullptr where
// there is none.
void AddOutputs(CLI::App& command, OutputOptions& options, const char* drawing,
                const char* picture);

}  // namespace kurvo::tools
