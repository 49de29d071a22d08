// The main window: its menu, its messages, what it opens and what it refuses to open.
#include "app/start.h"

#include <gtest/gtest.h>

#include "support/test_host.h"

namespace ox::test {
namespace {

const std::string kNoDevice =
    "Verbindung mit Orvanexe konnte nicht hergestellt werden.\r\n"
    "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
    "COM-Port angeschlossen und eingeschaltet ist!";

class StartWindow : public testing::Test {
 protected:
  StartCommands Commands() {
    const auto opens = [this](const char* name) {
      return [this, name] { opened_ += std::string(name) + ";"; };
    };
    return {.connectionTest =
                [this] {
                  opened_ += "test;";
                  subs_.settings.Connected = deviceIdent_ != nullptr;
                  subs_.settings.DeviceIdent = deviceIdent_ != nullptr ? deviceIdent_ : "";
                },
            .dataExchange = opens("exchange"),
            .tableUpdate = opens("tables"),
            .programUpdate2 = opens("program2"),
            .programUpdate3 = opens("program3"),
            .firmwarePacker = opens("packer"),
            .powerMonitor = opens("power"),
            .modem = opens("modem")};
  }

  /// Windows that the click opened, and the messages that it showed.
  std::pair<std::string, std::vector<std::string>> Click(MenuEntry& entry) {
    opened_.clear();
    entry.Click();
    return {opened_, host_.windows.TakeMessages()};
  }

  std::vector<std::string> ComCaptions() {
    return {start_.MenuCOM1.Text(), start_.MenuCOM2.Text(), start_.MenuCOM3.Text(), start_.MenuCOM4.Text()};
  }

  TestHost host_;
  Subs subs_;
  std::string opened_;
  const char* deviceIdent_ = nullptr;
  Start start_{host_.host, subs_, Commands()};
};

using Shown = std::pair<std::string, std::vector<std::string>>;
using Captions = std::vector<std::string>;

TEST_F(StartWindow, ShowsTheChosenPortAndStoresItOnClosing) {
  host_.files.content["OX.CFG"] = "\\C\\4\r\n";
  host_.windows.OpenMain(start_);
  EXPECT_EQ(ComCaptions(), (Captions{"COM1:", "COM2:", "COM3:", "COM4: <"}));
  start_.MenuCOM2.Click();
  EXPECT_EQ(ComCaptions(), (Captions{"COM1:", "COM2: <", "COM3:", "COM4:"}));
  start_.RequestClose();
  EXPECT_FALSE(start_.IsOpen());
  EXPECT_EQ(host_.files.content["OX.CFG"], "\\C\\2\r\n\\B\\9600\r\n\\P\\O\r\n");
}

TEST_F(StartWindow, AnOddPortMarksNoneAndIsKept) {
  host_.files.content["OX.CFG"] = "\\C\\7\r\n";
  host_.windows.OpenMain(start_);
  EXPECT_EQ(ComCaptions(), (Captions{"COM1: <", "COM2:", "COM3:", "COM4:"}));
  EXPECT_EQ(subs_.settings.ComPort, "7");
}

TEST_F(StartWindow, EndeSavesNothing) {
  host_.windows.OpenMain(start_);
  start_.MenuCOM2.Click();
  start_.MenuDateiEnde.Click();
  EXPECT_TRUE(host_.windows.Ended());
  EXPECT_FALSE(host_.files.content.contains("OX.CFG"));
}

TEST_F(StartWindow, WithoutADeviceTheGuardedCommandsRefuse) {
  host_.windows.OpenMain(start_);
  start_.MenueTools.SetVisible(true);
  for (MenuEntry* entry : {&start_.MenuVerb, &start_.MenuDaten, &start_.MenuPowerMonitor}) {
    EXPECT_EQ(Click(*entry), Shown("test;", {kNoDevice})) << entry->Name();
  }
  EXPECT_EQ(Click(start_.MenUpPro).first, "test;");
  EXPECT_EQ(Click(start_.MenUpPro).second.back(), kNoDevice);
  EXPECT_EQ(Click(start_.MenuUpTab), Shown("tables;", {}));
  EXPECT_EQ(Click(start_.MenueToolsFirmwareOX3), Shown("packer;", {}));
  EXPECT_EQ(Click(start_.MenuModem), Shown("", {})) << "the entry is switched off";
  start_.MenuModem.SetVisible(true);
  EXPECT_EQ(Click(start_.MenuModem), Shown("modem;", {}));
}

TEST_F(StartWindow, WithADeviceTheyOpenTheirWindows) {
  deviceIdent_ = "OX 3 V4.00 30.10.2006";
  host_.windows.OpenMain(start_);
  EXPECT_EQ(Click(start_.MenuDaten), Shown("test;exchange;", {}));
  EXPECT_EQ(Click(start_.MenuPowerMonitor), Shown("test;power;", {}));
  EXPECT_EQ(Click(start_.MenUpPro).first, "test;program3;");
  for (const char* other : {"OX 1 V1", "OX 2 V2", "?"}) {
    deviceIdent_ = other;
    EXPECT_EQ(Click(start_.MenUpPro).first, "test;program2;") << other;
  }
  host_.windows.Answer({Answer::Cancel});
  const std::string warning =
      "Wichtiger Hinweis:\r\n\r\n"
      "Führen Sie den Programmiervorgang nur aus, wenn die Stromversorgung\r\n"
      "der Orvanexe II sichergestellt ist (Akku ausreichend geladen\r\n"
      "oder Ladegerät angeschlossen) und achten Sie auf eine sichere\r\n"
      "Verbindung zum PC (Stecker verschraubt)!\r\n\r\n"
      "Eine Unterbrechung während der Programmierung kann dazu führen, dass\r\n"
      "das Programm nicht lauffähig ist und das Gerät in die Werkstatt muss!\r\n";
  host_.windows.TakeMessages();
  EXPECT_EQ(Click(start_.MenUpPro), Shown("", {warning}));
}

TEST_F(StartWindow, ReportsTheConnectionAndTheProgram) {
  deviceIdent_ = "OX 3 V4.00 30.10.2006";
  host_.windows.OpenMain(start_);
  const std::string report =
      "Verbindung ist hergestellt!\r\n\r\nGerätetyp: OX 3\r\nSoftwarestand: V4.00 30.10.2006\r\n"
      "Baudrate: 9600\r\nParität: ungerade\r\nDatenbits: 7\r\nCOM-Port: 1";
  EXPECT_EQ(Click(start_.MenuVerb), Shown("test;", {report}));
  deviceIdent_ = "?";
  subs_.settings.Parity = "E";
  EXPECT_EQ(Click(start_.MenuVerb).second.front(),
            "Verbindung ist hergestellt!\r\n\r\nGerätetyp: ?\r\nSoftwarestand: \r\n"
            "Baudrate: 9600\r\nParität: gerade\r\nDatenbits: 7\r\nCOM-Port: 1");
  EXPECT_EQ(Click(start_.MenuInfo).second.front(),
            "Information zu diesem Programm:\r\n\nVersionsnummer: 4.00\r\nVersionsdatum:  30.10.2006");
}

}  // namespace
}  // namespace ox::test
