// The updates without a window: a line, a search for the device, somebody who is told; frames byte by byte.
#include "programming/loader_hex.h"
#include "programming/loader_link.h"
#include "programming/program_update.h"
#include "programming/table_update.h"
#include "programming/update_estimate.h"
#include "simulator/device/device.h"
#include "simulator/device/sample_program.h"
#include "support/difference.h"
#include "support/test_host.h"

namespace ox::test {

struct LoaderLinkTest : testing::Test {
  LoaderLinkTest() { host.ports.Connect(1, &device); }

  TestHost host;
  const SessionSettings settings;
  LoaderLink link{host.host, settings};
  ScriptedDevice device{sim::kLoaderLine};
};

TEST_F(LoaderLinkTest, SendsAFrameToALoaderThatIsAwakeAndTakesItsFirstPieceAsReply) {
  link.OpenForLoader();
  const Bytes data(255, '\xFE');
  const Bytes frame = Bytes("P\x13\x58\0\xFF\x12\xFF\x35", 8) + data;
  device.Expect("S", "A").Expect(frame, {{0.1, "A"}, {0.2, "N"}}).Expect("S", "A").Expect(frame, "AA");
  EXPECT_EQ(link.SendBlock(request::kWriteTables, 0xFF12, data), "A");
  host.windows.Pass(1);
  EXPECT_EQ(link.SendBlock(request::kWriteTables, 0xFF12, data), "AA");
  EXPECT_TRUE(device.Done());
}

TEST_F(LoaderLinkTest, AnAcknowledgementWithoutEndIsNone) {
  device.Say({{0.1, Bytes(1024 * 1024 + 1, 'x')}, {0.3, "@UPDATEACK\r"}});
  EXPECT_FALSE(link.RequestUpdateMode());
  EXPECT_LT(host.clock.Elapsed(), 0.3);
}

/// Writes down what it is told, a line for each step and message.
struct Transcript : UpdateObserver {
  void Step(std::string_view what, int longestSeconds, std::size_t blocks) override {
    text += std::to_string(longestSeconds) + "s " + std::to_string(blocks) + " " + std::string(what) + "\n";
  }
  void StartMarks() override { marks = 1; }
  void Mark() override { ++marks; }
  void BlockSent(std::size_t number) override { EXPECT_EQ(number, sent++); }
  void Tell(std::string_view message) override { text += message; }

  std::string text;
  int marks = 0;
  std::size_t sent = 0;
};

TEST(UpdateProcedures, TellEveryStepWithItsTimeAndItsBlocks) {
  Bytes image = sim::CodeLikeBytes(kChecksumOffset, 5);
  const unsigned sum = ImageChecksum(image);
  image += {ByteOf(sum), ByteOf(sum >> 8U)};
  const TableImages images{{ImageStatus::kBuilt, image}, {ImageStatus::kBuilt, {}}};
  const Bytes program2 = sim::SampleProgram(sim::kSmallProgram, "V6", 9);
  const Bytes program3 = sim::SampleProgram(sim::kLargeProgram, "V6", 9);
  const struct {
    int generation;
    bool inLoader;
    const Bytes& written;
    int marks;
    const char* told;
  } rows[] = {
      {3, false, image, 1 + 3 + 32,
       "1s 0 Lader wird angesprochen ...\n9s 0 Verbindung wird geprüft ...\n"
       "5s 0 Gerät wechselt in den Lader ...\n1s 0 Lader wird angesprochen ...\n"
       "1s 0 Gerätetyp wird abgefragt ...\n1s 0 Gerätetyp wird abgefragt ...\n"
       "30s 0 Gerät bereitet sich vor ...\n3s 64 Tabellen werden übertragen ...\n"
       "1s 0 Gerät prüft die Tabellen ...\n3s 0 Gerät nimmt den Betrieb wieder auf ...\n"
       "Tabellenupdate erfolgreich abgeschlossen!"},
      {2, true, program2, 1 + 3 + 32,
       "1s 0 Lader wird angesprochen ...\n1s 0 Lader wird angesprochen ...\n"
       "1s 0 Gerätetyp wird abgefragt ...\n30s 0 Gerät bereitet sich vor ...\n"
       "30s 0 Gerät bereitet sich vor ...\n5s 128 Programm wird übertragen ...\n"
       "1s 0 Gerät prüft das Programm ...\n3s 0 Gerät nimmt den Betrieb wieder auf ...\n"
       "Programmupdate erfolgreich abgeschlossen!"},
      {3, false, program3, 32,
       "9s 0 Verbindung wird geprüft ...\n5s 0 Gerät wechselt in den Lader ...\n"
       "1s 0 Gerätetyp wird abgefragt ...\n10s 256 Programm wird übertragen ...\n"
       "1s 0 Gerät prüft das Programm ...\n3s 0 Gerät nimmt den Betrieb wieder auf ...\n"
       "Programmupdate erfolgreich abgeschlossen!"},
  };
  for (const auto& [generation, inLoader, written, marks, told] : rows) {
    TestHost host;
    SessionSettings settings;
    LoaderLink link(host.host, settings);
    sim::Device device({.generation = generation, .startInLoader = inLoader});
    host.ports.Connect(1, &device);
    const Bytes type = "OX " + std::to_string(generation);
    const DeviceSearch search = [&] {
      EXPECT_EQ(host.ports.OpenCount(), 0);
      settings.DeviceIdent = type;
      return true;
    };
    Transcript transcript;
    const bool tables = &written == &image;
    EXPECT_EQ(tables ? RunTableUpdate(link, search, images, transcript)
                     : RunProgramUpdate(*FindDeviceKind(type), link, search, written, transcript),
              UpdateEnd::kSucceeded);
    EXPECT_EQ(transcript.text, told);
    EXPECT_EQ(transcript.marks, marks);
    EXPECT_EQ(transcript.sent, written.size() / 256);
    const Bytes& memory = tables ? device.Memory().Tables() : device.Memory().Program();
    EXPECT_EQ(Difference(memory, written, PartsOfLength(written, 256, "block")), "");
    EXPECT_EQ(host.ports.OpenCount(), 0);
  }
}

TEST(UpdateProcedures, TheSecondsThatRemainAreKnownSoonAndDoNotJump) {
  const struct {
    const char* what;
    double query, block, pauseBefore20;
    double knownFrom;     // this share of the time on, within a second
    const char* figures;  // after every 21st block
  } rows[] = {
      {"as fast as the line", LineTime(0), LineTime(256), 0, 0, "19 15 12 10 7 4 1"},
      {"behind a USB adapter", LineTime(0) + 0.032, LineTime(256) + 0.032, 0, 0, "23 19 15 12 8 5 1"},
      {"a slow memory", LineTime(0), 0.4, 0, 0.45, "19 23 28 26 18 10 1"},
      {"a slow answer, and one block is late", 2, 0.15, 3, 0.5, "31 17 14 11 7 4 1"},
      {"no line at all", 0, 0.001, 0, 0.5, "18 10 1 1 1 1 1"},
  };
  for (const auto& [what, query, block, pauseBefore20, knownFrom, figures] : rows) {
    constexpr int kBlocks = 128;
    TestClock clock;
    clock.StartAt(23, 59, 55);
    UpdateEstimate estimate;
    const auto step = [&](const char* name, std::size_t blocks, double seconds) {
      estimate.Step(name, blocks, clock.SecondsSinceMidnight());
      clock.Advance(seconds);
    };
    step("Gerätetyp wird abgefragt ...", 0, query);
    step("Gerät bereitet sich vor ...", 0, 2.9);
    step("Gerät bereitet sich vor ...", 0, 1.2);
    EXPECT_EQ(estimate.SecondsGone(clock.SecondsSinceMidnight()), 4);
    EXPECT_EQ(estimate.Percent(), 0);
    step("Programm wird übertragen ...", kBlocks, 0);
    int last = estimate.SecondsLeft(clock.SecondsSinceMidnight());
    std::string seen = std::to_string(last);
    double left = kBlocks * block + pauseBefore20;
    for (int part = 0; estimate.Sends(); ++part) {
      const double took = block + (part / 4 == 20 ? pauseBefore20 : 0);
      clock.Advance(took / 4);
      left -= took / 4;
      if (part % 4 == 3) estimate.BlockSent(clock.SecondsSinceMidnight());
      const int figure = estimate.SecondsLeft(clock.SecondsSinceMidnight());
      EXPECT_LE(figure - last, 1) << what;
      const bool known = left <= (1 - knownFrom) * kBlocks * block;
      EXPECT_NEAR(known ? figure : left, left + 0.5, 1.1) << what;
      last = figure;
      if (part % 84 == 83) seen += " " + std::to_string(figure);
    }
    EXPECT_EQ(seen, figures) << what;
    EXPECT_EQ(estimate.Percent(), 100);
  }
}

TEST(LoaderHex, ItsFirstFaultyLineIsFound) {
  const Bytes end = ":00000001FF\n", record = ":0100000041BE";
  EXPECT_EQ(FaultyHexLine(end), 0);
  EXPECT_EQ(FaultyHexLine(":01000a0041BF\n" + end), 1) << "a small letter is no digit, FF least of all";
  EXPECT_EQ(FaultyHexLine(record + "\r" + record + "\r\n" + record + "\nx\n" + end), 4);
}

TEST(ProgramFile, GetsACheckWordWhenItIsLoadedInGeneration2Only) {
  for (const auto& [format, end] : {std::pair(kProgramFormat2, "\1"), {kProgramFormat3, "\0"}}) {
    const Bytes empty(format.ProgramSize(), '\0');
    EXPECT_EQ(ReadProgramFile(BuildProgramFile(empty), format).program.substr(empty.size() - 2),
              Bytes(end, 2));
  }
}

TEST(UpdateProcedures, ADeviceIsUpdatedInTheWindowOfItsGeneration) {
  const std::pair<const char*, const char*> rows[] = {
      {"OX 1", "updatepro"}, {"OX 2", "updatepro"}, {"?", "updatepro"}, {"OX 3", "UpdateproOx3"}};
  for (const auto& [type, window] : rows)
    EXPECT_EQ(ProgramWindowKind(type).program.windowName, window) << type;
}

}  // namespace ox::test
