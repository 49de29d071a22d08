// Serial ports on real pseudo-terminals: opening them, what goes over them, and a cable that is pulled.
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/tty_flags.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <cstring>
#include <functional>
#include <future>
#include <numeric>

#include "platform/line_settings.h"
#include "platform/posix/low_latency.h"
#include "platform/posix/opening_fault.h"
#include "platform/posix/port_holder.h"
#include "platform/posix/port_names.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/terminal_settings.h"
#include "simulator/pty/port_link.h"
#include "simulator/pty/pty_line.h"
#include "support/scratch_folder.h"

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
  std::unique_ptr<SerialPort> port_ = PosixSerialPorts(openPorts_).Create();
};

TEST_F(SerialPortTest, BringsTheTerminalToItsSettings) {
  const std::tuple<std::string, speed_t, bool, tcflag_t> rows[] = {
      {"2400,O,7,1", B2400, true, IGNBRK | INPCK},
      {"19200,n,8,1", B19200, false, IGNBRK},
      {"4800,E,7,1", B4800, false, IGNBRK | INPCK}};
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
}

TEST(TerminalSettings, AreRefusedByATerminalThatTakesThemInPart) {
  const std::tuple<speed_t, tcflag_t, bool, bool> rows[] = {
      {B9600, CS7, true, true},  {B2400, CS7, true, false},  {B9600, CS8, true, false},
      {B9600, CS8, false, true}, {B2400, CS8, false, false}, {B9600, CS7 | CREAD, true, true}};
  termios wanted{}, taken{};
  for (const auto& [settings, frame] : {std::pair("9600,O,7,1", CS7 | PARENB | PARODD),
                                        {"9600,E,7,2", CS7 | PARENB | CSTOPB},
                                        {"9600,n,8,1", CS8}}) {
    SetLine(ParseLineSettings(settings), wanted);
    EXPECT_EQ(wanted.c_cflag & ~tcflag_t{CBAUD}, tcflag_t(frame | CLOCAL | CREAD)) << settings;
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
  std::filesystem::create_symlink("/dev/unplugged", "COM2");
  EXPECT_EQ(FindPort({}, 2), "COM2") << "and not a built-in port in its place";
  WriteFile("COM3", "");
  EXPECT_EQ(Refusal(0), "COM0: nicht vorhanden. Adapter einstecken oder eine andere Schnittstelle wählen.\n");
  EXPECT_EQ(Refusal(2),
            "COM2 ist /dev/unplugged: nicht vorhanden. "
            "Der Eintrag COM2 im Arbeitsordner zeigt darauf: Adapter einstecken oder den Eintrag löschen.\n");
  EXPECT_EQ(Refusal(3), "COM3 ist " + std::filesystem::current_path().string() +
                            "/COM3: keine serielle Schnittstelle. "
                            "Den Eintrag COM3 im Arbeitsordner löschen.\n");
  for (const std::string bad : {"9600,O,7", "9600,O,7,1,", "9600,O,9,1", "9600,X,7,1", "9,O,7,1"})
    EXPECT_EQ(Refusal(1, bad), name + "Schnittstellenparameter \"" + bad +
                                   "\" gibt es nicht. Ein Verbindungstest setzt sie zurecht.\n");
  OpenPorts others;
  PosixSerialPort other(others);
  other.Open();
  EXPECT_EQ(Refusal(1), name + "von einem anderen Programm belegt. Das andere Programm beenden.\n");
  other.Close();
  constexpr uid_t kNobody = 65534;
  constexpr gid_t kNotOurs = 1;
  const bool root = geteuid() == 0;  // else we own the line, and no group matters
  if (root) {
    ASSERT_EQ(chown("COM1", 0, kNotOurs), 0);
  }
  const std::string hint = root ? " Benutzer in die Gruppe " + std::string(getgrgid(kNotOurs)->gr_name) +
                                      " aufnehmen, neu anmelden."
                                : "";
  for (const auto& [mode, told] : {std::pair(0440, std::string()), {0060, hint}}) {
    ASSERT_EQ(chmod("COM1", static_cast<mode_t>(mode)), 0);
    ASSERT_EQ(seteuid(root ? kNobody : geteuid()), 0);
    EXPECT_EQ(Refusal(1), name + "keine Zugriffsrechte." + told + "\n");
    ASSERT_EQ(seteuid(getuid()), 0);
  }
  ASSERT_EQ(chown("COM1", geteuid(), getegid()), 0);
  ASSERT_EQ(seteuid(root ? kNobody : geteuid()), 0);
  EXPECT_EQ(OpeningFault(EACCES, "COM1").Fault().advice, "") << "who is in the group already needs no advice";
  ASSERT_EQ(seteuid(getuid()), 0);
}

TEST_F(SerialPortTest, APortIsItsEntryElseABuiltInOneElseTheNextAdapterOnTheBus) {
  namespace fs = std::filesystem;
  const fs::path here = fs::current_path();
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
  plugIn("ttyUSB1", "usb1/1-2/1-2:1.0", "ch341");
  plugIn("ttyUSB2", "usb1/1-1/1-1:1.0", "option");  // a telephone
  plugIn("ttyUSB3", "usb1/1-3/1-3:1.0", "cp210x");
  for (const char* builtIn : {"ttyS0", "ttyS1"}) {
    fs::create_directories(ttys / builtIn);
    WriteFile(ttys / builtIn / "type", builtIn == std::string("ttyS0") ? "0\n" : "4\n");
  }
  WriteFile(host.system / "devices/usb1/1-2/manufacturer", "QinHeng\n");
  WriteFile(host.system / "devices/usb1/1-2/product", "USB Serial\n");
  WriteFile(host.system / "devices/usb1/1-10/product", "UART\n");
  fs::create_directories(host.devices);
  WriteFile(host.devices / "ttyUSB1", "");
  fs::create_symlink(host.devices / "ttyUSB3", "COM4");
  fs::create_symlink(farEnd_->Path(), "COM6");
  fs::create_directories(host.processes / "4711");
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
  struct stat line {};
  ASSERT_EQ(stat("COM6", &line), 0);
  char lock[80];
  std::snprintf(lock, sizeof lock, "1: FLOCK  ADVISORY  WRITE 4711 %02x:%02x:%ju 0 EOF\n", major(line.st_dev),
                minor(line.st_dev), static_cast<std::uintmax_t>(line.st_ino));
  WriteFile(host.processes / "locks", lock);
  WriteFile(host.processes / "4711/comm", "minicom\n");
  EXPECT_EQ(HolderOf(host, "/dev/null"), std::nullopt) << "it has nothing open";
  fs::create_directory(host.processes / "4711/fd");
  fs::create_symlink("/dev/null", host.processes / "4711/fd/3");
  EXPECT_EQ(HolderOf(host, "/dev/null"), "minicom");
  EXPECT_EQ(told(6), "COM6 ist " + farEnd_->Path() + ": belegt von minicom");
  EXPECT_EQ(Sentences(6, OpeningFault(EBUSY, "COM6", host).Fault()),
            "COM6: von einem anderen Programm belegt (minicom). minicom beenden oder abwarten.");
  PosixSerialPorts ports(openPorts_, host);
  port_ = ports.Create();
  plugIn("ttyUSB4", "usb2", "pl2303");
  plugIn("ttyUSB5", "usb3", "pl2303");
  const std::string before = farEnd_->Path(), next = (host.devices / "ttyUSB5").string();
  for (const bool pulled : {false, true}) {
    Open(kUsual, 6);
    fs::remove("COM6");
    if (!pulled) Open(kUsual, 6);  // a port that has been in use keeps its device
    if (pulled) farEnd_.reset();
    EXPECT_EQ(told(6), "COM6 ist /dev/ttyUSB5: nicht vorhanden");
    port_ = ports.Create();
    // Another program's new pseudo-terminal may stand in the place of the old one.
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
  EXPECT_EQ(told(1), "COM1 ist /dev/ttyUSB0 (UART): nicht vorhanden") << "plugged out while the program runs";
}

TEST_F(SerialPortTest, ClosingSendsWhatWasWrittenInTheTimeThatTheLineNeeds) {
  Bytes all(256, '\0');
  std::iota(all.begin(), all.end(), '\0');
  EXPECT_EQ(ParseLineSettings("600,E,7,2").CharacterTime(), std::chrono::nanoseconds(18'333'333))
      << "11 bits";
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
  const std::function<void()> operations[] = {[&] { port_->Input(); }, [&] { port_->Output("S"); },
                                              [&] { port_->SetModemLine(true); }};
  for (const auto& operation : operations) {
    farEnd_.emplace();
    Open();
    operation();  // a terminal without modem lines takes their setting silently
    const std::string path = farEnd_->Path();
    farEnd_.reset();
    if (&operation == operations) farEnd_.emplace();  // takes the place of the old one, if nobody else did
    const std::string what = std::filesystem::exists(path)
                                 ? ": Verbindung unterbrochen. Adapter und Stecker prüfen, "
                                 : ": während der Arbeit abgezogen. Adapter wieder einstecken, ";
    EXPECT_EQ(ExpectFailure(operation), path + what + "dann den Befehl wiederholen.");
  }
  for (const bool answered : {false, true}) {
    farEnd_.emplace();
    Open("300,O,7,1");
    port_->Output(Bytes(2000, 'x'));  // more than a minute on the line
    if (answered) farEnd_->Write("A");
    if (answered) Here(1);
    if (!answered) farEnd_.reset();
    const auto start = std::chrono::steady_clock::now();
    port_->Close();
    const auto lasted = std::chrono::steady_clock::now() - start;
    EXPECT_LT(lasted, std::chrono::seconds(10));
    EXPECT_GE(lasted, std::chrono::milliseconds(answered ? 350 : 0)) << "the rest may need the grace";
  }
}

TEST(LowLatency, IsAskedForAndGivenBackAndNothingElseIsTouched) {
  constexpr int kOther = ASYNC_SKIP_TEST | ASYNC_SPD_VHI;
  constexpr int kLow = kOther | ASYNC_LOW_LATENCY;
  const std::tuple<const char*, int, unsigned long, std::vector<int>> rows[] = {
      {"an adapter", kOther, 0, {kLow, kOther}},
      {"asked for by somebody else", kLow, 0, {}},
      {"a pseudo-terminal", kOther, TIOCGSERIAL, {}},
      {"no rights", kOther, TIOCSSERIAL, {kLow}}};
  for (const auto& [line, flags, refused, told] : rows) {
    serial_struct settings;
    std::memset(&settings, 0x5A, sizeof settings);
    settings.flags = flags;
    const serial_struct before = settings;
    std::vector<int> seen;
    const auto driver = [&, no = refused](unsigned long request, serial_struct& given) {
      if (request == TIOCSSERIAL) seen.push_back(given.flags);
      if (request == no) return false;
      (request == TIOCGSERIAL ? given : settings) = request == TIOCGSERIAL ? settings : given;
      return true;
    };
    std::make_unique<LowLatency>(driver).reset();
    EXPECT_EQ(seen, told) << line;
    EXPECT_EQ(std::memcmp(&settings, &before, sizeof before), 0) << line;
  }
}

}  // namespace
}  // namespace ox
