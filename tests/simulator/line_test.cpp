// The line between the two ends: its time, to the character, and a real pseudo-terminal under a port's name.
#include <gtest/gtest.h>

#include "platform/posix/posix_serial_port.h"
#include "platform/scratch_folder.h"
#include "simulator/pty/line_host.h"
#include "support/scripted_device.h"

namespace ox::sim {

TEST(PacedLine, EveryCharacterTakesItsBitsHoweverLateSomebodyLooks) {
  constexpr LineSettings kLine{1000, 'O', 7};  // one character in 10 ms
  test::ScriptedDevice end(kLine);
  end.Expect("xy", "XY");
  PacedLine line(end, true);
  line.FromPc("x", kLine, 1);
  line.FromPc("y", kLine, 1);
  EXPECT_DOUBLE_EQ(line.NextEvent().value(), 1.01);
  const std::pair<Seconds, Bytes> arrivals[] = {{1.0299, ""}, {1.0301, "X"}, {1.0399, ""}, {1.0401, "Y"}};
  for (const auto& [now, arrived] : arrivals) EXPECT_EQ(line.Advance(now), arrived) << now;
}

TEST(LineHost, TakesOnlyANameThatIsItsOwnUntilTheCableIsPulled) {
  const ScratchFolder folder;
  test::ScriptedDevice end;
  std::filesystem::create_symlink("/dev/pts/987654", "COM1");
  LineHost host(end, {"COM1", false, 1});
  EXPECT_EQ(std::filesystem::read_symlink("COM1"), host.Path()) << "a left link is replaced";
  OpenPorts openPorts;
  PosixSerialPort port(openPorts);
  port.SetSettings("9600,O,7,1");
  port.Open();
  port.Output("S");
  host.Wait({});
  EXPECT_EQ(host.Path(), "");
  EXPECT_THROW(port.Input(), PortError);
  EXPECT_FALSE(std::filesystem::is_symlink("COM1"));
  WriteFile("COM1", "x");
  EXPECT_THROW(LineHost(end, {}), std::system_error);
  EXPECT_EQ(ReadFile("COM1"), "x");
}

}  // namespace ox::sim
