#include "dxf/colours.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace kurvo::tools {
namespace {

constexpr int kBlack = 7;

struct Rgb {
  int red, green, blue;
};

constexpr Rgb kFirst[] = {{255, 0, 0},   {255, 255, 0},   {0, 255, 0},
                          {0, 255, 255}, {0, 0, 255},     {255, 0, 255},
                          {0, 0, 0},     {128, 128, 128}, {192, 192, 192}};

// 10 to 249: hues in steps of 15 degrees, in five values, odd ones of half the saturation.
Rgb Hued(int index) {
  constexpr double kValues[] = {1, 0.65, 0.5, 0.3, 0.15};
  const double value = 255 * kValues[index % 10 / 2];
  const double paleness = index % 2 == 1 ? 0.5 : 0;
  const double hue = (index / 10 - 1) / 4.0;  // in sixths of a turn
  const auto channel = [&](double peak) {
    double distance = std::fabs(std::fmod(hue - peak + 9, 6) - 3);
    const double full = std::clamp(2 - distance, 0.0, 1.0);
    return static_cast<int>(value * (paleness + (1 - paleness) * full));
  };
  return {channel(0), channel(2), channel(4)};
}

Rgb ColourOfIndex(int index) {
  if (index >= 1 && index <= 9) return kFirst[index - 1];
  if (index >= 10 && index < 250) return Hued(index);
  if (index >= 250 && index < 256) {
    const int grey = 51 + (index - 250) * 204 / 5;
    return {grey, grey, grey};
  }
  return kFirst[kBlack - 1];
}

struct Named {
  std::string_view name;
  Rgb colour;
};
constexpr Named kNamed[] = {{"red", {255, 0, 0}},       {"yellow", {255, 255, 0}},
                            {"lime", {0, 255, 0}},      {"green", {0, 128, 0}},
                            {"cyan", {0, 255, 255}},    {"blue", {0, 0, 255}},
                            {"magenta", {255, 0, 255}}, {"black", {0, 0, 0}},
                            {"gray", {128, 128, 128}},  {"grey", {128, 128, 128}}};

// "#rgb", "#rrggbb" or a name.
std::optional<Rgb> ColourOfText(std::string_view text) {
  for (const Named& named : kNamed) {
    if (named.name == text) return named.colour;
  }
  if ((text.size() != 4 && text.size() != 7) || text[0] != '#') return std::nullopt;
  int number = 0;
  const char* end = text.data() + text.size();
  if (std::from_chars(text.data() + 1, end, number, 16).ptr != end) return std::nullopt;
  if (text.size() == 7) return Rgb{number >> 16, number >> 8 & 255, number & 255};
  return Rgb{17 * (number >> 8), 17 * (number >> 4 & 15), 17 * (number & 15)};
}

}  // namespace

std::string ColourText(int index) {
  const Rgb colour = ColourOfIndex(index);
  return fmt::format("#{:02x}{:02x}{:02x}", colour.red, colour.green, colour.blue);
}

int ColourIndex(std::string_view text) {
  const std::optional<Rgb> wanted = ColourOfText(text);
  if (!wanted) return kBlack;
  const auto distance = [&](int index) {
    const Rgb colour = ColourOfIndex(index);
    return std::hypot(colour.red - wanted->red, colour.green - wanted->green,
                      colour.blue - wanted->blue);
  };
  int nearest = kBlack;
  for (int index = 1; index < 256; ++index) {
    if (distance(index) < distance(nearest)) nearest = index;
  }
  return nearest;
}

}  // namespace kurvo::tools
