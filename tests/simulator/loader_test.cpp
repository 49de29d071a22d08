// The loader of the simulated device, spoken to by frames made by hand.
#include "simulator/loader.h"

#include <gtest/gtest.h>

#include "simulator/device.h"
#include "simulator/line_pc.h"

namespace ox::sim {
namespace {

Bytes Frame(char letter, unsigned address = 0, BytesView data = {}) {
  Bytes frame = Bytes(1, letter) + "\x13\x58" + '\0' + ByteOf(address >> 8U) + ByteOf(address) +
                ByteOf(static_cast<unsigned>(data.size()));
  unsigned sum = 0;
  for (const char byte : frame) sum += ByteValue(byte);
  return frame + ByteOf(0U - sum) + Bytes(data);
}

/// A device whose loader runs.
struct Bench {
  explicit Bench(int generation) : device({.generation = generation, .startInLoader = true}) {}

  /// One request after the other, each a wake-up and a frame; "P" brings one byte. The replies to the frames.
  Bytes Request(BytesView letters) {
    Bytes replies;
    for (const char letter : letters) {
      replies += pc.Talk({"S", Frame(letter, 0, letter == 'P' ? "x" : "")}).substr(2, 1);
    }
    return replies;
  }

  Device device;
  LinePc pc{device, kLoaderLine, 100};
};

TEST(Loader, AnswersTheCatalogueOfItsGeneration) {
  const Bytes replies[] = {"NANNNNAANNANAAANANAN", "NANANNAANANNANANANAN", "NANNAAAANNANNANNAAAA"};
  for (const int generation : {1, 2, 3}) {
    EXPECT_EQ(Bench(generation).Request("PVWabc2PWaP10P11PVLX"), replies[generation - 1]);
  }
}

TEST(Loader, NeedsAWakeUpBeforeEveryFrame) {
  Bench bench(2);
  const Bytes frame = Frame('V');
  EXPECT_EQ(bench.pc.Talk({frame, "S", "S", "N" + frame}), "|A|A||") << "a second wake-up begins again";
  EXPECT_EQ(bench.pc.Talk({"S" + frame + frame, "S" + Frame('V', 0, "x")}), "AA|AN|") << "only P has data";
}

TEST(Loader, WritesNothingThatItRefuses) {
  Bench bench(2);
  bench.Request("2");
  for (const unsigned at : {1U, 2U, 3U, 4U, 5U, 7U}) {
    Bytes frame = Frame('P', 0x1200, Bytes(256, 'S'));
    frame[at] = ByteOf(ByteValue(frame[at]) + 4);
    if (at < 4) frame[7] = ByteOf(ByteValue(frame[7]) - 4);  // a sound sum of wrong bytes
    EXPECT_EQ(bench.pc.Talk({"S" + frame}), "AN|") << at << ": the data are passed over";
  }
  const Bytes last(255, '\x01');
  EXPECT_EQ(bench.pc.Talk({"S" + Frame('P', 16129, last), "S" + Frame('P', 16129, last + "x")}), "AA|AN|");
  bench.device.Faults().Add({{ReplyStage::LoaderReply, 'P', 0, 1}, ReplyFault::Kind::Replaced, "N", 0, true});
  EXPECT_EQ(bench.Request("P"), "N");
  EXPECT_EQ(bench.device.Memory().Tables(), Bytes(16129, '\xFF') + last);
}

}  // namespace
}  // namespace ox::sim
