// The trace panel of a window: what goes over its line, one entry a line.
#pragma once

#include <string_view>

#include "link/line_trace.h"
#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"

namespace ox {

/// How the trace names the two directions. UTF-8.
struct TraceLabels {
  std::string_view sent;
  std::string_view received;
};
constexpr TraceLabels kDeviceTrace{"PC -> OX", "PC <- OX"};
constexpr TraceLabels kModemTrace{"PC -> Modem", "PC <- Modem"};

/// Writes into a text box of the window. All outlive it.
class TracePanel : public LineTrace {
 public:
  TracePanel(Host& host, const SessionSettings& settings, TextBox& trace, TraceLabels labels)
      : host_(host), settings_(settings), trace_(trace), labels_(labels) {}

  /// Adds a line and lets it be painted. A final CR is shown as "<CR>". The newest 256 KB of the trace stay
  /// whatever comes; what is older goes.
  void Write(BytesView entry) override;

  void Clear() { trace_.SetText(""); }

 private:
  Host& host_;
  const SessionSettings& settings_;
  TextBox& trace_;
  TraceLabels labels_;
};

}  // namespace ox
