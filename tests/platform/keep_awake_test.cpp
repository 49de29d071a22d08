// The lock at the login manager, from one that grants it to none at all.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "platform/fake_login_manager.h"
#include "platform/posix/posix_keep_awake.h"
#include "support/scratch_folder.h"

namespace ox::test {
namespace {

TEST(KeepAwakeTest, ARunTakesOneLockAndWaitsForNobody) {
  const ScratchFolder scratch;
  const std::string request =
      "sleep:shutdown:idle:handle-lid-switch|Orvanexe Service|Ein Gerät wird programmiert|block|";
  PosixKeepAwake awake;
  for (const Manner manner : {kGrants, kGrantsLate, kRefuses, kBusIsSilent, kNoBus}) {
    FakeLoginManager manager(manner);
    const auto start = std::chrono::steady_clock::now();
    std::optional<KeepAwake::Hold> run(std::in_place, awake);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << manner;
    EXPECT_EQ(manager.Asked(), manner <= kRefuses ? request : "") << manner;
    EXPECT_EQ(manager.LockIsOut(), manner <= kGrantsLate) << manner;
    run.reset();
    EXPECT_FALSE(manager.LockIsOut()) << manner;
  }
}

}  // namespace
}  // namespace ox::test
