// Serial ports on real pseudo-terminals: opening them, what goes over them, and a cable that is pulled.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <functional>
#include <numeric>
#include <sstream>
#include <thread>

#include "platform/posix/line_settings.h"
#include "platform/posix/port_names.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/scratch_folder.h"

namespace ox {
namespace {

constexpr int kPatienceMilliseconds = 500;

/// The far end of a line, which is linked as COM1.
struct FarEnd {
  FarEnd() {
    grantpt(master.Number());
    unlockpt(master.Number());
    std::filesystem::remove("COM1");
    std::filesystem::create_symlink(ptsname(master.Number()), "COM1");
  }
  void Write(BytesView bytes) const {
    EXPECT_EQ(write(master.Number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// The next `count` bytes; fewer when nothing comes for a while.
  Bytes Read(std::size_t count) const {
    Bytes bytes;
    pollfd waited{master.Number(), POLLIN, 0};
    for (char byte = 0; bytes.size() < count && poll(&waited, 1, kPatienceMilliseconds) > 0; bytes += byte)
      if (read(master.Number(), &byte, 1) != 1) break;
    return bytes;
  }
  Descriptor master{posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)};
};

struct SerialPortTest : testing::Test {
  void Open(std::string_view settings, int number = 1) {
    port_->Close();
    port_->SetSettings(settings);
    port_->SetCommPort(number);
    port_->Open();
  }
  void ExpectFailure(const std::function<void()>& operation) {
    EXPECT_THROW(operation(), PortError);
    EXPECT_FALSE(port_->PortOpen());
    EXPECT_TRUE(openPorts_.Descriptors().empty()) << "a dead line would keep Rest awake";
  }
  /// Everything that arrives until `count` bytes are there.
  Bytes Take(std::size_t count) {
    Bytes taken;
    pollfd waited{openPorts_.Descriptors().at(0), POLLIN, 0};
    while (taken.size() < count && poll(&waited, 1, kPatienceMilliseconds) > 0) taken += port_->Input();
    return taken;
  }

  ScratchFolder scratch_;
  FarEnd farEnd_;
  OpenPorts openPorts_;
  std::unique_ptr<SerialPort> port_ = PosixSerialPorts(openPorts_).Create();
};

TEST_F(SerialPortTest, SettingsAreReadFromTheirTextOrRefused) {
  EXPECT_EQ(ParseLineSettings("9600,O,7,1").CharacterTime(), std::chrono::nanoseconds(1041666)) << "10 bits";
  EXPECT_EQ(ParseLineSettings("19200,n,8,2").CharacterTime(), std::chrono::nanoseconds(572916)) << "11 bits";
  std::istringstream refused(
      "|9600|9600,O,7|9600,O,7,|9600,O,7,1,|9600,O,7,3|9600,O,9,1|9600,X,7,1|9600,,7,1|9601,O,7,1");
  for (std::string text; std::getline(refused, text, '|');)
    EXPECT_THROW(ParseLineSettings(text), PortError) << text;
  const std::tuple<std::string, speed_t, bool, tcflag_t> rows[] = {{"2400,O,7,1", B2400, true, INPCK},
                                                                   {"19200,n,8,1", B19200, false, 0},
                                                                   {"4800,E,7,1", B4800, false, INPCK}};
  for (const auto& [settings, speed, odd, inputFlags] : rows) {
    Open(settings);
    termios seen{};
    tcgetattr(farEnd_.master.Number(), &seen);
    EXPECT_EQ(std::pair(cfgetospeed(&seen), (seen.c_cflag & PARODD) != 0), std::pair(speed, odd));
    // A damaged character reads as NUL, whatever the terminal was used for before.
    EXPECT_EQ(seen.c_iflag & (INPCK | IXOFF | IXANY), inputFlags) << settings;
    seen.c_iflag |= IXOFF | IXANY;
    tcsetattr(farEnd_.master.Number(), TCSANOW, &seen);
  }
}

TEST_F(SerialPortTest, SaysWhyItCannotBeOpened) {
  EXPECT_EQ(PortPath(4), "/dev/ttyS3");
  std::filesystem::create_symlink("/dev/unplugged", "COM2");  // and not a built-in port in its place
  WriteFile("COM3", "");
  OpenPorts others;
  PosixSerialPort other(others);
  testing::internal::CaptureStderr();
  for (const int number : {0, 2, 3}) ExpectFailure([&] { Open("9600,O,7,1", number); });
  ExpectFailure([&] { Open("9600,X,7,1"); });
  other.Open();
  ExpectFailure([&] { Open("9600,O,7,1"); });
  other.Close();
  struct stat line {};
  ASSERT_EQ(stat("COM1", &line), 0);
  ASSERT_EQ(chmod("COM1", 0), 0);
  constexpr uid_t kNobody = 65534;
  ASSERT_EQ(seteuid(geteuid() == 0 ? kNobody : geteuid()), 0);
  ExpectFailure([&] { Open("9600,O,7,1"); });
  ASSERT_EQ(seteuid(getuid()), 0);
  const std::string group = getgrgid(line.st_gid)->gr_name;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), R"(COM0: gibt es nicht
COM2: nicht vorhanden
COM3: keine serielle Schnittstelle
COM1: Schnittstellenparameter "9600,X,7,1" gibt es nicht
COM1: von einem anderen Programm belegt
COM1: keine Zugriffsrechte (nur für Mitglieder der Gruppe ")" +
                                                        group + "\")\n");
}

TEST_F(SerialPortTest, BelongsToOneProgramUntilItIsClosed) {
  // Its presence keeps the mark on the terminal, which stops programs that know no lock.
  const Descriptor bystander(open("COM1", O_RDWR | O_NOCTTY | O_CLOEXEC));
  int marked = -1;
  Open("9600,O,7,1");
  PosixSerialPort other(openPorts_);
  EXPECT_THROW(other.Open(), PortError);
  ioctl(bystander.Number(), TIOCGEXCL, &marked);
  EXPECT_EQ(marked, 1) << "the refused one took the mark away";
  port_->Close();
  ioctl(bystander.Number(), TIOCGEXCL, &marked);
  EXPECT_EQ(marked, 0);
}

TEST_F(SerialPortTest, ClosingSendsWhatWasWrittenInTheTimeThatTheLineNeeds) {
  Bytes all(256, '\0');
  std::iota(all.begin(), all.end(), '\0');
  Open("115200,n,8,1");
  const auto start = std::chrono::steady_clock::now();
  port_->Output(all);
  port_->Close();
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(22));
  EXPECT_EQ(farEnd_.Read(256), all);
  farEnd_.Write(all);
  Open("19200,n,8,1");
  EXPECT_EQ(Take(256), all) << "what came while the port was closed";
  Open("19200,O,7,1");
  port_->Output(">\xFF\r");
  EXPECT_EQ(farEnd_.Read(3), ">\x7F\r");
  farEnd_.Write("\xC1");
  EXPECT_EQ(Take(1), "A");
}

TEST_F(SerialPortTest, MoreThanTheHostBuffersIsSentWholeUnlessTheReaderStalls) {
  const Bytes much(20000, 'x');
  Open("921600,n,8,1");
  Bytes received;
  std::thread reader([&] { received = farEnd_.Read(much.size()); });
  EXPECT_NO_THROW(port_->Output(much));
  reader.join();
  EXPECT_TRUE(received == much);
  ExpectFailure([&] { port_->Output(much); });
}

TEST_F(SerialPortTest, AClosedPortAndAPulledCableAreReportedByTheNextOperation) {
  const std::function<void()> operations[] = {[&] { port_->Input(); }, [&] { port_->Output("S"); },
                                              [&] { port_->SetModemLine(true); }};
  for (const auto& operation : operations) {
    FarEnd farEnd;
    ExpectFailure(operation);
    Open("300,O,7,1");
    operation();  // a terminal without modem lines takes their setting silently
    farEnd.master.Close();
    ExpectFailure(operation);
  }
}

TEST_F(SerialPortTest, APulledCableIsClosedWithoutAWordAndWithoutAWait) {
  Open("300,O,7,1");
  port_->Output(Bytes(2000, 'x'));  // more than a minute on the line
  farEnd_.master.Close();
  const auto start = std::chrono::steady_clock::now();
  port_->Close();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
}  // namespace ox
