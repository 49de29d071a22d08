// The main window: its settings file, and what its menu shows, opens and refuses to open.
#include "app/start.h"

#include <gtest/gtest.h>

#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kFile = "OX.CFG";
constexpr const char* kGeneration3 = "OX 3 V4.00 30.10.2006";

class StartWindow : public testing::Test {
 protected:
  StartWindow() {
    host_.windows.OnMessage([this](const std::string& text) { happened_ += text; });
  }

  StartCommands Commands() {
    const auto opens = [this](const char* name) { return [this, name] { happened_ += name; }; };
    const auto test = [this] {
      happened_ += "test;";
      subs_.settings.Connected = !device_.empty();
      subs_.settings.DeviceIdent = device_;
    };
    return {test,
            opens("exchange"),
            opens("tables"),
            opens("program2"),
            opens("program3"),
            opens("packer"),
            opens("power"),
            opens("modem")};
  }

  void Open(const Bytes& settings) {
    host_.files.content[kFile] = settings;
    host_.windows.OpenMain(start_);
  }

  /// Windows opened and messages shown, in order.
  std::string Click(MenuEntry& entry) {
    happened_.clear();
    entry.Click();
    return happened_;
  }

  TestHost host_;
  Subs subs_;
  std::string happened_;
  Bytes device_;  // identification of the connected device; empty: none
  Start start_{host_.host, subs_, Commands()};
};

TEST_F(StartWindow, ReadsItsSettingsFieldByFieldAndWritesThemInOrder) {
  const Bytes defaults = R"(\C\1|\B\9600|\P\O|)";  // each line ended by "|"
  const std::pair<Bytes, Bytes> readAndWritten[] = {
      {R"(EDT|\M\|\Z\C:\ziel|\Q\C:\quelle|\P\OE|\B\19200|\C\3|)",
       R"(\C\3|\B\19200|\P\E|\Q\C:\quelle|\Z\C:\ziel|\M\|EDT|)"},
      {"EDT|", defaults + "EDT|"},
      {R"(\Q\C:\a,b|\C\2|)", R"(\C\2|\B\9600|\P\O|\Q\C:\a|)"},          // cut at the comma
      {R"(\Q\a,\C\4)", R"(\C\4|\B\9600|\P\O|\Q\a|)"},                   // what follows it may be a mark
      {R"(   "\Q\C:\a,b" |\C\12)", R"(\C\2|\B\9600|\P\O|\Q\C:\a,b|)"},  // quoted
      {"\n\n\\C\\7\nED\n\\C\n,,\\Q\\x", R"(\C\7|\B\9600|\P\O|\Q\x|)"},  // line feeds, short entries
      {"\xEF\xBB\xBF\\C\\3\n", R"(\C\3|\B\9600|\P\O|)"},                // byte order mark
      {"\"\\C\\3\n", "\\C\\\n|\\B\\9600|\\P\\O|"},                      // a quote without end
      {Bytes(65536, '\n') + "\\C\\4", defaults},                        // too long
      {"", defaults},
  };
  const auto lines = [](Bytes text) {
    for (std::size_t bar = 0; (bar = text.find('|')) != Bytes::npos;) text.replace(bar, 1, "\r\n");
    return text;
  };
  for (const auto& [read, written] : readAndWritten) {
    subs_.settings.BaudRate = "2400";
    subs_.settings.Connected = true;
    Start start(host_.host, subs_, {});
    host_.files.content[kFile] = lines(read);
    host_.windows.OpenMain(start);
    EXPECT_FALSE(subs_.settings.Connected);
    start.RequestClose();
    EXPECT_EQ(host_.files.content[kFile], lines(written)) << read;
  }
}

TEST_F(StartWindow, KeepsTheChosenPortUnlessItIsLeftByEnde) {
  const auto captions = [this] {
    return start_.MenuCOM1.Text() + start_.MenuCOM2.Text() + start_.MenuCOM3.Text() + start_.MenuCOM4.Text();
  };
  Open("\\C\\7");
  EXPECT_EQ(captions(), "COM1: <COM2:COM3:COM4:") << "an odd port marks none";
  start_.RequestClose();
  Open("\\C\\4");
  EXPECT_EQ(captions(), "COM1:COM2:COM3:COM4: <");
  start_.MenuCOM2.Click();
  EXPECT_EQ(captions(), "COM1:COM2: <COM3:COM4:");
  start_.MenuDateiEnde.Click();
  EXPECT_TRUE(host_.windows.Ended());
  EXPECT_EQ(host_.files.content[kFile], "\\C\\4");
  start_.RequestClose();
  EXPECT_TRUE(host_.files.content[kFile].starts_with("\\C\\2\r\n"));

  host_.files.unreadable.insert(kFile);
  host_.files.writable = false;
  Open("\\M\\\n\\C\\4");
  EXPECT_EQ(captions(), "COM1: <COM2:COM3:COM4:");
  EXPECT_EQ(Click(start_.MenuModem), "") << "switched off";
  start_.RequestClose();
  EXPECT_EQ(happened_, "") << "nobody is told of settings that were neither read nor written";
}

TEST_F(StartWindow, OpensWhatTheDeviceAllows) {
  const std::string noDevice =
      "test;Verbindung mit Orvanexe konnte nicht hergestellt werden.\r\n"
      "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
      "COM-Port angeschlossen und eingeschaltet ist!";
  const std::string warning =
      "Wichtiger Hinweis:\r\n\r\nFühren Sie den Programmiervorgang nur aus, wenn die Stromversorgung\r\n"
      "der Orvanexe II sichergestellt ist (Akku ausreichend geladen\r\n"
      "oder Ladegerät angeschlossen) und achten Sie auf eine sichere\r\n"
      "Verbindung zum PC (Stecker verschraubt)!\r\n\r\n"
      "Eine Unterbrechung während der Programmierung kann dazu führen, dass\r\n"
      "das Programm nicht lauffähig ist und das Gerät in die Werkstatt muss!\r\n";
  const std::string connected = "test;Verbindung ist hergestellt!\r\n\r\nGerätetyp: ";
  const std::tuple<const char*, MenuEntry*, std::string> cases[] = {
      {"", &start_.MenuVerb, noDevice},
      {"", &start_.MenuDaten, noDevice},
      {"", &start_.MenuPowerMonitor, noDevice},
      {"", &start_.MenUpPro, warning + noDevice},
      {"", &start_.MenuUpTab, "tables"},
      {"", &start_.MenueToolsFirmwareOX3, "packer"},
      {"", &start_.MenuModem, "modem"},
      {kGeneration3, &start_.MenuDaten, "test;exchange"},
      {kGeneration3, &start_.MenuPowerMonitor, "test;power"},
      {kGeneration3, &start_.MenUpPro, warning + "test;program3"},
      {"OX 2 V2", &start_.MenUpPro, warning + "test;program2"},
      {"?", &start_.MenUpPro, warning + "test;program2"},
      {kGeneration3, &start_.MenuVerb,
       connected + "OX 3\r\nSoftwarestand: V4.00 30.10.2006\r\nBaudrate: 9600\r\nParität: ungerade\r\n"
                   "Datenbits: 7\r\nCOM-Port: 1"},
      {"", &start_.MenuInfo,
       "Information zu diesem Programm:\r\n\nVersionsnummer: 4.00\r\nVersionsdatum:  30.10.2006"},
  };
  Open("EDT\n\\M\\");
  for (const auto& [device, entry, happens] : cases) {
    device_ = device;
    EXPECT_EQ(Click(*entry), happens) << device << entry->Name();
  }
  device_ = "?";
  subs_.settings.Parity = "E";
  EXPECT_EQ(Click(start_.MenuVerb), connected +
                                        "?\r\nSoftwarestand: \r\nBaudrate: 9600\r\n"
                                        "Parität: gerade\r\nDatenbits: 7\r\nCOM-Port: 1");
  host_.windows.Answer({Answer::Cancel});
  EXPECT_EQ(Click(start_.MenUpPro), warning);
}

}  // namespace
}  // namespace ox::test
