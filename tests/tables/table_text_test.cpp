// The lexical level: line ends, marks, values, characters, and the form of an error report.
#include "tables/table_text.h"

#include <gtest/gtest.h>

#include "tables/line_error.h"
#include "tables/recorded_messages.h"
#include "tables/table_characters.h"
#include "tables/table_cursor.h"

namespace ox {
namespace {

TEST(TableText, EveryLineOfTheFileEndsInOneCr) {
  EXPECT_EQ(BuildTableText(""), "");
  EXPECT_EQ(BuildTableText("a"), "a\r");
  EXPECT_EQ(BuildTableText("a\r\nb\nc\rd"), "a\rb\rc\rd\r");
  EXPECT_EQ(BuildTableText("\n\r\n\r\r\n"), "\r\r\r\r");
  EXPECT_EQ(BuildTableText(Packed("a\0b\n")), Packed("a\0b\r"));
}

TEST(TableText, LinesAreFoundByTheirNumber) {
  const BytesView text = "one\r\rthree\r";
  EXPECT_EQ(GetLineText(text, 1), "one");
  EXPECT_EQ(GetLineText(text, 2), "");
  EXPECT_EQ(GetLineText(text, 3), "three");
  EXPECT_EQ(GetLineText(text, 4), "");
  EXPECT_EQ(GetLineText(text, 5), "");
  EXPECT_EQ(GetLineText("", 1), "");
}

// All marks of a text with the lines they stand in, such as "S1 A3 *4".
std::string Marks(BytesView text) {
  TableCursor cursor(text);
  std::string marks;
  for (char mark = 0; mark != TableCursor::kEndOfText;) {
    mark = cursor.FindControlMark();
    marks += std::string(1, mark) + std::to_string(cursor.line()) + " ";
  }
  return marks;
}

TEST(ControlMarks, AreFoundWhereverTwoSlashesStandOneCharacterApart) {
  EXPECT_EQ(Marks(""), "*1 ");
  EXPECT_EQ(Marks("only comment\rin two lines\r"), "*3 ");
  EXPECT_EQ(Marks("/S/ text\r\r/A/.\r"), "S1 A3 *4 ");
  EXPECT_EQ(Marks("a/b/c\r"), "b1 *2 ");
  EXPECT_EQ(Marks("/ / /s//.\r"), " 1  1 s1 *2 ") << "no letter is needed, and case counts";
  EXPECT_EQ(Marks("1/2 and 3//4\r"), "*2 ") << "slashes that open no mark";
  EXPECT_EQ(Marks("/B/A/\r"), Marks("/B//A/\r")) << "a closing slash may open the next mark";
  EXPECT_EQ(Marks("/B/\r/A/.\r"), "B1 \r1 A1 *2 ")
      << "so may one at a line end, when the next line begins so";
  EXPECT_EQ(Marks("/B/ end\r/A/.\r"), "B1 A2 *3 ");
  EXPECT_EQ(Marks("/B/\r"), "B1 \r1 *1 ") << "the mark behind the text begins so, too";
  EXPECT_EQ(Marks("a/"), "*1 ") << "a text without line end";
}

TEST(FramedValues, BeginDirectlyBehindTheMarkAndEndInTheirLine) {
  struct Case {
    const char* text;
    const char* value;
  };
  for (const Case& c : {Case{"/S/\"a b\" \"c\"\r", "a b"}, Case{"/S/\"m/s/h\"\r", "m/s/h"},
                        Case{"/S/\"\"\r", ""}, Case{"/S/ \"a\"\r", ""}, Case{"/S/\r\"a\"\r", ""},
                        Case{"/S/\"a\rb\"\r", ""}, Case{"/S/", ""}, Case{"/S/\"", ""}, Case{"/S/\"a", ""}}) {
    TableCursor cursor(c.text);
    ASSERT_EQ(cursor.FindControlMark(), 'S');
    EXPECT_EQ(cursor.ReadFramedValue(), c.value) << c.text;
  }
}

TEST(FramedValues, HideTheirSlashesFromTheScanner) {
  TableCursor cursor("/M/\"m/s/\" /E/\r");
  EXPECT_EQ(cursor.FindControlMark(), 'M');
  EXPECT_EQ(cursor.ReadFramedValue(), "m/s/");
  EXPECT_EQ(cursor.FindControlMark(), 'E');
}

TEST(Characters, AreTranslatedToTheDeviceOrRefused) {
  const Bytes from = ToBytes("ÄÖÜßäöüâà°") + "\x83\x85";
  const Bytes to = "[\\]~{|}\x1C\x1D\x1F\x1C\x1D";
  const Bytes kept = "\x1C\x1D\x1E\x1F !#%*+,-./09:;<=>?@AZ[\\]_az{|}~";
  for (unsigned code = 0; code < 256; ++code) {
    const Bytes character(1, ByteOf(code));
    Bytes expected;
    if (const auto at = from.find(character); at != Bytes::npos) expected = to.substr(at, 1);
    const bool letter = (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    if (letter || (code >= '0' && code <= '9') || kept.find(character) != Bytes::npos) expected = character;

    RecordedMessages messages;
    EXPECT_EQ(CheckTableText("line\r", character, 1, messages), expected) << code;
    if (expected.empty()) {
      const std::string report = "Fehler in Zeile 1, " + ToText(character) + " nicht erlaubt!\r\rline";
      EXPECT_EQ(messages.shown, std::vector{report}) << code;
    }
  }
}

TEST(Characters, TheFirstOneRefusedIsReported) {
  RecordedMessages messages;
  EXPECT_EQ(CheckTableText("", ToBytes("Brück"), 1, messages), "Br}ck");
  EXPECT_EQ(CheckTableText("", "a^b$", 1, messages), "");
  EXPECT_EQ(messages.shown, std::vector<std::string>{"Fehler in Zeile 1, ^ nicht erlaubt!\r\r"});
}

TEST(Digits, NothingElseCounts) {
  EXPECT_EQ(DigitsOnly("0129"), "0129");
  for (const char* other : {"", "12a", "/1", ":1", " 1", "-1", "1.0"})
    EXPECT_EQ(DigitsOnly(other), "") << other;
  for (const char* number : {"0000", "0999", "1023"}) EXPECT_TRUE(IsParameterNumber(number)) << number;
  for (const char* other : {"1024", "9999", "012", "00012", "01a2", ""})
    EXPECT_FALSE(IsParameterNumber(other));
}

TEST(LineError, NamesAndQuotesTheLine) {
  RecordedMessages messages;
  ReportLineError(12, ", so nicht!", "1\r2\r3\r4\r5\r6\r7\r8\r9\r10\r11\rzw\xF6lf /X/\r", messages);
  EXPECT_EQ(messages.shown, std::vector<std::string>{"Fehler in Zeile 12, so nicht!\r\rzwölf /X/"});
}

}  // namespace
}  // namespace ox
