// oxsim: a simulated Orvanexe, or a modem, behind a name like COM1.
#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <exception>
#include <iostream>

#include "command_line/german_options.h"
#include "simulator/demo/demo_tables.h"
#include "simulator/program/memory_file.h"
#include "simulator/program/options.h"
#include "simulator/program/replay.h"
#include "simulator/pty/line_host.h"

namespace ox::sim {
namespace {

// Set by signals, which come only while the host waits.
volatile std::sig_atomic_t endWanted = 0;
volatile std::sig_atomic_t dumpWanted = 0;
volatile std::sig_atomic_t pushed = 0;  // the button of device or modem

void Note(int signal) {
  if (signal == SIGUSR1) {
    dumpWanted = 1;
  } else if (signal == SIGUSR2) {
    pushed = 1;
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

// Whether a signal has come since the last time.
bool Taken(volatile std::sig_atomic_t& wanted) {
  const bool taken = wanted != 0;
  wanted = 0;
  return taken;
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

// Off or on.
void Push(Device& device, Seconds now) {
  const bool off = device.On(now);
  if (off) {
    device.SwitchOff();
  } else {
    device.SwitchOn();
  }
  std::cout << "oxsim: " << (off ? "aus" : "an") << std::endl;
}

void RunDevice(SimulatorOptions& options, const sigset_t& awaited) {
  DeviceOptions& given = options.parts.device;
  given.clockStart = LocalTimeNow();
  given.tables = ReadDemoImage(options.tables, KeepsOlderImage(given));
  if (!options.memory.empty()) given.memory = ReadMemoryFile(options.memory, given);
  Device device(given);
  for (ReplyFault& fault : options.parts.replies) device.Faults().Add(std::move(fault));
  LineHost host(device, options.parts.host);
  std::cout << "oxsim: OX " << given.generation << " (" << Settings(device.Line()) << ", "
            << device.Stations().points.size() << " Messstellen) an " << options.parts.host.link << " -> "
            << host.Path() << std::endl;
  while (endWanted == 0) {
    host.Work();
    host.Wait(awaited);
    if (Taken(pushed)) Push(device, host.Now());
    if (Taken(dumpWanted) && !options.dump.empty()) DumpMemory(options.dump, device.Memory());
  }
  if (!options.dump.empty()) DumpMemory(options.dump, device.Memory());
  if (!options.memory.empty()) WriteMemoryFile(options.memory, device.Memory());
}

void RunModem(const SimulatorOptions& options, const sigset_t& awaited) {
  SimulatedModem modem(options.parts.modem);
  LineHost host(modem, options.parts.host);
  std::cout << "oxsim: Modem (" << Settings(modem.Line()) << ") an " << options.parts.host.link << " -> "
            << host.Path() << std::endl;
  while (endWanted == 0) {
    host.Work();
    host.Wait(awaited);
    if (Taken(pushed)) modem.DropModemLine(host.Now());
  }
}

int Run(const std::vector<std::string>& arguments) {
  std::string error;
  SimulatorOptions options = ReadOptions(arguments, error);
  if (!error.empty()) {
    std::cerr << "oxsim: " << error << " (siehe oxsim --help)" << std::endl;
    return kWrongUse;
  }
  if (options.help) {
    std::cout << HelpText();
    return 0;
  }
  if (options.version) {
    std::cout << VersionLine("oxsim") << std::endl;
    return 0;
  }
  const sigset_t awaited = CatchSignals();
  try {
    if (!options.replay.empty()) return PlayLog(options, awaited, [] { return endWanted != 0; });
    if (options.modem) {
      RunModem(options, awaited);
    } else {
      RunDevice(options, awaited);
    }
  } catch (const std::exception& failure) {
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
