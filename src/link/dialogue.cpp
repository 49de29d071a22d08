// The dialogue's steps and its two failures: a device that does not answer rightly, a port that does not
// work.
#include "link/dialogue.h"

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

Dialogue::Dialogue(Machine& machine, const SessionSettings& settings, DialogueObserver& observer)
    : settings_(settings), observer_(observer), line_(machine, settings, observer), waits_(machine, line_) {}

Bytes Dialogue::Exchange(const Bytes& request, bool multiRecord, const LineHandler& onLine) {
  const LineCloser closer(line_);
  Bytes result;
  try {
    line_.OpenPort();
    if (!Converse(request, multiRecord, onLine, result)) {
      line_.WriteTrace("TN");
      line_.Send(kNo);
      observer_.Tell(kWrongAnswer);
    }
    return result;
  } catch (const PortError&) {
    observer_.Tell(PortFailure(settings_, PortNaming::kNumber));
    return {};
  }
}

bool Dialogue::Converse(const Bytes& request, bool multiRecord, const LineHandler& onLine, Bytes& result) {
  if (waits_.WakeUp() != kYes) return false;
  line_.WriteTrace("T" + request);
  line_.Send(request);
  waits_.DropReceived();
  return CollectLines(multiRecord, onLine, result);
}

bool Dialogue::CollectLines(bool multiRecord, const LineHandler& onLine, Bytes& result) {
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
