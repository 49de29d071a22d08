// Commands at a scripted device, in virtual time, and all that they say.
#include "tool/tool_program.h"

#include <new>
#include <sstream>

#include "support/test_host.h"
#include "tool/told_tables.h"
#include "tool/update_console.h"

namespace ox::tool {
namespace {

struct Tool : test::TestHost {
  Tool() {
    files.content["n.mes"] =
        R"(/S/"1" /A/"X" /Z/"101" /N/"12345678" /D/" 0000" /M/" 0000" /T/"Brü" /B/ . /E/)";
    ports.Connect(1, &device);
  }

  /// The output, the messages since the last call, the status.
  std::string Run(const std::string& arguments) {
    std::istringstream words(arguments);
    const int status = static_cast<int>(RunTool({std::istream_iterator<std::string>(words), {}}, console));
    return Said() + "= " + std::to_string(status);
  }
  std::string Said() { return std::exchange(output, {}).str() + std::exchange(messages, {}).str(); }

  test::ScriptedDevice device;
  bool stop = false;
  std::istringstream input;
  std::ostringstream output, messages;
  Console console{host,
                  input,
                  output,
                  messages,
                  {},
                  {.useDevice = [](const std::string&) { throw std::bad_alloc(); },
                   .holdEndRequests = [&]() -> const bool& { return stop; }}};
};

TEST(Tool, TellsWhatADeviceAnswers) {
  const std::tuple<const char*, Bytes, Bytes, const char*> rows[] = {
      {"poll", "P", "\r12345678: 0012 ?   7.50\r99999999: 0001     -13\x1B\rE\r",
       "12345678: 0012 ?   7.50\n99999999: 0001     -13.\n= 0"},
      {"poll --table n.mes", "P", "\r12345678: 0012 ?   7.50\rE\r", "   Brü  : 0012 ?   7.50\n= 0"},
      {"poll --count 2", "P", "\r12345678: 0012 ?   7.50\rE\r",
       "2026-11-16T10:00:00  12345678: 0012 ?   7.50\n2026-11-16T10:00:10  12345678: 0012 ?   7.50\n= 0"},
      {"poll --json --table n.mes", "P",
       "\r12345678: 0012 ?   7.50\r99999999: 0001     -13\rkein Messwert\rE\r",
       R"({"time":"2026-11-16T10:00:00","office":"101","point":"12345678","parameter":"0012","mark":"?","value":7.5,"name":"Brü"}
{"time":"2026-11-16T10:00:00","office":null,"point":"99999999","parameter":"0001","mark":null,"value":-13,"name":null}
{"time":"2026-11-16T10:00:00","office":null,"point":null,"parameter":null,"mark":null,"value":"kein Messwert","name":null}
= 0)"},
      {"poll --csv --office 205", "J205               \r", "\r12345678: 0012 ?   7.50\rE\r",
       "Amtskennzeichen;Messstellennummer;Parameter;Bewertungszeichen;Messwert;Name;Abrufzeit\r\n"
       "205;12345678;0012;?;7,50;;2026-11-16T10:00:00\r\n= 0"},
      {"poll --z --point 12345678 --parameter 0012", "Z    12345678: 0012\r", " 12345678: 0012 ?   7.50 m\r",
       "12345678: 0012 ?   7.50\n= 0"},
      {"poll --time", "T", " 16.11.26 10:00:00\r", "16.11.26 10:00:00\n= 0"},
      {"poll --point 12345678", "J    12345678:     \r", "\rE\r",
       "oxtool: die Orvanexe nennt keinen Wert dazu\n= 1"},
      {"watch", ">\x7F\r", ">031703B630390352007B0005\r",
       "11-16-2026 10:00:00  Akkuldg:  79.1%  Akkuspg: 0.850V  Netzteilspg: 12.345V  Kapazität:  95.0%  "
       "Temp.: 23°C  Ladebetrieb: Schnellladung\n"
       "11-16-2026 10:00:01  Akkuldg:  79.1%  Akkuspg: 0.850V  Netzteilspg: 12.345V  Kapazität:  95.0%  "
       "Temp.: 23°C  Ladebetrieb: Schnellladung\n"
       "oxtool: Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!\n= 1"},
      {"watch --count 1", ">\x7F\r", ">0000\r", "oxtool: die Antwort ist kein Stromversorgungsstatus\n= 1"},
  };
  for (const auto& [arguments, request, reply, said] : rows) {
    Tool tool;
    for (int turn = 0; turn < 2; ++turn) tool.device.Expect("S", "A").Expect(request, reply).Expect("A");
    EXPECT_EQ(tool.Run(std::string(arguments) + " --port COM1 --line 9600,O"), said) << arguments;
  }
}

TEST(Tool, ShowsOnATerminalWhatItIsAt) {
  Tool tool;
  tool.console.terminals = {true, true, true, false};
  const Bytes identification = "OX 2 \x1B V4.20         \r";
  test::ScriptedDevice device({2400, 'E', 7});
  tool.ports.Connect(1, &device.Expect("S", "A").Expect("K", identification));
  EXPECT_EQ(tool.Run("identify --json --port COM1"),
            R"({"type":"OX 2","version":". V4.20         ","baud":2400,"parity":"E","port":"1"})"
            "\n\rVerbindung wird geprüft: 9600,O\rVerbindung wird geprüft: 2400,E\r" +
                std::string(31, ' ') + "\r= 0");
  EXPECT_EQ(tool.Run("identify --port /dev/x"), "oxtool: Speicher voll\n= 1");
  test::ScriptedDevice other({9600, 'O', 7});
  tool.ports.Connect(1, &other.Expect("S", "A").Expect("K", identification));
  Console screen{tool.host,        tool.input, tool.messages, tool.messages, tool.console.terminals,
                 tool.console.host};
  RunTool({"identify", "--port", "COM1"}, screen);
  EXPECT_NE(tool.Said().find(" \rVerbindung ist"), std::string::npos);

  const DeviceOptions options{.port = "COM1", .line = "9600,O"};
  DeviceSession session(tool.console, options);
  const auto update = [&](LoaderLink&, const DeviceSearch&, UpdateObserver& observer) {
    auto& events = dynamic_cast<EventLoop&>(observer);
    const auto rest = [&](double seconds) {
      tool.windows.Pass(seconds);
      events.Rest();
    };
    observer.Step("Gerätetyp wird abgefragt ...", 5, 0);
    rest(0.5);
    rest(1.5);
    observer.Step("Tabellen ...", 5, 4);
    for (std::size_t block = 0; block < 4; ++block) {
      rest(1);
      observer.BlockSent(block);
      tool.stop = true;
    }
    observer.Step("Übernahme", 5, 0);
    observer.Tell("Fertig!\r\n");
    return UpdateEnd::kSucceeded;
  };
  EXPECT_EQ(RunOnConsole(tool.console, session, true, {}, update), ExitStatus::kFine);
  EXPECT_EQ(tool.Said(),
            "\rGerätetyp wird abgefragt ..."
            "\rGerätetyp wird abgefragt ... 2 s"
            "\rTabellen ... [....................] 0 %, noch 2 s"
            "\rTabellen ... [#####...............] 25 %, noch 2 s"
            "\r                                                  \r"
            "oxtool: das Gerät wird noch zu Ende programmiert, dann endet oxtool\n"
            "\rTabellen ... [#####...............] 25 %, noch 2 s"
            "\rTabellen ... [##########..........] 50 %, noch 2 s"
            "\rTabellen ... [##########..........] 50 %, noch 1 s"
            "\rTabellen ... [###############.....] 75 %, noch 1 s"
            "\rTabellen ... 4 s                                  "
            "\rÜbernahme       "
            "\r         \r"
            "oxtool: Fertig!\n");
}

TEST(Tool, AsksOnATerminalOnly) {
  const std::string question = "oxtool: Eins.\nzwei\n\t20 °C...\n";
  const std::string asked = question + "Fortfahren? [j/N] ";
  const std::string none = question + "oxtool: ohne Terminal heißt die Antwort Nein; --yes bejaht\n";
  const std::tuple<const char*, bool, bool, bool, bool, std::string> rows[] = {
      {"j", true, true, false, true, asked},     {"J", true, true, false, true, asked},
      {"ja\nx", true, true, false, true, asked}, {"Ja", true, true, false, true, asked},
      {"jx", true, true, false, false, asked},   {"", true, true, false, false, asked},
      {"j", false, true, false, false, none},    {"j", true, false, false, false, none},
      {"", false, false, true, true, question}};
  for (const auto& [typed, input, messages, yes, agrees, said] : rows) {
    Tool tool;
    tool.input.str(typed);
    tool.console.terminals = {.input = input, .messages = messages};
    EXPECT_EQ(Agrees(tool.console, "Eins\x1B\r\nzwei\r\t20 °C\x7F\xC2\x80\xC2\x9F\r\n\r", yes), agrees)
        << typed;
    EXPECT_EQ(tool.Said(), said) << typed;
  }
}

}  // namespace
}  // namespace ox::tool
