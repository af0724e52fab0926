// Long loops: each index once, whatever the range, and failures that come out when all has ended.
#include "foundation/parallel_for.h"

#include "support/basics.h"

namespace kurvo_test {
namespace {

TEST(ParallelFor, RunsEachIndexOnceAndThrowsAfterwards) {
  for (const std::ptrdiff_t count : {0, 1, 2, 63, 64, 65, 1000, 100003})
    for (const std::ptrdiff_t least : {2, 1000, 1000000}) {
      SCOPED_TRACE(testing::Message() << count << " indices, least " << least);
      std::vector<int> visits(static_cast<std::size_t>(count));
      std::atomic<int> bodies = 0, failing = 0;
      const auto visit = [&](std::ptrdiff_t begin, std::ptrdiff_t end) {
        ++bodies;
        for (auto i = begin; i < end; ++i) ++visits[static_cast<std::size_t>(i)];
        if (begin >= count / 2 && failing++ % 2 == 0) throw std::bad_alloc();
      };
      const bool divided = kurvo::RunsParallel(count, least);
      if (divided || count < 2)
        EXPECT_THROW(kurvo::ParallelFor(count, least, visit), std::bad_alloc);
      else
        kurvo::ParallelFor(count, least, visit);
      EXPECT_EQ(visits, std::vector<int>(visits.size(), 1));
      EXPECT_EQ(bodies, divided ? std::min<std::ptrdiff_t>(count, 64) : 1);
      for (const std::ptrdiff_t wrong : {std::ptrdiff_t{-1}, count / 3, count - 1})
        EXPECT_EQ(
            kurvo::ParallelAll(count, least,
                               [=](auto begin, auto end) { return begin > wrong || wrong >= end; }),
            wrong < 0 || wrong >= count);
    }
}

}  // namespace
}  // namespace kurvo_test
