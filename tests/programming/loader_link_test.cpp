// Frames byte by byte, and that what is left of one reply is not taken for the next.
#include "programming/loader_link.h"

#include <gtest/gtest.h>

#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {

TEST(LoaderLink, SendsAFrameToALoaderThatIsAwakeAndTakesItsFirstPieceAsReply) {
  TestHost host;
  const SessionSettings settings;
  LoaderLink link(host.host, settings);
  ScriptedDevice device(sim::kLoaderLine);
  host.ports.Connect(1, &device);
  link.OpenForLoader();
  const Bytes data(255, '\xFE');
  const Bytes frame = Bytes("P\x13\x58\0\xFF\x12\xFF\x35", 8) + data;
  device.Expect("S", "A").Expect(frame, {{0.1, "A"}, {0.2, "N"}}).Expect("S", "A").Expect(frame, "AA");
  EXPECT_EQ(link.SendBlock(request::kWriteTables, 0xFF12, data), "A");
  host.windows.Pass(1);
  EXPECT_EQ(link.SendBlock(request::kWriteTables, 0xFF12, data), "AA");
  EXPECT_TRUE(device.Done());
}

TEST(LoaderLink, AnAcknowledgementWithoutEndIsNone) {
  TestHost host;
  const SessionSettings settings;
  LoaderLink link(host.host, settings);
  ScriptedDevice device(sim::kLoaderLine);
  host.ports.Connect(1, &device);
  device.Expect("!", {{0.1, Bytes(1024 * 1024 + 1, 'x')}, {0.3, "@UPDATEACK\r"}});
  device.Receive("!", device.Line(), 0);
  EXPECT_FALSE(link.RequestUpdateMode());
  EXPECT_LT(host.clock.Elapsed(), 0.3);
}

}  // namespace ox::test
