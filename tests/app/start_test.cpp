// The main window: its settings file, and what its menu shows, opens and refuses to open.
#include "app/start.h"

#include <regex>

#include "support/expected_text.h"
#include "support/test_host.h"

namespace ox::test {

constexpr const char* kFile = "OX.CFG";

struct StartWindow : testing::Test {
  StartWindow() {
    host_.windows.OnMessage([this](const std::string& text) { happened_ += text; });
  }

  StartCommands Commands() {
    const auto test = [this] {
      happened_ += "test;";
      settings_.Connected = !device_.empty();
      settings_.DeviceIdent = device_;
    };
    const auto opens = [this] { happened_ += "window"; };
    return {test, opens, opens, opens, opens, opens, opens};
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
  SessionSettings settings_;
  std::string happened_;
  Bytes device_;  // identification of the connected device; empty: none
  Start start_{host_.host, settings_, Commands()};
};

TEST_F(StartWindow, ReadsItsSettingsFieldByFieldAndWritesThemInOrder) {
  const std::pair<Bytes, Bytes> readAndWritten[] = {
      // the lines written end with "|" here
      {"EDT\r\n\\M\\\r\n\\Z\\C:\\ziel\r\n\\Q\\C:\\quelle\r\n\\P\\OE\r\n\\B\\19200\r\n\\C\\3",
       R"(\C\3|\B\19200|\P\E|\Q\C:\quelle|\Z\C:\ziel|\M\|EDT|)"},
      {R"(\Q\C:\a,\C\4)", R"(\C\4|\B\9600|\P\O|\Q\C:\a|)"},
      {"  \"\\Q\\C:\\a,b\" \n\\C\\12", R"(\C\2|\B\9600|\P\O|\Q\C:\a,b|)"},
      {"\n\\C\\x\nED\nEDT\n\\C\n", R"(\C\x|\B\9600|\P\O|EDT|)"},
      {Bytes(65532, '\n') + "\\C\\3nothing is read behind 64 KB", R"(\C\3|\B\9600|\P\O|)"},
      {"\xEF\xBB\xBF\\C\\3", R"(\C\3|\B\9600|\P\O|)"},
      {"", R"(\C\1|\B\9600|\P\O|)"},
  };
  for (const auto& [read, written] : readAndWritten) {
    settings_ = {.BaudRate = "2400", .Connected = true};
    Start start(host_.host, settings_, {});
    host_.files.content[kFile] = read;
    host_.windows.OpenMain(start);
    EXPECT_FALSE(settings_.Connected);
    start.RequestClose();
    EXPECT_EQ(std::regex_replace(host_.files.content[kFile], std::regex("\r\n"), "|"), written) << read;
  }
}

TEST_F(StartWindow, KeepsTheChosenPortUnlessItIsLeftByEnde) {
  const auto captions = [this] {
    return start_.MenuCOM1.Text() + start_.MenuCOM2.Text() + start_.MenuCOM3.Text() + start_.MenuCOM4.Text();
  };
  Open("\\C\\5");
  EXPECT_EQ(captions(), "COM1: <COM2:COM3:COM4:") << "an odd port marks none";
  EXPECT_EQ(Click(start_.MenuModem), "") << "switched off";
  start_.RequestClose();
  Open("\\C\\4");
  EXPECT_EQ(captions(), "COM1:COM2:COM3:COM4: <");
  start_.MenuCOM2.Click();
  EXPECT_EQ(captions(), "COM1:COM2: <COM3:COM4:");
  host_.portList.ports = {{1, {"/dev/ttyUSB0", "FTDI FT232R", PortUse::kFree, ""}},
                          {2, {"/dev/ttyS1", "", PortUse::kTaken, "minicom"}},
                          {3, {"/dev/ttyS2", "", PortUse::kNoRights, ""}}};
  start_.MenueCOM.Show();
  std::string hints;
  for (const MenuEntry* entry : {&start_.MenuCOM1, &start_.MenuCOM2, &start_.MenuCOM3, &start_.MenuCOM4})
    hints += entry->Hint() + "|";
  EXPECT_EQ(hints,
            "COM1 ist /dev/ttyUSB0 (FTDI FT232R): frei|COM2 ist /dev/ttyS1: belegt von minicom|"
            "COM3 ist /dev/ttyS2: keine Zugriffsrechte|COM4: nicht vorhanden|");
  EXPECT_EQ(captions(), "COM1:COM2: <COM3:COM4:");
  host_.notices.Say(Notices::From::kPort, "von gestern");
  Click(start_.MenuUpTab);
  EXPECT_EQ(host_.notices.Text(), "") << "of a command before";
  start_.MenuDateiEnde.Click();
  EXPECT_TRUE(host_.windows.Ended());
  EXPECT_EQ(host_.files.content[kFile], "\\C\\4");
  start_.RequestClose();
  EXPECT_TRUE(host_.files.content[kFile].starts_with("\\C\\2\r\n"));
}

TEST_F(StartWindow, OpensWhatTheDeviceAllows) {
  const std::pair<const char*, MenuEntry*> clicks[] = {
      {"", &start_.MenuVerb},  {"", &start_.MenuDaten}, {"", &start_.MenuPowerMonitor},
      {"", &start_.MenUpPro},  {"", &start_.MenuUpTab}, {"", &start_.MenueToolsFirmwareOX3},
      {"", &start_.MenuModem}, {"", &start_.MenuInfo},  {"?", &start_.MenuVerb},
      {"?", &start_.MenUpPro}};
  Open("EDT\n\\M\\");
  std::string seen;
  const auto click = [&](MenuEntry& entry, const std::string& how) {
    seen += entry.Name() + how + ":\n" + Click(entry) + "\n\n";
  };
  for (const auto& [device, entry] : clicks) {
    device_ = device;
    click(*entry, device_.empty() ? "" : ", connected");
  }
  host_.windows.CancelNext();
  click(start_.MenUpPro, ", cancelled");
  ExpectFile("app/clicks.txt", std::regex_replace(seen, std::regex("\r"), "<CR>"));
}

}  // namespace ox::test
