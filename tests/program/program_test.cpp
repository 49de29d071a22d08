// A technician's day: which menu entry opens which window, and what the windows hand on to one another.
#include <gtest/gtest.h>

#include "program/program_rig.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

TEST(WholeProgram, ATechniciansDay) {
  ProgramRig day;
  sim::DeviceOptions station;
  station.baud = 2400;
  station.parity = 'E';
  day.Connect(station);

  day.Click(day.Main().MenuVerb);
  EXPECT_EQ(day.Messages(),
            Strings{kConnected + "\r\n\r\nGerätetyp: OX 3\r\nSoftwarestand: SW 3.20 11/2026 \r\n"
                                 "Baudrate: 2400\r\nParität: gerade\r\nDatenbits: 7\r\nCOM-Port: 1"});

  day.UpdateTables();
  EXPECT_EQ(day.Messages(), Strings{kTablesWritten});
  EXPECT_TRUE(day.Device().Memory().TablesSound());

  day.Exchange([&](Datenaustausch& window) {
    day.Choose(window.duemstwal, "netz");
    day.Click(window.Sammelabruf);
    ASSERT_FALSE(day.Device().Stations().points.empty());
    const auto& point = day.Device().Stations().points.front();
    EXPECT_EQ(window.mewanz.Text().substr(0, 14), "   Quell: " + point.parameters.front());
  });
  EXPECT_EQ(day.Messages(), Strings{});

  day.UpdateProgram();
  ASSERT_EQ(day.Messages().back(), kProgramWritten);
  day.Click(day.Main().MenuVerb);
  EXPECT_NE(day.Messages().back().find("Softwarestand: V5.10 22.11.2026"), std::string::npos);

  day.Monitor(3);
  EXPECT_NE(day.host.files.content["PowerManagementLog.txt"].find("Ladebetrieb: "), std::string::npos);
  day.PackFirmware();
  EXPECT_EQ(day.Messages(), Strings{"Vorgang erfolgeich beendet !"});
  EXPECT_TRUE(day.host.files.content.contains("neu.pr3"));
  day.TestModem();
  EXPECT_EQ(day.host.windows.Shown().back(), "Modem");

  day.Close(day.Main());
  EXPECT_FALSE(day.Main().IsOpen());
  EXPECT_EQ(day.host.files.content["OX.CFG"],
            "\\C\\1\r\n\\B\\2400\r\n\\P\\E\r\n\\Q\\OX3NEU\r\n\\Z\\neu\r\n\\M\\\r\nEDT\r\n");
}

TEST(WholeProgram, AGeneration2DeviceGetsItsOwnUpdate) {
  ProgramRig rig;
  sim::DeviceOptions station;
  station.generation = 2;
  rig.Connect(station);
  rig.UpdateProgram();
  EXPECT_EQ(rig.Messages().back(), kProgramWritten);
  EXPECT_EQ(rig.host.windows.Shown().front(), "Verbindungstest");
  EXPECT_EQ(rig.host.windows.Shown()[1], "updatepro");
}

}  // namespace
}  // namespace ox::test
