#include "svg/style_sheet.h"

#include <algorithm>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr int kDeepest = 16;  // of media in media

bool IsNameLetter(char c) {
  return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z') || ('0' <= c && c <= '9') || c == '-' ||
         c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::string WithoutComments(std::string_view text) {
  std::string rest;
  while (!text.empty()) {
    const std::size_t begin = std::min(text.find("/*"), text.size());
    rest += text.substr(0, begin);
    const std::size_t end = text.find("*/", std::min(begin + 2, text.size()));
    text.remove_prefix(begin == text.size() || end == text.npos ? text.size() : end + 2);
  }
  return rest;
}

// Calls step(part) for the parts between `separator`, without spaces around them.
template <class Step>
void ForEachPart(std::string_view text, char separator, const Step& step) {
  while (true) {
    const std::size_t end = std::min(text.find(separator), text.size());
    step(Trimmed(text.substr(0, end)));
    if (end == text.size()) return;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t begin = i;
    while (i < text.size() && !IsSpace(text[i])) ++i;
    if (i > begin) words.push_back(text.substr(begin, i - begin));
    while (i < text.size() && IsSpace(text[i])) ++i;
  }
  return words;
}

// Past the block that begins at `at`, with the blocks in it.
std::size_t EndOfBlock(std::string_view text, std::size_t at) {
  int depth = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == '{') ++depth;
    if (text[at] == '}' && --depth <= 0) return at + 1;
  }
  return at;
}

}  // namespace

bool IsForScreen(std::string_view media) {
  bool is_for_screen = Trimmed(media).empty();
  ForEachPart(media, ',', [&](std::string_view medium) {
    if (medium == "all" || medium == "screen") is_for_screen = true;
  });
  return is_for_screen;
}

void StyleSheet::Read(std::string_view commented, const Import& import) {
  const std::string text = WithoutComments(commented);
  std::string_view rest = Trimmed(text);
  while (!rest.empty()) {
    const std::size_t begin = std::min(rest.find_first_of("{;"), rest.size());
    const bool is_block = begin < rest.size() && rest[begin] == '{';
    const bool at_rule = rest.front() == '@';
    const std::size_t end =
        !is_block ? std::min(begin + 1, rest.size())
                  : (at_rule ? EndOfBlock(rest, begin) : std::min(rest.find('}'), rest.size()));
    const std::string_view head = Trimmed(rest.substr(0, begin));
    const std::string_view block = is_block ? rest.substr(begin + 1, end - begin - 1) : "";
    if (at_rule) {
      ReadAtRule(head, block, import);
    } else if (is_block) {
      AddRules(head, block);
    } else {
      LeaveOut(head);
    }
    rest.remove_prefix(is_block && !at_rule ? std::min(end + 1, rest.size()) : end);
    rest = Trimmed(rest);
  }
}

// "@media screen { ... }", "@import "name" screen;" or "@import url(name);". Fonts and pages of
// paper change no outline.
void StyleSheet::ReadAtRule(std::string_view head, std::string_view block, const Import& import) {
  const std::size_t end = std::min(head.find_first_of(" \t\r\n\f\"'("), head.size());
  const std::string_view name = head.substr(0, end);
  std::string_view rest = Trimmed(head.substr(end));
  for (const char* idle : {"@charset", "@namespace", "@font-face", "@page"}) {
    if (name == idle) return;
  }
  if (name == "@media" && IsForScreen(rest) && depth_ < kDeepest) {
    ++depth_;
    Read(block.substr(0, block.rfind('}')), import);
    --depth_;
    return;
  }
  if (name != "@import") return LeaveOut(head);
  const bool is_url = rest.starts_with("url(");
  if (is_url) rest = Trimmed(rest.substr(4));
  const std::string_view quote = rest.substr(0, rest.starts_with('"') || rest.starts_with('\''));
  rest.remove_prefix(quote.size());
  const std::size_t close = rest.find(quote.empty() ? ")" : quote);
  if (close == rest.npos) return LeaveOut(head);
  std::string_view media = Trimmed(rest.substr(close + 1));
  if (is_url && !quote.empty() && media.starts_with(')')) media.remove_prefix(1);
  if (!IsForScreen(media)) return LeaveOut(head);
  import(Trimmed(rest.substr(0, close)));
}

void StyleSheet::AddRules(std::string_view selectors, std::string_view declarations) {
  std::string usual, important;
  ForEachPart(declarations, ';', [&](std::string_view declaration) {
    if (declaration.find(':') == declaration.npos) return;
    const bool late = declaration.find('!') != declaration.npos;
    (late ? important : usual).append(declaration).append(";");
  });
  ForEachPart(selectors, ',', [&](std::string_view selector) {
    Rule rule = {{}, {}, {}, usual, important};
    std::size_t i = selector.starts_with('*') ? 1 : 0;
    while (i < selector.size()) {
      const char kind = selector[i] == '#' || selector[i] == '.' ? selector[i++] : '\0';
      const std::size_t begin = i;
      while (i < selector.size() && IsNameLetter(selector[i])) ++i;
      const std::string name(selector.substr(begin, i - begin));
      const bool is_first = begin == 0;
      if (name.empty() || (kind == '\0' && !is_first) || (kind == '#' && !rule.id.empty())) {
        return LeaveOut(selector);
      }
      if (kind == '#') rule.id = name;
      if (kind == '.') rule.classes.push_back(name);
      if (kind == '\0') rule.element = name;
    }
    if (selector.empty()) return;
    const std::string key = !rule.id.empty()        ? "#" + rule.id
                            : !rule.classes.empty() ? "." + rule.classes.front()
                                                    : rule.element;
    by_key_[key].push_back(rules_.size());
    rules_.push_back(std::move(rule));
  });
}

bool StyleSheet::Rule::IsFor(std::string_view its_element, std::string_view its_id,
                             const std::vector<std::string_view>& its_classes) const {
  return (element.empty() || element == its_element) && (id.empty() || id == its_id) &&
         std::all_of(classes.begin(), classes.end(), [&](const std::string& name) {
           return std::find(its_classes.begin(), its_classes.end(), name) != its_classes.end();
         });
}

std::size_t StyleSheet::Rule::Specificity() const {
  constexpr std::size_t kBase = 1000;  // more than any rule has classes
  return ((id.empty() ? 0u : 1u) * kBase + std::min(classes.size(), kBase - 1)) * 2 +
         (element.empty() ? 0u : 1u);
}

std::string StyleSheet::Styled(std::string_view element, std::string_view id,
                               std::string_view classes, std::string_view style) const {
  const std::vector<std::string_view> names = Words(classes);
  std::vector<std::size_t> found;
  const auto look = [&](const std::string& key) {
    const auto rules = by_key_.find(key);
    if (rules == by_key_.end()) return;
    for (const std::size_t rule : rules->second) {
      if (rules_[rule].IsFor(element, id, names)) found.push_back(rule);
    }
  };
  look("");
  look(std::string(element));
  if (!id.empty()) look("#" + std::string(id));
  for (const std::string_view name : names) look("." + std::string(name));
  std::sort(found.begin(), found.end(), [&](std::size_t a, std::size_t b) {
    const std::size_t of_a = rules_[a].Specificity(), of_b = rules_[b].Specificity();
    return of_a != of_b ? of_a < of_b : a < b;
  });
  found.erase(std::unique(found.begin(), found.end()), found.end());
  std::string before, after;
  for (const std::size_t rule : found) {
    before += rules_[rule].declarations;
    after += rules_[rule].important;
  }
  if (before.empty() && after.empty()) return std::string(style);
  return before + std::string(style) + (after.empty() ? "" : ";" + after);
}

}  // namespace kurvo::tools
