// The manual page and the completions of shells, made of the options so that they cannot differ.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace kurvo::tools {

// `what` is "man" for the page in the language of man(7), or "bash" or "zsh" for the completion.
// Throws std::runtime_error for any other.
std::string Generated(const CLI::App& app, const std::string& what);

}  // namespace kurvo::tools
