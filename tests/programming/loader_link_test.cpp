// Frames byte by byte, and what of the line counts as the loader's reply.
#include "programming/loader_link.h"

#include <gtest/gtest.h>

#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Pieces = std::vector<ScriptedDevice::Piece>;
using namespace std::string_literals;

struct LoaderLinkTest : testing::Test {
  LoaderLinkTest() {
    host.ports.Connect(1, &device);
    link.OpenForLoader();
  }

  TestHost host;
  SessionSettings settings;
  ScriptedDevice device{sim::kLoaderLine};
  LoaderLink link{host.host, settings};
};

TEST_F(LoaderLinkTest, SendsTheFrameToALoaderThatWakesUpAndTakesTheFirstPieceAsReply) {
  const struct {
    std::size_t address, length;
    Bytes header;
    Pieces reply;
    Bytes result;
  } rows[] = {{0, 0, "P\x13\x58\0\0\0\0\x45"s, {{0.1, "A"}, {0.2, "\r"}}, "A"},
              {0x3F00, 256, "P\x13\x58\0\x3F\0\0\x06"s, {{2.9, "N"}}, "N"},
              {0xFF12, 255, "P\x13\x58\0\xFF\x12\xFF\x35"s, {{3.1, "A"}}, ""},
              {0, 0, "P\x13\x58\0\0\0\0\x45"s, {{0.1, "AA"}}, "AA"}};
  for (const auto& row : rows) {
    const Bytes data(row.length, '\xFE');
    device.Expect("S", Pieces{{0.9, "A"}}).Expect(row.header + data, row.reply);
    EXPECT_EQ(link.SendBlock(request::kWriteTables, row.address, data), row.result);
    host.windows.Pass(1);  // what is left over then the next exchange must discard
  }
  for (const Pieces& wakeUp : {Pieces{}, {{1.1, "A"}}, {{0, "N"}}, {{0, "AA"}}}) {
    device.Expect("S", wakeUp).Expect("N");
    EXPECT_EQ(link.SendBlock(request::kWriteTables), "");
    host.windows.Pass(1);
  }
  EXPECT_TRUE(device.Done());
  EXPECT_EQ(device.Unexpected(), "");
}

TEST_F(LoaderLinkTest, AtMidnightAReplyIsAwaitedWithoutEndAndTheAcknowledgementNotAtAll) {
  host.clock.StartAt(23, 59, 59.5);
  device.Expect("S", Pieces{{400, "A"}}).Expect("V\x13\x58\0\0\0\0\x3F"s, "A");
  EXPECT_TRUE(link.Accepts(request::kProbe));
  const double start = host.clock.Elapsed();
  host.clock.StartAt(23, 59, 59.5 - start);
  EXPECT_FALSE(link.RequestUpdateMode());
  EXPECT_NEAR(host.clock.Elapsed() - start, 0.5, 0.02);
}

}  // namespace
}  // namespace ox::test
