// Looking the log through, then playing it.
#include "simulator/program/replay.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "simulator/pty/line_host.h"
#include "simulator/replay/log_reader.h"
#include "simulator/replay/replayed_end.h"

namespace ox::sim {
namespace {

/// Carries out what reads the log; what it throws gets the file's name.
template <typename Work>
auto OnLog(const std::string& file, Work work) {
  try {
    return work();
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(file + ": " + error.what());
  }
}

std::ifstream OpenLog(const std::string& file) {
  // A pipe without a writer would keep oxsim waiting, deaf to Ctrl+C.
  std::error_code error;
  const bool isFile = std::filesystem::is_regular_file(file, error);
  std::ifstream log;
  if (isFile) log.open(file, std::ios::binary);
  if (!isFile || !log) throw std::runtime_error("lässt sich nicht lesen");
  return log;
}

void TellBeginning(const SimulatorOptions& options, const LogContents& contents, const LineHost& host) {
  const int last = contents.openings;
  std::cout << "oxsim: Protokoll von " << contents.header.build << ", begonnen " << contents.header.begun
            << ", " << last << (last == 1 ? " Öffnung" : " Öffnungen") << ", ab Öffnung " << options.opening
            << " an " << options.parts.host.link << " -> " << host.Path() << std::endl;
}

/// Tells how it ended; returns the exit status.
int TellEnd(const ReplayedEnd& end) {
  if (!end.Difference().empty()) {
    std::cerr << "oxsim: Unterschied: " << end.Difference() << std::endl;
    return kPcDiffers;
  }
  if (end.Ended()) {
    std::cout << "oxsim: zu Ende gespielt, kein Unterschied" << std::endl;
    return 0;
  }
  std::cout << "oxsim: abgebrochen vor Zeile " << end.NextLine()
            << " des Protokolls, bis dahin kein Unterschied" << std::endl;
  return 1;
}

}  // namespace

int PlayLog(const SimulatorOptions& options, const sigset_t& awaited,
            const std::function<bool()>& endWanted) {
  const std::string& file = options.replay;
  const LogContents contents = OnLog(file, [&] {
    std::ifstream log = OpenLog(file);
    return LookThrough(log);
  });
  std::ifstream log = OnLog(file, [&] { return OpenLog(file); });
  ReplayedEnd end = OnLog(file, [&] { return ReplayedEnd(log, options.opening); });
  HostOptions line = options.parts.host;
  line.paced = false;  // the times in the log are those of a line
  line.latency = 0;
  LineHost host(end, line);
  TellBeginning(options, contents, host);
  for (host.Work(); !end.Ended() && !endWanted(); host.Work()) host.Wait(awaited);
  return TellEnd(end);
}

}  // namespace ox::sim
