// Drawings from text.
#pragma once

#include <string>

#include "svg/svg_reader.h"
#include "temporary_directory.h"

namespace kurvo::tools {

// What an svg element with the content `body` shows.
inline Drawing ReadText(Library& library, const std::string& body) {
  const TemporaryDirectory directory;
  return ReadSvg(library, directory.Write("in.svg", "<svg>" + body + "</svg>"));
}

// A drawing of one path.
inline Drawing ReadPath(Library& library, const std::string& data) {
  return ReadText(library, "<path d='" + data + "'/>");
}

}  // namespace kurvo::tools
