// Opening a port: which device, what it is set to, who may have it, and why not.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include "platform/posix/port_names.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/pseudo_terminal.h"
#include "platform/scratch_folder.h"

namespace ox {
namespace {

class PortOpeningTest : public testing::Test {
 protected:
  /// What a failing opening says on the standard error stream; empty when it does not fail.
  std::string ReasonOfOpening(int number, std::string_view settings = "9600,O,7,1") {
    testing::internal::CaptureStderr();
    bool failed = false;
    try {
      port_.SetSettings(settings);
      port_.SetCommPort(number);
      port_.Open();
    } catch (const PortError&) {
      failed = true;
    }
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(failed, !said.empty());
    EXPECT_EQ(failed, !port_.PortOpen());
    EXPECT_EQ(openPorts_.Descriptors().size(), failed ? 0U : 1U);
    return said;
  }

  ScratchFolder scratch_;
  OpenPorts openPorts_;
  PosixSerialPort port_{openPorts_};
};

TEST_F(PortOpeningTest, APortIsTheEntryOfTheWorkingFolderOrABuiltInOne) {
  EXPECT_EQ(PortPath(1), "/dev/ttyS0");
  EXPECT_EQ(PortPath(4), "/dev/ttyS3");
  std::filesystem::create_symlink("/dev/unplugged", "COM4");
  EXPECT_EQ(PortPath(4), "COM4");
  EXPECT_THROW(PortPath(0), PortError);
  EXPECT_THROW(PortPath(-1), PortError);
}

TEST_F(PortOpeningTest, SaysWhyAPortCannotBeOpened) {
  std::filesystem::create_symlink("/dev/unplugged", "COM1");
  WriteFile("COM2", "");
  std::filesystem::create_directory("COM3");
  const PseudoTerminal farEnd("COM4");
  EXPECT_EQ(ReasonOfOpening(0), "COM0: gibt es nicht\n");
  EXPECT_EQ(ReasonOfOpening(1), "COM1: nicht vorhanden\n");
  EXPECT_EQ(ReasonOfOpening(2), "COM2: keine serielle Schnittstelle\n");
  EXPECT_EQ(ReasonOfOpening(3), "COM3: keine serielle Schnittstelle\n");
  EXPECT_EQ(ReasonOfOpening(4, "9600,X,7,1"), "COM4: Schnittstellenparameter \"9600,X,7,1\" gibt es nicht\n");
  EXPECT_EQ(ReasonOfOpening(4), "");
}

TEST_F(PortOpeningTest, NamesTheGroupThatHasTheRights) {
  constexpr uid_t kNobody = 65534;
  const PseudoTerminal farEnd;
  ASSERT_EQ(chmod(farEnd.Path().c_str(), 0), 0);
  const bool privileged = geteuid() == 0;
  ASSERT_EQ(seteuid(privileged ? kNobody : geteuid()), 0);
  const std::string reason = ReasonOfOpening(1);
  ASSERT_EQ(seteuid(getuid()), 0);
  struct stat status {};
  ASSERT_EQ(stat(farEnd.Path().c_str(), &status), 0);
  const std::string group = getgrgid(status.st_gid)->gr_name;
  EXPECT_EQ(reason, "COM1: keine Zugriffsrechte (nur für Mitglieder der Gruppe \"" + group + "\")\n");
}

TEST_F(PortOpeningTest, SpeedAndOddParityAreSeenAtTheOtherEnd) {
  const PseudoTerminal farEnd;
  struct {
    std::string_view settings;
    speed_t speed;
    bool odd;
  } const cases[] = {{"2400,O,7,1", B2400, true},
                     {"2400,E,7,1", B2400, false},
                     {"2400,E,7,1", B2400, false},  // unchanged settings are no reason to fail
                     {"19200,O,7,1", B19200, true},
                     {"19200,n,8,1", B19200, false}};
  for (const auto& each : cases) {
    EXPECT_EQ(ReasonOfOpening(1, each.settings), "");
    const termios seen = farEnd.Attributes();
    EXPECT_EQ(cfgetospeed(&seen), each.speed);
    EXPECT_EQ((seen.c_cflag & PARODD) != 0, each.odd);
    EXPECT_EQ(seen.c_lflag & (ECHO | ICANON | ISIG), 0U);
    EXPECT_EQ(seen.c_iflag & (ICRNL | IXON | ISTRIP), 0U);
    EXPECT_EQ(seen.c_oflag & OPOST, 0U);
    port_.Close();
  }
}

TEST_F(PortOpeningTest, OneProgramAtATime) {
  PseudoTerminal farEnd;
  const Descriptor bystander = farEnd.OpenOtherSide();  // its presence keeps the marks on the terminal
  PosixSerialPort other(openPorts_);
  other.Open();
  int exclusive = 0;
  ASSERT_EQ(ioctl(bystander.Number(), TIOCGEXCL, &exclusive), 0);
  EXPECT_NE(exclusive, 0);

  testing::internal::CaptureStderr();
  EXPECT_THROW(port_.Open(), PortError);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "COM1: von einem anderen Programm belegt\n");
  other.Output("still works");
  EXPECT_EQ(farEnd.Read(11), "still works");
  ASSERT_EQ(ioctl(bystander.Number(), TIOCGEXCL, &exclusive), 0);
  EXPECT_NE(exclusive, 0) << "the refused one took the mark away";

  other.Close();
  ASSERT_EQ(ioctl(bystander.Number(), TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
  EXPECT_EQ(ReasonOfOpening(1), "");
}

TEST_F(PortOpeningTest, TheNumberStaysWhileThePortIsOpen) {
  const PseudoTerminal farEnd;
  port_.Open();
  EXPECT_THROW(port_.SetCommPort(2), PortError);
  EXPECT_TRUE(port_.PortOpen());
  port_.Open();
  EXPECT_EQ(openPorts_.Descriptors().size(), 1U);
}

}  // namespace
}  // namespace ox
