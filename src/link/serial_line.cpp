// Opening, closing and tracing a window's serial line.
#include "link/serial_line.h"

#include "platform/text.h"

namespace ox {
namespace {

constexpr char kSentMark = 'T';
/// Bytes of the trace's newest part that stay whatever comes; the replies of a whole day at the device fit
/// in.
constexpr std::size_t kTraceKept = 262'144;
constexpr std::string_view kShownCr = "<CR>";

}  // namespace

SerialLine::SerialLine(Host& host, const SessionSettings& settings, TextBox& trace, TraceLabels labels)
    : host_(host), settings_(settings), trace_(trace), labels_(labels), port_(host.ports.Create()) {}

void SerialLine::OpenPort() {
  if (port_->PortOpen()) return;
  port_->SetSettings(settings_.DialogueSettings());
  port_->SetCommPort(settings_.PortNumber());
  port_->Open();
}

void SerialLine::ClosePort() noexcept {
  port_->Close();
}

void SerialLine::WriteTrace(BytesView entry) {
  std::string line;
  if (!trace_.Text().empty()) line += settings_.CRLF;
  const bool sent = !entry.empty() && entry.front() == kSentMark;
  line += sent ? labels_.sent : labels_.received;
  line += "  ";
  BytesView text = entry.substr(entry.empty() ? 0 : 1);
  const bool endsInCr = text.ends_with(settings_.CR);
  if (endsInCr) text.remove_suffix(settings_.CR.size());
  line += ToText(text);
  if (endsInCr) line += kShownCr;
  trace_.Append(line);
  trace_.KeepNewest(kTraceKept);
  host_.windows.Yield();
}

}  // namespace ox
