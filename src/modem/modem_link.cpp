// The modem's dialogue, step by step.
#include "modem/modem_link.h"

#include <cmath>
#include <string>

#include "link/link_messages.h"
#include "platform/text.h"

namespace ox {
namespace {

constexpr BytesView kReady = "A";
constexpr BytesView kRefusal = "N";
constexpr BytesView kModemNo = "N";
constexpr BytesView kModemEnd = "R";
constexpr BytesView kModemNoAndEnd = "NR";

constexpr std::string_view kWrongAnswer = "Modem antwortet nicht oder falsch: Prozedur abgebrochen!";

constexpr float kPauseSeconds = 1.0F;
/// Only the first seconds of a day wait so long; see WaitForInput.
constexpr int kCallWait = 10;

}  // namespace

ModemLink::ModemLink(Host& host, const SessionSettings& settings, TextBox& trace)
    : host_(host), settings_(settings), line_(host, settings, trace, kModemTrace), waits_(host, line_) {}

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
  if (waits_.WakeUp() == kReady) return true;
  line_.WriteTrace("TN");
  line_.Send(kRefusal);
  host_.windows.ShowMessage(kWrongAnswer);
  return false;
}

Bytes ModemLink::AwaitAnswer() {
  for (;;) {
    Bytes part = waits_.WaitForInput(LineWaits::kDialogueWait);
    if (part.empty()) {
      host_.windows.ShowMessage(kWrongAnswer);
      return {};
    }
    line_.WriteTrace("R" + part);
    if (part == kModemEnd || part == kModemNoAndEnd) return {};
    if (part != kModemNo) return part;
    // A modem may say no without end, a user who closes the window need not hear it out.
    if (stopped_) return {};
  }
}

void ModemLink::CallForData() {
  line_.ClearTrace();
  if (!OpenPort()) return;
  try {
    PauseModemLine();
    TraceInput();
  } catch (const PortError&) {
    ReportPortFailure();
  }
}

void ModemLink::PauseModemLine() {
  line_.SetModemLine(false);
  const float start = host_.clock.SecondsSinceMidnight();
  // The difference counts without its sign: midnight ends the pause.
  while (!stopped_ && std::abs(host_.clock.SecondsSinceMidnight() - start) < kPauseSeconds) {
    host_.windows.Rest();
  }
  line_.SetModemLine(true);
}

void ModemLink::TraceInput() {
  while (!stopped_) {
    const Bytes got = waits_.WaitForInput(kCallWait);
    if (got.empty()) return;
    line_.WriteTrace("R" + got);
  }
}

void ModemLink::ReportPortFailure() {
  line_.ClosePort();
  host_.windows.ShowMessage(ToText(settings_.ComPort).append(kPortFailure));
}

}  // namespace ox
