// Controls and the widgets that show them, each way.
#include "desktop/bindings.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include "desktop/qt_window_system.h"

namespace ox::test {
namespace {

class Bindings : public testing::Test {
 protected:
  /// A control and the widget of the same name that shows it.
  template <class ControlKind, class Widget>
  struct Tied : ControlKind {
    Tied(Bindings& test, const char* name, auto... state)
        : ControlKind(test.window, name, state...), shown(new Widget(&test.form)) {
      shown->setObjectName(name);
      EXPECT_TRUE(TieControl(*this, test.form));
      const auto note = [&test](const char* what) { return [&test, what] { test.happened += what; }; };
      if constexpr (requires { this->onClick; }) this->onClick = note("click ");
      if constexpr (requires { this->onChange; }) this->onChange = note("change ");
      if constexpr (requires { this->onSelect; }) this->onSelect = note("select ");
      if constexpr (requires { this->onActivate; }) this->onActivate = note("activate ");
    }
    Widget* shown;
  };

  void SetUp() override { form.show(); }
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
  Tied<MenuEntry, QMenu> menu{*this, "menu", "&Datei"};
};

TEST_F(Bindings, TheUserReachesTheHandlers) {
  QTest::mouseClick(button.shown, Qt::LeftButton);
  check.shown->click();
  QTest::keyClicks(field.shown, "+");
  QTest::sendKeyEvent(QTest::Click, field.shown, Qt::Key_Adiaeresis, "ä", {});
  command.shown->trigger();
  EXPECT_EQ(Happened(), "click click change change click ");
  EXPECT_TRUE(check.Checked());
  EXPECT_EQ(field.Text(), "alt+ä");
  Timer timer(window, "timer", 7);
  timer.onTick = [&] { timer.SetEnabled(false); };
  TieControl(timer, form);
  EXPECT_EQ(form.findChild<QTimer*>()->interval(), 7);
  timer.SetEnabled(true);
  while (timer.Enabled()) QCoreApplication::processEvents();
}

TEST_F(Bindings, WhatTheProgramSetsIsShown) {
  EXPECT_EQ(button.shown->text() + check.shown->text(), "&LosHaken");
  check.SetChecked(true);
  EXPECT_TRUE(check.shown->isChecked());
  field.SetText("neu");
  EXPECT_EQ(field.shown->text(), "neu");
  command.SetText("Schluss");
  EXPECT_EQ(command.shown->text(), "Schluss");
  label.Append("\r\n\nc\r1\t\x1B\x7F\xFF" + std::string("\0 ", 2));
  EXPECT_EQ(label.shown->text(), QString::fromUtf8("a < b & c\n\nc␍1\t␛␡\uFFFD␀ ")) << "nothing stays unseen";
  EXPECT_EQ(label.shown->textFormat(), Qt::PlainText);
  for (Control* control : window.Controls()) {
    auto* shown = form.findChild<QObject*>(QString::fromStdString(control->Name()));
    if (shown == menu.shown) shown = menu.shown->menuAction();
    EXPECT_TRUE(shown->property("enabled").toBool() && shown->property("visible").toBool());
    control->SetEnabled(false);
    EXPECT_FALSE(shown->property("enabled").toBool()) << control->Name();
    control->SetVisible(false);
    EXPECT_FALSE(shown->property("visible").toBool()) << control->Name();
  }
  EXPECT_EQ(Happened(), "") << "what the program does is no event of the user";
}

TEST_F(Bindings, ClicksSelectAndDoubleClicksActivate) {
  list.SetItems({"eins", "zwei", "drei"});
  const QPoint second = list.shown->visualItemRect(list.shown->item(1)).center();
  QTest::mouseClick(list.shown->viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(Happened() + list.SelectedItem(), "select zwei");
  QTest::mouseClick(list.shown->viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(Happened(), "select ") << "a click on the selected line counts too";
  QTest::mouseDClick(list.shown->viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(Happened(), "activate ");
  QTest::keyClick(list.shown, Qt::Key_Down);
  QTest::keyClick(list.shown, Qt::Key_Return);
  EXPECT_EQ(Happened(), "select activate ");
  list.SetSelected(0);
  EXPECT_EQ(list.shown->selectedItems().front()->text(), "eins");
  list.SetItems({"vier"});
  EXPECT_TRUE(list.shown->selectedItems().empty());
  EXPECT_EQ(Happened(), "");
  list.shown->setCurrentRow(0, QItemSelectionModel::NoUpdate);  // as the focus does
  QTest::keyClick(list.shown, Qt::Key_Down);
  EXPECT_EQ(Happened() + list.SelectedItem(), "select vier") << "the only line can be selected by keyboard";

  drop.SetItems({"/", "/media"});
  EXPECT_EQ(drop.shown->currentIndex(), -1);
  QTest::keyClick(drop.shown, Qt::Key_Down);
  EXPECT_EQ(Happened() + drop.SelectedItem(), "select /");
  drop.SetSelected(1);
  EXPECT_EQ(drop.shown->currentIndex(), 1);
}

TEST_F(Bindings, AGrowingTraceIsOnlyAddedTo) {
  qsizetype added = 0;
  qsizetype removed = 0;
  const QTextDocument* document = trace.shown->document();
  QObject::connect(document, &QTextDocument::contentsChange, document, [&](int, int gone, int come) {
    removed += gone;
    added += come;
  });
  constexpr int kLines = 10000;
  for (int line = 0; line < kLines; ++line)
    trace.Append(line > 0 ? "\r\nPC <- OX  ä<CR>" : "PC <- OX  ä<CR>");
  QCoreApplication::processEvents();
  EXPECT_EQ(document->blockCount(), kLines);
  EXPECT_EQ(removed, 0);
  EXPECT_EQ(added, document->characterCount() - 1) << "each character is inserted once";
  EXPECT_TRUE(trace.shown->textCursor().atEnd());
  trace.SetText("neu");
  trace.Append("er");
  QCoreApplication::processEvents();
  EXPECT_EQ(trace.shown->toPlainText(), "neuer");
}

}  // namespace
}  // namespace ox::test
