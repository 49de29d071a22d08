// The packer's window: loader files, what is packed from them, paths and messages.
#include "programming/firmware_packer.h"

#include <gtest/gtest.h>

#include "simulator/demo_files.h"
#include "simulator/program_layout.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

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
      EXPECT_EQ(window.TextQuelle.Text() + window.TextZiel.Text(), settings.SourcePath + settings.TargetPath);
      window.TextQuelle.Edit(from);
      window.TextZiel.Edit(to);
      window.CoStart.Click();
      window.TextQuelle.Edit("/nur getippt");
      window.RequestClose();
    });
    host.windows.ShowModal(window);
    EXPECT_EQ(settings.SourcePath + settings.TargetPath, from + to);
    return host.windows.TakeMessages().at(0);
  }

  TestHost host;
  Constant random;
  Host constant{host.windows, host.clock, host.ports, host.files, random};
  SessionSettings settings;
  FirmwareOX3Verpacken window{constant, settings};
  Bytes& source = host.files.content["/neu.LDR"];
  Bytes& target = host.files.content["/alt.pr3"];
};

TEST_F(FirmwarePacker, WritesEveryRecordToItsPlaceFillsTheRestAndSealsTheProgram) {
  const Bytes toTheEnd = ":017FFF00" + Bytes(2 * 0x8001, 'F') + "82\n";
  const struct {
    const char* what;
    Bytes text;
    std::size_t at = 0;
    Bytes bytes = {};
    double random = 0;
    char filler = '\0';
  } rows[] = {
      {"no records, least filler", kEnd, 0, "", 0.0021, '\x01'},
      {"half way", kEnd, 0, "", 0.5, '\x7D'},
      {"greatest filler", kEnd, 0, "", 0.99999, '\xFA'},
      {"one byte", ":0100FF0041BF\r\n" + kEnd, 0xFF, "A", 0.5, '\x7D'},
      {"on into the next page", ":0412FE0041424344E2\n" + kEnd, 0x12FE, "ABCD"},
      {"fields at commas", ":0100000041BE,:0100010042BC," + kEnd, 0, "AB"},
      {"a later record over an earlier one", ":0200000041BD\n:0100000042BD\n" + kEnd, 0, "B"},
      {"count and type do not matter", ":77002009411F\n" + kEnd, 0x20, "A"},
      {"no data", ":01002000DF\n" + kEnd},
      {"0x8000 and above is left out", ":01800000413E\n:01FFFF0041427E\n" + kEnd},
      {"on past 0x8000", ":047FFE004142434475\n" + kEnd, 0x7FFE, "ABCD"},
      {"up to the last byte", toTheEnd + kEnd, 0x7FFF, Bytes(0x8001, '\xFF')},
      {"no line end", ":00000001FF"},
      {"nothing counts after the end record", kEnd + "rubbish"},
      {"whatever the end record says", ":000000zz"},
  };
  for (const auto& row : rows) {
    source = row.text;
    random.number = row.random;
    EXPECT_EQ(Pack("/neu", "/alt"), "Vorgang erfolgeich beendet !") << row.what;
    Bytes program(sim::kLargeProgram.size, row.filler);
    program.replace(row.at, row.bytes.size(), row.bytes);
    sim::SealProgram(program, sim::kLargeProgram);
    EXPECT_TRUE(target == sim::ProgramFile(program)) << row.what;
  }
}

TEST_F(FirmwarePacker, LeavesTheTargetAloneWhenAFileIsFaultyOrDoesNotOpen) {
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
  }
  source = kEnd;
  EXPECT_EQ(Pack("/fehlt", "/alt"), "Fehler beim Öffnen von /fehlt.LDR !");
  host.files.writable = false;
  EXPECT_EQ(Pack("/neu", "/alt"), "Fehler beim Öffnen von /alt.pr3 !");
  EXPECT_EQ(target, "older");
}

}  // namespace
}  // namespace ox::test
