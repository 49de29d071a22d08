// Line ends and control characters.
#include "tool/console_text.h"

#include <algorithm>

#include "platform/line_ends.h"
#include "platform/text.h"

namespace ox::tool {
namespace {

constexpr std::string_view kMayStand = "\n\t";

constexpr char kDot = '.';

/// U+0080 to U+009F, which a terminal may obey too: in UTF-8 these two bytes.
void ReplaceUpperControls(std::string& text) {
  constexpr char kLead = '\xC2';
  constexpr unsigned kFirst = 0x80, kLast = 0x9F;
  for (std::size_t at = text.find(kLead); at != std::string::npos; at = text.find(kLead, at + 1)) {
    const unsigned next = ByteValue(text[at + 1]);  // NUL behind the last one
    if (next >= kFirst && next <= kLast) text.replace(at, 2, 1, kDot);
  }
}

void ReplaceControls(std::string& text, std::string_view kept) {
  constexpr unsigned kFirstPrintable = 0x20;
  constexpr unsigned kDelete = 0x7F;
  std::ranges::replace_if(
      text,
      [kept](char c) {
        const bool control = ByteValue(c) < kFirstPrintable || ByteValue(c) == kDelete;
        return control && kept.find(c) == std::string_view::npos;
      },
      kDot);
  ReplaceUpperControls(text);
}

}  // namespace

std::string Lines(std::string_view message) {
  std::string lines;
  for (std::size_t at = 0; at < message.size(); ++at) {
    if (message[at] == kCr && message.substr(at + 1).starts_with(kLf)) continue;
    lines += message[at] == kCr ? kLf : message[at];
  }
  lines.erase(lines.find_last_not_of(kLf) + 1);
  ReplaceControls(lines, kMayStand);
  return lines;
}

std::string Printable(BytesView bytes) {
  std::string text = ToText(bytes);
  ReplaceControls(text, {});
  return text;
}

}  // namespace ox::tool
