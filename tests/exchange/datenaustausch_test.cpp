// The data-exchange window: what is refused, what goes over the line, what is shown, when the polls end.
#include "exchange/datenaustausch.h"

#include "chooser/chooser_values.h"
#include "chooser/dateiwahl.h"
#include "chooser/file_chooser.h"
#include "exchange/values_csv.h"
#include "session/window_table_messages.h"
#include "support/test_host.h"
#include "tables/mes_table.h"

namespace ox::test {

const std::string kIdle = "Einzelabruf Abruf_Y Sammelabruf Zyklischer_Abruf Zeitabruf Verlassen duemstwal ";

const Bytes kTable = R"mes(/S/"1"
/A/"Süd"/Z/"123"
/N/"12345678"/D/" 0012"/M/"-0003"/T/"Pegel"
/N/"00000001"/D/" 0000"/M/" 0000"/T/"ÄÖÜßä"
/N/"00000002"/D/" 0000"/M/" 0000"/T/"öüâà°"
/N/"12345678"/D/" 0000"/M/" 0000"/T/"zwei" /B/ Ende
/E/)mes";

struct DataExchange : testing::Test {
  DataExchange() {
    host_.ports.Connect(1, &device_);
    host_.files.content["/arbeit/netz.mes"] = kTable;
    host_.windows.OpenMain(window_);
  }

  std::string Buttons() const {
    std::string names;
    for (const Control* control : window_.Controls())
      if (control->Enabled() && dynamic_cast<const Button*>(control)) names += control->Name() + " ";
    return names;
  }

  /// The fields that are marked as refused.
  std::string Marked() const {
    std::string names;
    for (const TextBox* field : {&window_.AKZ, &window_.MST, &window_.Par}) {
      if (field->Marked()) names += field->Name() + " ";
    }
    return names;
  }

  void Type(const std::string& office, const std::string& point, const std::string& parameter) {
    window_.AKZ.Edit(office);
    window_.MST.Edit(point);
    window_.Par.Edit(parameter);
  }

  void ExpectPoll(const Bytes& request, const Bytes& reply, double seconds = 0) {
    device_.Expect("S", "A").Expect(request, {{seconds, reply}}).Expect("A");
  }

  /// Returns what the user is told and shown of a poll.
  std::string Poll(Button& button, const Bytes& request, const Bytes& reply) {
    ExpectPoll(request, reply, 0.5);
    host_.windows.In(0.3, [&] { EXPECT_EQ(Buttons(), "duemstwal "); });
    window_.Par.SetFocus();
    button.Click();
    EXPECT_EQ(Buttons(), kIdle);
    EXPECT_EQ(window_.Focused(), &window_.AKZ);
    std::string told;
    for (const std::string& message : host_.windows.TakeMessages()) told += message;
    return told + window_.mewanz.Text();
  }
  std::string PollRecords(const Bytes& records) {
    return Poll(window_.Sammelabruf, "P", "\r" + records + "\rE\r");
  }

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
  ChooserValues chooserValues_;
  Subs subs_{{}, chooserValues_};
  FileChooser chooser_{host_.host, subs_};
  Datenaustausch window_{host_.host, subs_.settings, chooser_};
  ScriptedDevice device_;
};

TEST_F(DataExchange, EachCommandSendsItsRequestAndShowsItsReply) {
  const std::string redundant =
      "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!";
  EXPECT_EQ(window_.Focused(), &window_.AKZ);
  Type("", "12345678", "0012");
  EXPECT_EQ(Poll(window_.Einzelabruf, "J    12345678: 0012\r", "0EIN\r"), "EIN|");
  // Only number and parameter together name one value.
  Type("123", "", "0012");
  EXPECT_EQ(Poll(window_.Einzelabruf, "J123           0012\r", "\rAAA\rBBB\rE\r"), "AAA|BBB|");
  EXPECT_EQ(window_.Records.Text(), "2 Werte");
  Type("123", "12345678", "");
  EXPECT_EQ(Poll(window_.Einzelabruf, "J123 12345678:     \r", "\rAAA\rBBB\rE\r"), redundant + "AAA|BBB|");
  Type("123", "12345678", "0012");
  EXPECT_EQ(Poll(window_.Abruf_Y, "Z123 12345678: 0012\r", "0abcdefghijklmnopqrstuvwxyz\r"),
            redundant + "abcdefghijklmnopqrstuvw|");
  EXPECT_EQ(Poll(window_.Zeitabruf, "T", "022.11.2026 12:00\r"), "22.11.2026 12:00|");
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
  const std::string rows[][7] = {
      {"", "", "", noField, noValue, "AKZ MST Par ", "MST Par "},
      {"12", "", "1", office, noValue, "AKZ ", "MST "},
      {"12a", "1", "1", office, office, "AKZ ", "AKZ "},
      {"123", "1", "+012", parameter, parameter, "Par ", "Par "},
      {"", "123456789", "0012", point, point, "MST ", "MST "},
  };
  for (const auto& [akz, mst, par, refusalOfJ, refusalOfZ, markedByJ, markedByZ] : rows) {
    Type(akz, mst, par);
    window_.MST.Enter();
    EXPECT_EQ(Marked(), markedByJ);
    window_.Abruf_Y.Click();
    EXPECT_EQ(Marked(), markedByZ);
    EXPECT_EQ(host_.windows.TakeMessages(), (Strings{refusalOfJ, refusalOfZ})) << akz << mst << par;
  }
  Type("1", "1", "1");
  EXPECT_EQ(Marked(), "");
  window_.Verlassen.Click();
  EXPECT_TRUE(host_.ports.openings.empty() && !window_.IsOpen());
}

TEST_F(DataExchange, RecordsStandInLinesOfThreeWithNamesForTheirNumbers) {
  LoadTable("netz");
  const std::pair<Bytes, std::string> rows[] = {
      {"a1a\ra2a\ra3a\ra4a\ra5a\ra6a\ra7a", "a1a|a2a|a3a\r\na4a|a5a|a6a\r\na7a|"},
      {"aaa\rAB\rbbb", "aaa|"},
      {"12345678: 0012 s   12.3 mmx\r12345678: ", "   Pegel: 0012 s   12.3 m|   Pegel: |"},
      {"00000001: {}\r00000002: 1", "   ÄÖÜßä: {}|   öüâà°: 1|"},
      {"99999999: 1\r12345678:\r12345678; 1", "99999999: 1|12345678:|12345678; 1\r\n"},
  };
  for (const auto& [records, display] : rows) EXPECT_EQ(PollRecords(records), display);
}

TEST_F(DataExchange, ATableHoldsUntilTheNextOneAndAFileThatCannotBeReadLeavesTheButtonsLocked) {
  host_.files.content["/arbeit/leer.mes"] = R"(/S/"1"/E/)";
  const std::string loading = "duemstwal Messstellentabelle wird geladen ...";
  host_.windows.In(0, [&] { EXPECT_EQ(Buttons() + window_.datanz.Text(), loading); });
  LoadTable("netz");
  window_.Par.SetFocus();
  LoadTable("");
  EXPECT_EQ(window_.Focused(), &window_.AKZ);
  EXPECT_EQ(Buttons() + window_.datanz.Text(), kIdle);
  EXPECT_EQ(PollRecords("12345678: 1"), "   Pegel: 1|");
  LoadTable("/fort.mes");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Fehler beim Lesen der Datei: /fort.mes!"});
  EXPECT_EQ(Buttons() + window_.datanz.Text(), loading);
  window_.duemstwal.Drop("/arbeit/leer.mes");
  EXPECT_EQ(Buttons() + window_.datanz.Text(), kIdle);
  EXPECT_EQ(PollRecords("12345678: 1"), "12345678: 1|");
}

TEST_F(DataExchange, TheCyclicPollRestsTenSecondsFromDisplayToRequestWhateverFails) {
  device_.Expect("S", "A")
      .Expect("P", {{0.2, "\r"}, {0.4, "AAA\r"}, {0.45, "AAB\r"}, {0.9, "E\r"}})
      .Expect("A");
  device_.Expect("S", "A").Expect("P", "\rBBB\rCC").Expect("N");
  ExpectPoll("P", "\rDDD\rE\r");
  host_.clock.StartAt(23, 59, 33);  // midnight ends a rest
  // The beginning of the latest exchange and what is shown.
  std::string seen;
  for (const double seconds : {0.5, 10.8, 11.0, 22.8, 26.9, 27.1}) {
    host_.windows.In(seconds, [&] {
      EXPECT_EQ(Buttons(), "Abbruch duemstwal ");
      seen += std::to_string(static_cast<int>(window_.StartTime())) + window_.mewanz.Text() +
              window_.Records.Text() + " ";
    });
  }
  host_.windows.In(26.9, [&] { host_.ports.Remove(1); });
  host_.windows.In(30, [&] { window_.Abbruch.Click(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_EQ(seen, "86373bisher 1 Wert 86373AAA|AAB|2 Werte 86383AAA|AAB| 86383BBB|1 Wert 86395DDD|1 Wert 0 ");
  EXPECT_NEAR(host_.clock.Elapsed(), 30, 0.01);
  EXPECT_EQ(Buttons(), kIdle);
}

TEST_F(DataExchange, ATableLoadedDuringAPollLeavesItsLockInForce) {
  const auto buttons = [](bool abort) { return std::string(abort ? "Abbruch " : "") + "duemstwal "; };
  // The poll, the table that is chosen in it, and whether the poll can be ended behind that.
  const std::tuple<Button*, std::string, bool> rows[] = {
      {&window_.Sammelabruf, "netz", false}, {&window_.Sammelabruf, "", false},
      {&window_.Sammelabruf, "fort", false}, {&window_.Zyklischer_Abruf, "netz", true},
      {&window_.Zyklischer_Abruf, "", true}, {&window_.Zyklischer_Abruf, "fort", false}};
  for (const auto& [poll, table, canEnd] : rows) {
    SCOPED_TRACE(poll->Name() + " " + table);
    const bool cyclic = poll == &window_.Zyklischer_Abruf;
    const auto load = [&](const std::string& chosen, bool before, bool after) {
      EXPECT_EQ(Buttons(), buttons(before));
      LoadTable(chosen);
      EXPECT_EQ(Buttons(), buttons(after));
      EXPECT_EQ(window_.Focused()->Name(), after ? "Abbruch" : "AKZ");
      window_.Abbruch.Click();
    };
    ExpectPoll("P", "\rAAA\rE\r", 0.9);
    host_.windows.In(0.4, [&, file = table, after = canEnd] { load(file, cyclic, after); });
    // A table that did not load leaves them locked until another one is loaded.
    if (cyclic && !canEnd) host_.windows.In(2, [&] { load("netz", false, true); });
    poll->Click();
    EXPECT_TRUE(device_.Done());
    if (!cyclic && table == "fort") {
      EXPECT_EQ(Buttons(), buttons(false));
      LoadTable("netz");
    }
    EXPECT_EQ(Buttons(), kIdle);
  }
}

TEST_F(DataExchange, LeavingEndsTheCyclicPollAfterTheDialogueUnderWay) {
  ExpectPoll("P", "\rAAA\rE\r", 0.9);
  host_.windows.In(0.4, [&] { window_.RequestClose(); });
  window_.Zyklischer_Abruf.Click();
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_EQ(window_.mewanz.Text(), "AAA|");
}

TEST_F(DataExchange, WhatIsShownIsSavedAsTextOrForASpreadsheet) {
  const std::string csv =
      "\xEF\xBB\xBF"
      "Amtskennzeichen;Messstellennummer;Parameter;Bewertungszeichen;Messwert;Name;Abrufzeit\r\n";
  window_.mewanz.Save("");
  EXPECT_EQ(host_.windows.Proposed(), "Messwerte_0000-00-00_00-00-00 Text wie angezeigt (txt) Tabelle (csv)");
  host_.windows.SaveTo("/werte", 1);
  Type("042", "", "0012");
  Poll(window_.Einzelabruf, "J042           0012\r", "\r12345678: 0012 s   12.3\rE\r");
  EXPECT_EQ(window_.Abrufzeit.Text(), "Abruf 16.11.2026 10:00:00");
  window_.mewanz.Save("");
  EXPECT_EQ(host_.files.content["/werte"], csv + "042;12345678;0012;s;12,3;;2026-11-16T10:00:00\r\n");
  Type("042", "12345678", "");  // the device does not look at the office
  Poll(window_.Einzelabruf, "J042 12345678:     \r", "\r12345678: 0012 s   12.3\rE\r");
  window_.mewanz.Save("");
  EXPECT_EQ(host_.files.content["/werte"], csv + ";12345678;0012;s;12,3;;2026-11-16T10:00:00\r\n");
  host_.windows.SaveTo("/spur.txt", 0);
  window_.datanz.Save("PC -> OX  S");
  EXPECT_EQ(host_.files.content["/spur.txt"], "PC -> OX  S");
  EXPECT_EQ(host_.windows.Proposed(), "Ausgetauschte_Daten_2026-11-16_10-00-00 Text wie angezeigt (txt)");
  host_.files.writable = false;
  window_.mewanz.Save("x");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Fehler beim Schreiben der Datei: /spur.txt!"});
}

TEST(NameIndex, FindsANameAtTheVeryBeginning) {
  const Bytes nul(1, '\0');
  for (const auto& [before, office] : {std::pair<Bytes, Bytes>{"", ""}, {"123", ""}, {nul + "123", "123"}}) {
    const NameIndex names(before + nul + "12345678 0012-0003Pegel");
    EXPECT_EQ(names.Find("12345678"), "Pegel");
    EXPECT_EQ(names.OfficeOf("12345678"), office);
  }
}

TEST(ValuesCsv, ASpreadsheetMisreadsNoField) {
  TestHost host;
  WindowTableMessages messages(host.windows);
  const NameIndex names(ParseMesTable(TableText(R"(/S/"1" /A/"Süd" /Z/"042"
/N/"12345678"/D/" 0012"/M/"-0003"/T/"=A;1" /B/ Ende /A/"Nord" /Z/"007"
/N/"00000001"/D/" 0000"/M/" 0000"/T/"Öl1.5" /N/"00000002"/D/" 0000"/M/" 0000"/T/"-1.5" /B/ Ende /E/)"),
                                      messages));
  const std::pair<Bytes, std::string> rows[] = {
      {"12345678: 0012 s   12.3", "042;12345678;0012;s;12,3;\"'=A;1\";"},
      {"00000001: 0001      -3  cm", "007;00000001;0001;;-3;Öl1.5;"},
      {"00000002: 1023 ?    --.", "007;00000002;1023;?;'--.;-1.5;"},
      {"99999999: 0007  +1234567.8", "123;99999999;0007;;+1234567,8;;"},
      {"99999999: 00", "123;99999999;00;;;;"},
      {"99999999: 0001     1 2.3", "123;99999999;0001;;1 2.3;;"},
      {"99999999: 0001   =1+\"\"a", "123;99999999;0001;;\"'=1+\"\"\"\"a\";;"},
      {"22.11.26 22:00:10 ", ";;;;22.11.26 22:00:10;;"},
      {"22.11.26", ";;;;22.11.26;;"},
  };
  Bytes reply = "\r";
  std::string lines;
  for (const auto& [record, line] : rows) {
    reply += record + "\r";
    lines += line + "2026-01-02T03:04:05\r\n";
  }
  EXPECT_EQ(CsvLines(reply + "E\r12345678: 1\r", names, "123", {2026, 1, 2, 3, 4, 5}), lines);
}

}  // namespace ox::test
