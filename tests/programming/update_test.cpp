// What ends an update before the loader is asked for anything: tables and devices that do not suit.
#include "app/messages.h"
#include "programming/update_rig.h"

namespace ox::test {
namespace {

Bytes Replaced(Bytes text, const Bytes& from, const Bytes& to) {
  return text.replace(text.find(from), from.size(), to);
}

/// A piece of text for each of so many points.
Bytes Each(int points, const Bytes& before, const Bytes& after) {
  Bytes all;
  while (points-- > 0) all += before + std::to_string(10000000 + points) + after;
  return all;
}

TEST(Update, ChecksTheTablesBeforeAnythingIsSent) {
  const Bytes mes = DemoFile("netz.mes"), zuo = DemoFile("netz.zuo");
  const auto manyMes = [&](int points) {
    return Replaced(mes, "/N/", Each(points, "/N/\"", R"(" /D/" 0000" /M/" 0000" /T/"P" )") + "/N/");
  };
  const auto manyZuo = [&](int points) { return Each(points, "/N/\"", "\" /P/\"0001\"\n") + zuo; };
  const struct {
    Bytes mes, zuo;
    std::string said;
  } rows[] = {
      {mes, Replaced(zuo, "0005,0004", "0005,0077"),
       "Abbruch: Die Parameternummer 0077 wird in der Zuordnungstabelle verwendet, ist in der Parameterliste "
       "aber nicht definiert!"},
      {mes, Replaced(zuo, "\"10100100\"", "\"10100101\""),
       "Warnung: Zur Messstellennummer 10100100 wurde keine Zuordnung gefunden!"},
      {manyMes(750), manyZuo(750), "Abbruch: Überlauffehler der Tabellen OX3!"},
      {manyMes(520), manyZuo(520), "Abbruch: Überlauffehler der Tabellen!"},
  };
  for (const auto& row : rows) {
    UpdateRig rig(kTables);
    rig.files["/gut.mes"] = row.mes;
    rig.files["/gut.zuo"] = row.zuo;
    rig.Load();
    rig.host.windows.Answer({Answer::Cancel});
    EXPECT_EQ(rig.Start(), Strings{row.said});
    EXPECT_TRUE(rig.host.ports.Openings().empty());
  }
}

TEST(Update, OnlyADeviceThatWantsTheImageWhichCannotBeBuiltGetsNone) {
  UpdateRig rig(kTables);
  rig.files["/gut.mes"] = Replaced(rig.files["/gut.mes"], "\"101\"", "\"1A1\"");
  rig.Load();
  rig.Connect(DeviceOf(3, "c"));
  EXPECT_EQ(rig.Start(), Strings{"Abbruch: Tabellen OX3 fehlerhaft!"});
  EXPECT_EQ(rig.host.ports.Sent().find("2\x13"), Bytes::npos);
  rig.Connect(DeviceOf(2, "a"));
  EXPECT_EQ(rig.Start(), Strings{rig.success});
  EXPECT_EQ(rig.device->Stations().offices.at(0).code, "1A1");
}

TEST(Update, RefusesAnotherDeviceThanItIsFor) {
  const std::string hint =
      "Zum Programmupdate der Orvanexe II mit SW-Stand vor 3.0\r\n"
      "muss zuvor am Gerät der Programmiermodus eingestellt werden!\r\n"
      "Hierzu ist es bei gedrückten Pfeiltasten einzuschalten.";
  const std::string noDevice =
      "Verbindung mit Orvanexe II konnte nicht hergestellt werden.\r\n"
      "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
      "COM-Port angeschlossen und eingeschaltet ist!\r\n\r\n" +
      hint;
  const std::string changed =
      "Abbruch: Gerätewechsel während der Programmierung nicht zulässig !" + kAskTheMaker;
  const std::string oldSoftware =
      "Hinweis: Orvanexen mit einem SW-Stand vor 3.0\r\n"
      "können mit diesem Programm keine neue Messstellentabelle\r\n"
      "erhalten!";
  sim::DeviceOptions oldDevice = DeviceOf(2);
  oldDevice.type = "AL 2";
  const struct {
    Update update;
    std::optional<sim::DeviceOptions> device;
    std::string said, marks;
  } rows[] = {
      {kTables, {}, std::string(kConnectionMessage), ">"},
      {kTables, oldDevice, oldSoftware, ">"},
      {kProgram2, {}, noDevice, ">"},
      {kProgram2, DeviceOf(1), kGeneration1, ">"},
      {kProgram2, DeviceOf(3), hint, ">"},
      {kProgram3, {}, noDevice, ""},
      {kProgram3, DeviceOf(3, "c", true), noDevice, ""},
      {kProgram3, DeviceOf(1), changed, ""},
      {kProgram3, DeviceOf(2), changed, ""},
  };
  for (const auto& row : rows) {
    UpdateRig rig(row.update);
    rig.Load();
    if (row.device) rig.Connect(*row.device);
    EXPECT_EQ(rig.Start(), Strings{row.said});
    EXPECT_TRUE(rig.status.ends_with('!' + row.marks) || rig.status == row.marks) << rig.status;
    EXPECT_EQ(rig.host.ports.Sent().find("@UPDATEREQ"), Bytes::npos) << row.said;
  }
}

}  // namespace
}  // namespace ox::test
