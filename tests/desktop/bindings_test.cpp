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
#include <QTextDocument>

#include "desktop/screen_text.h"
#include "scripted_desktop.h"

namespace ox::test {
namespace {

struct EveryKind : Window {
  explicit EveryKind(WindowSystem& windows) : Window(windows, "EveryKind", "") {
    for (auto [handler, name] : {std::pair{&button.onClick, "button"},
                                 {&check.onClick, "check"},
                                 {&field.onChange, "field"},
                                 {&command.onClick, "command"},
                                 {&list.onSelect, "select"},
                                 {&list.onActivate, "activate"},
                                 {&drop.onSelect, "drop"},
                                 {&ticks.onTick, "tick"}}) {
      *handler = [this, name = std::string(name)] { happened.push_back(name); };
    }
  }
  Button button{*this, "button", "&Los"};
  CheckBox check{*this, "check", "Haken"};
  TextBox field{*this, "field", "alt"};
  TextBox trace{*this, "trace"};
  Label label{*this, "label", "a < b & c"};
  ListBox list{*this, "list"};
  ListBox drop{*this, "drop"};
  MenuEntry menu{*this, "menu", "&Datei"};
  MenuEntry command{*this, "command", "Ende"};
  Timer ticks{*this, "ticks", 0};
  std::vector<std::string> happened;
};

template <class Widget>
Widget* Named(QWidget& form, const char* name) {
  auto* widget = new Widget(&form);
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

class Bindings : public testing::Test {
 protected:
  Bindings() {
    for (Control* control : window.Controls()) EXPECT_TRUE(TieControl(*control, form)) << control->Name();
    form.show();
  }
  ~Bindings() override {
    for (Control* control : window.Controls()) control->ConnectView({});
  }
  std::vector<std::string> Happened() { return std::exchange(window.happened, {}); }

  OpenPorts ports;
  QtWindowSystem windows{ports};
  EveryKind window{windows};
  QWidget form;
  QPushButton* button = Named<QPushButton>(form, "button");
  QCheckBox* check = Named<QCheckBox>(form, "check");
  QLineEdit* field = Named<QLineEdit>(form, "field");
  QPlainTextEdit* trace = Named<QPlainTextEdit>(form, "trace");
  QLabel* label = Named<QLabel>(form, "label");
  QListWidget* list = Named<QListWidget>(form, "list");
  QComboBox* drop = Named<QComboBox>(form, "drop");
  QMenu* menu = Named<QMenu>(form, "menu");
  QAction* command = Named<QAction>(form, "command");
};

using Events = std::vector<std::string>;

TEST_F(Bindings, TheUserReachesTheHandlers) {
  QTest::mouseClick(button, Qt::LeftButton);
  check->click();
  QTest::keyClicks(field, "+1");
  QTest::sendKeyEvent(QTest::Click, field, Qt::Key_Adiaeresis, QString::fromUtf8("ä"), {});
  command->trigger();
  EXPECT_EQ(Happened(), (Events{"button", "check", "field", "field", "field", "command"}));
  EXPECT_TRUE(window.check.Checked());
  EXPECT_EQ(window.field.Text(), "alt+1ä");

  window.ticks.SetEnabled(true);
  while (window.happened.empty()) QCoreApplication::processEvents();
  window.ticks.SetEnabled(false);
  EXPECT_EQ(Happened().front(), "tick");
}

TEST_F(Bindings, WhatTheProgramSetsIsShown) {
  EXPECT_EQ(button->text(), "&Los");
  EXPECT_EQ(label->text(), "a < b & c");
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
  window.button.SetEnabled(false);
  window.check.SetVisible(false);
  window.check.SetChecked(true);
  window.field.SetText("neu");
  window.label.Append("\r\nd");
  window.command.SetText("Schluss");
  window.menu.SetVisible(false);
  EXPECT_FALSE(button->isEnabled());
  EXPECT_FALSE(check->isVisible());
  EXPECT_TRUE(check->isChecked());
  EXPECT_EQ(field->text(), "neu");
  EXPECT_EQ(label->text(), "a < b & c\nd");
  EXPECT_EQ(command->text(), "Schluss");
  EXPECT_FALSE(menu->menuAction()->isVisible());
  EXPECT_EQ(Happened(), Events{}) << "what the program does is no event of the user";
}

TEST_F(Bindings, ClicksSelectAndDoubleClicksActivate) {
  window.list.SetItems({"eins", "zwei", "drei"});
  const auto at = [this](int row) { return list->visualItemRect(list->item(row)).center(); };
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(1));
  EXPECT_EQ(Happened(), Events{"select"});
  EXPECT_EQ(window.list.SelectedItem(), "zwei");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(1));
  EXPECT_EQ(Happened(), Events{"select"}) << "a click on the selected line counts too";
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at(1));
  EXPECT_EQ(Happened(), Events{"activate"});
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(Happened(), (Events{"select", "activate"}));
  window.list.SetSelected(0);
  EXPECT_EQ(list->selectedItems().front()->text(), "eins");
  window.list.SetItems({"vier"});
  EXPECT_TRUE(list->selectedItems().empty());
  EXPECT_EQ(Happened(), Events{});
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(Happened(), Events{"select"}) << "the only line can be selected by keyboard";
  EXPECT_EQ(window.list.SelectedItem(), "vier");

  window.drop.SetItems({"/", "/media"});
  EXPECT_EQ(drop->currentIndex(), -1);
  QTest::keyClick(drop, Qt::Key_Down);
  EXPECT_EQ(Happened(), Events{"drop"});
  EXPECT_EQ(window.drop.Selected(), 0);
}

TEST_F(Bindings, AGrowingTraceIsOnlyAddedTo) {
  qsizetype added = 0;
  qsizetype removed = 0;
  QObject::connect(trace->document(), &QTextDocument::contentsChange, trace, [&](int, int gone, int come) {
    removed += gone;
    added += come;
  });
  constexpr int kLines = 10000;
  for (int line = 0; line < kLines; ++line) {
    if (line > 0) window.trace.Append("\r\n");
    window.trace.Append("PC <- OX  ä<CR>");
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(trace->document()->blockCount(), kLines);
  EXPECT_EQ(removed, 0);
  EXPECT_EQ(added, trace->document()->characterCount() - 1) << "each character is inserted once";
  EXPECT_TRUE(trace->textCursor().atEnd());
  window.trace.SetText("neu");
  window.trace.Append("er");
  QCoreApplication::processEvents();
  EXPECT_EQ(trace->toPlainText(), "neuer");
}

TEST(ScreenText, NothingFromTheLineStaysUnseen) {
  const std::pair<std::string, const char*> cases[] = {
      {"a\r\nb\nc", "a\nb\nc"}, {"0\r1", "0␍1"},    {std::string("x\0y", 3), "x␀y"},
      {"\x7F\t\x1B", "␡\t␛"},   {"\r\n\n", "\n\n"}, {"\xFF", "\uFFFD"},
  };
  for (const auto& [text, shown] : cases) EXPECT_EQ(OnScreen(text), QString::fromUtf8(shown)) << text;

  EXPECT_EQ(OnMessageBox("Zeile 1\r\r\n/S/\r\n\n\x01"), QString::fromUtf8("Zeile 1\n\n/S/\n\n␁"));

  EXPECT_EQ(CutToFit("abcd", 4), "abcd");
  EXPECT_EQ(CutToFit("abcde", 4), "abc…");
  const QString broken = CutToFit(QString(200, 'x'), 1000);
  for (const QString& part : broken.split(QChar(0x200B))) EXPECT_LE(part.size(), 80);
  EXPECT_EQ(QString(broken).remove(QChar(0x200B)), QString(200, 'x'));
}

}  // namespace
}  // namespace ox::test
