// Line ends and control characters.
#include "tool/console_text.h"

#include <algorithm>

#include "platform/line_ends.h"
#include "platform/text.h"

namespace ox::tool {
namespace {

constexpr std::string_view kMayStand = "\n\t";

void ReplaceControls(std::string& text, std::string_view kept) {
  constexpr unsigned kFirstPrintable = 0x20;
  constexpr unsigned kDelete = 0x7F;
  std::ranges::replace_if(
      text,
      [kept](char c) {
        const bool control = ByteValue(c) < kFirstPrintable || ByteValue(c) == kDelete;
        return control && kept.find(c) == std::string_view::npos;
      },
      '.');
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
