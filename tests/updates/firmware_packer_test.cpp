// The packer's window: loader files, what is packed from them, paths and messages.
#include "updates/firmware_packer.h"

#include <algorithm>
#include <cmath>

#include "simulator/demo/demo_files.h"
#include "simulator/device/program_layout.h"
#include "support/difference.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

const Bytes kRecord = ":0100000041BE\n";
const Bytes kEnd = ":00000001FF\r\n";

struct FirmwarePacker : testing::Test {
  /// What the user is told when a source with this text is packed; he then types on without a start.
  std::string Pack(const Bytes& text, const std::string& from = "/neu") {
    host.files.content["/neu.LDR"] = text;
    host.windows.OnShown(window.Name(), [&](Window&) {
      EXPECT_EQ(window.TextQuelle.Text() + window.TextZiel.Text(), settings.SourcePath + settings.TargetPath);
      window.TextQuelle.Edit(from);
      window.TextZiel.Edit("/alt");
      window.TextZiel.Enter();
      for (TextBox* box : {&window.TextQuelle, &window.TextZiel}) box->Edit("/nur getippt");
      window.RequestClose();
    });
    host.windows.ShowModal(window);
    EXPECT_EQ(settings.SourcePath + settings.TargetPath, from + "/alt");
    return host.windows.TakeMessages().at(0);
  }

  TestHost host;
  SessionSettings settings;
  FirmwareOX3Verpacken window{host.host, settings};
  Bytes& target = host.files.content["/alt.pr3"];
};

TEST_F(FirmwarePacker, WritesEveryRecordToItsPlaceFillsTheRestAndSealsTheProgram) {
  const struct {
    const char* what;
    Bytes text;
    std::size_t at = 0;
    Bytes bytes = {};
  } rows[] = {
      {"on into the next page", ":0412FE0041424344E2\n" + kEnd, 0x12FE, "ABCD"},
      {"any count and type, every end of a field, the later record over the earlier",
       ":77002009411F,:01002100429C\r:01002100439B\r\n" + kEnd, 0x20, "AC"},
      {"up to the last byte, but no record from 0x8000 on",
       ":017FFF00" + Bytes(2 * 0x8001, 'F') + "82\n:01800000413E\n:01FFFF0041427E\n" + kEnd, 0x7FFF,
       Bytes(0x8001, '\xFF')},
      {"a record without data", ":00010000FF\n" + kEnd},
      {"nothing counts after the end record", ":000000zz\nrubbish"},
      {"blanks and quotes around a field", "  \":0100000041BE\" ,\":00000001FF\"\n", 0, "A"},
  };
  TestRandom random;
  for (const auto& [what, text, at, bytes] : rows) {
    EXPECT_EQ(Pack(text), "Vorgang erfolgeich beendet !") << what;
    Bytes program(sim::kLargeProgram.size, '\0');
    std::ranges::generate(program,
                          [&] { return ByteOf(static_cast<unsigned>(std::lround(random.Next() * 250))); });
    program.replace(at, bytes.size(), bytes);
    sim::SealProgram(program, sim::kLargeProgram);
    const Bytes file = sim::ProgramFile(program);
    EXPECT_EQ(Difference(target, file, PartsOfLength(file, 258, "record")), "") << what;
  }
}

TEST_F(FirmwarePacker, LeavesTheTargetAloneWhenAFileIsFaultyOrDoesNotOpen) {
  target = "older";
  // No end record, an open quote, other characters than digits in pairs, a wrong sum, a record too short or
  // beyond the end, too much behind it.
  for (const Bytes& text :
       {kRecord, "\xEF\xBB\xBF" + kRecord + kEnd, ":01000000414\n" + kEnd, ":01000a0041B4\n" + kEnd,
        "\"" + kRecord + kEnd, ":0100000041BF\n" + kEnd, ":010000FF\n" + kEnd,
        ":017FFF00" + Bytes(2 * 0x8002, 'F') + "83\n" + kEnd, kEnd + Bytes(4 << 20, '-')}) {
    EXPECT_EQ(Pack(text), "Fehler beim Lesen der Datei /neu.LDR !") << text.substr(0, 40);
  }
  EXPECT_EQ(Pack(kEnd, "/fehlt"), "Fehler beim Öffnen von /fehlt.LDR !");
  // Whatever the user calls it, the source is not written over.
  host.files.links["/alt.pr3"] = "/neu.LDR";
  EXPECT_EQ(Pack(kEnd), "Fehler beim Öffnen von /alt.pr3 !");
  EXPECT_TRUE(host.files.content["/neu.LDR"] == kEnd);
  host.files.links.clear();
  host.files.writable = false;
  EXPECT_EQ(Pack(kEnd), "Fehler beim Öffnen von /alt.pr3 !");
  EXPECT_EQ(target, "older");
}

}  // namespace
}  // namespace ox::test
