// The table itself: that it leaves no function out, and that its calls repeat.
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

TEST(RobustTable, HasEveryFunctionOfTheInterface) {
  std::ifstream file(KURVO_EXPORTS);
  std::set<std::string> exported, entered;
  for (std::string name; file >> name;) exported.insert(name);
  ASSERT_FALSE(exported.empty());
  for (const Entry& entry : Table())
    EXPECT_TRUE(entered.insert(entry.name).second) << entry.name << " has two entries";
  EXPECT_EQ(entered, exported);
}

// Arguments, and so results, hang on the number of the call alone, and on no memory that has not
// been written.
TEST(RobustTable, CallsRepeatToTheBit) {
  for (const Entry& entry : Table()) {
    for (uint64_t number = 0; number < 40; ++number) {
      RunOptions options;
      options.mode = number % 2 ? Mode::kHostile : Mode::kBenign;
      const Outcome first = RunNumbered(entry, number, options);
      options.fill = 0x3C;
      const Outcome second = RunNumbered(entry, number, options);
      EXPECT_EQ(first.digest, second.digest) << Trace(entry, number, options.mode);
    }
  }
}

}  // namespace
}  // namespace kurvo_test
