// Table files on their way to the parser, and its messages on their way to the user.
#include "chooser/table_file.h"

#include <gtest/gtest.h>

#include "support/test_host.h"

namespace ox::test {

TEST(TableFile, IsReadInBothEncodingsAndItsMessagesAreShownInTheUsers) {
  TestHost host;
  for (const char* content : {"\n\r\n/S/\"\xC4\xDF\"\r/E/", "\n\n/S/\"\xC3\x84\xC3\x9F\"\n/E/\n"}) {
    host.files.content["/netz.mes"] = content;
    EXPECT_EQ(ReadTableText(host.files, "/netz.mes"), "\r\r/S/\"\xC4\xDF\"\r/E/\r") << content;
  }
  EXPECT_EQ(ReadTableText(host.files, "/fort.mes"), std::nullopt);
  WindowTableMessages messages(host.windows);
  messages.Show("\xE4$");
  host.windows.Answer({Answer::Cancel, Answer::Ok});
  EXPECT_FALSE(messages.Confirm("f\xFCr?"));
  EXPECT_TRUE(messages.Confirm("ja?"));
  EXPECT_EQ(host.windows.Messages(), (std::vector<std::string>{"ä$", "für?", "ja?"}));
}

}  // namespace ox::test
