// Looking for widgets and touching them, in the program's thread.
#include "day/day_driver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <future>
#include <iostream>
#include <utility>

namespace ox::test {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kBetweenLooks{4};

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

/// Keeps what labels were painted with; a text that stood for a moment only is not missed.
class Witness : public QObject {
 public:
  std::map<std::string, std::vector<std::string>> painted;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* label = event->type() == QEvent::Paint ? qobject_cast<QLabel*>(watched) : nullptr;
    if (label == nullptr) return false;
    auto& texts = painted[label->objectName().toStdString()];
    const std::string text = label->text().toStdString();
    if (text.empty()) return false;
    if (texts.empty() || texts.back() != text) texts.push_back(text);
    return false;
  }
};

Witness* witness = nullptr;  // of the one day that runs

QMainWindow* MainWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* main = qobject_cast<QMainWindow*>(widget);
    if (main != nullptr && main->isVisible()) return main;
  }
  return nullptr;
}

QWidget* Top() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : MainWindow();
}

/// No event loop of a window that has gone is still being left: a user is never that quick.
bool Settled() {
  int windows = 1;
  for (const QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && widget->isModal()) ++windows;
  }
  return QThread::currentThread()->loopLevel() <= windows;
}

template <class Widget = QWidget>
Widget* Find(const std::string& name) {
  QWidget* window = Top();
  if (qobject_cast<QMessageBox*>(window) != nullptr) window = window->parentWidget();
  return window != nullptr ? window->findChild<Widget*>(Q(name)) : nullptr;
}

/// A widget that the user can touch now; null when he cannot.
template <class Widget>
Widget* Usable(const std::string& name) {
  auto* widget = Find<Widget>(name);
  return widget != nullptr && widget->window() == Top() && widget->isVisible() && widget->isEnabled()
             ? widget
             : nullptr;
}

std::string TextOf(const QWidget* widget) {
  QString text;
  if (const auto* label = qobject_cast<const QLabel*>(widget)) text = label->text();
  if (const auto* field = qobject_cast<const QLineEdit*>(widget)) text = field->text();
  if (const auto* trace = qobject_cast<const QPlainTextEdit*>(widget)) text = trace->toPlainText();
  if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) text = button->text();
  return text.toStdString();
}

std::string Screen() {
  const QWidget* top = Top();
  if (top == nullptr) return "nothing";
  const auto* box = qobject_cast<const QMessageBox*>(top);
  return box != nullptr ? "message: " + box->text().toStdString()
                        : "window: " + top->windowTitle().toStdString();
}

void ClickButton(QAbstractButton* button) {
  // On the left, where a check box has its box.
  constexpr int kFromLeft = 8;
  QTest::mouseClick(button, Qt::LeftButton, {}, {kFromLeft, button->height() / 2});
}

void ClickEntry(QMenuBar* bar, QAction* entry) {
  const auto click = [](QWidget* where, const QRect& place) {
    QTest::mouseClick(where, Qt::LeftButton, {}, place.center());
  };
  if (bar->actions().contains(entry)) return click(bar, bar->actionGeometry(entry));
  for (auto* menu : bar->findChildren<QMenu*>()) {
    if (!menu->actions().contains(entry)) continue;
    click(bar, bar->actionGeometry(menu->menuAction()));
    click(menu, menu->actionGeometry(entry));
  }
}

}  // namespace

void DayDriver::Run(const std::function<void()>& program, const std::function<void(DayDriver&)>& day) {
  Witness watching;
  witness = &watching;
  qApp->installEventFilter(&watching);
  auto user = std::async(std::launch::async, [&day] {
    DayDriver driver;
    try {
      day(driver);
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
      QMetaObject::invokeMethod(qApp, CloseEverything, Qt::QueuedConnection);
    }
  });
  program();
  user.get();
  witness = nullptr;
}

void DayDriver::CloseEverything() {
  // Windows go one after the other: each ends its command first.
  constexpr std::chrono::milliseconds kBetweenTries{20};
  if (Top() == nullptr) return;
  QTimer::singleShot(kBetweenTries, qApp, CloseEverything);
  Top()->close();
}

void DayDriver::Do(const std::string& what, const std::function<Action()>& look) {
  struct Report {
    bool done = false;
    std::string screen;
  };
  for (const auto end = steady_clock::now() + kPatience;;) {
    const auto report = std::make_shared<std::promise<Report>>();
    auto looked = report->get_future();
    const auto lookAndAct = [&look, report] {
      const Action action = Settled() ? look() : Action();
      report->set_value({static_cast<bool>(action), Screen()});
      if (action) action();  // may last as long as the window that it opens: the user does not wait
    };
    QMetaObject::invokeMethod(qApp, lookAndAct, Qt::QueuedConnection);
    if (looked.wait_for(kPatience) != std::future_status::ready) {
      std::cerr << "The program does not react while the user wants: " << what << std::endl;
      std::abort();
    }
    const Report seen = looked.get();
    if (seen.done) return;
    if (steady_clock::now() > end) {
      throw std::runtime_error("in vain: " + what + "; on the screen: " + seen.screen);
    }
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

void DayDriver::ChooseMenu(const std::string& entry) {
  Do("menu " + entry, [&entry]() -> Action {
    QMainWindow* main = MainWindow();
    if (main == nullptr || Top() != main) return {};
    auto* action = main->findChild<QAction*>(Q(entry));
    if (action == nullptr || !action->isVisible() || !action->isEnabled()) return {};
    return [main, action] { ClickEntry(main->menuBar(), action); };
  });
}

void DayDriver::AwaitWindow(const std::string& caption) {
  Do("window " + caption, [&caption]() -> Action {
    if (Top() == nullptr || Top()->windowTitle() != Q(caption)) return {};
    return [] {};
  });
}

void DayDriver::Click(const std::string& name) {
  Do("click " + name, [&name]() -> Action {
    auto* button = Usable<QAbstractButton>(name);
    if (button == nullptr) return {};
    return [button] { ClickButton(button); };
  });
}

void DayDriver::Type(const std::string& name, const std::string& text) {
  Do("type into " + name, [&]() -> Action {
    auto* field = Usable<QLineEdit>(name);
    if (field == nullptr) return {};
    return [field, typed = Q(text)] {
      QTest::mouseClick(field, Qt::LeftButton);
      QTest::keySequence(field, QKeySequence::SelectAll);
      QTest::keyClick(field, Qt::Key_Delete);
      QTest::keyClicks(field, typed);
    };
  });
}

void DayDriver::ClickLine(const std::string& list, const std::string& line) {
  Do("line " + line, [&]() -> Action {
    auto* widget = Usable<QListWidget>(list);
    if (widget == nullptr) return {};
    const auto lines = widget->findItems(Q(line), Qt::MatchExactly);
    if (lines.empty()) return {};
    return [widget, item = lines.front()] {
      QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, widget->visualItemRect(item).center());
    };
  });
}

void DayDriver::CloseWindow() {
  Do("close box", []() -> Action {
    if (Top() == nullptr) return {};
    return [] { Top()->close(); };
  });
}

void DayDriver::AwaitEnabled(const std::string& name) {
  Do("usable " + name, [&name]() -> Action {
    if (Usable<QAbstractButton>(name) == nullptr) return {};
    return [] {};
  });
}

std::string DayDriver::Text(const std::string& name) {
  return AwaitTexts({name}, [](const Texts&) { return true; }).at(name);
}

DayDriver::Texts DayDriver::AwaitTexts(const std::vector<std::string>& names,
                                       const std::function<bool(const Texts&)>& ready) {
  Texts texts;
  Do("text of " + names.front(), [&]() -> Action {
    for (const std::string& name : names) {
      const auto* widget = Find(name);
      if (widget == nullptr) return {};
      texts[name] = TextOf(widget);
    }
    if (!ready(texts)) return {};
    return [] {};
  });
  return texts;
}

void DayDriver::Answer(const std::string& text, const std::string& button) {
  std::string shown;
  Do("message " + text, [&]() -> Action {
    auto* box = qobject_cast<QMessageBox*>(Top());
    if (box == nullptr) return {};
    shown = box->text().toStdString();
    for (QAbstractButton* choice : box->buttons()) {
      if (choice->text() == Q(button)) return [choice] { ClickButton(choice); };
    }
    return {};
  });
  EXPECT_EQ(shown, text);
}

std::vector<std::string> DayDriver::Painted(const std::string& label) {
  std::vector<std::string> texts;
  Do("labels", [&]() -> Action {
    texts = std::exchange(witness->painted[label], {});
    return [] {};
  });
  return texts;
}

}  // namespace ox::test
