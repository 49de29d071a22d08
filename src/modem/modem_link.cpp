// The modem's dialogue, step by step.
#include "modem/modem_link.h"

#include "link/line_protocol.h"
#include "link/port_failure.h"
#include "link/wait.h"

namespace ox {
namespace {

constexpr std::string_view kWrongAnswer = "Modem antwortet nicht oder falsch: Prozedur abgebrochen!";

}  // namespace

ModemLink::ModemLink(Host& host, const SessionSettings& settings, TextBox& trace)
    : host_(host),
      settings_(settings),
      panel_(host, settings, trace, kModemTrace),
      line_(host, settings, panel_),
      waits_(host, line_) {}

bool ModemLink::OpenPort() {
  try {
    line_.OpenPort();
    return true;
  } catch (const PortError&) {
    ReportPortFailure();
    return false;
  }
}

Bytes ModemLink::ModemDialogue(const Bytes& request) {
  if (!OpenPort()) return {};
  try {
    if (!WakeModem()) return {};
    line_.WriteTrace("T" + request);
    line_.Send(request);
    return AwaitAnswer();
  } catch (const PortError&) {
    ReportPortFailure();
    return {};
  }
}

bool ModemLink::WakeModem() {
  if (waits_.WakeUp() == kYes) return true;
  line_.WriteTrace("TN");
  line_.Send(kNo);
  host_.windows.ShowMessage(kWrongAnswer);
  return false;
}

Bytes ModemLink::AwaitAnswer() {
  for (;;) {
    Bytes part = waits_.WaitForInput(kDialogueWait);
    if (part.empty()) {
      host_.windows.ShowMessage(kWrongAnswer);
      return {};
    }
    line_.WriteTrace("R" + part);
    if (part == kEndOfDialogue || part == kNoAndEndOfDialogue) return {};
    if (part != kNo) return part;
    // A modem may answer "N" for ever; the user who closes the window ends the wait.
    if (stopped_) return {};
  }
}

void ModemLink::CallForData() {
  panel_.Clear();
  if (!OpenPort()) return;
  try {
    PauseModemLine();
    TraceInput();
  } catch (const PortError&) {
    ReportPortFailure();
  }
}

void ModemLink::PauseModemLine() {
  line_.Port().SetModemLine(false);
  // Midnight ends the pause.
  Pause(host_, Difference{host_.clock.SecondsSinceMidnight(), kModemPause}, stopped_);
  line_.Port().SetModemLine(true);
}

void ModemLink::TraceInput() {
  while (!stopped_) {
    const Bytes got = waits_.WaitForInput(kModemCallWait);
    if (got.empty()) return;
    line_.WriteTrace("R" + got);
  }
}

void ModemLink::ReportPortFailure() {
  line_.ClosePort();
  host_.windows.ShowMessage(PortFailure(settings_, PortNaming::kNumber));
}

}  // namespace ox
