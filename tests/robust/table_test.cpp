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
      const Mode mode = HostileIf(number % 2);
      const Outcome first = RunNumbered(entry, number, {.mode = mode});
      const Outcome second = RunNumbered(entry, number, {.mode = mode, .fill = 0x3C});
      EXPECT_EQ(first.digest, second.digest) << Trace(entry, number, mode);
    }
  }
}

}  // namespace
}  // namespace kurvo_test
