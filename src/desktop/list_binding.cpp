// Lists: open ones and drop-down ones.
#include <QEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

QStringList ItemsOf(const ListBox& control) {
  QStringList items;
  for (const std::string& item : control.Items()) items += OnScreen(item);
  return items;
}

/// Hands on what the user does in an open list: every click selects, also one on the line that is selected
/// already; a double click or Enter chooses for good, whatever a single click means in the desktop's style.
/// The first arrow key selects the line that has the focus. The toolkit would go on to the next line, so the
/// line of a list with only one could not be selected.
class ListUser : public QObject {
 public:
  ListUser(ListBox& control, QListWidget& widget) : QObject(&widget), control_(control), widget_(widget) {
    widget.installEventFilter(this);
    widget.viewport()->installEventFilter(this);
    connect(&widget, &QListWidget::itemSelectionChanged, this, [this] {
      told_ = true;
      Select();
    });
    connect(&widget, &QListWidget::itemClicked, this, [this] {
      if (!told_) Select();
    });
    connect(&widget, &QListWidget::itemDoubleClicked, this, [this] { Activate(); });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    // A list that goes with its window loses the focus when it is no list any more.
    if (watched == &widget_ && qobject_cast<QListWidget*>(watched) == nullptr) return false;
    if (event->type() == QEvent::MouseButtonPress) told_ = false;
    if (watched == &widget_ && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
      ShowFocus(event->type() == QEvent::FocusIn);
    }
    if (watched != &widget_ || event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if ((key == Qt::Key_Down || key == Qt::Key_Up) && SelectedRow() == ListBox::kNone) {
      widget_.setCurrentRow(std::max(widget_.currentRow(), 0), QItemSelectionModel::ClearAndSelect);
      return true;
    }
    if ((key != Qt::Key_Return && key != Qt::Key_Enter) || SelectedRow() == ListBox::kNone) return false;
    Activate();
    return true;
  }

 private:
  /// A frame in the colour of selections: a list may be empty, or its selection be in no line in sight.
  void ShowFocus(bool focused) {
    QPalette palette;
    if (focused) palette.setColor(QPalette::WindowText, palette.color(QPalette::Highlight));
    widget_.setPalette(palette);
    widget_.setLineWidth(widget_.frameWidth());
    widget_.setFrameStyle(focused ? QFrame::Box | QFrame::Plain : frameStyle_);
  }

  int SelectedRow() const {
    const QList<QListWidgetItem*> selected = widget_.selectedItems();
    return selected.empty() ? ListBox::kNone : widget_.row(selected.front());
  }

  void Select() {
    ByHand(widget_, [this] { control_.Select(SelectedRow()); });
  }

  void Activate() {
    told_ = true;  // the click that ends a double click selects nothing more
    ByHand(widget_, [this] { control_.Activate(SelectedRow()); });
  }

  ListBox& control_;
  QListWidget& widget_;
  const int frameStyle_ = widget_.frameStyle();
  bool told_ = false;  // the selection of the click under way has been handed on
};

}  // namespace

void TieList(ListBox& control, QListWidget& widget) {
  new ListUser(control, widget);  // owned by the widget
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kItems, Change::kSelected},
         [&control, &widget](Change change) {
           const QSignalBlocker quiet(widget);
           ShowCommon(control, widget, change);
           if (change == Change::kItems) {
             widget.clear();
             widget.addItems(ItemsOf(control));
           }
           if (change == Change::kSelected) {
             widget.clearSelection();
             widget.setCurrentRow(control.Selected());
           }
         });
}

void TieDropDown(ListBox& control, QComboBox& widget) {
  QObject::connect(&widget, &QComboBox::activated, &widget,
                   [&control, &widget](int row) { ByHand(widget, [&] { control.Select(row); }); });
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kItems, Change::kSelected},
         [&control, &widget](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::kItems) {
             widget.clear();
             widget.addItems(ItemsOf(control));
           }
           if (change == Change::kItems || change == Change::kSelected) {
             widget.setCurrentIndex(control.Selected());
           }
         });
}

}  // namespace ox
