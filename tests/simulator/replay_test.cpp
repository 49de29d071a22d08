// The device's side of a support log, played again.
#include "simulator/replay/replayed_end.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ox::sim {
namespace {

const std::string kHeader = "Orvanexe Service 4.0.0, Protokoll 1, begonnen 2026-11-23 23:59:58\n";
const std::string kOpening = "10 COM1 Öffnung 1 \"9600,O,7,1\"\n";
constexpr LineSettings kLine{9600, 'O', 7};

TEST(Replay, LogsThatAreNoneAreRefused) {
  const std::string longLine(20000, '1');
  const std::string none = "ist kein Protokoll von Orvanexe Service";
  const std::pair<std::string, std::string> rows[] = {
      {"", none},
      {"Orvanexe Service", none},
      {std::string(9, '\0') + kHeader, none},
      {"Orvanexe Service 5, Protokoll 1, begonnen gestern\n", none},
      {"Orvanexe Service 5, Protokoll 2, anders\n",
       "ist ein Protokoll der Form 2, die dieses oxsim nicht kennt"},
      {longLine, "Zeile 1 ist zu lang für ein Protokoll"},
      {kHeader + longLine, "Zeile 2 ist zu lang für ein Protokoll"},
      {kHeader, "enthält keine Öffnung 1"},
      {kHeader + "1 Fenster auf \"Öffnung\"\n2 COM1 zu\n", "enthält keine Öffnung 1"},
      {kHeader + kOpening.substr(0, kOpening.size() - 1), "enthält keine Öffnung 1"}};
  for (const auto& [log, told] : rows) {
    std::istringstream text(log);
    try {
      const ReplayedEnd end(text);
      ADD_FAILURE() << log;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), told);
    }
  }
  std::istringstream foreign(
      "\xEF\xBB\xBFOrvanexe Service \x1B[2J\xC2\x9B, Protokoll 1, begonnen 2026-11-23 23:59:58\n");
  EXPECT_EQ(LookThrough(foreign).header.build, "Orvanexe Service .[2J..") << "it is shown on a terminal";
  for (const char* line :
       {"x", "-1 Ende", "1", "99999999999 Ende", "1 COM", "1 COM1", "1 COM1 > x", "1 COM1 > \"",
        "1 COM1 > \"\"", "1 COM1 > \"<0\"", "1 COM1 > \"<0x>\"", "1 COM1 < \"A\" 5", "1 COM1 < \"A\" +",
        "1 COM1 Öffnung 1", "1 COM1 Öffnung 1 \"9600\"", "1 COM1 Öffnung x \"9600,O,7,1\"",
        "1 COM99999999999 zu"}) {
    std::istringstream text(kHeader + line + "\n");
    EXPECT_THROW(LookThrough(text), std::runtime_error) << line;
  }
}

/// What the end says, and when, while the PC does what the letters tell: "o" opens, "c" closes, "e" changes
/// the parity, "." lets 10 ms pass, all others are sent. A pulled cable is "!".
std::string Played(ReplayedEnd& end, const std::string& acts) {
  std::string said;
  Seconds now = 5;
  LineSettings pc = kLine;
  for (const char act : acts) {
    if (act == 'o') end.PortOpened(now);
    if (act == 'c') end.PortClosed(now);
    if (act == 'e') pc.parity = 'E';
    if (act == '.') said += '.', now += 0.010001;
    if (act >= 'A' && act <= 'Z') end.Receive(Bytes(1, act), pc, now);
    if (end.NextUnplugging().value_or(now + 1) <= now) said += '!', end.Unplugged(now);
    said += end.TakeSome(now, Bytes::npos);
  }
  return said + (end.Ended() ? "" : " and waits");
}

TEST(Replay, AnswersWhatWasAnsweredAfterTheSameTimeAndTellsTheFirstDifference) {
  const std::string line3 = " (Zeile 3 des Protokolls, 23:59:58,100): erwartet ";
  const std::string second = "100 COM1 > \"S\"\n200 COM1 zu\n300 COM1 Öffnung 2 ";
  const std::tuple<std::string, std::string, std::string, std::string> rows[] = {
      {"100 COM1 > \"ST\"\n110 COM1 < \"abc\" +20\n200 COM1 zu\n", "oST.....c", ".a.b.c..", ""},
      {"100 COM1 > \"ST\"\n110 COM1 < \"ab\" +20\n", "oS..T..", "...a. and waits", ""},
      {"100 COM1 > \"S\"\r\n110 COM1 < \"a\" +20\r\n200 COM1 zu\r\n", "oS..c", ".a.", ""},
      {"100 COM1 > \"S\"\n110 COM1 < \"a\"\n120 COM1 > \"T\"\n130 COM1 < \"b\"\n", "oST...c", ".a.b.", ""},
      {"30 COM1 < \"a\"\n40 COM1 zu\n90 COM1 Öffnung 2 \"9600,O,7,1\"\n99 COM1 < \"b\"\n", "o...co..c",
       "..a..b.", ""},
      {"100 COM1 > \"S\"\n130 COM1 abgerissen \"x\"\n140 COM1 nicht geöffnet \"\" \"x\"\n", "oS....", "...!.",
       ""},
      {"100 COM1 > \"SABC\"\n", "oSAX", "", "Öffnung 1, Zeichen 3" + line3 + "\"SABC\", gesehen \"SAX\""},
      {"100 COM1 > \"" + std::string(30, 'S') + "<0D>\"\n", "o" + std::string(31, 'S'), "",
       "Öffnung 1, Zeichen 31" + line3 + "...\"" + std::string(20, 'S') + "<0D>\", gesehen ...\"" +
           std::string(21, 'S') + "\""},
      {"100 COM1 > \"S\"\n2500 COM1 zu\n", "oST", "",
       "Öffnung 1, Zeichen 1 (Zeile 4 des Protokolls, 00:00:00,500): erwartet nichts mehr, gesehen \"T\""},
      {"100 COM1 > \"S\"\n", "oSTc", "", ""},
      {second + "\"9600,E,7,1\"\n310 COM1 > \"T\"\n", "oeScoTc", "", ""},
      {second + "\"9600,O,7,1\"\n310 COM1 > \"T\"\n", "oeScoTc", "",
       "Öffnung 1, Zeichen 1" + line3 + "9600,O,7,1, gesehen 9600,E,7,1"}};
  for (const auto& [lines, acts, said, difference] : rows) {
    std::istringstream text(kHeader + kOpening + lines);
    ReplayedEnd end(text);
    EXPECT_EQ(Played(end, acts), said) << lines;
    EXPECT_EQ(end.Difference(), difference);
  }
  std::istringstream text(kHeader + kOpening + second + "\"9600,O,7,1\"\n310 COM1 > \"T\"\n");
  ReplayedEnd end(text, 2);
  EXPECT_EQ(Played(end, "oTc"), "");
  EXPECT_EQ(end.Difference(), "");
}

}  // namespace
}  // namespace ox::sim
