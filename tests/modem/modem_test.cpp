// The modem window against scripted and simulated modems.
#include "modem/modem.h"

#include <gtest/gtest.h>

#include "simulator/modem.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Texts = std::vector<std::string>;

const Texts kNothing;
constexpr const char* kWrongAnswer = "Modem antwortet nicht oder falsch: Prozedur abgebrochen!";
constexpr const char* kRefused = "Achtung: Modem hat Daten nicht angenommen!";
constexpr const char* kNoPort = "1: lässt sich nicht öffnen!";
constexpr const char* kValueRecord = "#12345678: 0012 s  12.3 \r";

class ModemTest : public ::testing::Test {
 protected:
  void Open(sim::Endpoint* modem) {
    host_.ports.Connect(1, modem);
    host_.windows.OpenMain(window_);
  }

  void TypeDate() {
    window_.TAKZ.Edit("123");
    window_.TDAT.Edit("161106");
    window_.TUHR.Edit("1430");
  }

  void TypeValue() {
    window_.TMST.Edit("12345678");
    window_.TPAR.Edit("0012");
    window_.TBEW.Edit("s");
    window_.TMEW.Edit("12.3");
  }

  Texts Messages() { return host_.windows.TakeMessages(); }

  TestHost host_;
  SessionSettings settings_;
  Modem window_{host_.host, settings_};
};

TEST_F(ModemTest, SendsBothRecordsOnOneOpenPort) {
  ScriptedDevice modem;
  modem.Expect("S").Expect("S", "A").Expect("*123 161106 1430\r", "A");
  modem.Expect("S", "A").Expect(kValueRecord, {{0.1, "N"}, {0.9, "A"}});
  Open(&modem);
  TypeDate();
  TypeValue();
  window_.Command2.Click();
  EXPECT_EQ(window_.Focused(), nullptr);
  window_.Command3.Click();
  EXPECT_TRUE(modem.Done());
  EXPECT_EQ(modem.Unexpected(), "");
  EXPECT_EQ(Messages(), kNothing);
  EXPECT_EQ(window_.Focused(), &window_.TMST);
  EXPECT_EQ(window_.Datanz.Text(),
            "PC -> Modem  S\r\nPC -> Modem  S\r\nPC <- Modem  A\r\n"
            "PC -> Modem  *123 161106 1430<CR>\r\nPC <- Modem  A\r\n"
            "PC -> Modem  S\r\nPC <- Modem  A\r\nPC -> Modem  #12345678: 0012 s  12.3 <CR>\r\n"
            "PC <- Modem  N\r\nPC <- Modem  A");
  EXPECT_EQ(host_.ports.Openings(), Texts{"1:9600,O,7,1"});
  EXPECT_EQ(host_.ports.OpenCount(), 1);
  window_.Command5.Click();
  window_.Command1.Click();
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_EQ(host_.ports.OpenCount(), 0);
}

TEST_F(ModemTest, TellsOfEveryAnswerThatIsNoAcceptance) {
  struct Case {
    std::vector<ScriptedDevice::Piece> toWakeUp;
    std::vector<ScriptedDevice::Piece> toRecord;
    Texts messages;
    const char* sentAfterRecord;
  };
  const Case cases[] = {
      {{{0, "A"}}, {{0, "R"}}, {kRefused}, ""},        {{{0, "A"}}, {{0, "NR"}}, {kRefused}, ""},
      {{{0, "A"}}, {{0, "A\r"}}, {kRefused}, ""},      {{{0, "A"}}, {{0, "N"}}, {kWrongAnswer, kRefused}, ""},
      {{{0, "A"}}, {}, {kWrongAnswer, kRefused}, ""},  {{{0, "AA"}}, {}, {kWrongAnswer, kRefused}, "N"},
      {{{0, "N"}}, {}, {kWrongAnswer, kRefused}, "N"},
  };
  TypeDate();
  host_.windows.OpenMain(window_);
  for (const Case& c : cases) {
    ScriptedDevice modem;
    modem.Expect("S", c.toWakeUp);
    if (*c.sentAfterRecord == '\0') modem.Expect("*123 161106 1430\r", c.toRecord);
    host_.ports.Connect(1, &modem);
    window_.Command2.Click();
    EXPECT_TRUE(modem.Done());
    EXPECT_EQ(modem.Unexpected(), c.sentAfterRecord);
    EXPECT_EQ(Messages(), c.messages);
    host_.ports.Connect(1, nullptr);
  }
  host_.ports.ForgetSent();
  window_.Command2.Click();
  EXPECT_EQ(host_.ports.Sent(), "SSSN") << "a modem that does not wake up";
  EXPECT_EQ(Messages(), (Texts{kWrongAnswer, kRefused}));
}

TEST_F(ModemTest, ErrorsStopAndWarningsGoOn) {
  ScriptedDevice modem;
  modem.Expect("S", "A").Expect("#16777216: 1000 x  0123 \r", "A");
  modem.Expect("S", "A").Expect("#00000001: 0001   -12.3 \r", "A");
  Open(&modem);
  window_.Command2.Click();
  EXPECT_EQ(Messages(), Texts{"Das Feld AKZ muss drei Ziffern enthalten!"});
  const auto click = [this] {
    window_.Command3.Click();
    return Messages();
  };
  EXPECT_EQ(click(), Texts{"Das Feld MST-Nr. muss acht Ziffern enthalten!"});
  EXPECT_EQ(window_.Focused(), &window_.TMST);
  EXPECT_EQ(window_.TMEW.Text() + window_.TBEW.Text(), "") << "nothing is normalised before its turn";
  window_.TMST.Edit("16777216");
  EXPECT_EQ(click(), (Texts{"Warnung: Wertebereichsüberschreitung MST-Nr. (00000000...16777215)!",
                            "Das Feld Parameter muss vier Ziffern enthalten!"}));
  EXPECT_EQ(window_.Focused(), &window_.TPAR);
  window_.TMST.Edit("00000001");
  window_.TPAR.Edit("1000");
  window_.TBEW.Edit("xx");
  EXPECT_EQ(click(), (Texts{"Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!",
                            "Bewertungszeichen zu lang!"}));
  EXPECT_EQ(window_.Focused(), &window_.TBEW);
  window_.TPAR.Edit("0001");
  window_.TBEW.Edit("");
  window_.TMEW.Edit("12,3 ");
  EXPECT_EQ(click(),
            Texts{"Das Feld Messwert muss ein Vorzeichen und 4 Ziffern enthalten (. und # sind erlaubt)!"});
  EXPECT_EQ(window_.TBEW.Text() + "|" + window_.TMEW.Text(), " | 12,3") << "normalised all the same";
  EXPECT_EQ(window_.Focused(), &window_.TMEW);
  EXPECT_EQ(host_.ports.Sent(), "");

  window_.TMST.Edit("16777216");
  window_.TPAR.Edit("1000");
  window_.TBEW.Edit("x");
  window_.TMEW.Edit("0123");
  EXPECT_EQ(click().size(), 3U) << "three warnings";
  window_.TMST.Edit("00000001");
  window_.TPAR.Edit("0001");
  window_.TBEW.Edit("");
  window_.TMEW.Edit("-12.3");
  EXPECT_EQ(click(), kNothing);
  EXPECT_TRUE(modem.Done());
  EXPECT_EQ(modem.Unexpected(), "");
}

TEST_F(ModemTest, APortThatDoesNotOpenIsTriedAgainByEveryCommand) {
  host_.ports.Remove(1);
  host_.windows.OpenMain(window_);
  EXPECT_TRUE(window_.IsOpen());
  EXPECT_EQ(Messages(), Texts{kNoPort});
  TypeDate();
  window_.Command2.Click();
  EXPECT_EQ(Messages(), (Texts{kNoPort, kRefused}));
  window_.Command4.Click();
  EXPECT_EQ(Messages(), Texts{kNoPort});

  ScriptedDevice modem;
  modem.Expect("S", "A").Expect("*123 161106 1430\r", "A");
  host_.ports.Connect(1, &modem);
  window_.Command2.Click();
  EXPECT_EQ(Messages(), kNothing);
  host_.ports.Break();
  window_.Command2.Click();
  EXPECT_EQ(Messages(), (Texts{kNoPort, kRefused}));
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  EXPECT_TRUE(window_.Command2.Enabled());
}

TEST_F(ModemTest, TheSendCommandPausesTheModemLineAndListensUntilSilence) {
  ScriptedDevice modem;
  Open(&modem);
  window_.Datanz.SetText("old");
  host_.windows.In(0.99, [this] { EXPECT_EQ(host_.ports.ModemLine(), std::vector<bool>{false}); });
  host_.windows.In(1.1, [&] {
    EXPECT_EQ(host_.ports.ModemLine(), (std::vector<bool>{false, true}));
    modem.Expect("!", {{0.2, "CONNECT\r"}, {1.1, "123"}, {2.5, "late"}});
    modem.Receive("!", modem.Line(), host_.clock.Elapsed());
  });
  window_.Command4.Click();
  EXPECT_NEAR(host_.clock.Elapsed(), 1.1 + 1.1 + 1.0, 0.05);
  EXPECT_EQ(window_.Datanz.Text(), "PC <- Modem  CONNECT<CR>\r\nPC <- Modem  123");
  EXPECT_EQ(host_.ports.Sent(), "");
  EXPECT_EQ(Messages(), kNothing);
}

TEST_F(ModemTest, InTheFirstTenSecondsOfADayTheSendCommandListensOn) {
  host_.clock.StartAt(0, 0, 0.5);
  Open(nullptr);
  window_.Command4.Click();
  EXPECT_NEAR(host_.clock.Elapsed(), 9.5, 0.05);
}

TEST_F(ModemTest, ACommandLetsNoSecondOneIn) {
  ScriptedDevice modem;
  modem.Expect("S", "A").Expect(kValueRecord, {{0.9, "A"}});
  Open(&modem);
  TypeDate();
  TypeValue();
  host_.windows.In(0.3, [this] {
    for (Button* button : {&window_.Command2, &window_.Command3, &window_.Command4}) button->Click();
  });
  window_.Command3.Click();
  EXPECT_EQ(host_.ports.Sent(), Bytes("S") + kValueRecord);
  EXPECT_EQ(Messages(), kNothing);
}

TEST_F(ModemTest, ClosingEndsAModemThatNeverFallsSilent) {
  sim::ModemOptions talkative;
  talkative.burstPeriod = 0.5;
  sim::SimulatedModem burst(talkative);
  const std::function<void()> ways[] = {[this] { window_.RequestClose(); },
                                        [this] { window_.Command1.Click(); }};
  Open(&burst);
  for (const auto& close : ways) {
    const double start = host_.clock.Elapsed();
    host_.windows.In(60, close);
    window_.Command4.Click();
    EXPECT_FALSE(window_.IsOpen());
    EXPECT_NEAR(host_.clock.Elapsed() - start, 60, 0.5);
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    host_.windows.OpenMain(window_);
  }
  host_.windows.In(0.5, ways[0]);
  const double start = host_.clock.Elapsed();
  window_.Command4.Click();
  EXPECT_LT(host_.clock.Elapsed() - start, 0.6) << "during the pause";
  EXPECT_TRUE(host_.ports.ModemLine().back()) << "the line is never left dropped";
}

TEST_F(ModemTest, ClosingDuringADialogueWaitsForItsEnd) {
  ScriptedDevice modem;
  modem.Expect("S", "A").Expect("*123 161106 1430\r", {{0.9, "A"}});
  Open(&modem);
  TypeDate();
  host_.windows.In(0.5, [this] { window_.RequestClose(); });
  window_.Command2.Click();
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  EXPECT_EQ(Messages(), kNothing) << "the answer was waited for";

  std::vector<ScriptedDevice::Piece> endless;
  for (int i = 1; i < 1000; ++i) endless.push_back({i * 0.5, "N"});
  modem.Expect("S", "A").Expect("*123 161106 1430\r", endless);
  host_.windows.OpenMain(window_);
  const double start = host_.clock.Elapsed();
  host_.windows.In(20.1, [this] { window_.RequestClose(); });
  window_.Command2.Click();
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_NEAR(host_.clock.Elapsed() - start, 20.5, 0.1) << "a modem that says no without end";
}

}  // namespace
}  // namespace ox::test
