// One escape for everything that is no plain character.
#include "journal/quoted.h"

namespace ox {
namespace {

constexpr std::size_t kLongestText = 2000;  // bytes
constexpr std::string_view kCut = "...";

constexpr unsigned kFirstPlain = 0x20;
constexpr unsigned kLastPlain = 0x7E;
constexpr unsigned kFirstOutsideAscii = 0x80;
constexpr char kEscape = '<';
constexpr char kEscapeEnd = '>';

bool IsPlain(char byte) {
  const unsigned value = ByteValue(byte);
  return value >= kFirstPlain && value <= kLastPlain && byte != kQuote && byte != kEscape;
}

void Append(std::string& line, char byte, bool plain) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr unsigned kBase = 16;
  if (plain) {
    line += byte;
    return;
  }
  line += kEscape;
  line += kDigits[ByteValue(byte) / kBase];
  line += kDigits[ByteValue(byte) % kBase];
  line += kEscapeEnd;
}

/// Whether a character of UTF-8 goes on with this byte.
bool Continues(char byte) {
  constexpr unsigned kMark = 0xC0;
  return (ByteValue(byte) & kMark) == kFirstOutsideAscii;
}

}  // namespace

std::string QuotedBytes(BytesView bytes) {
  std::string line(1, kQuote);
  for (const char byte : bytes) Append(line, byte, IsPlain(byte));
  return line + kQuote;
}

std::string QuotedText(std::string_view text) {
  const bool cut = text.size() > kLongestText;
  if (cut) {
    std::size_t length = kLongestText;
    while (length > 0 && Continues(text[length])) --length;
    text = text.substr(0, length);
  }
  std::string line(1, kQuote);
  for (const char byte : text) Append(line, byte, IsPlain(byte) || ByteValue(byte) >= kFirstOutsideAscii);
  if (cut) line += kCut;
  return line + kQuote;
}

}  // namespace ox
