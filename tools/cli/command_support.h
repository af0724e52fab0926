// What the commands of the client have in common.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "svg/svg_reader.h"

namespace kurvo::tools {

// A command and what it does once its options are read.
struct Command {
  CLI::App* options;
  std::function<void()> run;
};

// Takes numbers from `low` to `high`; not a number is none of them.
CLI::Validator Between(double low, double high);

// The option that names the file to write; without it `output` stays empty.
void AddOutputOption(CLI::App& command, std::string& output, const std::string& description);

// The option for the longer side of the picture, in pixels. Result: for those who go on with it.
CLI::Option* AddSizeOption(CLI::App& command, double& size);

// The last part of a path, on one line.
std::string BaseName(const std::string& path);

// Throws when `output` is one of the files that were read.
void RefuseInputAsOutput(const std::vector<std::string>& inputs, const std::string& output);

// Notes on standard error which elements of the file were left out.
void PrintSkipped(const std::string& input, const Drawing& drawing);

// Prints to standard output; throws when that cannot be written.
void Print(const std::string& text);

}  // namespace kurvo::tools
