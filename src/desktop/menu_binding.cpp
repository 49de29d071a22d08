// Menu entries: commands, and menus that hold commands.
#include <QTimer>
#include <QToolTip>
#include <chrono>

#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

void Show(const MenuEntry& control, QAction& action, Change change) {
  if (change == Change::kEnabled) action.setEnabled(control.Enabled());
  if (change == Change::kVisible) action.setVisible(control.Visible());
  if (change == Change::kText) action.setText(OnScreen(control.Text()));
  if (change != Change::kHint) return;
  const QString hint = OnScreen(control.Hint());
  action.setStatusTip(hint);
  // As marked text, so that "<" stays what it is.
  action.setToolTip(QStringLiteral("<p style='white-space:pre'>") + hint.toHtmlEscaped() +
                    QStringLiteral("</p>"));
}

void FollowEntry(MenuEntry& control, QAction& action) {
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText},
         [&control, &action](Change change) { Show(control, action, change); });
}

/// Shows the hints of a menu's entries. A screen reader, which sees no tooltips, gets them as what the menu
/// is about.
void ShowHints(QMenu& menu) {
  QStringList hints;
  for (const QAction* entry : menu.actions()) {
    if (!entry->statusTip().isEmpty()) hints += entry->statusTip();
  }
  menu.setToolTipsVisible(!hints.isEmpty());  // else entries without a hint show their captions as such
  menu.setAccessibleDescription(hints.join(u'\n'));
}

/// Shows an entry's hint beside the menu: also for who walks through it by keyboard, and without hiding the
/// next entries.
void ShowHint(QAction& entry, QMenu& menu) {
  if (entry.statusTip().isEmpty() || !menu.isVisible() || menu.activeAction() != &entry) return;
  QToolTip::showText(menu.mapToGlobal(menu.actionGeometry(&entry).topRight()), entry.toolTip(), &menu);
}

/// Once the toolkit is done with opening the menu, which hides every tooltip.
constexpr std::chrono::milliseconds kHintDelay{200};

}  // namespace

void TieMenuCommand(MenuEntry& control, QAction& widget) {
  const auto* form = qobject_cast<QWidget*>(widget.parent());
  // With the next events: assistive technology waits while its request is carried out, and a command lasts
  // as long as the boxes that it opens.
  QObject::connect(
      &widget, &QAction::triggered, &widget, [&control, form] { ByHand(*form, [&] { control.Click(); }); },
      Qt::QueuedConnection);
  FollowEntry(control, widget);
}

void TieMenu(MenuEntry& control, QMenu& widget) {
  QObject::connect(&widget, &QMenu::aboutToShow, &widget, [&control, &widget] {
    AtBorder([&control] { control.Show(); });
    ShowHints(widget);
  });
  QObject::connect(&widget, &QMenu::hovered, &widget, [&widget](QAction* entry) {
    QTimer::singleShot(kHintDelay, entry, [entry, &widget] { ShowHint(*entry, widget); });
  });
  QObject::connect(&widget, &QMenu::aboutToHide, &widget, [] { QToolTip::hideText(); });
  FollowEntry(control, *widget.menuAction());
}

}  // namespace ox
