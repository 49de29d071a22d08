// Every report of the three parsers, to the character: one row a rule, each a small change of a valid file.
#include <gtest/gtest.h>

#include <sstream>

#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/recorded_messages.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

using Parser = Bytes (*)(BytesView, TableMessages&);

// In the valid files, `from` is replaced by `to`; the report must name this line, quote it, and hold
// `specific`.
struct Fault {
  const char* from;
  const char* to;
  int line;
  const char* specific;
};

std::string Line(const std::string& file, int number) {
  std::istringstream lines(file);
  std::string line;
  while (number-- > 0) {
    if (!std::getline(lines, line)) return "";
  }
  return line;
}

void ExpectReports(Parser parse, const std::string& valid, const std::vector<Fault>& faults) {
  RecordedMessages none;
  EXPECT_NE(parse(BuildTableText(ToBytes(valid)), none), "");
  EXPECT_TRUE(none.shown.empty());
  for (const Fault& fault : faults) {
    std::string file = valid;
    const std::size_t at = file.find(fault.from);
    ASSERT_NE(at, std::string::npos) << fault.from;
    file.replace(at, std::string(fault.from).size(), fault.to);
    RecordedMessages messages;
    EXPECT_EQ(parse(BuildTableText(ToBytes(file)), messages), "") << fault.to;
    const std::string report =
        "Fehler in Zeile " + std::to_string(fault.line) + fault.specific + "\r\r" + Line(file, fault.line);
    EXPECT_EQ(messages.shown, std::vector{report}) << fault.from << " -> " << fault.to;
  }
}

TEST(ParserReports, MeasuringPointTable) {
  const std::string valid =
      "Straßen und Brücken\n"
      "/S/\"2026\" Stand\n"
      "/A/\"Köln\" Amt\n"
      "/Z/\"123\"\n"
      "/N/\"12345678\" /D/\" 0012\"\n"
      "/M/\"-0034\"\n"
      "/T/\"Brück\" ä\n"
      "/B/ Ende\n"
      "/E/\n";
  const char* difference = ", Differenz muss aus 4 Ziffern mit - oder Blank als Vorzeichen bestehen!";
  const char* number = ", Messstellennummer muss aus 8 Ziffern bestehen!";
  const char* code = ", Amtskennzeichen muss aus drei Ziffern bestehen!";
  const char* version = ", Tabellenstand muss (direkt) auf /S/ folgen und mit \" eingerahmt sein!";
  ExpectReports(
      ParseMesTable, valid,
      {{"/S/", "/s/", 2, ", Steuerzeichen /S/ erwartet!"},
       {"/S/\"", "/S/ \"", 2, version},
       {"/S/\"2026\"", "/S/\"\"", 2, version},
       {"/S/\"2026\"", "/S/\"2026", 2, version},
       {"2026", "12345678901234567", 2, ", Tabellenstand zu lang (max. 16 Zeichen)!"},
       {"2026", "20(26", 2, ", ( nicht erlaubt!"},
       {"/A/", "/N/", 3, ", Steuerzeichen /A/ oder /E/ erwartet!"},
       {"/A/\"Köln\"", "/A/Köln", 3,
        ", Amtsbezeichnung muss (direkt) auf /A/ folgen und mit \" eingerahmt sein!"},
       {"Köln", "Köln am Rhein/1", 3, ", Amtsbezeichnung zu lang (max. 14 Zeichen)!"},
       {"Köln", "Kéln", 3, ", é nicht erlaubt!"},
       {"/Z/", "/A/", 4, ", Steuerzeichen /Z/ erwartet!"},
       {"/Z/\"123\"", "/Z/\"\"", 4,
        ", Amtskennzeichen muss (direkt) auf /Z/ folgen und mit \" eingerahmt sein!"},
       {"123", "12", 4, code},
       {"123", "1234", 4, code},
       {"123", "1'3", 4, ", ' nicht erlaubt!"},
       {"/N/", "/D/", 5, ", Steuerzeichen /N/ oder /B/ erwartet!"},
       {"/N/\"", "/N/-\"", 5, ", Messstellennummer muss (direkt) auf /N/ folgen und mit \" eingerahmt sein!"},
       {"12345678", "1234567", 5, number},
       {"12345678", "123456789", 5, number},
       {"12345678", "1234567A", 5, number},
       {"/D/", "/M/", 5, ", Steuerzeichen /D/ erwartet!"},
       {"/D/\" 0012\"", "/D/", 5, ", Differenz muss (direkt) auf /D/ folgen und mit \" eingerahmt sein!"},
       {" 0012", "+0012", 5, difference},
       {" 0012", "-12", 5, difference},
       {" 0012", " 00012", 5, difference},
       {" 0012", "-00x2", 5, difference},
       {"/M/", "/T/", 6, ", Steuerzeichen /M/ erwartet!"},
       {"/M/\"", "/M/ \"", 6, ", Differenz muss (direkt) auf /M/ folgen und mit \" eingerahmt sein!"},
       {"-0034", "00034", 6, difference},
       {"/T/", "/B/", 7, ", Steuerzeichen /T/ erwartet!"},
       {"/T/\"Brück\"", "/T/\"\"", 7,
        ", Messstellenbezeichnung muss (direkt) auf /T/ folgen und mit \" eingerahmt sein!"},
       {"\"Brück\" ä", "\"Brücke\" ö", 7, ", Messstellenbezeichnung zu lang (max. 5 Zeichen)!"},
       {"\"Brück\" ä", "\"Br&ck\" ö", 7, ", & nicht erlaubt!"},
       {"/B/", "", 9, ", Steuerzeichen /N/ oder /B/ erwartet!"},
       {"/B/ Ende\n/E/", "/B/\n/A/", 8, ", Steuerzeichen /A/ oder /E/ erwartet!"},
       {"/E/", "Ende", 10, ", Steuerzeichen /A/ oder /E/ erwartet!"}});
}

TEST(ParserReports, ParameterList) {
  const std::string valid =
      "/P/\"0012\" Nummer\n"
      "/T/\"Temp.Luft\"\n"
      "/M/\"°C \"\n"
      "/E/";
  const char* number = ", Parameternummer muss aus 4 Ziffern bestehen (0000...1023!";
  ExpectReports(
      ParseParTable, valid,
      {{"/P/", "/N/", 1, ", Steuerzeichen /P/ oder /E/ erwartet!"},
       {"/P/\"", "/P/'", 1, ", Parameternummer muss (direkt) auf /P/ folgen und mit \" eingerahmt sein!"},
       {"0012", "1024", 1, number},
       {"0012", "012", 1, number},
       {"0012", "00012", 1, number},
       {"0012", "00-2", 1, number},
       {"/T/", "/M/", 2, ", Steuerzeichen /T/ erwartet!"},
       {"/T/\"", "/T/\"\"", 2,
        ", Parameterbezeichnung muss (direkt) auf /T/ folgen und mit \" eingerahmt sein!"},
       {"Temp.Luft", "Temp. Luft", 2, ", Parameterbezeichnung muss aus genau 9 Zeichen bestehen!"},
       {"Temp.Luft", "Temp)", 2, ", ) nicht erlaubt!"},
       {"/M/", "/E/", 3, ", Steuerzeichen /M/ erwartet!"},
       {"°C \"", "°C ", 3, ", Maßeinheit muss (direkt) auf /M/ folgen und mit \" eingerahmt sein!"},
       {"°C ", "°C/h", 3, ", Maßeinheit muss aus genau 3 Zeichen bestehen!"},
       {"°C ", "US$", 3, ", $ nicht erlaubt!"},
       {"/E/", "", 4, ", Steuerzeichen /P/ oder /E/ erwartet!"}});
}

TEST(ParserReports, AssignmentTable) {
  const std::string valid =
      "\n"
      "/N/\"16777216\"\n"
      "/P/\"0001,0002,1023\"\n"
      "/E/";
  const char* length = ", Messstellennummer muss aus 8 Ziffern mit bestehen (00000000...15728639!";
  const char* range = ", Parameternummer muss aus 8 Ziffern mit bestehen (00000000...15728639!";
  const char* blocks =
      ", Parameterliste muss aus Blöcken mit 4 Ziffern (0000...1023) bestehen, die durch Komma getrennt sein "
      "müssen!";
  ExpectReports(
      ParseZuoTable, valid,
      {{"/N/", "/P/", 2, ", Steuerzeichen /N/ oder /E/ erwartet!"},
       {"/N/", "/N/ ", 2, ", Messstellennummer muss (direkt) auf /N/ folgen und mit \" eingerahmt sein!"},
       {"16777216", "1677721", 2, length},
       {"16777216", "167772160", 2, length},
       {"16777216", "16777217", 2, range},
       {"16777216", "1677721O", 2, range},
       {"/P/", "/N/", 3, ", Steuerzeichen /P/ erwartet!"},
       {"/P/", "/P/(", 3, ", Parameterliste muss (direkt) auf /P/ folgen und mit \" eingerahmt sein!"},
       {"0001,", "0001, ", 3, blocks},
       {"0001,", ",0001,", 3, blocks},
       {"1023", "1023,", 3, blocks},
       {"1023", "1024", 3, blocks},
       {"0001,", "0001;", 3, blocks},
       {"0001,", "001,", 3, blocks},
       {"1023", "x023", 3, blocks},
       {"/E/", "/e/", 4, ", Steuerzeichen /N/ oder /E/ erwartet!"}});
}

}  // namespace
}  // namespace ox
