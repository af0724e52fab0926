// The memory functions, and what they report when there is no memory.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstring>

#include "kurvo.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kOwnAllocator = true;
#elif defined(__has_feature)
constexpr bool kOwnAllocator = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kOwnAllocator = false;
#endif

namespace {

class Memory : public testing::Test {
 protected:
  Memory() { KurvoInitGlobalVar(&g); }
  GlobalVar g;
};

TEST_F(Memory, KeepsItsContentWhenResized) {
  char* p = static_cast<char*>(KurvoRealloc(nullptr, 4, &g));
  ASSERT_NE(p, nullptr);
  std::memcpy(p, "abc", 4);
  p = static_cast<char*>(KurvoRealloc(p, 1 << 20, &g));
  ASSERT_NE(p, nullptr);
  EXPECT_STREQ(p, "abc");
  p[(1 << 20) - 1] = 1;
  p = static_cast<char*>(KurvoRealloc(p, 4, &g));
  EXPECT_STREQ(p, "abc");
  EXPECT_EQ(KurvoErrGet(&g), 0);
  KurvoFree(p);
  KurvoFree(nullptr);
}

TEST_F(Memory, ThatCannotBeHadIsReported) {
  if (kOwnAllocator) GTEST_SKIP() << "a sanitizer's allocator takes no limit";
  char* p = static_cast<char*>(KurvoMalloc(4, &g));
  std::memcpy(p, "abc", 4);
  rlimit before;
  ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
  const rlimit tight = {1u << 30, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_AS, &tight), 0);
  void* const fresh = KurvoMalloc(0xFFFFFFFF, &g);
  const int malloc_error = KurvoErrGet(&g);
  KurvoErrReset(&g);
  void* const grown = KurvoRealloc(p, 0xFFFFFFFF, &g);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &before), 0);
  EXPECT_EQ(fresh, nullptr);
  EXPECT_EQ(malloc_error, KURVO_ERR_MEMORY);
  EXPECT_EQ(grown, nullptr);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_MEMORY);
  EXPECT_STREQ(p, "abc") << "a failed resize leaves the block";
  KurvoFree(p);
}

}  // namespace
