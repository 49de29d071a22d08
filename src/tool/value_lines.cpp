// One record after the other.
#include "tool/value_lines.h"

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "exchange/polled_value.h"
#include "exchange/reply_display.h"
#include "platform/text.h"
#include "platform/time_text.h"
#include "tool/console_text.h"

namespace ox::tool {
namespace {

using Json = nlohmann::ordered_json;

Json TextOrNull(BytesView bytes) {
  return bytes.empty() ? Json() : Json(ToText(bytes));
}

/// A number as one; it has digits, and at most one point.
Json ValueOf(BytesView text) {
  if (!IsNumber(text)) return TextOrNull(text);
  const Bytes digits(text);
  return text.find('.') == BytesView::npos ? Json(std::strtoll(digits.c_str(), nullptr, 10))
                                           : Json(std::strtod(digits.c_str(), nullptr));
}

std::string JsonLine(BytesView record, const NameIndex& names, BytesView office, const CivilTime& polled) {
  const PolledValue read = ReadRecord(record, names, office);
  return Json{{"time", IsoTime(polled)},         {"office", TextOrNull(read.office)},
              {"point", TextOrNull(read.point)}, {"parameter", TextOrNull(read.parameter)},
              {"mark", TextOrNull(read.mark)},   {"value", ValueOf(read.value)},
              {"name", TextOrNull(read.name)}}
             .dump() +
         "\n";
}

}  // namespace

std::string ValueLines(ValueForm form, BytesView reply, const NameIndex& names, BytesView office,
                       const CivilTime& polled) {
  if (form == ValueForm::kCsv) return CsvLines(reply, names, office, polled);
  std::string lines;
  for (const BytesView record : ShownRecords(reply)) {
    if (form == ValueForm::kJson) {
      lines += JsonLine(record, names, office, polled);
      continue;
    }
    if (form == ValueForm::kTimedText) lines += IsoTime(polled) + "  ";
    lines += Printable(FormatRecord(record, names)) + "\n";
  }
  return lines;
}

}  // namespace ox::tool
