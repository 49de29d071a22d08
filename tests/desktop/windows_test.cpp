// Windows over windows, how they go, and message boxes over all of them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "desktop/qt_window_system.h"
#include "platform/controls.h"

namespace ox::test {
namespace {

using User = std::function<void()>;

/// The user acts as soon as an event loop runs.
void Later(User user) {
  QTimer::singleShot(0, qApp, std::move(user));
}

/// The uppermost window or message box.
QWidget* Top() {
  return QApplication::activeModalWidget();
}

User Press(Qt::Key key) {
  return [key] {
    QWidget* focus = Top()->focusWidget();
    QTest::keyClick(focus != nullptr ? focus : Top(), key);
  };
}

User Click(const char* caption) {
  return [caption] {
    for (auto* button : Top()->findChildren<QPushButton*>()) {
      if (button->text() == caption) return QTest::mouseClick(button, Qt::LeftButton);
    }
    ADD_FAILURE() << "no button " << caption;
  };
}

const User kCloseBox = [] { Top()->close(); };

/// A window over an existing form, whose two buttons do what the test wants.
struct TwoButtons : Window {
  explicit TwoButtons(WindowSystem& windows) : Window(windows, "updatepro", "Zwei Knöpfe") {}
  using Window::Unload;
  void OnLoad() override { life += "load "; }
  void OnActivate() override {
    life += "activate ";
    if (fleeting) Unload();
  }
  void OnCloseWhileRunning() override { life += "asked "; }
  void OnUnload() override { life += "unload"; }

  Button work{*this, "ProStart", "Arbeiten"};
  Button leave{*this, "proEnd", "Verlassen"};
  std::string life;
  bool fleeting = false;
};

class Windows : public testing::Test {
 protected:
  /// What becomes of the dialogue when it is shown over the main window and the user does this.
  std::string Life(const User& user) {
    Later([&] {
      Later(user);
      windows.ShowModal(dialogue);
      main.Unload();
    });
    windows.ShowModal(main);
    EXPECT_EQ(Top(), nullptr);
    return std::exchange(dialogue.life, "");
  }

  OpenPorts ports;
  QtWindowSystem windows{ports};
  TwoButtons main{windows};
  TwoButtons dialogue{windows};
};

TEST_F(Windows, AnIdleWindowGoesAtOnceAndACommandIsWaitedFor) {
  for (const User& close : {kCloseBox, Press(Qt::Key_Escape)}) {
    dialogue.work.onClick = [&] {
      close();
      EXPECT_TRUE(Top()->isVisible());
      EXPECT_EQ(Top()->windowTitle(), "Zwei Knöpfe");
      windows.Rest();
      dialogue.life += "command ends ";
    };
    EXPECT_EQ(Life(close), "load activate unload");
    EXPECT_EQ(Life(Click("Arbeiten")), "load activate asked command ends unload");
  }
  dialogue.fleeting = true;
  EXPECT_EQ(Life([] {}), "load activate unload") << "it is not waited for";
}

TEST_F(Windows, EnterClicksTheButtonInFocusElseTheDefault) {
  dialogue.work.onClick = [&] { dialogue.life += "work "; };
  dialogue.leave.onClick = [&] { dialogue.Unload(); };
  EXPECT_EQ(Life([&] {
              const User enter = Press(Qt::Key_Return);
              dialogue.work.MakeDefault();
              dialogue.work.SetFocus();
              enter();
              Top()->focusWidget()->clearFocus();
              enter();
              dialogue.leave.SetFocus();
              enter();
            }),
            "load activate work work unload");
}

TEST_F(Windows, EveryWayToAnswerAMessageBox) {
  const auto ask = [&](const User& user, Buttons buttons) {
    Later(user);
    return windows.ShowMessage("Frage", buttons);
  };
  const std::pair<User, Answer> ways[] = {{Press(Qt::Key_Return), Answer::Ok},
                                          {Press(Qt::Key_Escape), Answer::Cancel},
                                          {kCloseBox, Answer::Cancel},
                                          {Click("OK"), Answer::Ok}};
  for (const auto& [user, answer] : ways) {
    EXPECT_EQ(ask(user, Buttons::OkCancel), answer);
    EXPECT_EQ(ask(user, Buttons::Ok), Answer::Ok);
  }
  EXPECT_EQ(ask(Click("Abbrechen"), Buttons::OkCancel), Answer::Cancel);
}

TEST_F(Windows, AMessageStandsAsItIsCutAndBrokenToFit) {
  const QString x80(80, 'x');
  const std::pair<std::string, QString> cases[] = {
      {"<b>fett</b> & \"x\"", "<b>fett</b> & \"x\""},
      {"Zeile 1\r\r\n/S/\r\n\n\x01", QString::fromUtf8("Zeile 1\n\n/S/\n\n␁")},
      {std::string(3000, ' '), QString(3000, ' ')},
      {std::string(3001, ' '), QString(2999, ' ') + u'…'},
      {std::string(200, 'x'), x80 + QChar(0x200B) + x80 + QChar(0x200B) + QString(40, 'x')},
      {std::string(80, 'x') + " " + std::string(79, 'x') + "😀y",
       x80 + " " + QString(79, 'x') + QString::fromUtf8("😀") + QChar(0x200B) + "y"},
  };
  for (const auto& [text, shown] : cases) {
    Later([&shown = shown] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      EXPECT_EQ(box->windowTitle(), "Orvanexe Service");
      EXPECT_EQ(box->text(), shown);
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      EXPECT_TRUE(box->textInteractionFlags() & Qt::TextSelectableByMouse);
      box->close();
    });
    windows.ShowMessage(text);
  }
}

}  // namespace
}  // namespace ox::test
