// The data-exchange window: what is refused, what goes over the line, what is shown, when the polls end.
#include "exchange/datenaustausch.h"

#include <gtest/gtest.h>

#include "chooser/dateiwahl.h"
#include "chooser/file_chooser.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

const std::string kIdle = "Einzelabruf Abruf_Y Sammelabruf Zyklischer_Abruf Zeitabruf Verlassen duemstwal ";

class DataExchange : public testing::Test {
 protected:
  DataExchange() {
    host_.ports.Connect(1, &device_);
    host_.windows.OpenMain(window_);
  }

  /// The buttons that can be used.
  std::string Buttons() const {
    std::string names;
    for (const Control* control : window_.Controls()) {
      if (control->Enabled() && dynamic_cast<const Button*>(control)) names += control->Name() + " ";
    }
    return names;
  }

  void Type(const std::string& office, const std::string& point, const std::string& parameter) {
    window_.AKZ.Edit(office);
    window_.MST.Edit(point);
    window_.Par.Edit(parameter);
  }

  /// The device answers one poll, so many seconds after the request.
  void ExpectPoll(const Bytes& request, const Bytes& reply, double seconds = 0) {
    device_.Expect("S", "A").Expect(request, {{seconds, reply}}).Expect("A");
  }

  /// What the window shows of a reply to a collective poll.
  std::string Shown(const Bytes& records) {
    ExpectPoll("P", "\r" + records + "\rE\r");
    window_.Sammelabruf.Click();
    return window_.mewanz.Text();
  }

  /// The user chooses a table; nothing for cancel.
  void LoadTable(const std::string& path) {
    host_.windows.OnShown("Dateiwahl", [path](Window& shown) {
      auto& chooser = dynamic_cast<Dateiwahl&>(shown);
      EXPECT_EQ(chooser.Text1.Text(), "*.mes");
      chooser.Text2.Edit(path);
      chooser.Command1.Click();
    });
    window_.duemstwal.Click();
  }

  TestHost host_;
  Subs subs_;
  FileChooser chooser_{host_.host, subs_};
  Datenaustausch window_{host_.host, subs_, chooser_};
  ScriptedDevice device_;
};

TEST_F(DataExchange, EachCommandSendsItsRequestAndShowsItsReply) {
  const std::string redundant =
      "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!";
  const Bytes several = "\rAAA\rBBB\rE\r";
  const Bytes longer = "0Z" + Bytes(30, '~') + "\r";
  const Bytes cut = "Z" + Bytes(22, '~') + "|";
  Button& j = window_.Einzelabruf;
  Button& z = window_.Abruf_Y;
  const struct {
    Button& button;
    std::string office, point, parameter, request, reply, values;
    Strings messages;
  } rows[] = {
      // Only number and parameter together name one value.
      {j, "", "12345678", "0012", "J    12345678: 0012\r", "0EIN\r", "EIN|", {}},
      {j, "", "", "0012", "J              0012\r", several, "AAA|BBB|", {}},
      {j, "123", "", "", "J123               \r", several, "AAA|BBB|", {}},
      {j, "123", "12345678", "", "J123 12345678:     \r", several, "AAA|BBB|", {redundant}},
      {z, "", "12345678", "0012", "Z    12345678: 0012\r", "0EIN\r", "EIN|", {}},
      {z, "123", "12345678", "0012", "Z123 12345678: 0012\r", longer, cut, {redundant}},
      {window_.Sammelabruf, "x", "y", "z", "P", several, "AAA|BBB|", {}},
      {window_.Zeitabruf, "x", "y", "z", "T", "022.11.2026 12:00\r", "22.11.2026 12:00|", {}},
  };
  for (const auto& row : rows) {
    Type(row.office, row.point, row.parameter);
    window_.Par.SetFocus();
    ExpectPoll(row.request, row.reply, 0.5);
    host_.windows.In(0.3, [&] { EXPECT_EQ(Buttons(), "duemstwal "); });
    row.button.Click();
    EXPECT_TRUE(device_.Done() && device_.Unexpected().empty()) << row.request;
    EXPECT_EQ(Buttons(), kIdle);
    EXPECT_EQ(window_.Focused(), &window_.AKZ);
    EXPECT_EQ(window_.mewanz.Text(), row.values);
    const std::string trace = "PC -> OX  S\r\nPC <- OX  A\r\nPC -> OX  " + row.request.substr(0, 19);
    EXPECT_TRUE(window_.datanz.Text().starts_with(trace)) << window_.datanz.Text();
    EXPECT_EQ(host_.windows.TakeMessages(), row.messages);
  }
}

TEST_F(DataExchange, TheFirstBadFieldRefusesAndNothingIsSent) {
  const std::string noField =
      "Mindestens eines der drei Felder - Amtskennzeichen, Parameter oder Messstellennummer - muss einen "
      "Eintrag enthalten!";
  const std::string noValue = "Parameter und Messstellennummer müssen einen eingegeben sein!";
  const std::string office = "Das Feld  > Amtskennzeichen <  muss leer sein oder drei Ziffern enthalten!";
  const std::string parameter = "Das Feld  > Parameter <  muss leer sein oder vier Ziffern enthalten!";
  const std::string point = "Das Feld  > Messstellennummer <  muss leer sein oder acht Ziffern enthalten!";
  // The three fields, and what J and Z say of them.
  const std::string rows[][5] = {
      {"", "", "", noField, noValue},           {"12", "1234567", "", office, noValue},
      {"12", "", "1", office, noValue},         {"12a", "1", "1", office, office},
      {" 123", "1", "1", office, office},       {"123", "1", "+012", parameter, parameter},
      {"", "1", "00012", parameter, parameter}, {"", "1234567", "0012", point, point},
      {"", "1234567:", "0012", point, point},   {"", "1234567/", "0012", point, point},
  };
  EXPECT_EQ(window_.Focused(), &window_.AKZ);
  for (const auto& [akz, mst, par, refusalOfJ, refusalOfZ] : rows) {
    Type(akz, mst, par);
    window_.Einzelabruf.Click();
    window_.Abruf_Y.Click();
    EXPECT_EQ(host_.windows.TakeMessages(), (Strings{refusalOfJ, refusalOfZ})) << akz << mst << par;
  }
  EXPECT_TRUE(host_.ports.Openings().empty());
  EXPECT_EQ(Buttons(), kIdle);
}

TEST_F(DataExchange, RecordsStandInLinesOfThreeWithNamesForTheirNumbers) {
  // An office whose name begins with eight digits hides the entry behind it, and only that one.
  host_.files.content["/netz.mes"] = R"mes(/S/"1"
/A/"Süd"/Z/"123"
/N/"12345678"/D/" 0012"/M/"-0003"/T/"Pegel"
/N/"00000001"/D/" 0000"/M/" 0000"/T/"ÄÖÜß"
/N/"00000002"/D/" 0000"/M/" 0000"/T/"äöüâà"
/N/"00000003"/D/" 0000"/M/" 0000"/T/"°"
/N/"12345678"/D/" 0000"/M/" 0000"/T/"zwei" /B/ Ende
/A/"87654321"/Z/"123"
/N/"11111111"/D/" 0000"/M/" 0000"/T/"eins"
/N/"22222222"/D/" 0000"/M/" 0000"/T/"?Az0!" /B/ Ende
/E/)mes";
  LoadTable("/netz.mes");
  const std::pair<Bytes, std::string> rows[] = {
      {"aaa\rbbb\rccc", "aaa|bbb|ccc\r\n"},
      {"a1a\ra2a\ra3a\ra4a\ra5a\ra6a\ra7a", "a1a|a2a|a3a\r\na4a|a5a|a6a\r\na7a|"},
      {"aaa\rAB\rbbb", "aaa|"},
      {"aaa\r\rbbb", "aaa|"},
      {Bytes(26, 'x') + "\r" + Bytes(25, 'y'), Bytes(25, 'x') + "|" + Bytes(25, 'y') + "|"},
      {"12345678: 0012 s   12.3", "   Pegel: 0012 s   12.3|"},
      {"12345678: 0012 s   12.3 mmxx\r12345678: ", "   Pegel: 0012 s   12.3 m|   Pegel: |"},
      {"00000001: {}\r00000002: 1\r00000003: 1", "   ÄÖÜß : {}|   äöüâà: 1|   °    : 1\r\n"},
      {"11111111: 1\r22222222: 1", "11111111: 1|   ?Az0!: 1|"},
      {"99999999: 1\r12345678:\r12345678; 1", "99999999: 1|12345678:|12345678; 1\r\n"},
  };
  for (const auto& [records, display] : rows) EXPECT_EQ(Shown(records), display);
}

TEST_F(DataExchange, ATableHoldsUntilTheNextOneAndAFileThatCannotBeReadLeavesTheButtonsLocked) {
  host_.files.content["/arbeit/gut.mes"] =
      R"(/S/"1"/A/"Amt"/Z/"123"/N/"12345678"/D/" 0012"/M/"-0003"/T/"Brück"/B/ Ende /E/)";
  host_.files.content["/arbeit/falsch.mes"] = "/A/ü";
  EXPECT_EQ(Shown("12345678: 1"), "12345678: 1|");
  std::string during;
  host_.windows.In(0, [&] { during = Buttons() + window_.datanz.Text(); });
  LoadTable("gut");
  EXPECT_EQ(during, "duemstwal Messstellentabelle wird geladen ...");
  EXPECT_EQ(Buttons() + window_.datanz.Text() + window_.mewanz.Text(), kIdle + "12345678: 1|");
  window_.Par.SetFocus();
  LoadTable("");
  EXPECT_EQ(window_.Focused(), &window_.AKZ) << "the window is the active one again";
  EXPECT_EQ(Shown("12345678: 1"), "   Brück: 1|");
  LoadTable("/fort.mes");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Fehler beim Lesen der Datei: /fort.mes!"});
  LoadTable("");
  EXPECT_EQ(Buttons() + window_.datanz.Text(), during);
  LoadTable("falsch");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Fehler in Zeile 1, Steuerzeichen /S/ erwartet!\r\r/A/ü"});
  EXPECT_EQ(Shown("12345678: 1"), "12345678: 1|");
  LoadTable("/fort.mes");
  window_.RequestClose();
  EXPECT_FALSE(window_.IsOpen());
}

TEST_F(DataExchange, TheCyclicPollRestsTenSecondsFromDisplayToRequestWhateverFails) {
  ExpectPoll("P", "\rAAA\rE\r", 0.9);
  device_.Expect("S", "A").Expect("P", "\rBBB\rCC").Expect("N");
  ExpectPoll("P", "\rDDD\rE\r");
  // Midnight ends a rest.
  host_.clock.StartAt(23, 59, 33);
  const auto look = [&](double seconds, const std::string& values, double start) {
    host_.windows.In(seconds, [this, values, start] {
      EXPECT_EQ(Buttons() + window_.mewanz.Text(), "Abbruch duemstwal " + values);
      EXPECT_NEAR(window_.StartTime(), start, 0.1);
    });
  };
  look(0.5, "", 86373);
  look(10.8, "AAA|", 86373);
  look(11, "AAA|", 86383.9);
  look(22.8, "BBB|", 86383.9);
  look(26.9, "DDD|", 86395.9);
  host_.windows.In(26.9, [&] { host_.ports.Remove(1); });
  look(27.1, "", 0);
  host_.windows.In(30, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_TRUE(device_.Done());
  EXPECT_NEAR(host_.clock.Elapsed(), 30, 0.01);
  EXPECT_EQ(Buttons(), kIdle);
  EXPECT_EQ(host_.windows.TakeMessages(),
            (Strings{"Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!",
                     "1: lässt sich nicht öffnen!"}));
}

TEST_F(DataExchange, TheCyclicPollEndsAtOnceButAfterTheDisplayOfADialogueUnderWay) {
  host_.files.content["/netz.mes"] = "/S/\"1\"/E/";
  const std::function<void()> ways[] = {
      [&] { window_.Abbruch.Click(); },
      [&] { window_.RequestClose(); },
      // A table unlocks the button that leaves.
      [&] { LoadTable("/netz.mes"), window_.Verlassen.Click(); },
  };
  for (const double when : {0.4, 5.0}) {
    for (const auto& end : ways) {
      host_.windows.OpenMain(window_);
      ExpectPoll("P", "\rAAA\rE\r", 0.9);
      const double start = host_.clock.Elapsed();
      host_.windows.In(when, end);
      window_.Zyklischer_Abruf.Click();
      EXPECT_EQ(window_.IsOpen(), &end == &ways[0]);
      EXPECT_TRUE(device_.Done());
      EXPECT_EQ(window_.mewanz.Text(), "AAA|");
      window_.mewanz.SetText("");
      EXPECT_EQ(host_.ports.OpenCount(), 0);
      EXPECT_NEAR(host_.clock.Elapsed() - start, when < 1 ? 0.9 : when, 0.05);
    }
  }
}

}  // namespace
}  // namespace ox::test
