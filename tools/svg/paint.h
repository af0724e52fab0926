// Colours of elements, as far as one colour can tell.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "geometry/drawing.h"
#include "svg/attributes.h"
#include "svg/document.h"

namespace kurvo::tools {

// What an element passes on of its colours to those in it.
class InheritedPaint {
 public:
  // Takes over what the element says. In place of a gradient stands its first colour, in place of
  // what else is painted with the colour to fall back on, or black.
  void Take(const SvgDocument& document, const pugi::xml_node& element, const Viewport& viewport);
  // That of a shape; widths are in units around it.
  Paint Own() const;

 private:
  struct Colour {
    std::string text;
    double opacity = 1;  // of a gradient's stop
    double own_opacity = 1;
  };
  Colour Read(const SvgDocument& document, const std::string& value) const;
  void TakeColour(const SvgDocument& document, const pugi::xml_node& element,
                  const std::string& name, Colour& colour) const;

  Colour fill_ = {"#000"}, stroke_ = {"none"};
  double stroke_width_ = 1;
  double opacity_ = 1;  // of the elements around, one in the other
  std::string current_ = "#000";
};

}  // namespace kurvo::tools
