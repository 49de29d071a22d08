// Controls and the widgets that show them, each way.
#include "desktop/bindings.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "desktop/qt_window_system.h"

namespace ox::test {
namespace {

struct Bindings : testing::Test {
  /// A control and the widget of the same name that shows it.
  template <class ControlKind, class Widget>
  struct Tied : ControlKind {
    Tied(Bindings& test, const char* name, auto... state)
        : ControlKind(test.window, name, state...), shown(new Widget(&test.form)) {
      shown->setObjectName(name);
      EXPECT_TRUE(TieControl(*this, test.form));
      if constexpr (requires { this->onClick; }) this->onClick = [&] { test.happened += "click "; };
      if constexpr (requires { this->onChange; }) this->onChange = [&] { test.happened += "change "; };
      if constexpr (requires { this->onSelect; }) this->onSelect = [&] { test.happened += "select "; };
      if constexpr (requires { this->onActivate; }) this->onActivate = [&] { test.happened += "activate "; };
    }
    Widget* shown;
  };

  Bindings() { form.show(); }
  std::string Happened() { return std::exchange(happened, ""); }

  OpenPorts ports;
  QtWindowSystem windows{ports};
  Window window{windows, "", ""};
  std::string happened;
  QWidget form;
  Tied<Button, QPushButton> button{*this, "button", "&Los"};
  Tied<CheckBox, QCheckBox> check{*this, "check", "Haken"};
  Tied<TextBox, QLineEdit> field{*this, "field", "alt"};
  Tied<TextBox, QPlainTextEdit> trace{*this, "trace"};
  Tied<Label, QLabel> label{*this, "label", "a < b & c"};
  Tied<ListBox, QListWidget> list{*this, "list"};
  Tied<ListBox, QComboBox> drop{*this, "drop"};
  Tied<MenuEntry, QAction> command{*this, "command", "Ende"};
};

TEST_F(Bindings, TheUserReachesTheHandlers) {
  QTest::mouseClick(button.shown, Qt::LeftButton);
  check.shown->click();
  QTest::sendKeyEvent(QTest::Click, field.shown, Qt::Key_Adiaeresis, "ä", {});
  command.shown->trigger();
  EXPECT_EQ(Happened() + field.Text(), "click click change click altä");
  EXPECT_TRUE(check.Checked());
}

TEST_F(Bindings, WhatTheProgramSetsIsShown) {
  check.SetChecked(true);
  field.SetText("neu");
  command.SetText("Schluss");
  EXPECT_TRUE(check.shown->isChecked());
  EXPECT_EQ(button.shown->text() + check.shown->text() + field.shown->text() + command.shown->text(),
            "&LosHakenneuSchluss");
  label.Append("\r\n\nc\r1\t\x1B\x7F\xFF" + std::string("\0 ", 2));
  EXPECT_EQ(label.shown->text(), QString::fromUtf8("a < b & c\n\nc␍1\t␛␡\uFFFD␀ ")) << "nothing stays unseen";
  EXPECT_EQ(label.shown->textFormat(), Qt::PlainText);
  for (Control* control : window.Controls()) {
    const auto* shown = form.findChild<QObject*>(QString::fromStdString(control->Name()));
    EXPECT_TRUE(shown->property("enabled").toBool() && shown->property("visible").toBool());
    control->SetEnabled(false);
    control->SetVisible(false);
    EXPECT_FALSE(shown->property("enabled").toBool() || shown->property("visible").toBool())
        << control->Name();
  }
  EXPECT_EQ(Happened(), "") << "what the program does is no event of the user";
}

TEST_F(Bindings, ClicksSelectAndDoubleClicksActivate) {
  list.SetItems({"eins", "zwei", "drei"});
  const QPoint second = list.shown->visualItemRect(list.shown->item(1)).center();
  for (int click = 0; click < 2; ++click) {  // a click on the selected line counts too
    QTest::mouseClick(list.shown->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(Happened() + list.SelectedItem(), "select zwei");
  }
  QTest::mouseDClick(list.shown->viewport(), Qt::LeftButton, {}, second);
  QTest::keyClick(list.shown, Qt::Key_Down);
  QTest::keyClick(list.shown, Qt::Key_Return);
  EXPECT_EQ(Happened() + list.SelectedItem(), "activate select activate drei");
  list.SetSelected(0);
  EXPECT_EQ(list.shown->selectedItems().front()->text(), "eins");
  list.SetItems({"vier"});
  list.shown->setCurrentRow(0, QItemSelectionModel::NoUpdate);  // as the focus does
  QTest::keyClick(list.shown, Qt::Key_Down);
  EXPECT_EQ(Happened() + list.SelectedItem(), "select vier") << "the only line can be selected by keyboard";

  drop.SetItems({"/", "/media"});
  drop.SetSelected(0);
  QTest::keyClick(drop.shown, Qt::Key_Down);
  EXPECT_EQ(Happened() + drop.SelectedItem(), "select /media");
}

TEST_F(Bindings, AGrowingTraceIsOnlyAddedTo) {
  int removed = 0;
  const QTextDocument* document = trace.shown->document();
  QObject::connect(document, &QTextDocument::contentsChange, document,
                   [&](int, int gone, int) { removed += gone; });
  for (int line = 0; line < 1000; ++line) trace.Append("PC <- OX  ä<CR>\r\n");
  QCoreApplication::processEvents();
  EXPECT_EQ(std::pair(document->blockCount(), removed), std::pair(1001, 0));
  EXPECT_TRUE(trace.shown->textCursor().atEnd());
}

}  // namespace
}  // namespace ox::test
