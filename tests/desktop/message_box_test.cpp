// Message boxes as the user meets them.
#include <gtest/gtest.h>

#include <QMessageBox>

#include "scripted_desktop.h"

namespace ox::test {
namespace {

struct Case {
  Buttons buttons;
  std::function<void(QMessageBox&)> user;
  Answer answer;
};

TEST(MessageBox, EveryWayToAnswerIt) {
  const auto key = [](Qt::Key which) { return [which](QMessageBox& box) { QTest::keyClick(&box, which); }; };
  const auto click = [](const char* caption) {
    return [caption](QMessageBox& box) {
      for (QAbstractButton* button : box.buttons()) {
        if (button->text() == caption) return QTest::mouseClick(button, Qt::LeftButton);
      }
      ADD_FAILURE() << "no button " << caption;
    };
  };
  const auto closeBox = [](QMessageBox& box) { box.close(); };
  const Case cases[] = {
      {Buttons::Ok, key(Qt::Key_Return), Answer::Ok},
      {Buttons::Ok, key(Qt::Key_Escape), Answer::Ok},
      {Buttons::Ok, closeBox, Answer::Ok},
      {Buttons::Ok, click("OK"), Answer::Ok},
      {Buttons::OkCancel, key(Qt::Key_Return), Answer::Ok},
      {Buttons::OkCancel, key(Qt::Key_Escape), Answer::Cancel},
      {Buttons::OkCancel, closeBox, Answer::Cancel},
      {Buttons::OkCancel, click("OK"), Answer::Ok},
      {Buttons::OkCancel, click("Abbrechen"), Answer::Cancel},
  };
  Desktop desktop;
  for (const Case& row : cases) {
    Later([&row] { row.user(*qobject_cast<QMessageBox*>(Top())); });
    EXPECT_EQ(desktop.windows.ShowMessage("Frage", row.buttons), row.answer) << &row - cases;
  }
}

TEST(MessageBox, TheTextIsShownAsItIs) {
  const std::pair<std::string, QString> cases[] = {
      {"<b>fett</b> & \"x\"", "<b>fett</b> & \"x\""},
      {"eins\r\n\r\nzwei\r\n", "eins\n\nzwei\n"},
      {std::string(5000, ' '), QString(2999, ' ') + QString::fromUtf8("…")},
  };
  Desktop desktop;
  for (const auto& [text, shown] : cases) {
    Later([&shown = shown] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      EXPECT_EQ(box->windowTitle(), "Orvanexe Service");
      EXPECT_EQ(box->text(), shown);
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      EXPECT_TRUE(box->textInteractionFlags() & Qt::TextSelectableByMouse);
      box->close();
    });
    desktop.windows.ShowMessage(text);
  }
}

}  // namespace
}  // namespace ox::test
