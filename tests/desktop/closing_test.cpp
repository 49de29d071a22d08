// Windows over windows, and how they go.
#include <gtest/gtest.h>

#include <QDialog>

#include "scripted_desktop.h"

namespace ox::test {
namespace {

using Events = std::vector<std::string>;

/// Both ways to ask a window to go.
const std::pair<const char*, std::function<void()>> kWaysToClose[] = {
    {"close box", [] { Top()->close(); }},
    {"Esc", [] { Press(Qt::Key_Escape); }},
};

/// A dialogue over a main window.
class Closing : public testing::Test {
 protected:
  /// Shows the dialogue while the main window is open; the user does the rest.
  void ShowDialogue(std::function<void()> user) {
    Later([this, user = std::move(user)] {
      Later(user);
      desktop.windows.ShowModal(dialogue);
      desktop.main.Leave();
    });
    desktop.windows.ShowModal(desktop.main);
  }

  Desktop desktop;
  TwoButtons dialogue{desktop.windows};
};

TEST_F(Closing, AnIdleWindowGoesAtOnce) {
  for (const auto& [way, close] : kWaysToClose) {
    dialogue.happened.clear();
    ShowDialogue(close);
    EXPECT_EQ(dialogue.happened, (Events{"load", "activate", "unload"})) << way;
    EXPECT_EQ(Top(), nullptr) << way;
  }
}

TEST_F(Closing, ACommandUnderWayIsWaitedFor) {
  for (const auto& [way, close] : kWaysToClose) {
    dialogue.happened.clear();
    dialogue.ProStart.onClick = [&, close = close] {
      close();
      EXPECT_TRUE(Top()->isVisible());
      desktop.windows.Rest();
      dialogue.happened.emplace_back("command ends");
    };
    ShowDialogue([] { Click("ProStart"); });
    EXPECT_EQ(dialogue.happened,
              (Events{"load", "activate", "close while running", "command ends", "unload"}))
        << way;
  }
}

TEST_F(Closing, AWindowThatUnloadsWhileItAppearsIsNotWaitedFor) {
  struct Fleeting : TwoButtons {
    using TwoButtons::TwoButtons;
    void OnActivate() override { Leave(); }
  } fleeting{desktop.windows};
  ShowDialogue([&] {
    desktop.windows.ShowModal(fleeting);
    Press(Qt::Key_Escape);
  });
  EXPECT_EQ(fleeting.happened, (Events{"load", "unload"}));
}

TEST_F(Closing, WindowsAndMessagesNest) {
  TwoButtons inner{desktop.windows};
  inner.ProStart.onClick = [&] {
    Later([&] {
      EXPECT_EQ(Top()->parentWidget()->windowTitle(), "Zwei Knöpfe");
      Press(Qt::Key_Return);
    });
    desktop.windows.ShowMessage("über allem");
    inner.Leave();
  };
  dialogue.ProStart.onClick = [&] {
    QWidget* outerForm = Top();
    Later([&, outerForm] {
      EXPECT_EQ(Top()->parentWidget(), outerForm);
      EXPECT_TRUE(Top()->isModal());
      Click("ProStart");
    });
    desktop.windows.ShowModal(inner);
    EXPECT_EQ(Top(), outerForm);
    dialogue.Leave();
  };
  ShowDialogue([] { Click("ProStart"); });
  EXPECT_FALSE(inner.IsOpen());
  EXPECT_FALSE(dialogue.IsOpen());
}

TEST_F(Closing, EnterClicksTheButtonInFocusElseTheDefault) {
  dialogue.ProStart.onClick = [&] { dialogue.happened.emplace_back("start"); };
  dialogue.proEnd.onClick = [&] { dialogue.Leave(); };
  dialogue.happened.clear();
  ShowDialogue([&] {
    dialogue.ProStart.MakeDefault();
    dialogue.ProStart.SetFocus();
    Press(Qt::Key_Return);
    Top()->focusWidget()->clearFocus();
    Press(Qt::Key_Return);
    dialogue.proEnd.SetFocus();
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(dialogue.happened, (Events{"load", "activate", "start", "start", "unload"}));
}

}  // namespace
}  // namespace ox::test
