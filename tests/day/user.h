// A user at the real widgets, who waits until the screen shows what he wants to touch.
#pragma once

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace ox::test {

inline QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

/// The user decides on a thread of his own and acts on the program's thread: so a day reads as one sequence,
/// although windows nest. What he touches must be on the uppermost window, visible and usable. When what he
/// wants does not come he breaks the test off, telling what he saw last. Texts are UTF-8.
class User {
 public:
  /// Runs the program here and the user's day beside it.
  static void Run(const std::function<void()>& program, const std::function<void()>& day) {
    const std::unique_ptr<QThread> thread(QThread::create(day));
    thread->start();
    program();
    while (!thread->wait(1)) QCoreApplication::processEvents();  // he may still look for something
  }

 protected:
  void ChooseMenu(const std::string& entry) {
    Await("menu " + entry, [&] {
      auto* action = Find<QAction>(entry);
      return action != nullptr && action->isVisible() && Soon([action] { action->trigger(); });
    });
  }

  /// What follows is meant for the window with this caption.
  void AwaitWindow(const std::string& caption) {
    Await("window " + caption, [&] { return Top() != nullptr && See(Top()->windowTitle()) == caption; });
  }

  void CloseWindow() {
    Await("close box", [] { return Top() != nullptr && Soon([] { Top()->close(); }); });
  }

  /// Does something with a widget, or nothing, as soon as the user can touch it.
  void Reach(
      const std::string& name, const std::function<void(QWidget*)>& action = [](QWidget*) {}) {
    Await(name, [&] {
      auto* widget = Find<QWidget>(name);
      return widget != nullptr && widget->window() == Top() && widget->isVisible() && widget->isEnabled() &&
             Soon([widget, action] { action(widget); });
    });
  }

  void Click(const std::string& name) {
    constexpr int kFromLeft = 8;  // where a check box has its box
    Reach(name, [](QWidget* button) {
      QTest::mouseClick(button, Qt::LeftButton, {}, {kFromLeft, button->height() / 2});
    });
  }

  /// Replaces what is in fields, each given with its new text.
  void Type(const std::map<std::string, std::string>& texts) {
    for (const auto& [name, text] : texts) {
      Reach(name, [typed = Q(text)](QWidget* field) {
        QTest::mouseClick(field, Qt::LeftButton);
        QTest::keySequence(field, QKeySequence::SelectAll);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, typed);
      });
    }
  }

  /// Expects a message box with exactly this text, in which "*" stands for any, and clicks OK.
  void Answer(const std::string& text) {
    const auto wanted = QRegularExpression::fromWildcard(Q(text));
    Await("message " + text, [&] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      return box != nullptr && wanted.match(Q(See(box->text()))).hasMatch() &&
             Soon([box] { QTest::mouseClick(box->defaultButton(), Qt::LeftButton); });
    });
  }

  /// Expects that widgets say this at one moment: several names with blanks between them, and their texts
  /// with "|" between them. While a message box is open, those below it.
  void Expect(const std::string& names, const std::string& texts) {
    Await(names + ": " + texts, [&] { return Read(names) == texts; });
  }

  /// What a widget says as soon as it says anything.
  std::string Text(const std::string& name) {
    std::string text;
    Await(name, [&] { return !(text = Read(name)).empty(); });
    return text;
  }

 private:
  /// Looks on the program's thread until the look is content.
  void Await(const std::string& wish, const std::function<bool()>& look) {
    constexpr unsigned long kBetweenLooks = 4;  // milliseconds
    const QDeadlineTimer patience(std::chrono::seconds(20));
    for (bool content = false; !content; QThread::msleep(kBetweenLooks)) {
      if (patience.hasExpired()) qFatal("in vain: %s; seen: %s", wish.c_str(), seen_.c_str());
      const auto lookNow = [&] { content = Settled() && look(); };
      QMetaObject::invokeMethod(qApp, lookNow, Qt::BlockingQueuedConnection);
    }
  }

  /// Acts when the look is over: it does not wait for the window that the action opens. Always true.
  static bool Soon(const std::function<void()>& action) {
    return QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
  }

  static QWidget* Top() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (qobject_cast<QMainWindow*>(widget) != nullptr && widget->isVisible()) return widget;
    return nullptr;
  }

  /// No event loop of a window that has gone is still being left: a user is never that quick.
  static bool Settled() {
    const auto modal = [](const QWidget* widget) { return widget->isVisible() && widget->isModal(); };
    return QThread::currentThread()->loopLevel() <=
           1 + std::ranges::count_if(QApplication::topLevelWidgets(), modal);
  }

  template <class Kind>
  static Kind* Find(const std::string& name) {
    QWidget* window = Top();
    if (qobject_cast<QMessageBox*>(window) != nullptr) window = window->parentWidget();
    return window != nullptr ? window->findChild<Kind*>(Q(name)) : nullptr;
  }

  const std::string& See(const QString& text) { return seen_ = text.toStdString(); }

  const std::string& Read(const std::string& names) {
    QStringList texts;
    for (const QString& name : Q(names).split(' ')) {
      const QWidget* widget = Find<QWidget>(name.toStdString());
      const char* what = widget != nullptr && widget->inherits("QPlainTextEdit") ? "plainText" : "text";
      texts += widget != nullptr ? widget->property(what).toString() : "";
    }
    return See(texts.join('|'));
  }

  std::string seen_;
};

}  // namespace ox::test
