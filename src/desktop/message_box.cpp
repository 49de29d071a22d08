// A message box with German buttons, whatever the desktop's language.
#include "desktop/message_box.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <memory>
#include <utility>

#include "desktop/border.h"
#include "desktop/screen_text.h"
#include "desktop/title_bar.h"

namespace ox {
namespace {

constexpr qsizetype kLongestText = 20000;  // characters
/// Enough bytes for so many characters. Longer texts are cut here first: a report may quote a line as long as
/// its file.
constexpr std::size_t kLongestBytes = 4 * (kLongestText + 1);

constexpr const char* kLabel = "qt_msgbox_label";  // the toolkit's own, which shows the text

constexpr int kTextWidth = 500;        // pixels, of a text that is broken into lines
constexpr QSize kAroundText(80, 160);  // pixels of a box and its frame beyond its text

/// Puts a text that is higher than the screen into a box that scrolls it.
void ScrollIfTall(QMessageBox& box) {
  auto* label = box.findChild<QLabel*>(kLabel);
  if (label == nullptr) return;
  const QSize room = box.screen()->availableGeometry().size() - kAroundText;
  const int width = std::min(kTextWidth, room.width());
  const QRect all = label->fontMetrics().boundingRect(0, 0, width, 0, Qt::TextWordWrap, box.text());
  if (all.height() <= room.height()) return;
  auto* text = new QPlainTextEdit(box.text(), &box);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setTabChangesFocus(true);
  text->setMinimumSize(width, room.height());
  text->setAccessibleName(QStringLiteral("Meldung"));
  const std::unique_ptr<QLayoutItem> place(box.layout()->replaceWidget(label, text));
  label->hide();
}

/// A message box whose text is copied by Ctrl+C, without the marks that break its lines.
class Message : public QMessageBox {
 public:
  Message(QWidget* parent, std::string_view text, Buttons buttons)
      : QMessageBox(parent), whole_(OnMessageBox(text.substr(0, kLongestBytes))), buttons_(buttons) {
    setWindowTitle(QStringLiteral("Orvanexe Service"));
    setWindowFlags(kDialogFrame);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setText(CutToFit(whole_, kLongestText));
    ok_ = addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    QPushButton* last = ok_;
    if (buttons == Buttons::kOkCancel) last = addButton(QStringLiteral("Abbrechen"), QMessageBox::RejectRole);
    setDefaultButton(ok_);
    setEscapeButton(last);
    ScrollIfTall(*this);
  }

  /// When it has been closed.
  Answer AnswerGiven() const { return clickedButton() == ok_ ? Answer::kOk : AnswerOfNobody(buttons_); }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!event->matches(QKeySequence::Copy)) {
      QMessageBox::keyPressEvent(event);
      return;
    }
    const auto* label = findChild<QLabel*>(kLabel);
    const bool selected = label != nullptr && label->hasSelectedText();
    QApplication::clipboard()->setText(selected ? label->selectedText() : whole_);
  }

 private:
  QString whole_;
  Buttons buttons_;
  QPushButton* ok_ = nullptr;
};

/// Lets the task bar call the user while he works with another program.
void CallInTaskBar(QWidget* parent) {
  if (QApplication::activeWindow() != nullptr) return;
  while (parent != nullptr && parent->parentWidget() != nullptr) parent = parent->parentWidget();
  if (parent != nullptr) QApplication::alert(parent);
}

void OpenBeside(QWidget* parent, Message* box) {
  box->setAttribute(Qt::WA_DeleteOnClose);
  CallInTaskBar(parent);
  box->open();
}

}  // namespace

Answer ShowMessageBox(QWidget* parent, std::string_view text, Buttons buttons) {
  Message box(parent, text, buttons);
  CallInTaskBar(parent);
  box.exec();
  return box.AnswerGiven();
}

void ShowNote(QWidget* parent, std::string_view text) {
  OpenBeside(parent, new Message(parent, text, Buttons::kOk));
}

void AskBeside(QWidget* parent, std::string_view text, std::function<void()> onOk) {
  auto* box = new Message(parent, text, Buttons::kOkCancel);
  QObject::connect(box, &QDialog::finished, box, [box, onOk = std::move(onOk)] {
    if (box->AnswerGiven() == Answer::kOk) AtBorder(onOk);
  });
  OpenBeside(parent, box);
}

void CloseMessageBoxes() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* box = qobject_cast<QMessageBox*>(widget)) box->reject();
  }
}

}  // namespace ox
