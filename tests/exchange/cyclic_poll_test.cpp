// The cyclic poll: its rests, its ends, and what it leaves behind after an hour.
#include "exchange/exchange_window.h"
#include "simulator/device.h"

namespace ox::test {
namespace {

class CyclicPoll : public ExchangeWindow {
 protected:
  /// The device answers one collective poll, its last line so many seconds after the request.
  void ExpectPoll(double seconds = 0) {
    device_.Expect("S", "A").Expect("P", {{0, "\rAAA\r"}, {seconds, "E\r"}}).Expect("A");
  }
  double Elapsed() const { return host_.clock.Elapsed(); }
};

TEST_F(CyclicPoll, RestsTenSecondsFromDisplayToRequestAndEndsByTheAbortWithinTheRest) {
  ExpectPoll(0.9);
  ExpectPoll();
  host_.windows.In(0.5, [&] { EXPECT_EQ(Buttons(), kCyclic); });
  host_.windows.In(5, [&] {
    EXPECT_EQ(Buttons(), kCyclic);
    EXPECT_EQ(window_.mewanz.Text(), "AAA|");
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    EXPECT_FLOAT_EQ(window_.StartTime(), 36000.F);
  });
  host_.windows.In(15, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_TRUE(device_.Done());
  EXPECT_NEAR(Elapsed(), 15, 0.01);
  EXPECT_NEAR(window_.StartTime(), 36010.9, 0.05);
  EXPECT_EQ(Buttons(), kIdle);
  // The next poll begins with the abort forgotten.
  ExpectPoll();
  host_.windows.In(3, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_NEAR(Elapsed(), 18, 0.01);
}

TEST_F(CyclicPoll, AbortAndClosingWaitForTheDisplayOfADialogueUnderWay) {
  for (const double when : {0.4, 5.0}) {
    for (const bool closes : {false, true}) {
      Datenaustausch window(host_.host, subs_, chooser_);
      host_.windows.OpenMain(window);
      ExpectPoll(0.9);
      const double start = Elapsed();
      host_.windows.In(when, [&] { closes ? window.RequestClose() : window.Abbruch.Click(); });
      window.Zyklischer_Abruf.Click();
      EXPECT_EQ(window.IsOpen(), !closes);
      EXPECT_TRUE(device_.Done());
      EXPECT_EQ(window.mewanz.Text(), "AAA|");
      EXPECT_NEAR(Elapsed() - start, when < 1 ? 0.9 : when, 0.05);
    }
  }
}

TEST_F(CyclicPoll, AFailedPollIsFollowedByTheNext) {
  device_.Expect("S").Expect("S").Expect("S").Expect("N");
  ExpectPoll();
  host_.windows.In(14, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_TRUE(device_.Done());
  EXPECT_EQ(Messages(), std::vector<std::string>{kWrongAnswer});
}

TEST_F(CyclicPoll, MidnightEndsTheRest) {
  host_.clock.StartAt(23, 59, 57);
  ExpectPoll();
  ExpectPoll();
  host_.windows.In(4, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_TRUE(device_.Done());
}

TEST_F(CyclicPoll, ATableMayBeLoadedBetweenTwoPolls) {
  host_.files.content["/netz.mes"] =
      "/S/\"1\"/A/\"Amt\"/Z/\"123\"/N/\"12345678\"/D/\" 0000\"/M/\" 0000\"/T/\"Pegel\"/B/ Ende /E/";
  WillChoose("/netz.mes");
  ExpectPoll();
  device_.Expect("S", "A").Expect("P", "\r12345678: 1\rE\r").Expect("A");
  host_.windows.In(5, [&] { window_.duemstwal.Click(); });
  // Loading unlocks the buttons, also the one that leaves: the poll ends first.
  host_.windows.In(12, [&] {
    EXPECT_EQ(window_.mewanz.Text(), "   Pegel: 1|");
    window_.Verlassen.Click();
    EXPECT_TRUE(window_.IsOpen());
  });
  window_.Zyklischer_Abruf.Click();
  EXPECT_TRUE(device_.Done());
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_NEAR(Elapsed(), 12, 0.01);
}

TEST_F(CyclicPoll, AnHourLeavesNoMoreThanItsLastPoll) {
  sim::DeviceOptions options;
  options.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012"}}};
  options.replies.leastRecords = 30;
  sim::Device device(options);
  host_.ports.Connect(1, &device);
  std::size_t trace = 0;
  std::size_t values = 0;
  host_.windows.In(5, [&] {
    trace = window_.datanz.Text().size();
    values = window_.mewanz.Text().size();
  });
  host_.windows.In(3600, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_GT(host_.ports.Openings().size(), 350U);
  EXPECT_GT(trace, 0U);
  EXPECT_EQ(window_.datanz.Text().size(), trace);
  EXPECT_EQ(window_.mewanz.Text().size(), values);
  EXPECT_LT(window_.datanz.Text().capacity(), 2 * trace + 100);
  EXPECT_TRUE(Messages().empty());
}

}  // namespace
}  // namespace ox::test
