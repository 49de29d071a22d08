// The loader of the simulated device, spoken to by frames made by hand.
#include "simulator/loader.h"

#include <gtest/gtest.h>

#include "platform/scratch_folder.h"
#include "simulator/demo_files.h"
#include "simulator/device.h"
#include "simulator/line_pc.h"
#include "simulator/sample_program.h"

namespace ox::sim {
namespace {

const Bytes kNoTables(16384, '\xFF');

Bytes Frame(char letter, unsigned address = 0, BytesView data = {}) {
  Bytes frame = Bytes(1, letter) + "\x13\x58" + '\0' + ByteOf(address >> 8U) + ByteOf(address) +
                ByteOf(static_cast<unsigned>(data.size()));
  unsigned sum = 0;
  for (const char byte : frame) sum += ByteValue(byte);
  return frame + ByteOf(0U - sum) + Bytes(data);
}

DeviceOptions InLoader(int generation) {
  DeviceOptions options;
  options.generation = generation;
  options.startInLoader = true;
  return options;
}

/// A device whose loader runs.
struct Bench {
  explicit Bench(int generation) : device(InLoader(generation)) {}

  /// One request after the other, each a wake-up and a frame; "P" brings one byte. The replies to the frames.
  Bytes Request(BytesView letters) {
    Bytes replies;
    for (const char letter : letters) {
      replies += pc.Talk({"S", Frame(letter, 0, letter == 'P' ? "x" : "")}).substr(2, 1);
    }
    return replies;
  }

  Device device;
  const Bytes& tables = device.Memory().Tables();
  LinePc pc{device, kLoaderLine, 100};
};

TEST(Loader, AnswersTheCatalogueOfItsGeneration) {
  const Bytes replies[] = {"NANNNNAANNANAAANANAN", "NANANNAANANNANANANAN", "NANNAAAANNANNANNAAAA"};
  for (const int generation : {1, 2, 3}) {
    Bench bench(generation);
    EXPECT_EQ(bench.Request("PVWabc2PWaP10P11PVLX"), replies[generation - 1]);
    const Bytes ready = generation < 3 ? "|" : "A|";  // without a program the loader stays, at its settings
    EXPECT_EQ((LinePc{bench.device}.Talk({"S"})), ready);
    bench.device.Restart();
    EXPECT_EQ((LinePc{bench.device}.Talk({"S"})), ready);
  }
  Bench third(3);
  EXPECT_EQ(third.Request("2cPVX"), "AAANN") << "the kind query opens the program and forgets the tables";
  EXPECT_EQ(third.tables, kNoTables);
}

TEST(Loader, NeedsAWakeUpBeforeEveryFrame) {
  Bench bench(2);
  const Bytes frame = Frame('V');
  EXPECT_EQ(bench.pc.Talk({frame, "S", "S", "N" + frame}), "|A|A||") << "a second wake-up begins again";
  EXPECT_EQ(bench.pc.Talk({"S" + frame + frame, "S" + Frame('V', 0, "x")}), "AA|AN|") << "only P has data";
}

TEST(Loader, RefusesABrokenHeaderAndIsInStepAfterIt) {
  Bench bench(2);
  bench.Request("2");
  for (const unsigned at : {0U, 1U, 2U, 3U, 4U, 5U, 7U}) {  // without 6 nobody knows how many bytes follow
    Bytes frame = Frame('P', 0x1200, Bytes(256, 'S'));
    frame[at] = ByteOf(ByteValue(frame[at]) + 4);
    if (at > 0 && at < 4) frame[7] = ByteOf(ByteValue(frame[7]) - 4);  // a sound sum of wrong bytes
    // A changed letter leaves no data to wait for, so the data wake the loader up.
    EXPECT_EQ(bench.pc.Talk({"S" + frame}), at == 0 ? "AN" + Bytes(256, 'A') + "|" : "AN|") << at;
    bench.pc.now += 1;
    EXPECT_EQ(bench.Request("V"), "A") << at;
  }
  EXPECT_EQ(bench.tables, kNoTables);
}

TEST(Loader, ForgetsAFrameThatWasCutOff) {
  const Bytes frame = Frame('P', 0x0300, CodeLikeBytes(256, 3));
  for (std::size_t cut = 1; cut < frame.size(); cut += 3) {
    Bench bench(2);
    bench.Request("2");
    bench.pc.Talk({"S" + frame.substr(0, cut)});
    bench.pc.now += Loader::kFrameSilence + 0.01;
    EXPECT_EQ(bench.Request("V") + bench.tables, "A" + kNoTables) << cut;
    bench.pc.Talk({"S" + frame.substr(0, cut)});
    bench.pc.now += Loader::kFrameSilence;
    EXPECT_EQ(bench.pc.Talk({frame.substr(cut)}), "A|") << "a pause is no end";
    EXPECT_EQ(bench.tables.substr(0x0300, 256), frame.substr(8));
  }
}

TEST(Loader, WritesPartOfABlockAndNothingBeyondTheArea) {
  Bench bench(2);
  bench.Request("2");
  const auto write = [&](unsigned at, const Bytes& data) {
    return bench.pc.Talk({"S" + Frame('P', at, data)});
  };
  EXPECT_EQ(write(16384 - 255, Bytes(255, '\x01')), "AA|");
  EXPECT_EQ(write(16384 - 255, Bytes(256, '\x02')) + write(0xFFFF, "x"), "AN|AN|");
  EXPECT_EQ(bench.tables, Bytes(16384 - 255, '\xFF') + Bytes(255, '\x01'));
}

TEST(Loader, StartsFromTheBeginningAfterAPause) {
  Bench bench(2);
  EXPECT_EQ(bench.Request("01V"), "AAN");
  bench.pc.now += Loader::kAttemptSilence;
  EXPECT_EQ(bench.Request("P"), "A");
  bench.pc.now += Loader::kAttemptSilence + 0.01;
  EXPECT_EQ(bench.Request("PV101"), "NANAA") << "nothing is prepared, but the loader runs";
  EXPECT_EQ(bench.device.Memory().SoftwareVersion(), "SW 3.20 11/2026 ") << "the factory's";
}

TEST(DemoPrograms, AreThoseOfTheFolder) {
  EXPECT_EQ(DemoProgram2(), ReadFile(OX_DEMO_FOLDER "/ox2.pro"));
  EXPECT_EQ(DemoProgram3(), ReadFile(OX_DEMO_FOLDER "/ox3.pr3"));
  EXPECT_EQ(DemoLoaderHex(), ReadFile(OX_DEMO_FOLDER "/OX3NEU.LDR"));
}

}  // namespace
}  // namespace ox::sim
