// What the functions refuse, and how: with which result, which code, and what is left as it was.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <set>
#include <stdexcept>

#include "refusals/rows.h"
#include "robust/table.h"

namespace kurvo_test {
namespace {

std::string OutcomeOf(const Entry& entry, const std::string& curves, const std::string& numbers,
                      int pending = 0) {
  WrittenCall call(curves, numbers, pending);
  return entry.tell(call);
}

// What stands apart by `between`, at least one.
std::deque<std::string> Each(const std::string& text, char between) {
  auto all = Parts(text, between);
  if (all.empty()) all.emplace_back();
  return all;
}

// Calls body(entry, curves, numbers) for the calls of all functions that do their work.
template <class Body>
void ForEachWork(const Body& body) {
  for (const Entry& entry : Table())
    if (entry.works)
      for (const std::string& curves : Each(entry.curves, '/'))
        for (const std::string& numbers : Each(entry.numbers, '/')) body(entry, curves, numbers);
}

// The records of a call with another curve in the place of each one in turn.
std::vector<std::string> With(const std::string& curves, const std::string& other) {
  std::vector<std::string> changed;
  std::size_t at = 0;
  const auto put = [&](const std::string& item) {
    at = curves.find(item, at);
    changed.push_back(std::string(curves).replace(at, item.size(), other));
    at += item.size();
  };
  for (const std::string& part : Parts(curves, ';')) {
    at = curves.find(part, at);
    const bool chain = part[0] == '(' && other != "null";
    if (!chain && part.rfind("out", 0) != 0) put(part);
    for (const std::string& item : Split(chain ? part : ""))
      if (!item.empty()) put(item);
  }
  return changed;
}

TEST(Refusals, WhileAnErrorIsPending) {
  ForEachWork([](const Entry& entry, const std::string& curves, const std::string& numbers) {
    const std::string name = entry.name;
    if (name == "KurvoErrGet" || name == "KurvoErrReset" || name == "KurvoInitGlobalVar") return;
    for (const int code : {0, int{KURVO_WARN_NO_ORIENTATION}})
      EXPECT_EQ(OutcomeOf(entry, curves, numbers, code), entry.works) << name << ' ' << code;
    for (const int code : {KURVO_ERR_TOLERANCE, KURVO_ERR_MEMORY}) {
      std::string want = entry.pending ? entry.pending : entry.works;
      if (name == "KurvocvChgOrder" && code == KURVO_ERR_MEMORY) want[0] = '3';  // the severity
      EXPECT_EQ(OutcomeOf(entry, curves, numbers, code), want) << name << ' ' << code;
    }
  });
}

// clang-format off
const char* const kBroken[] = {
    "l 0 0 1 0 !type 17", "l 0 0 1 0 !type 112", "b 0 0 1 1 !array 1", "b 0 0 1 1 !size -1",
    "r 0 0 1 1 1 1 !array 1", "r 0 0 1 1 1 1 !size -1", "B 0 0 1 1 2 0 | 0 0 0 1 1 1 !size 0",
    "B 0 0 1 1 2 0 | 0 0 0 1 1 1 !array 1", "B 0 0 1 1 2 0 | 0 0 0 1 1 1 !array 2",
    "R 0 0 1 1 1 1 2 0 1 | 0 0 0 1 1 1 !array 1", "R 0 0 1 1 1 1 2 0 1 | 0 0 0 1 1 1 !array 2",
    "c 1 1 (l 0 0 1 0)(l 1 0 1 1) !array 1", "c 1 1 (l 0 0 1 0)(l 1 0 1 1) !array 2",
    "c 1 (l 0 0 1 0) !size -1",
    // copied as they are, or as large as they say
    "B 0 0 1 1 2 0 | 0 0 0 1 1 1 !count 2", "R 0 0 1 1 1 1 2 0 1 | 0 0 0 1 1 1 !size 4",
    "r 0 0 1 1 1 1 !size 2147483647",
};
// clang-format on

// They look at one level, or have no use for what is inside.
const char* const kNotDeep[] = {"CopyCurve", "SegcvToCvseq", "IsLine",    "cvBoundBox", "Parameter",
                                "POnto",     "Deriv",        "Curvature", "Offset",     "Match"};
const char* const kCopying[] = {"Copy", "Insert", "Convert"};

template <std::size_t kCount>
bool IsOneOf(const char* const (&words)[kCount], const std::string& name) {
  return std::any_of(words, words + kCount,
                     [&](const char* word) { return name.find(word) != std::string::npos; });
}

TEST(Refusals, OfWhatIsMissingOrBroken) {
  ForEachWork([](const Entry& entry, const std::string& curves, const std::string& numbers) {
    const auto expect = [&](const char* other, const char* want) {
      if (!want) return;
      for (const std::string& changed : With(curves, other))
        EXPECT_EQ(OutcomeOf(entry, changed, numbers), want) << entry.name << " of " << changed;
    };
    const std::string name = entry.name;
    expect("null", entry.null);
    expect("e", entry.no_data);
    if (!IsOneOf(kNotDeep, name)) expect("deep 65", entry.broken);
    for (const char* const& broken : kBroken) {
      const bool copied = &broken >= std::end(kBroken) - 3;
      if (copied && IsOneOf(kCopying, name)) continue;
      const bool type = name == "KurvocvRotate" && std::strstr(broken, "type");
      expect(broken, type ? "= ROTATED_TYPE" : entry.broken);
    }
  });
}

const Entry& Named(const std::string& name) {
  for (const Entry& entry : Table())
    if (entry.name == name) return entry;
  throw std::invalid_argument(name);
}

TEST(Refusals, OneByOne) {
  for (const Row& row : kRows)
    for (const std::string& name : Each(row.functions, ' '))
      for (const std::string& curves : Each(row.curves, '/'))
        for (const std::string& numbers : Each(row.numbers, '/')) {
          const Entry& entry = Named(name);
          const std::string own = Each(entry.numbers, '/')[0];
          EXPECT_EQ(OutcomeOf(entry, curves, numbers.empty() ? own : numbers, row.pending),
                    row.want)
              << name << " of " << curves << ", " << numbers;
        }
}

TEST(Refusals, OfHighDegrees) {
  for (const Limit& limit : kLimits) {
    const Entry& entry = Named(limit.function);
    const std::string own = Each(entry.curves, '/')[0], numbers = Each(entry.numbers, '/')[0];
    for (const char* kind = limit.kinds; *kind; ++kind)
      for (const bool beyond : {false, true}) {
        const std::string curve = *kind + ("^" + std::to_string(limit.degree + beyond));
        for (const std::string& curves : With(limit.curves ? limit.curves : own, curve))
          EXPECT_EQ(OutcomeOf(entry, curves, numbers) == entry.broken, beyond)
              << entry.name << " of " << curves;
      }
  }
}

TEST(Refusals, CoverEveryFunctionAndWriteEveryCode) {
  for (const Entry& entry : Table()) EXPECT_TRUE(entry.works || !entry.takes_state) << entry.name;

  std::ifstream header(KURVO_HEADER);
  std::set<std::string> codes, written;
  for (std::string line; std::getline(header, line);)
    for (const std::string head : {"  KURVO_ERR_", "  KURVO_WARN_"})
      if (line.rfind(head, 0) == 0 && line.find(" = 0x") != std::string::npos)
        codes.insert(line.substr(head.size(), line.find(' ', head.size()) - head.size()));
  for (const Row& row : kRows)  // the outcomes hold, as they are tested above
    written.insert(row.want.substr(row.want.rfind(' ') + 1));
  for (const std::string& code : codes) EXPECT_TRUE(written.count(code)) << code;
  EXPECT_FALSE(codes.empty());
}

}  // namespace
}  // namespace kurvo_test
