// Serial ports on real pseudo-terminals: opening them, what goes over them, and a cable that is pulled.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/tty_flags.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/time.h>
#include <termios.h>

#include <csignal>
#include <cstdarg>
#include <cstring>
#include <functional>
#include <future>
#include <numeric>

#include "platform/line_settings.h"
#include "platform/posix/opening_fault.h"
#include "platform/posix/port_holder.h"
#include "platform/posix/port_names.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/terminal_settings.h"
#include "simulator/pty/port_link.h"
#include "simulator/pty/pty_line.h"
#include "support/scratch_folder.h"

namespace {

/// What was asked of a real line's driver, as long as it is in the place of the pseudo-terminal's.
std::optional<std::string> asked;
unsigned long refused = 0;
serial_struct driver;

}  // namespace

extern "C" {
int fstat(int file, struct stat* status) {
  const int result = fstatat(file, "", status, AT_EMPTY_PATH);
  if (asked) status->st_rdev = makedev(4, 64);  // ttyS0
  return result;
}
int ioctl(int file, unsigned long request, ...) {
  va_list rest;
  va_start(rest, request);
  void* const given = va_arg(rest, void*);
  va_end(rest);
  if (!asked) return static_cast<int>(syscall(SYS_ioctl, file, request, given));
  if (request == TIOCEXCL || request == TIOCNXCL) *asked += request == TIOCEXCL ? "mark" : " unmark";
  if (request == TIOCOUTQ)
    *static_cast<int*>(given) = (*asked += " queue").ends_with("queue queue queue") ? 0 : 1;
  if (request == TIOCSSERIAL) *asked += " " + std::to_string(static_cast<serial_struct*>(given)->flags);
  errno = EIO;
  if (request == refused) return -1;
  if (request == TIOCSSERIAL) std::memcpy(&driver, given, sizeof driver);
  if (request == TIOCGSERIAL) std::memcpy(given, &driver, sizeof driver);
  return 0;
}
group* getgrgid(gid_t number) {
  static std::string name = "dialout", member = "nobody";
  static char* members[] = {member.data(), nullptr};
  static group dialout{name.data(), nullptr, number, members};
  return number == 4711 ? nullptr : &dialout;
}
}

namespace ox {
namespace {

constexpr const char* kUsual = "9600,O,7,1";

/// Reads a line until so many bytes are there; fewer when that takes too long.
Bytes Arriving(std::size_t count, const std::function<Bytes()>& read) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  Bytes bytes;
  while (bytes.size() < count && std::chrono::steady_clock::now() < end) bytes += read();
  return bytes;
}

struct FarEnd : sim::PtyLine {
  sim::PortLink link{"COM1", Path()};
};

class SerialPortTest : public testing::Test {
 protected:
  ~SerialPortTest() override { asked.reset(); }
  void Open(std::string_view settings = kUsual, int number = 1) {
    port_->Close();
    port_->SetSettings(settings);
    port_->SetCommPort(number);
    port_->Open();
  }
  Bytes Here(std::size_t count) {
    return Arriving(count, [this] { return port_->Input(); });
  }
  Bytes There(std::size_t count) {
    return Arriving(count, [this] { return farEnd_->Read(); });
  }
  /// What is said of it.
  std::string ExpectFailure(const std::function<void()>& operation) {
    std::string told;
    const auto noting = [&] {
      try {
        operation();
      } catch (const PortError& error) {
        told = Sentences(0, error.Fault());
        throw;
      }
    };
    EXPECT_THROW(noting(), PortError);
    EXPECT_FALSE(port_->PortOpen());
    EXPECT_TRUE(openPorts_.Handles().empty()) << "a dead line would keep Rest awake";
    return told;
  }
  /// What is said of an opening that fails.
  std::string Refusal(int number, std::string_view settings = kUsual) {
    testing::internal::CaptureStderr();
    ExpectFailure([&] { Open(settings, number); });
    return testing::internal::GetCapturedStderr();
  }

  ScratchFolder scratch_;
  std::optional<FarEnd> farEnd_{std::in_place};
  OpenPorts openPorts_;
  PosixSerialPorts ports_{openPorts_};
  std::unique_ptr<SerialPort> port_ = ports_.Create();
};

TEST_F(SerialPortTest, BringsTheTerminalToItsSettings) {
  const std::tuple<std::string, speed_t, bool, tcflag_t> rows[] = {
      {"2400,O,7,1", B2400, true, IGNBRK | INPCK},
      {"19200,n,8,1", B19200, false, IGNBRK},
      {"4800,E,7,1", B4800, false, IGNBRK | INPCK}};
  testing::internal::CaptureStderr();
  for (const auto& [settings, speed, odd, inputFlags] : rows) {
    Open(settings);
    termios seen{};
    tcgetattr(farEnd_->Descriptor(), &seen);
    EXPECT_EQ(std::pair(cfgetospeed(&seen), (seen.c_cflag & PARODD) != 0), std::pair(speed, odd));
    // A damaged character reads as NUL, whatever the terminal was used for before.
    EXPECT_EQ(seen.c_iflag & (IGNBRK | INPCK | ICRNL | IXOFF | IXANY), inputFlags) << settings;
    seen.c_iflag &= ~tcflag_t{IGNBRK};
    seen.c_iflag |= ICRNL | IXOFF | IXANY;
    tcsetattr(farEnd_->Descriptor(), TCSANOW, &seen);
  }
  int marked = -1;
  ioctl(static_cast<int>(openPorts_.Handles().at(0)), TIOCGEXCL, &marked);
  EXPECT_EQ(marked, 0) << "the mark would outlive a program that is killed";
  std::filesystem::create_symlink(farEnd_->Path(), "COM2");
  ports_.TellFailuresOnly();
  Open(kUsual, 2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "COM1 ist " + farEnd_->Path() + "\n") << "told once";
}

TEST(TerminalSettings, AreRefusedByATerminalThatTakesThemInPart) {
  const std::tuple<speed_t, tcflag_t, bool, bool> rows[] = {
      {B9600, CS7, true, true},  {B2400, CS7, true, false},  {B9600, CS8, true, false},
      {B9600, CS8, false, true}, {B2400, CS8, false, false}, {B9600, CS7 | CREAD, true, true}};
  termios wanted{}, taken{};
  for (const auto& [settings, speed, frame] : {std::tuple("600,O,7,1", B600, CS7 | PARENB | PARODD),
                                               {"1200,E,7,2", B1200, CS7 | PARENB | CSTOPB},
                                               {"38400,n,8,1", B38400, CS8},
                                               {"57600,n,8,1", B57600, CS8},
                                               {"230400,n,8,1", B230400, CS8}}) {
    SetLine(ParseLineSettings(settings), wanted);
    EXPECT_EQ(wanted.c_cflag & ~tcflag_t{CBAUD}, tcflag_t(frame | CLOCAL | CREAD)) << settings;
    EXPECT_EQ(cfgetospeed(&wanted), speed) << settings;
  }
  wanted.c_cflag = CS7;
  cfsetospeed(&wanted, B9600);
  for (const auto& [speed, flags, withFrame, fits] : rows) {
    taken.c_cflag = flags;
    cfsetospeed(&taken, speed);
    EXPECT_EQ(HasTaken(taken, wanted, withFrame), fits) << speed << " " << flags;
  }
}

TEST_F(SerialPortTest, SaysWhyItCannotBeOpened) {
  const std::string name = "COM1 ist " + farEnd_->Path() + ": ";
  for (const int number : {0, 2, 9, 10}) {
    std::filesystem::create_symlink("/dev/unplugged", PortName(number));
    EXPECT_EQ(FindPort({}, number).value_or(""), number == 2 || number == 9 ? PortName(number) : "")
        << "and not a built-in port in its place";
  }
  WriteFile("COM3", "");
  EXPECT_EQ(Refusal(2),
            "COM2 ist /dev/unplugged: nicht vorhanden. "
            "Der Eintrag COM2 im Arbeitsordner zeigt darauf: Adapter einstecken oder den Eintrag löschen.\n");
  EXPECT_EQ(Refusal(3), "COM3 ist " + std::filesystem::current_path().string() +
                            "/COM3: keine serielle Schnittstelle. "
                            "Den Eintrag COM3 im Arbeitsordner löschen.\n");
  EXPECT_EQ(Refusal(0), "COM0: nicht vorhanden. Adapter einstecken oder eine andere Schnittstelle wählen.\n");
  for (const std::string bad : {"9600,O,7", "9600,O,7,1,", "9600,O,9,1", "9600,X,7,1", "9,O,7,1"})
    EXPECT_EQ(Refusal(1, bad), name + "Schnittstellenparameter \"" + bad +
                                   "\" gibt es nicht. Ein Verbindungstest setzt sie zurecht.\n");
  OpenPorts others;
  PosixSerialPort other(others);
  other.Open();
  EXPECT_EQ(Refusal(1), name + "von einem anderen Programm belegt. Das andere Programm beenden.\n");
  other.Close();
  constexpr uid_t kNobody = 65534, kAnother = 1, kWithoutName = 4711;
  constexpr gid_t kNotOurs = 1, kGroupWithoutName = 4711;
  const bool root = geteuid() == 0;  // else we own the line, and no group matters
  const std::string join = " Benutzer in die Gruppe dialout aufnehmen, neu anmelden.";
  const std::tuple<mode_t, gid_t, uid_t, std::string> rows[] = {
      {0440, kNotOurs, kNobody, ""},
      {0060, kNotOurs, kNobody, " Neu anmelden: Erst dann gilt die Gruppe dialout."},
      {0060, kNotOurs, kAnother, join},
      {0060, kNotOurs, kWithoutName, join},
      {0060, kGroupWithoutName, kAnother, " Benutzer in die Gruppe 4711 aufnehmen, neu anmelden."},
      {0060, getegid(), kNobody, ""}};  // who is in the group already
  for (const auto& [mode, group, user, told] : rows) {
    ASSERT_TRUE(chmod("COM1", mode) == 0 && chown("COM1", geteuid(), root ? group : getegid()) == 0);
    ASSERT_EQ(seteuid(root ? user : geteuid()), 0);
    const std::string reason = "keine Zugriffsrechte." + (root ? told : "");
    EXPECT_EQ(Sentences(1, OpeningFault(EACCES, "COM1").Fault()), "COM1: " + reason);
    const bool free = root && group == getegid();
    if (!free) {
      EXPECT_EQ(Refusal(1), name + reason + "\n");
    }
    EXPECT_EQ(PosixPortList().Look(1).use, free ? PortUse::kFree : PortUse::kNoRights);
    ASSERT_EQ(seteuid(getuid()), 0);
  }
}

TEST_F(SerialPortTest, APortIsItsEntryElseABuiltInOneElseTheNextAdapterOnTheBus) {
  namespace fs = std::filesystem;
  const fs::path here = fs::current_path();
  for (const fs::path& its : {HostFolders().system / "class/tty", HostFolders().processes / "locks",
                              HostFolders().devices / "null"})
    EXPECT_TRUE(fs::exists(its)) << its;
  const HostFolders host{here / "dev", here / "sys", here / "proc"};
  fs::remove("COM1");
  const auto ttys = host.system / "class/tty";
  const auto plugIn = [&](const char* name, const std::string& place, const char* driver) {
    const fs::path port = host.system / "devices" / place / name;
    fs::create_directories(port);
    fs::create_directories(ttys / name);
    fs::create_directory_symlink(port, ttys / name / "device");
    fs::create_symlink(fs::path("drivers") / driver, port.parent_path() / "driver");
  };
  plugIn("ttyUSB0", "usb1/1-10/1-10:1.0", "ftdi_sio");
  plugIn("ttyUSB1", "usb01/1-9/1-9:1.0", "ch341");
  plugIn("ttyUSB2", "usb1/1-1/1-1:1.0", "option");  // a telephone
  plugIn("ttyUSB3", "usb1/1-3/1-3:1.0", "cp210x");
  for (const char* builtIn : {"ttyS0", "ttyS1"}) {
    fs::create_directories(ttys / builtIn);
    WriteFile(ttys / builtIn / "type", builtIn == std::string("ttyS0") ? "0\n" : "4\n");
  }
  WriteFile(host.system / "devices/usb01/1-9/manufacturer", "QinHeng\n");
  WriteFile(host.system / "devices/usb01/1-9/product", "USB Serial\n");
  WriteFile(host.system / "devices/usb1/1-10/product", "UART\n");
  fs::create_directories(host.devices);
  WriteFile(host.devices / "ttyUSB1", "");
  fs::create_symlink(host.devices / "ttyUSB3", "COM4");
  fs::create_symlink(farEnd_->Path(), "COM6");
  fs::create_directories(host.processes / "12");
  fs::create_directories(host.processes / "4711/fd");
  fs::create_symlink(farEnd_->Path(), host.processes / "4711/fd/4");  // as its far end may have it
  const auto told = [&](int number) {
    std::string text = Description(number, PosixPortList(host).Look(number));
    const auto at = text.find(here.string());
    return at == std::string::npos ? text : text.erase(at, here.string().size());
  };
  EXPECT_EQ(told(1), "COM1 ist /dev/ttyUSB1 (QinHeng USB Serial): keine serielle Schnittstelle");
  EXPECT_EQ(told(2), "COM2 ist /dev/ttyS1 (eingebaute Schnittstelle): nicht vorhanden");
  EXPECT_EQ(told(3), "COM3 ist /dev/ttyUSB0 (UART): nicht vorhanden");
  EXPECT_EQ(told(4), "COM4 ist /dev/ttyUSB3: nicht vorhanden");
  EXPECT_EQ(told(5), "COM5: nicht vorhanden") << "an adapter has one number";
  EXPECT_EQ(told(6), "COM6 ist " + farEnd_->Path() + ": frei");
  EXPECT_EQ(Description(7, {.use = PortUse::kPresent}), "COM7: vorhanden");
  EXPECT_EQ(Description(7, {.use = PortUse::kTaken}), "COM7: belegt");
  struct stat line {};
  ASSERT_EQ(stat("COM6", &line), 0);
  char lock[120];
  std::snprintf(
      lock, sizeof lock,
      "1: POSIX  ADVISORY  READ 12 00:01:2 0 EOF\n2: FLOCK  ADVISORY  WRITE 4711 %02x:%02x:%ju 0 EOF\n",
      major(line.st_dev), minor(line.st_dev), static_cast<std::uintmax_t>(line.st_ino));
  WriteFile(host.processes / "locks", lock);
  WriteFile(host.processes / "4711/comm", "minicom\n");
  EXPECT_EQ(HolderOf(host, "/dev/null"), std::nullopt) << "it has something else open";
  fs::create_symlink("/dev/null", host.processes / "4711/fd/3");
  EXPECT_EQ(HolderOf(host, "/dev/null"), "minicom");
  EXPECT_EQ(told(6), "COM6 ist " + farEnd_->Path() + ": belegt von minicom");
  EXPECT_EQ(Sentences(6, OpeningFault(EBUSY, "COM6", host).Fault()),
            "COM6: von einem anderen Programm belegt (minicom). minicom beenden oder abwarten.");
  PosixSerialPorts ports(openPorts_, host);
  port_ = ports.Create();
  plugIn("ttyUSB4", "usb2", "pl2303");
  plugIn("ttyUSB5", "usb10", "pl2303");
  const std::string before = farEnd_->Path(), next = (host.devices / "ttyUSB5").string();
  for (const bool pulled : {false, true}) {
    Open(kUsual, 6);
    fs::remove("COM6");
    if (!pulled) Open(kUsual, 6);  // a port that has been in use keeps its device
    if (pulled) farEnd_.reset();
    EXPECT_EQ(told(6), "COM6 ist /dev/ttyUSB5: nicht vorhanden");
    // Another program's new pseudo-terminal may stand in the place of the old one.
    if (fs::exists(before)) port_ = ports.Create();
    const std::string what = fs::exists(before)
                                 ? ": hat jetzt eine andere Nummer. "
                                 : ": nicht mehr vorhanden. Adapter wieder einstecken, sonst: ";
    EXPECT_EQ(ExpectFailure([&] { Open(kUsual, 6); }),
              before + what + "COM6 ist mit dem nächsten Befehl " + next + ".")
        << "no other unnoticed";
    EXPECT_TRUE(ExpectFailure([&] { Open(kUsual, 6); }).starts_with(next + ": nicht vorhanden"));
    fs::create_symlink(before, "COM6");
  }
  fs::remove_all(ttys / "ttyUSB1");
  fs::create_symlink(host.devices / "ttyUSB0", "COM1");
  fs::create_symlink(host.devices / "ttyUSB4", "COM9");
  EXPECT_EQ(told(3), "COM3 ist /dev/ttyUSB5: nicht vorhanden") << "ttyUSB1 was plugged out meanwhile";
}

TEST_F(SerialPortTest, ClosingSendsWhatWasWrittenInTheTimeThatTheLineNeeds) {
  Bytes all(256, '\0');
  std::iota(all.begin(), all.end(), '\0');
  for (const char* elevenBits : {"600,E,7,2", "600,n,8,2"})
    EXPECT_EQ(ParseLineSettings(elevenBits).CharacterTime(), std::chrono::nanoseconds(18'333'333));
  Open("115200,O,8,1");  // 11 bits a character
  const auto start = std::chrono::steady_clock::now();
  port_->Output(all);
  port_->Close();
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(24));
  EXPECT_EQ(There(256), all);
  Open("19200,n,8,1");
  farEnd_->Write(all);
  EXPECT_EQ(Here(256), all);
  Open();
  port_->Output(">\xFF\r");
  EXPECT_EQ(There(3), ">\x7F\r");
  farEnd_->Write("\xC1");
  EXPECT_EQ(Here(1), "A");
}

TEST_F(SerialPortTest, MoreThanTheHostBuffersIsSentWholeUnlessTheReaderStalls) {
  const Bytes much(20000, 'x');
  Open("921600,n,8,1");
  std::future<Bytes> received = std::async(std::launch::async, [&] { return There(much.size()); });
  port_->Output(much);
  EXPECT_TRUE(received.get() == much);
  EXPECT_EQ(ExpectFailure([&] { port_->Output(much); }),
            farEnd_->Path() + ": sendet nicht. Adapter und Leitung prüfen, dann den Befehl wiederholen.");
}

TEST_F(SerialPortTest, APulledCableIsReportedByTheNextOperation) {
  const std::function<void()> operations[] = {[&] { errno = EINTR, port_->Input(); },
                                              [&] { port_->Output("S"); },
                                              [&] { port_->SetModemLine(true); }};
  for (const auto& operation : operations) {
    farEnd_.emplace();
    Open();
    operation();  // a terminal without modem lines takes their setting silently
    const std::string path = farEnd_->Path();
    farEnd_.reset();
    if (&operation != operations) farEnd_.emplace();  // takes the place of the old one, if nobody else did
    const bool taken = std::filesystem::exists(path);
    const std::string told = ExpectFailure(operation);
    if (taken == std::filesystem::exists(path)) {  // else another program took or left the place meanwhile
      EXPECT_EQ(told, path +
                          (taken ? ": Verbindung unterbrochen. Adapter und Stecker prüfen, "
                                 : ": während der Arbeit abgezogen. Adapter wieder einstecken, ") +
                          "dann den Befehl wiederholen.");
    }
    EXPECT_EQ(ExpectFailure(operation), "COM0: ist nicht geöffnet.");
  }
  std::signal(SIGALRM, [](int) {});
  for (const bool answered : {false, true}) {
    farEnd_.emplace();
    Open("300,O,7,1");
    port_->Output(Bytes(2000, 'x'));  // more than a minute on the line
    if (answered) farEnd_->Write("A");
    if (answered) Here(1);
    if (!answered) farEnd_.reset();
    const itimerval soon{{}, {0, 50000}};
    if (answered) setitimer(ITIMER_REAL, &soon, nullptr);  // a signal ends no wait
    const auto start = std::chrono::steady_clock::now();
    port_->Close();
    const auto lasted = std::chrono::steady_clock::now() - start;
    EXPECT_LT(lasted, std::chrono::seconds(10));
    EXPECT_GE(lasted, std::chrono::milliseconds(answered ? 350 : 0)) << "the rest may need the grace";
  }
}

TEST_F(SerialPortTest, ARealLineIsMarkedAndHurriedAndGivenBackAsItWasOnceAllIsSent) {
  constexpr int kOther = ASYNC_SKIP_TEST | ASYNC_SPD_VHI;
  constexpr int kLow = kOther | ASYNC_LOW_LATENCY;
  const std::string low = " " + std::to_string(kLow), other = " " + std::to_string(kOther);
  const std::tuple<const char*, int, unsigned long, std::string, std::string> rows[] = {
      {"an adapter", kOther, 0, low, other},
      {"hurried by somebody else", kLow, 0, "", ""},
      {"a driver without flags", kOther, TIOCGSERIAL, "", ""},
      {"no rights", kOther, TIOCSSERIAL, low, ""}};
  for (const auto& [line, flags, no, hurried, calmed] : rows) {
    std::memset(&driver, 0x5A, sizeof driver);
    driver.flags = flags;
    const serial_struct before = driver;
    asked.emplace(), refused = no;
    Open("9600,n,8,1");
    port_->SetModemLine(true);
    port_->Output("S");
    const auto start = std::chrono::steady_clock::now();
    port_->Close();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4)) << "three looks";
    EXPECT_EQ(*asked, "mark" + hurried + " queue queue queue" + calmed + " unmark") << line;
    EXPECT_EQ(std::memcmp(&driver, &before, sizeof before), 0) << line;
  }
  EXPECT_EQ(ExpectFailure([&] { Open(); }),  // a terminal keeps no parity
            farEnd_->Path() + ": nimmt die Schnittstellenparameter nicht an. Einen anderen Adapter nehmen.");
}

}  // namespace
}  // namespace ox
