// What the screen makes of any text.
#include "desktop/screen_text.h"
#include "harness.h"

namespace ox {

void Fuzz(unsigned choice, BytesView input) {
  const QString plain = QString::fromUtf8(input.data(), static_cast<qsizetype>(input.size()));
  const QString box = OnMessageBox(input);
  for (const QString& text : {OnScreen(input), box}) {  // nothing is lost, and nothing stays unseen
    Require(text.size() == plain.size() - plain.count(QStringLiteral("\r\n")));
    for (const QChar c : text) Require(c == u'\n' || c == u'\t' || (c >= u' ' && c != u'\x7F'));
  }
  const qsizetype limit = choice + 1;
  const QChar breakHere(0x200B);
  QString cut = CutToFit(box, limit);
  for (qsizetype run = 0; const QChar c : cut) {
    run = c.isSpace() || c == breakHere ? 0 : run + 1;
    Require(run <= 81);  // 80, and one more where the last is a pair
  }
  Require(cut.isValidUtf16());
  if (box.contains(breakHere)) return;
  cut.remove(breakHere);
  Require(box.size() <= limit ? cut == box : cut.size() <= limit && box.startsWith(cut.chopped(1)));
}

}  // namespace ox
