// Style sheets of a drawing (CSS 2.1), as far as their selectors name elements, ids and classes.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "svg/input.h"

namespace kurvo::tools {

// Whether a list of media, as of "@media screen", has a screen among them.
bool IsForScreen(std::string_view media);

class StyleSheet {
 public:
  using Import = std::function<void(std::string_view reference)>;

  // Adds the rules of a text. What it cannot read it leaves out; where it imports another one it
  // calls import(reference).
  void Read(std::string_view text, const Import& import);
  // Counts a rule as left out.
  void LeaveOut(std::string_view text) { left_out_.Add(Excerpt(text)); }

  bool IsEmpty() const { return rules_.empty(); }
  // The style attribute of an element with what the rules say before it, and with what they call
  // important after it: the last declaration of a property holds.
  std::string Styled(std::string_view element, std::string_view id, std::string_view classes,
                     std::string_view style) const;
  // Selectors and rules that were left out.
  const Tally& LeftOut() const { return left_out_; }

 private:
  // "element#id.class.class": what is empty is not asked for.
  struct Rule {
    std::string element;
    std::string id;
    std::vector<std::string> classes;
    std::string declarations;
    std::string important;

    bool IsFor(std::string_view its_element, std::string_view its_id,
               const std::vector<std::string_view>& its_classes) const;
    // Ids count before classes, and these before elements.
    std::size_t Specificity() const;
  };

  void AddRules(std::string_view selectors, std::string_view declarations);
  void ReadAtRule(std::string_view head, std::string_view block, const Import& import);

  std::vector<Rule> rules_;
  // Rules, by "#id", ".class" or "element", whichever of these they ask for first; "" for all.
  std::map<std::string, std::vector<std::size_t>, std::less<>> by_key_;
  Tally left_out_;
  int depth_ = 0;
};

}  // namespace kurvo::tools
