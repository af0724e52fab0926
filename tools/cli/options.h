// Options and arguments that several commands take.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/output.h"
#include "geometry/regions.h"

namespace kurvo::tools {

// Takes numbers from `low` to `high`; not a number is none of them.
CLI::Validator Between(double low, double high);

// The drawing to read, and two of them.
void AddDrawing(CLI::App& command, std::string& input);
void AddDrawings(CLI::App& command, std::string& first, std::string& second,
                 const std::string& about_second, bool needs_second);

// The options of all commands that read drawings.
void AddReading(CLI::App& command, InputOptions& options, Stage& stage);

// A length with or without a unit, whose number is from `low` to `high`.
CLI::Option* AddLength(CLI::App& command, const std::string& name, LengthOption& length, double low,
                       double high, const std::string& about);

// One of the names, of which `value` becomes the number.
CLI::Option* AddChoice(CLI::App& command, const std::string& name, std::int32_t& value,
                       std::vector<std::string> names, const std::string& about);

// Those of outlines that are closed for what they surround, and of elements that make one region;
// `about` says which do so without it.
void AddGap(CLI::App& command, LengthOption& gap);
CLI::Option* AddNested(CLI::App& command, Nesting& nesting, const std::string& about);

// What corners become, and how far curves may be off.
struct CornerOptions {
  KurvoOptions record = {};
  LengthOption tolerance;  // 0: the usual one
};
void AddCorners(CLI::App& command, CornerOptions& options);
PenOptions PenOf(const CornerOptions& options, Drawing& drawing);

// The options of what a command leaves. `drawing` and `picture` say what they hold; nullptr where
// there is none.
void AddOutputs(CLI::App& command, OutputOptions& options, const char* drawing,
                const char* picture);

}  // namespace kurvo::tools
