// Random numbers of the host.
#include "platform/posix/posix_random.h"

#include <gtest/gtest.h>

#include <set>

namespace ox::test {

TEST(PosixRandom, DrawsFromZeroUpToButNotOneAndAnewInEachRun) {
  std::set<double> drawn{PosixRandom().Next()};
  PosixRandom random;
  for (int draw = 0; draw < 1000; ++draw) drawn.insert(random.Next());
  EXPECT_EQ(drawn.size(), 1001U);
  EXPECT_GE(*drawn.begin(), 0);
  EXPECT_LT(*drawn.begin(), 0.1);
  EXPECT_GT(*drawn.rbegin(), 0.9);
  EXPECT_LT(*drawn.rbegin(), 1);
}

}  // namespace ox::test
