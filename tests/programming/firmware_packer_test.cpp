// The packer's window: loader files, what is packed from them, paths and messages.
#include "programming/firmware_packer.h"

#include <gtest/gtest.h>

#include "simulator/demo_files.h"
#include "simulator/program_layout.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

const std::string kDone = "Vorgang erfolgeich beendet !";
const Bytes kEnd = ":00000001FF\r\n";

/// Always the same number.
struct Constant : RandomNumbers {
  double Next() override { return number; }
  double number = 0;
};

struct FirmwarePacker : testing::Test {
  /// What the user is told when the source is packed into the target.
  std::string Pack(const std::string& from, const std::string& to) {
    host.windows.OnShown(window.Name(), [&](Window&) {
      window.TextQuelle.Edit(from);
      window.TextZiel.Edit(to);
      window.CoStart.Click();
      window.RequestClose();
    });
    host.windows.ShowModal(window);
    const auto messages = host.windows.TakeMessages();
    return messages.size() == 1 ? messages.front() : "not one message";
  }

  TestHost host;
  Constant random;
  Host constant{host.windows, host.clock, host.ports, host.files, random};
  SessionSettings settings;
  FirmwareOX3Verpacken window{constant, settings};
  Bytes& source = host.files.content["/neu.LDR"];
  Bytes& target = host.files.content["/alt.pr3"];
};

TEST_F(FirmwarePacker, WritesEveryRecordToItsPlaceAndSealsTheProgram) {
  const Bytes toTheEnd = ":017FFF00" + Bytes(2 * 0x8001, 'F') + "82\n";
  const struct {
    const char* what;
    Bytes records;
    std::size_t at;
    Bytes bytes;
  } rows[] = {
      {"no records", "", 0, ""},
      {"one byte", ":0100FF0041BF\r\n", 0xFF, "A"},
      {"on into the next page", ":0412FE0041424344E2\n", 0x12FE, "ABCD"},
      {"fields at commas", ":0100000041BE,:0100010042BC,", 0, "AB"},
      {"a later record over an earlier one", ":0200000041BD\n:0100000042BD\n", 0, "B"},
      {"count and type do not matter", ":77002009411F\n", 0x20, "A"},
      {"no data", ":01002000DF\n", 0, ""},
      {"0x8000 and above is left out", ":01800000413E\n:01FFFF0041427E\n", 0, ""},
      {"on past 0x8000", ":047FFE004142434475\n", 0x7FFE, "ABCD"},
      {"up to the last byte", toTheEnd, 0x7FFF, Bytes(0x8001, '\xFF')},
  };
  for (const auto& row : rows) {
    source = row.records + kEnd;
    EXPECT_EQ(Pack("/neu", "/alt"), kDone) << row.what;
    Bytes program(sim::kLargeProgram.size, '\0');
    program.replace(row.at, row.bytes.size(), row.bytes);
    sim::SealProgram(program, sim::kLargeProgram);
    EXPECT_TRUE(target == sim::ProgramFile(program)) << row.what;
  }
}

TEST_F(FirmwarePacker, EndsAtTheEndRecord) {
  source = kEnd;
  Pack("/neu", "/alt");
  const Bytes empty = target;
  for (const Bytes& end : {Bytes(":00000001FF"), kEnd + "rubbish", Bytes(":000000zz")}) {
    source = end;
    EXPECT_EQ(Pack("/neu", "/neuer"), kDone) << end;
    EXPECT_TRUE(host.files.content["/neuer.pr3"] == empty) << end;
  }
}

TEST_F(FirmwarePacker, FillsWhatNoRecordWrites) {
  source = kEnd;
  for (const auto& [number, filler] : {std::pair{0.0021, '\x01'}, {0.5, '\x7D'}, {0.99999, '\xFA'}}) {
    random.number = number;
    EXPECT_EQ(Pack("/neu", "/alt"), kDone);
    Bytes program(sim::kLargeProgram.size, filler);
    sim::SealProgram(program, sim::kLargeProgram);
    EXPECT_TRUE(target == sim::ProgramFile(program)) << number;
  }
}

TEST_F(FirmwarePacker, RefusesFaultyFiles) {
  target = "older";
  const Bytes good = ":0100000041BE\n";
  for (const Bytes& text :
       {Bytes(), Bytes("\r\n"), good, good + ":00000", good + "x\n" + kEnd, good + "\n" + kEnd,
        good + " " + kEnd, "\xEF\xBB\xBF" + good + kEnd, ":0100000041BF\n" + kEnd, ":01000000414\n" + kEnd,
        ":010000004\n" + kEnd, ":01000A0041b4\n" + kEnd, ":01000a0041B4\n" + kEnd, ":01000A00 41B4\n" + kEnd,
        ":0100000041BE \n" + kEnd, ":\n" + kEnd, ":01FF\n" + kEnd, ":010000FF\n" + kEnd,
        ":017FFF00" + Bytes(2 * 0x8002, 'F') + "83\n" + kEnd,
        // Sound, but with more line ends behind it than any loader file is long.
        kEnd + Bytes(5 * 1024 * 1024, '\n')}) {
    source = text;
    EXPECT_EQ(Pack("/neu", "/alt"), "Fehler beim Lesen der Datei /neu.LDR !") << text.substr(0, 40);
    EXPECT_EQ(target, "older");
  }
}

TEST_F(FirmwarePacker, NamesTheFileThatDoesNotOpen) {
  source = kEnd;
  target = "older";
  EXPECT_EQ(Pack("/fehlt", "/alt"), "Fehler beim Öffnen von /fehlt.LDR !");
  EXPECT_EQ(Pack("", "/alt"), "Fehler beim Öffnen von .LDR !");
  host.files.writable = false;
  EXPECT_EQ(Pack("/neu", "/alt"), "Fehler beim Öffnen von /alt.pr3 !");
  EXPECT_EQ(target, "older");
}

TEST_F(FirmwarePacker, KeepsThePathsOfTheLastStart) {
  settings.SourcePath = "/alte Quelle";
  settings.TargetPath = "/altes Ziel";
  host.windows.OnShown(window.Name(), [&](Window&) {
    EXPECT_EQ(window.TextQuelle.Text(), "/alte Quelle");
    EXPECT_EQ(window.TextZiel.Text(), "/altes Ziel");
    window.TextQuelle.Edit("/nur getippt");
    window.RequestClose();
  });
  host.windows.ShowModal(window);
  EXPECT_EQ(settings.SourcePath, "/alte Quelle");
  Pack("/fehlt", "/Gerät");
  EXPECT_EQ(settings.SourcePath, "/fehlt");
  EXPECT_EQ(settings.TargetPath, "/Gerät");
}

}  // namespace
}  // namespace ox::test
