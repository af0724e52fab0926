#include "cli/point_argument.h"

#include <CLI/CLI.hpp>

#include "svg/input_error.h"
#include "svg/text_scanner.h"

namespace kurvo::tools {

Point ParsePoint(const std::string& name, const std::string& text) {
  try {
    TextScanner scanner(name, text);
    scanner.SkipSpace();
    const double x = scanner.Number();
    scanner.SkipCommaSpace();
    const double y = scanner.Number();
    scanner.SkipSpace();
    if (scanner.AtEnd()) return {x, y};
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(name, "expected a point x,y, found '" + Excerpt(text) + "'");
}

}  // namespace kurvo::tools
