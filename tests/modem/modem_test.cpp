// The modem window: what it sends, and what it makes of the modem's answers.
#include "modem/modem.h"

#include <gtest/gtest.h>

#include "simulator/modem.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Pieces = std::vector<ScriptedDevice::Piece>;
using Texts = std::vector<std::string>;

const std::string kRefused = "Achtung: Modem hat Daten nicht angenommen!";
const std::string kNoPort = "1: lässt sich nicht öffnen!";
const Bytes kDateRecord = "*123 161106 1430\r";
const Bytes kDateSent = "S" + kDateRecord;
const Bytes kValueRecord = "#12345678: 0012 s  12.3 \r";

class ModemTest : public testing::Test {
 protected:
  /// Every field is right at first.
  ModemTest() {
    host_.ports.Connect(1, &modem_);
    host_.windows.OpenMain(window_);
    window_.TAKZ.Edit("123");
    window_.TDAT.Edit("161106");
    window_.TUHR.Edit("1430");
    window_.TMST.Edit("12345678");
    window_.TPAR.Edit("0012");
    window_.TBEW.Edit("s");
    window_.TMEW.Edit("12.3");
  }

  Texts Click(Button& button) {
    host_.ports.ForgetSent();
    button.Click();
    return host_.windows.TakeMessages();
  }

  TestHost host_;
  SessionSettings settings_;
  ScriptedDevice modem_;
  Modem window_{host_.host, settings_};
};

TEST_F(ModemTest, SendsItsRecordsOnOneOpenPortOneAtATime) {
  modem_.Expect("S").Expect("S", "A").Expect(kDateRecord, "A");
  EXPECT_EQ(Click(window_.Command2), Texts());
  EXPECT_EQ(host_.ports.Sent(), "S" + kDateSent);
  EXPECT_EQ(window_.Focused(), nullptr);
  modem_.Expect("S", "A").Expect(kValueRecord, Pieces{{0.1, "N"}, {0.9, "A"}});
  host_.windows.In(0.3, [this] {
    for (Button* button : {&window_.Command2, &window_.Command3, &window_.Command4}) button->Click();
  });
  EXPECT_EQ(Click(window_.Command3), Texts());
  EXPECT_EQ(host_.ports.Sent(), "S" + kValueRecord);
  EXPECT_EQ(window_.Focused(), &window_.TMST);
  EXPECT_EQ(window_.Datanz.Text(),
            "PC -> Modem  S\r\nPC -> Modem  S\r\nPC <- Modem  A\r\n"
            "PC -> Modem  *123 161106 1430<CR>\r\nPC <- Modem  A\r\n"
            "PC -> Modem  S\r\nPC <- Modem  A\r\nPC -> Modem  #12345678: 0012 s  12.3 <CR>\r\n"
            "PC <- Modem  N\r\nPC <- Modem  A");
  EXPECT_EQ(host_.ports.Openings(), Texts{"1:9600,O,7,1"});
}

TEST_F(ModemTest, TellsOfEveryAnswerThatIsNoAcceptance) {
  const Texts refused{kRefused};
  const Texts wrong{"Modem antwortet nicht oder falsch: Prozedur abgebrochen!", kRefused};
  const std::tuple<Bytes, Bytes, Texts, Bytes> answersToldAndSent[] = {
      {"A", "R", refused, kDateSent}, {"A", "NR", refused, kDateSent}, {"A", "A\r", refused, kDateSent},
      {"A", "N", wrong, kDateSent},   {"A", "", wrong, kDateSent},     {"AA", "", wrong, "SN"},
      {"N", "", wrong, "SN"},         {"", "", wrong, "SSSN"},
  };
  for (const auto& [toWakeUp, toRecord, told, sent] : answersToldAndSent) {
    ScriptedDevice modem;
    modem.Expect("S", toWakeUp).Expect(kDateRecord, toRecord);
    host_.ports.Connect(1, &modem);
    EXPECT_EQ(Click(window_.Command2), told);
    EXPECT_EQ(host_.ports.Sent(), sent) << toWakeUp << toRecord;
  }
  EXPECT_TRUE(window_.Datanz.Text().ends_with("PC -> Modem  S\r\nPC -> Modem  N"));
}

TEST_F(ModemTest, SendsRightAndDoubtfulFieldsAndRefusesWrongOnes) {
  sim::ModemOptions agreeable;
  agreeable.answer = "A";
  sim::SimulatedModem modem(agreeable);
  host_.ports.Connect(1, &modem);
  Button* send = &window_.Command2;
  const auto expect = [&](TextBox& box, const Texts& texts, const std::string& told) {
    const std::string usual = box.Text();
    const bool sends = told.empty() || told.starts_with("Warnung");
    for (const std::string& text : texts) {
      box.Edit(text);
      EXPECT_EQ(Click(*send), told.empty() ? Texts() : Texts{told}) << text;
      EXPECT_EQ(host_.ports.Sent().empty(), !sends) << text;
      if (send == &window_.Command3) {
        EXPECT_EQ(window_.Focused(), sends ? &window_.TMST : &box) << text;
      }
    }
    box.Edit(usual);
  };
  expect(window_.TAKZ, {"", "12", "1234", "12a", "1 2", "äöü"}, "Das Feld AKZ muss drei Ziffern enthalten!");
  expect(window_.TDAT, {"16.1.6", "16110", "1611061"}, "Das Feld Datum muss sechs Ziffern enthalten!");
  expect(window_.TUHR, {"14:3", "143", "14:30"}, "Das Feld Uhrzeit muss vier Ziffern enthalten!");
  send = &window_.Command3;
  expect(window_.TMST, {"00000000", "16777215"}, "");
  expect(window_.TMST, {"16777216", "99999999"},
         "Warnung: Wertebereichsüberschreitung MST-Nr. (00000000...16777215)!");
  expect(window_.TMST, {"", "1677721", "123456789", "1234567x"},
         "Das Feld MST-Nr. muss acht Ziffern enthalten!");
  expect(window_.TPAR, {"0000", "0999"}, "");
  expect(window_.TPAR, {"1000", "9999"}, "Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!");
  expect(window_.TPAR, {"999", "00999", "0 99"}, "Das Feld Parameter muss vier Ziffern enthalten!");
  expect(window_.TBEW, {"", "s", "f", " ", "?", "T", "#"}, "");
  expect(window_.TBEW, {"S", "F", "t", "ä", "日"},
         "Warnung: Falsches Bewertungszeichen (keines oder s, f, ?, T,# oder leer)!");
  expect(window_.TBEW, {"ss", "sf", "  "}, "Bewertungszeichen zu lang!");
  expect(window_.TMEW, {"0123", "-12.3", " 12.3 ", "####", "...."}, "");
  expect(window_.TMEW, {"", " ", "+0123", " 12.3  ", "-123 ", "12,3", "-12-3", "123ä", "12345"},
         "Das Feld Messwert muss ein Vorzeichen und 4 Ziffern enthalten (. und # sind erlaubt)!");
}

TEST_F(ModemTest, GoesThroughTheFieldsInOrderAndNormalisesTheLastTwo) {
  for (TextBox* field : {&window_.TAKZ, &window_.TDAT, &window_.TUHR}) field->Edit("");
  host_.windows.OnMessage([&](const std::string&) {
    EXPECT_TRUE(window_.Command2.Enabled()) << "a refusal does not take the focus off the button";
  });
  EXPECT_EQ(Click(window_.Command2), Texts{"Das Feld AKZ muss drei Ziffern enthalten!"});
  window_.TMST.Edit("16777216");
  window_.TPAR.Edit("1000");
  window_.TBEW.Edit("xx");
  std::string focused;  // at each message
  host_.windows.OnMessage([&](const std::string&) {
    focused += window_.Focused() == nullptr ? "none " : window_.Focused()->Name() + " ";
  });
  EXPECT_EQ(Click(window_.Command3).size(), 3U);
  EXPECT_EQ(focused, "none TMST TMST ") << "a doubtful parameter does not take it";
  EXPECT_EQ(window_.TMEW.Text(), "12.3");
  window_.TBEW.Edit("");
  window_.TMEW.Edit("12,3 ");
  Click(window_.Command3);
  EXPECT_EQ(window_.TBEW.Text() + "|" + window_.TMEW.Text(), " | 12,3") << "also of a value that is wrong";
}

TEST_F(ModemTest, APortThatFailsIsTriedAgainByEveryCommand) {
  window_.RequestClose();
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  host_.ports.Remove(1);
  window_.Open();
  EXPECT_TRUE(window_.IsOpen());
  EXPECT_EQ(host_.windows.TakeMessages(), Texts{kNoPort});
  EXPECT_EQ(Click(window_.Command2), (Texts{kNoPort, kRefused}));
  EXPECT_EQ(Click(window_.Command4), Texts{kNoPort});
  modem_.Expect("S", "A").Expect(kDateRecord, "A");
  host_.ports.Connect(1, &modem_);
  EXPECT_EQ(Click(window_.Command2), Texts());
  host_.ports.Break();
  EXPECT_EQ(Click(window_.Command2), (Texts{kNoPort, kRefused}));
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  EXPECT_TRUE(window_.Command2.Enabled());
}

TEST_F(ModemTest, TheSendCommandPausesTheModemLineAndListensUntilSilence) {
  window_.Datanz.SetText("old");
  host_.windows.In(0.99, [this] { EXPECT_EQ(host_.ports.ModemLine(), std::vector<bool>{false}); });
  host_.windows.In(1.1, [this] {
    EXPECT_EQ(host_.ports.ModemLine(), (std::vector<bool>{false, true}));
    modem_.Expect("!", Pieces{{0.2, "CONNECT\r"}, {1.1, "123"}, {2.5, "late"}});
    modem_.Receive("!", modem_.Line(), host_.clock.Elapsed());
  });
  EXPECT_EQ(Click(window_.Command4), Texts());
  EXPECT_NEAR(host_.clock.Elapsed(), 1.1 + 1.1 + 1.0, 0.05);
  EXPECT_EQ(window_.Datanz.Text(), "PC <- Modem  CONNECT<CR>\r\nPC <- Modem  123");
  EXPECT_EQ(host_.ports.Sent(), "");

  host_.clock.StartAt(0, 0, 0.5 - host_.clock.Elapsed());
  const double midnight = host_.clock.Elapsed() - 0.5;
  Click(window_.Command4);
  EXPECT_NEAR(host_.clock.Elapsed() - midnight, 10, 0.05) << "the first ten seconds of a day belong to it";
}

TEST_F(ModemTest, LeavingEndsWhatTheModemWouldGoOnWithAndWaitsForTheRest) {
  const auto expect = [this](Button& command, double leftAfter, double lasts, const Texts& told) {
    const double start = host_.clock.Elapsed();
    host_.windows.In(leftAfter, [this] { window_.Command1.Click(); });
    EXPECT_EQ(Click(command), told);
    EXPECT_NEAR(host_.clock.Elapsed() - start, lasts, 0.2);
    EXPECT_FALSE(window_.IsOpen());
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    window_.Open();
  };
  modem_.Expect("S", "A").Expect(kDateRecord, Pieces{{0.9, "A"}});
  expect(window_.Command2, 0.5, 0.9, {});
  Pieces noWithoutEnd;
  for (int i = 1; i < 100; ++i) noWithoutEnd.push_back({i * 0.5, "N"});
  modem_.Expect("S", "A").Expect(kDateRecord, noWithoutEnd);
  expect(window_.Command2, 20.1, 20.5, {kRefused});
  sim::ModemOptions talkative;
  talkative.burstPeriod = 0.5;
  sim::SimulatedModem modem(talkative);
  host_.ports.Connect(1, &modem);
  expect(window_.Command4, 20, 20, {});
  expect(window_.Command4, 0.5, 0.5, {});
  EXPECT_TRUE(host_.ports.ModemLine().back()) << "never left dropped";
}

}  // namespace
}  // namespace ox::test
