// Taking lines apart, word by word.
#include "simulator/replay/log_line.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace ox::sim {
namespace {

constexpr BytesView kProgram = "Orvanexe Service ";
constexpr BytesView kFormatWord = ", Protokoll ";
constexpr BytesView kBegunWord = ", begonnen ";
constexpr BytesView kBegunPattern = "0000-00-00 00:00:00";  // a digit for each 0

// A terminal shows the characters between them, and obeys others.
constexpr char kFirstPlain = 0x20;
constexpr char kLastPlain = 0x7E;

constexpr std::int64_t kLongestTime = 10'000'000'000;  // milliseconds, some months

using Kind = LogEvent::Kind;

bool Take(BytesView& text, BytesView word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

/// Takes a number of at most 11 digits off the text.
template <typename Number>
bool TakeNumber(BytesView& text, Number& number) {
  constexpr std::size_t kMostDigits = 11;
  const BytesView digits = text.substr(0, kMostDigits);
  if (digits.empty() || digits.front() < '0' || digits.front() > '9') return false;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc{}) return false;
  text.remove_prefix(static_cast<std::size_t>(end - digits.data()));
  return true;
}

bool TakeMilliseconds(BytesView& text, std::int64_t& milliseconds) {
  return TakeNumber(text, milliseconds) && milliseconds <= kLongestTime;
}

/// Takes "<0D>" off the text.
std::optional<char> TakeEscaped(BytesView& text) {
  constexpr int kBase = 16;
  constexpr std::size_t kDigits = 2;
  if (text.size() < kDigits + 2 || text[kDigits + 1] != '>') return std::nullopt;
  unsigned value = 0;
  const char* const first = text.data() + 1;
  const auto [end, error] = std::from_chars(first, first + kDigits, value, kBase);
  if (error != std::errc{} || end != first + kDigits) return std::nullopt;
  text.remove_prefix(kDigits + 2);
  return ByteOf(value);
}

/// Takes a text in quotes off the text.
std::optional<Bytes> TakeQuoted(BytesView& text) {
  if (!Take(text, "\"")) return std::nullopt;
  Bytes content;
  while (!text.empty() && text.front() != kQuote) {
    if (text.front() != '<') {
      content += text.front();
      text.remove_prefix(1);
    } else if (const auto escaped = TakeEscaped(text)) {
      content += *escaped;
    } else {
      return std::nullopt;
    }
  }
  if (!Take(text, "\"")) return std::nullopt;
  return content;
}

bool ReadOpening(BytesView text, LogEvent& event) {
  if (!TakeNumber(text, event.opening) || !Take(text, " ")) return false;
  const auto words = TakeQuoted(text);
  const auto settings = words ? ParseLineSettings(*words) : std::nullopt;
  event.settings = settings.value_or(LineSettings{});
  return settings.has_value();  // what follows is for people
}

bool ReadBytes(BytesView text, LogEvent& event) {
  auto bytes = TakeQuoted(text);
  if (!bytes || bytes->empty()) return false;
  event.bytes = std::move(*bytes);
  if (Take(text, " +") && !TakeMilliseconds(text, event.lasted)) return false;
  return text.empty();
}

/// What stands behind the port's name.
bool ReadPortEvent(BytesView text, LogEvent& event) {
  if (Take(text, "Öffnung ")) {
    event.kind = Kind::kOpening;
    return ReadOpening(text, event);
  }
  if (text.starts_with("> ") || text.starts_with("< ")) {
    event.kind = text.front() == '>' ? Kind::kSent : Kind::kReceived;
    return ReadBytes(text.substr(2), event);
  }
  event.kind = Kind::kOther;
  if (text == "zu") event.kind = Kind::kClosed;
  if (text.starts_with("abgerissen ")) event.kind = Kind::kBroken;
  return true;
}

bool Fits(BytesView text, BytesView pattern) {
  return text.size() == pattern.size() &&
         std::equal(text.begin(), text.end(), pattern.begin(), [](char character, char like) {
           return like == '0' ? character >= '0' && character <= '9' : character == like;
         });
}

int TwoDigits(BytesView text) {
  constexpr int kBase = 10;
  return (text[0] - '0') * kBase + (text[1] - '0');
}

}  // namespace

std::optional<LogHeader> ReadLogHeader(BytesView line) {
  constexpr int kSixty = 60;
  constexpr std::size_t kHour = 11;
  constexpr std::size_t kMinute = 14;
  constexpr std::size_t kSecond = 17;
  LogHeader header;
  const std::size_t format = line.rfind(kFormatWord);
  if (!line.starts_with(kProgram) || format == BytesView::npos) return std::nullopt;
  header.build = line.substr(0, format);
  std::ranges::replace_if(
      header.build, [](char c) { return c < kFirstPlain || c > kLastPlain; }, '.');
  BytesView rest = line.substr(format + kFormatWord.size());
  if (!TakeNumber(rest, header.format)) return std::nullopt;
  if (header.format != kLogFormat) return header;  // the rest may be anything
  if (!Take(rest, kBegunWord) || !Fits(rest, kBegunPattern)) return std::nullopt;
  header.begun = rest;
  header.secondOfDay = (TwoDigits(rest.substr(kHour)) * kSixty + TwoDigits(rest.substr(kMinute))) * kSixty +
                       TwoDigits(rest.substr(kSecond));
  return header;
}

std::optional<LogEvent> ReadLogLine(BytesView line) {
  LogEvent event;
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  if (!TakeMilliseconds(line, event.time) || !Take(line, " ")) return std::nullopt;
  event.kind = Kind::kOther;
  int port = 0;
  if (!Take(line, "COM")) return event;
  if (!TakeNumber(line, port) || !Take(line, " ") || !ReadPortEvent(line, event)) return std::nullopt;
  return event;
}

}  // namespace ox::sim
