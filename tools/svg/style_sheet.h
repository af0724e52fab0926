// Style sheets of a drawing (CSS 2.1), as far as their selectors name elements, ids and classes.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kurvo::tools {

class StyleSheet {
 public:
  // Adds the rules of a text. What it cannot read it leaves out.
  void Read(std::string_view text);

  bool IsEmpty() const { return rules_.empty(); }
  // The style attribute of an element with what the rules say before it, and with what they call
  // important after it: the last declaration of a property holds.
  std::string Styled(std::string_view element, std::string_view id, std::string_view classes,
                     std::string_view style) const;
  // Selectors and rules that were left out; the first of them.
  std::size_t LeftOut() const { return left_out_; }
  const std::string& FirstLeftOut() const { return first_left_out_; }

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
  void LeaveOut(std::string_view text);

  std::vector<Rule> rules_;
  // Rules, by "#id", ".class" or "element", whichever of these they ask for first; "" for all.
  std::map<std::string, std::vector<std::size_t>, std::less<>> by_key_;
  std::size_t left_out_ = 0;
  std::string first_left_out_;
};

}  // namespace kurvo::tools
