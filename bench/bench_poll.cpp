// A collective poll of a thousand records that already wait on the line: collected, looked up and shown.
#include <atomic>
#include <cstdio>
#include <fstream>
#include <thread>

#include "bench/desk.h"
#include "bench/far_end.h"
#include "bench/figures.h"
#include "bench/sample_tables.h"
#include "bench/tapped_ports.h"
#include "chooser/chooser_values.h"
#include "chooser/file_chooser.h"
#include "exchange/datenaustausch.h"

namespace ox::bench {
namespace {

constexpr std::size_t kRecords = 1000;
constexpr int kPolls = 11;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLimit = 100;  // milliseconds
constexpr char kTableName[] = "probe.mes";

/// The reply of a device with a thousand values.
Bytes Reply() {
  Bytes reply = "\r";
  for (std::size_t index = 0; index < kRecords; ++index) {
    reply += SamplePointNumber(index) + ": 0001 s   12.3\r";
  }
  return reply + "E\r";
}

/// Answers the wake-up, and has the reply wait on the line before the request is done with.
class WaitingReply : public PortTap {
 public:
  WaitingReply() {
    farEnd_.Answer([this](BytesView arrived) {
      if (arrived.ends_with('S')) farEnd_.Write("A");
      if (arrived != "P") return;
      farEnd_.Fill(reply_);
      replies_.fetch_add(1);
      replies_.notify_one();
      farEnd_.Finish();
    });
  }

  void AfterOutput(BytesView bytes) override {
    if (bytes != "P") return;
    replies_.wait(known_);
    known_ = replies_;
    start_ = Now();
  }

  /// When the last reply was waiting.
  double Start() const { return start_; }

 private:
  Bytes reply_ = Reply();
  std::atomic<int> replies_ = 0;
  int known_ = 0;
  double start_ = 0;
  FarEnd farEnd_;
};

int Run(Desk& desk) {
  std::ofstream(kTableName, std::ios::binary) << MakeSampleTables(kRecords, 1).points;
  WaitingReply line;
  TappedPorts ports(desk.posix.ports, line);
  Host host = desk.HostWith(ports);
  ChooserValues chooserValues;
  Subs subs{{}, chooserValues};
  FileChooser chooser(host, subs);
  Datenaustausch window(host, subs.settings, chooser);
  std::vector<double> times;
  desk.user.WillChoose(kTableName);
  desk.user.Use(window, [&] {
    window.duemstwal.Click();
    for (int poll = 0; poll < kPolls; ++poll) {
      window.Sammelabruf.Click();
      QApplication::processEvents();  // the values are painted
      times.push_back((Now() - line.Start()) * kMillisecondsPerSecond);
    }
  });
  if (window.mewanz.Text().find("   P0999: 0001") == std::string::npos || !desk.user.LastMessage().empty()) {
    std::fprintf(stderr, "bench_poll: the values were not shown. %s\n", desk.user.LastMessage().c_str());
    return EXIT_FAILURE;
  }
  Figures figures;
  figures.Print("1000 records that wait on the line collected, looked up and shown", Percentile(times, 0.5),
                "ms", kLimit);
  return figures.ExitStatus();
}

}  // namespace
}  // namespace ox::bench

int main(int argumentCount, char** arguments) {
  ox::bench::Desk desk(argumentCount, arguments);
  return ox::bench::Run(desk);
}
