// The table files, from their lines and characters to packed tables; every report, to the character.
#include <gtest/gtest.h>

#include <sstream>

#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_characters.h"
#include "tables/table_rig.h"
#include "tables/table_text.h"
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
  return {parse(TableText(file), messages), messages.texts};
}

Texts Split(const std::string& text, char at) {
  std::istringstream input(text);
  Texts parts;
  for (std::string part; std::getline(input, part, at);) parts.push_back(part);
  return parts;
}

// A row "line|right|wrong~wrong|report": what is told when a wrong text stands where the right one should.
void ExpectReports(Parser parse, const std::string& valid, const std::string& rows) {
  for (const std::string& row : Split(rows, '\n')) {
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
  const std::string valid = R"(Straßen 1/2 und 3//4 Brücken
/S/"Stand 16 Zeichen" Stand
/A/"Köln" Amt
/Z/"A1ß"
/N/"99999999" /D/" 0012"
/M/"-9999"
/T/"a/b/c" ä
/N/"00000000"/D/"-0000"/M/" 9999"/T/"Brü"
/B/A/"14 Zeichen ja!"/Z/"045"/B/ Ende
/E/)";
  EXPECT_EQ(Parse(ParseMesTable, valid + "\n/X/ is never looked at"),
            Result(Packed("Stand 16 Zeichen__K|ln_A1~_99999999 0012-9999a/b/c_^00000000-0000 9999Br}  _^__"
                          "14 Zeichen ja!_045____"),
                   {}));
  ExpectReports(ParseMesTable, valid, R"(1|Brücken|a/b/c~/ /|Steuerzeichen /S/ erwartet!
2|"Stand 16 Zeichen"|x~ "1"~""~"1|Tabellenstand muss (direkt) auf /S/ folgen und mit " eingerahmt sein!
2|Zeichen|Zeichen.|Tabellenstand zu lang (max. 16 Zeichen)!
2|Stand 16|St(nd$16|( nicht erlaubt!
3|/A/|/N/|Steuerzeichen /A/ oder /E/ erwartet!
3|"Köln"|Köln|Amtsbezeichnung muss (direkt) auf /A/ folgen und mit " eingerahmt sein!
3|Köln|Köln am Rhein/1|Amtsbezeichnung zu lang (max. 14 Zeichen)!
4|/Z/|/A/|Steuerzeichen /Z/ erwartet!
4|"A1ß"|""|Amtskennzeichen muss (direkt) auf /Z/ folgen und mit " eingerahmt sein!
4|A1ß|12~1234|Amtskennzeichen muss aus drei Ziffern bestehen!
4|A1ß|1'3|' nicht erlaubt!
5|/N/|/D/|Steuerzeichen /N/ oder /B/ erwartet!
5|"99999999"|-"99999999"|Messstellennummer muss (direkt) auf /N/ folgen und mit " eingerahmt sein!
5|99999999|9999999~999999999~9999:999~9999/999|Messstellennummer muss aus 8 Ziffern bestehen!
5|/D/|/M/|Steuerzeichen /D/ erwartet!
5|" 0012"|""|Differenz muss (direkt) auf /D/ folgen und mit " eingerahmt sein!
5| 0012|+0012~-12~ 00012~-00x2|Differenz muss aus 4 Ziffern mit - oder Blank als Vorzeichen bestehen!
6|/M/|/T/|Steuerzeichen /M/ erwartet!
7|/T/|/B/|Steuerzeichen /T/ erwartet!
7|"a/b/c"|""|Messstellenbezeichnung muss (direkt) auf /T/ folgen und mit " eingerahmt sein!
7|a/b/c|Brücke|Messstellenbezeichnung zu lang (max. 5 Zeichen)!
11|/E/|Ende|Steuerzeichen /A/ oder /E/ erwartet!
)");
}

TEST(TableFiles, ParameterList) {
  const std::string valid = R"(/P/"0012" Nummer μ…
/T/"Temp.Luft"
/M/"°C "
/P/"0000"/T/"Zähl"/M/"/h/"/P/"1023" und /T/"Güte" /M/"%"
/E/)";
  EXPECT_EQ(Parse(ParseParTable, valid),
            Result(Packed("0012 Temp.Luft \037C _0000 Z{hl      /h/_1023 G}te      %___"), {}));
  ExpectReports(ParseParTable, valid, R"(1|/P/|/N/|Steuerzeichen /P/ oder /E/ erwartet!
1|"0012"|'0012"|Parameternummer muss (direkt) auf /P/ folgen und mit " eingerahmt sein!
1|0012|1024~012~00012~00-2|Parameternummer muss aus 4 Ziffern bestehen (0000...1023!
2|/T/|/M/|Steuerzeichen /T/ erwartet!
2|"Temp.Luft"|""|Parameterbezeichnung muss (direkt) auf /T/ folgen und mit " eingerahmt sein!
2|Temp.Luft|Temp. Luft|Parameterbezeichnung muss aus genau 9 Zeichen bestehen!
3|/M/|/E/|Steuerzeichen /M/ erwartet!
3|"°C "|"°C |Maßeinheit muss (direkt) auf /M/ folgen und mit " eingerahmt sein!
3|°C |µ… |µ nicht erlaubt!
3|°C |CO₂|₂ nicht erlaubt!
3|°C |…~…/h|… nicht erlaubt!
3|°C |°C/h|Maßeinheit muss aus genau 3 Zeichen bestehen!
)");
}

TEST(TableFiles, AssignmentTable) {
  const std::string valid = R"(
/N/"16777216"
/P/"0001,0002,1023,0001"
/N/"00000000"/P/"0012"/E/)";
  EXPECT_EQ(Parse(ParseZuoTable, valid), Result(Packed("167772160001000210230001_000000000012__"), {}));
  ExpectReports(ParseZuoTable, valid,
                R"(2|/N/|/P/|Steuerzeichen /N/ oder /E/ erwartet!
2|"16777216"| "16777216"|Messstellennummer muss (direkt) auf /N/ folgen und mit " eingerahmt sein!
2|16777216|1677721~167772160|Messstellennummer muss aus 8 Ziffern mit bestehen (00000000...15728639!
2|16777216|16777217~1677721O|Parameternummer muss aus 8 Ziffern mit bestehen (00000000...15728639!
3|/P/|/N/|Steuerzeichen /P/ erwartet!
3|"0001|("0001|Parameterliste muss (direkt) auf /P/ folgen und mit " eingerahmt sein!
3|0001,0002,1023,0001|0001, 0002~0001;0002~0001 0002~0001,,0002~,0001~0001,~001~0001,1024~x023|)"
                "Parameterliste muss aus Blöcken mit 4 Ziffern (0000...1023) bestehen, "
                R"(die durch Komma getrennt sein müssen!
)");
}

}  // namespace
}  // namespace ox
