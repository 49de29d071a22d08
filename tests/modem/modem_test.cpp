// The modem window: what it sends, and what it makes of the modem's answers.
#include "modem/modem.h"

#include "simulator/device/modem.h"
#include "support/test_host.h"

namespace ox::test {

using Pieces = std::vector<ScriptedDevice::Piece>;

const std::string kRefused = "Achtung: Modem hat Daten nicht angenommen!";
const std::string kNoPort = "1: lässt sich nicht öffnen!";
const Bytes kDateRecord = "*123 161106 1430\r";

struct ModemTest : testing::Test {
  /// The office code, date and time are right at first.
  ModemTest() {
    host_.ports.Connect(1, &modem_);
    host_.windows.OpenMain(window_);
    window_.TAKZ.Edit("123");
    window_.TDAT.Edit("161106");
    window_.TUHR.Edit("1430");
  }

  /// The port that closes with the window tells a modem that is still there.
  ~ModemTest() override { host_.ports.Connect(1, &modem_); }

  Strings Click(Button& button) {
    host_.ports.sent.clear();
    button.Click();
    return host_.windows.TakeMessages();
  }

  TestHost host_;
  SessionSettings settings_;
  ScriptedDevice modem_;
  Modem window_{host_.host, settings_};
};

TEST_F(ModemTest, SendsOneRecordAtATimeAndTellsOfEveryAnswerThatIsNoAcceptance) {
  const Strings wrong{"Modem antwortet nicht oder falsch: Prozedur abgebrochen!", kRefused};
  const Pieces ready{{0, "A"}};
  const std::tuple<Pieces, Pieces, Strings, Bytes> answersToldAndSent[] = {
      {{{1.5, "A"}}, {{0.1, "N"}, {0.9, "A"}}, {}, "SS" + kDateRecord},
      {ready, {{0, "NR"}}, {kRefused}, "S" + kDateRecord},
      {ready, {{0, "A\r"}}, {kRefused}, "S" + kDateRecord},
      {ready, {{0, "N"}}, wrong, "S" + kDateRecord},
      {{}, {}, wrong, "SSSN"},
      {{{0, "AA"}}, {}, wrong, "SN"},
  };
  host_.windows.In(2, [this] {
    for (Button* button : {&window_.Command2, &window_.Command3, &window_.Command4}) button->Click();
  });
  for (const auto& [toWakeUp, toRecord, told, sent] : answersToldAndSent) {
    ScriptedDevice modem;
    modem.Expect("S", toWakeUp).Expect(kDateRecord, toRecord);
    host_.ports.Connect(1, &modem);
    EXPECT_EQ(Click(window_.Command2), told) << sent;
    EXPECT_EQ(host_.ports.sent, sent);
  }
  EXPECT_NE(window_.Datanz.Text().find("<CR>\r\nPC <- Modem  N\r\nPC <- Modem  A\r\n"), std::string::npos);
  EXPECT_TRUE(window_.Datanz.Text().ends_with("PC -> Modem  S\r\nPC <- Modem  AA\r\nPC -> Modem  N"));
  EXPECT_EQ(host_.ports.openings, Strings{"1:9600,O,7,1"});
}

TEST_F(ModemTest, ChecksOfficeCodeDateAndTimeInOrder) {
  window_.TAKZ.Edit("1234");
  window_.TDAT.Edit("16.1.6");
  window_.TUHR.Edit("143");
  // A refusal does not take the focus off the button.
  host_.windows.OnMessage([this](const std::string&) { EXPECT_TRUE(window_.Command2.Enabled()); });
  EXPECT_EQ(Click(window_.Command2), Strings{"Das Feld AKZ muss drei Ziffern enthalten!"});
  window_.TAKZ.Edit("123");
  EXPECT_EQ(Click(window_.Command2), Strings{"Das Feld Datum muss sechs Ziffern enthalten!"});
  window_.TDAT.Edit("161106");
  EXPECT_EQ(Click(window_.Command2), Strings{"Das Feld Uhrzeit muss vier Ziffern enthalten!"});
  window_.TUHR.Edit("143");  // as before
  EXPECT_TRUE(window_.TUHR.Marked() && !window_.TDAT.Marked() && !window_.TAKZ.Marked());
  window_.TUHR.SetText("1430");
  EXPECT_TRUE(!window_.TUHR.Marked() && window_.Focused() == nullptr);
}

TEST_F(ModemTest, RefusesWrongValueFieldsInOrderAndSendsDoubtfulOnes) {
  const std::string point = "Warnung: Wertebereichsüberschreitung MST-Nr. (00000000...16777215)!";
  const std::string parameter = "Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!";
  const std::string flag = "Warnung: Falsches Bewertungszeichen (keines oder s, f, ?, T,# oder leer)!";
  const std::string value =
      "Das Feld Messwert muss ein Vorzeichen und 4 Ziffern enthalten (. und # sind erlaubt)!";
  const std::tuple<TextBox*, std::string, Strings> typedAndTold[] = {
      {&window_.TMST, "1234567", {"Das Feld MST-Nr. muss acht Ziffern enthalten!"}},
      {&window_.TMST, "16777215", {"Das Feld Parameter muss vier Ziffern enthalten!"}},
      {&window_.TPAR, "0999", {"Bewertungszeichen zu lang!"}},
      {&window_.TBEW, "S", {flag, value}},
      {&window_.TMEW, "0123", {flag}},
      {&window_.TBEW, "#", {}},
      {&window_.TBEW, "", {}},
      {&window_.TMEW, "##.# ", {}},
      {&window_.TMEW, "-12.3", {}},
      {&window_.TMST, "16777216", {point}},
      {&window_.TPAR, "1000", {point, parameter}},
      {&window_.TMEW, ",123 ", {point, parameter, value}},
      {&window_.TBEW, "S", {point, parameter, flag, value}},
  };
  window_.TPAR.Edit("999");
  window_.TBEW.Edit("sf");
  window_.TMEW.Edit("12345");
  sim::SimulatedModem modem({});
  host_.ports.Connect(1, &modem);
  std::string focused;  // also while the user is told
  window_.TUHR.SetFocus();
  host_.windows.OnMessage([&](const std::string&) { focused += window_.Focused()->Name() + ";"; });
  for (const auto& [field, typed, told] : typedAndTold) {
    field->Edit(typed);
    EXPECT_EQ(Click(window_.Command3), told) << typed;
    focused += window_.Focused()->Name() + " ";
  }
  EXPECT_EQ(focused,
            "TUHR;TMST TMST;TPAR TPAR;TBEW TBEW;TBEW;TMEW TMEW;TMST TMST TMST TMST TMST TMST;TMST "
            "TMST;TMST;TMST TMST;TMST;TMST;TMEW TMEW;TMST;TMST;TMST;TMEW ");
  EXPECT_EQ(modem.Records(),
            (Strings{"#16777215: 0999 S  0123 ", "#16777215: 0999 #  0123 ", "#16777215: 0999    0123 ",
                     "#16777215: 0999    ##.# ", "#16777215: 0999   -12.3 ", "#16777216: 0999   -12.3 ",
                     "#16777216: 1000   -12.3 "}));
  EXPECT_TRUE(window_.Datanz.Text().ends_with(" -12.3 <CR>\r\nPC <- Modem  A"));
  EXPECT_EQ(window_.TBEW.Text() + "|" + window_.TMEW.Text(), "S| ,123") << "normalised though it is wrong";
}

TEST_F(ModemTest, APortThatFailsIsTriedAgainByEveryCommand) {
  host_.ports.Break();
  EXPECT_EQ(Click(window_.Command2), (Strings{kNoPort, kRefused}));
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  window_.RequestClose();
  window_.Open();
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{kNoPort});
  EXPECT_EQ(Click(window_.Command4), Strings{kNoPort});
  host_.ports.Mend();
  host_.windows.In(0.5, [this] { host_.ports.Break(); });
  EXPECT_EQ(Click(window_.Command4), Strings{kNoPort});
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  host_.ports.Mend();
  modem_.Expect("S", "A").Expect(kDateRecord, "A");
  EXPECT_EQ(Click(window_.Command2), Strings());
}

TEST_F(ModemTest, TheSendCommandPausesTheModemLineAndListensUntilSilence) {
  window_.Datanz.SetText("old");
  host_.windows.In(0.99, [this] { EXPECT_EQ(host_.ports.modemLine, std::vector<bool>{false}); });
  host_.windows.In(1.1, [this] {
    EXPECT_EQ(host_.ports.modemLine, (std::vector<bool>{false, true}));
    modem_.Say({{0.2, "CONNECT\r"}, {1.1, "123"}, {2.5, "late"}}, host_.clock.Elapsed());
  });
  EXPECT_EQ(Click(window_.Command4), Strings());
  EXPECT_NEAR(host_.clock.Elapsed(), 1.1 + 1.1 + 1.0, 0.05);
  EXPECT_EQ(window_.Datanz.Text(), "PC <- Modem  CONNECT<CR>\r\nPC <- Modem  123");
  window_.Datanz.SetText("alt\nÜÖ");
  for (const std::size_t most : {4U, 3U}) window_.Datanz.KeepNewest(most);
  EXPECT_EQ(window_.Datanz.Text(), "Ö") << "cut between characters, and not before it is double";
  host_.clock.StartAt(0, 0, -3);
  Click(window_.Command4);
  EXPECT_NEAR(host_.clock.Elapsed(), 3 + 10, 0.05) << "no wait ends by time in the first seconds of a day";
}

TEST_F(ModemTest, LeavingEndsWhatTheModemWouldGoOnWith) {
  Pieces noWithoutEnd;
  for (int i = 1; i < 100; ++i) noWithoutEnd.push_back({i * 0.5, "N"});
  modem_.Expect("S", "A").Expect(kDateRecord, noWithoutEnd);
  for (const auto& [command, told] :
       {std::pair{&window_.Command2, Strings{kRefused}}, {&window_.Command4, {}}}) {
    const double start = host_.clock.Elapsed();
    host_.windows.In(20.4, [this] { window_.Command1.Click(); });
    EXPECT_EQ(Click(*command), told);
    EXPECT_NEAR(host_.clock.Elapsed() - start, 20.4, 0.2);
    EXPECT_TRUE(!window_.IsOpen() && host_.ports.OpenCount() == 0);
    window_.Open();
  }
}

}  // namespace ox::test
