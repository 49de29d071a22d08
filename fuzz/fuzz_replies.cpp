// What a device answers: any reply under any table of names, any line as a power status.
#include "exchange/reply_display.h"
#include "harness.h"
#include "power/power_log.h"
#include "power/power_status.h"

namespace ox {
namespace {

void ShowValues(BytesView table, BytesView reply) {
  const Bytes display = FormatValues(reply, NameIndex(table));
  // A name takes exactly the place of its number, and a record grows by two characters, its CR counted.
  Require(display.size() == FormatValues(reply, NameIndex()).size());
  Require(display.size() <= reply.size() + reply.size() / kMinRecordLength * 2);
}

void LogPowerStatus(BytesView line) {
  const auto status = ReadPowerStatus(line);
  Require(status.has_value() == (line.size() >= kPowerStatusLength));
  // Every column has at least its width.
  if (status) Require(LogLine({}, FormatPowerStatus(*status)).size() > LogLine({}, {}).size());
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  if (choice % 4 == 0) return LogPowerStatus(input);
  ShowValues(input.substr(0, input.size() / 2), input.substr(input.size() / 2));
}

}  // namespace ox
