// The log of the power monitor: any bytes, and lines as the monitor writes them with damage.
#include "harness.h"
#include "platform/utf8.h"
#include "power/power_log.h"
#include "power/power_log_reader.h"
#include "power/power_status.h"
#include "tool/log_curves.h"

namespace ox {
namespace {

/// Two runs of the monitor; the times come from the input, and so do the device's replies.
Bytes SoundLog(BytesView input) {
  constexpr std::size_t kReply = 24;
  Bytes log;
  CivilTime time{2026, 11, 16, 0, 0, 0};
  for (; input.size() >= kReply; input.remove_prefix(kReply)) {
    time.minute = static_cast<int>(ByteValue(input[0]) % 60);
    if (time.minute == 0) log += "\r\n\r\n" + Bytes(140, '-') + "\r\n";
    Bytes digits(input.substr(0, kReply));
    for (char& digit : digits) digit = "0123456789ABCDEF"[ByteValue(digit) % 16];
    const auto status = ReadPowerStatus(digits);
    Require(status.has_value());
    const Bytes line = LogLine(time, FormatPowerStatus(*status)) + "\r\n";
    PowerLogReader reader(line);
    Require(reader.Next() == LogLineKind::kEntry && reader.Entry().time.minute == time.minute);
    log += line;
  }
  return log;
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  const Bytes log = choice % 2 == 0 ? Bytes(input) : Damaged(SoundLog(input), input.substr(input.size() / 2));
  PowerLogReader reader(log);
  bool any = false;
  while (!reader.AtEnd()) {
    const bool entry = reader.Next() == LogLineKind::kEntry;
    Require(!entry || IsUtf8(reader.Entry().state));
    any = any || entry;
  }
  if (!any) return;
  const std::string curves = tool::LogCurves(log);
  Require(!curves.empty() && IsUtf8(curves));
}

}  // namespace ox
