// German entries, whatever the desktop's language.
#include "desktop/display_menu.h"

#include <QAction>
#include <QByteArray>
#include <QKeySequence>
#include <QMenu>
#include <QShortcut>
#include <utility>

#include "desktop/control_ties.h"

namespace ox {
namespace {

/// Opens a menu, filled anew each time, where the user asks for one. It goes by itself.
void GiveMenu(QWidget& widget, std::function<void(QMenu&)> fill) {
  const auto open = [&widget, fill = std::move(fill)](const QPoint& place) {
    auto* menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill(*menu);
    menu->popup(widget.mapToGlobal(place));
  };
  widget.setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(&widget, &QWidget::customContextMenuRequested, &widget, open);
  // The toolkit knows the menu key, but not this one.
  auto* keys = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), &widget);
  keys->setContext(Qt::WidgetShortcut);
  QObject::connect(keys, &QShortcut::activated, &widget, [&widget, open] { open(widget.rect().center()); });
}

void AddSaving(QMenu& menu, Control& control, QWidget& widget, const std::function<QByteArray()>& content) {
  if (!control.CanBeSaved()) return;
  // With the next events: assistive technology waits while its request is carried out.
  QObject::connect(
      menu.addAction(QStringLiteral("&Speichern unter ...")), &QAction::triggered, &widget,
      [&control, &widget, content] { ByHand(widget, [&] { control.Save(content().toStdString()); }); },
      Qt::QueuedConnection);
}

}  // namespace

void GiveDisplayMenu(Control& control, QPlainTextEdit& widget) {
  GiveMenu(widget, [&control, &widget](QMenu& menu) {
    QAction* copy = menu.addAction(QStringLiteral("&Kopieren"));
    copy->setEnabled(widget.textCursor().hasSelection());
    QObject::connect(copy, &QAction::triggered, &widget, &QPlainTextEdit::copy);
    QObject::connect(menu.addAction(QStringLiteral("&Alles markieren")), &QAction::triggered, &widget,
                     &QPlainTextEdit::selectAll);
    if (control.CanBeSaved()) menu.addSeparator();
    AddSaving(menu, control, widget, [&widget] { return widget.toPlainText().toUtf8(); });
  });
}

void GivePictureMenu(Control& control, QWidget& widget, std::function<QByteArray()> draw) {
  GiveMenu(widget, [&control, &widget, draw = std::move(draw)](QMenu& menu) {
    AddSaving(menu, control, widget, draw);
  });
}

}  // namespace ox
