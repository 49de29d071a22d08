// The near port of a null modem.
#include "platform/port_contract.h"
#include "platform/win32/null_modem.h"

namespace ox::test {
namespace {

struct OnANullModem : Line {
  NullModem modem;
  OpenPorts openPorts;
  Win32SerialPorts ports{openPorts};
  SerialPorts& Ports() override { return ports; }
  int Number() const override { return NullModem::kNear; }
  const OpenPorts* Waiting() const override { return &openPorts; }
  void Say(char said) override { modem.Far().Output({&said, 1}); }
  void Pull() override { modem.Pull(); }
  void Work() override { modem.Settle(); }
};

}  // namespace

std::vector<Kind> KindsOfThisHost() {
  // The pseudo-terminals behind the ports keep what comes; and wine lets a second program open them.
  return {Kind{"NullModem", Make<OnANullModem>, Keeps::kWhatCameToAClosedPort, false, false}};
}

}  // namespace ox::test
