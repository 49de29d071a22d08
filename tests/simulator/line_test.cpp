// The line between the two ends: its time, to the character, and a real pseudo-terminal under a port's name.
#include <fcntl.h>
#include <unistd.h>

#include <map>

#include "platform/posix/posix_serial_port.h"
#include "simulator/device/device.h"
#include "simulator/pty/line_host.h"
#include "support/scratch_folder.h"
#include "support/test_host.h"

namespace ox::sim {
namespace {

/// A device that tells whether it has heard anything.
struct Ear : Device {
  using Device::Device;
  void Receive(BytesView bytes, const LineSettings& pc, Seconds now) override {
    heard = true;
    Device::Receive(bytes, pc, now);
  }
  bool heard = false;
};

/// An end on a pseudo-terminal, and the program's port at the other side of it.
struct Wire {
  explicit Wire(Endpoint& end, bool paced = false) : host(end, {"COM1", paced, std::nullopt}) {}

  void Open(const std::string& settings) {
    port.Close();
    port.SetSettings(settings);
    port.Open();
  }
  void Step() {
    host.Wait({});
    host.Work();
  }
  void Settle() {
    while (!host.Idle()) Step();
  }
  /// So many characters, or what has come of them after half a second.
  Bytes Read(std::size_t count) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    Bytes bytes = port.Input();
    while (bytes.size() < count && std::chrono::steady_clock::now() < end) bytes += port.Input();
    return bytes;
  }

  ScratchFolder folder;
  LineHost host;
  OpenPorts openPorts;
  PosixSerialPort port{openPorts};
};

TEST(Line, EveryPairOfSettingsIsJudgedAlikeInMemoryAndOnThePseudoTerminal) {
  const std::string loader = "19200,n,8,1";
  std::vector<std::string> all{loader};
  for (const std::string baud : {"2400", "4800", "9600", "19200"})
    for (const std::string parity : {",E,7,1", ",O,7,1"}) all.push_back(baud + parity);
  std::map<std::string, Bytes> understood;  // what a PC reads of "A", where it is no damage
  for (const std::string& own : all) {
    const LineSettings line = ParseLineSettings(own).value();
    const DeviceOptions options{.baud = line.baud, .parity = line.parity, .startInLoader = own == loader};
    for (const std::string& pc : all) {
      Device device(options);
      test::TestHost memory;
      memory.ports.Connect(1, &device);
      const auto port = memory.ports.Create();
      port->SetSettings(pc);
      port->SetCommPort(1);
      port->Open();
      port->Output("S");
      memory.clock.Advance(1);
      const Bytes read = port->Input();
      if (read == "A") understood[own] += pc == own ? "=" : pc;
      Ear there(options);
      Wire wire(there);
      wire.Open(pc);
      for (wire.port.Output("S"); !there.heard;) wire.Step();
      wire.Settle();
      EXPECT_EQ(wire.Read(read.size()), read) << pc << " at " << own;
    }
  }
  // "S" and "A" have an even number of ones: with 8 bits and no parity they pass for even parity.
  std::map<std::string, Bytes> expected;
  for (const std::string& own : all) expected[own] = "=";
  expected[loader] = "=19200,E,7,1";
  expected["19200,E,7,1"] = loader + "=";
  EXPECT_EQ(understood, expected);
}

TEST(Line, WhatAnEndHearsOfOneCharacter) {
  constexpr LineSettings kEven{9600, 'E', 7};
  constexpr LineSettings kOdd{9600, 'O', 7};
  constexpr LineSettings kEight{9600, 'N', 8};
  constexpr LineSettings kTwice{19200, 'N', 8};
  const std::tuple<char, LineSettings, LineSettings, std::vector<HeardCharacter>> rows[] = {
      {'V', kEight, kEven, {{'V', false}}},
      {'\x13', kEight, kEven, {{'\x13', true}}},
      {'\x93', kEight, kEven, {{'\x13', false}}},
      {'S', kEven, kOdd, {{'S', true}}},
      {'S', kOdd, kEight, {{'\xD3', false}}},
      {'S', kTwice, kEight, {{'\xFE', false}}},
      // The low start bit twice as long, then "A"'s bits in pairs, its stop bit late.
      {'A', kEight, kTwice, {{'\x06', true}, {'\xFE', false}}}};
  for (const auto& [sent, from, to, heard] : rows) EXPECT_EQ(Cross(sent, from, to), heard) << sent;
  EXPECT_EQ(CrossToPc("AS", kOdd, kEven), Bytes(2, '\0')) << "the host reads a damaged character as NUL";
}

TEST(LineHost, HearsWhatWasSentBeforeThePortWasSetAnewHoweverLateItReads) {
  Device device({});
  Wire wire(device);
  wire.Open("9600,O,7,1");
  wire.port.Output("S@UPDATEREQ\r");
  wire.Open("19200,n,8,1");
  wire.Step();
  wire.Settle();
  EXPECT_EQ(wire.Read(11), "@UPDATEACK\r");
  wire.port.Output("S");
  wire.Open("9600,O,7,1");
  wire.port.Output("S");
  wire.Step();
  wire.Settle();
  EXPECT_EQ(wire.Read(1), "") << "what was sent last is heard as it was sent";
}

TEST(LineHost, TakesFromThePcWhatTheLineCarriesAndNoMore) {
  test::ScriptedDevice end;
  Wire wire(end, true);
  constexpr std::size_t kHostBuffers = 100000;
  const Bytes piece(4096, 'x');
  const int pc = open("COM1", O_WRONLY | O_NOCTTY | O_NONBLOCK);
  std::size_t taken = 0;
  for (int refusals = 0; refusals < 100 && taken < 3 * kHostBuffers;) {
    const ssize_t count = write(pc, piece.data(), piece.size());
    if (count < 0) ++refusals;
    taken += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    wire.Step();
  }
  close(pc);
  EXPECT_LT(taken, kHostBuffers);
}

TEST(PacedLine, EveryCharacterTakesItsBitsHoweverLateSomebodyLooks) {
  constexpr LineSettings kLine{1000, 'O', 7};  // one character in 10 ms
  test::ScriptedDevice end(kLine);
  end.Expect("xy", "XY");
  PacedLine line(end, true);
  line.FromPc("x", kLine, 1);
  line.FromPc("y", kLine, 1);
  EXPECT_DOUBLE_EQ(line.NextEvent().value(), 1.01);
  const std::pair<Seconds, Bytes> arrivals[] = {{1.0299, ""}, {1.0301, "X"}, {1.0399, ""}, {1.0401, "Y"}};
  for (const auto& [now, arrived] : arrivals) EXPECT_EQ(line.Advance(now, kLine), arrived) << now;
}

TEST(UsbAdapter, HandsOnWhatHasComeOnceTheFirstOfItHasWaitedLongEnough) {
  UsbAdapter adapter(0.016);
  Bytes handedOn;
  for (const auto& [now, arrived] :
       {std::pair(1.000, "a"), {1.010, "b"}, {1.017, "c"}, {1.018, "d"}, {1.033, ""}, {1.035, ""}}) {
    adapter.Receive(arrived, now);
    handedOn += adapter.Take(now) + "|";
  }
  EXPECT_EQ(handedOn, "||abc|||d|");
}

TEST(LineHost, TakesOnlyANameThatIsItsOwnUntilTheCableIsPulled) {
  const ScratchFolder folder;
  test::ScriptedDevice end;
  std::filesystem::create_symlink("/dev/pts/987654", "COM1");
  LineHost host(end, {"COM1", false, 1});
  EXPECT_EQ(std::filesystem::read_symlink("COM1"), host.Path()) << "a left link is replaced";
  EXPECT_THROW(LineHost(end, {.link = std::filesystem::absolute("COM1")}), std::system_error)
      << "and one in use is not";
  EXPECT_EQ(std::filesystem::read_symlink("COM1"), host.Path());
  OpenPorts openPorts;
  PosixSerialPort port(openPorts);
  port.SetSettings("9600,O,7,1");
  port.Open();
  port.Output("S");
  host.Wait({});
  EXPECT_EQ(host.Path(), "");
  EXPECT_THROW(port.Input(), PortError);
  EXPECT_FALSE(std::filesystem::is_symlink("COM1"));
  EXPECT_THROW(LineHost(end, {}), std::system_error) << "the cable is soon in its place again";
  WriteFile("COM2", "x");
  EXPECT_THROW(LineHost(end, {.link = "COM2"}), std::system_error);
  EXPECT_EQ(ReadFile("COM2"), "x");
}

}  // namespace
}  // namespace ox::sim
