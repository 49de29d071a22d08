// Windows-1252 and UTF-8, to and fro.
#include "platform/text.h"

#include <gtest/gtest.h>

#include <vector>

namespace ox {
namespace {

struct Case {
  std::string text;
  Bytes bytes;
};

TEST(Text, EveryByteHasACharacterAndComesBack) {
  Bytes all;
  for (unsigned value = 0; value < 256; ++value) all += ByteOf(value);
  EXPECT_EQ(ToBytes(ToText(all)), all);
  EXPECT_TRUE(IsUtf8(ToText(all)));
}

TEST(Text, BytesAreReadAsWindows1252) {
  const std::vector<Case> cases = {
      {"", ""},
      {"A\n~\x7F", "A\n~\x7F"},
      {"Überladung °C §",
       "\xDC"
       "berladung \xB0"
       "C \xA7"},
      {"€‚ƒ„…†‡ˆ‰Š‹ŒŽ", "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"},
      {"‘’“”•–—˜™š›œžŸ", "\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"},
      {"\u0081\u008D\u008F\u0090\u009D", "\x81\x8D\x8F\x90\x9D"},
      {"\u00A0ÿ", "\xA0\xFF"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(ToText(each.bytes), each.text);
    EXPECT_EQ(ToBytes(each.text), each.bytes);
  }
}

TEST(Text, WhatHasNoByteBecomesAQuestionMark) {
  const std::vector<Case> cases = {
      {"aĀb", "a?b"},                // no such character in Windows-1252
      {"漢字", "??"},                // one for each character
      {"\U0001F600!", "?!"},         // four bytes
      {"\u0080", "?"},               // its byte means the euro sign
      {"\x80", "?"},                 // a continuation with no beginning
      {"\xC3", "?"},                 // cut off
      {"\xE2\x82", "??"},            // cut off
      {"\xC3(x", "?(x"},             // the good character after a broken one stays
      {"\xC3\xC3\xA4", "?\xE4"},     //
      {"\xC0\xAF", "??"},            // overlong
      {"\xE0\x80\x80", "???"},       // overlong
      {"\xED\xA0\x80", "???"},       // surrogate
      {"\xF4\x90\x80\x80", "????"},  // beyond the last character
      {"\xF8\xFF", "??"},            // never begins a character
      {"12345678\xFF"
       "2345678",
       "12345678?2345678"},  // behind a whole block of ASCII
  };
  for (const Case& each : cases) EXPECT_EQ(ToBytes(each.text), each.bytes) << each.text;
}

TEST(Text, FilesAreTakenAsUtf8OnlyWhenTheyAre) {
  const std::string mark = "\xEF\xBB\xBF";
  const std::vector<Case> cases = {
      {"", ""},
      {"nur ASCII", "nur ASCII"},
      {"Größe",
       "Gr\xF6\xDF"
       "e"},
      {"Gr\xF6\xDF"
       "e",
       "Gr\xF6\xDF"
       "e"},                                // Windows-1252 already
      {"ä und \xE4", "\xC3\xA4 und \xE4"},  // one broken character: not UTF-8 at all
      {mark + "Größe",
       "Gr\xF6\xDF"
       "e"},
      {mark + "nur ASCII", "nur ASCII"},
      {mark, ""},
      {mark + "\xE4", mark + "\xE4"},
      {"ä" + mark, "\xE4?"},  // a mark only at the start
      {"漢 ä", "? \xE4"},
      {std::string("\0ä\0", 4), std::string("\0\xE4\0", 3)},
  };
  for (const Case& each : cases) EXPECT_EQ(FileTextToBytes(each.text), each.bytes) << each.text;
}

}  // namespace
}  // namespace ox
