// The faults that oxsim can be told by name, each tried on a device.
#include "simulator/named_faults.h"

#include <gtest/gtest.h>

#include "simulator/device.h"
#include "simulator/line_pc.h"

namespace ox::sim {
namespace {

using namespace std::string_literals;

/// What a device with a fault replies to a wake-up and a request. To none, what its loader replies, which
/// erases the tables and takes two blocks, and what was written of the second.
Bytes Told(const std::string& fault, const Bytes& request = {}) {
  FaultTargets targets;
  targets.device.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012"}}};
  EXPECT_TRUE(SwitchOn(fault, targets));
  Device device(targets.device);
  for (const ReplyFault& each : targets.replies) device.Faults().Add(each);
  if (!request.empty()) return LinePc{device}.Talk({"S", request});
  Bytes told = LinePc{device}.Talk({"S@UPDATEREQ\r"});
  told += LinePc{device, kLoaderLine, 1}.Talk(
      {"S2\x13\x58\0\0\0\0\x63"s, "SP\x13\x58\0\0\0\x01\x44x"s, "SP\x13\x58\0\0\x01\x01\x43x"s});
  return told + device.Memory().Tables()[1];
}

TEST(NamedFaults, DoToADeviceWhatTheyAreCalled) {
  const std::tuple<std::string, Bytes, Bytes> rows[] = {
      {"silent", "S", "||"},      {"sleepy", "S", "|A|"},  {"wakeup=AA", "S", "AA|AA|"},
      {"late=1001", "S", "|AA|"}, {"late", "S", "A|A|"},   {"split=1001", "K", "A|O|"},
      {"ident-n", "K", "A|N|"},   {"poll-r", "P", "A|R|"}, {"poll-n", "T", "A|N|"}};
  for (const auto& [fault, request, replies] : rows) EXPECT_EQ(Told(fault, request), replies) << fault;
  EXPECT_EQ(Told("split=999", "K"), "A|OX 3 SW 3.20 11/2026 \r|");
  EXPECT_EQ(Told("type=OX 9", "K"), "A|OX 9 SW 3.20 11/2026 \r|");
  EXPECT_EQ(Told("ident-short", "K"), "A|OX 3 SW 3.2\r|");
  EXPECT_EQ(Told("records=2", "P"), "A|\r12345678: 0012     41.3\r12345678: 0012     41.7\rE\r|");
  EXPECT_EQ(Told("silence-after=1", "P"), "A|\r12345678: 0012     41.3\r|");
  EXPECT_EQ(Told("cut-record", "P"), "A|\r12345678: 00|");
  EXPECT_EQ(Told("cut-record", "J    12345678: 0012\r"), "A|012345678: 00|");
  EXPECT_EQ(Told("cut-record", "J    12345678: 0999\r"), "A|R|");
  EXPECT_EQ(Told("power-short", ">\xFF\r"), "A|007D003B63039\r|");
  EXPECT_EQ(Told("power-state", ">\xFF\r"), "A|007D003B6303903520017000B\r|");
  EXPECT_EQ(Told("power-negative", ">\xFF\r"), "A|0FFF9FC18FFFFCFC7005A0001\r|");

  EXPECT_EQ(Told("ack"), "@UPDATENAK\r|AA|AA|AA|x");
  EXPECT_EQ(Told("ack-no-cr"), "@UPDATEACK|AA|AA|AA|x");
  EXPECT_EQ(Told("slow-2=1001"), "@UPDATEACK\r|A|||x");
  // A block that is refused or swallowed is not written; one whose reply alone goes missing is.
  const std::pair<std::string, Bytes> second[] = {{"slow-2=999", "AA|x"},     {"block-n=1", "AN|\xFF"},
                                                  {"block-lost=1", "A|\xFF"}, {"block-silent=1", "A|x"},
                                                  {"block-aa=1", "AAA|x"},    {"block-noise=1", "A\177A|x"}};
  for (const auto& [fault, reply] : second) EXPECT_EQ(Told(fault), "@UPDATEACK\r|AA|AA|" + reply) << fault;
}

}  // namespace
}  // namespace ox::sim
