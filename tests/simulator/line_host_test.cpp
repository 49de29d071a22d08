// A device on a real pseudo-terminal, and its name.
#include "simulator/line_host.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "simulator/device.h"

namespace ox::sim {
namespace {

namespace fs = std::filesystem;

class LineHostTest : public ::testing::Test {
 protected:
  LineHostTest() {
    std::string folder = (fs::temp_directory_path() / "oxsim-XXXXXX").string();
    folder_ = mkdtemp(folder.data());
    sigemptyset(&none_);
  }
  ~LineHostTest() override {
    if (port_ >= 0) close(port_);
    fs::remove_all(folder_);
  }

  std::string Link() const { return (folder_ / "COM1").string(); }
  HostOptions Unpaced() const { return {Link(), false, std::nullopt}; }

  void Open(speed_t speed, bool odd) {
    if (port_ >= 0) close(port_);
    port_ = open(Link().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(port_, 0);
    termios settings{};
    tcgetattr(port_, &settings);
    cfmakeraw(&settings);
    cfsetspeed(&settings, speed);
    settings.c_cflag =
        odd ? settings.c_cflag | PARENB | PARODD : settings.c_cflag & ~static_cast<tcflag_t>(PARODD);
    tcsetattr(port_, TCSANOW, &settings);
  }

  // What comes until the device has nothing more to say; `expected` characters are waited for.
  Bytes Ask(LineHost& host, const Bytes& bytes, size_t expected) {
    EXPECT_EQ(write(port_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    do {
      host.Wait(none_);
      host.Work();
    } while (!host.Idle());
    Bytes reply;
    constexpr int kPatienceMilliseconds = 2000;  // only ever waited out by a test that fails
    pollfd waited{port_, POLLIN, 0};
    std::array<char, 256> buffer{};
    while (reply.size() < expected && poll(&waited, 1, kPatienceMilliseconds) > 0) {
      const ssize_t count = read(port_, buffer.data(), buffer.size());
      if (count <= 0) break;
      reply.append(buffer.data(), static_cast<size_t>(count));
    }
    return reply;
  }

  fs::path folder_;
  sigset_t none_{};
  int port_ = -1;
};

TEST_F(LineHostTest, ADialogueAndTheLoaderOverOneName) {
  Device device({});
  LineHost host(device, Unpaced());
  EXPECT_EQ(fs::read_symlink(Link()), host.Path());
  Open(B9600, true);
  EXPECT_EQ(Ask(host, "S", 1), "A");
  EXPECT_EQ(Ask(host, "K", 22), "OX 3 SW 3.20 11/2026 \r");
  Open(B9600, false);
  EXPECT_EQ(Ask(host, "S", 0), "") << "even, and understands nothing";
  Open(B9600, true);
  EXPECT_EQ(Ask(host, "S@UPDATEREQ\r", 0), "");
  // The port is closed and opened again meanwhile; what was said then is not lost.
  Open(B19200, false);
  EXPECT_EQ(Ask(host, "S", 12), "@UPDATEACK\rA");
}

TEST_F(LineHostTest, APulledCableIsAHangUp) {
  Device device({});
  HostOptions options = Unpaced();
  options.unplugAfter = 10;
  LineHost host(device, options);
  Open(B9600, true);
  Ask(host, "S", 1);
  ASSERT_EQ(write(port_, "K", 1), 1);
  while (!host.Path().empty()) {
    host.Wait(none_);
    host.Work();
  }
  EXPECT_FALSE(fs::exists(fs::symlink_status(Link())));
  pollfd waited{port_, 0, 0};
  EXPECT_EQ(poll(&waited, 1, 0), 1);
  EXPECT_NE(waited.revents & POLLHUP, 0);
}

TEST_F(LineHostTest, TakesOnlyANameThatIsItsOwn) {
  fs::create_symlink("/dev/pts/987654", Link());
  Device device({});
  {
    const LineHost host(device, Unpaced());
    EXPECT_EQ(fs::read_symlink(Link()), host.Path()) << "a link that was left behind is replaced";
  }
  EXPECT_FALSE(fs::exists(fs::symlink_status(Link()))) << "and removed at the end";

  std::ofstream(Link()) << "x";
  EXPECT_THROW(LineHost(device, Unpaced()), std::system_error);
  EXPECT_TRUE(fs::is_regular_file(Link()));
}

}  // namespace
}  // namespace ox::sim
