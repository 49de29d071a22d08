// The table files, from their lines and characters to packed tables; every report, to the character.
#include <gtest/gtest.h>

#include <sstream>

#include "support/scratch_folder.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_characters.h"
#include "tables/table_rig.h"
#include "tables/table_text.h"
#include "tables/table_traps.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

TEST(TableFiles, EveryLineEndsInOneCr) {
  EXPECT_EQ(TableText(Packed("\n\r\n\r\r\na\r\nb\nc\rd_e")).Characters(),
            Packed("\r\r\r\ra\rb\rc\rd_e\r/*/"));
}

TEST(TableFiles, CharactersAreTranslatedToTheDeviceOrRefused) {
  const Bytes kept =
      "\x1C\x1D\x1E\x1F !#%*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]_"
      "abcdefghijklmnopqrstuvwxyz{|}~";
  const Bytes taken = kept + ToBytes("ÄÖÜßäöüâà°") + "\x83\x85";
  const Bytes given = kept + "[\\]~{|}\x1C\x1D\x1F\x1C\x1D";
  for (unsigned code = 0; code < 256; ++code) {
    const Bytes character(1, ByteOf(code));
    const std::size_t at = taken.find(character);
    const bool shown = at != Bytes::npos;
    const TableText text(character);
    RecordedMessages messages;
    EXPECT_EQ(CheckTableText(text, text.Characters().substr(0, 1), 1, messages),
              shown ? given.substr(at, 1) : "")
        << code;
    EXPECT_EQ(messages.texts.empty(), shown) << code;
  }
}

using Parser = Bytes (*)(const TableText&, TableMessages&);
using Result = std::pair<Bytes, Texts>;  // the packed table, and what the user was told

Result Parse(Parser parse, const std::string& file) {
  RecordedMessages messages;
  RecordedMessages all;
  all.wantsAll = true;
  const Result result{parse(TableText(file), messages), messages.texts};
  EXPECT_EQ(parse(TableText(file), all), result.first) << "who wants all faults gets the same table";
  EXPECT_EQ(Texts(all.texts.begin(), all.texts.begin() + !all.texts.empty()), result.second);
  return result;
}

Texts Split(const std::string& text, char at) {
  std::istringstream input(text);
  Texts parts;
  for (std::string part; std::getline(input, part, at);) parts.push_back(part);
  return parts;
}

/// A file in reports/ has a valid table, which the parser packs so, and below "====" a row
/// "line|right|wrong~wrong|report" for each report: what is told when a wrong text stands in that line where
/// the right one should.
void ExpectTable(Parser parse, const std::string& name, const Bytes& packed) {
  const std::string all = ReadFile(OX_REPORTS_FOLDER "/" + name + ".txt");
  const std::string between = "\n====\n";
  const std::string valid = all.substr(0, all.find(between));
  EXPECT_EQ(Parse(parse, valid + "\n/X/ is never looked at"), Result(Packed(packed), {}));
  for (const std::string& row : Split(all.substr(valid.size() + between.size()), '\n')) {
    const Texts fields = Split(row, '|');
    ASSERT_EQ(fields.size(), 4U) << row;
    const auto &number = fields[0], &right = fields[1], &wrongs = fields[2], &told = fields[3];
    for (const std::string& wrong : Split(wrongs, '~')) {
      std::string file = valid;
      file.replace(valid.find(right), right.size(), wrong);
      const std::string line = Split(file + "\n\n", '\n').at(std::stoul(number) - 1);
      const std::string report = "Fehler in Zeile " + number + ", " + told + "\r\r" + line;
      EXPECT_EQ(Parse(parse, file), Result("", {report})) << row;
    }
  }
}

TEST(TableFiles, MeasuringPointTable) {
  ExpectTable(ParseMesTable, "mes",
              "Stand 16 Zeichen__K|ln_A1~_99999999 0012-9999a/b/c_^00000000-0000 9999Br}  _^__"
              "14 Zeichen ja!_045____");
}

TEST(TableFiles, FurtherFaultsAreLookedForFromTheNextEntryOn) {
  // Each line that ends in "!" has one fault of its own.
  const std::string faulty = R"(/S/"17 Zeichen lang!!" !
/A/"Amt" /Z/"12" /N/"1" !
/N/"1234567" !
/D/" 0012" /M/" 0000" /T/"Pegel"
/N/"12345678" /D/" 0012"
/M/" 0000" /T/"zu lang" !
/N/"12345678" /D/" 0012" /M/" 0000"
/N/"12345679" !/D/"+0012" /M/" 0000" /T/"Pegel" !
/B/
/A/Amt /Z/"123" !
/A/"Amt" /Z/"123"
/X/"1" !
/E/)";
  RecordedMessages all;
  all.wantsAll = true;
  EXPECT_EQ(ParseMesTable(TableText(faulty), all), "");
  Texts lines;
  for (const std::string& text : all.texts) lines.push_back(text.substr(0, text.find(',')));
  EXPECT_EQ(lines, (Texts{"Fehler in Zeile 1", "Fehler in Zeile 2", "Fehler in Zeile 3", "Fehler in Zeile 6",
                          "Fehler in Zeile 8", "Fehler in Zeile 8", "Fehler in Zeile 9", "Fehler in Zeile 10",
                          "Fehler in Zeile 12"}));
}

TEST(TableFiles, ALineEndBetweenTwoSlashesIsToldInItsLine) {
  std::string lines;
  const TableText text("\n/\n\n/A/\n/B/ x\n/\n/");
  for (const TableTrap& trap : LineEndsReadAsMarks(text, {1, 2, 3, 4, 5, 6, 7, 8})) {
    lines += std::to_string(trap.line) + " ";
  }
  EXPECT_EQ(lines, "4 6 7 ");
}

TEST(TableFiles, ParameterList) {
  ExpectTable(ParseParTable, "par", "0012 Temp.Luft \037C _0000 Z{hl      /h/_1023 G}te      %___");
}

TEST(TableFiles, AssignmentTable) {
  ExpectTable(ParseZuoTable, "zuo", "167772160001000210230001_000000000012__");
}

}  // namespace
}  // namespace ox
