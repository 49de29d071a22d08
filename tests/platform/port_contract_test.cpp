// What every port promises, tried on the ports of this host and on those that the tests of windows stand on.
#include "platform/posix/posix_serial_port.h"
#include "simulator/pty/line_host.h"
#include "support/scratch_folder.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kAsTheEnd = "9600,O,7,1";

/// A line with ports at its near end; the far end says what the test wants.
struct Line {
  virtual ~Line() = default;
  virtual SerialPorts& Ports() = 0;
  virtual void Say(char said) { end.Say({{0, Bytes(1, said)}}); }
  virtual void Pull() = 0;
  virtual void Work() {}  // carries what is under way
  ScriptedDevice end;
};

struct OnThisHost : Line {
  ScratchFolder folder;
  OpenPorts openPorts;
  PosixSerialPorts ports{openPorts};
  SerialPorts& Ports() override { return ports; }
  void Pull() override {
    PullOut();
    std::filesystem::create_symlink("/dev/unplugged", "COM1");  // else it would be the built-in port
  }
  virtual void PullOut() = 0;
};

struct FarEnd : sim::PtyLine {
  sim::PortLink link{"COM1", Path()};
};

struct OnAPseudoTerminal : OnThisHost {
  std::optional<FarEnd> terminal{std::in_place};
  void Say(char said) override { terminal->Write({&said, 1}); }
  void PullOut() override { terminal.reset(); }
};

struct OnTheSimulatedLine : OnThisHost {
  std::optional<sim::LineHost> host{std::in_place, end, sim::HostOptions{.paced = false}};
  void Work() override {
    if (host) host->Work();
  }
  void PullOut() override { host.reset(); }
};

template <bool keeps>
struct InMemory : Line {
  InMemory() { host.ports.Connect(1, &end), host.ports.KeepForClosedPorts(keeps); }
  TestHost host;
  SerialPorts& Ports() override { return host.ports; }
  void Pull() override { host.ports.Break(); }
};

template <class Made>
std::unique_ptr<Line> Make() {
  return std::make_unique<Made>();
}

struct Kind {
  const char* name;
  std::unique_ptr<Line> (*make)();
  bool keeps;          // what comes to a closed port
  bool judges = true;  // characters by the settings of both ends
};

class PortContract : public testing::TestWithParam<Kind> {
 protected:
  void Begin() {
    port_.reset(), other_.reset(), line_.reset();
    line_ = GetParam().make();
    port_ = line_->Ports().Create(), other_ = line_->Ports().Create();
    port_->SetSettings(kAsTheEnd), other_->SetSettings(kAsTheEnd);
  }

  /// Does what the letter tells, a digit is said by the far end; whether the port allowed it.
  bool Try(char letter) {
    const std::map<char, std::function<void()>> operations{{'o', [&] { port_->Open(); }},
                                                           {'c', [&] { port_->Close(); }},
                                                           {'i', [&] { port_->Input(); }},
                                                           {'s', [&] { port_->Output("S"); }},
                                                           {'m', [&] { port_->SetModemLine(true); }},
                                                           {'=', [&] { port_->SetSettings(kAsTheEnd); }},
                                                           {'e', [&] { port_->SetSettings("9600,E,7,1"); }},
                                                           {'w', [&] { port_->SetSettings("9600,X,7,1"); }},
                                                           {'x', [&] { port_->SetCommPort(0); }},
                                                           {'y', [&] { port_->SetCommPort(1); }},
                                                           {'z', [&] { port_->SetCommPort(9999); }},
                                                           {'t', [&] { other_->Open(); }},
                                                           {'f', [&] { other_->Close(); }},
                                                           {'p', [&] { line_->Pull(); }}};
    const auto operation = operations.find(letter);
    try {
      operation != operations.end() ? operation->second() : line_->Say(letter);
    } catch (const PortError&) {
      return false;
    }
    line_->Work();
    return true;
  }

  std::unique_ptr<Line> line_;
  std::unique_ptr<SerialPort> port_, other_;
};

TEST_P(PortContract, WhatItRefusesAndWhetherItIsOpenThen) {
  // Letters as in Try; then for each: refused (!), the port open (o) or closed (c) afterwards.
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"a closed port", "ismcic", "!c!c!cc!cc"},
      {"opened and closed", "omsisci", "oooooc!c"},
      {"opened twice", "oosc", "oooc"},
      {"another number", "ozicyo", "o!oocco"},
      {"no such port", "xozoyo", "c!cc!cco"},
      {"wrong settings", "wo=o", "c!cco"},
      {"taken", "tosfotc", "c!c!cco!oc"},
      {"a pulled cable, read", "opisco", "oo!c!cc!c"},
      {"a pulled cable, written", "opsio", "oo!c!c!c"},
      {"a pulled cable, its modem line", "opm", "oo!c"},
      {"a pulled cable, closed", "opco", "ooc!c"},
  };
  for (const auto& [what, letters, expected] : rows) {
    Begin();
    std::string seen;
    testing::internal::CaptureStderr();  // the host's port says why it cannot be opened
    for (const char letter : letters) {
      if (!Try(letter)) seen += '!';
      seen += port_->PortOpen() ? 'o' : 'c';
      const auto* host = dynamic_cast<OnThisHost*>(line_.get());
      const int open = (port_->PortOpen() ? 1 : 0) + (other_->PortOpen() ? 1 : 0);
      EXPECT_TRUE(host == nullptr || std::ssize(host->openPorts.Handles()) == open) << "what Rest waits on";
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(seen, expected) << what;
  }
}

TEST_P(PortContract, OpeningDropsNothingThatTheHostHasKept) {
  // Letters as in Try; what is read then where the host keeps what comes to a closed port, and where it is
  // lost.
  const std::tuple<std::string, Bytes, Bytes> rows[] = {{"o34", "34", "34"},
                                                        {"3o4", "34", "4"},
                                                        {"oc3o4", "34", "4"},
                                                        {"o3co4", "34", "4"},
                                                        {"eo3c=o4", "34", "4"}};
  const auto expectRead = [&](const std::string& happening, const Bytes& expected) {
    Begin();
    for (const char letter : happening) Try(letter);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    Bytes read;
    while (read.size() < expected.size() && std::chrono::steady_clock::now() < end) read += port_->Input();
    EXPECT_EQ(read + port_->Input(), expected) << happening;
  };
  for (const auto& [happening, kept, lost] : rows) expectRead(happening, GetParam().keeps ? kept : lost);
  expectRead("eo34", GetParam().judges ? Bytes(2, '\0') : "34");
}

INSTANTIATE_TEST_SUITE_P(On, PortContract,
                         testing::Values(Kind{"PseudoTerminal", Make<OnAPseudoTerminal>, true, false},
                                         Kind{"SimulatedLine", Make<OnTheSimulatedLine>, false},
                                         Kind{"MemoryThatKeeps", Make<InMemory<true>>, true},
                                         Kind{"MemoryThatLoses", Make<InMemory<false>>, false}),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace ox::test
