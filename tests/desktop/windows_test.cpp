// Windows over windows, how they go, and message boxes over all of them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "desktop/qt_window_system.h"
#include "platform/controls.h"

namespace ox::test {
namespace {

using User = std::function<void()>;

/// The user acts as soon as an event loop runs.
void Later(User user) {
  QTimer::singleShot(0, qApp, std::move(user));
}

QWidget* Top() {
  return QApplication::activeModalWidget();
}

User Press(Qt::Key key) {
  return [key] { QTest::keyClick(Top(), key); };
}

const User kCloseBox = [] { Top()->close(); };

/// A window over an existing form, whose two buttons do what the test wants.
struct TwoButtons : Window {
  explicit TwoButtons(WindowSystem& windows) : Window(windows, "updatepro", "Zwei Knöpfe") {}
  using Window::Unload;
  void OnLoad() override { work.MakeDefault(); }
  void OnCloseWhileRunning() override { life += "asked "; }
  void OnUnload() override { life += "unload"; }

  Button work{*this, "ProStart", "Arbeiten"};
  Button leave{*this, "proEnd", "Verlassen"};
  std::string life;
};

struct Windows : testing::Test {
  /// What becomes of the dialogue when it is shown over the main window and the user does this.
  std::string Life(const User& user) {
    Later([&] {
      Later(user);
      windows.ShowModal(dialogue);
      main.Unload();
    });
    windows.ShowModal(main);
    return std::exchange(dialogue.life, "");
  }

  OpenPorts ports;
  QtWindowSystem windows{ports};
  TwoButtons main{windows};
  TwoButtons dialogue{windows};
};

TEST_F(Windows, KeysAndCloseBoxActAtOnceAndACommandIsWaitedFor) {
  for (const User& close : {kCloseBox, Press(Qt::Key_Escape)}) {
    dialogue.work.onClick = [&] {
      close();
      EXPECT_TRUE(Top()->isVisible());
      windows.Rest();
      dialogue.life += "command ends ";
    };
    EXPECT_EQ(Life(close), "unload");
    EXPECT_EQ(Life(Press(Qt::Key_Return)), "asked command ends unload");
  }
  dialogue.leave.onClick = [&] { dialogue.Unload(); };
  EXPECT_EQ(Life([&] {
              dialogue.leave.SetFocus();
              Press(Qt::Key_Return)();
            }),
            "unload");
}

TEST_F(Windows, AMessageBoxIsLeftByItsLastAnswer) {
  const User cancel = [] {
    auto* button = Top()->findChildren<QPushButton*>().back();
    EXPECT_EQ(button->text(), "Abbrechen");
    button->click();
  };
  const std::tuple<User, Answer, Buttons> ways[] = {
      {Press(Qt::Key_Escape), Answer::Cancel, Buttons::OkCancel},
      {kCloseBox, Answer::Cancel, Buttons::OkCancel},
      {cancel, Answer::Cancel, Buttons::OkCancel},
      {kCloseBox, Answer::Ok, Buttons::Ok}};
  for (const auto& [user, answer, buttons] : ways) {
    Later(user);
    EXPECT_EQ(windows.ShowMessage("Frage", buttons), answer);
  }
}

TEST_F(Windows, AMessageStandsAsItIsCutAndBrokenToFit) {
  const QString x80(80, 'x');
  const std::pair<std::string, QString> cases[] = {
      {"<b>fett</b> & \"x\"\r\r\n/S/\r\n\n\x01", QString::fromUtf8("<b>fett</b> & \"x\"\n\n/S/\n\n␁")},
      {std::string(3001, ' '), QString(2999, ' ') + u'…'},
      {std::string(80, 'x') + " " + std::string(81, 'x'), x80 + " " + x80 + QChar(0x200B) + "x"}};
  for (const auto& [text, shown] : cases) {
    Later([&shown = shown] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      EXPECT_EQ(box->windowTitle() + box->text(), "Orvanexe Service" + shown);
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      box->close();
    });
    windows.ShowMessage(text);
  }
}

}  // namespace
}  // namespace ox::test
