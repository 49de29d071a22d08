// Fields that no spreadsheet misreads.
#include "exchange/values_csv.h"

#include <algorithm>
#include <utility>

#include "exchange/polled_value.h"
#include "exchange/reply_display.h"
#include "platform/line_ends.h"
#include "platform/text.h"
#include "platform/time_text.h"

namespace ox {
namespace {

constexpr char kSeparator = ';';
constexpr std::string_view kHeading =
    "Amtskennzeichen;Messstellennummer;Parameter;Bewertungszeichen;Messwert;Name;Abrufzeit";

/// Guarded against being a formula, and quoted where it needs to be.
std::string Field(std::string text) {
  constexpr std::string_view kFormulaBegins = "=+-@\t\r";
  constexpr std::string_view kWantQuotes = ";\"\r\n";
  const bool formula = !text.empty() && kFormulaBegins.find(text.front()) != std::string_view::npos;
  if (formula && !IsNumber(text)) text.insert(0, 1, '\'');
  if (text.find_first_of(kWantQuotes) == std::string::npos) return text;
  for (auto quote = text.find(kQuote); quote != std::string::npos; quote = text.find(kQuote, quote + 2)) {
    text.insert(quote, 1, kQuote);
  }
  return kQuote + text + kQuote;
}

std::string ValueField(std::string text) {
  if (!IsNumber(text)) return Field(std::move(text));
  std::ranges::replace(text, '.', ',');
  return text;
}

}  // namespace

std::string CsvHeading() {
  return std::string(kHeading).append(kCrLf);
}

std::string CsvLines(BytesView reply, const NameIndex& names, BytesView office, const CivilTime& polled) {
  std::string lines;
  for (const BytesView record : ShownRecords(reply)) {
    const PolledValue value = ReadRecord(record, names, office);
    const std::string fields[] = {Field(ToText(value.office)),     Field(ToText(value.point)),
                                  Field(ToText(value.parameter)),  Field(ToText(value.mark)),
                                  ValueField(ToText(value.value)), Field(ToText(value.name))};
    for (const std::string& field : fields) lines.append(field).append(1, kSeparator);
    lines.append(IsoTime(polled)).append(kCrLf);
  }
  return lines;
}

}  // namespace ox
