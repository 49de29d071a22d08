// The request/reply dialogue with the device.
#pragma once

#include <functional>
#include <string_view>

#include "link/line_trace.h"
#include "link/line_waits.h"
#include "link/serial_line.h"
#include "platform/machine.h"
#include "session/session_settings.h"

namespace ox {

/// Receives how dialogues go: a window, a console. The dialogue goes on when a call returns.
class DialogueObserver : public LineTrace {
 public:
  /// Why the dialogue fails, UTF-8; once in a dialogue that fails, never in one that ends well.
  virtual void Tell(std::string_view message) = 0;
};

/// Needs no window. Machine, settings and observer outlive it.
class Dialogue {
 public:
  using LineHandler = std::function<void(BytesView line)>;

  Dialogue(Machine& machine, const SessionSettings& settings, DialogueObserver& observer);

  /// Wakes the device, sends `request` as it stands and collects the reply: one line, or with `multiRecord`
  /// the lines up to and including "E" CR. Opens the port and closes it on every way out. Returns the reply
  /// lines with their CRs. On a failure the observer has been told: a silent device leaves those that had
  /// come, a port that fails leaves none. `onLine` is told of each reply line as it comes.
  Bytes Exchange(const Bytes& request, bool multiRecord, const LineHandler& onLine = {});

 private:
  /// True when the dialogue ended well. `result` grows by every line received.
  bool Converse(const Bytes& request, bool multiRecord, const LineHandler& onLine, Bytes& result);
  bool CollectLines(bool multiRecord, const LineHandler& onLine, Bytes& result);

  const SessionSettings& settings_;
  DialogueObserver& observer_;
  SerialLine line_;
  LineWaits waits_;
};

}  // namespace ox
