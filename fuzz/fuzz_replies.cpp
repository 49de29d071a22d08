// What a device answers: any reply under any table of names, any line as a power status.
#include "exchange/reply_display.h"
#include "harness.h"
#include "platform/text.h"
#include "power/power_log.h"
#include "power/power_status.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

void ShowValues(BytesView table, BytesView reply) {
  const NameIndex names(table);
  for (std::size_t at = 0; at < reply.size(); ++at) {
    const BytesView number = reply.substr(at, kPointNumberLength);
    const BytesView name = names.Find(number);
    Require(name.empty() || (name.size() == kPointNameLength && table.find(number) != BytesView::npos));
  }
  const Bytes display = FormatValues(reply, names);
  // A name takes exactly the place of its number, and a record grows by two characters, its CR counted.
  Require(display.size() == FormatValues(reply, NameIndex()).size());
  Require(display.size() <= reply.size() + reply.size() / kMinRecordLength * 2);
  Require(IsUtf8(ToText(display)));
}

void ShowPowerStatus(BytesView line) {
  const auto status = ReadPowerStatus(line);
  Require(status.has_value() == (line.size() >= kPowerStatusLength));
  if (!status) return;
  const PowerStatusTexts texts = FormatPowerStatus(*status);
  const auto units = [](std::string text) { return std::stoi(text.erase(text.find('.'), 1)); };
  Require(units(texts.charge) == std::abs(status->charge));
  Require(units(texts.mainsVoltage) == std::abs(status->mainsVoltage));
  // Every column but the last has its width, so a line is never shorter than an empty one.
  Require(LogLine({}, texts).size() >= LogLine({}, {}).size() + texts.state.size());
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  if (choice % 4 == 0) return ShowPowerStatus(input);
  ShowValues(input.substr(0, input.size() / 2), input.substr(input.size() / 2));
}

}  // namespace ox
