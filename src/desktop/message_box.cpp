// A message box with German buttons, whatever the desktop's language.
#include "desktop/message_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/screen_text.h"

namespace ox {
namespace {

constexpr qsizetype kLongestText = 3000;  // characters; more do not fit on a screen
/// Enough bytes for so many characters. Longer texts are cut here first: a report may quote a line as long as
/// its file.
constexpr std::size_t kLongestBytes = 4 * (kLongestText + 1);

}  // namespace

Answer ShowMessageBox(QWidget* parent, std::string_view text, Buttons buttons) {
  QMessageBox box(parent);
  box.setWindowTitle(QStringLiteral("Orvanexe Service"));
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setText(CutToFit(OnMessageBox(text.substr(0, kLongestBytes)), kLongestText));
  QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
  QPushButton* last = ok;
  if (buttons == Buttons::kOkCancel)
    last = box.addButton(QStringLiteral("Abbrechen"), QMessageBox::RejectRole);
  box.setDefaultButton(ok);
  box.setEscapeButton(last);
  box.exec();
  return box.clickedButton() == ok ? Answer::kOk : AnswerOfNobody(buttons);
}

void CloseMessageBoxes() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* box = qobject_cast<QMessageBox*>(widget)) box->reject();
  }
}

}  // namespace ox
