// Records in lines of three, with names where the table has them.
#include "exchange/reply_display.h"

#include <gtest/gtest.h>

#include "tables/packed_tables.h"
#include "tables/table_characters.h"

namespace ox::test {
namespace {

Bytes Entry(const Bytes& number, Bytes name) {
  name.resize(kPointNameLength, ' ');
  return number + " 0012-0003" + name + kNul + kEntryEnd;
}

/// A packed table of one office.
Bytes Table(const Bytes& entries) {
  const Bytes end(kNulPair);
  return Bytes("Stand") + end + "Amt" + kNul + "123" + kNul + entries + end + kNul;
}

const Bytes kRecord = "12345678: 0012 s   12.3";

TEST(ReplyDisplay, RecordsStandInLinesOfThree) {
  const NameIndex none;
  struct Row {
    Bytes reply;
    Bytes display;
  };
  const Row rows[] = {
      {"", ""},
      {"\r", ""},
      {"0" + kRecord + "\r", kRecord + "|"},
      {"\raaa\rbbb\rccc\rE\r", "aaa|bbb|ccc\r\n"},
      {"\ra1a\ra2a\ra3a\ra4a\ra5a\ra6a\ra7a\rE\r", "a1a|a2a|a3a\r\na4a|a5a|a6a\r\na7a|"},
      {"\raaa\rAB\rbbb\r", "aaa|"},
      {"\raaa\r\rbbb\r", "aaa|"},
      {"\r" + Bytes(30, 'x') + "\r" + Bytes(25, 'y') + "\r", Bytes(25, 'x') + "|" + Bytes(25, 'y') + "|"},
      {"\raaa\rohne Ende", "aaa|"},
      {"0", ""},
      {"0aa", ""},
  };
  for (const Row& row : rows) EXPECT_EQ(FormatValues(row.reply, none), row.display);
}

TEST(ReplyDisplay, NamesStandForTheNumbersTheyBelongTo) {
  const NameIndex names(Table(Entry("12345678", "Pegel") + Entry("23456789", "Br}ck") +
                              Entry("00000001", "Ab") + Entry("12345678", "zwei")));
  EXPECT_EQ(names.Size(), 3U);
  struct Row {
    Bytes record;
    Bytes shown;
  };
  const Row rows[] = {
      {kRecord, "   Pegel: 0012 s   12.3"},
      {"23456789: {}",
       "   Br\xFC"
       "ck: {}"},  // the record's own braces are the device's affair
      {"00000001: 1", "   Ab   : 1"},
      {"99999999: 1", "99999999: 1"},
      {"12345678:", "12345678:"},  // nothing behind the colon
      {"12345678; 1", "12345678; 1"},
      {"22.11.2026 12:00", "22.11.2026 12:00"},
      {"12345678: 0012 s   12.3 mmxx", "   Pegel: 0012 s   12.3 m"},
  };
  for (const Row& row : rows) EXPECT_EQ(FormatValues("0" + row.record + "\r", names), row.shown + "|");
}

/// Whatever a user may write in a name comes back as it was written.
TEST(ReplyDisplay, NamesAreShownAsTheUserWroteThem) {
  class NoMessages : public TableMessages {
    void Show(const Bytes& text) override { FAIL() << text; }
    bool Confirm(const Bytes& text) override { return text.empty(); }
  } messages;
  for (const char c : Bytes("\xC4\xD6\xDC\xDF\xE4\xF6\xFC\xE2\xE0\xB0"
                            "Az09#%*+,-./:;<=>?@_ !")) {
    const Bytes packed = CheckTableText("", Bytes(kPointNameLength, c), 1, messages);
    EXPECT_EQ(NameIndex(Table(Entry("12345678", packed))).Find("12345678"), Bytes(kPointNameLength, c));
  }
}

TEST(ReplyDisplay, TheIndexTakesWhatLooksLikeAnEntryAndNothingElse) {
  EXPECT_EQ(NameIndex("").Size(), 0U);
  EXPECT_EQ(NameIndex(Table("")).Size(), 0U);
  EXPECT_EQ(NameIndex(Table(Entry("1234567x", "Pegel"))).Size(), 0U);
  const Bytes table = Table(Entry("12345678", "Pegel"));
  const std::size_t nameEnd = table.find("Pegel") + kPointNameLength;
  for (std::size_t length = 0; length <= table.size(); ++length) {
    EXPECT_EQ(NameIndex(BytesView(table).substr(0, length)).Size(), length >= nameEnd ? 1U : 0U) << length;
  }
  // An office whose name begins with eight digits hides the entry behind it, and only that one.
  const Bytes digits = Bytes("1") + kNul + kNul + "87654321" + kNul + "123" + kNul;
  const NameIndex index(digits + Entry("11111111", "eins") + Entry("22222222", "zwei") + Bytes(3, kNul));
  EXPECT_EQ(index.Find("11111111"), "");
  EXPECT_EQ(index.Find("22222222"), "zwei ");
  EXPECT_NE(index.Find("87654321"), "");
}

}  // namespace
}  // namespace ox::test
