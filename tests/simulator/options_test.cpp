// The command line of oxsim.
#include "simulator/options.h"

#include <gtest/gtest.h>

#include <iterator>
#include <regex>
#include <sstream>

namespace ox::sim {
namespace {

/// Reads a command line; what is wrong with it, empty when nothing is.
std::string Read(const std::string& line, SimulatorOptions& options) {
  std::istringstream words(line);
  std::string error;
  options = ReadOptions({std::istream_iterator<std::string>(words), {}}, error);
  return error;
}

TEST(Options, AreReadInBothSpellings) {
  SimulatorOptions read;
  const std::string error = Read(
      "--generation 2 --baud=4800 --parity E --version-text SW4 --kinds b --loader --modem --link=x=y "
      "--tables=a --seed 42 --unpaced --dump b --help --fault unplug=7 --fault=modem-burst",
      read);
  EXPECT_EQ(error, "");
  const auto& [device, replies, modem, host] = read.parts;
  EXPECT_EQ(std::tuple(device.generation, device.baud, device.parity, device.version, device.loaderKinds),
            std::tuple(2, 4800U, 'E', "SW4", "b"));
  EXPECT_EQ(std::tuple(device.seed, device.startInLoader, host.link, host.unplugAfter, host.paced),
            std::tuple(42U, true, "x=y", 7U, false));
  EXPECT_EQ(std::tuple(modem.line, modem.burstPeriod), std::tuple(LineSettings{4800, 'E', 7}, 15));
  EXPECT_EQ(std::tuple(read.modem, read.tables, read.dump, read.help), std::tuple(true, "a", "b", true));
}

TEST(Options, RefuseWhatTheyDoNotKnow) {
  SimulatorOptions read;
  EXPECT_EQ(Read("--nix", read), "unbekannte Option --nix");
  EXPECT_EQ(Read("--baud", read), "--baud braucht einen Wert");
  for (const std::string option : {"baud 300", "generation 4", "parity N", "kinds ax", "seed 1x", "fault nix",
                                   "fault unplug=-1", "fault unplug=", "fault silent=1"}) {
    EXPECT_EQ(Read("--" + option, read),
              "--" + std::regex_replace(option, std::regex(" "), ": ") + " geht nicht");
  }
  EXPECT_TRUE(
      std::regex_search(HelpText(), std::regex("--fault NAME.=WERT. +schaltet[^]* slow-2=20000 +löscht")));
}

}  // namespace
}  // namespace ox::sim
