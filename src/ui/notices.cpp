// From those who have something to say to the lines that show it.
#include "ui/notices.h"

#include <utility>

namespace ox {

void Notices::Say(From from, std::string text) {
  std::string& said = said_.at(static_cast<std::size_t>(from));
  if (said == text) return;
  said = std::move(text);
  for (QuietLine* line : lines_) line->SetText(Text());
}

std::string Notices::Text() const {
  std::string all;
  for (const std::string& text : said_) {
    if (!all.empty() && !text.empty()) all += "\n";
    all += text;
  }
  return all;
}

QuietLine::QuietLine(Window& window, Notices& notices)
    : Label(window, "Hinweis", notices.Text()), notices_(notices) {
  notices_.lines_.push_back(this);
}

QuietLine::~QuietLine() {
  std::erase(notices_.lines_, this);
}

}  // namespace ox
