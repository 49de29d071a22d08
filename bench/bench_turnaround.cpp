// From the last character of a reply on the line to the acknowledgement on the line.
#include <cstdio>
#include <ctime>
#include <vector>

#include "bench/desk.h"
#include "bench/far_end.h"
#include "bench/figures.h"
#include "bench/tapped_ports.h"
#include "chooser/chooser_values.h"
#include "chooser/file_chooser.h"
#include "exchange/datenaustausch.h"

namespace ox::bench {
namespace {

constexpr std::size_t kDialogues = 300;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kMedianLimit = 0.2;      // milliseconds
constexpr double kPercentile99Limit = 1;  // milliseconds

constexpr BytesView kReply = "022.11.2026 22:02:00\r";
/// Between two characters at 9600 baud: start bit, seven data bits, parity, stop bit.
constexpr long kCharacterNanoseconds = 1041667;

/// A device that answers "T" at the speed of its line and notes how long the acknowledgement takes.
class Device {
 public:
  Device() {
    farEnd_.Answer([this](BytesView arrived) { Take(arrived); });
  }

  /// In milliseconds, one for each dialogue. Not while a dialogue is under way.
  const std::vector<double>& Times() const { return times_; }

 private:
  void Take(BytesView arrived) {
    const double now = Now();
    // On a busy machine an acknowledgement and the next wake-up are seen together.
    for (const char character : arrived) {
      if (character == 'S') farEnd_.Write("A");
      if (character == 'T') Say(kReply);
      if (character == 'A') times_.push_back((now - said_) * kMillisecondsPerSecond);
    }
  }

  void Say(BytesView line) {
    for (const char& character : line) {
      const timespec pause{0, kCharacterNanoseconds};
      clock_nanosleep(CLOCK_MONOTONIC, 0, &pause, nullptr);
      said_ = Now();
      farEnd_.Write(BytesView(&character, 1));
    }
  }

  double said_ = 0;
  std::vector<double> times_;
  FarEnd farEnd_;  // ends first: its thread uses the others
};

/// Notes how long the program itself takes, from reading the last character to writing the acknowledgement.
class OwnTimes : public PortTap {
 public:
  void AfterInput(BytesView /*bytes*/) override { read_ = Now(); }
  void BeforeOutput(BytesView bytes) override {
    if (bytes == "A") times_.push_back((Now() - read_) * kMillisecondsPerSecond);
  }
  const std::vector<double>& Times() const { return times_; }

 private:
  double read_ = 0;
  std::vector<double> times_;
};

int Run(Desk& desk) {
  Device device;
  OwnTimes own;
  TappedPorts ports(desk.posix.ports, own);
  Host host = desk.HostWith(ports);
  ChooserValues chooserValues;
  Subs subs{{}, chooserValues};
  FileChooser chooser(host, subs);
  Datenaustausch window(host, subs.settings, chooser);
  desk.user.Use(window, [&] {
    for (std::size_t dialogue = 0; dialogue < kDialogues; ++dialogue) window.Zeitabruf.Click();
  });
  if (device.Times().size() < kDialogues || !desk.user.LastMessage().empty()) {
    std::fprintf(stderr, "bench_turnaround: %zu of %zu dialogues. %s\n", device.Times().size(), kDialogues,
                 desk.user.LastMessage().c_str());
    return EXIT_FAILURE;
  }
  Figures figures;
  figures.Print("last character of a reply to acknowledgement, median", Percentile(device.Times(), 0.5), "ms",
                kMedianLimit);
  figures.Print("last character of a reply to acknowledgement, 99th percentile",
                Percentile(device.Times(), 0.99), "ms", kPercentile99Limit);
  Figures::Print("of which in the program itself, median", Percentile(own.Times(), 0.5), "ms");
  Figures::Print("of which in the program itself, 99th percentile", Percentile(own.Times(), 0.99), "ms");
  return figures.ExitStatus();
}

}  // namespace
}  // namespace ox::bench

int main(int argumentCount, char** arguments) {
  ox::bench::Desk desk(argumentCount, arguments);
  return ox::bench::Run(desk);
}
