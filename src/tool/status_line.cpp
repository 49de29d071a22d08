// A line written over the one before it.
#include "tool/status_line.h"

#include <algorithm>
#include <ostream>

namespace ox::tool {
namespace {

/// Places on the screen: every byte of UTF-8 but those that go on a character.
std::size_t Width(const std::string& text) {
  constexpr unsigned kGoesOnMask = 0xC0;
  constexpr unsigned kGoesOn = 0x80;
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (ByteValue(c) & kGoesOnMask) != kGoesOn; }));
}

}  // namespace

void StatusLine::Show(const std::string& text) {
  if (!console_.terminals.messages || text == shown_) return;
  const std::size_t before = Width(shown_);
  const std::size_t now = Width(text);
  // Blanks instead of a control sequence: every terminal knows them.
  const std::string blanks(before > now ? before - now : 0, ' ');
  console_.messages << '\r' << text << blanks << (text.empty() ? "\r" : "") << std::flush;
  shown_ = text;
}

}  // namespace ox::tool
