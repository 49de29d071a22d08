// A line written over the one before it.
#include "tool/status_line.h"

#include <ostream>

#include "platform/utf8.h"

namespace ox::tool {

void StatusLine::Show(const std::string& text) {
  if (!console_.terminals.messages || text == shown_) return;
  const std::size_t before = CharacterCount(shown_);
  const std::size_t now = CharacterCount(text);
  // Blanks instead of a control sequence: every terminal knows them.
  const std::string blanks(before > now ? before - now : 0, ' ');
  console_.messages << '\r' << text << blanks << (text.empty() ? "\r" : "") << std::flush;
  shown_ = text;
}

}  // namespace ox::tool
