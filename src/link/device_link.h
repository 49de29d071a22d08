// A window's link to the device.
#pragma once

#include "link/dialogue.h"
#include "link/trace_panel.h"
#include "ui/host.h"

namespace ox {

/// What the trace panel keeps: every dialogue, or the latest only.
enum class TraceMode { kRunning, kLatestOnly };

/// The line and the dialogue on it, traced in the window's panel; failures are told in message boxes. Window
/// and trace panel outlive it.
class DeviceLink : private DialogueObserver {
 public:
  using LineHandler = Dialogue::LineHandler;

  DeviceLink(Host& host, const SessionSettings& settings, TextBox& trace,
             TraceMode mode = TraceMode::kRunning)
      : host_(host),
        mode_(mode),
        panel_(host, settings, trace, kDeviceTrace),
        dialogue_(host, settings, *this) {}

  /// See Dialogue::Exchange.
  Bytes DeviceDialogue(const Bytes& request, bool multiRecord, const LineHandler& onLine = {}) {
    if (mode_ == TraceMode::kLatestOnly) panel_.Clear();
    return dialogue_.Exchange(request, multiRecord, onLine);
  }

 private:
  void Write(BytesView entry) override { panel_.Write(entry); }
  void Tell(std::string_view message) override { host_.windows.ShowMessage(message); }

  Host& host_;
  TraceMode mode_;
  TracePanel panel_;
  Dialogue dialogue_;
};

}  // namespace ox
