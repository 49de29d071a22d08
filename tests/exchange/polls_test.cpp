// The polls that the user starts one by one, down to the characters on the line.
#include "exchange/exchange_window.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;
using Polls = ExchangeWindow;

const std::string kRedundant =
    "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!";

TEST_F(Polls, EachCommandSendsItsRequestAndShowsItsReply) {
  struct Row {
    Strings fields;
    Button& button;
    Bytes request;
    Bytes reply;
    std::string values;
    Strings messages;
  };
  const Bytes several = "\rAAA\rBBB\rE\r";
  const Row rows[] = {
      {{"", "12345678", "0012"}, window_.Einzelabruf, "J    12345678: 0012\r", "0EIN\rZWEI\r", "EIN|", {}},
      {{"", "", "0012"}, window_.Einzelabruf, "J              0012\r", several, "AAA|BBB|", {}},
      {{"123", "12345678", ""},
       window_.Einzelabruf,
       "J123 12345678:     \r",
       several,
       "AAA|BBB|",
       {kRedundant}},
      {{"123", "12345678", "0012"},
       window_.Abruf_Y,
       "Z123 12345678: 0012\r",
       "0" + Bytes(30, '\x7E') + "\r",
       std::string(23, '~') + "|",
       {kRedundant}},
      {{"x", "y", "z"}, window_.Sammelabruf, "P", several, "AAA|BBB|", {}},
      {{"x", "y", "z"}, window_.Zeitabruf, "T", "022.11.2026 12:00\r", "22.11.2026 12:00|", {}},
  };
  for (const Row& row : rows) {
    Type(row.fields[0], row.fields[1], row.fields[2]);
    device_.Expect("S", "A").Expect(row.request, {{0.5, row.reply}}).Expect("A");
    std::string during;
    host_.windows.In(0.3, [&] { during = Buttons(); });
    row.button.Click();
    EXPECT_TRUE(device_.Done()) << row.request;
    EXPECT_EQ(device_.Unexpected(), "");
    EXPECT_EQ(during, kLocked);
    EXPECT_EQ(Buttons(), kIdle);
    EXPECT_EQ(window_.Focused(), &window_.AKZ);
    EXPECT_EQ(window_.mewanz.Text(), row.values);
    EXPECT_TRUE(window_.datanz.Text().starts_with("PC -> OX  S\r\nPC <- OX  A\r\n")) << window_.datanz.Text();
    EXPECT_EQ(Messages(), row.messages);
  }
}

TEST_F(Polls, BadFieldsChangeNothing) {
  EXPECT_EQ(window_.Focused(), &window_.AKZ);
  Type("12", "12345678", "0012");
  window_.mewanz.SetText("bleibt");
  window_.datanz.SetText("bleibt");
  window_.Einzelabruf.Click();
  window_.Abruf_Y.Click();
  const std::string office = "Das Feld  > Amtskennzeichen <  muss leer sein oder drei Ziffern enthalten!";
  EXPECT_EQ(Messages(), (Strings{office, office}));
  Type("1ü", "", "");
  window_.Einzelabruf.Click();
  EXPECT_EQ(Messages(), Strings{office});
  EXPECT_EQ(window_.mewanz.Text() + window_.datanz.Text(), "bleibtbleibt");
  EXPECT_TRUE(host_.ports.Openings().empty());
  EXPECT_EQ(Buttons(), kIdle);
}

TEST_F(Polls, FailuresShowWhatCameAndUnlock) {
  device_.Expect("S", "A").Expect("P", "\rAAA\r").Expect("N");
  window_.Sammelabruf.Click();
  EXPECT_EQ(window_.mewanz.Text(), "AAA|");
  host_.ports.Remove(1);
  window_.Zeitabruf.Click();
  EXPECT_EQ(window_.mewanz.Text(), "");
  EXPECT_EQ(Messages(), (Strings{kWrongAnswer, "1: lässt sich nicht öffnen!"}));
  EXPECT_EQ(Buttons(), kIdle);
  window_.Verlassen.Click();
  EXPECT_FALSE(window_.IsOpen());
}

TEST_F(Polls, ClosingDuringAPollWaitsForItsEnd) {
  device_.Expect("S", "A").Expect("P", {{0.9, "\rAAA\r"}, {1.8, "E\r"}}).Expect("A");
  host_.windows.In(0.2, [&] { window_.RequestClose(); });
  host_.windows.In(1.5, [&] { EXPECT_TRUE(window_.IsOpen()); });
  window_.Sammelabruf.Click();
  EXPECT_TRUE(device_.Done());
  EXPECT_FALSE(window_.IsOpen());
  EXPECT_EQ(host_.ports.OpenCount(), 0);
}

}  // namespace
}  // namespace ox::test
