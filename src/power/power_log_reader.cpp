// The pieces of a log line, each behind its label.
#include "power/power_log_reader.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "platform/line_ends.h"
#include "platform/text.h"
#include "platform/utf8.h"

namespace ox {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kLongestLine = 1000;  // bytes; a line of the log has less than 200
constexpr std::size_t kShortestRuler = 20;  // of dashes

struct Piece {
  std::string_view label;
  std::string_view unit;
};

/// In the order of LogValue.
constexpr std::array<Piece, kLogValues> kPieces{
    {{"Akkuldg:", "%"}, {"Akkuspg:", "V"}, {"Netzteilspg:", "V"}, {"Kapazität:", "%"}, {"Temp.:", "°C"}}};
constexpr std::string_view kStateLabel = "Ladebetrieb:";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// Takes a number of so many digits and the character behind it; false when something else stands there.
bool TakeNumber(std::string_view& text, std::size_t digits, char behind, int lowest, int highest,
                int& number) {
  if (text.size() <= digits || text[digits] != behind) return false;
  const auto [end, error] = std::from_chars(text.data(), text.data() + digits, number);
  if (error != std::errc{} || end != text.data() + digits) return false;
  text.remove_prefix(digits + 1);
  return number >= lowest && number <= highest;
}

bool TakeTime(std::string_view& text, CivilTime& time) {
  return TakeNumber(text, 2, '-', 1, 12, time.month) && TakeNumber(text, 2, '-', 1, 31, time.day) &&
         TakeNumber(text, 4, ' ', 1, 9999, time.year) && TakeNumber(text, 2, ':', 0, 23, time.hour) &&
         TakeNumber(text, 2, ':', 0, 59, time.minute) && TakeNumber(text, 2, ' ', 0, 60, time.second);
}

bool IsDecimal(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  return point > 0 && text.substr(0, point).find_first_not_of(kDigits) == std::string_view::npos &&
         decimals.find_first_not_of(kDigits) == std::string_view::npos;
}

/// Takes what stands up to the next label, behind the label at the beginning.
bool TakeValue(std::string_view& text, const Piece& piece, std::string_view nextLabel, std::string& value) {
  text = Trimmed(text);
  if (!text.starts_with(piece.label)) return false;
  text.remove_prefix(piece.label.size());
  const std::size_t end = text.find(nextLabel);
  if (end == std::string_view::npos) return false;
  std::string_view number = Trimmed(text.substr(0, end));
  if (!number.ends_with(piece.unit)) return false;
  number.remove_suffix(piece.unit.size());
  text.remove_prefix(end);
  value = number;
  return IsDecimal(number);
}

bool IsState(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' ' || c == '?' || ByteValue(c) >= 0x80;
  });
}

bool ReadEntry(std::string_view text, PowerLogEntry& entry) {
  if (!TakeTime(text, entry.time)) return false;
  for (std::size_t value = 0; value < kLogValues; ++value) {
    const std::string_view next = value + 1 < kLogValues ? kPieces[value + 1].label : kStateLabel;
    if (!TakeValue(text, kPieces[value], next, entry.values[value])) return false;
  }
  entry.state = Trimmed(text.substr(kStateLabel.size()));
  return IsState(entry.state);
}

}  // namespace

float PowerLogEntry::Number(LogValue value) const {
  const std::string& text = values[static_cast<std::size_t>(value)];
  float number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

PowerLogReader::PowerLogReader(BytesView text) : rest_(WithoutByteOrderMark(text)) {}

LogLineKind PowerLogReader::Next() {
  const std::size_t end = std::min(rest_.find(kLf), rest_.size());
  BytesView line = rest_.substr(0, end);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  ++line_;
  if (line.ends_with(kCr)) line.remove_suffix(1);
  if (line.empty()) return LogLineKind::kEmpty;
  if (line.size() >= kShortestRuler && line.find_first_not_of('-') == BytesView::npos) {
    return LogLineKind::kRuler;
  }
  if (line.size() > kLongestLine) return LogLineKind::kUnknown;
  const std::string text = IsUtf8(line) ? std::string(line) : ToText(line);
  return ReadEntry(text, entry_) ? LogLineKind::kEntry : LogLineKind::kUnknown;
}

}  // namespace ox
