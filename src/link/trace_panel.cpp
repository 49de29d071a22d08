// Entries laid out as lines.
#include "link/trace_panel.h"

#include <string>

#include "platform/text.h"

namespace ox {
namespace {

constexpr char kSentMark = 'T';
/// Bytes of the trace's newest part that stay whatever comes; the replies of a whole day at the device fit
/// in.
constexpr std::size_t kTraceKept = 262'144;
constexpr std::string_view kShownCr = "<CR>";

}  // namespace

void TracePanel::Write(BytesView entry) {
  std::string line;
  if (!trace_.Text().empty()) line += settings_.CRLF;
  line += entry.front() == kSentMark ? labels_.sent : labels_.received;
  line += "  ";
  BytesView text = entry.substr(1);
  const bool endsInCr = text.ends_with(settings_.CR);
  if (endsInCr) text.remove_suffix(settings_.CR.size());
  line += ToText(text);
  if (endsInCr) line += kShownCr;
  trace_.Append(line);
  trace_.KeepNewest(kTraceKept);
  host_.windows.Yield();
}

}  // namespace ox
