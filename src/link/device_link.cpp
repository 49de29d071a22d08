// The dialogue's steps and its two failures: a device that does not answer rightly, a port that does not
// work.
#include "link/device_link.h"

#include "link/line_protocol.h"
#include "link/port_failure.h"

namespace ox {
namespace {

constexpr std::string_view kWrongAnswer = "Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!";

/// Closes the line on every way out of a dialogue, after the user has been told.
class LineCloser {
 public:
  explicit LineCloser(SerialLine& line) : line_(line) {}
  LineCloser(const LineCloser&) = delete;
  LineCloser& operator=(const LineCloser&) = delete;
  ~LineCloser() { line_.ClosePort(); }

 private:
  SerialLine& line_;
};

}  // namespace

DeviceLink::DeviceLink(Host& host, const SessionSettings& settings, TextBox& trace, TraceMode mode)
    : host_(host),
      settings_(settings),
      mode_(mode),
      line_(host, settings, trace, kDeviceTrace),
      waits_(host, line_) {}

Bytes DeviceLink::DeviceDialogue(const Bytes& request, bool multiRecord, const LineHandler& onLine) {
  if (mode_ == TraceMode::kLatestOnly) line_.ClearTrace();
  const LineCloser closer(line_);
  Bytes result;
  try {
    line_.OpenPort();
    if (!Converse(request, multiRecord, onLine, result)) {
      line_.WriteTrace("TN");
      line_.Send(kNo);
      host_.windows.ShowMessage(kWrongAnswer);
    }
    return result;
  } catch (const PortError&) {
    host_.windows.ShowMessage(PortFailure(settings_, PortNaming::kNumber));
    return {};
  }
}

bool DeviceLink::Converse(const Bytes& request, bool multiRecord, const LineHandler& onLine, Bytes& result) {
  if (waits_.WakeUp() != kYes) return false;
  line_.WriteTrace("T" + request);
  line_.Send(request);
  waits_.DropReceived();
  return CollectLines(multiRecord, onLine, result);
}

bool DeviceLink::CollectLines(bool multiRecord, const LineHandler& onLine, Bytes& result) {
  for (;;) {
    const Bytes part = waits_.CollectReply(kDialogueWait);
    if (part.empty()) return false;
    line_.WriteTrace("R" + part);
    if (part == kNo) continue;
    if (part == kEndOfDialogue) return true;
    result += part;
    if (onLine) onLine(part);
    if (!multiRecord || part == kEndOfRecords) {
      line_.WriteTrace("TA");
      line_.Send(kYes);
      return true;
    }
  }
}

}  // namespace ox
