// The line between the two ends: its time, to the character, and a real pseudo-terminal under a port's name.
#include <gtest/gtest.h>

#include "platform/posix/posix_serial_port.h"
#include "platform/scratch_folder.h"
#include "simulator/device.h"
#include "simulator/line_host.h"
#include "support/scripted_device.h"

namespace ox::sim {
namespace {

TEST(PacedLine, EveryCharacterTakesItsBitsHoweverLateSomebodyLooks) {
  constexpr LineSettings kLine{1000, 'O', 7};  // one character in 10 ms
  test::ScriptedDevice end(kLine);
  end.Expect("x", "XX").Expect("y", "Y").Expect("z", {{1, "Z"}}).Expect("ab", "AB");
  PacedLine line(end, true);
  line.FromPc("x", kLine, 1);
  line.FromPc("y", kLine, 1);
  EXPECT_DOUBLE_EQ(line.NextEvent().value(), 1.01);
  const std::pair<Seconds, Bytes> arrivals[] = {{1.0199, ""},  {1.0201, "X"}, {1.0299, ""},
                                                {1.0301, "X"}, {1.0399, ""},  {1.0401, "Y"}};
  for (const auto& [now, arrived] : arrivals) EXPECT_EQ(line.Advance(now), arrived) << now;
  EXPECT_FALSE(line.NextEvent());
  line.FromPc("z", kLine, 2);
  EXPECT_EQ(line.Advance(2.5), "");
  EXPECT_DOUBLE_EQ(line.NextEvent().value(), 3.01) << "a late look changes no time";
  line.FromPc("-", {500, 'O', 7}, 10);
  EXPECT_EQ(line.Advance(10.019), "Z");
  EXPECT_DOUBLE_EQ(line.NextEvent().value(), 10.02) << "the speed is the sender's own";
  line.Advance(11);
  PacedLine unpaced(end, false);
  unpaced.FromPc("ab", kLine, 11);
  EXPECT_EQ(unpaced.Advance(11), "AB");
}

class LineHostTest : public testing::Test {
 protected:
  /// Sends with these settings and waits until the device has nothing more to say.
  void Ask(LineHost& host, std::string_view settings, BytesView bytes) {
    port_.Close();
    port_.SetSettings(settings);
    port_.Open();
    port_.Output(bytes);
    do {
      host.Wait(none_);
      host.Work();
    } while (!host.Idle() && !host.Path().empty());
  }

  ScratchFolder folder_;
  OpenPorts openPorts_;
  PosixSerialPort port_{openPorts_};
  Device device_{{}};
  sigset_t none_{};
};

TEST_F(LineHostTest, CarriesADialogueAndTheLoaderUnderOneName) {
  LineHost host(device_, {"COM1", false, {}});
  Ask(host, "9600,O,7,1", "S");
  Ask(host, "9600,O,7,1", "K");
  EXPECT_EQ(port_.Input(), "AOX 3 SW 3.20 11/2026 \r") << "what was said to a closed port is not lost";
  Ask(host, "9600,E,7,1", "S");
  EXPECT_EQ(port_.Input(), "") << "even, and understands nothing";
  Ask(host, "9600,O,7,1", "S@UPDATEREQ\r");
  Ask(host, "19200,n,8,1", "S");
  EXPECT_EQ(port_.Input(), "@UPDATEACK\rA");
}

TEST_F(LineHostTest, APulledCableIsAHangUp) {
  LineHost host(device_, {"COM1", false, 2});
  Ask(host, "9600,O,7,1", "S");
  EXPECT_THROW(port_.Input(), PortError);
  EXPECT_EQ(host.Path(), "");
  EXPECT_FALSE(std::filesystem::is_symlink("COM1"));
}

TEST_F(LineHostTest, TakesOnlyANameThatIsItsOwn) {
  std::filesystem::create_symlink("/dev/pts/987654", "COM1");
  {
    const LineHost host(device_, {});
    EXPECT_EQ(std::filesystem::read_symlink("COM1"), host.Path()) << "a left link is replaced";
  }
  EXPECT_FALSE(std::filesystem::is_symlink("COM1")) << "and removed at the end";
  WriteFile("COM1", "x");
  EXPECT_THROW(LineHost(device_, {}), std::system_error);
  EXPECT_EQ(ReadFile("COM1"), "x");
}

}  // namespace
}  // namespace ox::sim
