// What the three parsers pack, and that a file that breaks off is never half accepted.
#include <gtest/gtest.h>

#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/recorded_messages.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

using Parser = Bytes (*)(BytesView, TableMessages&);

void ExpectPacked(Parser parse, std::string_view file, const Bytes& packed) {
  RecordedMessages messages;
  EXPECT_EQ(parse(BuildTableText(ToBytes(file)), messages), packed) << file;
  EXPECT_TRUE(messages.shown.empty()) << messages.shown.front();
}

constexpr std::string_view kMesFile =
    "Netz\r\n/S/\"1\"\r\n"
    "/A/\"Höhe\"/Z/\"A1ß\" /N/\"00000000\"/D/\" 0012\"/M/\"-9999\"/T/\"See\"\r\n"
    "/N/\"99999999\" /D/\"-0000\" /M/\" 0000\" /T/\"Brück\" /B/ Ende\r\n"
    "/A/\"12345678901234\"/Z/\"456\"/B/E/";
const Bytes kMesPacked = Packed(
    "1\0\0H|he\0A1~\0"
    "00000000 0012-9999See  \0\xFF"
    "99999999-0000 0000Br}ck\0\xFF\0\0"
    "12345678901234\0"
    "456\0\0\0\0");

constexpr std::string_view kParFile =
    "/P/\"0000\"/T/\"Zähl\"/M/\"m/s\" und /P/\"1023\" /T/\"123456789\" /M/\"%\"\n/E/";
const Bytes kParPacked = Packed(
    "0000 Z{hl      m/s\0"
    "1023 123456789 %\0\0\0");

constexpr std::string_view kZuoFile =
    "/N/\"16777216\" /P/\"0001,0002,1023,0001\"\n/N/\"00000000\"/P/\"0012\"/E/";
const Bytes kZuoPacked = Packed(
    "167772160001000210230001\0"
    "000000000012\0\0");

TEST(ParsedTables, HoldEveryFieldInItsPlace) {
  ExpectPacked(ParseMesTable, kMesFile, kMesPacked);
  ExpectPacked(ParseParTable, kParFile, kParPacked);
  ExpectPacked(ParseZuoTable, kZuoFile, kZuoPacked);
}

TEST(ParsedTables, MayBeEmptyAndLongTexts) {
  ExpectPacked(ParseMesTable, "/S/\"1\"/E/ /X/ never read", Packed("1\0\0\0"));
  ExpectPacked(ParseMesTable, "/S/\"1234567890123456\"\n/E/", Packed("1234567890123456\0\0\0"));
  ExpectPacked(ParseParTable, "/E/", Packed("\0\0"));
  ExpectPacked(ParseZuoTable, "/E/", Packed("\0"));
}

TEST(ParsedTables, AFileThatBreaksOffIsReportedOnceAndRefused) {
  const std::pair<Parser, std::string_view> files[] = {
      {ParseMesTable, kMesFile}, {ParseParTable, kParFile}, {ParseZuoTable, kZuoFile}};
  for (const auto& [parse, file] : files) {
    const Bytes whole = ToBytes(file);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      RecordedMessages messages;
      EXPECT_EQ(parse(BuildTableText(whole.substr(0, length)), messages), "") << length;
      EXPECT_EQ(messages.shown.size(), 1U) << length;
    }
  }
}

}  // namespace
}  // namespace ox
