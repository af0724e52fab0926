#include "cli/command_support.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "svg/input_error.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

// Sizes that a picture can have, in pixels.
constexpr double kSmallestSize = 16;
constexpr double kLargestSize = 32768;

}  // namespace

CLI::Validator Between(double low, double high) {
  return CLI::Validator(
      [=](const std::string& text) {
        const double value = std::strtod(text.c_str(), nullptr);
        if (value >= low && value <= high) return std::string();
        return "not a number from " + ShortNumber(low) + " to " + ShortNumber(high);
      },
      "");
}

void AddOutputOption(CLI::App& command, std::string& output, const std::string& description) {
  const auto is_name = [](const std::string& text) {
    return text.empty() ? std::string("the name of the file is empty") : std::string();
  };
  command.add_option("-o,--output", output, description)
      ->check(CLI::Validator(is_name, ""))
      ->type_name("FILE");
}

CLI::Option* AddSizeOption(CLI::App& command, double& size) {
  return command
      .add_option("--size", size, "Longer side of the picture in pixels, 1000 unless given")
      ->check(Between(kSmallestSize, kLargestSize))
      ->type_name("PIXELS");
}

std::string BaseName(const std::string& path) {
  return OneLine(std::filesystem::path(path).filename().string());
}

void RefuseInputAsOutput(const std::vector<std::string>& inputs, const std::string& output) {
  for (const std::string& input : inputs) {
    std::error_code ignored;
    if (std::filesystem::equivalent(input, output, ignored)) {
      throw std::runtime_error(OneLine(output) + ": is the input; choose another output");
    }
  }
}

void PrintSkipped(const std::string& input, const Drawing& drawing) {
  for (const auto& [name, count] : drawing.skipped) {
    std::cerr << "kurvo: " << OneLine(input) << ": note: " << count << " " << name
              << (count == 1 ? " element has" : " elements have") << " no outline\n";
  }
}

void Print(const std::string& text) {
  std::cout << text << std::flush;
  if (!std::cout) throw std::runtime_error("standard output cannot be written");
}

}  // namespace kurvo::tools
