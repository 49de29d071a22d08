// Whole updates into a simulated device, against the time that their characters take on the line.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/desk.h"
#include "bench/figures.h"
#include "bench/simulator_child.h"
#include "bench/tapped_ports.h"
#include "chooser/chooser_values.h"
#include "chooser/file_chooser.h"
#include "programming/device_kind.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox::bench {
namespace {

constexpr double kRatioLimit = 1.005;
/// With an adapter that hands on every millisecond, as drivers make them when they are asked for low latency.
constexpr double kLowLatencyRatioLimit = 1.02;
/// With an adapter as it comes; only informs.
constexpr double kNoLimit = 0;
constexpr double kTableBlocks = 64;
constexpr double kProgram2Blocks = 128;
constexpr double kProgram3Blocks = 256;

/// Characters of one block: wake-up, header, data, the two answers.
constexpr double kCharactersPerBlock = 1 + 8 + 256 + 2;
constexpr double kBitsPerCharacter = 10;
constexpr double kBaud = 19200;

constexpr std::size_t kFrameSize = 8 + 256;

/// Notes when the first block's wake-up left and when the last block's answer came.
class BlockTimes : public PortTap {
 public:
  void BeforeOutput(BytesView bytes) override {
    if (bytes == "S") wakeUp_ = Now();
    inBlock_ = bytes.size() == kFrameSize;
    if (inBlock_ && blocks_++ == 0) start_ = wakeUp_;
  }
  void AfterInput(BytesView /*bytes*/) override {
    if (inBlock_) end_ = Now();
  }

  double Blocks() const { return blocks_; }
  double Seconds() const { return end_ - start_; }

 private:
  double wakeUp_ = 0;
  bool inBlock_ = false;
  int blocks_ = 0;
  double start_ = 0;
  double end_ = 0;
};

/// Prints the figures of one update; false when it did not reach its end.
bool Report(Figures& figures, const std::string& name, const BlockTimes& times, double blocks, double limit,
            const PlayedUser& user) {
  if (times.Blocks() != blocks || user.LastMessage().find("erfolgreich") == std::string::npos) {
    std::fprintf(stderr, "bench_upload: %s: %g blocks. %s\n", name.c_str(), times.Blocks(),
                 user.LastMessage().c_str());
    return false;
  }
  const double onTheLine = blocks * kCharactersPerBlock * kBitsPerCharacter / kBaud;
  Figures::Print(name + ", its characters on the line", onTheLine, "s");
  Figures::Print(name + ", first wake-up to last answer", times.Seconds(), "s");
  const std::string ratio = name + ", ratio of the two";
  if (limit == kNoLimit) {
    Figures::Print(ratio, times.Seconds() / onTheLine, "");
  } else {
    figures.Print(ratio, times.Seconds() / onTheLine, "", limit);
  }
  return true;
}

/// The host, the device and the session of one update.
struct Rig {
  Rig(Desk& desk, std::vector<std::string> options)
      : device(std::move(options)), ports(desk.posix.ports, times), host(desk.HostWith(ports)) {}

  SimulatorChild device;
  BlockTimes times;
  TappedPorts ports;
  Host host;
  ChooserValues chooserValues;
  Subs subs{{}, chooserValues};
  FileChooser chooser{host, subs};
};

void ChooseFile(Desk& desk, CheckBox& box, const std::string& name) {
  desk.user.WillChoose(OX_DEMO_FOLDER "/" + name);
  box.Click();
}

/// `latency`: of the adapter, in milliseconds.
bool UpdateTables(Desk& desk, Figures& figures, const std::string& name, const char* latency, double limit) {
  Rig rig(desk, {"--tables", OX_DEMO_FOLDER, "--latency", latency});
  updatetab window(rig.host, rig.subs, rig.chooser);
  desk.user.Use(window, [&] {
    ChooseFile(desk, window.ChMes, "netz.mes");
    ChooseFile(desk, window.ChPar, "netz.par");
    ChooseFile(desk, window.ChZuo, "netz.zuo");
    window.TabStart.Click();
  });
  return Report(figures, name, rig.times, kTableBlocks, limit, desk.user);
}

bool UpdateProgram(Desk& desk, Figures& figures, const std::string& generation, const std::string& file,
                   double blocks) {
  Rig rig(desk, {"--generation", generation});
  ProgramUpdateWindow window(rig.host, ProgramWindowKind("OX " + generation), rig.subs, rig.chooser);
  desk.user.Use(window, [&] {
    ChooseFile(desk, window.ChPro, file);
    window.ProStart.Click();
  });
  return Report(figures, "program update of generation " + generation, rig.times, blocks, kRatioLimit,
                desk.user);
}

/// An update by the name that the command line has for it.
struct Upload {
  std::string_view name;
  bool (*run)(Desk& desk, Figures& figures);
};

constexpr std::array kUploads{
    Upload{"tables",
           [](Desk& desk, Figures& figures) {
             return UpdateTables(desk, figures, "table update of 64 blocks", "0", kRatioLimit);
           }},
    Upload{"adapter16",
           [](Desk& desk, Figures& figures) {
             return UpdateTables(desk, figures, "table update by an adapter of 16 ms", "16", kNoLimit);
           }},
    Upload{"adapter1",
           [](Desk& desk, Figures& figures) {
             return UpdateTables(desk, figures, "table update by an adapter of 1 ms", "1",
                                 kLowLatencyRatioLimit);
           }},
    Upload{"program2",
           [](Desk& desk, Figures& figures) {
             return UpdateProgram(desk, figures, "2", "ox2.pro", kProgram2Blocks);
           }},
    Upload{"program3",
           [](Desk& desk, Figures& figures) {
             return UpdateProgram(desk, figures, "3", "ox3.pr3", kProgram3Blocks);
           }},
};

}  // namespace
}  // namespace ox::bench

// bench_upload [TOLERANCE [UPLOAD]]: what the limits are widened by, on a machine that others share, usually
// nothing; and one of the uploads in place of all.
int main(int argumentCount, char** arguments) {
  using namespace ox::bench;
  Desk desk(argumentCount, arguments);
  Figures figures(argumentCount > 1 ? std::atof(arguments[1]) : 0);
  const std::string_view only = argumentCount > 2 ? arguments[2] : "";
  bool done = only.empty();
  for (const Upload& upload : kUploads) {
    if (only.empty()) {
      done &= upload.run(desk, figures);
    } else if (only == upload.name) {
      done = upload.run(desk, figures);
    }
  }
  return done ? figures.ExitStatus() : EXIT_FAILURE;
}
