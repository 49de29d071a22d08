// The one loop that waits: when each rule ends it, what midnight does to it, and when it does not rest.
#include "link/wait.h"

#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr double kNever = 20;  // the wait ends with what it waits for, which comes then
constexpr double kRest = 0.01;

TEST(WaitTest, EndsByItsRule) {
  const struct {
    const char* what;
    double startsAt;  // seconds since midnight
    EndRule rule;
    double ends;             // seconds later
    double characterAt = 0;  // one comes in between
  } rows[] = {
      {"the fixed second", 36000, FixedSecond{10}, 1},
      {"no character makes it longer", 36000, FixedSecond{1}, 1, 0.5},
      {"not in the first seconds of a day", 3, FixedSecond{10}, 7},
      {"nor when midnight overtakes it", 86399.5, FixedSecond{1}, kNever},
      {"silence", 36000, SilenceOf{2}, 2},
      {"every character starts it anew", 36000, SilenceOf{2}, 3.5, 1.5},
      {"overtaken by midnight", 86399.5, SilenceOf{2}, kNever},
      {"and started anew behind it", 86399.5, SilenceOf{2}, 3.5, 1.5},
      {"a difference", 36000, Difference{36000, 0.5}, 0.5},
      {"from a start that it shares", 36001, Difference{36000, 5}, 4, 2},
      {"ended by midnight", 86398, Difference{86398, 5}, 2},
      {"later than", 36000, Until{3}, 3, 2},
      {"early in a day", 0.5, Until{1}, 1},
      {"also overtaken by midnight", 86398, Until{3}, kNever},
  };
  for (const auto& row : rows) {
    TestHost host;
    host.clock.StartAt(0, 0, row.startsAt);
    bool heard = row.characterAt == 0;
    const bool all = Wait(host.host, row.rule, [&] {
      if (host.clock.Elapsed() > kNever) return Found::kAll;
      if (heard || host.clock.Elapsed() < row.characterAt) return Found::kNothing;
      heard = true;
      return Found::kCharacter;
    });
    EXPECT_EQ(all, row.ends == kNever) << row.what;
    EXPECT_NEAR(host.clock.Elapsed(), row.ends, 2 * kRest) << row.what;
  }
}

TEST(WaitTest, RestsUnlessCharactersAreInHandAndPausesUntilItIsStopped) {
  TestHost host;
  int inHand = 100;
  const auto look = [&] { return --inHand > 0 ? Found::kMoreInHand : Found::kCharacter; };
  host.windows.In(0, [&] { EXPECT_EQ(inHand, 100) << "the host has its turn first"; });
  host.windows.In(kRest / 100,
                  [&] { EXPECT_EQ(inHand, 0) << "no time passes while characters are in hand"; });
  EXPECT_FALSE(Wait(host.host, Until{1}, look, true));
  bool stop = false;
  host.windows.In(2, [&] { stop = true; });
  for (const double end : {3, 3}) {
    Pause(host.host, Difference{host.clock.SecondsSinceMidnight(), 10}, stop);
    EXPECT_NEAR(host.clock.Elapsed(), end, 2 * kRest);
  }
}

}  // namespace
}  // namespace ox::test
