#include "svg/left_out.h"

#include <fmt/format.h>

#include <algorithm>

#include "svg/attributes.h"

namespace kurvo::tools {
namespace {

// Of filters: they move what is shown; others change colours and edges.
constexpr std::string_view kMoving[] = {"feOffset", "feDisplacementMap", "feMorphology", "feTile"};

constexpr const char* kMarkers[] = {"marker", "marker-start", "marker-mid", "marker-end"};

bool BeginsLikeEffect(std::string_view name) {
  for (const char* start : {"clip", "mask", "mark", "filt"}) {
    if (name.starts_with(start)) return true;
  }
  return false;
}

// Quick to say of most elements.
bool MayHaveEffects(const pugi::xml_node& element) {
  std::string_view style;
  for (const pugi::xml_attribute& attribute : element.attributes()) {
    const std::string_view name = attribute.name();
    if (BeginsLikeEffect(name)) return true;
    if (name == "style") style = attribute.value();
  }
  while (!style.empty()) {
    while (!style.empty() && IsSpace(style.front())) style.remove_prefix(1);
    if (BeginsLikeEffect(style)) return true;
    style.remove_prefix(std::min(style.size(), style.find(';')));
    if (!style.empty()) style.remove_prefix(1);
  }
  return false;
}

}  // namespace

void LeftOut::LookAt(const pugi::xml_node& element) {
  if (!MayHaveEffects(element)) return;
  const auto value = [&](const char* name) {
    const std::string text = Property(element, name);
    return text == "none" ? std::string() : text;
  };
  clipped_ += !value("clip-path").empty() || !value("mask").empty() ? 1u : 0u;
  moved_ += Moves(value("filter")) ? 1u : 0u;
  marked_ += std::any_of(std::begin(kMarkers), std::end(kMarkers),
                         [&](const char* name) { return !value(name).empty(); })
                 ? 1u
                 : 0u;
}

// "url(#id)"
bool LeftOut::Moves(std::string_view filter) const {
  const std::size_t begin = filter.find('#');
  if (begin == filter.npos) return false;
  const std::string_view rest = filter.substr(begin + 1);
  const pugi::xml_node element = document_.ById(rest.substr(0, rest.find_first_of("\"')")));
  return std::any_of(element.begin(), element.end(), [&](const pugi::xml_node& child) {
    const std::string_view name = document_.LocalName(child);
    return std::find(std::begin(kMoving), std::end(kMoving), name) != std::end(kMoving);
  });
}

std::vector<std::string> LeftOut::Notes() const {
  std::vector<std::string> notes;
  const auto note = [&](std::size_t count, std::string_view one, std::string_view more,
                        std::string_view what) {
    if (count > 0)
      notes.push_back(fmt::format("note: {} {} {}", count, count == 1 ? one : more, what));
  };
  const auto beginning = [](std::string_view what, const Tally& tally) {
    return fmt::format("{}, beginning with '{}'", what, tally.first);
  };
  for (const auto& [name, count] : without_outline)
    note(count, name + " element has", name + " elements have", "no outline");
  note(clipped_, "element is", "elements are", "clipped or masked, which is not looked at");
  note(marked_, "element has", "elements have", "markers, which are not looked at");
  note(moved_, "element has", "elements have", "a filter that moves it, which is not looked at");
  note(hidden_layers, "layer is", "layers are", "hidden");
  note(empty_switches, "switch has", "switches have", "nothing without a condition");
  note(lost_uses.count, "use element refers", "use elements refer",
       "to what is not there, " + lost_uses.first);
  note(transforms.count, "transform", "transforms", beginning("of styles not read", transforms));
  const Tally& sheets = document_.LostStyles();
  const Tally& rules = document_.Style().LeftOut();
  note(sheets.count, "style sheet", "style sheets", beginning("not read", sheets));
  note(rules.count, "rule", "rules", beginning("of style sheets not read", rules));
  return notes;
}

}  // namespace kurvo::tools
