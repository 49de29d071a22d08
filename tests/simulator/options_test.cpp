// What oxsim can be told.
#include "simulator/program/options.h"

#include <gtest/gtest.h>

#include "simulator/program/memory_file.h"
#include "support/scratch_folder.h"

namespace ox::sim {
namespace {

TEST(Options, AreReadInBothSpellingsOrRefused) {
  std::string error;
  const SimulatorOptions read =
      ReadOptions({"--link=x=y", "--kinds", "b", "--tables=a", "--seed", "42", "--latency=16",
                   "--version-text", "SW4", "--loader", "--fault", "unplug=7", "--fault=late"},
                  error);
  EXPECT_EQ(error, "");
  const auto& [device, replies, modem, host] = read.parts;
  EXPECT_EQ(std::tuple(host.link, device.loaderKinds, read.tables, device.seed, device.version),
            std::tuple("x=y", "b", "a", 42U, "SW4"));
  EXPECT_EQ(std::tuple(device.startInLoader, host.unplugAfter, host.latency, replies.size()),
            std::tuple(true, 7U, 0.016, 1U));
  const std::pair<std::vector<std::string>, std::string> refused[] = {
      {{"--nix"}, "unbekannte Option --nix"},
      {{"--fault", "late", "x"}, "x ist zu viel"},
      {{"--loader=1"}, "--loader nimmt keinen Wert"},
      {{"--baud"}, "--baud braucht einen Wert"},
      {{"--baud=9600", "--baud"}, "--baud ist mehrfach angegeben"},
      {{"--baud=300"}, "--baud: 300 geht nicht"},
      {{"--seed", "1x"}, "--seed: 1x geht nicht"},
      {{"--version-text", "SW 3ö"}, "--version-text: SW 3ö geht nicht"},
      {{"--fault", "flag=ö"}, "--fault: flag=ö geht nicht"},
      {{"--fault", "silent=1"}, "--fault: silent=1 geht nicht"}};
  for (const auto& [words, told] : refused) {
    ReadOptions(words, error);
    EXPECT_EQ(error, told);
  }
  EXPECT_NE(HelpText().find("    slow-2=20000          löscht"), std::string::npos);
}

TEST(MemoryFile, KeepsWhatADeviceHoldsForADeviceOfItsKind) {
  const ScratchFolder folder;
  DeviceOptions options{.generation = 2};
  EXPECT_EQ(ReadMemoryFile("keller", options), "") << "from the factory";
  const Device device(options);
  WriteMemoryFile("keller", device.Memory());
  EXPECT_TRUE(ReadMemoryFile("keller", options) == device.Memory().Contents());
  options.generation = 3;
  EXPECT_THROW(ReadMemoryFile("keller", options), std::runtime_error);
}

}  // namespace
}  // namespace ox::sim
