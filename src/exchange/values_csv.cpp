// Taking records apart, and fields that no spreadsheet misreads.
#include "exchange/values_csv.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "exchange/reply_display.h"
#include "platform/line_ends.h"
#include "platform/text.h"
#include "platform/time_text.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

constexpr char kSeparator = ';';
constexpr std::string_view kHeading =
    "Amtskennzeichen;Messstellennummer;Parameter;Bewertungszeichen;Messwert;Name;Abrufzeit";

// Columns of a record that belongs to a measuring point.
constexpr std::size_t kNumberEndOffset = kPointNumberLength;
constexpr char kNumberEnd = ':';
constexpr std::size_t kParameterOffset = 10;
constexpr std::size_t kMarkOffset = 15;
constexpr std::size_t kValueOffset = 16;
constexpr std::size_t kUnitOffset = 23;  // a blank; the unit behind it comes with "Abruf Z" only

/// What such a record says, each without blanks around it.
struct Value {
  BytesView point;
  BytesView parameter;
  BytesView mark;
  BytesView value;
};

BytesView Trimmed(BytesView text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == BytesView::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

BytesView Column(BytesView record, std::size_t offset, std::size_t end) {
  return offset < record.size() ? Trimmed(record.substr(offset, end - offset)) : BytesView();
}

Value ValueOf(BytesView record) {
  if (record.size() <= kNumberEndOffset || record[kNumberEndOffset] != kNumberEnd) {
    return {.point = {}, .parameter = {}, .mark = {}, .value = Trimmed(record)};
  }
  // A value that is too long for its column is not cut: that would make another number of it.
  return {.point = record.substr(0, kPointNumberLength),
          .parameter = Column(record, kParameterOffset, kParameterOffset + kParameterNumberLength),
          .mark = Column(record, kMarkOffset, kMarkOffset + 1),
          .value = Column(record, kValueOffset, std::min(record.find(' ', kUnitOffset), record.size()))};
}

/// Digits with at most one decimal point among them, behind a sign or none.
bool IsNumber(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  if (std::ranges::count(text, '.') > 1) return false;
  return text.find_first_of("0123456789") != std::string_view::npos &&
         text.find_first_not_of("0123456789.") == std::string_view::npos;
}

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
    const Value value = ValueOf(record);
    const BytesView known = names.OfficeOf(value.point);
    const BytesView officeOfPoint = value.point.empty() || !known.empty() ? known : office;
    const std::string fields[] = {
        Field(ToText(officeOfPoint)),    Field(ToText(value.point)),
        Field(ToText(value.parameter)),  Field(ToText(value.mark)),
        ValueField(ToText(value.value)), Field(ToText(Trimmed(names.Find(value.point))))};
    for (const std::string& field : fields) lines.append(field).append(1, kSeparator);
    lines.append(IsoTime(polled)).append(kCrLf);
  }
  return lines;
}

}  // namespace ox
