// oxsim: a simulated Orvanexe, or a modem, behind a name like COM1.
#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include "simulator/demo/demo_tables.h"
#include "simulator/program/options.h"
#include "simulator/pty/line_host.h"
#include "version/version.h"

namespace ox::sim {
namespace {

constexpr int kUsageError = 2;

// Set by signals, which come only while the host waits.
volatile std::sig_atomic_t endWanted = 0;
volatile std::sig_atomic_t dumpWanted = 0;
volatile std::sig_atomic_t sendWanted = 0;

void Note(int signal) {
  if (signal == SIGUSR1) {
    dumpWanted = 1;
  } else if (signal == SIGUSR2) {
    sendWanted = 1;
  } else {
    endWanted = 1;
  }
}

// Holds the signals back except while the host waits; returns the mask to wait with.
sigset_t CatchSignals() {
  constexpr std::array<int, 5> kSignals{SIGINT, SIGTERM, SIGHUP, SIGUSR1, SIGUSR2};
  sigset_t held;
  sigset_t before;
  sigemptyset(&held);
  struct sigaction action {};
  action.sa_handler = Note;
  for (const int signal : kSignals) {
    sigaddset(&held, signal);
    sigaction(signal, &action, nullptr);
  }
  sigprocmask(SIG_BLOCK, &held, &before);
  for (const int signal : kSignals) sigdelset(&before, signal);
  return before;
}

void WriteFile(const std::filesystem::path& path, const Bytes& content) {
  // Written beside and renamed, so that who waits for the file never sees half of it.
  const std::filesystem::path beside = path.string() + ".neu";
  std::ofstream(beside, std::ios::binary) << content;
  std::error_code error;
  std::filesystem::rename(beside, path, error);
  if (error) std::cerr << "oxsim: " << path.string() << ": " << error.message() << std::endl;
}

void Dump(const Device& device, const std::string& folder) {
  if (folder.empty()) return;
  WriteFile(std::filesystem::path(folder) / "tables.bin", device.Memory().Tables());
  WriteFile(std::filesystem::path(folder) / "program.bin", device.Memory().Program());
}

std::string Settings(const LineSettings& line) {
  return std::to_string(line.baud) + "," + line.parity + "," + std::to_string(line.dataBits) + ",1";
}

std::int64_t LocalTimeNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return static_cast<std::int64_t>(now) + local.tm_gmtoff;
}

void RunDevice(SimulatorOptions& options, const sigset_t& awaited) {
  DeviceOptions& given = options.parts.device;
  given.clockStart = LocalTimeNow();
  given.tables = ReadDemoImage(options.tables, KeepsOlderImage(given));
  Device device(given);
  for (ReplyFault& fault : options.parts.replies) device.Faults().Add(std::move(fault));
  LineHost host(device, options.parts.host);
  std::cout << "oxsim: OX " << given.generation << " (" << Settings(device.Line()) << ", "
            << device.Stations().points.size() << " Messstellen) an " << options.parts.host.link << " -> "
            << host.Path() << std::endl;
  while (endWanted == 0) {
    host.Work();
    host.Wait(awaited);
    if (dumpWanted == 0) continue;
    dumpWanted = 0;
    Dump(device, options.dump);
  }
  Dump(device, options.dump);
}

void RunModem(const SimulatorOptions& options, const sigset_t& awaited) {
  SimulatedModem modem(options.parts.modem);
  LineHost host(modem, options.parts.host);
  std::cout << "oxsim: Modem (" << Settings(modem.Line()) << ") an " << options.parts.host.link << " -> "
            << host.Path() << std::endl;
  while (endWanted == 0) {
    host.Work();
    host.Wait(awaited);
    if (sendWanted == 0) continue;
    sendWanted = 0;
    modem.DropModemLine(host.Now());
  }
}

int Run(const std::vector<std::string>& arguments) {
  std::string error;
  SimulatorOptions options = ReadOptions(arguments, error);
  if (!error.empty()) {
    std::cerr << "oxsim: " << error << " (siehe oxsim --help)" << std::endl;
    return kUsageError;
  }
  if (options.help) {
    std::cout << HelpText();
    return 0;
  }
  if (options.version) {
    std::cout << "oxsim " << kVersion << (*kCommit == '\0' ? "" : " (" + std::string(kCommit) + ")")
              << std::endl;
    return 0;
  }
  const sigset_t awaited = CatchSignals();
  try {
    if (options.modem) {
      RunModem(options, awaited);
    } else {
      RunDevice(options, awaited);
    }
  } catch (const std::system_error& failure) {
    std::cerr << "oxsim: " << failure.what() << std::endl;
    return 1;
  }
  return 0;
}

}  // namespace
}  // namespace ox::sim

int main(int count, char** arguments) {
  return ox::sim::Run({arguments + 1, arguments + count});
}
