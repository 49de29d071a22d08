// OX.CFG: what is read out of it, and what is written back.
#include "app/settings_file.h"

#include <gtest/gtest.h>

#include "app/start.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

class SettingsFile : public testing::Test {
 protected:
  /// Loads the settings out of a file with this content.
  void Load(const Bytes& content) {
    host_.files.content["OX.CFG"] = content;
    LoadSettings(host_.files, settings_, Entries());
  }

  Bytes Saved() {
    SaveSettings(host_.files, settings_, Entries());
    return host_.files.content["OX.CFG"];
  }

  SwitchedEntries Entries() { return {start_.MenueTools, start_.MenuModem}; }

  TestHost host_;
  Subs subs_;
  Start start_{host_.host, subs_, {}};
  SessionSettings settings_;
};

constexpr const char* kDefaults = "\\C\\1\r\n\\B\\9600\r\n\\P\\O\r\n";

TEST_F(SettingsFile, DefaultsStandWithoutAFileAndAreWritten) {
  settings_.Connected = true;
  settings_.BaudRate = "2400";
  LoadSettings(host_.files, settings_, Entries());
  EXPECT_FALSE(settings_.Connected);
  EXPECT_FALSE(start_.MenueTools.Visible());
  EXPECT_FALSE(start_.MenuModem.Visible());
  EXPECT_EQ(Saved(), kDefaults);
}

TEST_F(SettingsFile, EverythingIsReadAndWrittenBackInOrder) {
  Load("EDT\r\n\\M\\\r\n\\Z\\C:\\ziel\r\n\\Q\\C:\\quelle\r\n\\P\\OE\r\n\\B\\19200\r\n\\C\\3\r\n");
  EXPECT_EQ(settings_.DialogueSettings(), "19200,E,7,1");
  EXPECT_TRUE(start_.MenueTools.Visible());
  EXPECT_TRUE(start_.MenuModem.Visible());
  EXPECT_EQ(Saved(),
            "\\C\\3\r\n\\B\\19200\r\n\\P\\E\r\n\\Q\\C:\\quelle\r\n\\Z\\C:\\ziel\r\n\\M\\\r\nEDT\r\n");
}

TEST_F(SettingsFile, ToolsWithoutModemStayWithoutIt) {
  Load("EDT\r\n");
  EXPECT_FALSE(start_.MenuModem.Visible());
  EXPECT_EQ(Saved(), std::string(kDefaults) + "EDT\r\n");
}

TEST_F(SettingsFile, FieldsAreDelimitedTexts) {
  struct Case {
    Bytes content, sourcePath, comPort;
  };
  for (const Case& c : {
           Case{"\\Q\\C:\\a,b\r\n\\C\\2\r\n", "C:\\a", "2"},  // cut at the comma, the rest ignored
           Case{"\\Q\\a,\\C\\4", "a", "4"},                   // a rest that is a mark counts
           Case{"  \"\\Q\\C:\\a,b\" \r\n\\C\\12", "C:\\a,b",
                "2"},                                        // quotes protect, the last character counts
           Case{"\n\n\\C\\7\nED\n\\C\n,,\\Q\\x", "x", "7"},  // bare line feeds, short entries
           Case{"\xEF\xBB\xBF\\C\\3\n", "", "3"},            // a byte order mark
           Case{"\"\\C\\3\n", "", "1"},                      // a quote that is never closed
       }) {
    Load(c.content);
    EXPECT_EQ(settings_.SourcePath, c.sourcePath) << c.content;
    EXPECT_EQ(settings_.ComPort, c.content.starts_with("\"") ? "\n" : c.comPort) << c.content;
  }
}

TEST_F(SettingsFile, RubbishLeavesTheDefaults) {
  Bytes rubbish;
  for (int i = 0; i < 10'000'000; ++i) rubbish += ByteOf(static_cast<unsigned>(i) * 2654435761U >> 13U);
  for (const Bytes& content : {rubbish, Bytes(3000, '\0'), Bytes("\\"), Bytes("\"")}) {
    Load(content);
    EXPECT_EQ(settings_.DialogueSettings(), "9600,O,7,1");
    EXPECT_EQ(settings_.ComPort, "1");
  }
  host_.files.unreadable.insert("OX.CFG");
  Load("\\C\\4");
  EXPECT_EQ(settings_.ComPort, "1");
}

TEST_F(SettingsFile, AFailedWriteIsSilent) {
  host_.files.writable = false;
  SaveSettings(host_.files, settings_, Entries());
  EXPECT_TRUE(host_.windows.Messages().empty());
}

}  // namespace
}  // namespace ox::test
