// Turns at a device, in virtual time.
#include "tool/cycle.h"

#include <sstream>

#include "support/test_host.h"

namespace ox::tool {
namespace {

TEST(Cycle, KeepsItsStepAcrossMidnightAndEndsBetweenTwoTurns) {
  test::TestHost host;
  host.clock.StartAt(23, 59, 45);
  std::istringstream input;
  std::ostringstream output, messages;
  bool stop = false;
  const ConsoleHost hostOfConsole{.useDevice = {}, .holdEndRequests = [&]() -> const bool& { return stop; }};
  Console console{host.host, input, output, messages, {}, hostOfConsole};
  const double expected[] = {0, 1, 2, 27, 28};  // the third turn takes longer than the time between two
  std::size_t begun = 0;
  const auto turn = [&] {
    EXPECT_NEAR(host.clock.Elapsed(), expected[begun], 0.1);
    ++begun;
    host.windows.Pass(begun == 3 ? 25 : 0);  // one that takes no time is not a day ago
    if (begun == std::size(expected)) host.windows.In(0.5, [&] { stop = true; });
    return begun == 2 ? Turn::kFailed : Turn::kWell;
  };
  EXPECT_EQ(TakeTurns(console, {.seconds = 1, .count = 9}, 10, 1, turn), ExitStatus::kFailed);
  EXPECT_EQ(begun, std::size(expected));
  EXPECT_NEAR(host.clock.Elapsed(), 28.5, 0.1);
}

}  // namespace
}  // namespace ox::tool
