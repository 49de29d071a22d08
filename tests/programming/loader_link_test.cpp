// Frames byte by byte, and what of the line counts as the loader's reply.
#include "programming/loader_link.h"

#include <gtest/gtest.h>

#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Pieces = std::vector<ScriptedDevice::Piece>;
using namespace std::string_literals;

TEST(LoaderLink, SendsTheFrameToALoaderThatWakesUpAndTakesTheFirstPieceAsReply) {
  TestHost host;
  const SessionSettings settings;
  LoaderLink link(host.host, settings);
  ScriptedDevice device(sim::kLoaderLine);
  host.ports.Connect(1, &device);
  link.OpenForLoader();
  const struct {
    std::size_t address, length;
    Bytes header;  // none: the loader does not wake up
    Pieces reply;
    Bytes result;
  } rows[] = {{0, 0, "P\x13\x58\0\0\0\0\x45"s, {{0.1, "A"}, {0.2, "\r"}}, "A"},
              {0x3F00, 256, "P\x13\x58\0\x3F\0\0\x06"s, {{2.9, "N"}}, "N"},
              {0xFF12, 255, "P\x13\x58\0\xFF\x12\xFF\x35"s, {{3.1, "A"}}, ""},
              {0, 0, "", {}, ""},
              {0, 0, "P\x13\x58\0\0\0\0\x45"s, {{0.1, "AA"}}, "AA"}};
  for (const auto& row : rows) {
    const Bytes data(row.length, '\xFE');
    device.Expect("S", row.header.empty() ? "AA" : "A");
    device.Expect(row.header.empty() ? "N" : row.header + data, row.reply);
    EXPECT_EQ(link.SendBlock(request::kWriteTables, row.address, data), row.result);
    host.windows.Pass(1);  // what is left over then the next exchange must discard
  }
  EXPECT_TRUE(device.Done());
  EXPECT_EQ(device.Unexpected(), "");
}

}  // namespace
}  // namespace ox::test
