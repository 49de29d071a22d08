// Titles, and the room that they take.
#include "desktop/title_bar.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QFontMetrics>

namespace ox {
namespace {

/// Icon, boxes and the spaces between them.
constexpr int kBesideTitle = 150;  // pixels

int TitleWidth(const QString& title) {
  QFont font = QApplication::font("QMdiSubWindowTitleBar");
  font.setBold(true);  // as most desktops write it
  return QFontMetrics(font).horizontalAdvance(title) + kBesideTitle;
}

}  // namespace

void SetTitleBar(QWidget& form, const QString& title) {
  form.setWindowTitle(title);
  if (qobject_cast<QDialog*>(&form) == nullptr) return;
  form.setWindowFlags(kDialogFrame | Qt::WindowMaximizeButtonHint);
  if (auto* layout = qobject_cast<QBoxLayout*>(form.layout())) layout->addStrut(TitleWidth(title));
}

}  // namespace ox
