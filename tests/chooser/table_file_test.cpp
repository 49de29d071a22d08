// Table files that are none, and what the user hears of them.
#include "chooser/table_file.h"

#include <gtest/gtest.h>

#include "support/test_host.h"
#include "tables/mes_table.h"

namespace ox::test {
namespace {

class TableFile : public testing::Test {
 protected:
  Bytes Parse(const Bytes& content) {
    host_.files.content["/netz.mes"] = content;
    const auto text = ReadTableText(host_.files, "/netz.mes");
    return ParseMesTable(text.value_or("nicht gelesen"), messages_);
  }
  std::string Message() {
    const auto messages = host_.windows.TakeMessages();
    return messages.size() == 1 ? messages[0] : std::to_string(messages.size()) + " messages";
  }

  TestHost host_;
  WindowTableMessages messages_{host_.windows};
};

TEST_F(TableFile, Windows1252AndUtf8GiveOneTableWhateverTheLineEnds) {
  const Bytes packed("[~\0\0\0", 5);
  EXPECT_EQ(Parse("\n\r\n/S/\"\xC4\xDF\"\r/E/"), packed);
  EXPECT_EQ(Parse("/S/\"\xC3\x84\xC3\x9F\"\n/E/\n"), packed);
  EXPECT_EQ(host_.windows.Messages().size(), 0U);
}

TEST_F(TableFile, ErrorsAreShownInTheUsersCharactersWithTheirLine) {
  EXPECT_EQ(Parse("Köpfe\r\n/S/\"\xE4$\" f\xFCr\r\n/E/"), "");
  EXPECT_EQ(Message(), "Fehler in Zeile 2, $ nicht erlaubt!\r\r/S/\"ä$\" für");
  host_.windows.Answer({Answer::Cancel, Answer::Ok});
  EXPECT_FALSE(messages_.Confirm("f\xFCr?"));
  EXPECT_TRUE(messages_.Confirm("ja?"));
  EXPECT_EQ(host_.windows.TakeMessages(), (std::vector<std::string>{"für?", "ja?"}));
}

TEST_F(TableFile, WhatIsNoTableEndsInAMessage) {
  constexpr std::size_t kHuge = 50'000'000;
  EXPECT_EQ(Parse(Bytes(kHuge, 'x')), "");
  EXPECT_EQ(Message(), "Fehler in Zeile 2, Steuerzeichen /S/ erwartet!\r\r");
  EXPECT_EQ(Parse("/A/" + Bytes(kHuge / 20, '\xE4')), "");
  EXPECT_TRUE(Message().starts_with("Fehler in Zeile 1, Steuerzeichen /S/ erwartet!\r\r/A/ää"));
}

TEST_F(TableFile, AFileThatCannotBeReadIsNoText) {
  host_.files.content["/geheim.mes"] = "/S/\"1\"/E/";
  host_.files.unreadable.insert("/geheim.mes");
  EXPECT_FALSE(ReadTableText(host_.files, "/geheim.mes"));
  EXPECT_FALSE(ReadTableText(host_.files, "/fort.mes"));
  EXPECT_EQ(host_.windows.Messages().size(), 0U);  // the caller's words
}

}  // namespace
}  // namespace ox::test
