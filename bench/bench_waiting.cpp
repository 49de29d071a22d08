// The processor's share in a wait: a whole connection test with nothing connected.
#include <sys/resource.h>

#include <cstdio>

#include "bench/desk.h"
#include "bench/far_end.h"
#include "bench/figures.h"
#include "link/verbindungstest.h"

namespace ox::bench {
namespace {

constexpr double kPercent = 100;
constexpr double kShareLimit = 0.5;       // percent
constexpr double kShortestSeconds = 4.4;  // of a test that made all its nine probes

double Seconds(const timeval& time) {
  constexpr double kMicrosecondsPerSecond = 1e6;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / kMicrosecondsPerSecond;
}

double ProcessorSeconds() {
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

int Run(Desk& desk) {
  const FarEnd nobody;
  Host host = desk.HostWith(desk.posix.ports);
  SessionSettings settings;
  RunConnectionTest(host, settings);  // what is done once in a process is done now
  const double start = Now();
  const double usedBefore = ProcessorSeconds();
  RunConnectionTest(host, settings);
  const double used = ProcessorSeconds() - usedBefore;
  const double wall = Now() - start;
  if (wall < kShortestSeconds || settings.Connected || !desk.user.LastMessage().empty()) {
    std::fprintf(stderr, "bench_waiting: the test took %.2f s. %s\n", wall, desk.user.LastMessage().c_str());
    return EXIT_FAILURE;
  }
  Figures figures;
  figures.Print("connection test with nothing connected", wall, "s");
  figures.Print("processor share meanwhile", used / wall * kPercent, "%", kShareLimit);
  return figures.ExitStatus();
}

}  // namespace
}  // namespace ox::bench

int main(int argumentCount, char** arguments) {
  ox::bench::Desk desk(argumentCount, arguments);
  return ox::bench::Run(desk);
}
