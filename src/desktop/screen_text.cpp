// Line ends, control characters and lengths of what is shown.
#include "desktop/screen_text.h"

#include <QChar>

namespace ox {
namespace {

constexpr char16_t kFirstPrintable = 0x20;
constexpr char16_t kDelete = 0x7F;
constexpr char16_t kSymbols = 0x2400;  // the symbols of the control characters follow their codes from here
constexpr char16_t kDeleteSymbol = 0x2421;
constexpr char16_t kEllipsis = 0x2026;
constexpr char16_t kBreakHere = 0x200B;  // takes no room, but a line may end here

constexpr qsizetype kLongestRun = 80;  // characters without a place to break the line at

QChar Visible(QChar character) {
  const char16_t code = character.unicode();
  if (code == kDelete) return QChar(kDeleteSymbol);
  if (code >= kFirstPrintable || code == u'\n' || code == u'\t') return character;
  return QChar(static_cast<char16_t>(kSymbols + code));
}

QString WithLineFeeds(std::string_view text) {
  QString lines = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  return lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString WithSymbols(QString text) {
  for (QChar& character : text) character = Visible(character);
  return text;
}

}  // namespace

QString OnScreen(std::string_view text) {
  return WithSymbols(WithLineFeeds(text));
}

QString OnMessageBox(std::string_view text) {
  return WithSymbols(WithLineFeeds(text).replace(u'\r', u'\n'));
}

QString CutToFit(QString text, qsizetype limit) {
  if (text.size() > limit) {
    text.truncate(limit - 1);
    if (!text.isEmpty() && text.back().isHighSurrogate()) text.chop(1);  // half a character
    text += QChar(kEllipsis);
  }
  QString broken;
  qsizetype run = 0;
  for (const QChar character : text) {
    run = character.isSpace() ? 0 : run + 1;
    if (run > kLongestRun && !character.isLowSurrogate()) {
      broken += QChar(kBreakHere);
      run = 1;
    }
    broken += character;
  }
  return broken;
}

}  // namespace ox
