// A user at the real widgets, who waits until the screen shows what he wants to touch.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
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

/// The user thinks on a thread of his own and acts in the program's, so that his day reads as one sequence
/// though windows nest. What he touches must be on the uppermost window, visible and usable. When what he
/// wants does not come he breaks the test off, telling what is on the screen. Texts are UTF-8.
class User : public QObject {
 public:
  /// Runs the program here and the user's day beside it.
  void Run(const std::function<void()>& program, const std::function<void()>& day) {
    qApp->installEventFilter(this);
    const std::unique_ptr<QThread> thread(QThread::create(day));
    thread->start();
    program();
    while (!thread->wait(1)) QCoreApplication::processEvents();  // he may still look for something
  }

 protected:
  static constexpr std::chrono::seconds kPatience{20};

  void ChooseMenu(const std::string& entry) {
    Await("menu " + entry, [&] {
      auto* action = Top() != nullptr ? Top()->findChild<QAction*>(Q(entry)) : nullptr;
      return action != nullptr && action->isVisible() && Soon([action] { action->trigger(); });
    });
  }

  /// What follows is meant for the window with this caption.
  void AwaitWindow(const std::string& caption) {
    Await("window " + caption, [&] { return Top() != nullptr && Top()->windowTitle() == Q(caption); });
  }

  void CloseWindow() {
    Await("close box", [] { return Top() != nullptr && Soon([] { Top()->close(); }); });
  }

  /// Does something with the widget as soon as the user can touch it.
  void Touch(const std::string& name, const std::function<void(QWidget*)>& action) {
    Await(name, [&] {
      QWidget* widget = Find(name);
      return widget != nullptr && widget->window() == Top() && widget->isVisible() && widget->isEnabled() &&
             Soon([widget, action] { action(widget); });
    });
  }

  void AwaitUsable(const std::string& name) {
    Touch(name, [](QWidget*) {});
  }

  void Click(const std::string& name) {
    constexpr int kFromLeft = 8;  // where a check box has its box
    Touch(name, [](QWidget* button) {
      QTest::mouseClick(button, Qt::LeftButton, {}, {kFromLeft, button->height() / 2});
    });
  }

  /// Replaces what is in fields, each given with its new text.
  void Type(const std::map<std::string, std::string>& texts) {
    for (const auto& [name, text] : texts) {
      Touch(name, [typed = Q(text)](QWidget* field) {
        QTest::mouseClick(field, Qt::LeftButton);
        QTest::keySequence(field, QKeySequence::SelectAll);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, typed);
      });
    }
  }

  /// Expects a message box with exactly this text and clicks OK.
  void Answer(const std::string& text) {
    Await("message " + text, [&] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      return box != nullptr && box->text() == Q(text) &&
             Soon([box] { QTest::mouseClick(box->defaultButton(), Qt::LeftButton); });
    });
  }

  /// Expects that widgets say this at one moment: several names with blanks between them, and their texts
  /// with "|" between them. While a message box is open, those below it; of a label that has gone everything
  /// that it was painted with, also what stood for a moment only.
  void Expect(const std::string& names, const std::string& texts) {
    std::string shown;
    Awaited([&] { return (shown = Read(names)) == texts; });
    EXPECT_EQ(shown, texts);
  }

  std::string Text(const std::string& name) {
    std::string text;
    Awaited([&] { return !(text = Read(name)).empty(); });
    return text;
  }

 private:
  /// Looks on the program's thread until the look is content; false when that lasts too long.
  bool Awaited(const std::function<bool()>& look) {
    constexpr unsigned long kBetweenLooks = 4;  // milliseconds
    bool content = false;
    for (const QDeadlineTimer end(kPatience); !content && !end.hasExpired();) {
      const auto lookNow = [&] {
        content = Settled() && look();
        const auto* box = qobject_cast<QMessageBox*>(Top());
        screen_ = box != nullptr ? box->text() : Top() != nullptr ? Top()->windowTitle() : "nothing";
      };
      QMetaObject::invokeMethod(qApp, lookNow, Qt::BlockingQueuedConnection);
      if (!content) QThread::msleep(kBetweenLooks);
    }
    return content;
  }

  void Await(const std::string& wish, const std::function<bool()>& look) {
    if (!Awaited(look)) qFatal("in vain: %s; on the screen: %s", wish.c_str(), qUtf8Printable(screen_));
  }

  /// Acts when the look is over: it does not wait for the window that the action opens. Always true.
  static bool Soon(const std::function<void()>& action) {
    return QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
  }

  static QWidget* Top() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (qobject_cast<QMainWindow*>(widget) != nullptr && widget->isVisible()) return widget;
    }
    return nullptr;
  }

  /// No event loop of a window that has gone is still being left: a user is never that quick.
  static bool Settled() {
    const auto modal = [](const QWidget* widget) { return widget->isVisible() && widget->isModal(); };
    return QThread::currentThread()->loopLevel() <=
           1 + std::ranges::count_if(QApplication::topLevelWidgets(), modal);
  }

  static QWidget* Find(const std::string& name) {
    QWidget* window = Top();
    if (qobject_cast<QMessageBox*>(window) != nullptr) window = window->parentWidget();
    return window != nullptr ? window->findChild<QWidget*>(Q(name)) : nullptr;
  }

  std::string Read(const std::string& names) {
    QStringList texts;
    for (const QString& name : Q(names).split(' ')) {
      const QWidget* widget = Find(name.toStdString());
      const char* what = widget != nullptr && widget->inherits("QPlainTextEdit") ? "plainText" : "text";
      texts += widget != nullptr ? widget->property(what).toString() : painted_[name].join(' ');
    }
    return texts.join('|').toStdString();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* label = event->type() == QEvent::Paint ? qobject_cast<QLabel*>(watched) : nullptr;
    if (label == nullptr || label->text().isEmpty()) return false;
    QStringList& texts = painted_[label->objectName()];
    if (texts.empty() || texts.back() != label->text()) texts += label->text();
    return false;
  }

  std::map<QString, QStringList> painted_;
  QString screen_;
};

}  // namespace ox::test
