// The command line and the faults that it names.
#include "simulator/options.h"

#include <gtest/gtest.h>

#include "simulator/line_pc.h"

namespace ox::sim {
namespace {

TEST(Options, AreReadInBothSpellings) {
  std::string error;
  const SimulatorOptions read =
      ReadOptions({"--generation", "2", "--baud=4800", "--parity", "E", "--link=x=y", "--unpaced", "--kinds",
                   "b", "--seed", "42", "--fault", "unplug=7", "--fault=silence-after"},
                  error);
  EXPECT_EQ(error, "");
  EXPECT_EQ(read.parts.device.generation, 2);
  EXPECT_EQ(read.parts.device.baud, 4800U);
  EXPECT_EQ(read.parts.modem.line, (LineSettings{4800, 'E', 7}));
  EXPECT_EQ(read.parts.host.link, "x=y");
  EXPECT_FALSE(read.parts.host.paced);
  EXPECT_EQ(read.parts.device.loaderKinds, "b");
  EXPECT_EQ(read.parts.device.seed, 42U);
  EXPECT_EQ(read.parts.host.unplugAfter, 7U);
  EXPECT_EQ(read.parts.device.replies.silenceAfter, 2U) << "the fault's own value";
}

TEST(Options, RefuseWhatTheyDoNotKnow) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--nix"}, "unbekannte Option --nix"},
      {{"--baud"}, "--baud braucht einen Wert"},
      {{"--baud", "300"}, "--baud: 300 geht nicht"},
      {{"--generation", "4"}, "--generation: 4 geht nicht"},
      {{"--parity", "N"}, "--parity: N geht nicht"},
      {{"--kinds", "ax"}, "--kinds: ax geht nicht"},
      {{"--seed", "1x"}, "--seed: 1x geht nicht"},
      {{"--fault", "nix"}, "--fault: nix geht nicht"},
      {{"--fault", "unplug=-1"}, "--fault: unplug=-1 geht nicht"},
      {{"--fault", "unplug="}, "--fault: unplug= geht nicht"},
      {{"--fault", "silent=1"}, "--fault: silent=1 geht nicht"},
  };
  for (const auto& [arguments, message] : cases) {
    std::string error;
    ReadOptions(arguments, error);
    EXPECT_EQ(error, message);
  }
}

TEST(NamedFaults, DoToADeviceWhatTheyAreCalled) {
  struct Case {
    std::string fault;
    Bytes request;
    Bytes reply;
  };
  const Case cases[] = {
      {"silent", "K", "-"},
      {"wakeup=AA", "K", "-AA"},
      {"sleepy=1", "K", "-"},
      {"ident-n", "K", "N"},
      {"ident-short", "K", "OX 3 SW 3.2\r"},
      {"type=OX 9", "K", "OX 9 SW 3.20 11/2026 \r"},
      {"poll-r", "P", "R"},
      {"poll-n", "T", "N"},
      {"power-short", ">\xFF\r", "007D003B63039\r"},
      {"power-negative", ">\xFF\r", "0FFF9FC18FFFFCFC7005A0001\r"},
      {"late=1500", "K", "-"},
      {"split=1", "K", "OX 3 SW 3.20 11/2026 \r"},
      {"ack-no-cr", "K", "OX 3 SW 3.20 11/2026 \r"},
  };
  for (const Case& row : cases) {
    FaultTargets targets;
    ASSERT_TRUE(SwitchOn(row.fault, targets)) << row.fault;
    Device device(targets.device);
    for (const ReplyFault& fault : targets.replies) device.Faults().Add(fault);
    EXPECT_EQ(LinePc(device).Dialogue(row.request), row.reply) << row.fault;
  }
}

TEST(NamedFaults, AreAllInTheHelp) {
  const std::string help = HelpText();
  for (const char* name :
       {"--fault NAME[=WERT]", "block-n=10", "unplug=200", "modem-burst=15", "slow-2=20000"}) {
    EXPECT_NE(help.find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace ox::sim
