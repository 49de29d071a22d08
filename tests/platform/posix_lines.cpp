// Pseudo-terminals, with an end of their own and with the simulator's.
#include <optional>

#include "platform/port_contract.h"
#include "platform/posix/posix_serial_port.h"
#include "simulator/pty/line_host.h"
#include "support/scratch_folder.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

struct OnThisHost : Line {
  ScratchFolder folder;
  OpenPorts openPorts;
  PosixSerialPorts ports{openPorts};
  SerialPorts& Ports() override { return ports; }
  const OpenPorts* Waiting() const override { return &openPorts; }
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
  ScriptedDevice end;
  std::optional<sim::LineHost> host{std::in_place, end, sim::HostOptions{.paced = false}};
  void Say(char said) override { end.Say({{0, Bytes(1, said)}}); }
  void Work() override {
    if (host) host->Work();
  }
  void PullOut() override { host.reset(); }
};

}  // namespace

std::vector<Kind> KindsOfThisHost() {
  return {Kind{"PseudoTerminal", Make<OnAPseudoTerminal>, Keeps::kAll, false},
          Kind{"SimulatedLine", Make<OnTheSimulatedLine>, Keeps::kNothing}};
}

}  // namespace ox::test
